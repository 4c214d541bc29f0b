// The texts of the program in English and Dutch.
#include "frame/language.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace veltrin {
namespace {

using Text = std::string LanguageTexts::*;

constexpr std::array<Text, 26> kAllTexts = {
    &LanguageTexts::TipNoResolve,       &LanguageTexts::TipRouteRsvp,
    &LanguageTexts::TipDeviceRsvp,      &LanguageTexts::TipPriorityTag,
    &LanguageTexts::TipForceIpv4,       &LanguageTexts::TipForceIpv6,
    &LanguageTexts::TipPeriod,          &LanguageTexts::TipQueries,
    &LanguageTexts::TextInDepthAbout,   &LanguageTexts::TextInDepthIntro,
    &LanguageTexts::TextCopied,         &LanguageTexts::TextFileCreated,
    &LanguageTexts::TextAlreadyRunning, &LanguageTexts::TextFamilyNote,
    &LanguageTexts::TextTestUrls,       &LanguageTexts::TextClearData,
    &LanguageTexts::TextPassesRun,      &LanguageTexts::TextTracePass,
    &LanguageTexts::TextTestComplete,   &LanguageTexts::CaptionTests,
    &LanguageTexts::CaptionUrl,         &LanguageTexts::CaptionCurrent,
    &LanguageTexts::CaptionLow,         &LanguageTexts::CaptionAverage,
    &LanguageTexts::CaptionHigh,        &LanguageTexts::CaptionLoss};
static_assert(sizeof(LanguageTexts) == kAllTexts.size() * sizeof(std::string),
              "every text stands in the list above");

LanguageTexts textsOf(Loose language) {
  LanguageTexts texts;
  chooseLanguage(language, texts);
  return texts;
}

TEST(Language, AnUnsetIdentifierBecomesEnglish) {
  Loose language;
  LanguageTexts texts;
  chooseLanguage(language, texts);
  EXPECT_EQ(language.text(), "1");
  EXPECT_EQ(texts.CaptionTests, "Tests");
}

TEST(Language, AnEmptyIdentifierBecomesEnglish) {
  Loose language = "";
  LanguageTexts texts;
  chooseLanguage(language, texts);
  EXPECT_EQ(language.text(), "1");
  EXPECT_EQ(texts.CaptionTests, "Tests");
}

TEST(Language, AnIdentifierOfZeroBecomesEnglish) {
  Loose language = "0";
  LanguageTexts texts;
  chooseLanguage(language, texts);
  EXPECT_EQ(language.text(), "1");
  EXPECT_EQ(texts.CaptionTests, "Tests");
}

TEST(Language, OneIsEnglish) { EXPECT_EQ(textsOf(1).CaptionTests, "Tests"); }

TEST(Language, FourIsDutch) { EXPECT_EQ(textsOf(4).CaptionTests, "Testen"); }

TEST(Language, TakesTheIdentifierAsATextToo) { EXPECT_EQ(textsOf("4").CaptionTests, "Testen"); }

TEST(Language, AnotherIdentifierLeavesTheTextsAsTheyWere) {
  LanguageTexts texts = textsOf(kDutch);
  Loose language = 7;
  chooseLanguage(language, texts);
  EXPECT_EQ(language.text(), "7");
  for (const Text text : kAllTexts) EXPECT_EQ(texts.*text, textsOf(kDutch).*text);
}

TEST(Language, AnotherIdentifierLeavesTheTextsEmptyAtTheStart) {
  const LanguageTexts texts = textsOf(7);
  for (const Text text : kAllTexts) EXPECT_EQ(texts.*text, "");
}

TEST(Language, NoEnglishTextIsEmpty) {
  const LanguageTexts texts = textsOf(kEnglish);
  for (const Text text : kAllTexts) EXPECT_NE(texts.*text, "");
}

TEST(Language, NoDutchTextIsEmpty) {
  const LanguageTexts texts = textsOf(kDutch);
  for (const Text text : kAllTexts) EXPECT_NE(texts.*text, "");
}

TEST(Language, EnglishAndDutchDifferInAllButTheCaptionOfTheAddress) {
  const LanguageTexts english = textsOf(kEnglish);
  const LanguageTexts dutch = textsOf(kDutch);
  for (const Text text : kAllTexts) {
    if (text == &LanguageTexts::CaptionUrl) continue;
    EXPECT_NE(english.*text, dutch.*text);
  }
  EXPECT_EQ(english.CaptionUrl, "URL/IP");
  EXPECT_EQ(dutch.CaptionUrl, "URL/IP");
}

TEST(Language, ChangesEveryTextBackAndForth) {
  LanguageTexts texts = textsOf(kEnglish);
  Loose language = kDutch;
  chooseLanguage(language, texts);
  language = kEnglish;
  chooseLanguage(language, texts);
  for (const Text text : kAllTexts) EXPECT_EQ(texts.*text, textsOf(kEnglish).*text);
}

}  // namespace
}  // namespace veltrin

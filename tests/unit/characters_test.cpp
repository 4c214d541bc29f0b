// SPDX-License-Identifier: GPL-3.0-or-later
// Lengths of texts, pieces of them and positions in them beyond ASCII.
#include "tests/support/characters.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/loose.h"
#include "text/numbers.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();

// --- What a character is ---

TEST(Characters, AreTheCodePointsOfAText) {
  EXPECT_EQ(Len(""), 0);
  EXPECT_EQ(Len("abc"), 3);
  EXPECT_EQ(Len("½½"), 2);
  EXPECT_EQ(Len("Zürich 5 €"), 10);
  EXPECT_EQ(Len("\U0001F600"), 1);
  EXPECT_EQ(Len("a\0é"s), 3);
}

TEST(Characters, ACombiningMarkIsOneOfItsOwn) {
  EXPECT_EQ(Len("e\u0301"), 2);
  EXPECT_EQ(Left("e\u0301", 1), "e");
  EXPECT_EQ(Mid("e\u0301x", 2, 1), "\u0301");
}

TEST(Characters, TheFirstAndLastOfEachLengthAreOne) {
  for (const char* text : {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEC\xBF\xBF",
                           "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80",
                           "\xF1\x80\x80\x80", "\xF3\xBF\xBF\xBF", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_EQ(Len(text), 1) << text;
    EXPECT_EQ(Left(text, 1), text);
    EXPECT_EQ(Right(text, 1), text);
  }
}

TEST(Characters, EachByteOfASequenceThatIsNotWellFormedIsOne) {
  for (const std::string text :
       {"\x80", "\xBF\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE",
        "\xFF\xFF"}) {
    EXPECT_EQ(Len(text), static_cast<std::int64_t>(text.size())) << testing::PrintToString(text);
  }
}

TEST(Characters, EachByteOfACutCharacterIsOne) {
  EXPECT_EQ(Len("a\xC3"), 2);
  EXPECT_EQ(Len("\xE2\x82"), 2);
  EXPECT_EQ(Len("\xF0\x9F\x98"), 3);
  EXPECT_EQ(Len("\xE2\x82xyz"), 5);
  EXPECT_EQ(Len("\xF0\x9F\x98\xC3\xA9"), 4);
}

TEST(Characters, AByteTooManyBehindOneIsAnotherOne) {
  EXPECT_EQ(Len("\xC3\xA9\xA9"), 2);
  EXPECT_EQ(Right("\xC3\xA9\xA9", 1), "\xA9");
  EXPECT_EQ(Right("\xC3\xA9\xA9", 2), "\xC3\xA9\xA9");
  EXPECT_EQ(Right("\x80\x80\x80\x80\x80", 2), "\x80\x80");
}

// --- Pieces ---

TEST(Characters, LeftTakesWholeOnes) {
  EXPECT_EQ(Left("½ß€\U0001F600x", 0), "");
  EXPECT_EQ(Left("½ß€\U0001F600x", 3), "½ß€");
  EXPECT_EQ(Left("½ß€\U0001F600x", 4), "½ß€\U0001F600");
  EXPECT_EQ(Left("½ß", 2), "½ß");
  EXPECT_EQ(Left("½ß", 3), "½ß");
}

TEST(Characters, RightTakesWholeOnes) {
  EXPECT_EQ(Right("x\U0001F600€ß", 0), "");
  EXPECT_EQ(Right("x\U0001F600€ß", 1), "ß");
  EXPECT_EQ(Right("x\U0001F600€ß", 3), "\U0001F600€ß");
  EXPECT_EQ(Right("x\U0001F600€ß", 4), "x\U0001F600€ß");
  EXPECT_EQ(Right("½ß", 9), "½ß");
}

TEST(Characters, MidTakesWholeOnes) {
  EXPECT_EQ(Mid("½ß€\U0001F600x", 3, 2), "€\U0001F600");
  EXPECT_EQ(Mid("½ß€\U0001F600x", 4), "\U0001F600x");
  EXPECT_EQ(Mid("½ß", 2, 9), "ß");
  EXPECT_EQ(Mid("½ß", 3, 1), "");
  EXPECT_EQ(Mid("½ß", 3), "");
  EXPECT_EQ(Mid("½ß", 4), "");
  EXPECT_EQ(Mid("½ß", 1, 0), "");
}

TEST(Characters, PiecesKeepBytesThatAreNone) {
  EXPECT_EQ(Left("\xC3\xFFz", 2), "\xC3\xFF");
  EXPECT_EQ(Mid("é\x80\xE2\x82z", 2, 3), "\x80\xE2\x82");
  EXPECT_EQ(Right("z\xE2\x82", 1), "\x82");
}

TEST(Characters, LengthsAndPositionsMayBeHuge) {
  EXPECT_EQ(Left("a½", kHuge), "a½");
  EXPECT_EQ(Right("a½", kHuge), "a½");
  EXPECT_EQ(Mid("a½", 2, kHuge), "½");
  EXPECT_EQ(Mid("a½", kHuge), "");
  EXPECT_EQ(Mid("a½", kHuge, kHuge), "");
  EXPECT_EQ(InStr(kHuge, "a½", "a"), 0);
}

TEST(Characters, OfTheEmptyTextThereAreNone) {
  EXPECT_EQ(Left("", 1), "");
  EXPECT_EQ(Right("", 1), "");
  EXPECT_EQ(Mid("", 1), "");
  EXPECT_EQ(Mid("", 1, 1), "");
  EXPECT_EQ(InStr(1, "", "a"), 0);
}

TEST(Characters, PositionsAndLengthsBelowTheirLeastFail) {
  EXPECT_THROW(Mid("½", 0), StatementFailed);
  EXPECT_THROW(Mid("½", std::numeric_limits<std::int64_t>::min(), 1), StatementFailed);
  EXPECT_THROW(Mid("½", 2, -1), StatementFailed);
  EXPECT_THROW(Left("½", std::numeric_limits<std::int64_t>::min()), StatementFailed);
  EXPECT_THROW(InStr(-1, "½", "½"), StatementFailed);
}

// --- Positions ---

TEST(Characters, InStrCountsThemUpToWhatItFinds) {
  EXPECT_EQ(InStr(1, "äöü", "ö"), 2);
  EXPECT_EQ(InStr(1, "\U0001F600€ = 5", "= "), 4);
  EXPECT_EQ(InStr(1, "12345678½9", "9"), 10);
  EXPECT_EQ(InStr(1, "äöü", "ß"), 0);
}

TEST(Characters, InStrStartsAtAPositionInThem) {
  EXPECT_EQ(InStr(2, "é=é=", "="), 2);
  EXPECT_EQ(InStr(3, "é=é=", "="), 4);
  EXPECT_EQ(InStr(4, "é=é=", "="), 4);
  EXPECT_EQ(InStr(5, "é=é=", "="), 0);
  EXPECT_EQ(InStr(4, "é=é=", ""), 4);
  EXPECT_EQ(InStr(5, "é=é=", ""), 0);
}

TEST(Characters, InStrFindsNoPartOfOne) {
  EXPECT_EQ(InStr(1, "é", "\xA9"), 0);
  EXPECT_EQ(InStr(1, "é", "\xC3"), 0);
  EXPECT_EQ(InStr(1, "x\U0001F600y", "\x98\x80y"), 0);
  EXPECT_EQ(InStr(1, "x\U0001F600y", "x\xF0\x9F"), 0);
  EXPECT_EQ(InStr(1, "é", "\xA9", Compare::IgnoreCase), 0);
}

TEST(Characters, InStrFindsAByteThatIsNoneWhereItStandsAlone) {
  EXPECT_EQ(InStr(1, "é\xA9", "\xA9"), 2);
  EXPECT_EQ(InStr(1, "é\xC3", "\xC3"), 2);
  EXPECT_EQ(InStr(1, "\xC3\xC3\xA9", "\xC3"), 1);
  EXPECT_EQ(InStr(2, "\xC3\xC3\xA9", "\xC3"), 0);
  EXPECT_EQ(InStr(1, "\x80\x80\x80\x80\x81", "\x81"), 5);
  EXPECT_EQ(InStr(1, "é\xA9 É\xA9", "\xA9 é", Compare::IgnoreCase), 0);
  EXPECT_EQ(InStr(1, "\xE2\x82 A", "\x82 a", Compare::IgnoreCase), 2);
}

TEST(Characters, InStrFoldsAsciiLettersAlone) {
  EXPECT_EQ(InStr(1, "ÄBC", "bc", Compare::IgnoreCase), 2);
  EXPECT_EQ(InStr(1, "É", "é", Compare::IgnoreCase), 0);
  EXPECT_EQ(InStr(1, "@", "`", Compare::IgnoreCase), 0);
  EXPECT_EQ(InStr(1, "[", "{", Compare::IgnoreCase), 0);
  EXPECT_EQ(InStr(1, "AZ", "az", Compare::IgnoreCase), 1);
  // Far enough from both ends that eight places are looked at together.
  for (char letter = 'a'; letter <= 'z'; ++letter) {
    const std::string lower(2, letter);
    const std::string upper(2, static_cast<char>(letter - 'a' + 'A'));
    std::string text(26, '-');
    text.replace(12, 2, upper);
    EXPECT_EQ(InStr(1, text, lower, Compare::IgnoreCase), 13) << letter;
    text.replace(12, 2, lower);
    EXPECT_EQ(InStr(1, text, upper, Compare::IgnoreCase), 13) << letter;
  }
  EXPECT_EQ(InStr(1, "az", "AZ", Compare::IgnoreCase), 1);
}

TEST(Characters, InStrTakesATextThatEndsInsideWhatIsWantedForNone) {
  EXPECT_EQ(InStr(1, "Aver", "Average", Compare::IgnoreCase), 0);
  EXPECT_EQ(InStr(1, "AVER", "AVERAGE"), 0);
  EXPECT_EQ(InStr(1, "aaab", "aab", Compare::IgnoreCase), 2);
}

// --- Chunks that end inside a character ---

TEST(Characters, AChunkWithHalfACharacterAtItsEndIsReadLikeAnyOther) {
  const std::string chunk = "Moyenné = 24ms \xC3";
  EXPECT_EQ(Len(chunk), 16);
  EXPECT_EQ(InStr(1, chunk, "ms"), 13);
  EXPECT_EQ(InStr(1, chunk, "MS", Compare::IgnoreCase), 13);
  EXPECT_EQ(Mid(chunk, 11), "24ms \xC3");
  EXPECT_EQ(Mid(chunk, 16, 1), "\xC3");
  EXPECT_EQ(Right(chunk, 2), " \xC3");
}

TEST(Characters, HalvesPutTogetherAreTheCharacterAgain) {
  EXPECT_EQ(Len("a\xC3"s + "\xA9z"), 3);
  EXPECT_EQ(Right("a\xE2"s + "\x82\xAC", 1), "€");
}

// --- Every place of a text against the plain model ---

std::size_t place(std::int64_t position) { return static_cast<std::size_t>(position); }

// Lengths and pieces of a text at all of its positions.
void expectPiecesOfTheModel(const std::string& text) {
  const std::vector<std::string> characters = charactersOf(text);
  const auto length = static_cast<std::int64_t>(characters.size());
  ASSERT_EQ(Len(text), length);
  for (std::int64_t n = 0; n <= length + 1; ++n) {
    const std::string front = Left(text, n);
    ASSERT_EQ(front, joinedCharacters(characters, 0, place(n)));
    ASSERT_EQ(front + Mid(text, n + 1), text);
    ASSERT_EQ(Mid(text, n + 1), joinedCharacters(characters, place(n)));
    ASSERT_EQ(Right(text, n), joinedCharacters(characters, n < length ? place(length - n) : 0));
    ASSERT_EQ(Mid(text, n + 1, 3), joinedCharacters(characters, place(n), place(n) + 3));
    ASSERT_EQ(Len(front) + Len(Mid(text, n + 1)), length);
  }
}

TEST(CharactersAndTheirModel, AgreeWithOneLongCharacterAnywhereInAsciiText) {
  for (std::size_t size = 0; size < 40; ++size) {
    for (const char* character : {"", "é", "€", "\U0001F600", "\xFF", "\xE2\x82"}) {
      for (std::size_t at = 0; at <= size; ++at) {
        std::string text(size, 'x');
        text.insert(at, character);
        expectPiecesOfTheModel(text);
        if (HasFatalFailure()) FAIL() << testing::PrintToString(text);
      }
    }
  }
}

// Random texts. The raw numbers of the generator are the same on every system, so that
// a seed shows a failure again.
class RandomTexts : public testing::TestWithParam<unsigned> {
 protected:
  std::size_t below(std::size_t limit) { return generator_() % limit; }

  std::string valid() {
    std::string text;
    for (std::size_t count = below(40); count > 0; --count) {
      text +=
          std::array{"a", "A", "b", " ",      "=",          "ms",         "é",  "½",
                     "ß", "€", "Ω", "\u0301", "\U0001F600", "\U0010FFFF", "01", "ab"}[below(16)];
    }
    return text;
  }

  // Valid pieces with bytes lost, added and changed.
  std::string broken() {
    std::string text = valid();
    for (std::size_t count = 1 + below(6); count > 0 && !text.empty(); --count) {
      const std::size_t at = below(text.size());
      const char byte = "\x80\xBF\xC3\xE2\xED\xA0\xF0\x9F\xF4\xFFz"[below(11)];
      const std::size_t how = below(3);
      if (how == 0) text.erase(at, 1);
      if (how == 1) text.insert(at, 1, byte);
      if (how == 2) text[at] = byte;
    }
    return text;
  }

  std::string text() { return below(2) == 0 ? valid() : broken(); }

 private:
  std::mt19937 generator_{GetParam()};
};

TEST_P(RandomTexts, HaveTheModelsLengthsAndPieces) {
  for (int round = 0; round < 300; ++round) {
    const std::string one = text();
    expectPiecesOfTheModel(one);
    if (HasFatalFailure()) FAIL() << testing::PrintToString(one);
  }
}

// The plain search: one character after the other.
std::int64_t modelInStr(std::int64_t start, const std::string& text, const std::string& wanted,
                        bool fold) {
  const auto prepared = [fold](const std::string& one) {
    return charactersOf(fold ? LCase(one) : one);
  };
  const std::vector<std::string> in = prepared(text);
  const std::vector<std::string> of = prepared(wanted);
  for (std::size_t at = place(start) - 1; at < in.size(); ++at) {
    std::size_t same = 0;
    while (same < of.size() && at + same < in.size() && in[at + same] == of[same]) ++same;
    if (same == of.size()) return static_cast<std::int64_t>(at) + 1;
  }
  return 0;
}

TEST_P(RandomTexts, AreSearchedAsTheModelSearchesThem) {
  for (int round = 0; round < 2000; ++round) {
    const std::string in = text();
    // Half of what is looked for stands there, by bytes: perhaps across characters.
    const std::size_t at = below(in.size() + 1);
    const std::string wanted = below(2) == 0 ? in.substr(at, below(6)) : text().substr(0, below(6));
    const std::int64_t start = 1 + static_cast<std::int64_t>(below(in.size() + 2));
    for (const std::int64_t from : {std::int64_t{1}, start}) {
      ASSERT_EQ(InStr(from, in, wanted), modelInStr(from, in, wanted, false))
          << testing::PrintToString(in) << testing::PrintToString(wanted) << from;
      ASSERT_EQ(InStr(from, in, wanted, Compare::IgnoreCase), modelInStr(from, in, wanted, true))
          << testing::PrintToString(in) << testing::PrintToString(wanted) << from;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTexts, testing::Range(1U, 7U));

// --- What stays by bytes, and numbers ---

TEST(Characters, TrimLCaseAndUCaseLeaveThoseBeyondAsciiAlone) {
  EXPECT_EQ(Trim("  Ü\u00A0 "), "Ü\u00A0");
  EXPECT_EQ(LCase("ÄA\xC3Z\xFF"), "Äa\xC3z\xFF");
  EXPECT_EQ(UCase("äaz\xC3z{\xFF"), "äAZ\xC3Z{\xFF");
  EXPECT_TRUE(equalIgnoringCase("äA", "äa"));
  EXPECT_FALSE(equalIgnoringCase("Ä", "ä"));
}

TEST(Characters, BeyondAsciiEndANumber) {
  EXPECT_EQ(Val("½"), 0);
  EXPECT_EQ(Val("2½"), 2);
  EXPECT_EQ(Val("7\u00A05"), 7);
  EXPECT_EQ(Val("\uFF11"), 0);
  EXPECT_EQ(Val("12\xC3"), 12);
  EXPECT_EQ(Val("3e½"), 3);
  EXPECT_EQ(Val("&H1é"), 1);
  EXPECT_EQ(Val("\xFF\x80"), 0);
}

TEST(Characters, BeyondAsciiAreNoNumber) {
  EXPECT_THROW(toNumber("2½"), StatementFailed);
  EXPECT_THROW(toNumber("\u00A05"), StatementFailed);
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The window in which the user chooses the language.
#include "frame/setlang.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "support/simulation.h"

namespace veltrin {
namespace {

class SetLang : public ::testing::Test {
 protected:
  Simulation simulation;
  Program& program = simulation.program();
  std::shared_ptr<setlang> window = program.show<setlang>();
};

TEST_F(SetLang, OffersSixLanguages) {
  EXPECT_EQ(window->caption.get(), "Set Language");
  EXPECT_EQ(window->Command1.caption.get(), "English");
  EXPECT_EQ(window->Command2.caption.get(), "Dutch");
  EXPECT_EQ(window->Command3.caption.get(), "German");
  EXPECT_EQ(window->Command4.caption.get(), "Spanish");
  EXPECT_EQ(window->Command5.caption.get(), "Italian");
  EXPECT_EQ(window->Command6.caption.get(), "French");
}

TEST_F(SetLang, DutchChangesTheTextsRemembersItAndCloses) {
  simulation.desktop.click(window->Command2);
  EXPECT_EQ(program.LanguageId.text(), "4");
  EXPECT_EQ(program.texts.CaptionHigh, "Hoog");
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nLang=4\r\n");
  EXPECT_FALSE(program.isLoaded<setlang>());
}

TEST_F(SetLang, EnglishChangesTheTextsRemembersItAndCloses) {
  program.LanguageId = kDutch;
  chooseLanguage(program.LanguageId, program.texts);
  simulation.desktop.click(window->Command1);
  EXPECT_EQ(program.LanguageId.text(), "1");
  EXPECT_EQ(program.texts.CaptionHigh, "High");
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nLang=1\r\n");
  EXPECT_FALSE(program.isLoaded<setlang>());
}

TEST_F(SetLang, TheSettingIsWrittenBeforeTheWindowGoes) {
  simulation.keepJournal();
  simulation.desktop.click(window->Command2);
  EXPECT_EQ(simulation.journal, (Journal{"write Settings/Lang=4", "remove setlang"}));
}

TEST_F(SetLang, LanguagesToComeDoNothing) {
  for (CommandButton* button :
       {&window->Command3, &window->Command4, &window->Command5, &window->Command6}) {
    simulation.desktop.click(*button);
  }
  EXPECT_EQ(program.LanguageId.text(), "1");
  EXPECT_EQ(program.texts.CaptionHigh, "High");
  EXPECT_EQ(simulation.settings(), "");
  EXPECT_TRUE(program.isLoaded<setlang>());
}

TEST_F(SetLang, ButtonsBearTheColourOfAllButtons) {
  const Colour expected{0xBD, 0xB7, 0x95};
  for (const CommandButton* button : {&window->Command1, &window->Command2, &window->Command3,
                                      &window->Command4, &window->Command5, &window->Command6}) {
    EXPECT_EQ(button->backColour.get(), expected);
  }
}

}  // namespace
}  // namespace veltrin

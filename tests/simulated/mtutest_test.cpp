// SPDX-License-Identifier: GPL-3.0-or-later
// The entry of the MTU optimizer.
#include "simulated/mtu_run.h"

namespace veltrin {
namespace {

class MtuEntry : public MtuRun {
 protected:
  // Opens the window beside another one.
  void open() {
    keepTheProgramRunning();
    window = simulation.program().show<mtutest>();
  }

  std::string site() const { return window->testit.text; }

  const std::string notNecessary =
      "The MTU value is set to maximum, 1500, the MTU test is not necessary.\r\n";
  const std::string alreadySet =
      "The MTU has already been set. Running it again is not necessary.\r\nWould you like to "
      "continue the MTU Test?\r\n";
  std::shared_ptr<mtutest> window;
};

TEST_F(MtuEntry, BearsItsCaptions) {
  open();
  EXPECT_EQ(window->caption.get(), "MTU Test/Set");
  EXPECT_EQ(window->Command3.caption.get(), "OK");
  EXPECT_EQ(window->Label2.caption.get(),
            "When setting the MTU you can use a general site like www.wikipedia.org or if you "
            "generally go to the same location, enter that location for the test. You can enter a "
            "URL or an IP.");
}

TEST_F(MtuEntry, HasNoTipOfTheLanguageLayer) {
  open();
  EXPECT_EQ(window->testit.toolTip.get(), "");
}

TEST_F(MtuEntry, IsSeenWhileItsFirstMessageStands) {
  registryHolds("1500");
  keepTheProgramRunning();
  std::vector<std::string> seen;
  simulation.desktop.habit = {kAnswerOk, 500};
  at(100, [&] {
    for (const Form* form : simulation.desktop.shown) seen.push_back(form->name());
  });
  simulation.program().showModal<mtutest>();
  EXPECT_EQ(seen, (std::vector<std::string>{"setlang", "mtutest"}));
}

// --- The registry ---

TEST_F(MtuEntry, StopsAtAValueOf1500) {
  registryHolds(std::string("1500\0", 5));
  open();
  expectOneMessage("Veltrin", kMessageOk, notNecessary);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(simulation.settings(), "");
}

TEST_F(MtuEntry, StopsAtAValueThatBeginsWith1500) {
  registryHolds("15000");
  open();
  expectOneMessage("Veltrin", kMessageOk, notNecessary);
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(MtuEntry, GoesOnWithAnotherValue) {
  registryHolds("1492");
  open();
  EXPECT_TRUE(window->isLoaded());
  EXPECT_TRUE(messages().empty());
  EXPECT_EQ(simulation.program().shared<MtuValues>().OriginalMtu.text(), "1492");
}

TEST_F(MtuEntry, GoesOnWithoutAValue) {
  makeKey();
  open();
  EXPECT_TRUE(window->isLoaded());
  EXPECT_TRUE(simulation.program().shared<MtuValues>().OriginalMtu.isEmpty());
}

TEST_F(MtuEntry, GoesOnWithoutTheKey) {
  open();
  EXPECT_TRUE(window->isLoaded());
  EXPECT_TRUE(messages().empty());
}

// --- The mark of a run before ---

TEST_F(MtuEntry, AsksWhetherToRunAgain) {
  settingsAre("[Settings]\r\nMTU=1\r\n");
  simulation.desktop.answers = {{kAnswerYes, 0}};
  open();
  expectOneMessage("Veltrin", kMessageYesNo, alreadySet);
  EXPECT_TRUE(window->isLoaded());
}

TEST_F(MtuEntry, GoesAwayOnANo) {
  settingsAre("[Settings]\r\nMTU=1\r\n");
  simulation.desktop.answers = {{kAnswerNo, 0}};
  open();
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU=1\r\nMTU Site=\r\n");
}

TEST_F(MtuEntry, AsksNothingForAnotherMark) {
  settingsAre("[Settings]\r\nMTU=0\r\n");
  open();
  EXPECT_TRUE(messages().empty());
}

TEST_F(MtuEntry, ShowsOnlyTheFirstMessageWhenBothWouldBeDue) {
  settingsAre("[Settings]\r\nMTU=1\r\n");
  registryHolds("1500");
  open();
  expectOneMessage("Veltrin", kMessageOk, notNecessary);
}

// --- The site ---

TEST_F(MtuEntry, WipesTheSiteOfTheRunBefore) {
  settingsAre("[Settings]\r\nMTU Site=far.example\r\n");
  open();
  EXPECT_EQ(site(), "www.wikipedia.org");
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU Site=\r\n");
}

TEST_F(MtuEntry, ASiteOfFourCharactersDoesNotComeBack) {
  settingsAre("[Settings]\r\nMTU Site=t.de\r\n");
  open();
  EXPECT_EQ(site(), "www.wikipedia.org");
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU Site=\r\n");
}

TEST_F(MtuEntry, KeepsASiteOfFiveCharactersOnADiskThatTakesNoSettings) {
  settingsAre("[Settings]\r\nMTU Site=ab.de\r\n");
  simulation.profiles.refuseWriting = true;
  open();
  EXPECT_EQ(site(), "ab.de");
}

TEST_F(MtuEntry, TakesNoSiteOfFourCharactersOnSuchADisk) {
  settingsAre("[Settings]\r\nMTU Site=t.de\r\n");
  simulation.profiles.refuseWriting = true;
  open();
  EXPECT_EQ(site(), "www.wikipedia.org");
}

TEST_F(MtuEntry, HandsTheSiteOverAndGoes) {
  open();
  simulation.desktop.type(window->testit, "x y");
  bool gone = false;
  at(500, [&] { gone = !window->isLoaded(); });
  at(700, [&] { simulation.program().unload<pingit>(); });
  simulation.desktop.click(window->Command3);
  EXPECT_TRUE(gone);
  EXPECT_EQ(commands().front(), "ping x y -n 1");
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU Site=x y\r\n");
}

TEST_F(MtuEntry, TheMenuOpensItAboveItself) {
  const auto menu = simulation.program().show<startup>();
  bool above = false;
  at(100, [&] {
    above = simulation.desktop.shown.back()->name() == "mtutest" &&
            !simulation.desktop.takesInput(*menu);
    simulation.desktop.shown.back()->close();
  });
  simulation.desktop.click(menu->Command7);
  EXPECT_TRUE(above);
}

}  // namespace
}  // namespace veltrin

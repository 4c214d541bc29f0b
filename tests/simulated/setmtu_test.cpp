// SPDX-License-Identifier: GPL-3.0-or-later
// The search of the MTU optimizer.
#include <algorithm>

#include "simulated/mtu_run.h"

namespace veltrin {
namespace {

class MtuSearch : public MtuRun {
 protected:
  // Opens the window and lets the search come to its end, or to a moment of the clock.
  void search(std::int64_t until = 10'000'000) {
    keepTheProgramRunning();
    makeKey();
    open();
    simulation.loop.run(until);
  }

  void open() { window = simulation.program().show<setmtu>(); }

  // What the user sees of a label behind the verdict of a probe, from 1.
  void noteBehind(int probe, std::string& shown, const Label setmtu::*label) {
    at(kTick * probe + kToolTime + 2100,
       [this, &shown, label] { shown = ((*window).*label).caption; });
  }

  static constexpr std::int64_t kTick = 5000;  // ms

  std::string finalBox(const std::string& stored, const std::string& original = "") const {
    return "MTU Test complete, MTU Value set to " + stored + "  Original MTU was " + original;
  }

  std::shared_ptr<setmtu> window;
};

// --- Load ---

TEST_F(MtuSearch, TellsThatItWillBeginAndShowsItsClip) {
  open();
  EXPECT_EQ(window->caption.get(), "Veltrin (MTU Test) ");
  EXPECT_EQ(window->testmtu.caption.get(), "Testing will start in 5 Seconds");
  EXPECT_EQ(window->playit.file.get(), kProgramFolder + "\\files\\ping.avi");
  EXPECT_TRUE(window->playit.playing);
  EXPECT_TRUE(window->playit.visible);
  EXPECT_FALSE(window->txtping.visible);
  EXPECT_EQ(window->Timer1.interval.get(), 5000);
}

TEST_F(MtuSearch, IsSeenModallyBeforeItSaysThatItWillBegin) {
  std::string front;
  std::string said = "?";
  bool modal = false;
  simulation.desktop.onModal = [&](Form& form) { modal = form.name() == "setmtu"; };
  simulation.program();
  at(0, [&] {
    const auto shown =
        std::static_pointer_cast<setmtu>(simulation.desktop.shown.back()->shared_from_this());
    front = shown->name();
    said = shown->testmtu.caption;
  });
  open();
  EXPECT_TRUE(modal);
  EXPECT_EQ(front, "setmtu");
  EXPECT_EQ(said, "");
}

TEST_F(MtuSearch, TakesTheCloseCommandOutOfItsMenuBeforeItIsShown) {
  simulation.program();
  simulation.keepJournal();
  open();
  const auto place = [this](const std::string& entry) {
    return std::find(simulation.journal.begin(), simulation.journal.end(), entry) -
           simulation.journal.begin();
  };
  EXPECT_LT(place("remove from system menu -4000 0"), place("remove from system menu 5 1024"));
  EXPECT_LT(place("remove from system menu 5 1024"), place("registry MTU"));
  EXPECT_LT(place("remove from system menu 5 1024"), place("show setmtu"));
}

TEST_F(MtuSearch, CannotBeClosedByItsUser) {
  open();
  simulation.desktop.closeWindow(*window);
  EXPECT_TRUE(window->isLoaded());
}

// --- The coarse stage ---

TEST_F(MtuSearch, TestsTheSevenSizesFiveSecondsApart) {
  search();
  EXPECT_EQ(commands(), (std::vector<std::string>{"ping -f -n 2 -l 576 ", "ping -f -n 2 -l 1400 ",
                                                  "ping -f -n 2 -l 1420 ", "ping -f -n 2 -l 1440 ",
                                                  "ping -f -n 2 -l 1460 ", "ping -f -n 2 -l 1480 ",
                                                  "ping -f -n 2 -l 1500 "}));
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{5000, 10000, 15000, 20000, 25000, 30000, 35000}));
}

TEST_F(MtuSearch, Stores1500WhenAllSevenAreGood) {
  std::string caption;
  bool clip = true;
  simulation.desktop.habit = {kAnswerOk, 12'000};
  at(37'500, [&] {
    caption = window->caption;
    clip = window->playit.visible || window->playit.playing;
  });
  search();
  EXPECT_EQ(registryValue(), "1:1500");
  EXPECT_EQ(messages(), std::vector<std::string>{finalBox("1500")});
  EXPECT_EQ(caption, "SpeedTest (MTU) Course Test");
  EXPECT_FALSE(clip);
  EXPECT_FALSE(window->isLoaded());
}

class AtItsLastMessage : public MtuSearch, public testing::WithParamInterface<int> {};

TEST_P(AtItsLastMessage, EverythingIsStoredAndItsClockStandsStill) {
  largest = GetParam();
  simulation.desktop.habit = {kAnswerOk, 12'000};
  std::string stored;
  std::string settings;
  bool ticks = true;
  at(45'000, [&] {
    stored = registryValue();
    settings = simulation.settings();
    ticks = window->Timer1.enabled;
  });
  search();
  EXPECT_EQ(stored, largest == 1461 ? "1:1489" : "1:1500");
  EXPECT_EQ(settings, "[Settings]\r\nMTU=1\r\n");
  EXPECT_FALSE(ticks);
}

INSTANTIATE_TEST_SUITE_P(BothStages, AtItsLastMessage, testing::Values(1461, 1500));

TEST_F(MtuSearch, ShowsWhatItTestsAndItsVerdict) {
  std::string tested;
  std::string verdict;
  Colour colour;
  noteBehind(2, tested, &setmtu::testmtu);
  noteBehind(2, verdict, &setmtu::results);
  at(kTick * 2 + kToolTime + 2100, [&] { colour = window->results.foreColour.get().value(); });
  search();
  EXPECT_EQ(tested, "Test MTU setting of 1400");
  EXPECT_EQ(verdict, "MTU of 1400 test Good");
  EXPECT_EQ(colour, (Colour{0, 0x80, 0}));
}

TEST_F(MtuSearch, ShowsABadSizeInRed) {
  largest = 1430;
  std::string verdict;
  Colour colour;
  noteBehind(4, verdict, &setmtu::results);
  at(kTick * 4 + kToolTime + 2100, [&] { colour = window->results.foreColour.get().value(); });
  search();
  EXPECT_EQ(verdict, "Course Test of MTU 1440 test Bad");
  EXPECT_EQ(colour, (Colour{0xFF, 0, 0}));
}

TEST_F(MtuSearch, GivesItsVerdictTwoSecondsBehindTheTool) {
  std::string before;
  std::string behind;
  at(5000 + kToolTime + 1999, [&] { before = window->results.caption; });
  at(5000 + kToolTime + 2001, [&] { behind = window->results.caption; });
  search();
  EXPECT_EQ(before, "");
  EXPECT_EQ(behind, "MTU of 576 test Good");
}

// --- Where it leads ---

struct SearchCase {
  const char* name;
  int largest;          // size that passes
  int firstFine;        // first size of the fine stage
  const char* highest;  // as it is shown
  const char* stored;
};

class MtuDecision : public MtuSearch, public testing::WithParamInterface<SearchCase> {};

TEST_P(MtuDecision, FindsAndStores) {
  const SearchCase wanted = GetParam();
  largest = wanted.largest;
  search();
  const auto sizes = probedSizes();
  const auto fine = std::find(sizes.begin(), sizes.end(), std::to_string(wanted.firstFine));
  ASSERT_NE(fine, sizes.end());
  EXPECT_EQ(sizes.end() - fine,
            std::max(wanted.largest, wanted.firstFine - 1) + 1 - wanted.firstFine + 1);
  EXPECT_EQ(sizes.back(), std::to_string(std::max(wanted.largest + 1, wanted.firstFine)));
  EXPECT_EQ(window->results.caption.get(),
            std::string("Highest MTU for your system is ") + wanted.highest);
  EXPECT_EQ(registryValue(), std::string("1:") + wanted.stored);
  EXPECT_EQ(messages(), std::vector<std::string>{finalBox(wanted.stored)});
}

INSTANTIATE_TEST_SUITE_P(All, MtuDecision,
                         testing::Values(SearchCase{"Nothing", 0, 577, "576", "604"},
                                         SearchCase{"UpTo576", 576, 577, "576", "604"},
                                         SearchCase{"UpTo577", 577, 577, "577", "605"},
                                         SearchCase{"UpTo1399", 1399, 577, "1399", "1427"},
                                         SearchCase{"UpTo1400", 1400, 1401, "1400", "1428"},
                                         SearchCase{"UpTo1410", 1410, 1401, "1410", "1438"},
                                         SearchCase{"UpTo1420", 1420, 1421, "1420", "1448"},
                                         SearchCase{"UpTo1439", 1439, 1421, "1439", "1467"},
                                         SearchCase{"UpTo1440", 1440, 1441, "1440", "1468"},
                                         SearchCase{"UpTo1450", 1450, 1441, "1450", "1478"},
                                         SearchCase{"UpTo1460", 1460, 1461, "1460", "1488"},
                                         SearchCase{"UpTo1471", 1471, 1461, "1471", "1499"},
                                         SearchCase{"UpTo1472", 1472, 1461, "1472", "1500"},
                                         SearchCase{"UpTo1473", 1473, 1461, "1473", "1473"},
                                         SearchCase{"UpTo1480", 1480, 1481, "1480", "1480"},
                                         SearchCase{"UpTo1489", 1489, 1481, "1489", "1489"},
                                         SearchCase{"UpTo1499", 1499, 1481, "1499", "1499"}),
                         [](const auto& info) { return std::string(info.param.name); });

// --- The fine stage ---

TEST_F(MtuSearch, FollowsABadCoarseSizeWithTheNextTick) {
  largest = 1461;
  search();
  const auto moments = probeMoments();
  const auto sizes = probedSizes();
  ASSERT_EQ(sizes.size(), 8U);
  EXPECT_EQ(sizes[6], "1461");
  EXPECT_EQ(moments[6], 35000);
  EXPECT_EQ(moments[7], 40000);
}

TEST_F(MtuSearch, ShowsAFineSizeAndItsVerdict) {
  largest = 1461;
  std::string tested;
  std::string verdict;
  std::string caption;
  Colour colour;
  noteBehind(7, tested, &setmtu::testmtu);
  noteBehind(7, verdict, &setmtu::results);
  at(kTick * 7 + kToolTime + 2100, [&] {
    colour = window->results.foreColour.get().value();
    caption = window->caption;
  });
  search();
  EXPECT_EQ(tested, "Fine Test of MTU setting of 1461");
  EXPECT_EQ(verdict, "Fine Test of MTU setting of 1461 test Good");
  EXPECT_EQ(caption, "SpeedTest (MTU) Fine Test");
  EXPECT_EQ(colour, (Colour{0, 0xC0, 0}));
}

TEST_F(MtuSearch, ShowsTheSizeThatEndsItWhereItTellsWhatIsTested) {
  largest = 1461;
  search();
  EXPECT_EQ(window->testmtu.caption.get(), "Course Test of MTU 1462 test Bad");
  EXPECT_EQ(window->testmtu.foreColour.get(), (Colour{0xFF, 0, 0}));
  EXPECT_TRUE(window->playit.visible);
}

TEST_F(MtuSearch, PausesBeforeItStoresAFineResult) {
  largest = 1461;
  search();
  ASSERT_EQ(simulation.desktop.messages.size(), 1U);
  EXPECT_EQ(simulation.desktop.messages[0].moment, 40000 + kToolTime + 2000 + 500);
}

// --- The reading ---

class CutText : public MtuSearch, public testing::WithParamInterface<const char*> {};

TEST_P(CutText, MakesASizeBadInAnyCaseOfItsLetters) {
  cutText = GetParam();
  largest = 1470;
  search();
  EXPECT_EQ(registryValue(), "1:1498");
}

INSTANTIATE_TEST_SUITE_P(All, CutText,
                         testing::Values("FRAG", "reassembled frAGments", "frag",
                                         "Packet needs to be fragmented but DF set.\r\n"));

class OtherText : public MtuSearch, public testing::WithParamInterface<const char*> {};

TEST_P(OtherText, MakesEverySizeGood) {
  cutText = GetParam();
  largest = 0;
  search();
  EXPECT_EQ(registryValue(), "1:1500");
}

INSTANTIATE_TEST_SUITE_P(All, OtherText,
                         testing::Values("Request timed out.\r\n", "", "fra",
                                         "Ping request could not find host"));

TEST_F(MtuSearch, LooksAtTheTextOfTheProbeAlone) {
  open();
  window->txtOutputs.text = "frag";
  simulation.loop.run(8000);
  EXPECT_EQ(window->results.caption.get(), "MTU of 576 test Good");
}

TEST_F(MtuSearch, ReadsTheTextWhenThePauseIsOver) {
  open();
  at(6000, [&] { simulation.desktop.type(window->txtOutputs, "a fragment"); });
  simulation.loop.run(8000);
  EXPECT_EQ(window->results.caption.get(), "Course Test of MTU 576 test Bad");
}

TEST_F(MtuSearch, ReadsAWordThatComesInTwoPieces) {
  script = [](const std::string&) -> std::vector<ToolWrite> {
    return {{kToolTime, "needs to be fr"}, {kToolTime, "agmented"}};
  };
  open();
  simulation.loop.run(8000);
  EXPECT_EQ(window->results.caption.get(), "Course Test of MTU 576 test Bad");
}

TEST_F(MtuSearch, ShowsTheLastRoundTrip) {
  passText = "    Minimum = 24ms, Maximum = 24ms, Average = 24ms \r\n";
  open();
  simulation.loop.run(6000);
  EXPECT_EQ(window->Label1.caption.get(), "24 ms");
  EXPECT_EQ(window->txtOutputs.text.get(), passText);
  EXPECT_EQ(window->txtping.text.get(), "ping -f -n 2 -l 576 ");
}

TEST_F(MtuSearch, KeepsTheLastRoundTripBehindATextWithoutOne) {
  passText = "    Minimum = 24ms, Maximum = 24ms, Average = 24ms \r\n";
  open();
  simulation.loop.run(8000);
  passText = "Request timed out.\r\n";
  simulation.loop.run(13000);
  EXPECT_EQ(window->Label1.caption.get(), "24 ms");
}

TEST_F(MtuSearch, KeepsTheNewestTextInView) {
  open();
  int followed = 0;
  window->txtOutputs.observeCaret([&followed] { ++followed; });
  simulation.loop.run(11'000);
  EXPECT_EQ(followed, 3);  // a text, none, the next text
}

// --- Storing ---

TEST_F(MtuSearch, MarksTheSettings) {
  search();
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU=1\r\n");
}

TEST_F(MtuSearch, TellsTheValueBeforeUpToItsTerminator) {
  registryHolds(std::string("1492\0", 5));
  search();
  EXPECT_EQ(messages(), std::vector<std::string>{finalBox("1500", "1492")});
  expectOneMessage("Veltrin", kMessageOk, finalBox("1500", "1492"));
}

TEST_F(MtuSearch, WritesNoTerminator) {
  registryHolds(std::string("1492\0", 5));
  search();
  EXPECT_EQ(registryValue(), "1:1500");
}

TEST_F(MtuSearch, AKeyThatCannotBeOpenedIsSkippedInSilence) {
  keepTheProgramRunning();
  open();
  simulation.loop.run(100'000);
  EXPECT_EQ(messages(), std::vector<std::string>{finalBox("1500")});
  EXPECT_TRUE(simulation.registry.keys.empty());
  EXPECT_EQ(simulation.settings(), "[Settings]\r\nMTU=1\r\n");
}

TEST_F(MtuSearch, UnloadsItselfAndTheBaselineBehindIt) {
  keepTheProgramRunning();
  simulation.desktop.onModal = [this](Form& form) {
    if (form.name() == "setmtu") window = std::static_pointer_cast<setmtu>(form.shared_from_this());
  };
  simulation.program().showModal<pingit>();
  EXPECT_FALSE(simulation.program().isLoaded<setmtu>());
  EXPECT_FALSE(simulation.program().isLoaded<pingit>());
  EXPECT_EQ(messages(), std::vector<std::string>{finalBox("1500")});
  ASSERT_EQ(simulation.desktop.shown.size(), 1U);
}

TEST_F(MtuSearch, APingThatIsMissingReadsAsGood) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  failedStarts = 7;
  search();
  EXPECT_EQ(registryValue(), "1:1500");
}

// --- Nested ticks ---

TEST_F(MtuSearch, ATickDuringALongProbeIsDropped) {
  script = [asked = 0](const std::string&) mutable -> std::vector<ToolWrite> {
    return {{++asked == 1 ? 12'000 : kToolTime, "good"}};
  };
  search();
  // The first probe ends at 17 s and its pause at 19 s; the tick at 20 s is the next one.
  EXPECT_EQ(moments(), (std::vector<std::int64_t>{5000, 20000, 25000, 30000, 35000, 40000, 45000}));
  EXPECT_EQ(registryValue(), "1:1500");
}

TEST_F(MtuSearch, TwoWaitsAtOnceEndInTheirOrder) {
  open();
  std::vector<std::string> ends;
  window->results.caption.observe([&ends] { ends.push_back("probe"); });
  at(6000, [&] {
    simulation.program().Wait(3000);
    ends.push_back("other");
  });
  simulation.loop.run(9500);
  // The wait that began last lies above the probe's, which cannot return before it.
  EXPECT_EQ(ends, (std::vector<std::string>{"other", "probe"}));
}

class MtuSearchEnded : public MtuSearch, public testing::WithParamInterface<std::int64_t> {};

TEST_P(MtuSearchEnded, TheEndOfTheProgramEndsTheSearch) {
  largest = 1461;
  makeKey();
  open();
  at(GetParam(), [this] { simulation.program().end(); });
  try {
    simulation.loop.run(60'000);
  } catch (const ProgramEnded&) {
    // Whoever waited was unwound.
  }
  EXPECT_TRUE(simulation.loop.gate().hasEnded());
  EXPECT_EQ(registryValue(), "(none)");
  EXPECT_LE(simulation.loop.milliseconds(), GetParam() + 2500);
  for (const std::int64_t moment : moments()) EXPECT_LE(moment, GetParam());
}

// Before the first tick, in a coarse probe and its pause, in the fine stage, in the last
// pause.
INSTANTIATE_TEST_SUITE_P(Moments, MtuSearchEnded,
                         testing::Values(1000, 5010, 6000, 36'000, 42'300));

}  // namespace
}  // namespace veltrin

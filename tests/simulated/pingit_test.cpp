// SPDX-License-Identifier: GPL-3.0-or-later
// The MTU optimizer's look at the line: fifty pings and what follows from them.
#include <algorithm>

#include "simulated/mtu_run.h"

namespace veltrin {
namespace {

class PingBaseline : public MtuRun {
 protected:
  PingBaseline() {
    simulation.desktop.onModal = [this](Form& form) {
      if (form.name() == "pingit")
        window = std::static_pointer_cast<pingit>(form.shared_from_this());
      if (form.name() != "setmtu") return;
      searches = simulation.loop.milliseconds();
      stayed = window->isLoaded();
      simulation.program().unload<setmtu>();
      simulation.program().unload<pingit>();
    };
  }

  // Lets the window run to its end, or until it waits for its user.
  void runWith(Samples values) {
    samples = std::move(values);
    keepTheProgramRunning();
    simulation.program().shared<MtuValues>().MtuSite = "near.example";
    at(kLongAfter, [this] { simulation.program().unload<pingit>(); });
    simulation.program().showModal<pingit>();
  }

  // What a label says at a moment.
  void note(std::int64_t moment, std::string& text, std::size_t label) {
    at(moment, [this, &text, label] { text = window->lb[label].caption; });
  }

  std::string line(std::size_t label) const { return window->lb[label].caption; }

  static Samples same(std::size_t count, int time) { return Samples(count, time); }

  std::vector<std::string> listed() const {
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < window->List1.count(); ++row) {
      rows.push_back(window->List1.item(row));
    }
    return rows;
  }

  std::ptrdiff_t timesListed(const std::string& row) const {
    const auto rows = listed();
    return std::count(rows.begin(), rows.end(), row);
  }

  static constexpr std::int64_t kLongAfter = 200'000;  // ms
  static constexpr std::int64_t kPing = 1020;          // ms from a ping to the next

  std::shared_ptr<pingit> window;
  std::int64_t searches = -1;  // when the search was opened
  bool stayed = false;         // behind the search, as long as that takes

  const std::string loss =
      "During the Ping Test you experienced packet loss, or dropped information.\r\n"
      "You cannot continue with these results. Fix this issue before continuing.\r\n"
      "Open up a command prompt and run a ping test to www.wikipedia.org by typing\r\n"
      "ping www.wikipedia.org -t   \r\n"
      "After a few minutes hit  Ctrl and C to stop the test and obtain the results.   \r\n";
};

// --- The run ---

TEST_F(PingBaseline, PingsTheSiteFiftyTimesASecondApart) {
  runWith({});
  ASSERT_EQ(commands().size(), 50U);
  for (const std::string& command : commands()) EXPECT_EQ(command, "ping near.example -n 1");
  EXPECT_EQ(moments()[1], kPing);
  EXPECT_EQ(moments()[49], 49 * kPing);
}

TEST_F(PingBaseline, IsSeenModallyWhileItRunsWithTheHourglass) {
  std::string front;
  MousePointer pointer{};
  bool otherTakesInput = true;
  at(500, [&] {
    front = simulation.desktop.shown.back()->name();
    pointer = window->mousePointer;
    otherTakesInput = simulation.desktop.takesInput(*simulation.desktop.shown.front());
  });
  runWith({});
  EXPECT_EQ(front, "pingit");
  EXPECT_EQ(pointer, MousePointer::Hourglass);
  EXPECT_FALSE(otherTakesInput);
}

TEST_F(PingBaseline, BeginsWithFiftyPingsToCome) {
  std::vector<std::string> lines;
  at(10, [&] {
    for (const Label& label : window->lb) lines.push_back(label.caption);
  });
  runWith({});
  EXPECT_EQ(lines, (std::vector<std::string>{"", "", "", "", "Testing Ping to Test Location", "50",
                                             "Ping Testing Remaining", ""}));
  EXPECT_EQ(window->caption.get(), "Verifying Ping/Packet Loss");
  EXPECT_FALSE(window->pingip.visible);
  EXPECT_FALSE(window->List1.visible);
  EXPECT_EQ(window->find("lb", 7), &window->lb[7]);
}

TEST_F(PingBaseline, CountsThePingsToComeFromFortyEightDown) {
  std::string second;
  std::string last;
  note(kPing + 10, second, 5);
  note(49 * kPing + 10, last, 5);
  runWith({});
  EXPECT_EQ(second, "48");
  EXPECT_EQ(last, "0");
}

TEST_F(PingBaseline, ColoursItsLines) {
  runWith({});
  EXPECT_EQ(window->lb[0].foreColour.get(), (Colour{0, 0x80, 0}));
  EXPECT_EQ(window->lb[1].foreColour.get(), (Colour{0, 0, 0x80}));
  EXPECT_EQ(window->lb[2].foreColour.get(), (Colour{0x80, 0, 0x80}));
  EXPECT_EQ(window->lb[3].foreColour.get(), (Colour{0x80, 0, 0}));
  EXPECT_EQ(window->lb[7].foreColour.get(), (Colour{0xFF, 0, 0}));
}

TEST_F(PingBaseline, TellsTheFiguresWithEachPing) {
  std::vector<std::string> lines;
  std::string sample;
  at(3 * kPing + 10, [&] {
    for (std::size_t label = 0; label < 4; ++label) lines.push_back(line(label));
    sample = window->pingtotal.caption;
  });
  runWith({30, 12, 45});
  EXPECT_EQ(lines, (std::vector<std::string>{"Min Ping Result = 12 ms", "Average Ping = 29 ms",
                                             "Max Ping Result = 45 ms", "Lost Packets = 0"}));
  EXPECT_EQ(sample, "45");
}

TEST_F(PingBaseline, AnAverageThatRoundsToNothingIsAnEmptyText) {
  std::string average;
  note(2 * kPing + 10, average, 1);
  runWith({0, 0});
  EXPECT_EQ(average, "Average Ping =  ms");
}

TEST_F(PingBaseline, APingWithoutAReplyRepeatsTheSampleBefore) {
  runWith({30, std::nullopt, 40});
  EXPECT_EQ(listed().size(), 50U);
  EXPECT_EQ(timesListed("30"), 2);
  EXPECT_EQ(timesListed("40"), 1);
}

TEST_F(PingBaseline, ListsItsSamplesInTheOrderOfTheirTexts) {
  std::vector<std::string> rows;
  at(3 * kPing + 10, [&] { rows = listed(); });
  runWith({9, 10, 100});
  EXPECT_EQ(rows, (std::vector<std::string>{"10", "100", "9"}));
}

TEST_F(PingBaseline, AnEmptyListLeavesTheAverageAsItWas) {
  std::vector<std::string> averages;
  for (const int ping : {1, 2}) {
    at(ping * kPing + 10, [&] { averages.push_back(line(1)); });
  }
  runWith({900, 20});
  EXPECT_EQ(averages, (std::vector<std::string>{"", "Average Ping = 20 ms"}));
}

TEST_F(PingBaseline, AWindowThatTheUserClosesAtItsRatingLeadsNowhere) {
  at(50 * kPing + 1000, [&] { window->close(); });
  runWith({});
  EXPECT_EQ(line(7), "Ping Test Results are Excellent");
  EXPECT_EQ(searches, -1);
}

TEST_F(PingBaseline, AWindowThatTheUserClosesPingsNoMore) {
  at(5 * kPing + 100, [&] { window->close(); });
  runWith({});
  EXPECT_EQ(commands().size(), 6U);
  EXPECT_EQ(searches, -1);
}

TEST_F(PingBaseline, TheEndOfTheProgramEndsTheRun) {
  simulation.program().shared<MtuValues>().MtuSite = "near.example";
  at(5 * kPing + 100, [&] { window->close(); });
  EXPECT_THROW(simulation.program().showModal<pingit>(), ProgramEnded);
  EXPECT_EQ(commands().size(), 6U);
}

// --- Good lines ---

TEST_F(PingBaseline, RatesAGoodLineExcellentAndGoesOnBehindThreeSeconds) {
  runWith({});
  EXPECT_EQ(line(7), "Ping Test Results are Excellent");
  EXPECT_EQ(searches, 50 * kPing + 3000);
  EXPECT_TRUE(stayed);
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Hourglass);
  EXPECT_TRUE(messages().empty());
}

TEST_F(PingBaseline, LeavesTheFirstAndTheLastRowOutOfTheClosingAverage) {
  // In the order of texts: "100", forty-eight times "20", "790".
  Samples values = same(50, 20);
  values[0] = 100;
  values[1] = 790;
  runWith(values);
  EXPECT_EQ(line(1), "Average Ping = 20 ms");
}

TEST_F(PingBaseline, TheClosingAverageGoesByTheOrderOfTexts) {
  // "100" stands first and "9" last; "790" counts, which no order of numbers would let in.
  Samples values = same(50, 20);
  values[0] = 100;
  values[1] = 9;
  values[2] = 790;
  runWith(values);
  EXPECT_EQ(line(1), "Average Ping = 36 ms");
}

TEST_F(PingBaseline, DividesTheClosingSumBy48HoweverFewRowsThereAre) {
  Samples values = same(50, 48);
  values[10] = 900;  // is not listed
  runWith(values);
  // Rows 1 to 48 of 49, all 48: their sum by 48.
  EXPECT_EQ(line(1), "Average Ping = 48 ms");
}

TEST_F(PingBaseline, KeepsTheCountOfLostOnesForTheSpread) {
  // A spread of 700 ms is rated by the count of lost ones, which is 0.
  Samples values = same(50, 20);
  values[10] = 720;
  runWith(values);
  EXPECT_EQ(line(7), "Ping Test Results are Excellent");
  EXPECT_TRUE(messages().empty());
}

TEST(PingRating, GoesByTheSpread) {
  EXPECT_EQ(ratingOf(0), "Ping Test Results are Excellent");
  EXPECT_EQ(ratingOf(19), "Ping Test Results are Excellent");
  EXPECT_EQ(ratingOf(20), "Ping Test Results are Good");
  EXPECT_EQ(ratingOf(29), "Ping Test Results are Good");
  EXPECT_EQ(ratingOf(30), "Ping Test Results are Average");
  EXPECT_EQ(ratingOf(39), "Ping Test Results are Average");
  EXPECT_EQ(ratingOf(40), "Ping Test Results are Below Average");
  EXPECT_EQ(ratingOf(50), "Ping Test Results are Below Average");
}

// --- Lost ones ---

TEST_F(PingBaseline, OneSlowSampleIsNotListedButStandsInTheMaximum) {
  Samples values = same(50, 20);
  values[10] = 900;
  runWith(values);
  EXPECT_TRUE(messages().empty());
  EXPECT_EQ(listed().size(), 49U);
  EXPECT_EQ(timesListed("900"), 0);
  EXPECT_EQ(line(2), "Max Ping Result = 900 ms");
  EXPECT_EQ(line(3), "Lost Packets = 1");
  EXPECT_GT(searches, 0);
}

TEST_F(PingBaseline, ASampleOfExactly800IsNoSlowOne) {
  runWith(same(50, 800));
  EXPECT_EQ(line(3), "Lost Packets = 0");
  EXPECT_EQ(listed().size(), 50U);
}

TEST_F(PingBaseline, TwoSlowSamplesAreToldAndTheChainGoesOn) {
  Samples values = same(50, 20);
  values[10] = 900;
  values[20] = 801;
  runWith(values);
  expectOneMessage("Veltrin", kMessageOk, loss);
  EXPECT_EQ(listed().size(), 49U);
  EXPECT_FALSE(stayed);
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Default);
  EXPECT_EQ(searches, 50 * kPing + 3000);
}

TEST_F(PingBaseline, ThreeSlowSamplesPromiseARetestThatNeverComes) {
  Samples values = same(50, 20);
  for (const std::size_t at : {5U, 10U, 20U}) values[at] = 900;
  std::string rest;
  note(kLongAfter - 10, rest, 7);
  runWith(values);
  EXPECT_EQ(rest, "Retesting due to Packet Loss");
  EXPECT_EQ(commands().size(), 50U);
  EXPECT_EQ(searches, -1);
  EXPECT_TRUE(messages().empty());
  EXPECT_EQ(window->List1.count(), 0U);
  EXPECT_EQ(line(3), "Lost Packets = 3");
  EXPECT_EQ(window->mousePointer.get(), MousePointer::Hourglass);
}

// Nothing in the program calls for another run; the window is ready for one.
TEST_F(PingBaseline, ARunThatIsCalledAgainCountsFromNothing) {
  Samples values = same(50, 20);
  for (const std::size_t at : {5U, 10U, 20U}) values[at] = 900;
  values.emplace_back(0);
  std::vector<std::string> lines;
  std::size_t rows = 0;
  at(kLongAfter / 2, [&] { window->RunIt(); });
  at(kLongAfter / 2 + kPing + 10, [&] {
    for (std::size_t label = 0; label < 4; ++label) lines.push_back(line(label));
    rows = window->List1.count();
  });
  runWith(values);
  EXPECT_EQ(lines, (std::vector<std::string>{"Min Ping Result = 0 ms", "Average Ping =  ms",
                                             "Max Ping Result = 0 ms", "Lost Packets = 0"}));
  EXPECT_EQ(rows, 1U);
}

TEST_F(PingBaseline, ARunThatIsCalledAgainBehindThatGivesUp) {
  Samples values = same(100, 20);
  for (const std::size_t at : {5U, 10U, 20U, 65U, 70U, 80U}) values[at] = 900;
  at(kLongAfter / 2, [&] { window->RunIt(); });
  runWith(values);
  expectOneMessage("Veltrin", kMessageOk,
                   "You had excessive packet loss, or dropped ping response. Wait a few minutes "
                   "and try again. Also read the packet loss information on the main menu.");
  EXPECT_FALSE(window->isLoaded());
}

TEST_F(PingBaseline, ASlowSampleBehindALossIsRepeatedAndCounts) {
  Samples values = same(50, 20);
  values[10] = 900;
  values[11] = std::nullopt;
  runWith(values);
  EXPECT_EQ(line(3), "Lost Packets = 2");
}

TEST_F(PingBaseline, ASiteOutOfReachFromTheStartIsRatedExcellent) {
  runWith(Samples(50));
  EXPECT_EQ(line(0), "Min Ping Result =  ms");
  EXPECT_EQ(line(1), "Average Ping =  ms");
  EXPECT_EQ(line(2), "Max Ping Result = 0 ms");
  EXPECT_EQ(line(3), "Lost Packets = 0");
  EXPECT_EQ(line(7), "Ping Test Results are Excellent");
  EXPECT_EQ(listed(), std::vector<std::string>(50, ""));
  EXPECT_GT(searches, 0);
}

TEST_F(PingBaseline, APingThatIsMissingIsToldFiftyTimes) {
  simulation.processes.tool = [](const std::string&) { return std::nullopt; };
  failedStarts = 50;
  runWith({});
  EXPECT_EQ(messages(), std::vector<std::string>(50, "File or command not found"));
  EXPECT_GT(searches, 0);
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The Hop Stability Test: the list of hops, the estimate, the graphs and the pings.
#include "ping/ping_values.h"
#include "simulated/stability_run.h"

namespace veltrin {
namespace {

class StabilityHops : public StabilityRun {
 protected:
  // The list of hops of a run that is closed behind it.
  std::vector<std::string> listed() {
    keepTheProgramRunning();
    open();
    closeBehindTheList();
    test();
    std::vector<std::string> addresses;
    for (std::size_t at = 0; at < window->TestIPs.count(); ++at) {
      addresses.push_back(window->TestIPs.item(at));
    }
    return addresses;
  }

  static constexpr std::int64_t kFirstHop = kTrials + kToolTime + 50;  // ms, its first ping
};

// --- The list ---

TEST_F(StabilityHops, ListsTheAddressesInTheOrderOfTheRoute) {
  path = {bracketed("10.0.0.1"), bare("198.51.100.129"), bracketed("10.0.0.3")};
  EXPECT_EQ(listed(), (std::vector<std::string>{"10.0.0.1", "198.51.100.129 ", "10.0.0.3"}));
}

TEST_F(StabilityHops, KeepsTheBlanksAroundABareAddress) {
  path = {bare("1.2.3.4")};
  EXPECT_EQ(listed(), std::vector<std::string>{" 1.2.3.4 "});
}

TEST_F(StabilityHops, ASilentHopLeavesNoGap) {
  path = {bracketed("10.0.0.1"), "*", bracketed("10.0.0.3")};
  EXPECT_EQ(listed(), (std::vector<std::string>{"10.0.0.1", "10.0.0.3"}));
  EXPECT_EQ(values().SilentHops, 1);
}

TEST_F(StabilityHops, CountsTheSilentHopsOfEachRunAnew) {
  path = {"*", "*", bracketed("10.0.0.3")};
  open();
  test();
  EXPECT_EQ(values().SilentHops, 2);
  path = {bracketed("10.0.0.3"), "*"};
  test();
  EXPECT_EQ(values().SilentHops, 1);
  EXPECT_EQ(window->TestIPs.count(), 1U);
}

TEST_F(StabilityHops, ATraceInAnotherLanguageHasNoHops) {
  script = [](const std::string& command) -> std::vector<ToolWrite> {
    if (command.starts_with("ping")) return {{kToolTime, pingReply(30)}};
    return {
        {kToolTime, "over maximaal 30 stappen:\r\n  1  1 ms  1 ms  1 ms  router [10.0.0.1] \r\n"}};
  };
  open();
  test();
  EXPECT_EQ(window->TestIPs.count(), 0U);
  EXPECT_EQ(values().Estimate, 0);
  EXPECT_EQ(window->height.get(), 2970);
  EXPECT_EQ(opened, std::vector<std::string>{"StabilitySUM"});
  EXPECT_EQ(summaryText, "");
}

// --- What it tells of silent hops ---

TEST_F(StabilityHops, SaysNothingOfSilentHopsWhenThereAreNone) {
  pathOf(2);
  listed();
  EXPECT_EQ(window->Text2.text.get(), "");
  EXPECT_EQ(window->BadHops.count(), 0U);
}

TEST_F(StabilityHops, TellsOfOneSilentHop) {
  path = {bracketed("10.0.0.1"), "*"};
  listed();
  EXPECT_EQ(window->Text2.text.get(),
            "   1 Hop showed packet loss and will not be tested, indepth will be performed\r\n");
  ASSERT_EQ(window->BadHops.count(), 1U);
  EXPECT_EQ(window->BadHops.item(0), "1");
}

TEST_F(StabilityHops, TellsOfSeveralSilentHops) {
  path = {bracketed("10.0.0.1"), "*", "*", "*"};
  listed();
  EXPECT_EQ(
      window->Text2.text.get(),
      "   3 Hops showed packet loss and will not be tested, indepth will be performed\r\n"
      "   This may be an indication that the destination provider has blocked these test\r\n");
  ASSERT_EQ(window->BadHops.count(), 1U);
  EXPECT_EQ(window->BadHops.item(0), "3");
}

TEST_F(StabilityHops, TellsOfSilentHopsInTheBoxOfTheToolsToo) {
  path = {bracketed("10.0.0.1"), "*", "*"};
  keepTheProgramRunning();
  open();
  std::string text;
  window->txtOutputs.change = [&, follow = window->txtOutputs.change] {
    if (window->txtOutputs.text.get().size() > text.size()) text = window->txtOutputs.text;
    follow();
  };
  closeBehindTheList();
  test();
  EXPECT_TRUE(text.ends_with(
      "\r\n\r\nTotal Hops = 1\r\n"
      "   2 Hops showed packet loss and will not be tested, indepth will be performed\r\n"
      "   This may be an indication that the destination provider has blocked these test\r\n"))
      << text;
}

// --- Estimate and height, for every length of a path ---

struct PathCase {
  std::size_t hops;
  int estimate;  // s
  int height;    // twips
};

class StabilityPath : public StabilityRun, public testing::WithParamInterface<PathCase> {};

TEST_P(StabilityPath, HasItsEstimateItsHeightAndItsGraphs) {
  const PathCase wanted = GetParam();
  keepTheProgramRunning();
  pathOf(wanted.hops);
  open();
  std::vector<std::size_t> graphs{99};
  window->txtOutputs.change = [&, follow = window->txtOutputs.change] {
    if (window->txtOutputs.text == "Testing Hop 1\r\n") {
      graphs = visibleGraphs();
      window->close();
    }
    follow();
  };
  test();
  if (wanted.hops == 0) graphs = visibleGraphs();
  EXPECT_EQ(values().Estimate, wanted.estimate);
  EXPECT_EQ(window->height.get(), wanted.height);
  EXPECT_EQ(graphs, range(0, std::min<std::size_t>(wanted.hops, 16)));
}

INSTANTIATE_TEST_SUITE_P(
    All, StabilityPath,
    testing::Values(PathCase{0, 0, 2970}, PathCase{1, 24, 2970}, PathCase{2, 48, 2970},
                    PathCase{3, 102, 3650}, PathCase{4, 156, 3650}, PathCase{5, 268, 4300},
                    PathCase{6, 380, 4300}, PathCase{7, 492, 4950}, PathCase{8, 604, 4950},
                    PathCase{9, 716, 5600}, PathCase{10, 828, 5600}, PathCase{11, 940, 6250},
                    PathCase{12, 1052, 6250}, PathCase{13, 1164, 6900}, PathCase{14, 1276, 6900},
                    PathCase{15, 1388, 7550}, PathCase{16, 1500, 7550}, PathCase{17, 1612, 7550},
                    PathCase{18, 1724, 7550}, PathCase{30, 3068, 7550}),
    [](const auto& info) { return std::to_string(info.param.hops) + "Hops"; });

// --- The remaining time ---

TEST_F(StabilityHops, CountsTheEstimateDownOnceASecond) {
  pathOf(3);
  open();
  std::vector<std::string> shown;
  const std::int64_t list = kFirstHop;
  at(list + 999, [&] { shown.push_back(window->Label4.caption); });
  at(list + 1001, [&] { shown.push_back(window->Label4.caption); });
  at(list + 2001, [&] { shown.push_back(window->Label4.caption); });
  at(list + 43001, [&] { shown.push_back(window->Label4.caption); });
  at(list + 90001, [&] { shown.push_back(window->Label4.caption); });
  test();
  EXPECT_EQ(shown, (std::vector<std::string>{
                       "", "Estimated Time Remaining 1:41", "Estimated Time Remaining 1:40",
                       "Estimated Time Remaining 0:59", "Estimated Time Remaining 0:12"}));
}

TEST_F(StabilityHops, BlanksTheRemainingTimeWhenTheEstimateIsOver) {
  pathOf(1);
  open();
  std::vector<std::string> shown;
  at(kFirstHop + 5000, [&] { values().Estimate = 8; });
  at(kFirstHop + 7001, [&] { shown.push_back(window->Label4.caption); });
  at(kFirstHop + 8001, [&] { shown.push_back(window->Label4.caption); });
  at(kFirstHop + 8500, [&] { window->Label4.caption = "still there"; });
  at(kFirstHop + 9001, [&] { shown.push_back(window->Label4.caption); });
  test();
  EXPECT_EQ(shown, (std::vector<std::string>{"Estimated Time Remaining 0:01", "", ""}));
}

TEST_F(StabilityHops, CountsASecondRunFromItsBeginning) {
  testPath(1);
  std::string shown;
  const std::int64_t start = simulation.loop.milliseconds();
  at(start + kFirstHop + 1001, [&] { shown = window->Label4.caption; });
  test();
  EXPECT_EQ(shown, "Estimated Time Remaining 0:23");
}

// --- The pings ---

TEST_F(StabilityHops, PingsEachHopAHundredTimesOneHopAfterTheOther) {
  testPath(3);
  std::vector<std::string> wanted(4, "ping www.wikipedia.org -n 1");
  wanted.push_back("tracert www.wikipedia.org");
  for (const char* hop : {"10.0.0.1", "10.0.0.2", "10.0.0.3"}) {
    wanted.insert(wanted.end(), 100, "ping " + std::string(hop) + " -n 1");
  }
  EXPECT_EQ(commands(), wanted);
}

TEST_F(StabilityHops, PingsABareAddressWithItsBlanks) {
  path = {bare("1.2.3.4")};
  open();
  test();
  EXPECT_EQ(commands().back(), "ping  1.2.3.4  -n 1");
}

TEST_F(StabilityHops, PausesLongerBehindThePingsToFartherHops) {
  testPath(5);
  const auto pause = [&](std::size_t hop) {
    const auto pings = pingsTo(addressOf(hop));
    return pings.at(99) - pings.at(98) - kToolTime;
  };
  EXPECT_EQ(pause(1), 200);
  EXPECT_EQ(pause(2), 200);
  EXPECT_EQ(pause(3), 500);
  EXPECT_EQ(pause(4), 1000);
  EXPECT_EQ(pause(5), 1000);
}

TEST_F(StabilityHops, ShowsTheAddressAndTheNumberOfTheHop) {
  pathOf(2);
  open();
  std::vector<std::string> announced;
  std::vector<std::string> addresses;
  window->txtOutputs.change = [&, follow = window->txtOutputs.change] {
    if (window->txtOutputs.text.get().starts_with("Testing Hop")) {
      announced.push_back(window->txtOutputs.text);
      addresses.push_back(window->Text1.text);
    }
    follow();
  };
  test();
  EXPECT_EQ(announced, (std::vector<std::string>{"Testing Hop 1\r\n", "Testing Hop 2\r\n"}));
  EXPECT_EQ(addresses, (std::vector<std::string>{"10.0.0.1", "10.0.0.2"}));
}

TEST_F(StabilityHops, ReadsATimeFromTheWholeTextOfThePing) {
  pathOf(1);
  open();
  script = [trials = script](const std::string& command) -> std::vector<ToolWrite> {
    if (command != "ping 10.0.0.1 -n 1") return trials(command);
    return {{kToolTime, "Aver"}, {kToolTime, "age = 44ms\r\n"}};
  };
  test();
  EXPECT_EQ(window->results.item(0), "44");
  EXPECT_EQ(window->results.item(99), "44");
}

TEST_F(StabilityHops, ShowsTheLastTime) {
  pathOf(1);
  open();
  timesOf("10.0.0.1", {17, 0, 3, 2500});
  std::vector<std::string> shown;
  for (int ping = 1; ping <= 4; ++ping) {
    at(kFirstHop + ping * kNearPing + 10, [&] { shown.push_back(window->Label3.caption); });
  }
  test();
  EXPECT_EQ(shown, (std::vector<std::string>{"17", "0", "3", "2500"}));
}

TEST_F(StabilityHops, ALostReplyRepeatsTheLastTime) {
  pathOf(1);
  open();
  timesOf("10.0.0.1", {17, std::nullopt, std::nullopt, 40});
  test();
  EXPECT_EQ(window->results.item(0), "17");
  EXPECT_EQ(window->results.item(1), "17");
  EXPECT_EQ(window->results.item(2), "17");
  EXPECT_EQ(window->results.item(3), "40");
}

TEST_F(StabilityHops, ALostFirstReplyOfAHopTakesTheLastOneOfTheHopBefore) {
  pathOf(2);
  open();
  timesOf("10.0.0.1", times({{99, 10}, {1, 77}}));
  timesOf("10.0.0.2", {std::nullopt, 20});
  test();
  EXPECT_EQ(window->results.item(0), "77");
  EXPECT_EQ(window->results.item(1), "20");
}

TEST_F(StabilityHops, ReadsNoTimeFromTheTrace) {
  pathOf(0);
  path.push_back("Average = 7ms.example [10.0.0.1] ");
  open();
  timesOf(destination, times({{4, 25}}));
  timesOf("10.0.0.1", {std::nullopt});
  test();
  EXPECT_EQ(window->results.item(0), "25");
}

TEST_F(StabilityHops, ATimeThatIsNoNumberLeavesTheOneBefore) {
  pathOf(1);
  open();
  script = [trials = script,
            asked = 0](const std::string& command) mutable -> std::vector<ToolWrite> {
    if (command != "ping 10.0.0.1 -n 1") return trials(command);
    return {{kToolTime, ++asked == 2 ? "Average = soonms\r\n" : "Average = 44ms\r\n"}};
  };
  test();
  EXPECT_EQ(window->results.item(1), "44");
  EXPECT_EQ(window->results.count(), 100U);
}

TEST_F(StabilityHops, EmptiesTheListOfTimesForEachHop) {
  pathOf(2);
  open();
  timesOf("10.0.0.1", times({{100, 10}}));
  timesOf("10.0.0.2", times({{100, 20}}));
  test();
  ASSERT_EQ(window->results.count(), 100U);
  EXPECT_EQ(window->results.item(0), "20");
}

// What the user writes in the box of the address is where the next ping goes.
TEST_F(StabilityHops, ReadsTheBoxOfTheAddressForEachPing) {
  pathOf(1);
  open();
  at(kFirstHop + 10 * kNearPing + 100,
     [&] { simulation.desktop.type(window->Text1, "near.example"); });
  test();
  EXPECT_EQ(pingsTo("10.0.0.1").size(), 11U);
  EXPECT_EQ(pingsTo("near.example").size(), 89U);
}

TEST_F(StabilityHops, ADestinationFartherThanThereAreGraphsIsTestedToo) {
  testPath(32);
  EXPECT_EQ(pingsTo(addressOf(31)).size(), 100U);
  EXPECT_EQ(pingsTo(addressOf(32)).size(), 100U);
  EXPECT_NE(summaryText.find("Results for IP: 10.0.0.32Average Ping = 30"), std::string::npos);
}

TEST_F(StabilityHops, AWindowClosedAmongThePingsStartsNoFurtherOne) {
  keepTheProgramRunning();
  pathOf(2);
  open();
  at(kFirstHop + 5 * kNearPing + 100, [&] { window->close(); });
  test();
  EXPECT_EQ(pingsTo("10.0.0.1").size(), 6U);
  EXPECT_EQ(window->results.count(), 5U);
  EXPECT_TRUE(pingsTo("10.0.0.2").empty());
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(window->Text2.text.get(), "");
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The Bandwidth monitor: its load, its dials, its life.
#include <gmock/gmock.h>

#include "monitor/frmIP.h"
#include "simulated/network_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class BandwidthMonitor : public NetworkRun {};

// --- Load ---

TEST_F(BandwidthMonitor, HasItsTitle) {
  EXPECT_EQ(open().Label1.caption.get(), "NETWORK BANDWIDTH");
  EXPECT_EQ(window->caption.get(), "NETWORK BANDWIDTH");
}

TEST_F(BandwidthMonitor, HasAMenuOfOneEntry) {
  EXPECT_EQ(open().mnuopt.caption.get(), "Options");
  EXPECT_EQ(window->mnucloseme.caption.get(), "Exit");
  EXPECT_FALSE(window->mnuopt.visible);
}

TEST_F(BandwidthMonitor, TheSmallDialsAloneAreSeenBeforeTheFirstTick) {
  const frmNetwork unloaded(program());
  for (const auto* dial : {&unloaded.NetRec1, &unloaded.NetSend1, &unloaded.NetTotal1}) {
    EXPECT_TRUE(dial->front().visible);
  }
  for (const auto* dial : {&unloaded.NetRec2, &unloaded.NetSend2, &unloaded.NetTotal2,
                           &unloaded.NetRec3, &unloaded.NetSend3, &unloaded.NetTotal3}) {
    EXPECT_FALSE(dial->front().visible);
  }
}

TEST_F(BandwidthMonitor, ItsDialsHaveTheirSettings) {
  const frmNetwork& opened = open();
  const std::vector<std::pair<const frmNetwork::Gauge*, int>> dials = {
      {&opened.NetRec1, 1000},   {&opened.NetRec2, 10000},   {&opened.NetRec3, 100000},
      {&opened.NetSend1, 1000},  {&opened.NetSend2, 10000},  {&opened.NetSend3, 100000},
      {&opened.NetTotal1, 1000}, {&opened.NetTotal2, 10000}, {&opened.NetTotal3, 100000}};
  for (const auto& [array, top] : dials) {
    const bkCProg& dial = (*array)[0];
    SCOPED_TRACE(dial.name());
    EXPECT_EQ(dial.index(), 0);
    EXPECT_EQ(dial.Max.get(), top);
    EXPECT_EQ(dial.Min.get(), 0);
    EXPECT_EQ(dial.OffsetAngle.get(), 210);
    EXPECT_EQ(dial.Span.get(), 302);
    EXPECT_EQ(dial.Radius.get(), 32);  // 480 twips
    EXPECT_EQ(dial.BackColor.get(), 0x95B7BDU);
    EXPECT_EQ(dial.MidColor.get(), 0xC0U);
    EXPECT_EQ(dial.EndColor.get(), 0xFFU);
    EXPECT_EQ(dial.NeedleColor.get(), 0xC0U);
    EXPECT_TRUE(dial.ShowNeedle.get());
  }
}

TEST_F(BandwidthMonitor, IsPlacedCountsItsInterfacesGoesOnTopAndIsShownBeforeItsFirstTick) {
  program().show<startup>();
  simulation.counters.instances = {kCard};
  simulation.keepJournal();
  open();
  const std::string card = "\\\\MYPC\\Network Interface(Card One)\\Bytes ";
  EXPECT_THAT(simulation.journal,
              ElementsAre("place frmNetwork beside startup", "enumerate Network Interface",
                          "add " + card + "Total/sec", "add " + card + "Received/sec",
                          "add " + card + "Sent/sec", "frmNetwork above all", "show frmNetwork",
                          "collect", "value " + card + "Total/sec", "value " + card + "Sent/sec",
                          "value " + card + "Received/sec", "show frmNetwork"));
}

TEST_F(BandwidthMonitor, StandsAThousandTwipsLeftOfAndAboveTheMenu) {
  const auto menu = program().show<startup>();
  simulation.desktop.places[menu.get()] = {400, 300, 900, 800};
  open();
  EXPECT_EQ(simulation.desktop.places[window.get()].left, 400 - 66);
  EXPECT_EQ(simulation.desktop.places[window.get()].top, 300 - 66);
}

TEST_F(BandwidthMonitor, OpensWithoutTheMenu) {
  open();
  EXPECT_TRUE(window->isLoaded());
  EXPECT_EQ(simulation.desktop.places.count(window.get()), 0U);
}

TEST_F(BandwidthMonitor, SetsItsToolTipsInEnglish) {
  open();
  EXPECT_EQ(window->Logo.toolTip.get(), "Click to Move, Right Click to Exit");
  EXPECT_EQ(window->NotOnTOP.toolTip.get(), "Force Not ON TOP");
  EXPECT_EQ(window->OnTopALL.toolTip.get(), "Force ON TOP ALL");
}

TEST_F(BandwidthMonitor, SetsNoToolTipInDutch) {
  program().LanguageId = kDutch;
  EXPECT_EQ(open().Logo.toolTip.get(), "");
}

TEST_F(BandwidthMonitor, TicksEachSecondFromItsLoadOn) {
  openOverACard();
  EXPECT_EQ(window->Timer1.interval.get(), 1000);
  EXPECT_EQ(simulation.counters.collections, 1);
  simulation.run(999);
  EXPECT_EQ(simulation.counters.collections, 1);
  simulation.run(1);
  EXPECT_EQ(simulation.counters.collections, 2);
  simulation.run(8000);
  EXPECT_EQ(simulation.counters.collections, 10);
}

// --- The dials ---

TEST_F(BandwidthMonitor, WithoutAnInterfaceAllRowsShowTheSmallDialAt0) {
  open();
  for (int second = 0; second < 2; ++second) {
    EXPECT_THAT(received(), ElementsAre("1000: 0"));
    EXPECT_THAT(sent(), ElementsAre("1000: 0"));
    EXPECT_THAT(total(), ElementsAre("1000: 0"));
    simulation.run(1000);
  }
}

TEST_F(BandwidthMonitor, EachRowShowsItsFigureInKilobytesOf1000Bytes) {
  openOverACard();
  secondOf(12, 345, 357);
  EXPECT_THAT(received(), ElementsAre("1000: 12"));
  EXPECT_THAT(sent(), ElementsAre("1000: 345"));
  EXPECT_THAT(total(), ElementsAre("1000: 357"));
}

TEST_F(BandwidthMonitor, AllInterfacesAreAddedUp) {
  simulation.counters.instances = {"Card One", "Card Two"};
  open();
  traffic("Card One", 100'000, 1'000'000, 1'100'000);
  traffic("Card Two", 200'000, 9'000'000, 9'200'000);
  simulation.run(1000);
  EXPECT_THAT(received(), ElementsAre("1000: 300"));
  EXPECT_THAT(sent(), ElementsAre("100000: 10000"));
  EXPECT_THAT(total(), ElementsAre("100000: 10300"));
}

TEST_F(BandwidthMonitor, ASeventhInterfaceDoesNotCount) {
  simulation.counters.instances = {"Card One",  "Card Two", "Card Three", "Card Four",
                                   "Card Five", "Card Six", "Card Seven"};
  open();
  for (const std::string& name : simulation.counters.instances) traffic(name, 1000, 2000, 3000);
  simulation.run(1000);
  EXPECT_EQ(counters().NetInterfaceCount, 7);
  EXPECT_THAT(received(), ElementsAre("1000: 6"));
  EXPECT_THAT(sent(), ElementsAre("1000: 12"));
  EXPECT_THAT(total(), ElementsAre("1000: 18"));
}

TEST_F(BandwidthMonitor, FiguresStartAnewWithEachTick) {
  openOverACard();
  secondOf(500, 600, 700);
  secondOf(5, 6, 7);
  EXPECT_THAT(received(), ElementsAre("1000: 5"));
  EXPECT_THAT(sent(), ElementsAre("1000: 6"));
  EXPECT_THAT(total(), ElementsAre("1000: 7"));
}

struct Change {
  double kilobytes;
  const char* dial;
};

class ChangeOfDials : public NetworkRun, public testing::WithParamInterface<Change> {};

TEST_P(ChangeOfDials, ComesAt95PercentOfTheScaleOfTheRoundedFigureInEachRow) {
  openOverACard();
  secondOf(GetParam().kilobytes, 0, 0);
  EXPECT_THAT(received(), ElementsAre(GetParam().dial));
  secondOf(0, GetParam().kilobytes, 0);
  EXPECT_THAT(sent(), ElementsAre(GetParam().dial));
  EXPECT_THAT(received(), ElementsAre("1000: 0"));
  secondOf(0, 0, GetParam().kilobytes);
  EXPECT_THAT(total(), ElementsAre(GetParam().dial));
}

INSTANTIATE_TEST_SUITE_P(Figures, ChangeOfDials,
                         testing::Values(Change{0.4995, "1000: 0"}, Change{0.5, "1000: 1"},
                                         Change{949.4, "1000: 949"}, Change{949.5, "10000: 950"},
                                         Change{950, "10000: 950"}, Change{9499.4, "10000: 9499"},
                                         Change{9499.5, "100000: 9500"},
                                         Change{9500, "100000: 9500"},
                                         Change{100001, "100000: 100000"}),
                         [](const auto& change) { return "Case" + std::to_string(change.index); });

TEST_F(BandwidthMonitor, TheDialThatComesUpHasItsValueBeforeTheOthersGo) {
  openOverACard();
  secondOf(10, 0, 0);
  std::vector<std::string> steps;
  const auto note = [&] {
    std::string step;
    for (const std::string& dial : received()) step += dial + " ";
    steps.push_back(step);
  };
  window->NetRec1[0].visible.observe(note);
  window->NetRec2[0].visible.observe(note);
  secondOf(2000, 0, 0);
  window->NetRec1[0].visible.observe({});
  window->NetRec2[0].visible.observe({});
  EXPECT_THAT(steps, ElementsAre("1000: 10 10000: 0 ", "10000: 2000 "));
}

TEST_F(BandwidthMonitor, ADialThatGoesKeepsItsLastValue) {
  openOverACard();
  secondOf(900, 0, 0);
  secondOf(2000, 0, 0);
  EXPECT_EQ(window->NetRec1[0].Value.get(), 900);
}

TEST_F(BandwidthMonitor, AFigureBeyondAllNumbersLeavesTheLargeDialAsItWas) {
  openOverACard();
  secondOf(50000, 0, 0);
  secondOf(1e13, 0, 0);
  EXPECT_THAT(received(), ElementsAre("100000: 50000"));
}

TEST_F(BandwidthMonitor, EventsRunBehindEachReadingAndEachFigureThatIsAddedUp) {
  simulation.counters.instances = {"Card One", "Card Two"};
  open();
  int openings = 0;  // of the gate
  simulation.loop.gate().onOpen([&] { ++openings; }, [] { return false; });
  simulation.run(1000);
  simulation.loop.gate().onOpen({}, {});
  constexpr int kMainLoop = 1;
  constexpr int kReadings = 2 * 3;
  constexpr int kFigures = 2 * 3;
  EXPECT_EQ(openings, kMainLoop + kReadings + kFigures);
}

// --- Its life ---

TEST_F(BandwidthMonitor, OpensBesideTheMenuByItsButton) {
  const auto menu = program().show<startup>();
  simulation.desktop.click(menu->Command10);
  EXPECT_TRUE(program().isLoaded<frmNetwork>());
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

TEST_F(BandwidthMonitor, OpenedAgainItAddsItsCountersAgain) {
  keepTheProgramRunning();
  openOverACard().close();
  EXPECT_THAT(simulation.counters.paths, SizeIs(3));
  openOverACard();
  EXPECT_THAT(simulation.counters.paths, SizeIs(6));
  secondOf(7, 8, 15);
  EXPECT_THAT(received(), ElementsAre("1000: 7"));
  EXPECT_THAT(sent(), ElementsAre("1000: 8"));
  EXPECT_THAT(total(), ElementsAre("1000: 15"));
}

TEST_F(BandwidthMonitor, ClosedItReadsNoMoreAndIsAboveAllNoMore) {
  keepTheProgramRunning();
  openOverACard().close();
  const int before = simulation.counters.collections;
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, before);
  EXPECT_FALSE(isOnTop());
}

TEST_F(BandwidthMonitor, ClosedInMidTickItReadsToTheEndAndNoMore) {
  keepTheProgramRunning();
  openOverACard();
  traffic(kCard, 5000, 6000, 11000);
  simulation.counters.onCall = [this] {
    simulation.counters.onCall = nullptr;
    simulation.loop.after(0, [this] { simulation.desktop.closeWindow(*window); });
  };
  simulation.run(1000);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_THAT(received(), ElementsAre("1000: 5"));
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, 2);
}

TEST_F(BandwidthMonitor, ClosedInMidLoadItIsNotShownAgain) {
  keepTheProgramRunning();
  simulation.counters.instances = {kCard};
  simulation.counters.onCall = [this] {
    simulation.counters.onCall = nullptr;
    simulation.loop.after(0, [this] {
      program().show<frmNetwork>();
      program().unload<frmNetwork>();
    });
  };
  open();
  EXPECT_THAT(simulation.desktop.shown, SizeIs(1));
  EXPECT_FALSE(isOnTop());
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, 0);
}

TEST_F(BandwidthMonitor, ATickOfTheProtocolMonitorComesInTheMiddleOfItsOwn) {
  openOverACard();
  program().show<frmIP>();
  simulation.keepJournal();
  traffic(kCard, 5000, 6000, 11000);
  figure("IPv4", "Datagrams/sec", 42);
  simulation.run(1000);
  // Which of both reads, in the order in which it came to it.
  std::vector<std::string> readers;
  for (const std::string& entry : simulation.journal) {
    std::string reader = entry;
    if (entry.find("Network Interface") != std::string::npos) reader = "network";
    if (entry.find("\\IPv") != std::string::npos) reader = entry.substr(13, 4);
    if (readers.empty() || readers.back() != reader) readers.push_back(reader);
  }
  EXPECT_THAT(readers,
              ElementsAre("collect", "network", "collect", "IPv4", "collect", "IPv6", "network"));
  EXPECT_THAT(received(), ElementsAre("1000: 5"));
  EXPECT_THAT(sent(), ElementsAre("1000: 6"));
  EXPECT_THAT(total(), ElementsAre("1000: 11"));
  EXPECT_EQ(program().show<frmIP>()->LeftVal[0].caption.get(), "42 sec");
}

TEST_F(BandwidthMonitor, BothMonitorsKeepTheirPaceBesideEachOther) {
  openOverACard();
  program().show<frmIP>();
  const int before = simulation.counters.collections;
  simulation.run(60'000);
  EXPECT_EQ(simulation.counters.collections, before + 60 + 2 * 60);
}

TEST_F(BandwidthMonitor, AnHourOfTicksAddsNoCounterAndWritesNoFile) {
  openOverACard();
  simulation.run(3'600'000);
  EXPECT_EQ(simulation.counters.collections, 1 + 3600);
  EXPECT_THAT(simulation.counters.paths, SizeIs(3));
  EXPECT_TRUE(simulation.files.contents.empty());
}

}  // namespace
}  // namespace veltrin

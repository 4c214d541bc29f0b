// SPDX-License-Identifier: GPL-3.0-or-later
// The Protocol monitor.
#include "monitor/frmIP.h"

#include <gmock/gmock.h>

#include "frame/startup.h"
#include "simulated/monitor_run.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

const std::vector<std::string> kCaptions = {"Datagrams",
                                            "Datagrams Rec",
                                            "Datagrams Rec Header Errors",
                                            "Datagrams Rec Address Errors",
                                            "Datagrams Forwarded",
                                            "Datagrams Rec Unknown Protocol",
                                            "Datagrams Rec Discarded",
                                            "Datagrams Rec Delivered",
                                            "Datagrams Sent",
                                            "Datagrams Outbound Discarded",
                                            "Datagrams Outbound No Route",
                                            "Fragments Rec",
                                            "Fragments Re-assembled",
                                            "Fragment Re-assembly Failures",
                                            "Fragmented Datagrams",
                                            "Fragmentation Failures",
                                            "Fragments Created"};

// What a side shows that nothing was counted for.
const std::vector<std::string> kZeros = {"0 sec", "0 sec", "0",     "0", "0 sec", "0",
                                         "0",     "0 sec", "0 sec", "0", "0",     "0 sec",
                                         "0 sec", "0",     "0 sec", "0", "0 sec"};

class ProtocolMonitor : public MonitorRun {
 protected:
  frmIP& open() {
    window = program().show<frmIP>();
    return *window;
  }

  static std::vector<std::string> texts(const frmIP::Column& column) {
    std::vector<std::string> captions;
    for (const Label& label : column) captions.push_back(label.caption);
    return captions;
  }

  std::shared_ptr<frmIP> window;
};

// --- Load ---

TEST_F(ProtocolMonitor, HasItsTitleAndItsHeading) {
  const frmIP& opened = open();
  EXPECT_EQ(opened.caption.get(), "Indepth Internet Monitor");
  EXPECT_EQ(opened.Label1.caption.get(),
            "               Internet Protocal Version 4"
            "                                Internet Protocal Version 6");
}

TEST_F(ProtocolMonitor, HasItsStateBehindTheLoad) {
  const frmIP& opened = open();
  EXPECT_EQ(opened.CounterTotal, 34);
  EXPECT_EQ(opened.RowCount, 17);
  EXPECT_EQ(opened.RowsRight, 17);
  EXPECT_EQ(opened.FormName, "NetProtocol");
  EXPECT_EQ(opened.ValueColumn, 11);
}

TEST_F(ProtocolMonitor, Has17CaptionsTheSameOnBothSides) {
  const frmIP& opened = open();
  EXPECT_EQ(texts(opened.LeftCap), kCaptions);
  EXPECT_EQ(texts(opened.RightCap), kCaptions);
}

TEST_F(ProtocolMonitor, HasOnlyItsFirstRowBeforeItIsLoaded) {
  const frmIP form(program());
  for (const auto* column : {&form.LeftCap, &form.LeftVal, &form.RightCap, &form.RightVal}) {
    for (std::size_t row = 0; row < column->size(); ++row) {
      EXPECT_EQ((*column)[row].visible.get(), row == 0) << row;
    }
  }
  EXPECT_EQ(form.height.get(), 0);
}

TEST_F(ProtocolMonitor, EachRowStands300TwipsBelowTheOneBeforeIt) {
  const frmIP& opened = open();
  for (const auto* column :
       {&opened.LeftCap, &opened.LeftVal, &opened.RightCap, &opened.RightVal}) {
    const Label& first = (*column)[0];
    for (std::size_t row = 1; row < column->size(); ++row) {
      const Label& label = (*column)[row];
      EXPECT_EQ(label.top.get(), first.top.get() + 300 * static_cast<int>(row)) << row;
      EXPECT_EQ(label.left.get(), first.left.get()) << row;
      EXPECT_TRUE(label.visible.get()) << row;
    }
  }
}

TEST_F(ProtocolMonitor, IsAsHighAsTheTopOfItsLastRowAnd450Twips) {
  const frmIP& opened = open();
  EXPECT_EQ(opened.height.get(), opened.RightCap[16].top.get() + 450);
  EXPECT_EQ(opened.height.get(), opened.RightCap[0].top.get() + 5250);
}

TEST_F(ProtocolMonitor, GrowsWithEachRow) {
  std::vector<int> heights;
  auto form = std::make_shared<frmIP>(program());
  form->height.observe([&] { heights.push_back(form->height); });
  form->load();
  form->height.observe({});
  ASSERT_THAT(heights, SizeIs(32));  // down to the last row, on either side
  EXPECT_EQ(heights[0], form->LeftCap[1].top.get() + 450);
  EXPECT_EQ(heights[15], form->LeftCap[16].top.get() + 450);
  EXPECT_EQ(heights[16], form->RightCap[1].top.get() + 450);
}

TEST_F(ProtocolMonitor, AddsItsCountersBeforeItReadsThemOnceAndShowsItself) {
  simulation.keepJournal();
  open();
  std::vector<std::string> steps;
  for (const std::string& entry : simulation.journal) {
    const std::string step = entry.substr(0, entry.rfind('\\'));
    if (steps.empty() || steps.back() != step) steps.push_back(step);
  }
  EXPECT_THAT(steps,
              ElementsAre("add \\\\MYPC\\IPv4", "add \\\\MYPC\\IPv6", "collect",
                          "value \\\\MYPC\\IPv4", "collect", "value \\\\MYPC\\IPv6", "show frmIP"));
}

TEST_F(ProtocolMonitor, TicksEachSecondFromItsLoadOn) {
  const frmIP& opened = open();
  EXPECT_EQ(opened.Timer1.interval.get(), 1000);
  EXPECT_TRUE(opened.Timer1.enabled.get());
  EXPECT_EQ(simulation.counters.collections, 2);
  simulation.run(999);
  EXPECT_EQ(simulation.counters.collections, 2);
  simulation.run(1);
  EXPECT_EQ(simulation.counters.collections, 4);
  simulation.run(9000);
  EXPECT_EQ(simulation.counters.collections, 22);
}

// --- The figures ---

TEST_F(ProtocolMonitor, TheFirstTickShows0InAllRows) {
  const frmIP& opened = open();
  EXPECT_EQ(texts(opened.LeftVal), kZeros);
  EXPECT_EQ(texts(opened.RightVal), kZeros);
}

TEST_F(ProtocolMonitor, EachFigureComesToTheRowOfItsCounter) {
  const frmIP& opened = open();
  for (std::size_t i = 0; i < kProtocolNames.size(); ++i) {
    figure("IPv4", kProtocolNames[i], 100 + static_cast<double>(i));
    figure("IPv6", kProtocolNames[i], 200 + static_cast<double>(i));
  }
  simulation.run(1000);
  EXPECT_THAT(
      texts(opened.LeftVal),
      ElementsAre("100 sec", "101 sec", "102", "103", "104 sec", "105", "106", "107 sec", "108 sec",
                  "109", "110", "111 sec", "112 sec", "113", "114 sec", "115", "116 sec"));
  EXPECT_THAT(
      texts(opened.RightVal),
      ElementsAre("200 sec", "201 sec", "202", "203", "204 sec", "205", "206", "207 sec", "208 sec",
                  "209", "210", "211 sec", "212 sec", "213", "214 sec", "215", "216 sec"));
}

TEST_F(ProtocolMonitor, TotalsOfMoreThanAMillionAreGrouped) {
  const frmIP& opened = open();
  figure("IPv4", "Datagrams Received Discarded", 1234567);
  figure("IPv6", "Fragmentation Failures", 4294967295);
  simulation.run(1000);
  EXPECT_EQ(opened.LeftVal[6].caption.get(), "1,234,567");
  EXPECT_EQ(opened.RightVal[15].caption.get(), "4,294,967,295");
}

TEST_F(ProtocolMonitor, FiguresAreRoundedToWholeNumbers) {
  const frmIP& opened = open();
  figure("IPv4", "Datagrams/sec", 999.5);
  figure("IPv4", "Datagrams Sent/sec", 2.49);
  simulation.run(1000);
  EXPECT_EQ(opened.LeftVal[0].caption.get(), "1,000 sec");
  EXPECT_EQ(opened.LeftVal[8].caption.get(), "2 sec");
}

TEST_F(ProtocolMonitor, WithoutCountersOfVersion6ItsSideShows0) {
  simulation.counters.onCall = [this] {
    const auto& journal = simulation.journal;
    const bool isVersion6 = !journal.empty() && journal.back().starts_with("add \\\\MYPC\\IPv6");
    simulation.counters.addStatus = isVersion6 ? kPdhMoreData : 0;
  };
  simulation.keepJournal();
  for (const std::string& name : kProtocolNames) {
    figure("IPv4", name, 7);
    figure("IPv6", name, 7);
  }
  const frmIP& opened = open();
  simulation.run(3000);
  EXPECT_EQ(texts(opened.RightVal), kZeros);
  EXPECT_EQ(opened.LeftVal[0].caption.get(), "7 sec");
}

TEST_F(ProtocolMonitor, EventsRunBehindEachLabelTheLeftOneFirst) {
  const frmIP& opened = open();
  for (const std::string& name : kProtocolNames) {
    figure("IPv4", name, 1);
    figure("IPv6", name, 2);
  }
  // How many labels show their new figures whenever events run, in the order of the rows.
  std::vector<std::string> seen;
  const auto note = [&] {
    std::string shown;
    for (std::size_t row = 0; row < 2; ++row) {
      shown += opened.LeftVal[row].caption.get().substr(0, 1);
      shown += opened.RightVal[row].caption.get().substr(0, 1);
    }
    if (seen.empty() || seen.back() != shown) seen.push_back(shown);
  };
  std::function<void()> look = [&] { note(); };
  for (Label* label :
       {&window->LeftVal[0], &window->RightVal[0], &window->LeftVal[1], &window->RightVal[1]}) {
    label->caption.observe([&] { simulation.loop.after(0, look); });
  }
  simulation.run(1000);
  EXPECT_THAT(seen, ElementsAre("1000", "1200", "1210", "1212"));
  for (Label* label :
       {&window->LeftVal[0], &window->RightVal[0], &window->LeftVal[1], &window->RightVal[1]}) {
    label->caption.observe({});
  }
}

// --- Its life ---

TEST_F(ProtocolMonitor, OpensBesideTheMenuByItsButton) {
  const auto menu = program().show<startup>();
  simulation.desktop.click(menu->Command12);
  EXPECT_TRUE(program().isLoaded<frmIP>());
  EXPECT_TRUE(simulation.desktop.takesInput(*menu));
}

TEST_F(ProtocolMonitor, OpenedAgainItAddsItsCountersAgain) {
  keepTheProgramRunning();
  open().close();
  EXPECT_THAT(simulation.counters.paths, SizeIs(34));
  open();
  EXPECT_THAT(simulation.counters.paths, SizeIs(68));
  EXPECT_EQ(counters().IPv4Counter[0], 35);
  EXPECT_EQ(counters().IPv6Counter[16], 68);
}

TEST_F(ProtocolMonitor, OpenedWhileItIsOpenItComesToTheFrontAndAddsNothing) {
  open();
  keepTheProgramRunning();
  open();
  EXPECT_EQ(simulation.desktop.shown.back(), window.get());
  EXPECT_THAT(simulation.counters.paths, SizeIs(34));
}

TEST_F(ProtocolMonitor, ClosedItReadsNoMore) {
  keepTheProgramRunning();
  open().close();
  const int before = simulation.counters.collections;
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, before);
}

TEST_F(ProtocolMonitor, ClosedInMidTickItReadsToTheEndAndNoMore) {
  keepTheProgramRunning();
  open();
  simulation.loop.at(1000, [this] {
    simulation.counters.onCall = [this] {
      simulation.counters.onCall = nullptr;
      simulation.loop.after(0, [this] { simulation.desktop.closeWindow(*window); });
    };
  });
  figure("IPv6", "Fragments Created/sec", 5);
  simulation.run(1000);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(simulation.counters.collections, 4);
  EXPECT_EQ(counters().IPv6Value[16], 5);
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, 4);
}

TEST_F(ProtocolMonitor, ClosedInTheMiddleOfItsLoadItStaysClosed) {
  keepTheProgramRunning();
  simulation.counters.onCall = [this] {
    simulation.counters.onCall = nullptr;
    simulation.loop.after(0, [this] { program().unload<frmIP>(); });
  };
  open();
  EXPECT_FALSE(window->isLoaded());
  EXPECT_EQ(simulation.desktop.shown.size(), 1U);
  const int before = simulation.counters.collections;
  simulation.run(5000);
  EXPECT_EQ(simulation.counters.collections, before);
}

TEST_F(ProtocolMonitor, TheEntriesOfItsMenuDoNothing) {
  frmIP& opened = open();
  EXPECT_EQ(opened.mnuopt.caption.get(), "Options");
  EXPECT_FALSE(opened.mnuopt.visible.get());
  const std::vector<MenuEntry*> entries = {&opened.mnuset, &opened.mnuhide, &opened.mnucloseme,
                                           &opened.mnusp1, &opened.mnuquit};
  std::vector<std::string> captions;
  for (MenuEntry* entry : entries) {
    captions.push_back(entry->caption);
    simulation.desktop.choose(*entry);
  }
  EXPECT_THAT(captions, ElementsAre("Preferences", "Hide ME", "Close ME", "-", "Close ALL"));
  EXPECT_TRUE(opened.isLoaded());
  EXPECT_THAT(simulation.desktop.shown, ElementsAre(&opened));
}

// --- Long runs ---

TEST_F(ProtocolMonitor, AnHourOfTicksAddsNoCounterAndWritesNoFile) {
  open();
  simulation.run(3'600'000);
  EXPECT_EQ(simulation.counters.collections, 2 + 2 * 3600);
  EXPECT_THAT(simulation.counters.paths, SizeIs(34));
  EXPECT_TRUE(simulation.files.contents.empty());
}

}  // namespace
}  // namespace veltrin

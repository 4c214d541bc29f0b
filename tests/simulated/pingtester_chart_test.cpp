// SPDX-License-Identifier: GPL-3.0-or-later
// The chart of the Ping Test, which nothing calls yet.
#include "simulated/pingtester_run.h"

namespace veltrin {
namespace {

class PingTesterChart : public PingTesterRun {
 protected:
  // A window with samples by hand, as a run of so many passes leaves them.
  pingtester& openWithRows(const std::vector<std::vector<std::string>>& rows,
                           const std::string& passes) {
    pingtester& opened = open();
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (const std::string& sample : rows[row]) opened.buff[row].add(sample);
    }
    simulation.desktop.type(opened.Combo1, passes);
    simulation.program().shared<PingValues>().PingPasses = passes;
    return opened;
  }

  // What the scale says of rows with these lowest and highest figures.
  void expectScale(const std::vector<std::string>& lows, const std::vector<std::string>& highs,
                   const std::string& lower, const std::string& upper) {
    pingtester& opened = openWithRows({}, "1");
    for (std::size_t row = 0; row < lows.size(); ++row) {
      opened.pinglow[row].caption = lows[row];
      opened.pinghi[row].caption = highs[row];
    }
    opened.Chartit();
    EXPECT_EQ(opened.Text2.text.get(), "Lower = " + lower);
    EXPECT_EQ(opened.PingChart.axisMinimum.get(), Val(lower));
    EXPECT_EQ(opened.Text1.text.get(), "Upper = " + upper);
    EXPECT_EQ(opened.PingChart.axisMaximum.get(), Val(upper));
  }

  std::vector<std::string> messages() const {
    std::vector<std::string> texts;
    for (const auto& message : simulation.desktop.messages) texts.push_back(message.text);
    return texts;
  }
};

TEST_F(PingTesterChart, IsShownWithAScaleOfItsOwnOnAColouredWall) {
  pingtester& opened = openWithRows({}, "1");
  opened.Chartit();
  EXPECT_TRUE(opened.PingChart.visible);
  EXPECT_FALSE(opened.PingChart.automaticScale);
  EXPECT_EQ(opened.PingChart.wallColour.get(), (Colour{235, 234, 225}));
  EXPECT_EQ(opened.PingChart.chartType.get(), ChartType::Line);
  EXPECT_EQ(static_cast<int>(opened.PingChart.chartType.get()), 3);
}

TEST_F(PingTesterChart, TheAxisGoesFromTheLowestToTheHighestFigureOfAllRows) {
  expectScale({"30", "9", "", "8.5", "100"}, {"40", "200", "", "31", "99"}, "8.5", "200");
}

TEST_F(PingTesterChart, TheLastRowCountsForTheAxis) {
  expectScale({"30", "", "", "", "5"}, {"40", "", "", "", "50"}, "5", "50");
}

TEST_F(PingTesterChart, AFirstRowWithoutFiguresIsBelowAllOthers) {
  expectScale({"", "20"}, {"", "60"}, "", "60");
}

TEST_F(PingTesterChart, OfEqualFiguresTheFirstStands) {
  expectScale({"5", "5.0"}, {"60", "60.0"}, "5", "60");
}

TEST_F(PingTesterChart, YieldsBehindTheAxisAndBeforeTheCells) {
  pingtester& opened = openWithRows({{"20"}}, "1");
  opened.pinghi[0].caption = "20";
  std::string upper;
  std::size_t rows = 99;
  simulation.loop.after(0, [&] {
    upper = opened.Text1.text;
    rows = opened.PingChart.rowCount();
  });
  opened.Chartit();
  EXPECT_EQ(upper, "Upper = 20");
  EXPECT_EQ(rows, 0U);
}

TEST_F(PingTesterChart, HasARowForEachPassOfTheRunAndAColumnForEachRowWithSamples) {
  pingtester& opened = openWithRows({{"20", "21"}, {}, {"5"}}, "2");
  simulation.desktop.type(opened.Combo1, "7");
  opened.Chartit();
  EXPECT_EQ(opened.PingChart.columnCount(), 2U);
  EXPECT_EQ(opened.PingChart.rowCount(), 2U);
}

TEST_F(PingTesterChart, PassesThatAreTooManyLeaveTheRowsOfTheBox) {
  pingtester& opened = openWithRows({}, "40000");
  simulation.desktop.type(opened.Combo1, "3");
  opened.Chartit();
  EXPECT_EQ(opened.PingChart.rowCount(), 3U);
}

TEST_F(PingTesterChart, ABoxThatHoldsNoNumberIsPassedOver) {
  pingtester& opened = openWithRows({{"20"}}, "1");
  simulation.desktop.type(opened.Combo1, "many");
  opened.Chartit();
  EXPECT_EQ(opened.PingChart.rowCount(), 1U);
}

// The second column is the second list, whichever rows have samples.
TEST_F(PingTesterChart, EachCellIsToldByTwoMessagesAndHoldsItsSample) {
  pingtester& opened = openWithRows({{"20", "21"}, {"7", "99999"}}, "2");
  opened.Chartit();
  EXPECT_EQ(messages(), (std::vector<std::string>{"1 - 0", "20", "2 - 0", "21", "1 - 1", "7",
                                                  "2 - 1", "99999"}));
  for (const auto& message : simulation.desktop.messages) {
    EXPECT_EQ(message.style, 0);
    EXPECT_EQ(message.title, "Veltrin");
  }
  EXPECT_EQ(opened.PingChart.values(0), (std::vector<double>{20, 21}));
  EXPECT_EQ(opened.PingChart.values(1), (std::vector<double>{7, 99999}));
}

TEST_F(PingTesterChart, APassWithoutASampleCountsAsZero) {
  pingtester& opened = openWithRows({{"20"}}, "2");
  opened.Chartit();
  EXPECT_EQ(messages(), (std::vector<std::string>{"1 - 0", "20", "2 - 0", "0"}));
  EXPECT_EQ(opened.PingChart.values(0), (std::vector<double>{20, 0}));
}

}  // namespace
}  // namespace veltrin

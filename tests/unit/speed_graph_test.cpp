// SPDX-License-Identifier: GPL-3.0-or-later
// The curves of the download test.
#include "download/speed_graph.h"

#include <gtest/gtest.h>
#include <numeric>
#include <vector>

namespace veltrin {
namespace {

constexpr Colour kGreen{0, 255, 0};

using Draw = void (SpeedGraph::*)(std::int32_t, PictureBox&, const Loose&);
using Shift = void (SpeedGraph::*)();

struct ScaleCase {
  const char* name;
  Draw draw;
  double height;
};

const std::vector<ScaleCase> kScales = {
    {"A", &SpeedGraph::DrawUsage1A, 100000}, {"B", &SpeedGraph::DrawUsage1B, 50000},
    {"C", &SpeedGraph::DrawUsage1C, 30000},  {"D", &SpeedGraph::DrawUsage1D, 15000},
    {"E", &SpeedGraph::DrawUsage1E, 10000},  {"F", &SpeedGraph::DrawUsage1F, 5000},
};

// The newest values of the six arrays.
std::vector<std::int32_t> newest(const SpeedGraph& graph) {
  return {graph.UsageA.points().back(), graph.UsageB.points().back(), graph.UsageC.points().back(),
          graph.UsageD.points().back(), graph.UsageE.points().back(), graph.UsageF.points().back()};
}

TEST(SpeedGraph, ItsSixArraysHaveTheirSizesAndStartAtZero) {
  const SpeedGraph graph;
  EXPECT_EQ(graph.UsageA.points(), (std::array<std::int32_t, 100>{}));
  EXPECT_EQ(graph.UsageB.points(), (std::array<std::int32_t, 175>{}));
  EXPECT_EQ(graph.UsageC.points(), (std::array<std::int32_t, 300>{}));
  EXPECT_EQ(graph.UsageD.points(), (std::array<std::int32_t, 1500>{}));
  EXPECT_EQ(graph.UsageE.points(), (std::array<std::int32_t, 3000>{}));
  EXPECT_EQ(graph.UsageF.points(), (std::array<std::int32_t, 6000>{}));
}

class SpeedGraphScale : public ::testing::TestWithParam<ScaleCase> {};

TEST_P(SpeedGraphScale, PlotsFromItsOwnHeightIntoTheArrayOfTheIndex) {
  SpeedGraph graph;
  PictureBox picture;
  for (int index = 0; index < 6; ++index) {
    (graph.*GetParam().draw)(1000 + index, picture, index);
    const std::size_t sizes[] = {100, 175, 300, 1500, 3000, 6000};
    ASSERT_EQ(picture.lines().size(), 1U);
    const Polyline& line = picture.lines()[0];
    EXPECT_EQ(line.colour, kGreen);
    ASSERT_EQ(line.points.size(), sizes[index]);
    EXPECT_EQ(line.points.front(), (PicturePoint{0, GetParam().height}));
    const double last = static_cast<double>(sizes[index] - 1);
    EXPECT_EQ(line.points.back(), (PicturePoint{last, GetParam().height - 1000 - index}));
  }
  EXPECT_EQ(newest(graph), (std::vector<std::int32_t>{1000, 1001, 1002, 1003, 1004, 1005}));
}

TEST_P(SpeedGraphScale, AValueOfExactlyItsHeightPlotsAtTheTopEdge) {
  SpeedGraph graph;
  PictureBox picture;
  (graph.*GetParam().draw)(static_cast<std::int32_t>(GetParam().height), picture, 0);
  EXPECT_EQ(picture.lines()[0].points.back(), (PicturePoint{99, 0}));
}

TEST_P(SpeedGraphScale, AValueAboveItsHeightGoesPastTheTopEdge) {
  SpeedGraph graph;
  PictureBox picture;
  (graph.*GetParam().draw)(static_cast<std::int32_t>(GetParam().height) + 7, picture, 0);
  EXPECT_EQ(picture.lines()[0].points.back(), (PicturePoint{99, -7}));
}

TEST_P(SpeedGraphScale, AnIndexOutside0To5RunsNoBranch) {
  SpeedGraph graph;
  PictureBox picture;
  picture.Line({0, 0}, {1, 1}, kGreen);
  for (const Loose& index : {Loose(-1), Loose(6), Loose("A"), Loose("")}) {
    (graph.*GetParam().draw)(77, picture, index);
  }
  EXPECT_EQ(newest(graph), (std::vector<std::int32_t>{0, 0, 0, 0, 0, 0}));
  ASSERT_EQ(picture.lines().size(), 1U);
  EXPECT_EQ(picture.lines()[0].points.size(), 2U);
}

TEST_P(SpeedGraphScale, TheIndexMayBeAText) {
  SpeedGraph graph;
  PictureBox picture;
  (graph.*GetParam().draw)(77, picture, "2");
  EXPECT_EQ(newest(graph), (std::vector<std::int32_t>{0, 0, 77, 0, 0, 0}));
}

INSTANTIATE_TEST_SUITE_P(OfEachName, SpeedGraphScale, ::testing::ValuesIn(kScales),
                         [](const auto& scale) { return std::string(scale.param.name); });

TEST(SpeedGraph, WithFewSamplesTheLeftPartOfTheLineLiesAtTheBottomEdge) {
  SpeedGraph graph;
  PictureBox picture;
  graph.DrawUsage1F(1200, picture, 0);
  graph.DrawUsage1F(3400, picture, 0);
  std::vector<PicturePoint> expected;
  expected.reserve(100);
  for (int place = 0; place < 98; ++place) expected.push_back({static_cast<double>(place), 5000});
  expected.push_back({98, 3800});
  expected.push_back({99, 1600});
  EXPECT_EQ(picture.lines()[0].points, expected);
}

TEST(SpeedGraph, TheOldestValueFallsOutBehindAFullArray) {
  SpeedGraph graph;
  PictureBox picture;
  for (int value = 1; value <= 101; ++value) graph.DrawUsage1A(value, picture, 0);
  std::array<std::int32_t, 100> expected{};
  std::iota(expected.begin(), expected.end(), 2);
  EXPECT_EQ(graph.UsageA.points(), expected);
}

TEST(SpeedGraph, EachShiftMovesItsOwnArrayAndKeepsTheLastValue) {
  const std::vector<Shift> shifts = {&SpeedGraph::ShiftPoints1A, &SpeedGraph::ShiftPoints1B,
                                     &SpeedGraph::ShiftPoints1C, &SpeedGraph::ShiftPoints1D,
                                     &SpeedGraph::ShiftPoints1E, &SpeedGraph::ShiftPoints1F};
  for (std::size_t moved = 0; moved < shifts.size(); ++moved) {
    SpeedGraph graph;
    PictureBox picture;
    for (int index = 0; index < 6; ++index) graph.DrawUsage1A(5, picture, index);
    (graph.*shifts[moved])();
    const auto lastTwo = [](const auto& array) {
      const auto& points = array.points();
      return std::pair(points[points.size() - 2], points.back());
    };
    const std::vector<std::pair<std::int32_t, std::int32_t>> ends = {
        lastTwo(graph.UsageA), lastTwo(graph.UsageB), lastTwo(graph.UsageC),
        lastTwo(graph.UsageD), lastTwo(graph.UsageE), lastTwo(graph.UsageF)};
    for (std::size_t place = 0; place < ends.size(); ++place) {
      EXPECT_EQ(ends[place], std::pair(place == moved ? 5 : 0, 5)) << moved << place;
    }
  }
}

}  // namespace
}  // namespace veltrin

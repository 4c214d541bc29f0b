// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that the program draws, and the curves in them.
#include "forms/picture_box.h"

#include <gtest/gtest.h>

#include "forms/strip_graph.h"

namespace veltrin {
namespace {

constexpr Colour kGreen{0, 255, 0};
constexpr Colour kWhite{255, 255, 255};

std::vector<Polyline> drawn(const PictureBox& picture) {
  return {picture.lines().begin(), picture.lines().end()};
}

TEST(PictureBox, IsEmptyAtFirst) {
  const PictureBox picture;
  EXPECT_TRUE(picture.lines().empty());
}

TEST(PictureBox, ALineIsAPolylineOfTwoPoints) {
  PictureBox picture;
  picture.Line({1, 2}, {3, 4}, kGreen);
  EXPECT_EQ(drawn(picture), (std::vector<Polyline>{{kGreen, {{1, 2}, {3, 4}}}}));
}

TEST(PictureBox, LinesThatGoOnFromEachOtherAreOnePolyline) {
  PictureBox picture;
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Line({1, 5}, {2, 7}, kGreen);
  picture.Line({2, 7}, {3, 1}, kGreen);
  EXPECT_EQ(drawn(picture), (std::vector<Polyline>{{kGreen, {{0, 0}, {1, 5}, {2, 7}, {3, 1}}}}));
}

TEST(PictureBox, ALineElsewhereBeginsAnother) {
  PictureBox picture;
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Line({1, 6}, {2, 7}, kGreen);
  picture.Line({2, 7}, {1, 5}, kGreen);
  EXPECT_EQ(drawn(picture), (std::vector<Polyline>{{kGreen, {{0, 0}, {1, 5}}},
                                                   {kGreen, {{1, 6}, {2, 7}, {1, 5}}}}));
}

TEST(PictureBox, ALineOfAnotherColourBeginsAnother) {
  PictureBox picture;
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Line({1, 5}, {2, 7}, kWhite);
  EXPECT_EQ(drawn(picture),
            (std::vector<Polyline>{{kGreen, {{0, 0}, {1, 5}}}, {kWhite, {{1, 5}, {2, 7}}}}));
}

TEST(PictureBox, ClsTakesAllAway) {
  PictureBox picture;
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Cls();
  EXPECT_TRUE(picture.lines().empty());
}

TEST(PictureBox, NothingOfAnOldPictureIsInTheNext) {
  PictureBox picture;
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Line({8, 8}, {9, 9}, kGreen);
  picture.Cls();
  picture.Line({1, 5}, {2, 7}, kWhite);
  EXPECT_EQ(drawn(picture), (std::vector<Polyline>{{kWhite, {{1, 5}, {2, 7}}}}));
}

TEST(PictureBox, TellsOfEveryDrawing) {
  PictureBox picture;
  int told = 0;
  picture.observe([&told] { ++told; });
  picture.Line({0, 0}, {1, 5}, kGreen);
  picture.Cls();
  EXPECT_EQ(told, 2);
  picture.observe({});
  picture.Cls();
  EXPECT_EQ(told, 2);
}

TEST(StripGraph, BeginsWithZeros) {
  const StripGraph<4> graph;
  EXPECT_EQ(graph.points(), (std::array<std::int32_t, 4>{0, 0, 0, 0}));
}

TEST(StripGraph, AShiftKeepsTheLastValue) {
  StripGraph<4> graph;
  PictureBox picture;
  for (const int value : {1, 2, 3, 4}) graph.DrawUsage(value, picture, 10, kGreen);
  graph.ShiftPoints();
  EXPECT_EQ(graph.points(), (std::array<std::int32_t, 4>{2, 3, 4, 4}));
}

TEST(StripGraph, DrawsItsValuesFromTheLowerEdgeUp) {
  StripGraph<4> graph;
  PictureBox picture;
  graph.DrawUsage(7, picture, 10, kWhite);
  graph.DrawUsage(12, picture, 10, kGreen);
  EXPECT_EQ(drawn(picture), (std::vector<Polyline>{{kGreen, {{0, 10}, {1, 10}, {2, 3}, {3, -2}}}}));
}

}  // namespace
}  // namespace veltrin

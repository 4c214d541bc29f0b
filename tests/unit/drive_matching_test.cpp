// SPDX-License-Identifier: GPL-3.0-or-later
// Which drives are found on a disk.
#include "sysinfo/drive_matching.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kCylinder = 8'225'280;

WmiObject diskOf(int partitions, std::int64_t bytes) {
  return {{{"Partitions", partitions}, {"Size", std::to_string(bytes)}}};
}

// Drives of so many cylinders in the slots from 1 on; 0 for one without a medium.
DriveTable tableOf(const std::vector<int>& cylinders) {
  DriveTable table;
  int number = 0;
  for (const int count : cylinders) {
    ++number;
    table.slot(number).takeSizes(1, static_cast<std::uint32_t>(count) * 16'065);
  }
  return table;
}

struct MatchCase {
  const char* name;
  std::vector<int> cylinders;   // of the drives in the table
  std::vector<int> candidates;  // their slots
  int partitions;
  std::int64_t size;  // of the disk, in bytes
  DriveMatch found;
  int mostPartitions = 3;
};

void PrintTo(const MatchCase& each, std::ostream* out) { *out << each.name; }

class DriveMatchingCase : public testing::TestWithParam<MatchCase> {};

TEST_P(DriveMatchingCase, FindsItsDrives) {
  const MatchCase& each = GetParam();
  const DriveTable table = tableOf(each.cylinders);
  for (const Guard& guard : {Guard::skipping(), Guard::leaving()}) {
    DriveMatching matching(table, each.mostPartitions, guard);
    const DriveMatch found = matching.match(diskOf(each.partitions, each.size), each.candidates);
    EXPECT_EQ(found.slots, each.found.slots);
    EXPECT_EQ(found.alone, each.found.alone);
    EXPECT_EQ(found.triedLast, each.found.triedLast);
  }
}

const std::vector<MatchCase> kMatchCases{
    {"OneOfTwo", {100, 200}, {1, 2}, 1, 200 * kCylinder, {{2}, 0, 2}},
    {"TheFirstOfTwoAlike", {100, 100}, {1, 2}, 1, 100 * kCylinder, {{1}, 0, 1}},
    {"TheOnlyCandidateBySize", {100}, {1}, 1, 100 * kCylinder, {{1}, 0, 1}},
    {"OneLessACylinder", {100, 201}, {1, 2}, 1, 200 * kCylinder, {{2}, 0, 2}},
    {"AnExactOneBeforeOneLessACylinder", {201, 200}, {1, 2}, 1, 200 * kCylinder, {{2}, 0, 2}},
    {"APair", {100, 200, 300}, {1, 2, 3}, 2, 500 * kCylinder, {{2, 3}, 0, 2}},
    {"APairOfAlike", {250, 100, 250}, {1, 2, 3}, 2, 500 * kCylinder, {{1, 3}, 0, 1}},
    {"APairEachLessACylinder", {100, 201, 301}, {1, 2, 3}, 2, 500 * kCylinder, {{2, 3}, 0, 2}},
    {"NoDriveTwice", {250, 100}, {1, 2}, 2, 500 * kCylinder, {{}, 0, 2}},
    {"NoPairWithoutASize", {500, 0}, {1, 2}, 2, 500 * kCylinder, {{1}, 0, 1}},
    {"ATriple", {100, 200, 300, 50}, {1, 2, 3, 4}, 3, 350 * kCylinder, {{1, 2, 4}, 0, 1}},
    {"NoTripleLessACylinder", {101, 201, 301}, {1, 2, 3}, 3, 600 * kCylinder, {{}, 0, 3}},
    {"NoTripleWithoutASize", {500, 100, 0}, {1, 2, 3}, 3, 600 * kCylinder, {{}, 0, 3}},
    {"ATripleOfAlike", {100, 100, 100}, {1, 2, 3}, 3, 300 * kCylinder, {{1, 2, 3}, 0, 1}},
    {"NoSingleForAPair", {500, 600}, {1, 2}, 2, 505 * kCylinder, {{}, 0, 2}},
    {"FourWithoutASizeInOne", {500, 50, 50, 0}, {1, 2, 3, 4}, 4, 600 * kCylinder, {{}, 0, 4}, 4},
    {"NoFourLessACylinder", {101, 201, 301, 401}, {1, 2, 3, 4}, 4, 1000 * kCylinder, {{}, 0, 4}, 4},
    {"OneWithinFiveCylindersOfFourPartitions",
     {100, 200, 300, 400},
     {1, 2, 3, 4},
     4,
     304 * kCylinder,
     {{3}, 0, 3},
     4},
    {"TheFirstOfTwoWithinFiveCylinders", {102, 100}, {1, 2}, 5, 101 * kCylinder, {{1}, 0, 1}},
    {"TheOnlyCandidateOfNoPartitions", {100}, {1}, 0, 100 * kCylinder, {{}, 1, 0}},
    {"TheOnlyCandidateOfThreePartitions", {100}, {1}, 3, 100 * kCylinder, {{}, 1, 1}},
    {"FourWhereFourAreLookedFor",
     {100, 200, 300, 400},
     {1, 2, 3, 4},
     4,
     1000 * kCylinder,
     {{1, 2, 3, 4}, 0, 1},
     4},
    {"NoFourElsewhere", {100, 200, 300, 400}, {1, 2, 3, 4}, 4, 1000 * kCylinder, {{}, 0, 4}, 3},
    {"NeverFive", {100, 100, 100, 100, 100}, {1, 2, 3, 4, 5}, 5, 500 * kCylinder, {{}, 0, 5}, 4},
    {"OneWithinFiveCylinders", {100, 200}, {1, 2}, 1, 203 * kCylinder, {{2}, 0, 2}},
    {"OneWithinFiveCylindersOfAnyPartitions", {100, 200}, {1, 2}, 5, 196 * kCylinder, {{2}, 0, 2}},
    {"NotJustFiveCylindersMore", {100, 200}, {1, 2}, 1, 205 * kCylinder, {{}, 0, 2}},
    {"NotJustFiveCylindersLess", {100, 200}, {1, 2}, 1, 195 * kCylinder, {{}, 0, 2}},
    {"AlmostFiveCylindersMore", {100, 200}, {1, 2}, 0, 205 * kCylinder - 1, {{2}, 0, 2}},
    {"AlmostFiveCylindersLess", {100, 200}, {1, 2}, 0, 195 * kCylinder + 1, {{2}, 0, 2}},
    {"NoCandidates", {100}, {}, 1, 100 * kCylinder, {{}, 0, 0}},
    {"TheOnlyCandidateWithoutALook", {100}, {1}, 5, 999 * kCylinder, {{}, 1, 0}},
    {"TheOnlyCandidateTriedInVain", {100, 200}, {2}, 1, 999 * kCylinder, {{}, 2, 2}},
    {"TheOnlyCandidateAsAPairsFirst", {100, 200}, {2}, 2, 200 * kCylinder, {{}, 2, 2}},
};

INSTANTIATE_TEST_SUITE_P(Drives, DriveMatchingCase, testing::ValuesIn(kMatchCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(DriveMatching, RemembersWhatItTriedForAnEarlierDisk) {
  const DriveTable table = tableOf({100, 200});
  DriveMatching matching(table, 3, Guard::leaving());
  EXPECT_THAT(matching.match(diskOf(1, 100 * kCylinder), {1, 2}).slots, ElementsAre(1));
  EXPECT_EQ(matching.match(diskOf(5, 999 * kCylinder), {2}), (DriveMatch{{}, 2, 1}));
}

TEST(DriveMatching, ADiskThatKnowsNoSizeHasNoDriveWithoutOne) {
  const DriveTable table = tableOf({0, 0});
  DriveMatching matching(table, 3, Guard::leaving());
  const WmiObject reader{{{"Partitions", 1}, {"Size", WmiValue()}}};
  EXPECT_THAT(matching.match(reader, {1, 2}).slots, IsEmpty());
}

TEST(DriveMatching, ReadsPartitionsThatAreAText) {
  const DriveTable table = tableOf({100, 200});
  DriveMatching matching(table, 3, Guard::leaving());
  const WmiObject disk{{{"Partitions", "1"}, {"Size", 200.0 * kCylinder}}};
  EXPECT_THAT(matching.match(disk, {1, 2}).slots, ElementsAre(2));
}

TEST(DriveMatching, ADiskWithoutASizePropertyFallsIntoTheBodyOfItsFirstTest) {
  const DriveTable table = tableOf({100, 200});
  const WmiObject disk{{{"Partitions", 1}}};
  EXPECT_THAT(DriveMatching(table, 3, Guard::skipping()).match(disk, {1, 2}).slots, ElementsAre(1));
  EXPECT_THROW(DriveMatching(table, 3, Guard::leaving()).match(disk, {1, 2}), StatementFailed);
}

TEST(DriveMatching, ADiskWithoutPartitionsIsTriedForAllNumbersOfThem) {
  const DriveTable table = tableOf({100, 200, 300});
  const WmiObject disk{{{"Size", std::to_string(600 * kCylinder)}}};
  EXPECT_THAT(DriveMatching(table, 3, Guard::skipping()).match(disk, {1, 2, 3}).slots,
              ElementsAre(1, 2, 3));
  EXPECT_THROW(DriveMatching(table, 3, Guard::leaving()).match(disk, {1, 2, 3}), StatementFailed);
}

TEST(DriveMatching, ACandidatePastTheTableFallsIntoTheBodyOfItsTest) {
  const DriveTable table = tableOf({100});
  const WmiObject disk = diskOf(1, 999 * kCylinder);
  EXPECT_THAT(DriveMatching(table, 3, Guard::skipping()).match(disk, {1, 27}).slots,
              ElementsAre(27));
}

}  // namespace
}  // namespace veltrin

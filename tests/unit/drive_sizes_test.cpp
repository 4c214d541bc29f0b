// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of drives' sizes, at the edges of their units.
#include "sysinfo/drive_sizes.h"

#include <gtest/gtest.h>

namespace veltrin {
namespace {

struct SizeCase {
  double bytes;
  const char* text;
};

TEST(DriveSizeText, IsInWholeTerabytesGigabytesOrMegabytes) {
  for (const SizeCase& each : {
           SizeCase{0, "0 MB   (0 Bytes)"},
           SizeCase{499'999, "0 MB   (499,999 Bytes)"},
           SizeCase{500'000, "1 MB   (500,000 Bytes)"},
           SizeCase{16'450'560, "16 MB   (16,450,560 Bytes)"},
           SizeCase{999'999'999, "1000 MB   (999,999,999 Bytes)"},
           SizeCase{1'000'000'000, "1 GB   (1,000,000,000 Bytes)"},
           SizeCase{2'500'000'000, "3 GB   (2,500,000,000 Bytes)"},
           SizeCase{1'000'000'000'001, "1 TB   (1,000,000,000,001 Bytes)"},
           SizeCase{4'000'000'000'000, "4 TB   (4,000,000,000,000 Bytes)"},
           SizeCase{-8'225'280, "-8 MB   (-8,225,280 Bytes)"},
       }) {
    EXPECT_EQ(sizeText(each.bytes), each.text);
  }
}

TEST(DriveSizeText, OneByteBelowATerabyteIsToldInGigabytes) {
  EXPECT_EQ(sizeText(999'999'999'999), "1000 GB   (999,999,999,999 Bytes)");
}

TEST(DriveSizeText, ATerabyteIsToldInTerabytes) {
  EXPECT_EQ(sizeText(1'000'000'000'000), "1 TB   (1,000,000,000,000 Bytes)");
}

TEST(LongDriveSizeText, TellsBytesAloneBelowAMegabyte) {
  EXPECT_EQ(longSizeText(0), "0 Bytes");
  EXPECT_EQ(longSizeText(999'999), "999,999 Bytes");
}

TEST(LongDriveSizeText, IsTheOtherTextFromAMegabyteOn) {
  for (const double bytes : {1e6, 999'999'999.0, 1e9, 999'999'999'999.0, 1e12}) {
    EXPECT_EQ(longSizeText(bytes), sizeText(bytes));
  }
  EXPECT_EQ(longSizeText(1'000'000), "1 MB   (1,000,000 Bytes)");
}

TEST(ShortDriveSizes, TakeTheUnitOfTheFreeRoomForBoth) {
  struct ShortCase {
    double free;
    const char* freeText;
    const char* totalText;  // of 5,000,000,000,000 bytes
  };
  for (const ShortCase& each : {
           ShortCase{0, "0 KB", "5000000000 KB"},
           ShortCase{10'000'000, "10000 KB", "5000000000 KB"},
           ShortCase{10'000'001, "10 MB", "5000000 MB"},
           ShortCase{2'000'000'000, "2000 MB", "5000000 MB"},
           ShortCase{2'000'000'001, "2 GB", "5000 GB"},
           ShortCase{2'000'000'000'000, "2000 GB", "5000 GB"},
           ShortCase{2'000'000'000'001, "2 TB", "5 TB"},
       }) {
    const ShortSizes sizes = shortSizes(each.free, 5e12);
    EXPECT_EQ(sizes.free, each.freeText);
    EXPECT_EQ(sizes.total, each.totalText);
  }
}

}  // namespace
}  // namespace veltrin

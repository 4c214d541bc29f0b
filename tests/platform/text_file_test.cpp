// SPDX-License-Identifier: GPL-3.0-or-later
// Text files that are written and read whole.
#include <filesystem>

#include "platform/portable/regular_file.h"
#include "text_files.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

TEST_F(TextFileTest, KeepsTheLineBreaksOfItsText) {
  store("a.txt", "one\r\n\r\ntwo\nthree\r");
  EXPECT_EQ(scratch.content("a.txt"), "one\r\n\r\ntwo\nthree\r");
  EXPECT_EQ(read("a.txt"), "one\r\n\r\ntwo\nthree\r");
}

TEST_F(TextFileTest, GivesBackLettersOfTheWest) {
  store("a.txt", "Ø 12 mm, größer");
  EXPECT_EQ(read("a.txt"), "Ø 12 mm, größer");
}

TEST_F(TextFileTest, KeepsNulsAndTheEndMarkOfOldTexts) {
  const std::string text(
      "a\0b\x1A"
      "c",
      5);
  store("a.txt", text);
  EXPECT_EQ(read("a.txt"), text);
}

TEST_F(TextFileTest, HoldsMoreThanOneBlock) {
  const std::string text(300'000, 'x');
  store("a.txt", text);
  EXPECT_EQ(read("a.txt"), text);
}

TEST_F(TextFileTest, ReplacesAllOfALongerOne) {
  scratch.fill("a.txt", "a longer older text");
  store("a.txt", "new");
  EXPECT_EQ(scratch.content("a.txt"), "new");
  EXPECT_EQ(scratch.count(), 1U);
}

TEST_F(TextFileTest, OfAMissingFolderIsRefused) {
  EXPECT_EQ(failureOfStoring("missing\\a.txt"), 76);
  EXPECT_EQ(failureOfReading("missing\\a.txt"), 76);
}

TEST_F(TextFileTest, ThatIsMissingIsNotRead) {
  EXPECT_EQ(failureOfReading("a.txt"), 76);
  EXPECT_FALSE(scratch.has("a.txt"));
}

TEST_F(TextFileTest, IsNoFolder) {
  fs::create_directory(scratch.folder() / "a.txt");
  EXPECT_EQ(failureOfStoring("a.txt"), 70);
  EXPECT_EQ(failureOfReading("a.txt"), 70);
}

TEST_F(TextFileTest, OfMoreThanTheLargestIsNotRead) {
  scratch.fill("a.txt", "");
  fs::resize_file(scratch.folder() / "a.txt", kLargestRead + 1);  // a hole, without blocks
  EXPECT_EQ(failureOfReading("a.txt"), 61);
}

}  // namespace
}  // namespace veltrin

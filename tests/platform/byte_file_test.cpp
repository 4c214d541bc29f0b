// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written over in their place, and files that are deleted.
#include <filesystem>

#include "byte_files.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

TEST_F(ByteFileTest, IsMadeWhenItIsMissing) {
  put("new.bin", "bytes");
  EXPECT_EQ(scratch.content("new.bin"), "bytes");
}

TEST_F(ByteFileTest, IsMadeByItsOpening) {
  files.openBinary(path("new.bin"));
  EXPECT_TRUE(scratch.has("new.bin"));
  EXPECT_EQ(scratch.content("new.bin"), "");
}

TEST_F(ByteFileTest, KeepsTheTailOfALongerOne) {
  scratch.fill("a.bin", "longer than that");
  put("a.bin", "short");
  EXPECT_EQ(scratch.content("a.bin"), "shortr than that");
}

TEST_F(ByteFileTest, KeepsAllOfAnOlderOneWhenNothingIsPut) {
  scratch.fill("a.bin", "older");
  put("a.bin", "");
  EXPECT_EQ(scratch.content("a.bin"), "older");
}

TEST_F(ByteFileTest, GrowsBeyondAShorterOne) {
  scratch.fill("a.bin", "old");
  put("a.bin", "a longer one");
  EXPECT_EQ(scratch.content("a.bin"), "a longer one");
}

TEST_F(ByteFileTest, TakesBytesBehindThoseBefore) {
  const auto stream = files.openBinary(path("a.bin"));
  stream->Put("one ");
  stream->Put("");
  stream->Put("two");
  stream->Close();
  EXPECT_EQ(scratch.content("a.bin"), "one two");
}

TEST_F(ByteFileTest, TakesEveryByteAsItIs) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  put("a.bin", bytes + "\r\n\n\x1A");
  EXPECT_EQ(scratch.content("a.bin"), bytes + "\r\n\n\x1A");
}

TEST_F(ByteFileTest, TakesManyMegabytes) {
  std::string bytes(5'000'001, 'x');
  bytes.front() = 'a';
  bytes.back() = 'z';
  put("a.bin", bytes);
  EXPECT_TRUE(scratch.content("a.bin") == bytes);
}

TEST_F(ByteFileTest, KeepsNothingBack) {
  const auto stream = files.openBinary(path("a.bin"));
  stream->Put("bytes");
  EXPECT_EQ(scratch.content("a.bin"), "bytes");
}

TEST_F(ByteFileTest, IsClosedWhenItIsDestroyed) {
  files.openBinary(path("a.bin"))->Put("bytes");
  EXPECT_EQ(failureOfKilling("a.bin"), 0);
  EXPECT_FALSE(scratch.has("a.bin"));
}

TEST_F(ByteFileTest, TakesNothingOnceItIsClosed) {
  const auto stream = files.openBinary(path("a.bin"));
  stream->Close();
  EXPECT_EQ(failureOf([&] { stream->Put("x"); }), 52);
  EXPECT_EQ(failureOf([&] { stream->Close(); }), 0);
}

TEST_F(ByteFileTest, HasANameOfAnyLetters) {
  put("h\xC3\xB6st \xCE\xA9.bin", "bytes");
  EXPECT_EQ(failureOfKilling("h\xC3\xB6st \xCE\xA9.bin"), 0);
  EXPECT_EQ(scratch.count(), 0U);
}

TEST_F(ByteFileTest, FailsInAFolderThatThereIsNot) {
  EXPECT_EQ(failureOfOpening("missing\\a.bin"), 76);
  EXPECT_EQ(scratch.count(), 0U);
}

TEST_F(ByteFileTest, FailsForAFolder) {
  fs::create_directory(scratch.folder() / "folder");
  EXPECT_EQ(failureOfOpening("folder"), 70);
}

TEST_F(ByteFileTest, FailsForANameWithANul) {
  EXPECT_EQ(failureOfOpening(std::string("a\0b", 3)), 52);
  EXPECT_EQ(scratch.count(), 0U);
}

TEST_F(ByteFileTest, IsDeleted) {
  scratch.fill("a.bin", "bytes");
  scratch.fill("b.bin", "other");
  EXPECT_EQ(failureOfKilling("a.bin"), 0);
  EXPECT_FALSE(scratch.has("a.bin"));
  EXPECT_TRUE(scratch.has("b.bin"));
}

TEST_F(ByteFileTest, IsNotDeletedWhenThereIsNone) {
  EXPECT_EQ(failureOfKilling("a.bin"), 53);
  EXPECT_EQ(failureOfKilling("missing\\a.bin"), 53);
  EXPECT_EQ(failureOfKilling(std::string("a\0b", 3)), 53);
}

TEST_F(ByteFileTest, IsNotDeletedByANulBehindItsName) {
  scratch.fill("a", "bytes");
  EXPECT_EQ(failureOfKilling(std::string("a\0b", 3)), 53);
  EXPECT_TRUE(scratch.has("a"));
}

TEST_F(ByteFileTest, IsNotDeletedWhenItIsAFolder) {
  fs::create_directory(scratch.folder() / "folder");
  EXPECT_EQ(failureOfKilling("folder"), 53);
  EXPECT_TRUE(scratch.has("folder"));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/atomic_file.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "scratch_folder.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

TEST(ReplaceFile, MakesAMissingFile) {
  const ScratchFolder scratch;
  EXPECT_FALSE(replaceFile(scratch.path("new.txt"), "content"));
  EXPECT_EQ(scratch.content("new.txt"), "content");
}

TEST(ReplaceFile, ReplacesAllOfALongerFile) {
  const ScratchFolder scratch;
  scratch.fill("old.txt", std::string(100000, 'x'));
  EXPECT_FALSE(replaceFile(scratch.path("old.txt"), "new"));
  EXPECT_EQ(scratch.content("old.txt"), "new");
}

TEST(ReplaceFile, WritesEveryByteAsItIs) {
  const ScratchFolder scratch;
  EXPECT_FALSE(replaceFile(scratch.path("new.txt"), "a\r\nb\nc\rd\0e\x1A\xFF"s));
  EXPECT_EQ(scratch.content("new.txt"), "a\r\nb\nc\rd\0e\x1A\xFF"s);
}

TEST(ReplaceFile, WritesMoreThanOneBlock) {
  const ScratchFolder scratch;
  const std::string content(3000001, 'x');
  EXPECT_FALSE(replaceFile(scratch.path("new.txt"), content));
  EXPECT_EQ(scratch.content("new.txt"), content);
}

TEST(ReplaceFile, EmptiesAFile) {
  const ScratchFolder scratch;
  scratch.fill("old.txt", "old");
  EXPECT_FALSE(replaceFile(scratch.path("old.txt"), ""));
  EXPECT_EQ(scratch.content("old.txt"), "");
}

TEST(ReplaceFile, LeavesNoOtherFileBehind) {
  const ScratchFolder scratch;
  EXPECT_FALSE(replaceFile(scratch.path("new.txt"), "content"));
  EXPECT_EQ(scratch.count(), 1U);
}

TEST(ReplaceFile, FailsInAMissingFolder) {
  const ScratchFolder scratch;
  EXPECT_EQ(replaceFile(scratch.path("missing/new.txt"), "content"),
            std::errc::no_such_file_or_directory);
}

TEST(ReplaceFile, RefusesAFolder) {
  const ScratchFolder scratch;
  std::filesystem::create_directory(scratch.path("folder"));
  EXPECT_TRUE(replaceFile(scratch.path("folder"), "content"));
  EXPECT_EQ(scratch.count(), 1U);
}

TEST(ReplaceFile, TakesNamesInUtf8) {
  const ScratchFolder scratch;
  EXPECT_FALSE(replaceFile(scratch.path("") + "\xC3\xBC\xE2\x82\xAC.txt", "content"));
  EXPECT_TRUE(std::filesystem::exists(scratch.folder() / u8"\u00FC\u20AC.txt"));
}

TEST(ReadWholeFile, GivesEveryByte) {
  const ScratchFolder scratch;
  const std::string bytes = "a\r\nb\0c\x1A"s + std::string(200000, 'x');
  scratch.fill("file.txt", bytes);
  std::string content;
  EXPECT_FALSE(readWholeFile(scratch.path("file.txt"), content));
  EXPECT_EQ(content, bytes);
}

TEST(ReadWholeFile, TellsThatAFileIsMissing) {
  const ScratchFolder scratch;
  std::string content;
  EXPECT_EQ(readWholeFile(scratch.path("missing.txt"), content),
            std::errc::no_such_file_or_directory);
}

TEST(ReadWholeFile, FailsForAFolder) {
  const ScratchFolder scratch;
  std::string content;
  EXPECT_TRUE(readWholeFile(scratch.folder().string(), content));
}

}  // namespace
}  // namespace veltrin

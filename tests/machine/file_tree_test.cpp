// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/file_tree.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FileTree, ReadsAFileBelowItsRoot) {
  const TemporaryTree tree;
  tree.put("/etc/thing", "a\nb\n");
  EXPECT_EQ(tree.files().read("/etc/thing"), "a\nb\n");
}

TEST(FileTree, ReadsAFileThatTellsNoSize) { EXPECT_NE(FileTree().text("/proc/self/stat"), ""); }

TEST(FileTree, ReadsALargeFileWhole) {
  const TemporaryTree tree;
  const std::string large(300'000, 'x');
  tree.put("/large", large + "y");
  EXPECT_EQ(tree.files().read("/large"), large + "y");
}

TEST(FileTree, ReadsNoMoreThanIsAskedFor) {
  const TemporaryTree tree;
  tree.put("/thing", "12345");
  EXPECT_EQ(tree.files().read("/thing", 3), "123");
}

std::vector<std::string> linesOf(const TemporaryTree& tree, const std::string& path) {
  std::vector<std::string> lines;
  tree.files().readLines(path, [&](std::string_view line) { lines.emplace_back(line); });
  return lines;
}

TEST(FileTree, HandsOverLinesWithoutTheirEnds) {
  const TemporaryTree tree;
  tree.put("/file", "one\r\n\ntwo\nlast");
  EXPECT_THAT(linesOf(tree, "/file"), ElementsAre("one", "", "two", "last"));
}

TEST(FileTree, HandsOverAllLinesOfALongFileWhole) {
  const TemporaryTree tree;
  std::string text;
  std::vector<std::string> expected;
  for (int i = 0; i < 30'000; ++i) {
    expected.push_back("line " + std::to_string(i * 7919));
    text += expected.back() + "\n";
  }
  tree.put("/file", text);
  EXPECT_EQ(linesOf(tree, "/file"), expected);
}

TEST(FileTree, HandsOverAnOverlongLineInParts) {
  const TemporaryTree tree;
  tree.put("/file", "first\n" + std::string(200'000, 'x') + "\nlast\n");
  const auto lines = linesOf(tree, "/file");
  ASSERT_GE(lines.size(), 3U);
  EXPECT_EQ(lines.front(), "first");
  EXPECT_EQ(lines.back(), "last");
  std::size_t length = 0;
  for (std::size_t i = 1; i + 1 < lines.size(); ++i) {
    EXPECT_LE(lines[i].size(), 65536U);
    length += lines[i].size();
  }
  EXPECT_EQ(length, 200'000U);
}

TEST(FileTree, TellsWhetherLinesCouldBeRead) {
  const TemporaryTree tree;
  tree.put("/empty", "");
  tree.makeFolder("/folder");
  const auto ignore = [](std::string_view) {};
  EXPECT_TRUE(tree.files().readLines("/empty", ignore));
  EXPECT_FALSE(tree.files().readLines("/folder", ignore));
  EXPECT_FALSE(tree.files().readLines("/missing", ignore));
}

TEST(FileTree, ReadsNothingWhereThereIsNoPlainFile) {
  const TemporaryTree tree;
  tree.makeFolder("/folder");
  tree.link("/dangling", "nowhere");
  ASSERT_EQ(mkfifo(tree.real("/pipe").c_str(), 0600), 0);
  for (const char* path : {"/missing", "/folder", "/dangling", "/pipe"}) {
    EXPECT_EQ(tree.files().read(path), std::nullopt) << path;
  }
}

TEST(FileTree, GivesTheFirstLineWithoutBlanks) {
  const TemporaryTree tree;
  tree.put("/thing", "  first \nsecond\n");
  tree.put("/empty", "");
  EXPECT_EQ(tree.files().line("/thing"), "first");
  EXPECT_EQ(tree.files().line("/empty"), "");
}

TEST(FileTree, ListsAFolderInOrder) {
  const TemporaryTree tree;
  tree.put("/folder/b", "");
  tree.put("/folder/a", "");
  tree.makeFolder("/folder/c");
  EXPECT_THAT(tree.files().names("/folder"), ElementsAre("a", "b", "c"));
  EXPECT_THAT(tree.files().names("/missing"), IsEmpty());
}

TEST(FileTree, TellsWhereALinkPoints) {
  const TemporaryTree tree;
  tree.link("/link", "../there/it is");
  tree.put("/file", "");
  EXPECT_EQ(tree.files().linkTarget("/link"), "../there/it is");
  EXPECT_EQ(tree.files().linkTarget("/file"), "");
}

TEST(FileTree, TellsWhenAFileWasWritten) {
  const TemporaryTree tree;
  tree.put("/file", "");
  const timespec times[2] = {{1000, 0}, {1234567890, 5}};
  ASSERT_EQ(utimensat(AT_FDCWD, tree.real("/file").c_str(), times, 0), 0);
  EXPECT_EQ(tree.files().written("/file"), 1234567890);
  EXPECT_EQ(tree.files().written("/missing"), std::nullopt);
}

TEST(FileTree, MapsAFileAndNothingElse) {
  const TemporaryTree tree;
  tree.put("/file", "bytes");
  tree.put("/empty", "");
  EXPECT_EQ(tree.files().map("/file").bytes(), "bytes");
  EXPECT_EQ(tree.files().map("/empty").bytes(), "");
  EXPECT_EQ(tree.files().map("/missing").bytes(), "");
}

TEST(FileTree, FollowsLinksBelowItsRoot) {
  const TemporaryTree tree;
  tree.put("/usr/lib/thing", "it");
  tree.link("/etc/whole", "/usr/lib/thing");
  tree.link("/etc/chained", "./whole");
  tree.link("/etc/dangling", "nothing");
  EXPECT_EQ(tree.files().resolved("/etc/whole"), "/usr/lib/thing");
  EXPECT_EQ(tree.files().text(tree.files().resolved("/etc/chained")), "it");
  EXPECT_EQ(tree.files().resolved("/etc/dangling"), "/etc/nothing");
  EXPECT_EQ(tree.files().resolved("/usr/lib/thing"), "/usr/lib/thing");
  EXPECT_EQ(tree.files().resolved("/no/such/file"), "/no/such/file");
}

TEST(FileTree, EndsInACircleOfLinks) {
  const TemporaryTree tree;
  tree.link("/one", "/two");
  tree.link("/two", "/one");
  EXPECT_EQ(tree.files().resolved("/one"), "");
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Running copies find each other's windows, and those that have gone are forgotten.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "platform/linux/window_list.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::SizeIs;

class WindowListTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "window-list-XXXXXX").string();
    base = mkdtemp(pattern.data());
    folder = base / "veltrin" / "windows";
  }
  void TearDown() override { fs::remove_all(base); }

  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
      names.push_back(entry.path().filename());
    return names;
  }

  // Leaves files as a copy does that was ended at once.
  void leaveBehind(const std::string& process, const std::string& title) const {
    std::ofstream(folder / process).put('\n');
    std::ofstream(folder / (process + ".titles")) << title << '\0';
  }

  fs::path base;
  fs::path folder;
};

TEST_F(WindowListTest, ACopyFindsItsOwnWindows) {
  WindowList list(folder);
  list.publish({"Ping Test", "Veltrin"});

  EXPECT_EQ(list.find("Ping Test"), static_cast<std::uint32_t>(getpid()));
}

TEST_F(WindowListTest, ACopyFindsTheWindowsOfAnother) {
  WindowList other(folder);
  other.publish({"Veltrin"});
  const WindowList list(folder);

  EXPECT_EQ(list.find("Veltrin"), static_cast<std::uint32_t>(getpid()));
}

TEST_F(WindowListTest, OnlyTheWholeTitleCounts) {
  WindowList list(folder);
  list.publish({"Ping Test"});

  EXPECT_EQ(list.find("Ping"), 0U);
  EXPECT_EQ(list.find("ping test"), 0U);
}

TEST_F(WindowListTest, ATitleThatIsNoLongerPublishedIsNotFound) {
  WindowList other(folder);
  other.publish({"Veltrin"});
  other.publish({"Some Junk Title"});
  const WindowList list(folder);

  EXPECT_EQ(list.find("Veltrin"), 0U);
}

TEST_F(WindowListTest, ACopyThatHasEndedIsNotFoundAndLeavesNothing) {
  { WindowList(folder).publish({"Veltrin"}); }
  const WindowList list(folder);

  EXPECT_EQ(list.find("Veltrin"), 0U);
  EXPECT_THAT(files(), SizeIs(1));
}

TEST_F(WindowListTest, TheFilesOfACopyThatWasEndedAtOnceAreRemoved) {
  const WindowList list(folder);
  leaveBehind("4194303", "Veltrin");

  EXPECT_EQ(list.find("Veltrin"), 0U);
  EXPECT_THAT(files(), SizeIs(1));
}

TEST_F(WindowListTest, ATitleMayHoldLineBreaks) {
  WindowList other(folder);
  other.publish({"two\nlines"});
  const WindowList list(folder);

  EXPECT_NE(list.find("two\nlines"), 0U);
}

TEST_F(WindowListTest, TheFolderIsForTheUserAlone) {
  const WindowList list(folder);

  EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(WindowListTest, AFolderThatOthersMayWriteToIsNotUsed) {
  fs::create_directories(folder);
  fs::permissions(folder, fs::perms::all);
  WindowList list(folder);
  list.publish({"Veltrin"});

  EXPECT_THAT(files(), IsEmpty());
  EXPECT_EQ(list.find("Veltrin"), static_cast<std::uint32_t>(getpid()));
}

}  // namespace
}  // namespace veltrin

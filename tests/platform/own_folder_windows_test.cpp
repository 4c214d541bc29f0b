// SPDX-License-Identifier: GPL-3.0-or-later
// What is saved stays in the program folder on Windows: no junction and no link in it takes a
// text elsewhere.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

#include "failure_of.h"
#include "platform/portable/own_folder.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_profile_store.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

// A path as the system below Wine has it; empty where there is no Wine.
std::string unixPath(const fs::path& path) {
  using Convert = char*(CDECL*)(const wchar_t*);
  const auto convert = reinterpret_cast<Convert>(reinterpret_cast<void (*)()>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  if (convert == nullptr) return "";
  char* name = convert(path.c_str());
  const std::string found = name == nullptr ? "" : name;
  HeapFree(GetProcessHeap(), 0, name);
  return found;
}

// Runs a tool of the system below Wine. Nothing tells when it is over.
void runBelowWine(const std::string& line) {
  ASSERT_EQ(std::system(("start /unix " + line).c_str()), 0) << line;
}

bool comesTo(const fs::path& path, bool there) {
  for (int waits = 0; waits < 200 && fs::exists(path) != there; ++waits) Sleep(50);
  return fs::exists(path) == there;
}

class OwnFolderOnWindows : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(data());
    fs::create_directories(elsewhere());
    scratch_.fill("elsewhere/kept.txt", "precious");
  }

  // What Wine takes away at a link is what it leads to, so the links go before the folder does.
  void TearDown() override {
    for (const fs::path& link : links_) {
      const std::string below = unixPath(link);
      if (below.empty()) {
        fs::remove(link);
      } else {
        runBelowWine("/bin/rm " + below);
      }
      EXPECT_TRUE(comesTo(link, false));
    }
  }

  // Makes a folder or a file lead to another. Wine makes no links and follows those of the
  // system below it.
  void makeLead(const fs::path& link, const fs::path& target) {
    const std::string below = unixPath(link);
    if (!below.empty()) {
      runBelowWine("/bin/ln -s " + unixPath(target) + " " + below);
    } else {
      const std::string kind = fs::is_directory(target) ? "mklink /J " : "mklink ";
      std::system(("cmd /c " + kind + link.string() + " " + target.string()).c_str());
    }
    ASSERT_TRUE(comesTo(link, true));
    links_.push_back(link);
  }

  // With the separators of Windows.
  fs::path data() const { return (scratch_.folder() / "data").make_preferred(); }
  fs::path elsewhere() const { return (scratch_.folder() / "elsewhere").make_preferred(); }
  WindowsFiles files() const { return WindowsFiles(data().string()); }

  // A path of the program's, as its windows write it.
  std::string named(const std::string& name) const { return data().string() + "\\" + name; }

  int failureOfSaving(const std::string& name) const {
    return failureOf([&] {
      const auto stream =
          files().OpenTextFile(data().string(), "\\" + name, FileMode::Writing, true);
      stream->Write("new");
      stream->Close();
    });
  }

  std::string kept() const { return scratch_.content("elsewhere/kept.txt"); }

  ScratchFolder scratch_;
  std::vector<fs::path> links_;
};

TEST_F(OwnFolderOnWindows, NothingIsWrittenBelowAFolderThatLeadsOut) {
  makeLead(data() / "Files", elsewhere());

  EXPECT_EQ(failureOf([&] { files().openOutput(named("Files\\a.txt")); }), 70);
  EXPECT_EQ(failureOf([&] { files().openBinary(named("Files\\a.txt")); }), 70);
  EXPECT_EQ(failureOf([&] { files().CreateFolder(named("Files\\sub")); }), 70);
  EXPECT_EQ(failureOf([&] { files().Kill(named("Files\\kept.txt")); }), 70);

  EXPECT_EQ(std::distance(fs::directory_iterator(elsewhere()), {}), 1);
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderOnWindows, ATextIsNotSavedThroughALinkThatLeadsOut) {
  makeLead(data() / "a.txt", elsewhere() / "kept.txt");

  EXPECT_EQ(failureOfSaving("a.txt"), 70);
  EXPECT_EQ(failureOf([&] { files().openBinary(named("a.txt")); }), 70);

  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderOnWindows, SettingsAreReadThroughAFolderThatLeadsOutAndNotWritten) {
  scratch_.fill("elsewhere/a.ini", "[Part]\r\nKey=old\r\n");
  makeLead(data() / "Files", elsewhere());
  const WindowsFiles own = files();
  WindowsProfileStore store([&](const std::string& path) { return own.native(path); },
                            [&](const std::string& path) { return own.mayWrite(path); });
  const std::string path = named("Files\\a.ini");

  EXPECT_FALSE(store.write("Part", "Key", "new", path));

  EXPECT_EQ(store.read("Part", "Key", "none", 20, path), "old");
  EXPECT_EQ(scratch_.content("elsewhere/a.ini"), "[Part]\r\nKey=old\r\n");
}

TEST_F(OwnFolderOnWindows, ALinkThatStaysInTheFolderIsFollowed) {
  fs::create_directories(data() / "real");
  makeLead(data() / "Files", data() / "real");

  const auto stream = files().openOutput(named("Files\\a.txt"));
  stream->Write("new");
  stream->Close();

  EXPECT_EQ(scratch_.content("data/real/a.txt"), "new");
}

TEST_F(OwnFolderOnWindows, TheProgramFolderMayItselfBeALink) {
  makeLead(scratch_.folder() / "linked", data());
  const std::string linked = (scratch_.folder() / "linked").make_preferred().string();
  WindowsFiles files(linked);

  EXPECT_EQ(failureOf([&] { files.openOutput(linked + "\\a.txt")->Close(); }), 0);
  EXPECT_TRUE(fs::exists(data() / "a.txt"));
}

TEST_F(OwnFolderOnWindows, LettersOfEitherCaseNameTheSameFolder) {
  fs::create_directories(data() / "Files");

  EXPECT_TRUE(staysBelow(data().string(), named("FILES\\new.txt")));
  EXPECT_TRUE(staysBelow(scratch_.folder().string() + "\\DATA", named("Files\\new.txt")));
}

TEST_F(OwnFolderOnWindows, AFolderWhoseNameOnlyBeginsLikeItIsElsewhere) {
  EXPECT_TRUE(staysBelow(data().string(), named("a.txt")));
  EXPECT_TRUE(staysBelow(data().string(), data().string() + "\\"));
  EXPECT_FALSE(staysBelow(data().string(), data().string() + "base\\a.txt"));
  EXPECT_FALSE(staysBelow(data().string(), named("..\\a.txt")));
}

TEST_F(OwnFolderOnWindows, TheProgramFolderMayBeTheRootOfADisk) {
  const std::string disk = data().root_name().string();
  const WindowsFiles files(disk);

  EXPECT_TRUE(files.mayWrite(named("a.txt")));
  EXPECT_TRUE(files.mayWrite(disk + "\\none\\a.txt"));
}

TEST_F(OwnFolderOnWindows, AMissingFolderIsStillAPathThatIsNotFound) {
  EXPECT_EQ(failureOf([&] { files().openOutput(named("none\\a.txt")); }), 76);
}

TEST_F(OwnFolderOnWindows, APathElsewhereIsFollowedWhereItLeads) {
  const std::string path = (elsewhere() / "new.txt").string();

  EXPECT_EQ(failureOf([&] { files().openOutput(path)->Close(); }), 0);

  EXPECT_TRUE(fs::exists(elsewhere() / "new.txt"));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// What is saved stays in the program folder: no link in it, which a restored backup, an
// archive or another program may have left there, takes a text elsewhere.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "failure_of.h"
#include "platform/linux/linux_files.h"
#include "platform/portable/file_registry.h"
#include "platform/portable/own_folder.h"
#include "platform/portable/profile_file.h"
#include "platform/portable/registry_value.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

class OwnFolderTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(data() / "Files");
    fs::create_directories(elsewhere());
    scratch_.fill("elsewhere/kept.txt", "precious");
  }

  fs::path data() const { return scratch_.folder() / "data"; }
  fs::path elsewhere() const { return scratch_.folder() / "elsewhere"; }
  LinuxFiles files() const { return LinuxFiles({data(), scratch_.folder() / "share"}); }

  // A path of the program's, as its windows write it.
  std::string named(const std::string& name) const { return data().string() + "\\" + name; }

  int failureOfSaving(const std::string& name, FileMode mode) const {
    return failureOf([&] {
      const auto stream = files().OpenTextFile(data(), "\\" + name, mode, true);
      stream->Write("new");
      stream->Close();
    });
  }

  std::string kept() const { return scratch_.content("elsewhere/kept.txt"); }

  ScratchFolder scratch_;
};

TEST_F(OwnFolderTest, ATextIsNotSavedThroughALinkThatLeadsOut) {
  fs::create_symlink(elsewhere() / "kept.txt", data() / "a.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Writing), kPermissionDenied);
  EXPECT_EQ(kept(), "precious");
  EXPECT_TRUE(fs::is_symlink(data() / "a.txt"));
}

TEST_F(OwnFolderTest, ALogIsNotContinuedThroughALinkThatLeadsOut) {
  fs::create_symlink("../elsewhere/kept.txt", data() / "a.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Appending), kPermissionDenied);
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderTest, NoFileIsMadeWhereALinkLeadsToNothing) {
  fs::create_symlink(elsewhere() / "new.txt", data() / "a.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Writing), kPermissionDenied);
  EXPECT_FALSE(fs::exists(elsewhere() / "new.txt"));
}

TEST_F(OwnFolderTest, ALinkToALinkThatLeadsOutIsNotFollowed) {
  fs::create_symlink("b.txt", data() / "a.txt");
  fs::create_symlink(elsewhere() / "new.txt", data() / "b.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Writing), kPermissionDenied);
  EXPECT_FALSE(fs::exists(elsewhere() / "new.txt"));
}

TEST_F(OwnFolderTest, NothingIsWrittenBelowAFolderThatIsALinkOut) {
  fs::remove(data() / "Files");
  fs::create_directory_symlink(elsewhere(), data() / "Files");
  EXPECT_EQ(failureOf([&] { files().openOutput(named("Files\\list.txt")); }), kPermissionDenied);
  EXPECT_EQ(failureOf([&] { files().openBinary(named("Files\\kept.txt")); }), kPermissionDenied);
  EXPECT_EQ(failureOf([&] { files().CreateFolder(named("Files\\Sub")); }), kPermissionDenied);
  EXPECT_EQ(failureOf([&] { files().Kill(named("Files\\kept.txt")); }), kPermissionDenied);
  EXPECT_EQ(std::distance(fs::directory_iterator(elsewhere()), {}), 1);
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderTest, TheWayUpLeadsOutToo) {
  EXPECT_EQ(failureOf([&] { files().openOutput(named("Files\\..\\..\\elsewhere\\kept.txt")); }),
            kPermissionDenied);
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderTest, ALinkIsDeletedAndNotWhatItLeadsTo) {
  fs::create_symlink(elsewhere() / "kept.txt", data() / "a.txt");
  files().Kill(named("a.txt"));
  EXPECT_FALSE(fs::is_symlink(data() / "a.txt"));
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderTest, TheOtherNameOfAHardLinkKeepsItsText) {
  fs::create_hard_link(elsewhere() / "kept.txt", data() / "a.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Writing), 0);
  EXPECT_EQ(scratch_.content("data/a.txt"), "new");
  EXPECT_EQ(kept(), "precious");
}

TEST_F(OwnFolderTest, ALinkThatStaysInTheFolderIsFollowed) {
  scratch_.fill("data/Files/b.txt", "old");
  fs::create_symlink("Files/b.txt", data() / "a.txt");
  EXPECT_EQ(failureOfSaving("a.txt", FileMode::Writing), 0);
  EXPECT_EQ(scratch_.content("data/Files/b.txt"), "new");
}

TEST_F(OwnFolderTest, TheProgramFolderMayItselfBeALink) {
  fs::create_directory_symlink(data(), scratch_.folder() / "link");
  LinuxFiles files({scratch_.folder() / "link", scratch_.folder() / "share"});
  files.OpenTextFile(files.programFolder(), "\\a.txt", FileMode::Writing, true)->Write("new");
  EXPECT_EQ(scratch_.content("data/a.txt"), "new");
}

TEST_F(OwnFolderTest, AMissingFolderIsStillAPathThatIsNotFound) {
  EXPECT_EQ(failureOf([&] { files().openOutput(named("Missing\\a.txt")); }), kPathNotFound);
}

// Whoever names a place elsewhere chose it, with its links.
TEST_F(OwnFolderTest, APathElsewhereIsFollowedWhereItLeads) {
  fs::create_symlink(elsewhere() / "kept.txt", scratch_.folder() / "chosen.txt");
  files().openOutput((scratch_.folder() / "chosen.txt").string())->Write("new");
  EXPECT_EQ(kept(), "new");
}

TEST_F(OwnFolderTest, SettingsAreReadThroughALinkThatLeadsOutAndNotWritten) {
  scratch_.fill("elsewhere/kept.txt", "[Settings]\r\nLang=1\r\n");
  fs::create_symlink(elsewhere() / "kept.txt", data() / "Veltrin.dat");
  const LinuxFiles files = this->files();
  ProfileFile profiles([&](const std::string& path) { return files.native(path); },
                       [&](const std::string& path) { return files.pathToWrite(path); });
  EXPECT_EQ(profiles.read("Settings", "Lang", "", 9, named("Veltrin.dat")), "1");
  EXPECT_FALSE(profiles.write("Settings", "Lang", "2", named("Veltrin.dat")));
  EXPECT_EQ(kept(), "[Settings]\r\nLang=1\r\n");
}

TEST_F(OwnFolderTest, TheRegistryIsNotWrittenThroughALinkThatLeadsOut) {
  fs::create_symlink(elsewhere() / "new.txt", data() / "Registry.dat");
  FileRegistry registry((data() / "Registry.dat").string());
  EXPECT_EQ(registry.createKey(kHkeyCurrentUser, "Software\\Veltrin"), kRegistryAccessDenied);
  EXPECT_FALSE(fs::exists(elsewhere() / "new.txt"));
}

TEST_F(OwnFolderTest, ACircleOfLinksStaysNowhere) {
  fs::create_symlink("b.txt", data() / "a.txt");
  fs::create_symlink("a.txt", data() / "b.txt");
  EXPECT_FALSE(staysBelow(data(), data() / "a.txt"));
}

TEST_F(OwnFolderTest, ASlashAtTheEndOfTheFoldersNameMakesNoDifference) {
  EXPECT_TRUE(staysBelow(data().string() + "/", data() / "a.txt"));
  EXPECT_TRUE(staysBelow(data().string() + "/missing/", data() / "missing" / "a.txt"));
}

TEST_F(OwnFolderTest, AFolderWhoseNameOnlyBeginsLikeItIsElsewhere) {
  fs::create_directories(scratch_.folder() / "data-more");
  EXPECT_FALSE(staysBelow(data(), scratch_.folder() / "data-more" / "a.txt"));
  EXPECT_TRUE(staysBelow(data(), data() / "a.txt"));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <windows.h>

#include "platform/windows/code_page.h"
#include "platform/windows/windows_files.h"
#include "text/statement.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "no such file";
  return {std::istreambuf_iterator<char>(file), {}};
}

class WindowsFilesTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ =
        fs::temp_directory_path() / ("veltrin-files-" + std::to_string(GetCurrentProcessId()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }

  void TearDown() override { fs::remove_all(folder_); }

  void put(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  std::unique_ptr<TextStream> open(const std::string& name, FileMode mode = FileMode::Writing,
                                   bool create = true) const {
    const WindowsFiles files(folder_.string());
    return WindowsFiles(files).OpenTextFile(files.programFolder(), name, mode, create);
  }

  // Number of the failure of opening a file; 0 when it does not fail.
  int failureOfOpening(const std::string& name, FileMode mode = FileMode::Writing,
                       bool create = true) const {
    try {
      open(name, mode, create);
      return 0;
    } catch (const StatementFailed& failure) {
      return failure.number();
    }
  }

  fs::path folder_;
};

TEST_F(WindowsFilesTest, KeepsItsFilesBesideTheExecutable) {
  const std::string folder = WindowsFiles().programFolder();
  EXPECT_TRUE(fs::exists(fs::path(toWide(folder)) / "platform_tests.exe")) << folder;
}

TEST_F(WindowsFilesTest, LeavesPathsAsTheyAre) {
  EXPECT_EQ(WindowsFiles("C:\\Veltrin").native("C:\\Veltrin\\Files\\a.txt"),
            "C:\\Veltrin\\Files\\a.txt");
}

TEST_F(WindowsFilesTest, AnInstallationWithoutTheMarkKeepsEverythingBesideTheProgram) {
  const std::string installation = folder_.string();

  const auto folders = WindowsFiles::foldersOf(installation, (folder_ / "user").string());

  EXPECT_EQ(folders.data, installation);
  EXPECT_EQ(folders.share, "");
}

TEST_F(WindowsFilesTest, AnInstallationForAllUsersKeepsFilesInAFolderOfTheUser) {
  put("for-all-users.txt", "");
  fs::create_directories(folder_ / "user");

  const auto folders = WindowsFiles::foldersOf(folder_.string(), (folder_ / "user").string());

  EXPECT_EQ(folders.data, (folder_ / "user\\Veltrin").string());
  EXPECT_EQ(folders.share, folder_.string());
  EXPECT_TRUE(fs::is_directory(folder_ / "user\\Veltrin\\Files"));
}

TEST_F(WindowsFilesTest, AUserWithoutAFolderKeepsFilesBesideTheProgram) {
  put("for-all-users.txt", "");

  EXPECT_EQ(WindowsFiles::foldersOf(folder_.string(), "").data, folder_.string());
}

TEST_F(WindowsFilesTest, ReadsFromTheInstallationWhatTheUserHasNot) {
  fs::create_directories(folder_ / "data");
  fs::create_directories(folder_ / "share");
  put("share\\both.txt", "installed");
  put("data\\both.txt", "own");
  put("share\\one.txt", "installed");
  const std::string data = (folder_ / "data").string();
  const std::string share = (folder_ / "share").string();
  const WindowsFiles files(WindowsFiles::Folders{data, share});

  EXPECT_EQ(files.native(data + "\\both.txt"), data + "\\both.txt");
  EXPECT_EQ(files.native(data + "\\one.txt"), share + "\\one.txt");
  EXPECT_EQ(files.native(data + "\\none.txt"), data + "\\none.txt");
  EXPECT_EQ(files.native(share + "\\none.txt"), share + "\\none.txt");
  EXPECT_TRUE(files.exists(data + "\\one.txt"));
  EXPECT_FALSE(files.exists(data + "\\none.txt"));
}

TEST_F(WindowsFilesTest, WritesAndDeletesNothingInTheInstallation) {
  fs::create_directories(folder_ / "data");
  fs::create_directories(folder_ / "share");
  put("share\\a.txt", "installed");
  const std::string data = (folder_ / "data").string();
  WindowsFiles files(WindowsFiles::Folders{data, (folder_ / "share").string()});

  EXPECT_THROW(files.Kill(data + "\\a.txt"), StatementFailed);
  files.OpenTextFile(data, "\\a.txt", FileMode::Writing, true)->Write("own");

  EXPECT_EQ(contentOf(folder_ / "share\\a.txt"), "installed");
  EXPECT_EQ(contentOf(folder_ / "data\\a.txt"), "own");
}

TEST_F(WindowsFilesTest, WritesTextInTheAnsiCodePage) {
  open("\\a.txt")->Write("h\xC3\xB6st\r\n");
  EXPECT_EQ(contentOf(folder_ / "a.txt"), toAnsi("h\xC3\xB6st\r\n"));
}

TEST_F(WindowsFilesTest, LeavesOlderContentUntilTheStreamIsClosed) {
  put("a.txt", "old");
  const auto stream = open("\\a.txt");
  stream->Write("new");
  EXPECT_EQ(contentOf(folder_ / "a.txt"), "old");
  stream->Close();
  EXPECT_EQ(contentOf(folder_ / "a.txt"), "new");
}

TEST_F(WindowsFilesTest, AppendsToOlderContent) {
  put("a.txt", "old ");
  open("\\a.txt", FileMode::Appending)->Write("new");
  EXPECT_EQ(contentOf(folder_ / "a.txt"), "old new");
}

TEST_F(WindowsFilesTest, FailsForANameThatTheSystemRefuses) {
  for (const std::string name : {"\\a?.txt", "\\con", "\\..", "\\sub\\a.txt", "\\a:b"}) {
    EXPECT_EQ(failureOfOpening(name), 52) << name;
  }
}

TEST_F(WindowsFilesTest, FailsForAMissingFileThatIsNotToBeMade) {
  EXPECT_EQ(failureOfOpening("\\a.txt", FileMode::Writing, false), 53);
}

TEST_F(WindowsFilesTest, FailsForAMissingFolder) {
  fs::remove_all(folder_);
  EXPECT_EQ(failureOfOpening("\\a.txt"), 76);
}

TEST_F(WindowsFilesTest, FailsForAFileThatIsReadOnly) {
  put("a.txt", "old");
  SetFileAttributesW((folder_ / "a.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(failureOfOpening("\\a.txt"), 70);
  SetFileAttributesW((folder_ / "a.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(contentOf(folder_ / "a.txt"), "old");
}

TEST_F(WindowsFilesTest, KnowsFilesAndFolders) {
  put("a.txt", "");
  EXPECT_TRUE(WindowsFiles().exists((folder_ / "A.TXT").string()));
  EXPECT_TRUE(WindowsFiles().exists(folder_.string()));
  EXPECT_FALSE(WindowsFiles().exists((folder_ / "b.txt").string()));
}

TEST_F(WindowsFilesTest, KnowsAFileWithALetterOfTheCodePageInItsName) {
  std::ofstream(folder_ / L"h\u00F6st.txt") << "";
  EXPECT_TRUE(WindowsFiles().exists(folder_.string() + "\\h\xC3\xB6st.txt"));
}

TEST_F(WindowsFilesTest, KnowsNoPathThatIsNone) {
  EXPECT_FALSE(WindowsFiles().exists(""));
  EXPECT_FALSE(WindowsFiles().exists(folder_.string() + std::string("\0x", 2)));
}

}  // namespace
}  // namespace veltrin

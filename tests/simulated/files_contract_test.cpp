// SPDX-License-Identifier: GPL-3.0-or-later
// What every kind of Files does alike, so that a test on the simulated one proves
// something about the system's.
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/scratch_folder.h"
#include "support/simulated_store.h"
#include "text/statement.h"

#ifdef _WIN32
#include "platform/windows/windows_files.h"
#else
#include "platform/linux/linux_files.h"
#endif

namespace veltrin {
namespace {

// The simulated files.
struct InMemory {
  SimulatedFiles files;

  std::string content(const std::string& name) {
    return files.contents.at(files.programFolder() + name);
  }
};

// The system's files, in a folder of their own.
struct OnDisk {
  ScratchFolder scratch;
#ifdef _WIN32
  WindowsFiles files{scratch.folder().string()};
#else
  LinuxFiles files{{scratch.folder().string(), scratch.folder().string()}};
#endif

  std::string content(const std::string& name) { return scratch.content(name.substr(1)); }
};

template <class Kind>
class FilesContract : public ::testing::Test {
 protected:
  std::unique_ptr<TextStream> open(FileMode mode, bool create = true,
                                   const std::string& name = "\\log.txt") {
    return kind.files.OpenTextFile(kind.files.programFolder(), name, mode, create);
  }

  // Writes a whole file.
  void store(const std::string& text) {
    const auto stream = open(FileMode::Writing);
    stream->Write(text);
    stream->Close();
  }

  // The number of the failure that an action ends in; 0 when it ends well.
  template <class Action>
  int failureOf(Action action) {
    try {
      action();
      return 0;
    } catch (const StatementFailed& failure) {
      return failure.number();
    }
  }

  std::string path() { return kind.files.programFolder() + "\\log.txt"; }

  std::string content() { return kind.content("\\log.txt"); }

  Kind kind;
};

using Kinds = ::testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(FilesContract, Kinds);

TYPED_TEST(FilesContract, AMissingFileIsMadeEmptyWhenItIsOpened) {
  const auto stream = this->open(FileMode::Writing);
  EXPECT_TRUE(this->kind.files.exists(this->kind.files.programFolder() + "\\log.txt"));
  EXPECT_EQ(this->content(), "");
}

TYPED_TEST(FilesContract, AMissingFileThatIsNotToBeMadeIsNotFound) {
  EXPECT_EQ(this->failureOf([&] { this->open(FileMode::Writing, false); }), kFileNotFound);
  EXPECT_EQ(this->failureOf([&] { this->open(FileMode::Appending, false); }), kFileNotFound);
  EXPECT_FALSE(this->kind.files.exists(this->kind.files.programFolder() + "\\log.txt"));
}

TYPED_TEST(FilesContract, WritingReplacesOlderContent) {
  this->store("a long older text");
  this->store("new");
  EXPECT_EQ(this->content(), "new");
}

TYPED_TEST(FilesContract, OlderContentStandsUntilTheFileIsClosed) {
  this->store("older");
  const auto stream = this->open(FileMode::Writing, false);
  stream->Write("new");
  EXPECT_EQ(this->content(), "older");
  stream->Close();
  EXPECT_EQ(this->content(), "new");
}

TYPED_TEST(FilesContract, AppendingKeepsOlderContent) {
  this->store("one");
  const auto stream = this->open(FileMode::Appending);
  stream->Write(" two");
  stream->Write(" three");
  stream->Close();
  EXPECT_EQ(this->content(), "one two three");
}

TYPED_TEST(FilesContract, AFileCannotBeOpenedForReading) {
  this->store("text");
  EXPECT_EQ(this->failureOf([&] { this->open(FileMode::Reading); }), 54);
}

TYPED_TEST(FilesContract, AClosedFileTakesNoText) {
  const auto stream = this->open(FileMode::Writing);
  stream->Write("kept");
  stream->Close();
  EXPECT_EQ(this->failureOf([&] { stream->Write("lost"); }), 54);
  stream->Close();
  EXPECT_EQ(this->content(), "kept");
}

TYPED_TEST(FilesContract, AFileThatIsLeftOpenIsClosedWhenItGoes) {
  this->open(FileMode::Writing)->Write("kept");
  EXPECT_EQ(this->content(), "kept");
}

TYPED_TEST(FilesContract, ANameThatWindowsRefusesIsRefused) {
  for (const char* name :
       {"\\a/b.txt", "\\a\\b.txt", "\\a:b.txt", "\\what?.txt", "\\con.txt", "log.txt"}) {
    EXPECT_EQ(this->failureOf([&] { this->open(FileMode::Writing, true, name); }), kBadFileName)
        << name;
  }
}

TYPED_TEST(FilesContract, AMissingFileIsMadeEmptyWhenItIsOpenedForOutput) {
  const auto stream = this->kind.files.openOutput(this->path());
  EXPECT_TRUE(this->kind.files.exists(this->path()));
  EXPECT_EQ(this->content(), "");
}

TYPED_TEST(FilesContract, OutputReplacesOlderContentWhenItIsClosed) {
  this->store("a long older text");
  const auto stream = this->kind.files.openOutput(this->path());
  stream->Write("new ");
  stream->Write("text");
  EXPECT_EQ(this->content(), "a long older text");
  stream->Close();
  EXPECT_EQ(this->content(), "new text");
}

TYPED_TEST(FilesContract, OutputThatIsClosedTakesNoText) {
  const auto stream = this->kind.files.openOutput(this->path());
  stream->Write("kept");
  stream->Close();
  EXPECT_EQ(this->failureOf([&] { stream->Write("lost"); }), 54);
  stream->Close();
  EXPECT_EQ(this->content(), "kept");
}

TYPED_TEST(FilesContract, OutputThatIsLeftOpenIsClosedWhenItGoes) {
  this->kind.files.openOutput(this->path())->Write("kept");
  EXPECT_EQ(this->content(), "kept");
}

TYPED_TEST(FilesContract, WhatWasPutOutIsReadAgain) {
  this->kind.files.openOutput(this->path())->Write("a \xC3\x98 b\r\nc");
  EXPECT_EQ(this->kind.files.readText(this->path()), "a \xC3\x98 b\r\nc");
}

TYPED_TEST(FilesContract, AnEmptyFileIsReadAsAnEmptyText) {
  this->store("");
  EXPECT_EQ(this->kind.files.readText(this->path()), "");
}

TYPED_TEST(FilesContract, AMissingFileIsNotRead) {
  EXPECT_NE(this->failureOf([&] { this->kind.files.readText(this->path()); }), 0);
  EXPECT_FALSE(this->kind.files.exists(this->path()));
}

}  // namespace
}  // namespace veltrin

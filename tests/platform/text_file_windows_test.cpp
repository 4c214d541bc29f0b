// SPDX-License-Identifier: GPL-3.0-or-later
// What Windows writes into text files, and what it refuses.
#include <windows.h>

#include "platform/windows/code_page.h"
#include "text_files.h"

namespace veltrin {
namespace {

// Most machines of the western world have this code page, and so have these tests.
constexpr UINT kWestern = 1252;

using TextFileWindowsTest = TextFileTest;

TEST_F(TextFileWindowsTest, IsInTheCodePage) {
  if (GetACP() != kWestern) GTEST_SKIP() << "the code page of this machine is not 1252";
  store("a.txt", "aØb\r\n");
  EXPECT_EQ(scratch.content("a.txt"),
            "a\xD8"
            "b\r\n");
  EXPECT_EQ(read("a.txt"), "aØb\r\n");
}

TEST_F(TextFileWindowsTest, HasAQuestionMarkForWhatTheCodePageLacks) {
  if (GetACP() != kWestern) GTEST_SKIP() << "the code page of this machine is not 1252";
  store("a.txt", "\xE4\xB8\xAD");
  EXPECT_EQ(read("a.txt"), "?");
}

TEST_F(TextFileWindowsTest, MayHaveANameBeyondTheCodePage) {
  store("\xE4\xB8\xAD.txt", "text");
  EXPECT_EQ(read("\xE4\xB8\xAD.txt"), "text");
}

TEST_F(TextFileWindowsTest, ThatIsReadOnlyIsNotWritten) {
  scratch.fill("a.txt", "old");
  SetFileAttributesW(toWide(path("a.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(failureOfStoring("a.txt"), 70);
  EXPECT_EQ(read("a.txt"), "old");
  SetFileAttributesW(toWide(path("a.txt")).c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(TextFileWindowsTest, ThatAnotherHoldsForItselfIsRefused) {
  scratch.fill("a.txt", "old");
  const HANDLE held = CreateFileW(toWide(path("a.txt")).c_str(), GENERIC_READ, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_EQ(failureOfStoring("a.txt"), 70);
  EXPECT_EQ(failureOfReading("a.txt"), 70);
  CloseHandle(held);
  EXPECT_EQ(scratch.content("a.txt"), "old");
}

TEST_F(TextFileWindowsTest, IsNoDevice) {
  EXPECT_NE(failureOf([this] { files.readText("NUL"); }), 0);
  EXPECT_NE(failureOf([this] { files.openOutput("NUL")->Close(); }), 0);
}

TEST_F(TextFileWindowsTest, FailsForANameThatTheSystemRefuses) {
  EXPECT_NE(failureOfStoring("a?.txt"), 0);
  EXPECT_NE(failureOfReading("a?.txt"), 0);
}

}  // namespace
}  // namespace veltrin

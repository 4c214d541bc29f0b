// SPDX-License-Identifier: GPL-3.0-or-later
// What Windows refuses of files that are written over in their place.
#include <windows.h>

#include "byte_files.h"
#include "platform/windows/code_page.h"

namespace veltrin {
namespace {

using ByteFileWindowsTest = ByteFileTest;

TEST_F(ByteFileWindowsTest, FailsForOneThatIsReadOnly) {
  scratch.fill("a.bin", "old");
  SetFileAttributesW(toWide(path("a.bin")).c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(failureOfOpening("a.bin"), 70);
  SetFileAttributesW(toWide(path("a.bin")).c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(scratch.content("a.bin"), "old");
}

TEST_F(ByteFileWindowsTest, FailsForOneThatAnotherHoldsForItself) {
  scratch.fill("a.bin", "old");
  const HANDLE held = CreateFileW(toWide(path("a.bin")).c_str(), GENERIC_READ, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_EQ(failureOfOpening("a.bin"), 70);
  EXPECT_EQ(failureOfKilling("a.bin"), 70);
  CloseHandle(held);
  EXPECT_EQ(scratch.content("a.bin"), "old");
}

TEST_F(ByteFileWindowsTest, FailsForANameThatTheSystemRefuses) {
  EXPECT_EQ(failureOfOpening("a?.bin"), 52);
}

}  // namespace
}  // namespace veltrin

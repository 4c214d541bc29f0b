// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/windows/code_page.h"
#include "platform/windows/library_search.h"
#include "platform/windows/windows_files.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

namespace fs = std::filesystem;

// Whether the system finds a library of that name.
bool isFound(const char* name) {
  const HMODULE library = LoadLibraryA(name);
  if (library != nullptr) FreeLibrary(library);
  return library != nullptr;
}

// Any program file serves as a library. The first search shows that it would be found.
TEST(LibrarySearch, FindsNothingInTheCurrentFolder) {
  const fs::path before = fs::current_path();
  const ScratchFolder scratch;
  fs::copy_file(toWide(WindowsFiles::executableFolder() + "\\talker.exe"),
                scratch.folder() / "planted.dll");
  fs::current_path(scratch.folder());
  const bool wasFound = isFound("planted.dll");
  leaveCurrentFolderOut();
  const bool isStillFound = isFound("planted.dll");
  fs::current_path(before);

  EXPECT_TRUE(wasFound);
  EXPECT_FALSE(isStillFound);
}

}  // namespace
}  // namespace veltrin

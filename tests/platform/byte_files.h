// SPDX-License-Identifier: GPL-3.0-or-later
// Files of bytes in a folder of a test's own, through the system's Files.
#pragma once

#include <memory>
#include <string>

#include "failure_of.h"
#include "gtest/gtest.h"
#include "scratch_folder.h"

#ifdef _WIN32
#include "platform/windows/windows_files.h"
#else
#include "platform/linux/linux_files.h"
#endif

namespace veltrin {

class ByteFileTest : public testing::Test {
 protected:
  // One of the program's paths.
  std::string path(const std::string& name) const { return files.programFolder() + "\\" + name; }

  void put(const std::string& name, const std::string& bytes) {
    const auto stream = files.openBinary(path(name));
    stream->Put(bytes);
    stream->Close();
  }

  int failureOfOpening(const std::string& name) {
    return failureOf([&] { files.openBinary(path(name)); });
  }

  int failureOfKilling(const std::string& name) {
    return failureOf([&] { files.Kill(path(name)); });
  }

  ScratchFolder scratch;
#ifdef _WIN32
  WindowsFiles files{scratch.folder().string()};
#else
  ScratchFolder share;
  LinuxFiles files{{scratch.folder().string(), share.folder().string()}};
#endif
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Text files of any name in a folder of a test's own, through the system's Files.
#pragma once

#include <string>

#include "byte_files.h"

namespace veltrin {

class TextFileTest : public ByteFileTest {
 protected:
  void store(const std::string& name, const std::string& text) {
    const auto stream = files.openOutput(path(name));
    stream->Write(text);
    stream->Close();
  }

  std::string read(const std::string& name) const { return files.readText(path(name)); }

  int failureOfStoring(const std::string& name, const std::string& text = "new") {
    return failureOf([&] { store(name, text); });
  }

  int failureOfReading(const std::string& name) const {
    return failureOf([&] { read(name); });
  }
};

}  // namespace veltrin

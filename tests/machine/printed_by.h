// SPDX-License-Identifier: GPL-3.0-or-later
// What the system's own tools print, for tests that compare with it.
#pragma once

#include <cstdio>
#include <string>

namespace veltrin {

// The output of a command; empty when the command fails or is not there.
inline std::string printedBy(const std::string& command) {
  FILE* output = popen((command + " 2>/dev/null").c_str(), "r");
  std::string text;
  for (int byte = 0; output != nullptr && (byte = fgetc(output)) != EOF;) {
    text += static_cast<char>(byte);
  }
  return output != nullptr && pclose(output) == 0 ? text : "";
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// What the tools of an X server tell of it.
#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace veltrin {

// What a command prints.
inline std::string outputOf(const std::string& command) {
  std::string text;
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return text;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe)) {
    text.append(buffer.data(), count);
  }
  pclose(pipe);
  return text;
}

}  // namespace veltrin

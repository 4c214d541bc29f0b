// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal_file.h"

#include <cstdint>
#include <cstdio>
#include <unistd.h>

namespace veltrin {
namespace {

constexpr const char* kTool = "/lib/systemd/systemd-journal-remote";
constexpr std::int64_t kFirst = 1770027672123456;  // microseconds since 1970

}  // namespace

bool canMakeJournals() { return access(kTool, X_OK) == 0; }

bool makeJournal(const TemporaryTree& tree, const std::vector<std::string>& entries,
                 const std::string& file) {
  const std::string folder = "/var/log/journal/00112233445566778899aabbccddeeff";
  tree.makeFolder(folder);
  const std::string command = std::string(kTool)
                                  .append(" --output='")
                                  .append(tree.real(folder))
                                  .append("/")
                                  .append(file)
                                  .append("' --split-mode=none - >/dev/null 2>&1");
  FILE* tool = popen(command.c_str(), "w");
  if (tool == nullptr) {
    return false;
  }
  std::int64_t moment = kFirst;
  for (const std::string& entry : entries) {
    const std::string time = std::to_string(moment);
    const std::string text = std::string("__REALTIME_TIMESTAMP=")
                                 .append(time)
                                 .append("\n__MONOTONIC_TIMESTAMP=")
                                 .append(time)
                                 .append("\n_BOOT_ID=0123456789abcdef0123456789abcdef\n")
                                 .append(entry)
                                 .append("\n");
    std::fwrite(text.data(), 1, text.size(), tool);
    moment += 1000000;
  }
  return pclose(tool) == 0;
}

std::string exportField(const std::string& name, const std::string& value) {
  std::string field = name + "\n";
  for (int i = 0; i < 8; ++i) {
    field += static_cast<char>(static_cast<std::uint64_t>(value.size()) >> (8 * i) & 0xFF);
  }
  return field + value + "\n";
}

}  // namespace veltrin

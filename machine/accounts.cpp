// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/accounts.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

// The fields between colons that are looked at.
struct Fields {
  explicit Fields(std::string_view line) {
    for (std::string_view& field : all) {
      const std::size_t colon = line.find(':');
      field = line.substr(0, colon);
      line.remove_prefix(colon == std::string_view::npos ? line.size() : colon + 1);
    }
  }

  // NAME:PASSWORD:NUMBER: is how the lines of both files begin. One that stands for accounts
  // of another source, "+@staff", has no number (nsswitch.conf(5), compat).
  bool ofAccount() const {
    return !all[0].empty() && all[0][0] != '+' && all[0][0] != '-' && all[0][0] != '#' &&
           wholeNumber(all[2]);
  }

  std::string name() const { return printable(all[0]); }
  std::string fullName() const { return printable(all[4].substr(0, all[4].find(','))); }

  std::array<std::string_view, 5> all;
};

}  // namespace

std::vector<AccountFacts> localAccounts(const FileTree& files) {
  std::vector<AccountFacts> accounts;
  files.readLines("/etc/passwd", [&](std::string_view line) {
    if (const Fields fields(line); fields.ofAccount()) {
      accounts.push_back({fields.name(), fields.fullName(), false});
    }
  });
  files.readLines("/etc/group", [&](std::string_view line) {
    if (const Fields fields(line); fields.ofAccount()) {
      accounts.push_back({fields.name(), "", true});
    }
  });
  return accounts;
}

}  // namespace veltrin

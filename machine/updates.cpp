// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/updates.h"

#include <algorithm>
#include <cstddef>

#include "machine/fact_text.h"
#include "machine/moments.h"

namespace veltrin {
namespace {

using Updates = std::optional<std::vector<std::string>>;

// A line of dpkg's log begins with a moment: "2025-06-24 14:36:25 ".
constexpr std::string_view kDpkgForm = "0000-00-00 00:00:00 ";

// What stands between the moment and the action in a line of pacman's.
constexpr std::string_view kPacmanMark = "] [ALPM] ";

bool beginsWithMoment(std::string_view line) {
  return line.size() > kDpkgForm.size() &&
         std::equal(kDpkgForm.begin(), kDpkgForm.end(), line.begin(), [](char form, char actual) {
           return form == '0' ? actual >= '0' && actual <= '9' : actual == form;
         });
}

}  // namespace

void ReplacedPackages::add(std::string_view package, std::string_view version) {
  packages_[std::string(package)] = {++count_, std::string(version)};
}

void ReplacedPackages::drop(std::string_view package) {
  if (const auto found = packages_.find(package); found != packages_.end()) {
    packages_.erase(found);
  }
}

std::vector<std::string> ReplacedPackages::texts() const {
  std::map<std::uint64_t, std::string> ordered;
  for (const auto& [package, update] : packages_) {
    ordered[update.first] = printable(package + " " + update.second);
  }
  std::vector<std::string> texts;
  texts.reserve(ordered.size());
  for (auto& [order, text] : ordered) {
    texts.push_back(std::move(text));
  }
  return texts;
}

void DpkgLog::take(std::string_view line) {
  if (beginsWithMoment(line)) {
    known_ = true;
    takeAction(line.substr(kDpkgForm.size()));
  }
}

Updates DpkgLog::updates() const { return known_ ? Updates(replaced_.texts()) : std::nullopt; }

// "upgrade PACKAGE OLD NEW" begins an update, and "status installed PACKAGE NEW" tells
// that it has succeeded. "install PACKAGE OLD NEW", "remove PACKAGE OLD NEW" and "purge
// PACKAGE OLD NEW" end what was before.
void DpkgLog::takeAction(std::string_view action) {
  if (action.starts_with("status installed ")) {
    if (!begun_.empty()) {
      finish(wordsOf(action));
    }
  } else if (action.starts_with("upgrade ")) {
    begin(wordsOf(action));
  } else if (action.starts_with("install ") || action.starts_with("remove ") ||
             action.starts_with("purge ")) {
    end(wordsOf(action));
  }
}

void DpkgLog::begin(const Words& words) {
  if (words.size() == 4 && words[2] != words[3]) {
    begun_[std::string(words[1])] = words[3];
  }
}

void DpkgLog::finish(const Words& words) {
  const auto found = words.size() == 4 ? begun_.find(words[2]) : begun_.end();
  if (found != begun_.end() && found->second == words[3]) {
    replaced_.add(words[2], words[3]);
    begun_.erase(found);
  }
}

void DpkgLog::end(const Words& words) {
  if (words.size() < 2) {
    return;
  }
  replaced_.drop(words[1]);
  if (const auto found = begun_.find(words[1]); found != begun_.end()) {
    begun_.erase(found);
  }
}

// "upgraded NAME (OLD -> NEW)" and its kin stand behind the mark.
void PacmanLog::take(std::string_view line) {
  const std::size_t mark = line.find(kPacmanMark);
  if (mark == std::string_view::npos || !momentInLog(line)) {
    return;
  }
  known_ = true;
  const auto words = wordsOf(line.substr(mark + kPacmanMark.size()));
  if (words.size() == 5 && words[0] == "upgraded" && words[3] == "->" && words[4].ends_with(")")) {
    replaced_.add(words[1], words[4].substr(0, words[4].size() - 1));
  } else if (words.size() >= 2 &&
             (words[0] == "installed" || words[0] == "removed" || words[0] == "downgraded")) {
    replaced_.drop(words[1]);
  }
}

Updates PacmanLog::updates() const { return known_ ? Updates(replaced_.texts()) : std::nullopt; }

Updates updatesOf(const FileTree& files) {
  DpkgLog dpkg;
  for (const char* path : {"/var/log/dpkg.log.1", "/var/log/dpkg.log"}) {
    files.readLines(path, [&](std::string_view line) { dpkg.take(line); });
  }
  if (auto updates = dpkg.updates()) {
    return updates;
  }
  PacmanLog pacman;
  files.readLines("/var/log/pacman.log", [&](std::string_view line) { pacman.take(line); });
  return pacman.updates();
}

}  // namespace veltrin

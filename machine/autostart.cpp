// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/autostart.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"
#include "machine/setting_folders.h"

namespace veltrin {
namespace {

// Undoes the escapes of a text (Desktop Entry Specification, "Possible value types").
std::string unescapedText(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    const char code = value[++i];
    text += code == 's' || code == 'n' || code == 't' || code == 'r' ? ' ' : code;
  }
  return printable(text);
}

// One file of an autostart folder.
class Entry {
 public:
  explicit Entry(const std::string& text) : text_(text) {}

  std::string value(std::string_view key) const {
    return sectionValue(text_, "Desktop Entry", key);
  }
  bool is(std::string_view key, std::string_view flag) const {
    return lowerCase(value(key)) == flag;
  }
  // Whether a list of desktops holds one of these.
  bool names(std::string_view key, const std::vector<std::string>& desktops) const {
    const auto listed = piecesOf(value(key), ';');
    return std::find_first_of(listed.begin(), listed.end(), desktops.begin(), desktops.end()) !=
           listed.end();
  }

 private:
  const std::string& text_;
};

class Autostart {
 public:
  Autostart(const FileTree& files, const Machine& machine)
      : files_(files),
        desktops_(piecesOf(machine.environment("XDG_CURRENT_DESKTOP"), ':')),
        programs_(piecesOf(machine.environment("PATH"), ':')) {}

  // A file hides those of the same name in the folders that come later.
  void addFolder(const std::string& folder) {
    for (const std::string& file : files_.names(folder)) {
      if (file.ends_with(".desktop") && taken_.insert(file).second) {
        addFile(folder, file);
      }
    }
  }

  std::vector<AutostartFacts> facts;

 private:
  void addFile(const std::string& folder, const std::string& file) {
    const std::string text = files_.text(files_.resolved(folder + "/" + file));
    const Entry entry(text);
    const std::string command = unescapedText(entry.value("Exec"));
    if (!starts(entry) || command.empty()) {
      return;
    }
    const std::string caption = unescapedText(entry.value("Name"));
    facts.push_back({printable(file), printable(folder),
                     caption.empty() ? printable(file) : caption,
                     unescapedText(entry.value("Comment")), command});
  }

  bool starts(const Entry& entry) const {
    return !entry.is("Hidden", "true") && !entry.is("X-GNOME-Autostart-enabled", "false") &&
           (entry.value("OnlyShowIn").empty() || entry.names("OnlyShowIn", desktops_)) &&
           !entry.names("NotShowIn", desktops_) && isInstalled(entry.value("TryExec"));
  }

  bool isInstalled(const std::string& program) const {
    if (program.empty()) {
      return true;
    }
    if (program.starts_with('/')) {
      return isThere(program);
    }
    return std::any_of(programs_.begin(), programs_.end(),
                       [&](const std::string& folder) { return isThere(folder + "/" + program); });
  }

  bool isThere(const std::string& path) const {
    return files_.written(files_.resolved(path)).has_value();
  }

  const FileTree& files_;
  std::vector<std::string> desktops_;
  std::vector<std::string> programs_;  // the folders that programs are looked for in
  std::set<std::string> taken_;
};

}  // namespace

std::vector<AutostartFacts> autostartPrograms(const FileTree& files, const Machine& machine) {
  Autostart autostart(files, machine);
  if (const std::string own = userSettings(machine); !own.empty()) {
    autostart.addFolder(own + "/autostart");
  }
  for (const std::string& folder : systemSettings(machine)) {
    autostart.addFolder(folder + "/autostart");
  }
  return std::move(autostart.facts);
}

}  // namespace veltrin

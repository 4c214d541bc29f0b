// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/enabled_units.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"
#include "machine/setting_folders.h"

namespace veltrin {
namespace {

using Folders = std::vector<std::string>;

// The folders of units by their rank (systemd.unit(5), "Unit File Load Path").
Folders systemUnits() {
  return {"/etc/systemd/system", "/run/systemd/system", "/usr/local/lib/systemd/system",
          "/usr/lib/systemd/system", "/lib/systemd/system"};
}
Folders sharedUserUnits() {
  return {"/etc/systemd/user", "/run/systemd/user", "/usr/local/lib/systemd/user",
          "/usr/lib/systemd/user"};
}

// The parts of "PREFIX@INSTANCE.service"; a unit that is no instance has no such part.
struct UnitName {
  explicit UnitName(std::string_view unit)
      : whole(unit.substr(0, unit.rfind('.'))),
        ending(unit.substr(whole.size())),
        prefix(whole.substr(0, whole.find('@'))),
        instance(whole.substr(std::min(prefix.size() + 1, whole.size()))) {}

  // The names of the files that tell of it: its own, and that which all instances share.
  std::vector<std::string> files() const {
    std::vector<std::string> names{std::string(whole) + std::string(ending)};
    if (!instance.empty()) {
      names.push_back(std::string(prefix) + "@" + std::string(ending));
    }
    return names;
  }

  std::string_view whole;
  std::string_view ending;
  std::string_view prefix;
  std::string_view instance;
};

// Undoes the escapes of a unit's name: "-" stands for "/", and \xHH for a byte.
std::string unescapedName(std::string_view name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const auto byte = name.substr(i).starts_with("\\x") && i + 4 <= name.size()
                          ? wholeNumber(name.substr(i + 2, 2), 16)
                          : std::nullopt;
    if (byte) {
      text += static_cast<char>(*byte);
      i += 3;
    } else {
      text += name[i] == '-' ? '/' : name[i];
    }
  }
  return text;
}

// What a specifier stands for (systemd.unit(5), "Specifiers"), of those that are found in
// descriptions; nothing for another one.
std::optional<std::string> specified(char specifier, const UnitName& unit,
                                     const std::string& host) {
  switch (specifier) {
    case 'n':
      return std::string(unit.whole) + std::string(unit.ending);
    case 'N':
      return std::string(unit.whole);
    case 'p':
      return std::string(unit.prefix);
    case 'P':
      return unescapedName(unit.prefix);
    case 'i':
      return std::string(unit.instance);
    case 'I':
      return unescapedName(unit.instance);
    case 'H':
      return host;
    case '%':
      return "%";
    default:
      return std::nullopt;
  }
}

std::string filledIn(std::string_view text, const UnitName& unit, const std::string& host) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto meant =
        text[i] == '%' && i + 1 < text.size() ? specified(text[i + 1], unit, host) : std::nullopt;
    if (meant) {
      filled += *meant;
      ++i;
    } else {
      filled += text[i];
    }
  }
  return filled;
}

std::string pathOf(const std::string& folder, const std::string& name) {
  std::string path = folder;
  path += '/';
  path += name;
  return path;
}

class Units {
 public:
  Units(const FileTree& files, std::string host) : files_(files), host_(std::move(host)) {}

  // Adds the units that the links below a folder enable, whose files lie in others.
  void addEnabledIn(const std::string& folder, const Folders& unitFolders) {
    for (const std::string& name : files_.names(folder)) {
      if (name.ends_with(".wants") || name.ends_with(".requires") || name.ends_with(".upholds")) {
        addLinks(pathOf(folder, name), unitFolders);
      }
    }
  }

  std::vector<UnitFacts> facts;

 private:
  void addLinks(const std::string& folder, const Folders& unitFolders) {
    for (const std::string& name : files_.names(folder)) {
      const auto file = unitFile(folder, name, unitFolders);
      // An empty file masks a unit as a link to /dev/null does.
      if (file && !file->empty()) {
        const std::string description = sectionValue(*file, "Unit", "Description");
        facts.push_back({printable(name), printable(filledIn(description, UnitName(name), host_)),
                         printable(folder)});
      }
    }
  }

  // The text of a unit's file: that of its own name, that of all instances, or what the link
  // points to. Nothing when there is none.
  std::optional<std::string> unitFile(const std::string& folder, const std::string& name,
                                      const Folders& unitFolders) const {
    for (const std::string& file : UnitName(name).files()) {
      for (const std::string& place : unitFolders) {
        const std::string path = files_.resolved(pathOf(place, file));
        if (path == "/dev/null") {
          return std::nullopt;
        }
        if (auto text = files_.read(path)) {
          return text;
        }
      }
    }
    return files_.read(files_.resolved(pathOf(folder, name)));
  }

  const FileTree& files_;
  std::string host_;
};

}  // namespace

std::vector<UnitFacts> enabledUnits(const FileTree& files, const Machine& machine) {
  Units units(files, machine.kernel().host);
  units.addEnabledIn("/etc/systemd/system", systemUnits());
  Folders userUnits = sharedUserUnits();
  units.addEnabledIn("/etc/systemd/user", userUnits);
  if (userSettings(machine).empty()) {
    return std::move(units.facts);
  }
  const std::string own = userSettings(machine) + "/systemd/user";
  userUnits.insert(userUnits.begin(), own);
  userUnits.push_back(machine.environment("HOME") + "/.local/share/systemd/user");
  units.addEnabledIn(own, userUnits);
  return std::move(units.facts);
}

}  // namespace veltrin

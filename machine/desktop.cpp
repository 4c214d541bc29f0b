// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/desktop.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/fact_text.h"
#include "machine/graphics.h"
#include "machine/setting_folders.h"
#include "machine/xfconf.h"

namespace veltrin {
namespace {

using Text = std::optional<std::string>;

std::optional<bool> flag(const Text& text) {
  const std::string value = lowerCase(text.value_or(""));
  return value == "true"    ? std::optional(true)
         : value == "false" ? std::optional(false)
                            : std::nullopt;
}

// Digits at the start of a text, as a size may be written "10.0".
std::optional<std::uint64_t> number(const Text& text) {
  const std::string value = text.value_or("");
  return wholeNumber(value.substr(0, value.find('.')));
}

std::optional<std::uint64_t> times(std::optional<std::uint64_t> number, std::uint64_t factor) {
  if (!number || *number > UINT32_MAX) {
    return std::nullopt;
  }
  return *number * factor;
}

// All desktops tell how long a cursor takes to go and to come back.
std::optional<std::uint64_t> halfOf(std::optional<std::uint64_t> number) {
  return number ? std::optional(*number / 2) : std::nullopt;
}

std::optional<bool> opposite(std::optional<bool> flag) {
  return flag ? std::optional(!*flag) : std::nullopt;
}

// The path of "file:///home/a%20b.png" (RFC 8089); anything else as it is.
std::string pathOf(std::string_view address) {
  constexpr std::string_view kScheme = "file://";
  if (!address.starts_with(kScheme)) {
    return std::string(address);
  }
  address.remove_prefix(kScheme.size());
  std::string path;
  for (std::size_t at = 0; at < address.size(); ++at) {
    const auto code = address[at] == '%' && at + 2 < address.size()
                          ? wholeNumber(address.substr(at + 1, 2), 16)
                          : std::nullopt;
    path += code ? static_cast<char>(*code) : address[at];
    at += code ? 2 : 0;
  }
  return path;
}

void setWallpaper(DesktopFacts& facts, const std::string& file, std::optional<bool> stretched,
                  std::optional<bool> tiled) {
  if (!file.empty()) {
    facts.wallpaper = file;
    facts.stretched = stretched;
    facts.tiled = tiled;
  }
}

// Folders of settings, the user's own first (XDG Base Directory Specification).
class SettingFolders {
 public:
  SettingFolders(const FileTree& files, const Machine& machine) : files_(files) {
    folders_ = systemSettings(machine);
    if (std::string own = userSettings(machine); !own.empty()) {
      folders_.insert(folders_.begin(), std::move(own));
    }
  }

  // The texts of a file in each of them.
  std::vector<std::string> texts(const std::string& name) const {
    std::vector<std::string> texts;
    texts.reserve(folders_.size());
    for (const std::string& folder : folders_) {
      texts.push_back(files_.text(std::string(folder).append("/").append(name)));
    }
    return texts;
  }

 private:
  const FileTree& files_;
  std::vector<std::string> folders_;
};

// Where a desktop of the family of GNOME keeps its settings.
struct SchemaNames {
  std::string background;
  std::string interface;
  std::string saver;
  std::string session;
  std::string icons;           // whose key "font" is that of icons; empty without icons
  std::uint64_t idleUnit = 1;  // seconds
};

const SchemaNames kGnome{"org.gnome.desktop.background", "org.gnome.desktop.interface",
                         "org.gnome.desktop.screensaver", "org.gnome.desktop.session", ""};
const SchemaNames kCinnamon{"org.cinnamon.desktop.background", "org.cinnamon.desktop.interface",
                            "org.cinnamon.desktop.screensaver", "org.cinnamon.desktop.session",
                            "org.nemo.desktop"};
const SchemaNames kMate{"org.mate.background", "org.mate.interface",    "org.mate.screensaver",
                        "org.mate.session",    "org.mate.caja.desktop", 60};

// By a name of XDG_CURRENT_DESKTOP in lower case; null for a desktop that keeps none there.
const SchemaNames* schemasOf(std::string_view desktop) {
  if (desktop == "x-cinnamon") {
    return &kCinnamon;
  }
  if (desktop == "mate") {
    return &kMate;
  }
  const bool isGnome =
      desktop == "gnome" || desktop == "unity" || desktop == "budgie" || desktop == "pantheon";
  return isGnome ? &kGnome : nullptr;
}

void readWallpaper(DesktopFacts& facts, const SchemaNames& names, const SettingOf& setting) {
  const Text options = setting(names.background, "picture-options");
  if (options == "none") {
    return;
  }
  const bool dark = setting(names.interface, "color-scheme") == "prefer-dark";
  Text picture = dark ? setting(names.background, "picture-uri-dark") : std::nullopt;
  for (const char* key : {"picture-uri", "picture-filename"}) {
    if (picture.value_or("").empty()) {
      picture = setting(names.background, key);
    }
  }
  const auto is = [&](const char* option) {
    return options ? std::optional(*options == option) : std::nullopt;
  };
  setWallpaper(facts, pathOf(picture.value_or("")), is("stretched"), is("wallpaper"));
}

// A font is written with its size behind it, "Sans Bold 10".
std::optional<std::uint64_t> sizeOfFont(const Text& font) {
  const std::string text = font.value_or("");
  const auto words = wordsOf(text);
  return words.empty() ? std::nullopt : number(std::string(words.back()));
}

DesktopFacts factsBySchemas(const SchemaNames& names, const SettingOf& setting) {
  DesktopFacts facts;
  if (flag(setting(names.interface, "cursor-blink")) == true) {
    facts.cursorBlink = halfOf(number(setting(names.interface, "cursor-blink-time")));
  }
  if (!names.icons.empty()) {
    facts.iconTitle = sizeOfFont(setting(names.icons, "font"));
  }
  const auto idle = times(number(setting(names.session, "idle-delay")), names.idleUnit);
  const bool allowed = flag(setting(names.saver, "idle-activation-enabled")).value_or(true);
  if (idle) {
    facts.saverActive = *idle > 0 && allowed;  // 0 is never
  }
  facts.saverTime = idle;
  facts.saverSecure = flag(setting(names.saver, "lock-enabled"));
  readWallpaper(facts, names, setting);
  return facts;
}

// The value of a key in the first file that has it.
Text valueIn(const std::vector<std::string>& texts, std::string_view section,
             std::string_view key) {
  for (const std::string& text : texts) {
    if (std::string value = sectionValue(text, section, key); !value.empty()) {
      return value;
    }
  }
  return std::nullopt;
}

// The settings of one desktop of Plasma, of which there is one for each screen and activity;
// panels are kept with them.
struct Containment {
  std::string plugin;
  std::string screen;
  std::string image;
  std::string fill;
};

// Takes one line of a section in. "[Containments][25][Wallpaper][org.kde.image][General]" holds
// the picture of the desktop 25.
void takeSetting(std::map<std::string, Containment>& containments, std::string_view section,
                 std::string_view line) {
  constexpr std::string_view kStart = "[Containments][";
  constexpr std::string_view kPicture = "][Wallpaper][org.kde.image][General]";
  const std::size_t sign = line.find('=');
  if (!section.starts_with(kStart) || sign == std::string_view::npos) {
    return;
  }
  section.remove_prefix(kStart.size());
  const std::size_t end = std::min(section.find(']'), section.size());
  const std::string_view rest = section.substr(end);
  const std::string_view key = line.substr(0, sign);
  const std::string_view value = line.substr(sign + 1);
  Containment& containment = containments[std::string(section.substr(0, end))];
  if (rest == "]" && key == "wallpaperplugin") {
    containment.plugin = value;
  } else if (rest == "]" && key == "lastScreen") {
    containment.screen = value;
  } else if (rest == kPicture && key == "Image") {
    containment.image = value;
  } else if (rest == kPicture && key == "FillMode") {
    containment.fill = value;
  }
}

std::map<std::string, Containment> containmentsIn(const std::string& text) {
  std::map<std::string, Containment> containments;
  std::string_view section;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    line = trimmed(line);
    if (line.starts_with('[')) {
      section = line;
    }
    takeSetting(containments, section, line);
  }
  return containments;
}

void readPlasmaWallpaper(DesktopFacts& facts, const std::string& text) {
  for (const auto& [name, containment] : containmentsIn(text)) {
    const bool elsewhere = !containment.screen.empty() && containment.screen != "0";
    if (containment.plugin != "org.kde.image" || containment.image.empty() || elsewhere) {
      continue;
    }
    // By the modes of Qt's Image: 0 is stretched, 3 to 5 repeat the picture.
    const auto mode = wholeNumber(containment.fill);
    std::optional<bool> stretched;
    std::optional<bool> tiled;
    if (mode) {
      stretched = *mode == 0;
      tiled = *mode >= 3 && *mode <= 5;
    }
    setWallpaper(facts, pathOf(containment.image), stretched, tiled);
    return;
  }
}

DesktopFacts factsOfPlasma(const SettingFolders& folders) {
  DesktopFacts facts;
  const auto lock = folders.texts("kscreenlockerrc");
  facts.cursorBlink =
      halfOf(number(valueIn(folders.texts("kdeglobals"), "KDE", "CursorBlinkRate")));
  // The screen goes dark and asks for the password in one.
  facts.saverActive = flag(valueIn(lock, "Daemon", "Autolock"));
  facts.saverSecure = facts.saverActive;
  facts.saverTime = times(number(valueIn(lock, "Daemon", "Timeout")), 60);
  for (const std::string& text : folders.texts("plasma-org.kde.plasma.desktop-appletsrc")) {
    if (facts.wallpaper.empty()) {
      readPlasmaWallpaper(facts, text);
    }
  }
  return facts;
}

// A channel of Xfce's settings, the user's own value before that of the system.
class Channel {
 public:
  Channel(const SettingFolders& folders, const std::string& name) {
    for (const std::string& text :
         folders.texts("xfce4/xfconf/xfce-perchannel-xml/" + name + ".xml")) {
      values_.merge(xfconfValues(text));
    }
  }

  Text value(const std::string& path) const {
    const auto found = values_.find(path);
    return found == values_.end() ? std::nullopt : Text(found->second);
  }

  // The folder of the first value whose path ends so; empty without one.
  std::string folderOf(std::string_view end) const {
    for (const auto& [path, value] : values_) {
      if (path.ends_with(end)) {
        return path.substr(0, path.size() - end.size());
      }
    }
    return {};
  }

 private:
  std::map<std::string, std::string> values_;
};

void readXfceWallpaper(DesktopFacts& facts, const Channel& desktop, const FileTree& files) {
  // Settings of monitors that were there once are kept; those of one that is there count.
  const std::string workspace = "/workspace0";
  const std::string image = workspace + "/last-image";
  std::string folder = desktop.folderOf(image) + workspace;
  for (const MonitorFacts& monitor : connectedMonitors(files)) {
    const std::string own = "/backdrop/screen0/monitor" + monitor.connector;
    if (desktop.value(own + image)) {
      folder = own + workspace;
      break;
    }
  }
  const auto style = number(desktop.value(folder + "/image-style"));
  if (style == 0U) {
    return;  // no picture
  }
  const auto is = [&](std::uint64_t wanted) {
    return style ? std::optional(*style == wanted) : std::nullopt;
  };
  setWallpaper(facts, desktop.value(folder + "/last-image").value_or(""), is(3), is(2));
}

DesktopFacts factsOfXfce(const SettingFolders& folders, const FileTree& files) {
  DesktopFacts facts;
  const Channel desktop(folders, "xfce4-desktop");
  const Channel looks(folders, "xsettings");
  const Channel saver(folders, "xfce4-screensaver");
  if (flag(looks.value("/Net/CursorBlink")) != false) {
    facts.cursorBlink = halfOf(number(looks.value("/Net/CursorBlinkTime")));
  }
  facts.dragFullWindows = opposite(flag(Channel(folders, "xfwm4").value("/general/box_move")));
  if (flag(desktop.value("/desktop-icons/use-custom-font-size")) == true) {
    facts.iconTitle = number(desktop.value("/desktop-icons/font-size"));
  }
  facts.saverActive = flag(saver.value("/saver/enabled"));
  if (facts.saverActive && flag(saver.value("/saver/idle-activation/enabled")) == false) {
    facts.saverActive = false;
  }
  facts.saverTime = times(number(saver.value("/saver/idle-activation/delay")), 60);
  facts.saverSecure = flag(saver.value("/lock/enabled"));
  readXfceWallpaper(facts, desktop, files);
  return facts;
}

}  // namespace

DesktopFacts desktopFacts(const FileTree& files, const Machine& machine, const SettingOf& setting) {
  // Some name their own desktop and the one that it is made of, "ubuntu:GNOME".
  for (const std::string& name :
       piecesOf(lowerCase(machine.environment("XDG_CURRENT_DESKTOP")), ':')) {
    if (name == "kde") {
      return factsOfPlasma(SettingFolders(files, machine));
    }
    if (name == "xfce") {
      return factsOfXfce(SettingFolders(files, machine), files);
    }
    const SchemaNames* schemas = schemasOf(name);
    if (schemas != nullptr && setting) {
      return factsBySchemas(*schemas, setting);
    }
  }
  return {};
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/regional_settings.h"

#include <optional>
#include <string_view>

#include "machine/fact_text.h"
#include "machine/language_names.h"

namespace veltrin {
namespace {

// A keyboard layout and its variant; either may be empty.
struct Layout {
  std::string name;
  std::string variant;
};

bool isLetters(std::string_view text) {
  const std::string lower = lowerCase(text);
  return !lower.empty() &&
         lower.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == std::string::npos;
}

// The name of a country by its code, from the list that comes with the time zones;
// the code itself where that list is missing.
std::string countryName(const FileTree& files, const std::string& code) {
  const std::string text = files.text("/usr/share/zoneinfo/iso3166.tab");
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const std::size_t tab = line.find('\t');
    if (tab != std::string_view::npos && line.substr(0, tab) == code) {
      return printable(line.substr(tab + 1));
    }
  }
  return code;
}

// "en_US.UTF-8" as "en-us;English (United States)".
std::string describeLocale(const FileTree& files, const std::string& locale) {
  const std::string name = locale.substr(0, locale.find_first_of(".@"));
  const std::size_t line = name.find('_');
  const std::string language = lowerCase(name.substr(0, line));
  const std::string country =
      line == std::string::npos ? std::string() : upperCase(name.substr(line + 1));
  const std::string known(languageName(language));
  if (known.empty() || (!country.empty() && !isLetters(country))) {
    return printable(locale);
  }
  if (country.empty()) {
    return language + ";" + known;
  }
  return language + "-" + lowerCase(country) + ";" + known + " (" + countryName(files, country) +
         ")";
}

// The first of some variables that is set (locale(7)).
std::string localeOfEnvironment(const Machine& machine) {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    if (std::string value = machine.environment(name); !value.empty()) {
      return value;
    }
  }
  return "";
}

// The first of the items between commas.
std::string firstOf(const std::string& list) {
  return std::string(trimmed(std::string_view(list).substr(0, list.find(','))));
}

// The value of `Option "NAME" "VALUE"` in a file of the X server (xorg.conf(5)).
std::string serverOption(std::string_view text, std::string_view name) {
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    line = trimmed(line);
    if (!lowerCase(line).starts_with("option")) {
      continue;
    }
    // The pieces between quotes are the second and the fourth.
    std::string pieces[4];
    std::size_t piece = 0;
    for (const char character : line) {
      if (character == '"') {
        ++piece;
      } else if (piece < 4) {
        pieces[piece] += character;
      }
    }
    if (piece >= 4 && lowerCase(pieces[1]) == lowerCase(name)) {
      return pieces[3];
    }
  }
  return "";
}

// Where Debian, systemd-localed and the console keep the layout, in this order.
Layout layoutOf(const FileTree& files) {
  for (const char* path : {"/etc/default/keyboard", "/etc/vconsole.conf"}) {
    const std::string text = files.text(path);
    Layout layout{firstOf(shellValue(text, "XKBLAYOUT")), firstOf(shellValue(text, "XKBVARIANT"))};
    if (!layout.name.empty()) {
      return layout;
    }
  }
  const std::string server = files.text("/etc/X11/xorg.conf.d/00-keyboard.conf");
  Layout layout{firstOf(serverOption(server, "XkbLayout")),
                firstOf(serverOption(server, "XkbVariant"))};
  if (!layout.name.empty()) {
    return layout;
  }
  return {firstOf(shellValue(files.text("/etc/vconsole.conf"), "KEYMAP")), ""};
}

// The name of a layout, or of a variant of it, in the list of layouts: in the
// sections "! layout" and "! variant" stand lines "  us  English (US)" and
// "  nodeadkeys  de: German (no dead keys)".
std::string layoutName(std::string_view list, const Layout& layout) {
  const bool variant = !layout.variant.empty();
  const std::string wanted = variant ? layout.variant : layout.name;
  const std::string owner = layout.name + ": ";
  bool inside = false;
  LineReader lines(list);
  for (std::string_view line; lines.next(line);) {
    if (line.starts_with("!")) {
      inside = trimmed(line.substr(1)) == (variant ? "variant" : "layout");
      continue;
    }
    line = trimmed(line);
    const std::size_t blank = line.find(' ');
    if (!inside || blank == std::string_view::npos || line.substr(0, blank) != wanted) {
      continue;
    }
    const std::string_view name = trimmed(line.substr(blank));
    if (!variant) {
      return printable(name);
    }
    if (name.starts_with(owner)) {
      return printable(name.substr(owner.size()));
    }
  }
  return "";
}

}  // namespace

std::string systemLocale(const FileTree& files, const Machine& machine) {
  for (const char* path : {"/etc/locale.conf", "/etc/default/locale"}) {
    if (const std::string locale = shellValue(files.text(path), "LANG"); !locale.empty()) {
      return describeLocale(files, locale);
    }
  }
  return describeLocale(files, localeOfEnvironment(machine));
}

std::string inputLocale(const FileTree& files, const Machine& machine) {
  const Layout layout = layoutOf(files);
  if (layout.name.empty()) {
    return describeLocale(files, localeOfEnvironment(machine));
  }
  const std::string code =
      layout.variant.empty() ? layout.name : layout.name + "(" + layout.variant + ")";
  const std::string name = layoutName(files.text("/usr/share/X11/xkb/rules/base.lst"), layout);
  return printable(name.empty() ? code : code + ";" + name);
}

}  // namespace veltrin

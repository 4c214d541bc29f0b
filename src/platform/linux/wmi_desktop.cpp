// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop of the user who runs the program.
#include "machine/desktop.h"
#include "machine/fact_text.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// "HOST\user", by the variables that every login sets; null where none did.
WmiValue nameOf(const Machine& machine) {
  std::string user = printable(machine.environment("USER"));
  if (user.empty()) {
    user = printable(machine.environment("LOGNAME"));
  }
  return user.empty() ? WmiValue() : WmiValue(accountDomain(machine) + "\\" + user);
}

// What no desktop of Linux has, or none tells in the form that is meant here: the widths of
// borders are the theme's, and icons keep distances of their own.
constexpr const char* kNobodyTells[] = {"Description",     "BorderWidth",          "CoolSwitch",
                                        "GridGranularity", "IconSpacing",          "IconTitleWrap",
                                        "Pattern",         "ScreenSaverExecutable"};

}  // namespace

// The settings of the desktop (machine/desktop.cpp names the file or schema of each).
WmiAnswer win32Desktop(const WmiSources& sources) {
  const DesktopFacts facts = desktopFacts(sources.files, *sources.machine, sources.setting);
  WmiObject object;
  for (const char* name : kNobodyTells) {
    object.properties[name] = WmiValue();
  }
  object.properties["Name"] = nameOf(*sources.machine);
  object.properties["CursorBlinkRate"] = orNull(facts.cursorBlink);
  object.properties["DragFullWindows"] = orNull(facts.dragFullWindows);
  object.properties["IconTitleSize"] = orNull(facts.iconTitle);
  object.properties["ScreenSaverActive"] = orNull(facts.saverActive);
  object.properties["ScreenSaverSecure"] = orNull(facts.saverSecure);
  object.properties["ScreenSaverTimeout"] = orNull(facts.saverTime);
  object.properties["Wallpaper"] = orNull(printable(facts.wallpaper));
  object.properties["WallpaperStretched"] = orNull(facts.stretched);
  object.properties["WallpaperTiled"] = orNull(facts.tiled);
  return {object};
}

}  // namespace veltrin

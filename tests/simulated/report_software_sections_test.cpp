// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the report's sections about the computer as a whole and what is on it.
#include "simulated/report_section_case.h"

namespace veltrin {
namespace {

// Codes that are null leave the word of the code before them.
SectionCase computer() {
  return {
      "Computer",
      ReportBox::System,
      Place::BetweenGaps,
      "Select * from Win32_ComputerSystem",
      {headingLine("System", 35)},
      {},
      {{"Caption", "KITCHEN"},
       {"Description", "Example PC"},
       {"AdminPasswordStatus", 1},
       {"AutomaticResetBootOption", true},
       {"AutomaticResetCapability", false},
       {"BootROMSupported", true},
       {"BootupState", "Normal boot"},
       {"ChassisBootupState", 3},
       {"CurrentTimeZone", 60},
       {"Domain", "WORKGROUP"},
       {"FrontPanelResetStatus", 2},
       {"InfraredSupported", false},
       {"KeyboardPasswordStatus", 3},
       {"Manufacturer", "Example Boards"},
       {"Model", "Board 7"},
       {"Name", "KITCHEN-1"},
       {"NetworkServerModeEnabled", true},
       {"PartOfDomain", false},
       {"PauseAfterReset", "-1"},
       {"PowerOnPasswordStatus", 0},
       {"PowerState", 1},
       {"PowerSupplyState", 3},
       {"ResetCapability", 4},
       {"SystemStartupSetting", 0},
       {"SystemType", "x64-based PC"},
       {"ThermalState", 4},
       {"WakeUpType", 6},
       {"SystemStartupOptions", std::vector<Loose>{"Example Desktop 7", "Recovery"}}},
      {{boldLine("KITCHEN"), {{"Caption", ""}}},
       {plainLine("    Description: Example PC"), {{"Description", "    Description: "}}},
       {plainLine("    AdminPassword: Enabled"), {{"AdminPasswordStatus", "    AdminPassword: "}}},
       {plainLine("    AutomaticResetBootOption: True"),
        {{"AutomaticResetBootOption", "    AutomaticResetBootOption: "}}},
       {plainLine("    AutomaticResetCapability: False"),
        {{"AutomaticResetCapability", "    AutomaticResetCapability: "}}},
       {plainLine("    BootROMSupported: True"), {{"BootROMSupported", "    BootROMSupported: "}}},
       {plainLine("    BootupState: Normal boot"), {{"BootupState", "    BootupState: "}}},
       {plainLine("    AdminPassword: Enabled"), {}},
       {plainLine("    ChassisBootupState: Safe"),
        {{"ChassisBootupState", "    ChassisBootupState: Enabled"}}},
       {plainLine("    CurrentTimeZone: 60"), {{"CurrentTimeZone", "    CurrentTimeZone: "}}},
       {plainLine("    Domain: WORKGROUP"), {{"Domain", "    Domain: "}}},
       {plainLine("    FrontPanelResetStatus: Not Implemented"),
        {{"FrontPanelResetStatus", "    FrontPanelResetStatus: Safe"}}},
       {plainLine("    InfraredSupported: False"),
        {{"InfraredSupported", "    InfraredSupported: "}}},
       {plainLine("    KeyboardPasswordStatus: Unknown"),
        {{"KeyboardPasswordStatus", "    KeyboardPasswordStatus: Not Implemented"}}},
       {plainLine("    Manufacturer: Example Boards"), {{"Manufacturer", "    Manufacturer: "}}},
       {plainLine("    Model: Board 7"), {{"Model", "    Model: "}}},
       {plainLine("    Name: KITCHEN-1"), {{"Name", "    Name: "}}},
       {plainLine("    NetworkServerModeEnabled: True"),
        {{"NetworkServerModeEnabled", "    NetworkServerModeEnabled: "}}},
       {plainLine("    PartOfDomain: False"), {{"PartOfDomain", "    PartOfDomain: "}}},
       {plainLine("    PauseAfterReset: -1"), {{"PauseAfterReset", "    PauseAfterReset: "}}},
       {plainLine("    PowerOnPasswordStatus: Disabled"),
        {{"PowerOnPasswordStatus", "    PowerOnPasswordStatus: Unknown"}}},
       {plainLine("    PowerState: Full Power"), {{"PowerState", "    PowerState: Disabled"}}},
       {plainLine("    PowerSupplyState: Save"),
        {{"PowerSupplyState", "    PowerSupplyState: Full Power"}}},
       {plainLine("    ResetCapability: Enabled"),
        {{"ResetCapability", "    ResetCapability: Save"}}},
       {plainLine("    ystemStartupSetting: 0"),
        {{"SystemStartupSetting", "    ystemStartupSetting: "}}},
       {plainLine("    SystemType: x64-based PC"), {{"SystemType", "    SystemType: "}}},
       {plainLine("    ThermalState: Warning"), {{"ThermalState", "    ThermalState: Enabled"}}},
       {plainLine("    WakeUpType: Power Switch"), {{"WakeUpType", "    WakeUpType: Warning"}}},
       {plainLine("    Startup Options: Example Desktop 7"), {}},
       {plainLine("    Startup Options: Recovery"), {}}}};
}

SectionCase desktops() {
  return {
      "Desktops",
      ReportBox::Desktop,
      Place::BehindGaps,
      "Select * from Win32_Desktop",
      {kGap, headingLine("DeskTOP", 10)},
      {},
      {{"Description", "Desk of owner"},
       {"Name", "KITCHEN\\owner"},
       {"BorderWidth", 1},
       {"CoolSwitch", true},
       {"CursorBlinkRate", 530},
       {"DragFullWindows", false},
       {"GridGranularity", 2},
       {"IconSpacing", 75},
       {"IconTitleSize", 9},
       {"IconTitleWrap", true},
       {"Pattern", "(None)"},
       {"ScreenSaverActive", true},
       {"ScreenSaverExecutable", "C:\\saver.scr"},
       {"ScreenSaverSecure", false},
       {"Wallpaper", "C:\\hills.bmp"},
       {"WallpaperStretched", true},
       {"WallpaperTiled", false}},
      {{plainLine("Desk of owner"), {{"Description", ""}}},
       {plainLine("Name: KITCHEN\\owner "), {{"Name", "Name:  "}}},
       {plainLine("    BorderWidth: 1"), {{"BorderWidth", "    BorderWidth: "}}},
       {plainLine("    CoolSwitch: True"), {{"CoolSwitch", "    CoolSwitch: "}}},
       {plainLine("    CursorBlinkRate: 530"), {{"CursorBlinkRate", "    CursorBlinkRate: "}}},
       {plainLine("    DragFullWindows: False"), {{"DragFullWindows", "    DragFullWindows: "}}},
       {plainLine("    GridGranularity: 2"), {{"GridGranularity", "    GridGranularity: "}}},
       {plainLine("    IconSpacing: 75"), {{"IconSpacing", "    IconSpacing: "}}},
       {plainLine("    IconTitleSize: 9"), {{"IconTitleSize", "    IconTitleSize: "}}},
       {plainLine("    IconTitleWrap: True"), {{"IconTitleWrap", "    IconTitleWrap: "}}},
       {plainLine("    Pattern: (None)"), {{"Pattern", "    Pattern: "}}},
       {plainLine("    ScreenSaverActive: True"),
        {{"ScreenSaverActive", "    ScreenSaverActive: "}}},
       {plainLine("    ScreenSaverExecutable: C:\\saver.scr"),
        {{"ScreenSaverExecutable", "    ScreenSaverExecutable: "}}},
       {plainLine("    ScreenSaverSecure: False"),
        {{"ScreenSaverSecure", "    ScreenSaverSecure: "}}},
       {plainLine("    Wallpaper: C:\\hills.bmp"), {{"Wallpaper", "    Wallpaper: "}}},
       {plainLine("    WallpaperStretched: True"),
        {{"WallpaperStretched", "    WallpaperStretched: "}}},
       {plainLine("    WallpaperTiled: False"), {{"WallpaperTiled", "    WallpaperTiled: "}}}}};
}

// The name too is the caption.
SectionCase startup() {
  return {
      "Startup",
      ReportBox::Startup,
      Place::BehindGaps,
      "Select * from Win32_StartupCommand",
      {kGap, headingLine("Start UP", 36)},
      {kGap, headingLine("Running Processes", 13), kGap, kGap,
       headingLine("User Processes anf Threads", 13)},
      {{"Caption", "Updater"},
       {"Name", "other"},
       {"Description", "Looks for updates"},
       {"Location", "Startup"}},
      {{plainLine("Name: Updater"), {{"Caption", "Name: "}}},
       {plainLine("    Caption: Updater"), {{"Caption", "    Caption: "}}},
       {plainLine("    Description: Looks for updates"), {{"Description", "    Description: "}}},
       {plainLine("    Location: Startup"), {{"Location", "    Location: "}}}}};
}

SectionCase drivers() {
  return {"Drivers",
          ReportBox::Drivers,
          Place::BehindGaps,
          "Select * from Win32_SystemDriver",
          {kGap, headingLine("System Drivers", 36)},
          {},
          {{"Name", "disk"},
           {"Caption", "Disk driver"},
           {"PathName", "C:\\disk.sys"},
           {"StartMode", "Boot"}},
          {{plainLine("disk"), {{"Name", ""}}},
           {plainLine("    Name: Disk driver"), {{"Caption", "    Name: "}}},
           {plainLine("    PathName: C:\\disk.sys"), {{"PathName", "    PathName: "}}},
           {plainLine("    StartMode: Boot"), {{"StartMode", "    StartMode: "}}}}};
}

SectionCase software() {
  return {"Software",
          ReportBox::Software,
          Place::BehindGaps,
          "Select * from Win32_Product",
          {kGap, headingLine("Installed Software", 36)},
          {},
          {{"Name", "Example Writer"}, {"Version", "4.2.1"}},
          {{boldLine("Example Writer"), {{"Name", ""}}},
           {plainLine("    Version: 4.2.1"), {{"Version", "    Version: "}}}}};
}

SectionCase users() {
  return {"Users",
          ReportBox::Users,
          Place::BehindGaps,
          "Select * from Win32_Account",
          {kGap, headingLine("Users", 2)},
          {},
          {{"Caption", "KITCHEN\\owner"},
           {"Description", "Who owns it"},
           {"Domain", "KITCHEN"},
           {"LocalAccount", true},
           {"Name", "owner"},
           {"SID", "S-1-5-21-1"},
           {"SIDType", 1}},
          {{boldLine("KITCHEN\\owner"), {{"Caption", ""}}},
           {plainLine("    Description: Who owns it"), {{"Description", "    Description: "}}},
           {plainLine("    Domain: KITCHEN"), {{"Domain", "    Domain: "}}},
           {plainLine("    Account: True"), {{"LocalAccount", "    Account: "}}},
           {plainLine("    Name: owner"), {{"Name", "    Name: "}}},
           {plainLine("    SID: S-1-5-21-1"), {{"SID", "    SID: "}}},
           {plainLine("    SID Type: 1"), {{"SIDType", "    SID Type: "}}}}};
}

SectionCase errors() {
  return {"Errors",
          ReportBox::Errors,
          Place::BehindGaps,
          "Select * from Win32_NTLogEvent",
          {kGap, headingLine("Windows Errors", 2)},
          {},
          {{"Category", 0}, {"EventCode", 7036}, {"Message", "The service stopped."}},
          {{boldLine("Category: 0"), {{"Category", "Category: "}}},
           {plainLine("    EventCode: 7036"), {{"EventCode", "    EventCode: "}}},
           {plainLine("    Message: The service stopped."), {{"Message", "    Message: "}}}}};
}

}  // namespace

std::vector<SectionCase> softwareSections() {
  return {computer(), desktops(), startup(), drivers(), software(), users(), errors()};
}

}  // namespace veltrin

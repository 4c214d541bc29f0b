// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the report's sections about the machine.
#include "simulated/report_section_case.h"

namespace veltrin {
namespace {

SectionCase processors() {
  return {
      "Processors",
      ReportBox::Processors,
      Place::BeforeGaps,
      "Select * from Win32_Processor",
      {kGap, headingLine("Processors", 1), boldLine("Number of CPUs:      Cores: 4")},
      {headingLine("Cache", 9)},
      {{"Name", "Example64 Q9"},
       {"MaxClockSpeed", 2667},
       {"CurrentClockSpeed", 1600},
       {"Manufacturer", "GenuineExample"},
       {"Revision", 9477},
       {"SocketDesignation", "LGA 1156"},
       {"Description", "Example64 Family 6"},
       {"DeviceID", "CPU0"},
       {"DataWidth", 64},
       {"L2CacheSize", 1024},
       {"ProcessorType", 3}},
      {{boldLine("Name: Example64 Q9"), {{"Name", "Name: "}}},
       {boldLine("Speed: 2,667 MHz"), {{"MaxClockSpeed", "Speed:  MHz"}}},
       {plainLine("    CurrentClockSpeed: 1,600 MHz"),
        {{"CurrentClockSpeed", "    CurrentClockSpeed:  MHz"}}},
       {plainLine("    Manufacturer: GenuineExample"), {{"Manufacturer", "    Manufacturer: "}}},
       {plainLine("    Revision: 9477"), {{"Revision", "    Revision: "}}},
       {plainLine("    Socket: LGA 1156"), {{"SocketDesignation", "    Socket: "}}},
       {plainLine("    Description: Example64 Family 6"), {{"Description", "    Description: "}}},
       {plainLine("    DeviceID: CPU0"), {{"DeviceID", "    DeviceID: "}}},
       {plainLine("    DataWidth: 64"), {{"DataWidth", "    DataWidth: "}}},
       {plainLine("    L2CacheSize: 1024"), {{"L2CacheSize", "    L2CacheSize: "}}},
       {plainLine("    ProcessorType: 3"), {{"ProcessorType", "    ProcessorType: "}}}}};
}

SectionCase cache() {
  return {"Cache",
          ReportBox::Processors,
          Place::BeforeGaps,
          "Select * from Win32_CacheMemory",
          {kGap, headingLine("Processors", 1), boldLine("Number of CPUs:      Cores: 4"),
           headingLine("Cache", 9)},
          {},
          {{"MaxCacheSize", 64}, {"Location", 0}, {"Level", 3}, {"Status", "OK"}},
          {{plainLine("L1: 64 KB"), {{"MaxCacheSize", "L1:  KB"}}},
           {plainLine("    Location: 0 (internal)"), {{"Location", "    Location: "}}},
           {plainLine("    Level: 3 (primary)"), {{"Level", "    Level: "}}},
           {plainLine("    Status: OK"), {{"Status", "    Status: "}}}}};
}

const ReportText kUnknownBoard{kGap,
                               headingLine("MotherBoard", 20),
                               plainLine(" "),
                               plainLine("    "),
                               boldLine("   Bios Version: "),
                               boldLine("   Slots:")};

// A code that is null leaves the working text to the line.
SectionCase slots() {
  return {"Slots",
          ReportBox::Board,
          Place::BeforeGaps,
          "Select * from Win32_SystemSlot",
          kUnknownBoard,
          {boldLine("HD Controller:"), boldLine("Floppy Controller:")},
          {{"SlotDesignation", "PCIE 1"},
           {"MaxDataWidth", 3},
           {"VccMixedVoltageSupport", std::vector<Loose>{2, 3}},
           {"ConnectorType", std::vector<Loose>{43, 44}}},
          {{plainLine("    PCIE 1"), {{"SlotDesignation", "    "}}},
           {plainLine("            Max Data Width: 64"),
            {{"MaxDataWidth", "            Max Data Width: "}}},
           {plainLine("            Voltage Supported: 3.3v  5v  "),
            {{"VccMixedVoltageSupport", "            Voltage Supported: "}}},
           {plainLine("            Connector Type: ISA"),
            {{"ConnectorType", "            Connector Type: "}}}}};
}

SectionCase hardDriveControllers() {
  return {"HardDriveControllers",
          ReportBox::Board,
          Place::BeforeGaps,
          "Select * from Win32_IDEController",
          joinedLines({kUnknownBoard, {boldLine("HD Controller:")}}),
          {boldLine("Floppy Controller:")},
          {{"Caption", "Example AHCI"},
           {"Availability", 3},
           {"ConfigManagerErrorCode", 0},
           {"Name", "Example AHCI Controller"},
           {"PNPDeviceID", "PCI\\VEN_1"},
           {"PowerManagementCapabilities", WmiValue()},
           {"ProtocolSupported", 37},
           {"Status", "OK"}},
          {{plainLine("    Example AHCI"), {{"Caption", "    "}}},
           {plainLine("       Availability: 3 (on/full pwr)"),
            {{"Availability", "       Availability: "}}},
           {plainLine("       ConfigManagerErrorCode: Device is working properly."),
            {{"ConfigManagerErrorCode", "       ConfigManagerErrorCode: 3 (on/full pwr)"}}},
           {plainLine("       Name: Example AHCI Controller"), {{"Name", "       Name: "}}},
           {plainLine("       PNPDeviceID: PCI\\VEN_1"), {{"PNPDeviceID", "       PNPDeviceID: "}}},
           {plainLine("       ProtocolSupported: IDE"),
            {{"PowerManagementCapabilities", "       ProtocolSupported: IDE"},
             {"ProtocolSupported", "       ProtocolSupported: Device is working properly."}}},
           {plainLine("       Status: OK"), {{"Status", "       Status: "}}}}};
}

SectionCase floppyControllers() {
  return {
      "FloppyControllers",
      ReportBox::Board,
      Place::BeforeGaps,
      "Select * from Win32_FloppyController",
      joinedLines({kUnknownBoard, {boldLine("HD Controller:"), boldLine("Floppy Controller:")}}),
      {},
      {{"Caption", "Standard floppy"}, {"Availability", 9}, {"ConfigManagerErrorCode", 22}},
      {{boldLine("   Standard floppy"), {{"Caption", "   "}}},
       {boldLine("       Availability: 9 (off duty)"), {{"Availability", "       Availability: "}}},
       {boldLine("       ConfigManagerErrorCode: Device is disabled."),
        {{"ConfigManagerErrorCode", "       ConfigManagerErrorCode: 9 (off duty)"}}}}};
}

SectionCase videoCards() {
  return {"VideoCards",
          ReportBox::Video,
          Place::BeforeGaps,
          "Select * from Win32_videocontroller",
          {kGap, headingLine("Video Card", 4)},
          {headingLine("Monitor", 23)},
          {{"Caption", "Example Graphics"},
           {"VideoProcessor", "EG 7"},
           {"CurrentBitsPerPixel", 32},
           {"CurrentHorizontalResolution", 1920},
           {"CurrentVerticalResolution", 1080},
           {"CurrentRefreshRate", 60},
           {"MinRefreshRate", 24},
           {"MaxRefreshRate", 75}},
          {{boldLine("Example Graphics "), {{"Caption", " "}}},
           {plainLine("    EG 7"), {{"VideoProcessor", "    "}}},
           {plainLine("    Bits Per Pixel: 32"), {{"CurrentBitsPerPixel", "    Bits Per Pixel: "}}},
           {plainLine("    Resolution: 1920 x 1080"),
            {{"CurrentHorizontalResolution", "    Resolution:  x 1080"},
             {"CurrentVerticalResolution", "    Resolution: 1920 x "}}},
           {plainLine("    Refresh: 60"), {{"CurrentRefreshRate", "    Refresh: "}}},
           {plainLine("    Min Refresh: 24"), {{"MinRefreshRate", "    Min Refresh: "}}},
           {plainLine("    Max Refresh: 75"), {{"MaxRefreshRate", "    Max Refresh: "}}}}};
}

SectionCase monitors() {
  return {"Monitors",
          ReportBox::Video,
          Place::BeforeGaps,
          "Select * from Win32_DesktopMonitor",
          {kGap, headingLine("Video Card", 4), headingLine("Monitor", 23)},
          {},
          {{"Description", "Plug and Play Monitor"}, {"Caption", "Example 24"}},
          {{boldLine("Plug and Play Monitor"), {{"Description", ""}}},
           {plainLine("    Example 24"), {{"Caption", "    "}}}}};
}

// The headings of the peripherals, in their order, without anything below them.
const ReportText kPeripherals{headingLine("Sound", 33),           headingLine("Keyboard", 19),
                              headingLine("Mouse - Pointer", 24), headingLine("Printer", 29),
                              headingLine("Net Card", 6),         headingLine("USB", 34),
                              headingLine("PnP Signed", 0)};

// One section of them, the n-th from 1.
SectionCase peripheral(const std::string& name, int number, const std::string& query,
                       const decltype(WmiObject::properties)& properties,
                       const std::vector<PropertyLine>& lines) {
  ReportText above{kGap};
  above.insert(above.end(), kPeripherals.begin(), kPeripherals.begin() + number);
  return {name,
          ReportBox::Peripherals,
          Place::BeforeGaps,
          query,
          above,
          ReportText(kPeripherals.begin() + number, kPeripherals.end()),
          properties,
          lines};
}

}  // namespace

std::vector<SectionCase> hardwareSections() {
  return {processors(),
          cache(),
          slots(),
          hardDriveControllers(),
          floppyControllers(),
          videoCards(),
          monitors(),
          peripheral("Sound", 1, "Select * from Win32_SoundDevice",
                     {{"Caption", "Example Audio"}, {"Name", "Audio 5"}},
                     {{plainLine("Example Audio"), {{"Caption", ""}}},
                      {plainLine("    Audio 5"), {{"Name", "    "}}}}),
          peripheral("Keyboards", 2, "Select * from Win32_Keyboard",
                     {{"Name", "Enhanced"}, {"Manufacturer", "Example Keys"}},
                     {{boldLine("Enhanced"), {{"Name", ""}}},
                      {plainLine("    Manufacture: Example Keys"),
                       {{"Manufacturer", "    Manufacture: "}}}}),
          peripheral("Mice", 3, "Select * from Win32_PointingDevice",
                     {{"Description", "Wheel mouse"},
                      {"Manufacturer", "Example Mice"},
                      {"NumberOfButtons", 5},
                      {"DeviceInterface", 162}},
                     {{boldLine("Wheel mouse"), {{"Description", ""}}},
                      {plainLine("    Man: Example Mice"), {{"Manufacturer", "    Man: "}}},
                      {plainLine("    Buttons: 5"), {{"NumberOfButtons", "    Buttons: "}}},
                      {plainLine("    Interface: USB"), {{"DeviceInterface", "    Interface: "}}}}),
          peripheral("Printers", 4, "Select * from Win32_Printer",
                     {{"Description", "Laser"}, {"Name", "Office"}},
                     {{boldLine("Laser"), {{"Description", ""}}},
                      {plainLine("    Name: Office"), {{"Name", "    Name: "}}}}),
          peripheral("UsbHubs", 6, "Select * from Win32_USBHub",
                     {{"Description", "Root hub"}, {"DeviceID", "USB\\ROOT"}},
                     {{boldLine("Root hub"), {{"Description", ""}}},
                      {plainLine("    USB\\ROOT"), {{"DeviceID", "    "}}}})};
}

}  // namespace veltrin

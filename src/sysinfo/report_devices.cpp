// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report about the devices that people see and touch.
#include <algorithm>

#include "sysinfo/report_sections.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// Names a card and its processor when there is a slot for it. With the fourth card of all
// reports they are full; a card whose processor is empty leaves its slot to the next.
void printVideoCard(const ObjectLines& card, std::array<std::string, 4>& processors) {
  const auto slot = std::find(processors.begin(), processors.end(), std::string());
  if (slot == processors.end()) return;
  card.bold([&] { return card.text("Caption") + " "; });
  skip([&] { *slot = card.text("videoprocessor"); });
  card.plain("    ", "videoprocessor");
}

}  // namespace

void printVideoCards(Report& report, ResultSet& results) {
  report.lines.heading("Video Card", Picture::VideoCard);
  report.each(results, "Select * from Win32_videocontroller", [&](const ObjectLines& card) {
    printVideoCard(card, report.values.VideoProcessors);
    card.plain("    Bits Per Pixel: ", "CurrentBitsPerPixel");
    card.plain([&] {
      return "    Resolution: " + card.text("CurrentHorizontalResolution") + " x " +
             card.text("CurrentVerticalResolution");
    });
    card.plain("    Refresh: ", "CurrentRefreshRate");
    card.plain("    Min Refresh: ", "MinRefreshRate");
    card.plain("    Max Refresh: ", "MaxRefreshRate");
  });
}

void printMonitors(Report& report, ResultSet& results) {
  report.lines.heading("Monitor", Picture::Monitor);
  report.each(results, "Select * from Win32_DesktopMonitor", [](const ObjectLines& monitor) {
    monitor.bold("", "Description");
    monitor.plain("    ", "Caption");
  });
}

void printSound(Report& report, ResultSet& results) {
  report.lines.heading("Sound", Picture::Sound);
  report.each(results, "Select * from Win32_SoundDevice", [](const ObjectLines& device) {
    device.plain("", "Caption");
    device.plain("    ", "Name");
  });
}

void printKeyboards(Report& report, ResultSet& results) {
  report.lines.heading("Keyboard", Picture::Keyboard);
  report.each(results, "Select * from Win32_Keyboard", [](const ObjectLines& keyboard) {
    keyboard.bold("", "Name");
    keyboard.plain("    Manufacture: ", "Manufacturer");
  });
}

void printMice(Report& report, ResultSet& results) {
  report.lines.heading("Mouse - Pointer", Picture::Mouse);
  report.each(results, "Select * from Win32_PointingDevice", [](const ObjectLines& mouse) {
    mouse.bold("", "Description");
    mouse.plain("    Man: ", "Manufacturer");
    mouse.plain("    Buttons: ", "NumberOfButtons");
    mouse.word("    Interface: ", "DeviceInterface", &StatusText::DeviceInterface);
  });
}

void printPrinters(Report& report, ResultSet& results) {
  report.lines.heading("Printer", Picture::Printer);
  report.each(results, "Select * from Win32_Printer", [](const ObjectLines& printer) {
    printer.bold("", "Description");
    printer.plain("    Name: ", "Name");
  });
}

void printNetCards(const Report& report) {
  report.lines.heading("Net Card", Picture::Card);
  int number = 0;
  for (const SystemSummary::NetCard& card : report.summary().NetCards) {
    if (!(report.netCards > number++)) return;
    report.lines.bold(" " + card.Name);
    report.lines.bold("    Connection: " + card.Connection);
    report.lines.bold("    IP: " + card.Ip);
    report.lines.bold("    DHCP: " + card.Dhcp);
  }
}

void printUsb(Report& report, ResultSet& results) {
  report.lines.heading("USB", Picture::Usb);
  report.each(results, "Select * from Win32_USBHub", [](const ObjectLines& hub) {
    hub.bold("", "Description");
    hub.plain("    ", "DeviceID");
  });
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The section of the report about the devices that have a signed driver.
#include <algorithm>
#include <array>

#include "sysinfo/report_sections.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// What every machine has, by its description to the letter.
constexpr std::array<std::string_view, 18> kOrdinary{
    "Generic volume",
    "CD-ROM Drive",
    "System board",
    " ",
    "",
    "Microsoft System Management BIOS Driver",
    "File as Volume Driver",
    "Motherboard resources",
    "Standard PS/2 Keyboard",
    "Floppy disk drive",
    "Disk drive",
    "Disk driv",
    "System timer",
    "IDE Channel",
    "HID Keyboard Device",
    "HID-compliant mouse",
    "HID-compliant consumer control device",
    "USB Input Device",
};

// A device whose description cannot be read is not known to be ordinary.
bool isOrdinary(const ObjectLines& device) {
  std::string description;
  if (!skip([&] { description = device.text("Description"); })) return false;
  return std::find(kOrdinary.begin(), kOrdinary.end(), description) != kOrdinary.end();
}

// The first device of each class of note, by its description, so that the class has one
// heading. Of images there are two: the second is taken for a camera.
struct NotedDevices {
  std::string scanner;
  std::string camera;
  std::string scsi;
  std::string printerPort;
  std::string serialPort;
};

// Prints the heading of a class unless it has its device.
bool noteDevice(const ReportLines& lines, const ObjectLines& device, std::string& noted,
                const char* heading, Picture picture) {
  if (!noted.empty()) return false;
  skip([&] { noted = device.text("Description"); });
  lines.plain(heading, picture);
  return true;
}

void noteImage(const ReportLines& lines, const ObjectLines& device, NotedDevices& noted) {
  if (noteDevice(lines, device, noted.scanner, "Scanner", Picture::Scanner)) return;
  noteDevice(lines, device, noted.camera, "Camera", Picture::Camera);
}

void noteClass(const ReportLines& lines, const ObjectLines& device, NotedDevices& noted) {
  std::string deviceClass;
  if (!skip([&] { deviceClass = device.text("DeviceClass"); })) return;
  const auto noteWithGap = [&](std::string& first, const char* heading, Picture picture) {
    if (noteDevice(lines, device, first, heading, picture)) lines.gapOfHeading();
  };
  if (deviceClass == "IMAGE") {
    noteImage(lines, device, noted);
  } else if (deviceClass == "SCSIADAPTER") {
    noteWithGap(noted.scsi, "SCSI Host", Picture::Card);
  } else if (deviceClass == "ECP Printer Port") {
    noteWithGap(noted.printerPort, "Printer Port", Picture::PrinterPort);
  } else if (deviceClass == "Communications Port") {
    noteWithGap(noted.serialPort, "Communications Port", Picture::CommunicationsPort);
  }
}

}  // namespace

void printSignedDrivers(Report& report, ResultSet& results) {
  report.lines.heading("PnP Signed");
  NotedDevices noted;
  report.each(results, "Select * from Win32_PnPSignedDriver", [&](const ObjectLines& device) {
    if (isOrdinary(device)) return;
    device.heading("Description");
    noteClass(report.lines, device, noted);
  });
}

}  // namespace veltrin

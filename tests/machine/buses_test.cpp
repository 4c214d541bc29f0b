// SPDX-License-Identifier: GPL-3.0-or-later
// The buses of the machine that the test runs on, as its own tools list them.
#include <algorithm>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include "machine/fact_text.h"
#include "machine/pci_devices.h"
#include "machine/usb_devices.h"

namespace veltrin {
namespace {

using ::testing::ElementsAreArray;

struct PipeCloser {
  void operator()(FILE* pipe) const { pclose(pipe); }
};

// The lines that a tool prints; none when it is not there.
std::vector<std::string> linesOf(const char* command) {
  const std::unique_ptr<FILE, PipeCloser> pipe(popen(command, "r"));
  std::string text;
  char piece[4096];
  while (pipe != nullptr && std::fgets(piece, sizeof piece, pipe.get()) != nullptr) text += piece;
  std::vector<std::string> found;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) found.emplace_back(line);
  return found;
}

// A word without the quotes around it.
std::string unquoted(std::string_view word) {
  return std::string(word.size() >= 2 && word.front() == '"' ? word.substr(1, word.size() - 2)
                                                             : word);
}

// "0000:00:17.0 0106 8086 a352 10" of
// 0000:00:17.0 "0106" "8086" "a352" -r10 -p01 "17aa" "0001"
std::string pciLine(const std::string& line) {
  const auto words = wordsOf(line);
  if (words.size() < 4) return line;
  std::string revision = "00";
  for (const std::string_view word : words) {
    if (word.starts_with("-r")) revision = word.substr(2);
  }
  return std::string(words[0]) + " " + unquoted(words[1]) + " " + unquoted(words[2]) + " " +
         unquoted(words[3]) + " " + revision;
}

std::string pciLine(const PciDevice& device) {
  char text[64];
  std::snprintf(text, sizeof text, " %04x %04x %04x %s", device.code >> 8, device.vendor,
                device.device, lowerCase(device.revision).c_str());
  return device.address + text;
}

TEST(BusesOfThisMachine, HaveThePciDevicesThatLspciLists) {
  std::vector<std::string> wanted;
  for (const std::string& line : linesOf("lspci -Dmmn 2>/dev/null"))
    wanted.push_back(pciLine(line));
  if (wanted.empty()) GTEST_SKIP() << "lspci lists no device here.";
  std::vector<std::string> found;
  for (const PciDevice& device : pciDevices(FileTree())) found.push_back(pciLine(device));
  std::sort(wanted.begin(), wanted.end());
  EXPECT_THAT(found, ElementsAreArray(wanted));
}

// "046d:c31c".
std::string usbId(const UsbDevice& device) {
  char text[16];
  std::snprintf(text, sizeof text, "%04x:%04x", device.vendor, device.product);
  return text;
}

// The same of a line "Bus 001 Device 002: ID 046d:c31c Example Keyboard".
std::string usbId(const std::string& line) {
  return line.substr(std::string("Bus 001 Device 002: ID ").size(),
                     std::string("046d:c31c").size());
}

TEST(BusesOfThisMachine, HaveTheUsbDevicesThatLsusbLists) {
  std::vector<std::string> wanted;
  for (const std::string& line : linesOf("lsusb 2>/dev/null")) {
    wanted.push_back(usbId(line));
  }
  if (wanted.empty()) GTEST_SKIP() << "lsusb lists no device here.";
  std::vector<std::string> found;
  for (const UsbDevice& device : usbDevices(FileTree())) found.push_back(usbId(device));
  std::sort(wanted.begin(), wanted.end());
  std::sort(found.begin(), found.end());
  EXPECT_THAT(found, ElementsAreArray(wanted));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The classes of WMI that a Linux machine answers, by the families that their facts come from.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "machine/fact_text.h"
#include "platform/linux/linux_wmi.h"
#include "platform/wmi.h"

namespace veltrin {

using WmiAnswer = std::vector<WmiObject>;

// A text of the machine, null when it is empty; and a number, null when it is nothing.
inline WmiValue orNull(const std::string& text) {
  return text.empty() ? WmiValue() : WmiValue(text);
}
template <class Number>
WmiValue orNull(const std::optional<Number>& number) {
  return number ? WmiValue(*number) : WmiValue();
}

// An answer whose facts are collected before its first object, and become objects one by one:
// of thousands of facts, their objects would take many times the room.
template <class Fact>
class FactObjects : public WmiObjects {
 public:
  using Turn = std::function<WmiObject(const Fact&)>;

  FactObjects(std::vector<Fact> facts, Turn turn)
      : facts_(std::move(facts)), turn_(std::move(turn)) {}

  std::optional<WmiObject> next() override {
    if (taken_ == facts_.size()) {
      return std::nullopt;
    }
    return turn_(facts_[taken_++]);
  }

 private:
  std::vector<Fact> facts_;
  Turn turn_;
  std::size_t taken_ = 0;
};

// Whose an account is: the machine by its name without its domain, in capitals, as Windows
// writes it.
inline std::string accountDomain(const Machine& machine) {
  const std::string host = machine.kernel().host;
  return upperCase(printable(host.substr(0, host.find('.'))));
}

// wmi_processor.cpp
WmiAnswer win32Processor(const WmiSources& sources);
WmiAnswer win32CacheMemory(const WmiSources& sources);

// wmi_memory.cpp
WmiAnswer win32PhysicalMemory(const WmiSources& sources);

// wmi_board.cpp
WmiAnswer win32BaseBoard(const WmiSources& sources);
WmiAnswer win32SystemSlot(const WmiSources& sources);

// wmi_computer.cpp
WmiAnswer win32ComputerSystem(const WmiSources& sources);

// wmi_controllers.cpp
WmiAnswer win32IdeController(const WmiSources& sources);
WmiAnswer win32FloppyController(const WmiSources& sources);

// wmi_screens.cpp
WmiAnswer win32VideoController(const WmiSources& sources);
WmiAnswer win32DesktopMonitor(const WmiSources& sources);

// wmi_input.cpp
WmiAnswer win32Keyboard(const WmiSources& sources);
WmiAnswer win32PointingDevice(const WmiSources& sources);

// wmi_devices.cpp
WmiAnswer win32SoundDevice(const WmiSources& sources);
WmiAnswer win32UsbHub(const WmiSources& sources);

// wmi_pnp.cpp
WmiAnswer win32PnpSignedDriver(const WmiSources& sources);

// wmi_printers.cpp
WmiAnswer win32Printer(const WmiSources& sources);

// wmi_desktop.cpp
WmiAnswer win32Desktop(const WmiSources& sources);

// wmi_startup.cpp
WmiAnswer win32StartupCommand(const WmiSources& sources);

// wmi_modules.cpp
WmiAnswer win32SystemDriver(const WmiSources& sources);

// wmi_packages.cpp
std::unique_ptr<WmiObjects> win32Product(const WmiSources& sources);

// wmi_accounts.cpp
std::unique_ptr<WmiObjects> win32Account(const WmiSources& sources);

// wmi_drives.cpp
WmiAnswer win32LogicalDisk(const WmiSources& sources);
WmiAnswer win32DiskDrive(const WmiSources& sources);

// wmi_events.cpp. The newest first, read one by one.
std::unique_ptr<WmiObjects> win32NtLogEvent(const WmiSources& sources);

}  // namespace veltrin

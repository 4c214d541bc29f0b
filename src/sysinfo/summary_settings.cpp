// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/summary_settings.h"

#include <array>
#include <string>

namespace veltrin {
namespace {

const char* const kSection = "SysInfo";

struct Entry {
  const char* key;
  std::string SystemSummary::*field;
};

// In the order of the file.
constexpr std::array<Entry, 12> kEntries{{
    {"Win Version", &SystemSummary::WinVersion},
    {"OS Version", &SystemSummary::OsVersion},
    {"Total Ram", &SystemSummary::TotalRam},
    {"Available Ram", &SystemSummary::AvailableRam},
    {"CPU Num", &SystemSummary::CpuNum},
    {"CPU Cores", &SystemSummary::CpuCores},
    {"MB Model", &SystemSummary::MbModel},
    {"MB Man", &SystemSummary::MbMan},
    {"Location", &SystemSummary::Location},
    {"Bios", &SystemSummary::BiosVersion},
    {"Boot", &SystemSummary::BootDevice},
    {"Installed", &SystemSummary::Installed},
}};

}  // namespace

void storeSummary(Program& program) {
  program.writeSetting(kSection, "Info Check", Format(program.platform.clock.now(), "dd mmm yyyy"));
  for (const Entry& entry : kEntries) {
    program.writeSetting(kSection, entry.key, program.summary.*(entry.field));
  }
}

void storeNetCards(Program& program, double count) {
  int number = 0;
  for (const SystemSummary::NetCard& card : program.summary.NetCards) {
    if (!(count > number)) return;
    const std::string key = "Net Card " + std::to_string(++number);
    program.writeSetting(kSection, key, card.Name);
    program.writeSetting(kSection, key + " DHCP", card.Dhcp);
    program.writeSetting(kSection, key + " IP", card.Ip);
    program.writeSetting(kSection, key + " Connect", card.Connection);
  }
}

void storeMemorySlots(Program& program) {
  int number = 0;
  for (const std::string& slot : program.summary.MemSlot) {
    ++number;
    if (!slot.empty()) program.writeSetting(kSection, "Mem Slot " + std::to_string(number), slot);
  }
}

}  // namespace veltrin

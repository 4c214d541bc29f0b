// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/computer_states.h"

namespace veltrin {

ComputerStates statesIn(const SmbiosTable& table) {
  ComputerStates states;
  if (const auto system = table.first(SmbiosType::System)) {
    states.wakeUp = system->number(0x18);
  }
  if (const auto enclosure = table.first(SmbiosType::Enclosure)) {
    states.enclosure = enclosure->number(0x09);
    states.powerSupply = enclosure->number(0x0A);
    states.thermal = enclosure->number(0x0B);
  }
  const auto security = table.first(SmbiosType::HardwareSecurity);
  if (const auto settings = security ? security->number(0x04) : std::nullopt) {
    states.powerOnPassword = *settings >> 6 & 3;
    states.keyboardPassword = *settings >> 4 & 3;
    states.administratorPassword = *settings >> 2 & 3;
    states.frontPanelReset = *settings & 3;
  }
  if (const auto reset = table.first(SmbiosType::SystemReset)) {
    if (const auto capabilities = reset->number(0x04)) {
      states.resetEnabled = (*capabilities & 1) != 0;
    }
    states.resetTimeout = reset->number(0x0B, 2);
  }
  return states;
}

}  // namespace veltrin

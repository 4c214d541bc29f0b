// SPDX-License-Identifier: GPL-3.0-or-later
// What the firmware's table tells of the state that a computer started in.
#pragma once

#include <cstdint>
#include <optional>

#include "machine/smbios.h"

namespace veltrin {

// Codes of DSP0134; nothing where the table does not have them.
struct ComputerStates {
  // System Information: what started the computer (section 7.2.2).
  std::optional<std::uint64_t> wakeUp;

  // System Enclosure, when it was last started (section 7.4.2).
  std::optional<std::uint64_t> enclosure;
  std::optional<std::uint64_t> powerSupply;
  std::optional<std::uint64_t> thermal;

  // Hardware Security: 0 disabled, 1 enabled, 2 not implemented, 3 unknown (section 7.25).
  std::optional<std::uint64_t> powerOnPassword;
  std::optional<std::uint64_t> keyboardPassword;
  std::optional<std::uint64_t> administratorPassword;
  std::optional<std::uint64_t> frontPanelReset;

  // System Reset: whether the computer may restart by itself, and the minutes before it does,
  // 0xFFFF for an unknown number (section 7.24).
  std::optional<bool> resetEnabled;
  std::optional<std::uint64_t> resetTimeout;

  bool operator==(const ComputerStates&) const = default;
};

ComputerStates statesIn(const SmbiosTable& table);

}  // namespace veltrin

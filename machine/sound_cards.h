// SPDX-License-Identifier: GPL-3.0-or-later
// The sound cards of a machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

struct SoundCard {
  std::uint64_t number = 0;
  std::string name;    // "HDA Intel PCH", by /proc/asound/cards; else its short ID, "PCH"
  std::string folder;  // of the device, "/sys/class/sound/card0/device"
};

// The cards that the kernel's sound system drives, in the order of their numbers.
std::vector<SoundCard> soundCards(const FileTree& files);

// The converters on the cards' HD audio links by their makers, "Realtek ALC287".
std::vector<std::string> soundCodecs(const FileTree& files);

}  // namespace veltrin

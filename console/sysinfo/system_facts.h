// SPDX-License-Identifier: GPL-3.0-or-later
// All that systeminfo tells of a machine.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "machine/cards.h"
#include "machine/file_tree.h"
#include "machine/firmware.h"
#include "machine/machine.h"
#include "machine/memory.h"
#include "machine/operating_system.h"

namespace veltrin {

// What is not known is empty, or nothing. Each text stands on a line of its own.
struct SystemFacts {
  std::string host;
  OperatingSystemFacts system;
  std::string productId;
  FirmwareFacts firmware;
  std::vector<std::string> processors;
  std::string bootDevice;
  std::string systemLocale;
  std::string inputLocale;
  std::string timeZone;
  MemoryFacts memory;
  std::vector<std::string> swapPlaces;
  std::string domain;
  std::optional<std::vector<std::string>> updates;
  std::optional<std::vector<CardFacts>> cards;
};

SystemFacts gatherFacts(const FileTree& files, const Machine& machine);

}  // namespace veltrin

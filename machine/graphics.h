// SPDX-License-Identifier: GPL-3.0-or-later
// The graphics cards of a machine, and the monitors at them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "machine/edid.h"
#include "machine/file_tree.h"
#include "machine/machine.h"

namespace veltrin {

// Something connected to a card.
struct MonitorFacts {
  std::string connector;          // "HDMI-A-1"
  std::optional<EdidFacts> edid;  // nothing where it tells nothing of itself
};

struct GraphicsCard {
  std::string name;  // of the card; empty when nobody tells
  std::string chip;  // on it
  // What the card shows on its first connector, or what its frame buffer holds; 0 for what is
  // not told.
  DisplayMode shown;
  std::vector<MonitorFacts> monitors;
};

// The cards on the PCI bus, in its order, and then those that lie elsewhere. A card that
// sleeps is not asked what it shows, as the question would wake it up, and it shows nothing.
std::vector<GraphicsCard> graphicsCards(const FileTree& files, const Machine& machine);

// The monitors of all cards, in the order of the kernel's numbers of the cards.
std::vector<MonitorFacts> connectedMonitors(const FileTree& files);

}  // namespace veltrin

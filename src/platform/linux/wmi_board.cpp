// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "machine/board.h"
#include "machine/slots.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

using Number = std::optional<std::uint64_t>;

// Codes of ConnectorType, from the documentation of Win32_SystemSlot.
enum Connector : std::uint8_t {
  kUnknown = 0,
  kOther = 1,
  kPci = 43,
  kIsa = 44,
  kEisa = 45,
  kVesa = 46,
  kPcmcia = 47,
  kNuBus = 65,
  kAgp = 73,
  kProprietary = 76,
  kProcessorCard = 77,
  kMemoryCard = 78,
  kRiser = 79,
  kPci66 = 80,
  kAgp2 = 81,
  kAgp4 = 82,
  kPc98 = 83,
  kPciX = 88,
  kMca = 91,
  kAgp8 = 99,
  kPciExpress = 100,
};

// By the types of slots of DSP0134 section 7.10.1, from 1 on. Behind them stand connectors that
// the class has no code for (M.2, MXM, OCP, EDSFF), and PCI Express.
constexpr std::array kConnectors{
    kOther,          // 0x01 other
    kUnknown,        // 0x02 unknown
    kIsa,            // 0x03 ISA
    kMca,            // 0x04 MCA
    kEisa,           // 0x05 EISA
    kPci,            // 0x06 PCI
    kPcmcia,         // 0x07 PC Card
    kVesa,           // 0x08 VL-VESA
    kProprietary,    // 0x09 proprietary
    kProcessorCard,  // 0x0A processor card
    kMemoryCard,     // 0x0B proprietary memory card
    kRiser,          // 0x0C I/O riser card
    kNuBus,          // 0x0D NuBus
    kPci66,          // 0x0E PCI at 66 MHz
    kAgp,            // 0x0F AGP
    kAgp2,           // 0x10 AGP 2X
    kAgp4,           // 0x11 AGP 4X
    kPciX,           // 0x12 PCI-X
    kAgp8,           // 0x13 AGP 8X
};

struct ConnectorRange {
  std::uint64_t first;
  std::uint64_t last;
  Connector connector;
};

constexpr std::array kMoreConnectors{
    ConnectorRange{0x1F, 0x20, kPciExpress},  // PCI Express generation 2 and 3 in SFF-8639
    ConnectorRange{0x21, 0x23, kPciExpress},  // PCI Express Mini
    ConnectorRange{0x24, 0x25, kPciExpress},  // PCI Express generation 4 and 5 in SFF-8639
    ConnectorRange{0xA0, 0xA4, kPc98},        // slots of the PC-98
    ConnectorRange{0xA5, 0xB6, kPciExpress},  // PCI Express up to generation 3
    ConnectorRange{0xB8, 0xC4, kPciExpress},  // generation 4 and on
};

Connector connectorOf(std::uint64_t type) {
  if (type >= 1 && type <= kConnectors.size()) {
    return kConnectors.at(type - 1);
  }
  const auto* range = std::find_if(
      kMoreConnectors.begin(), kMoreConnectors.end(),
      [type](const ConnectorRange& each) { return each.first <= type && type <= each.last; });
  return range == kMoreConnectors.end() ? kOther : range->connector;
}

// By words in what the kernel calls the speed of a bus (drivers/pci/probe.c); one that
// goes before another is looked for first.
struct ConnectorOfSpeed {
  std::string_view words;
  Connector connector;
};

constexpr std::array kConnectorsOfSpeeds{
    ConnectorOfSpeed{"PCIe", kPciExpress},  ConnectorOfSpeed{"PCI-X", kPciX},
    ConnectorOfSpeed{"66 MHz PCI", kPci66}, ConnectorOfSpeed{"MHz PCI", kPci},
    ConnectorOfSpeed{"2x AGP", kAgp2},      ConnectorOfSpeed{"4x AGP", kAgp4},
    ConnectorOfSpeed{"8x AGP", kAgp8},      ConnectorOfSpeed{"AGP", kAgp},
};

std::optional<Connector> connectorOfSpeed(std::string_view speed) {
  for (const ConnectorOfSpeed& each : kConnectorsOfSpeeds) {
    if (speed.find(each.words) != std::string_view::npos) {
      return each.connector;
    }
  }
  return std::nullopt;
}

WmiValue connectorType(const SlotFacts& slot) {
  const std::optional<Connector> connector =
      slot.type ? connectorOf(*slot.type) : connectorOfSpeed(slot.speed);
  return connector ? WmiValue(std::vector<Loose>{static_cast<int>(*connector)}) : WmiValue();
}

// MaxDataWidth: 0 for 8 bits, and one more for each doubling up to 128. The firmware counts them
// from 3 on (DSP0134 section 7.10.2); for the lanes of PCI Express, behind them, there is no code.
WmiValue maxDataWidth(const Number& width) {
  constexpr std::uint64_t kEightBits = 3;
  constexpr std::uint64_t kBits128 = 7;
  return width && *width >= kEightBits && *width <= kBits128 ? WmiValue(*width - kEightBits)
                                                             : WmiValue();
}

// VccMixedVoltageSupport, by the bits of the characteristics (DSP0134 section 7.10.6): whether
// they are unknown, whether the slot provides 5 V, and 3.3 V.
WmiValue voltages(const Number& characteristics) {
  constexpr std::array<int, 3> kCodes{0, 3, 2};
  if (!characteristics) {
    return {};
  }
  std::vector<Loose> codes;
  for (std::size_t bit = 0; bit < kCodes.size(); ++bit) {
    if ((*characteristics >> bit & 1) != 0) {
      codes.emplace_back(kCodes.at(bit));
    }
  }
  return codes;
}

}  // namespace

WmiAnswer win32BaseBoard(const WmiSources& sources) {
  const BoardFacts board = boardFacts(sources.files);
  if (board == BoardFacts()) {
    return {};
  }
  WmiObject object;
  object.properties["Manufacturer"] = orNull(board.manufacturer);
  object.properties["Product"] = orNull(board.product);
  object.properties["Version"] = orNull(board.version);
  object.properties["SerialNumber"] = orNull(board.serial);
  return {object};
}

WmiAnswer win32SystemSlot(const WmiSources& sources) {
  WmiAnswer answer;
  for (const SlotFacts& slot : boardSlots(sources.files)) {
    WmiObject object;
    object.properties["SlotDesignation"] = orNull(slot.designation);
    object.properties["MaxDataWidth"] = maxDataWidth(slot.width);
    object.properties["VccMixedVoltageSupport"] = voltages(slot.characteristics);
    object.properties["ConnectorType"] = connectorType(slot);
    answer.push_back(std::move(object));
  }
  return answer;
}

}  // namespace veltrin

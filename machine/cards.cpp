// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/cards.h"

#include <algorithm>
#include <utility>

#include "machine/adapter_id.h"
#include "machine/connections.h"
#include "machine/device_folder.h"
#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/usb_devices.h"

namespace veltrin {
namespace {

// Finds the names of adapters.
class Adapters {
 public:
  explicit Adapters(const FileTree& files) : files_(files), names_(files) {}

  bool isDevice(const NetworkInterface& interface) const {
    return !files_.linkTarget(folderOf(interface)).empty();
  }

  // By the hardware database, else as the device itself tells, else the name of its
  // driver; the kind of an interface that is software.
  std::string nameOf(const NetworkInterface& interface) {
    std::string name = names_.modelOf(adapterId(files_, interface.name));
    if (name.empty()) {
      name = nameInDevice(interface);
    }
    if (name.empty()) {
      name = printable(driverIn(files_, folderOf(interface)));
    }
    if (name.empty()) {
      name = printable(interface.kind.empty() ? interface.name : interface.kind);
    }
    return name;
  }

 private:
  static std::string folderOf(const NetworkInterface& interface) {
    return "/sys/class/net/" + interface.name + "/device";
  }

  // The interface of a USB device lies in the folder of the device, which keeps the
  // texts that the device tells of itself.
  std::string nameInDevice(const NetworkInterface& interface) const {
    return wholeName(usbTextsIn(files_, folderOf(interface) + "/.."));
  }

  const FileTree& files_;
  DeviceNames names_;
};

std::vector<std::string> addressTexts(const NetworkInterface& interface) {
  std::vector<std::string> texts;
  for (const Family family : {Family::IPv4, Family::IPv6}) {
    for (const InterfaceAddress& own : interface.addresses) {
      if (own.address.family == family) {
        texts.push_back(own.address.text());
      }
    }
  }
  return texts;
}

CardFacts cardOf(const FileTree& files, Adapters& adapters, const NetworkInterface& interface) {
  const ConnectionFacts connection = connectionFacts(files, interface);
  CardFacts card;
  card.name = adapters.nameOf(interface);
  card.connection = connection.name.empty() ? printable(interface.name) : connection.name;
  card.connected = interface.running;
  if (card.connected) {
    card.dhcp = connection.dhcp;
    card.dhcpServer = connection.dhcpServer;
    card.addresses = addressTexts(interface);
  }
  return card;
}

}  // namespace

std::optional<std::vector<CardFacts>> cardFacts(const FileTree& files, const Machine& machine) {
  auto interfaces = machine.interfaces();
  if (!interfaces) {
    return std::nullopt;
  }
  Adapters adapters(files);
  std::stable_partition(interfaces->begin(), interfaces->end(),
                        [&](const auto& interface) { return adapters.isDevice(interface); });
  std::vector<CardFacts> cards;
  cards.reserve(interfaces->size());
  for (const NetworkInterface& interface : *interfaces) {
    cards.push_back(cardOf(files, adapters, interface));
  }
  return cards;
}

}  // namespace veltrin

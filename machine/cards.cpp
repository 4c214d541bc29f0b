#include "machine/cards.h"

#include <algorithm>
#include <utility>

#include "machine/connections.h"
#include "machine/device_database.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

std::string behindLastSlash(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string joined(const std::string& left, const std::string& right) {
  return left.empty() || right.empty() ? left + right : left + " " + right;
}

// Finds the names of adapters.
class Adapters {
 public:
  explicit Adapters(const FileTree& files) : files_(files), database_(files) {}

  bool isDevice(const NetworkInterface& interface) const {
    return !files_.linkTarget(folderOf(interface)).empty();
  }

  // By the hardware database, else as the device itself tells, else the name of its
  // driver; the kind of an interface that is software.
  std::string nameOf(const NetworkInterface& interface) const {
    for (const auto part :
         {&Adapters::nameInDatabase, &Adapters::nameInDevice, &Adapters::driverOf}) {
      if (std::string name = (this->*part)(interface); !name.empty()) {
        return name;
      }
    }
    return printable(interface.kind.empty() ? interface.name : interface.kind);
  }

 private:
  static std::string folderOf(const NetworkInterface& interface) {
    return "/sys/class/net/" + interface.name + "/device";
  }

  std::string nameInDatabase(const NetworkInterface& interface) const {
    const std::string folder = folderOf(interface);
    std::string id = files_.line(folder + "/modalias");
    if (id.starts_with("virtio:")) {
      // The database knows the device of the bus that carries the virtual one.
      id = files_.line(folder + "/../modalias");
    }
    return database_.fullNameOf(id);
  }

  // The interface of a USB device lies in the folder of the device, which keeps the
  // texts that the device tells of itself.
  std::string nameInDevice(const NetworkInterface& interface) const {
    const std::string folder = folderOf(interface) + "/../";
    const std::string product = printable(files_.line(folder + "product"));
    return product.empty() ? "" : joined(printable(files_.line(folder + "manufacturer")), product);
  }

  std::string driverOf(const NetworkInterface& interface) const {
    return printable(behindLastSlash(files_.linkTarget(folderOf(interface) + "/driver")));
  }

  const FileTree& files_;
  DeviceDatabase database_;
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

CardFacts cardOf(const FileTree& files, const Adapters& adapters,
                 const NetworkInterface& interface) {
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
  const Adapters adapters(files);
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

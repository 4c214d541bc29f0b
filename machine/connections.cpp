// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/connections.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

using MaybeLease = std::optional<DhcpLease>;

// A DHCP message: the lent address, the cookie, and the options behind it (RFC 2131
// figure 1, RFC 2132 sections 2, 3.1, 3.2 and 9.7).
constexpr std::size_t kYourAddressAt = 16;
constexpr std::size_t kCookieAt = 236;
constexpr std::string_view kCookie = "\x63\x82\x53\x63";
constexpr char kPad = 0;
constexpr char kServerIdentifier = 54;
constexpr char kEnd = static_cast<char>(0xFF);

// Without quotes and the semicolon behind it.
std::string bare(std::string_view word) {
  std::string text(word);
  std::erase_if(text, [](char character) { return character == '"' || character == ';'; });
  return text;
}

bool hasAddress(const NetworkInterface& interface, const MaybeLease& lease) {
  return lease && lease->address &&
         std::any_of(interface.addresses.begin(), interface.addresses.end(),
                     [&](const InterfaceAddress& own) { return own.address == *lease->address; });
}

// A lease that is older than the interface's present address tells nothing of it.
MaybeLease ifPresent(const NetworkInterface& interface, MaybeLease lease) {
  return hasAddress(interface, lease) ? lease : std::nullopt;
}

Address ipv4At(std::string_view bytes) {
  Address address;
  std::copy_n(bytes.begin(), 4, address.bytes.begin());
  return address;
}

// A file of systemd-networkd or NetworkManager, of lines "ADDRESS=192.0.2.7".
MaybeLease leaseOfValues(const std::string& text) {
  return DhcpLease{Address::parse(shellValue(text, "ADDRESS")),
                   Address::parse(shellValue(text, "SERVER_ADDRESS"))};
}

MaybeLease leaseOfNetworkd(const FileTree& files, const NetworkInterface& interface) {
  const std::string path = "/run/systemd/netif/leases/" + std::to_string(interface.index);
  return ifPresent(interface, leaseOfValues(files.text(path)));
}

MaybeLease leaseOfNetworkManager(const FileTree& files, const NetworkInterface& interface) {
  constexpr const char* kFolder = "/var/lib/NetworkManager/";
  for (const std::string& name : files.names(kFolder)) {
    if (name.starts_with("internal-") && name.ends_with("-" + interface.name + ".lease")) {
      const auto lease = ifPresent(interface, leaseOfValues(files.text(kFolder + name)));
      if (lease) {
        return lease;
      }
    }
  }
  return std::nullopt;
}

MaybeLease leaseOfDhclientFiles(const FileTree& files, const NetworkInterface& interface) {
  for (const std::string folder :
       {"/var/lib/dhcp/", "/var/lib/dhclient/", "/var/lib/NetworkManager/"}) {
    for (const std::string& name : files.names(folder)) {
      if (name.starts_with("dhclient") && name.find(".lease") != std::string::npos) {
        if (const auto lease = leaseOfDhclient(files.text(folder + name), interface)) {
          return lease;
        }
      }
    }
  }
  return std::nullopt;
}

MaybeLease leaseOfDhcpcd(const FileTree& files, const NetworkInterface& interface) {
  for (const std::string folder : {"/var/lib/dhcpcd/", "/var/lib/dhcpcd5/", "/var/db/dhcpcd/"}) {
    for (const std::string& name : files.names(folder)) {
      const bool ours = name.starts_with(interface.name + ".") ||
                        name.starts_with(interface.name + "-") ||
                        name.starts_with("dhcpcd-" + interface.name + ".");
      const auto lease = ours && name.ends_with(".lease")
                             ? ifPresent(interface, leaseInMessage(files.text(folder + name)))
                             : std::nullopt;
      if (lease) {
        return lease;
      }
    }
  }
  return std::nullopt;
}

MaybeLease leaseOf(const FileTree& files, const NetworkInterface& interface) {
  for (const auto source :
       {leaseOfNetworkd, leaseOfNetworkManager, leaseOfDhclientFiles, leaseOfDhcpcd}) {
    if (const auto lease = source(files, interface)) {
      return lease;
    }
  }
  return std::nullopt;
}

// The content of the connection file with an ID; only root may read most of them.
std::string connectionFile(const FileTree& files, const std::string& uuid) {
  for (const std::string folder :
       {"/run/NetworkManager/system-connections/", "/etc/NetworkManager/system-connections/",
        "/usr/lib/NetworkManager/system-connections/"}) {
    for (const std::string& name : files.names(folder)) {
      std::string text = files.text(folder + name);
      if (sectionValue(text, "connection", "uuid") == uuid) {
        return text;
      }
    }
  }
  return "";
}

// The file of the connection by which NetworkManager has set an interface up; empty
// when there is none that can be read.
std::string ownConnectionFile(const FileTree& files, const NetworkInterface& interface) {
  const std::string state =
      files.text("/run/NetworkManager/devices/" + std::to_string(interface.index));
  const std::string uuid = sectionValue(state, "device", "connection-uuid");
  return uuid.empty() ? "" : connectionFile(files, uuid);
}

// What a network file of systemd-networkd says, where one has set the interface up
// (systemd.network(5)). Files that amend it could say something else.
std::optional<bool> wishOfNetworkd(const FileTree& files, const NetworkInterface& interface) {
  const std::string state =
      files.text("/run/systemd/netif/links/" + std::to_string(interface.index));
  const std::string path = shellValue(state, "NETWORK_FILE");
  const auto text = path.starts_with("/") ? files.read(path) : std::nullopt;
  if (!text || !shellValue(state, "NETWORK_FILE_DROPINS").empty()) {
    return std::nullopt;
  }
  const std::string wish = lowerCase(sectionValue(*text, "Network", "DHCP"));
  constexpr std::array<std::string_view, 8> kYes{"yes", "true", "on",   "1",
                                                 "y",   "t",    "ipv4", "both"};
  return std::find(kYes.begin(), kYes.end(), wish) != kYes.end();
}

// The name under which ifupdown has set an interface up; empty when it has not.
std::string nameInIfupdown(const FileTree& files, const std::string& interface) {
  for (const std::string& path :
       {std::string("/run/network/ifstate"), "/run/network/ifstate." + interface}) {
    if (std::string name = shellValue(files.text(path), interface); !name.empty()) {
      return name;
    }
  }
  return "";
}

// "iface eth0 inet dhcp" in the files of ifupdown (interfaces(5)).
std::optional<bool> wishOfIfupdown(const FileTree& files, const NetworkInterface& interface) {
  const std::string name = nameInIfupdown(files, interface.name);
  if (name.empty()) {
    return std::nullopt;
  }
  constexpr const char* kFolder = "/etc/network/interfaces.d/";
  std::string text = files.text("/etc/network/interfaces");
  for (const std::string& file : files.names(kFolder)) {
    text += "\n" + files.text(kFolder + file);
  }
  std::optional<bool> wish;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(line);
    if (words.size() == 4 && words[0] == "iface" && words[1] == name && words[2] == "inet") {
      wish = wish.value_or(false) || words[3] == "dhcp";
    }
  }
  return wish;
}

std::optional<bool> wishInConnection(const std::string& connection) {
  const std::string method = sectionValue(connection, "ipv4", "method");
  return method.empty() ? std::nullopt : std::optional(method == "auto");
}

// Nobody but a DHCP client gives IPv4 addresses that run out.
bool hasLentAddress(const NetworkInterface& interface) {
  return std::any_of(interface.addresses.begin(), interface.addresses.end(),
                     [](const InterfaceAddress& own) {
                       return own.address.family == Family::IPv4 && !own.lasting;
                     });
}

std::optional<bool> wishFor(const FileTree& files, const NetworkInterface& interface,
                            const std::string& connection) {
  if (hasLentAddress(interface)) {
    return true;
  }
  for (const auto& wish : {wishInConnection(connection), wishOfNetworkd(files, interface),
                           wishOfIfupdown(files, interface)}) {
    if (wish) {
      return wish;
    }
  }
  return std::nullopt;
}

}  // namespace

ConnectionFacts connectionFacts(const FileTree& files, const NetworkInterface& interface) {
  const std::string connection = ownConnectionFile(files, interface);
  ConnectionFacts facts;
  facts.name = printable(sectionValue(connection, "connection", "id"));
  if (const auto lease = leaseOf(files, interface)) {
    facts.dhcp = true;
    facts.dhcpServer = lease->server ? lease->server->text() : "";
  } else {
    facts.dhcp = wishFor(files, interface, connection);
  }
  return facts;
}

std::optional<DhcpLease> leaseInMessage(std::string_view message) {
  if (message.size() < kCookieAt || !message.substr(kCookieAt).starts_with(kCookie)) {
    return std::nullopt;
  }
  DhcpLease lease{ipv4At(message.substr(kYourAddressAt)), std::nullopt};
  std::string_view options = message.substr(kCookieAt + kCookie.size());
  while (!options.empty() && options[0] != kEnd) {
    if (options[0] == kPad) {
      options.remove_prefix(1);
      continue;
    }
    const std::size_t size = options.size() < 2 ? 0 : static_cast<unsigned char>(options[1]);
    if (options.size() < size + 2) {
      break;
    }
    if (options[0] == kServerIdentifier && size == 4) {
      lease.server = ipv4At(options.substr(2));
    }
    options.remove_prefix(size + 2);
  }
  return lease;
}

std::optional<DhcpLease> leaseOfDhclient(std::string_view text, const NetworkInterface& interface) {
  MaybeLease last;
  DhcpLease lease;
  bool ours = false;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const auto words = wordsOf(trimmed(line));
    if (words.empty()) {
      continue;
    }
    if (words[0] == "lease") {
      lease = {};
      ours = false;
    } else if (words[0] == "interface" && words.size() > 1) {
      ours = bare(words[1]) == interface.name;
    } else if (words[0] == "fixed-address" && words.size() > 1) {
      lease.address = Address::parse(bare(words[1]));
    } else if (words.size() > 2 && words[1] == "dhcp-server-identifier") {
      lease.server = Address::parse(bare(words[2]));
    } else if (words[0] == "}" && ours && hasAddress(interface, lease)) {
      last = lease;
    }
  }
  return last;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/sysinfo/report.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::size_t kLabel = 27;
constexpr std::size_t kDetail = 33;
constexpr std::size_t kCardLabel = 17;

constexpr std::string_view kUnknown = "N/A";

std::string padded(std::string_view text, std::size_t width) {
  std::string wide(text);
  wide.resize(std::max(width, wide.size()), ' ');
  return wide;
}

// "[01]: ", and from the hundredth on one digit more.
std::string indexText(std::size_t index) {
  return std::string(index < 10 ? "[0" : "[") + std::to_string(index) + "]: ";
}

// Adds the lines one by one.
class Writing {
 public:
  explicit Writing(const SystemFacts& facts) : facts_(facts) {}

  std::vector<std::string> run() {
    lines_.emplace_back();
    addSystem();
    addComputer();
    addRegion();
    addMemory();
    addNetwork();
    return std::move(lines_);
  }

 private:
  void add(std::string_view label, std::string_view value) {
    lines_.push_back(padded(label, kLabel) + std::string(value.empty() ? kUnknown : value));
  }

  // How many there are, and each below with its index.
  void addCounted(std::string_view label, const std::vector<std::string>& texts,
                  std::string_view what) {
    add(label, std::to_string(texts.size()) + " " + std::string(what) + " Installed.");
    for (std::size_t i = 0; i < texts.size(); ++i) {
      addContinued(indexText(i + 1) + texts[i]);
    }
  }

  void addContinued(const std::string& text) { lines_.push_back(std::string(kLabel, ' ') + text); }

  void addDetail(const std::string& text) { lines_.push_back(std::string(kDetail, ' ') + text); }

  void addSystem() {
    const OperatingSystemFacts& system = facts_.system;
    add("Host Name:", facts_.host);
    add("OS Name:", system.name);
    add("OS Version:", system.version);
    add("OS Manufacturer:", system.manufacturer);
    add("OS Configuration:", system.configuration);
    add("OS Build Type:", system.buildType);
    // No file of a Linux system names whom it is registered to.
    add("Registered Owner:", kUnknown);
    add("Registered Organization:", kUnknown);
    add("Product ID:", facts_.productId);
    add("Original Install Date:", system.installed);
    add("System Boot Time:", system.booted);
  }

  void addComputer() {
    add("System Manufacturer:", facts_.firmware.manufacturer);
    add("System Model:", facts_.firmware.model);
    add("System Type:", facts_.system.computerType);
    if (facts_.processors.empty()) {
      add("Processor(s):", kUnknown);
    } else {
      addCounted("Processor(s):", facts_.processors, "Processor(s)");
    }
    add("BIOS Version:", facts_.firmware.bios);
    // These two folders are Windows's own.
    add("Windows Directory:", kUnknown);
    add("System Directory:", kUnknown);
    add("Boot Device:", facts_.bootDevice);
  }

  void addRegion() {
    add("System Locale:", facts_.systemLocale);
    add("Input Locale:", facts_.inputLocale);
    add("Time Zone:", facts_.timeZone);
  }

  void addMegabytes(std::string_view label, std::optional<std::uint64_t> megabytes) {
    add(label, megabytes ? withCommas(*megabytes) + " MB" : std::string(kUnknown));
  }

  void addMemory() {
    const MemoryFacts& memory = facts_.memory;
    std::optional<std::uint64_t> used;
    if (memory.virtualTotal && memory.virtualAvailable &&
        *memory.virtualAvailable <= *memory.virtualTotal) {
      used = *memory.virtualTotal - *memory.virtualAvailable;
    }
    addMegabytes("Total Physical Memory:", memory.total);
    addMegabytes("Available Physical Memory:", memory.available);
    addMegabytes("Virtual Memory: Max Size:", memory.virtualTotal);
    addMegabytes("Virtual Memory: Available:", memory.virtualAvailable);
    addMegabytes("Virtual Memory: In Use:", used);
    add("Page File Location(s):", facts_.swapPlaces.empty() ? kUnknown : facts_.swapPlaces[0]);
    for (std::size_t i = 1; i < facts_.swapPlaces.size(); ++i) {
      addContinued(facts_.swapPlaces[i]);
    }
  }

  void addNetwork() {
    add("Domain:", facts_.domain);
    // A Linux session is opened by the machine itself.
    add("Logon Server:", kUnknown);
    if (facts_.updates) {
      addCounted("Hotfix(s):", *facts_.updates, "Hotfix(s)");
    } else {
      add("Hotfix(s):", kUnknown);
    }
    if (!facts_.cards) {
      add("Network Card(s):", kUnknown);
      return;
    }
    add("Network Card(s):", std::to_string(facts_.cards->size()) + " NIC(s) Installed.");
    for (std::size_t i = 0; i < facts_.cards->size(); ++i) {
      addCard(indexText(i + 1), (*facts_.cards)[i]);
    }
  }

  void addCardFact(std::string_view label, const std::string& value) {
    if (!value.empty()) {
      addDetail(padded(label, kCardLabel) + value);
    }
  }

  void addCard(const std::string& index, const CardFacts& card) {
    addContinued(index + card.name);
    addCardFact("Connection Name:", card.connection);
    if (!card.connected) {
      addCardFact("Status:", "Media disconnected");
      return;
    }
    if (card.dhcp) {
      addCardFact("DHCP Enabled:", *card.dhcp ? "Yes" : "No");
    }
    addCardFact("DHCP Server:", card.dhcpServer);
    if (!card.addresses.empty()) {
      addDetail("IP address(es)");
    }
    for (std::size_t i = 0; i < card.addresses.size(); ++i) {
      addDetail(indexText(i + 1) + card.addresses[i]);
    }
  }

  const SystemFacts& facts_;
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> reportLines(const SystemFacts& facts) { return Writing(facts).run(); }

}  // namespace veltrin

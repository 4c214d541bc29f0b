// SPDX-License-Identifier: GPL-3.0-or-later
// Texts of the tool that tells about the machine, for tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

using Lines = std::vector<std::string>;

// Lines one behind the other.
inline Lines joined(const std::vector<Lines>& parts) {
  Lines lines;
  for (const Lines& part : parts) lines.insert(lines.end(), part.begin(), part.end());
  return lines;
}

// Lines as the tool prints them, each with its line break.
inline std::string printed(const Lines& lines, std::string_view lineBreak = "\r\n") {
  std::string text;
  for (const std::string& line : lines) text += line + std::string(lineBreak);
  return text;
}

// A machine with two processors, up to its list of hotfixes.
inline Lines machine() {
  return {
      "",
      "Host Name:                 KITCHEN",
      "OS Name:                   Example Desktop 7",
      "OS Version:                6.1.7601 Service Pack 1 Build 7601",
      "OS Manufacturer:           Example Systems",
      "OS Configuration:          Standalone Workstation",
      "OS Build Type:             Multiprocessor Free",
      "Registered Owner:          owner",
      "Registered Organization:   ",
      "Product ID:                12345-678-9012345-67890",
      "Original Install Date:     1/30/2026, 3:22:51 PM",
      "System Boot Time:          3/7/2026, 8:01:12 AM",
      "System Manufacturer:       Example Boards",
      "System Model:              Board 7",
      "System Type:               x64-based PC",
      "Processor(s):              2 Processor(s) Installed.",
      "                           [01]: Example64 Family 6 Model 37 Stepping 5 ~2667 Mhz",
      "                           [02]: Example64 Family 6 Model 37 Stepping 5 ~2667 Mhz",
      "BIOS Version:              Example Bios A05, 8/10/2025",
      "Windows Directory:         C:\\Windows",
      "System Directory:          C:\\Windows\\system32",
      "Boot Device:               \\Device\\HarddiskVolume1",
      "System Locale:             en-us;English (United States)",
      "Input Locale:              nl;Dutch (Netherlands)",
      "Time Zone:                 (UTC) Coordinated Universal Time",
      "Total Physical Memory:     3,957 MB",
      "Available Physical Memory: 2,046 MB",
      "Virtual Memory: Max Size:  7,912 MB",
      "Virtual Memory: Available: 5,605 MB",
      "Virtual Memory: In Use:    2,307 MB",
      "Page File Location(s):     C:\\pagefile.sys",
      "Domain:                    WORKGROUP",
      "Logon Server:              \\\\KITCHEN",
  };
}

// "[07]", and "[107]" behind the ninety-ninth.
inline std::string place(std::size_t number) {
  const std::string digits = std::to_string(number);
  return "[" + (digits.size() < 2 ? "0" + digits : digits) + "]";
}

// A list of so many hotfixes, named KB1 and so on.
inline Lines hotfixes(std::size_t count) {
  Lines lines{"Hotfix(s):                 " + std::to_string(count) + " Hotfix(s) Installed."};
  for (std::size_t number = 1; number <= count; ++number) {
    lines.push_back("                           " + place(number) + ": KB" +
                    std::to_string(number));
  }
  return lines;
}

// A network card: without a connection's DHCP server or addresses when they are empty.
struct CardText {
  std::string name;
  std::string connection;
  std::string dhcp;
  Lines addresses;
};

// The card of that number on a network of its own.
inline CardText usualCard(std::size_t number) {
  const std::string digits = std::to_string(number);
  return {"Card " + digits,
          "Connection " + digits,
          "198.51.100." + digits,
          {"192.0.2." + digits, "2001:db8::" + digits}};
}

inline std::vector<CardText> usualCards(std::size_t count) {
  std::vector<CardText> cards;
  for (std::size_t number = 1; number <= count; ++number) cards.push_back(usualCard(number));
  return cards;
}

inline Lines networkCards(const std::vector<CardText>& cards) {
  const std::string detail(33, ' ');
  Lines lines{"Network Card(s):           " + std::to_string(cards.size()) + " NIC(s) Installed."};
  for (const CardText& card : cards) {
    const auto number = static_cast<std::size_t>(&card - cards.data()) + 1;
    lines.push_back("                           " + place(number) + ": " + card.name);
    lines.push_back(detail + "Connection Name: " + card.connection);
    if (card.addresses.empty()) lines.push_back(detail + "Status:          Media disconnected");
    if (!card.dhcp.empty()) {
      lines.push_back(detail + "DHCP Enabled:    Yes");
      lines.push_back(detail + "DHCP Server:     " + card.dhcp);
    }
    if (!card.addresses.empty()) lines.push_back(detail + "IP address(es)");
    for (std::size_t index = 0; index < card.addresses.size(); ++index) {
      lines.push_back(detail + place(index + 1) + ": " + card.addresses[index]);
    }
  }
  return lines;
}

// A whole text with so many hotfixes and cards.
inline Lines desktop(std::size_t hotfixCount, std::size_t cardCount) {
  return joined({machine(), hotfixes(hotfixCount), networkCards(usualCards(cardCount))});
}

}  // namespace veltrin

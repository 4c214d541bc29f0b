// SPDX-License-Identifier: GPL-3.0-or-later
// A machine that a test makes up.
#pragma once

#include <ctime>
#include <map>
#include <string>
#include <utility>

#include "machine/machine.h"

namespace veltrin {

class FakeMachine : public Machine {
 public:
  Kernel kernel() const override { return kernelFacts; }
  std::int64_t now() const override { return time; }

  LocalMoment local(std::int64_t seconds) const override {
    const time_t shifted = seconds + std::int64_t{offset} * 60;
    tm parts{};
    gmtime_r(&shifted, &parts);
    return {{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
             parts.tm_sec},
            offset,
            zone};
  }

  std::string environment(const std::string& name) const override {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string() : found->second;
  }

  std::optional<std::int64_t> born(const std::string& path) const override {
    return path == "/" ? rootBorn : std::nullopt;
  }

  std::optional<std::vector<NetworkInterface>> interfaces() const override { return network; }

  std::optional<FileSystemRoom> room(const std::string& folder) const override {
    const auto found = rooms.find(folder);
    return found == rooms.end() ? std::nullopt : std::optional(found->second);
  }

  std::optional<Id128> applicationId(const Id128& application) const override {
    const auto found = ids.find(application);
    return found == ids.end() ? anyId : std::optional(found->second);
  }

  std::vector<DisplayMode> displayModes(const std::string& card) const override {
    const auto found = screens.find(card);
    return found == screens.end() ? std::vector<DisplayMode>() : found->second;
  }

  Kernel kernelFacts;
  std::int64_t time = 1770027672;  // 2/2/2026, 10:21:12 AM in UTC
  int offset = 0;
  std::string zone = "UTC";
  std::map<std::string, std::string> variables;
  std::optional<std::int64_t> rootBorn;
  std::optional<std::vector<NetworkInterface>> network;
  std::map<Id128, Id128> ids;                               // by the programs' constants
  std::optional<Id128> anyId;                               // for every other program
  std::map<std::string, FileSystemRoom> rooms;              // by their folders
  std::map<std::string, std::vector<DisplayMode>> screens;  // by the cards
};

inline NetworkInterface makeInterface(std::uint32_t index, std::string name) {
  NetworkInterface interface;
  interface.index = index;
  interface.name = std::move(name);
  interface.running = true;
  return interface;
}

// An interface with an address that stays, or one that is lent.
inline NetworkInterface withAddress(NetworkInterface interface, const std::string& address,
                                    bool lasting = true) {
  interface.addresses.push_back({*Address::parse(address), lasting});
  return interface;
}

}  // namespace veltrin

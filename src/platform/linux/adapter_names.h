// SPDX-License-Identifier: GPL-3.0-or-later
// What the adapters of network devices are called.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "machine/file_tree.h"

namespace veltrin {

// The full name that the running system's hardware database has for an ID. The database is
// opened for this one look, as a device is looked at once.
std::string fullNameInDatabase(const std::string& modalias);

// Gives network devices the names of adapters that Windows would show: a card that of its
// hardware ("Intel Corporation I210 Gigabit Network Connection", the second one with " #2"),
// what is software or of no known make its kind and its own name ("Bridge adapter br0").
// Who reads them tells some kinds by their first letters: the loopback begins with "Local",
// a tunnel of the kernel's with "isatap".
//
// A card keeps its name as long as this object lives, also when it is unplugged for a while
// or its device is renamed. Devices that swap their names between two calls are not noticed.
class AdapterNames {
 public:
  using Database = std::function<std::string(const std::string& modalias)>;

  // A device of which the files do not tell counts as an Ethernet one, "lo" as the loopback.
  explicit AdapterNames(FileTree files = FileTree(), Database database = fullNameInDatabase);

  // The names of the adapters of all devices that there are now, in their order. Looks at
  // devices only that were not there at the last call.
  std::vector<std::string> namesOf(const std::vector<std::string>& devices);

 private:
  struct Found {
    std::string device;
    std::string hardware;  // its place and make; empty for what the database does not know
    std::string name;
  };

  void forgetAllBut(const std::vector<std::string>& devices);
  void add(const std::vector<std::string>& devices);
  std::string numbered(const std::string& name, const std::string& hardware);
  Found find(const std::string& device) const;
  std::string nameByKind(const std::string& device) const;
  unsigned numberIn(const std::string& path, int base) const;

  FileTree files_;
  Database database_;
  std::map<std::string, std::string> names_;     // of the devices of the last call
  std::map<std::string, std::string> hardware_;  // names of all hardware ever seen
};

// The kinds of devices by their number in "type" (linux/if_arp.h).
bool isIpTunnel(unsigned type);

// A name as an instance of a counter: Windows does not let it hold what a path is made of.
std::string instanceNameOf(std::string adapter);

}  // namespace veltrin

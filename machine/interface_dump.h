// Reads the kernel's messages about network interfaces and their addresses
// (rtnetlink(7)).
#pragma once

#include <string_view>
#include <vector>

#include "machine/machine.h"

namespace veltrin {

class InterfaceDump {
 public:
  enum class State { More, Done, Failed };

  // Takes the messages of one datagram. Done with the last one of an answer.
  State take(std::string_view datagram);

  // What was told so far, in the order of the indexes, without the loopback
  // interface. Addresses belong to an interface that was told before them.
  const std::vector<NetworkInterface>& interfaces() const { return interfaces_; }

 private:
  void takeInterface(std::string_view body);
  void takeAddress(std::string_view body);

  std::vector<NetworkInterface> interfaces_;
};

}  // namespace veltrin

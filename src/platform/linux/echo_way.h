// SPDX-License-Identifier: GPL-3.0-or-later
// The ways in which one echo goes out and its reply comes in.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/icmp.h"

namespace veltrin {

struct EchoQuestion {
  std::uint32_t address = 0;  // IPv4, as it lies in memory
  std::uint16_t sequence = 0;
  std::string data;
  std::uint32_t timeout = 0;  // ms
};

class EchoWay {
 public:
  // Waits until a descriptor can be read or tells of an error, at most so many
  // milliseconds. To return early does no harm.
  using Wait = std::function<void(int descriptor, int milliseconds)>;

  virtual ~EchoWay() = default;

  // Sends one echo and waits for its reply. Whether there was one; the fresh record then
  // has all that is known of it but the data, and else its Status and, where one is known,
  // the address of whoever told of the failure.
  virtual bool exchange(const EchoQuestion& question, ICMP_ECHO_REPLY& reply) = 0;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// One network interface.
#pragma once

#include <cstdint>
#include <string>

namespace veltrin {

// A snapshot of an interface, as the system's table had it (MIB_IFROW). Counters run since
// the system's start, and over after 32 bits; above 2147483647 they read as negative.
class CInterface {
 public:
  std::string InterfaceDescription;
  std::int32_t OutputQueueLength = 0;  // packets
  std::int32_t OutgoingErrors = 0;
  std::int32_t DiscardedOutgoingPackets = 0;
  std::int32_t NonunicastPacketsSent = 0;
  std::int32_t UnicastPacketsSent = 0;
  std::int32_t OctetsSent = 0;
  std::int32_t UnknownProtocolPackets = 0;
  std::int32_t IncomingErrors = 0;
  std::int32_t DiscardedIncomingPackets = 0;
  std::int32_t NonunicastPacketsReceived = 0;
  std::int32_t MaximumTransmissionUnit = 0;  // bytes
  std::int32_t UnicastPacketsReceived = 0;
  std::int32_t OctetsReceived = 0;
  std::int32_t LastChange = 0;         // stays 0
  std::int32_t OperationalStatus = 0;  // 5 when it works
  std::int32_t AdminStatus = 0;        // 1 when it is switched on
  std::string AdapterAddress;          // "00-1A-2B-3-4-5": a byte below 16 has one digit
  std::int32_t Speed = 0;              // bits per second
  std::int32_t InterfaceType = 0;      // IANA's ifType
  std::int32_t InterfaceIndex = 0;
  std::string InterfaceName;  // UTF-16, each byte of it as one character
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Reads foreign bytes in every way in which ICMP messages and IPv4 options are
// read, and checks that what is read stays within the bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "console/icmp.h"

namespace {

void check(bool holds) {
  if (!holds) {
    std::abort();
  }
}

void readEcho(veltrin::Family family, veltrin::ByteView bytes) {
  if (const auto echo = veltrin::parseEcho(family, bytes)) {
    check(echo->size + veltrin::kEchoHeaderSize == bytes.size());
  }
}

// A message whose last two bytes hold its checksum sums up to 0.
void checkSum(veltrin::ByteView bytes) {
  veltrin::Bytes whole(bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(bytes.size() % 2));
  const std::uint16_t sum = veltrin::internetChecksum(whole);
  whole.push_back(static_cast<std::uint8_t>(sum >> 8));
  whole.push_back(static_cast<std::uint8_t>(sum & 0xFF));
  check(veltrin::internetChecksum(whole) == 0);
}

// An echo that is evened out still reads as itself.
void checkEvenOut(veltrin::Family family, veltrin::ByteView bytes) {
  veltrin::Bytes message(bytes.begin(), bytes.end());
  const auto before = veltrin::parseEcho(family, message);
  veltrin::evenOut(family, message);
  check(veltrin::parseEcho(family, message) == before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const veltrin::ByteView bytes(data, size);
  readEcho(veltrin::Family::IPv4, bytes);
  readEcho(veltrin::Family::IPv6, bytes);
  if (const auto payload = veltrin::ipv4Payload(bytes)) {
    check(payload->size() + 20 <= size);
    readEcho(veltrin::Family::IPv4, *payload);
  }
  check(veltrin::recordedRoute(bytes).size() * 4 <= size);
  check(veltrin::recordedTimes(bytes).size() * 8 <= size);
  checkSum(bytes);
  checkEvenOut(veltrin::Family::IPv4, bytes);
  checkEvenOut(veltrin::Family::IPv6, bytes);
  if (size >= 2) {
    veltrin::errorOf(veltrin::Family::IPv4, data[0], data[1]);
    veltrin::errorOf(veltrin::Family::IPv6, data[0], data[1]);
  }
  return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Reads foreign bytes in every way in which an echo's answer is read: as a packet, as what
// an error quotes, and as the text of the console tool.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/linux/echo_bytes.h"
#include "platform/linux/ping_text.h"

namespace {

using veltrin::EchoIdentity;

void check(bool holds) {
  if (!holds) std::abort();
}

// An answer holds its question to the byte, behind the fields that differ.
void readPacket(std::string_view bytes) {
  static const std::string request = veltrin::echoRequest(0x1234, 5, "PING!");
  for (const auto identity : {EchoIdentity::Own, EchoIdentity::Kernels}) {
    if (veltrin::answersEcho(bytes, request, identity)) {
      check(bytes.size() == request.size() && bytes.substr(6) == request.substr(6));
    }
    if (veltrin::quotesEcho(bytes, request, identity)) {
      check(bytes.size() >= veltrin::kEchoHead && bytes.substr(6, 2) == request.substr(6, 2));
    }
  }
}

// A question of any data is answered by itself with a reply's type, and by nothing less.
void askWith(std::string_view data) {
  const std::string request = veltrin::echoRequest(7, 9, data);
  std::string reply = request;
  reply[0] = 0;
  check(veltrin::answersEcho(reply, request, EchoIdentity::Own));
  check(veltrin::quotesEcho(request, request, EchoIdentity::Own));
  reply.pop_back();
  check(!veltrin::answersEcho(reply, request, EchoIdentity::Own));
}

// Once a text has told an outcome, more of it changes nothing.
void readText(std::string_view text) {
  const auto outcome = veltrin::readPingOutcome(text);
  if (outcome) {
    check(outcome->status == veltrin::kIpSuccess ||
          (outcome->milliseconds == 0 && outcome->ttl == 0));
    check(text.find('\n') != std::string_view::npos);
    check(veltrin::readPingOutcome(std::string(text) + "\nRequest timed out.\n") == outcome);
  } else {
    const auto more = veltrin::readPingOutcome(std::string(text) + "\nRequest timed out.\n");
    check(more.has_value());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  readPacket(bytes);
  const std::string_view payload = veltrin::behindIpHeader(bytes);
  check(payload.empty() || payload.size() + 20 <= size);
  readPacket(payload);
  askWith(bytes);
  readText(bytes);
  // Most bytes begin no line that is looked at any closer.
  readText("Reply from 192.0.2.7: " + std::string(bytes));
  if (size >= 2) veltrin::statusOfIcmpError(data[0], data[1]);
  return 0;
}

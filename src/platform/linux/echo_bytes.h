// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of an echo over IPv4, and what an error about one means. Readers take any
// bytes whatever.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltrin {

// Bytes before an echo's data: type, code, checksum, identifier, sequence (RFC 792 page 14).
inline constexpr std::size_t kEchoHead = 8;

// Whose the identifier of an echo is: that of the sender, or one that the kernel has put
// in its place on the way out and knows its socket by.
enum class EchoIdentity { Own, Kernels };

// The request that carries `data`, with its checksum.
std::string echoRequest(std::uint16_t identifier, std::uint16_t sequence, std::string_view data);

// Whether a message is the reply to a request: everything in it must be the request's but
// type and checksum, which are a reply's, and a kernel's identifier.
bool answersEcho(std::string_view message, std::string_view request, EchoIdentity identity);

// Whether the bytes that an error quotes are the head of a request. Routers quote as
// little as eight of them (RFC 792 page 4).
bool quotesEcho(std::string_view quoted, std::string_view request, EchoIdentity identity);

// What stands behind the header of an IPv4 packet (RFC 791 section 3.1); nothing when the
// bytes are none.
std::string_view behindIpHeader(std::string_view packet);

// The IP_STATUS number of an ICMP error (RFC 792, RFC 1812 section 5.2.7.1).
std::uint32_t statusOfIcmpError(std::uint8_t type, std::uint8_t code);

}  // namespace veltrin

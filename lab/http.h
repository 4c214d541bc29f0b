// SPDX-License-Identifier: GPL-3.0-or-later
// The little of HTTP/1.1 that a host of files needs (RFC 9110, RFC 9112): GET and HEAD, one
// answer for each connection.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

#include "lab/web_site.h"

namespace veltrin::lab {

// The longest head of a request that is read, in bytes.
inline constexpr std::size_t kLongestHead = 8192;

// An answer: its head with the empty line, and so many bytes of a file behind it.
struct WebAnswer {
  std::string head;
  std::uint64_t body = 0;
};

// The answer to the head of a request, up to its empty line. `moment` is the time of day
// that it tells.
WebAnswer answerTo(std::string_view head, const WebSite& site, std::time_t moment);

// The answer to a head that is longer than kLongestHead.
WebAnswer answerToLongHead(std::time_t moment);

}  // namespace veltrin::lab

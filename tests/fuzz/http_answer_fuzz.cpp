// SPDX-License-Identifier: GPL-3.0-or-later
// Whatever a web server says: an answer reads the same however its bytes come, keeps to its
// length, and ends with the connection.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/portable/http_answer.h"

namespace {

constexpr std::array<std::string_view, 6> kBeginnings{
    "",
    "HTTP/1.1 ",
    "HTTP/1.1 200 OK\r\n",
    "HTTP/1.1 200 OK\r\nContent-Length: ",
    "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n",
    "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n",
};

void require(bool condition) {
  if (!condition) std::abort();
}

struct Reading {
  std::string body;
  veltrin::HttpAnswer answer{[this](std::string_view bytes) {
    require(!bytes.empty());
    require(answer.hasHead());
    body += bytes;
  }};
};

}  // namespace

// The first byte is the size of the pieces in which the rest comes, the second chooses its
// beginning, which chance would hardly find.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string text = std::string(kBeginnings[data[1] % kBeginnings.size()]) +
                           std::string(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::size_t piece = std::max<std::size_t>(data[0], 1);

  Reading whole;
  whole.answer.take(text);
  Reading parts;
  for (std::size_t i = 0; i < text.size(); i += piece) parts.answer.take(text.substr(i, piece));

  require(whole.body == parts.body);
  require(whole.answer.isWhole() == parts.answer.isWhole());
  require(whole.answer.hasFailed() == parts.answer.hasFailed());
  require(whole.body.size() <= text.size());
  if (whole.answer.hasHead()) {
    require(whole.answer.status() >= 200 && whole.answer.status() <= 999);
    const std::int64_t length = whole.answer.length();
    const auto come = static_cast<std::int64_t>(whole.body.size());
    require(length < 0 || come <= length);
  }
  whole.answer.close();
  require(whole.answer.isWhole() != whole.answer.hasFailed());
  return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/http.h"

#include <algorithm>
#include <array>
#include <optional>

namespace veltrin::lab {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

struct Request {
  std::string_view method;
  std::string_view target;
};

// RFC 9112 section 3: "METHOD TARGET HTTP/1.1".
std::optional<Request> readRequest(std::string_view head) {
  const std::string_view line = head.substr(0, head.find(kLineEnd));
  const std::size_t first = line.find(' ');
  const std::size_t last = line.rfind(' ');
  if (first == std::string_view::npos || first == last || first == 0) return std::nullopt;
  if (!line.substr(last + 1).starts_with("HTTP/1.")) return std::nullopt;
  return Request{line.substr(0, first), line.substr(first + 1, last - first - 1)};
}

// The path of a target, which may also be a whole address (RFC 9112 section 3.2.2) and
// have a query behind it.
std::string_view pathOf(std::string_view target) {
  constexpr std::string_view kScheme = "http://";
  if (target.starts_with(kScheme)) {
    target.remove_prefix(std::min(target.find('/', kScheme.size()), target.size()));
  }
  return target.substr(0, target.find('?'));
}

// RFC 9110 section 5.6.7, in English whatever the language of the system.
std::string dateOf(std::time_t moment) {
  constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm parts{};
  gmtime_r(&moment, &parts);
  std::array<char, 32> day{};
  std::array<char, 32> time{};
  std::strftime(day.data(), day.size(), "%d", &parts);
  std::strftime(time.data(), time.size(), "%Y %H:%M:%S", &parts);
  return std::string(kDays.at(static_cast<std::size_t>(parts.tm_wday))) + ", " + day.data() + ' ' +
         kMonths.at(static_cast<std::size_t>(parts.tm_mon)) + ' ' + time.data() + " GMT";
}

std::string headOf(std::string_view status, std::uint64_t length, std::time_t moment,
                   std::string_view more) {
  std::string head = "HTTP/1.1 ";
  head.append(status).append(kLineEnd);
  head += "Date: " + dateOf(moment) + "\r\nContent-Length: " + std::to_string(length) + "\r\n";
  return head.append(more) + "Connection: close\r\n\r\n";
}

}  // namespace

WebAnswer answerTo(std::string_view head, const WebSite& site, std::time_t moment) {
  const auto request = readRequest(head);
  if (!request) return {headOf("400 Bad Request", 0, moment, "")};
  if (request->method != "GET" && request->method != "HEAD") {
    return {headOf("405 Method Not Allowed", 0, moment, "Allow: GET, HEAD\r\n")};
  }
  const auto file = std::find_if(site.files.begin(), site.files.end(), [&](const WebFile& each) {
    return each.path == pathOf(request->target);
  });
  if (file == site.files.end()) return {headOf("404 Not Found", 0, moment, "")};
  return {headOf("200 OK", file->size, moment,
                 "Content-Type: application/octet-stream\r\nAccept-Ranges: none\r\n"),
          request->method == "GET" ? file->size : 0};
}

WebAnswer answerToLongHead(std::time_t moment) {
  return {headOf("431 Request Header Fields Too Large", 0, moment, "")};
}

}  // namespace veltrin::lab

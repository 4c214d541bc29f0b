// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/web_site.h"

#include <algorithm>
#include <stdexcept>

#include "lab/values.h"

namespace veltrin::lab {
namespace {

constexpr std::uint64_t kMostPort = 65535;
constexpr std::uint64_t kMostSize = 1'000'000'000'000;  // of a file, in bytes
constexpr std::string_view kAfter = "after ";
constexpr std::string_view kFor = " for ";

// "after 3750000 for 2 s"
WebStall readStall(std::string_view text) {
  const std::size_t length = text.find(kFor);
  if (!text.starts_with(kAfter) || length == std::string_view::npos || length < kAfter.size()) {
    throw std::invalid_argument(
        "expected bytes and a time, such as \"after 50000 for 2 s\", found \"" + std::string(text) +
        '"');
  }
  return {readNumber(text.substr(kAfter.size(), length - kAfter.size()), 0, kMostSize),
          readDuration(text.substr(length + kFor.size()))};
}

// Letters that stand for themselves in the path of an address (RFC 3986 section 3.3).
bool isPathLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= '0' && letter <= '9') ||
         std::string_view("/-._~").find(letter) != std::string_view::npos;
}

// "/one.bin 5000"
WebFile readFile(const std::string& text) {
  const std::size_t blank = std::min(text.find(' '), text.size());
  const std::string path = text.substr(0, blank);
  if (!path.starts_with('/') || !std::all_of(path.begin(), path.end(), isPathLetter) ||
      blank == text.size()) {
    throw std::invalid_argument("expected a path and a size in bytes, such as \"/one.bin 5000\", " +
                                ("found \"" + text) + '"');
  }
  return {path, readNumber(text.substr(blank + 1), 0, kMostSize)};
}

std::vector<WebFile> readFiles(std::string_view text) {
  std::vector<WebFile> files;
  for (const std::string& part : splitList(text)) {
    const WebFile file = readFile(part);
    const auto same = [&](const WebFile& each) { return each.path == file.path; };
    if (std::any_of(files.begin(), files.end(), same)) {
      throw std::invalid_argument('"' + file.path + "\" stands twice here");
    }
    files.push_back(file);
  }
  return files;
}

}  // namespace

bool setWeb(WebSite& site, std::string_view key, std::string_view value) {
  if (key == "port") {
    site.port = static_cast<std::uint16_t>(readNumber(value, 1, kMostPort));
  } else if (key == "rate") {
    site.rate = readNumber(value, 1, kMostWebRate);
  } else if (key == "stall") {
    site.stall = readStall(value);
  } else if (key == "files") {
    site.files = readFiles(value);
  } else {
    return false;
  }
  return true;
}

std::string webKeys() { return "port, rate, stall, files"; }

}  // namespace veltrin::lab

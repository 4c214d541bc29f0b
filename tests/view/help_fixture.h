// SPDX-License-Identifier: GPL-3.0-or-later
// The help pages as the installation has them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

inline const std::filesystem::path kHelpFolder = SHARE_FOLDER "/help";

// In the order in which their reader goes on from one to the next.
inline const std::vector<std::string> kHelpPages = {
    "index.html",     "symptoms.html", "ping.html",    "trace.html",    "stability.html",
    "outage.html",    "indepth.html",  "mtu.html",     "download.html", "bandwidth.html",
    "protocols.html", "report.html",   "failures.html"};

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

inline std::string readPage(const std::string& page) { return readFile(kHelpFolder / page); }

// A text with each run of blanks and line breaks as one blank, and none at its ends.
inline std::string squeezed(std::string_view text) {
  std::string words;
  for (std::istringstream rest{std::string(text)}; rest;) {
    std::string word;
    if (rest >> word) words += (words.empty() ? "" : " ") + word;
  }
  return words;
}

// What the browser shows of a piece of a page.
inline std::string withoutMarks(const std::string& html) {
  std::string text;
  bool inMark = false;
  for (const char letter : html) {
    if (letter == '<') inMark = true;
    if (!inMark) text += letter;
    if (letter == '>') inMark = false;
  }
  return squeezed(text);
}

// The values of an attribute, in their order.
inline std::vector<std::string> valuesOf(const std::string& page, const std::string& attribute) {
  const std::string mark = " " + attribute + "=\"";
  std::vector<std::string> found;
  for (std::size_t at = page.find(mark); at != std::string::npos; at = page.find(mark, at + 1)) {
    const std::size_t start = at + mark.size();
    found.push_back(page.substr(start, page.find('"', start) - start));
  }
  return found;
}

// What stands between each `begin` and the next `end`.
inline std::vector<std::string> piecesOf(const std::string& page, const std::string& begin,
                                         const std::string& end) {
  std::vector<std::string> found;
  for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
    const std::size_t start = at + begin.size();
    found.push_back(page.substr(start, page.find(end, start) - start));
  }
  return found;
}

inline bool hasId(const std::string& page, const std::string& id) {
  return page.find(" id=\"" + id + "\"") != std::string::npos;
}

// The page that a link names, without the place in it.
inline std::string pageOf(const std::string& link) { return link.substr(0, link.find('#')); }

}  // namespace veltrin

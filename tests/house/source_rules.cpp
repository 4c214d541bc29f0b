// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/house/source_rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <regex>
#include <sstream>
#include <string_view>

namespace veltrin {
namespace {

// A folder of the project and the folders whose headers its sources may include.
struct House {
  std::string_view name;
  std::string_view allowed;  // each between blanks; "*" for all
};

// Longer names stand before the shorter ones that they begin with.
constexpr std::array kHouses{
    House{"text", " text "},
    House{"machine", " text machine "},
    House{"forms", " text forms "},
    House{"platform/qt",
          " text machine forms platform platform/portable platform/linux platform/windows "
          "platform/qt "},
    House{"platform/linux", " text machine forms platform platform/portable platform/linux "},
    House{"platform/windows", " text forms platform platform/portable platform/windows "},
    House{"platform/portable", " text forms platform platform/portable platform/windows "},
    House{"platform", " text forms platform "},
    House{"frame", " text forms platform frame "},
    House{"ping", " text forms platform frame ping "},
    House{"route", " text forms platform frame ping route "},
    House{"mtu", " text forms platform frame ping mtu "},
    House{"download", " text forms platform frame download "},
    House{"monitor", " text forms platform frame controls monitor "},
    House{"sysinfo", " text forms platform frame controls sysinfo "},
    House{"controls", " text forms platform frame controls "},
    House{"toolbox",
          " text forms platform frame ping route mtu download monitor sysinfo controls toolbox "},
    House{"view", "*"},
    House{"console", " text machine console "},
    House{"lab", " text lab "},
    House{"tools/update_endpoint", " tools/update_endpoint "},
};

// Where Qt is at home.
constexpr std::array<std::string_view, 6> kQtPlaces{
    "src/view/", "src/platform/qt/", "src/main.cpp", "tests/printing/", "tests/view/", "bench/"};

// Tables: one long list of facts, which would not be clearer in two files.
constexpr std::array<std::string_view, 0> kTables{};

// What is shipped. Tests and benchmarks may call a shell.
constexpr std::array<std::string_view, 5> kShipped{"src/", "machine/", "console/", "lab/",
                                                   "tools/"};

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

bool mayUseQt(const std::string& path) {
  return std::any_of(kQtPlaces.begin(), kQtPlaces.end(),
                     [&](std::string_view place) { return startsWith(path, place); });
}

bool isShipped(const std::string& path) {
  return std::any_of(kShipped.begin(), kShipped.end(),
                     [&](std::string_view place) { return startsWith(path, place); });
}

bool isTable(const std::string& path) {
  return std::find(kTables.begin(), kTables.end(), path) != kTables.end();
}

// The rule of the house that a path lies in; null when it has none.
const House* findHouse(const std::string& path) {
  const std::string_view inside =
      startsWith(path, "src/") ? std::string_view(path).substr(4) : std::string_view(path);
  for (const House& house : kHouses) {
    const std::string_view rest = inside.substr(std::min(house.name.size(), inside.size()));
    if (startsWith(inside, house.name) && startsWith(rest, "/")) return &house;
  }
  return nullptr;
}

bool mayInclude(const House& house, std::string_view other) {
  if (house.allowed == "*") return true;
  const std::string wanted = " " + std::string(other) + " ";
  return house.allowed.find(wanted) != std::string_view::npos;
}

std::size_t linesOf(const std::string& text) {
  const auto breaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  return text.empty() || text.back() == '\n' ? breaks : breaks + 1;
}

// What is wrong with one include of a file; empty when nothing is.
std::string findingIn(const std::string& path, const std::string& include) {
  if (isQtHeader(include)) {
    return mayUseQt(path) ? "" : path + " includes the Qt header " + include;
  }
  const House* from = findHouse(path);
  const House* to = findHouse(include);
  if (from == nullptr || to == nullptr || mayInclude(*from, to->name)) return "";
  return path + " may not include " + include;
}

// The lines of a source that hold one of the clues, without what stands behind "//" in them:
// expressions are slow. An address in a text loses its end with it, which no rule looks for.
template <std::size_t Count>
std::string linesWith(const std::array<std::string_view, Count>& clues, const std::string& text) {
  std::string code;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const bool holdsOne = std::any_of(clues.begin(), clues.end(), [&](std::string_view clue) {
      return line.find(clue) != std::string::npos;
    });
    if (holdsOne) code += line.substr(0, line.find("//")) + '\n';
  }
  return code;
}

std::string firstOf(const std::regex& pattern, const std::string& code) {
  std::smatch found;
  if (!std::regex_search(code, found, pattern)) return "";
  for (std::size_t group = 1; group < found.size(); ++group) {
    if (found[group].matched) return found[group];
  }
  return found[0];
}

}  // namespace

std::string shellIn(const std::string& text) {
  constexpr std::array<std::string_view, 8> kClues{"system", "popen", "wordexp", "sh\"",
                                                   "sh ",    "cmd",   ".exe",    "omSpec"};
  static const std::regex pattern(
      R"((?:^|[^\w.>])(system|popen|_popen|_wpopen|_wsystem|wordexp)\s*\(\s*["A-Za-z_*&])"
      R"(|"(?:[^"\s]*/)?((?:ba|da|z|k)?sh)[" ])"
      R"(|"[^"\n]*\b((?:cmd|command|powershell)\.(?:exe|com))\b)"
      R"(|"(cmd) ?/|(ComSpec))");
  return firstOf(pattern, linesWith(kClues, text));
}

std::string markupIn(const std::string& text) {
  constexpr std::array<std::string_view, 6> kClues{"Html",     "Markdown",     "RichText",
                                                   "AutoText", "QTextBrowser", "QTextEdit"};
  static const std::regex pattern(
      R"(\b(setHtml|insertHtml|appendHtml|setMarkdown|insertMarkdown|RichText|AutoText|MarkdownText|QTextBrowser|QTextEdit)\b)");
  return firstOf(pattern, linesWith(kClues, text));
}

std::vector<std::string> includesOf(const std::string& text) {
  std::vector<std::string> names;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line[hash] != '#') continue;
    const std::size_t word = line.find_first_not_of(" \t", hash + 1);
    if (word == std::string::npos || line.compare(word, 7, "include") != 0) continue;
    const std::size_t open = line.find_first_of("<\"", word);
    if (open == std::string::npos) continue;
    const std::size_t close = line.find_first_of(">\"", open + 1);
    if (close == std::string::npos) continue;
    names.push_back(line.substr(open + 1, close - open - 1));
  }
  return names;
}

bool isQtHeader(const std::string& name) {
  if (startsWith(name, "ui_") || startsWith(name, "moc_")) return true;
  if (name.size() < 2) return false;
  const bool class_header = name[0] == 'Q' && std::isalpha(static_cast<unsigned char>(name[1]));
  const bool old_header = name[0] == 'q' && name.find('/') == std::string::npos &&
                          name.size() > 2 && name.compare(name.size() - 2, 2, ".h") == 0;
  return class_header || old_header;
}

std::string houseOf(const std::string& path) {
  const House* house = findHouse(path);
  return house == nullptr ? "" : std::string(house->name);
}

std::vector<std::string> findingsIn(const std::string& path, const std::string& text) {
  std::vector<std::string> findings;
  for (const std::string& include : includesOf(text)) {
    const std::string finding = findingIn(path, include);
    if (!finding.empty()) findings.push_back(finding);
  }
  const std::string shell = isShipped(path) ? shellIn(text) : "";
  if (!shell.empty()) findings.push_back(path + " may not start a shell: " + shell);
  const std::string markup = isShipped(path) ? markupIn(text) : "";
  if (!markup.empty()) findings.push_back(path + " may not show marked-up text: " + markup);
  const std::size_t lines = linesOf(text);
  if (lines > kLongestSource && !isTable(path)) {
    findings.push_back(path + " has " + std::to_string(lines) + " lines, more than " +
                       std::to_string(kLongestSource));
  }
  return findings;
}

}  // namespace veltrin

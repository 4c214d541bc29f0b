// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording_text.h"

#include <cctype>
#include <optional>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::string_view kIndent = "  ";

RecordingSection sectionAt(std::size_t line, std::string_view text) {
  const std::size_t end = text.find(' ');
  RecordingSection section;
  section.line = line;
  section.kind = text.substr(0, end);
  section.rest = end == std::string_view::npos ? "" : trimmed(text.substr(end));
  return section;
}

std::optional<std::uint64_t> applied(std::uint64_t value, char operation, std::uint64_t by) {
  switch (operation) {
    case '+':
      return value + by;
    case '-':
      return value - by;
    case '*':
      return value * by;
    case '/':
      return by == 0 ? std::nullopt : std::optional(value / by);
    case '%':
      return by == 0 ? std::nullopt : std::optional(value % by);
    default:
      return std::nullopt;
  }
}

// What stands behind the n of {n...}, applied to the number.
std::uint64_t calculated(std::string_view operations, std::uint64_t value, std::size_t line) {
  for (std::size_t at = 0; at < operations.size();) {
    const char operation = operations[at++];
    const std::size_t start = at;
    while (at < operations.size() &&
           std::isdigit(static_cast<unsigned char>(operations[at])) != 0) {
      ++at;
    }
    const auto result =
        applied(value, operation, numberIn(operations.substr(start, at - start), line));
    if (!result) {
      throw RecordingMistake(line, "cannot calculate {n" + std::string(operations) + "}");
    }
    value = *result;
  }
  return value;
}

Repetition repetitionOf(std::string_view range, std::size_t line) {
  const std::size_t dash = range.find('-');
  if (dash == std::string_view::npos) {
    throw RecordingMistake(line, "no range of numbers: " + std::string(range));
  }
  Repetition repetition;
  repetition.first = numberIn(range.substr(0, dash), line);
  repetition.last = numberIn(range.substr(dash + 1), line);
  repetition.isOne = false;
  if (repetition.last < repetition.first) {
    throw RecordingMistake(line, "a range that ends before it begins: " + std::string(range));
  }
  return repetition;
}

}  // namespace

std::vector<RecordingSection> sectionsOf(std::string_view text) {
  std::vector<RecordingSection> sections;
  LineReader lines(text);
  std::size_t number = 0;
  std::size_t empty = 0;  // lines since the last that was none
  for (std::string_view line; lines.next(line); ++empty) {
    ++number;
    if (line.empty()) {
      continue;
    }
    if (line.starts_with(kIndent)) {
      if (sections.empty()) {
        throw RecordingMistake(number, "an indented line below no section");
      }
      auto& body = sections.back().body;
      for (; !body.empty() && empty > 0; --empty) {
        body.push_back({number - empty, ""});
      }
      body.push_back({number, std::string(line.substr(kIndent.size()))});
    } else if (!line.starts_with("#")) {
      sections.push_back(sectionAt(number, line));
    }
    empty = static_cast<std::size_t>(-1);
  }
  return sections;
}

Repetition takeRepetition(std::string& text, std::size_t line) {
  constexpr std::string_view kWord = " repeated ";
  const std::size_t at = text.rfind(kWord);
  if (at == std::string::npos) {
    return {};
  }
  const std::string range = text.substr(at + kWord.size());
  text = trimmed(std::string_view(text).substr(0, at));
  return repetitionOf(range, line);
}

Repetition takeRange(std::string& path, std::size_t line) {
  const std::size_t open = path.find('{');
  const std::size_t close = path.find('}', open);
  if (open == std::string::npos || close == std::string::npos) {
    return {};
  }
  const Repetition range =
      repetitionOf(std::string_view(path).substr(open + 1, close - open - 1), line);
  path.replace(open, close - open + 1, "{n}");
  return range;
}

std::string filledIn(std::string_view text, const Repetition& repetition, std::uint64_t number,
                     std::size_t line) {
  std::string filled;
  while (!repetition.isOne) {
    const std::size_t open = text.find("{n");
    const std::size_t close = text.find('}', open);
    if (open == std::string_view::npos || close == std::string_view::npos) {
      break;
    }
    filled += text.substr(0, open);
    filled += std::to_string(calculated(text.substr(open + 2, close - open - 2), number, line));
    text.remove_prefix(close + 1);
  }
  return filled.append(text);
}

std::uint64_t numberIn(std::string_view text, std::size_t line) {
  const auto number = text.starts_with("0x") ? wholeNumber(text.substr(2), 16) : wholeNumber(text);
  if (!number) {
    throw RecordingMistake(line, "no number: \"" + std::string(text) + "\"");
  }
  return *number;
}

}  // namespace veltrin

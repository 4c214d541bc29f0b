// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/command_line.h"

#include <cstddef>

namespace veltrin {
namespace {

bool isSeparator(char c) { return c == ' ' || c == '\t'; }

// Walks over a command line and takes its arguments one by one.
class Splitter {
 public:
  explicit Splitter(std::string_view text) : text_(text) {}

  std::string programName() {
    std::string name;
    bool quoted = false;
    while (!atEnd() && (quoted || !isSeparator(here()))) {
      if (here() == '"') {
        quoted = !quoted;
      } else {
        name += here();
      }
      ++position_;
    }
    return name;
  }

  // Whether another argument starts behind the separators.
  bool findArgument() {
    while (!atEnd() && isSeparator(here())) ++position_;
    return !atEnd();
  }

  std::string argument() {
    std::string value;
    bool quoted = false;
    while (!atEnd() && (quoted || !isSeparator(here()))) {
      if (takeBackslashes(value)) continue;
      if (here() != '"') {
        value += here();
        ++position_;
        continue;
      }
      ++position_;
      if (quoted && !atEnd() && here() == '"') {
        value += '"';
        ++position_;
      } else {
        quoted = !quoted;
      }
    }
    return value;
  }

 private:
  bool atEnd() const { return position_ == text_.size(); }
  char here() const { return text_[position_]; }

  // Takes a run of backslashes, and the quote behind it when they make it plain.
  // False when there is no backslash here.
  bool takeBackslashes(std::string& value) {
    std::size_t run = 0;
    while (!atEnd() && here() == '\\') {
      ++run;
      ++position_;
    }
    const bool beforeQuote = !atEnd() && here() == '"';
    value.append(beforeQuote ? run / 2 : run, '\\');
    if (beforeQuote && run % 2 == 1) {
      value += '"';
      ++position_;
    }
    return run > 0;
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

std::vector<std::string> splitCommandLine(std::string_view text) {
  std::vector<std::string> arguments;
  if (text.empty()) return arguments;
  Splitter splitter(text);
  arguments.push_back(splitter.programName());
  while (splitter.findArgument()) arguments.push_back(splitter.argument());
  return arguments;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/options.h"

#include <charconv>
#include <system_error>

namespace veltrin {

namespace {

bool isWrittenAsOption(const std::string& text) {
  return !text.empty() && (text[0] == '-' || text[0] == '/');
}

}  // namespace

bool OptionReader::next() {
  if (!problem_.empty() || at_ >= arguments_.size()) {
    return false;
  }
  ++at_;
  return true;
}

bool OptionReader::isOption() const { return isWrittenAsOption(text()); }

char OptionReader::letter() const { return text().size() == 2 ? text()[1] : '\0'; }

std::optional<std::string> OptionReader::value() {
  if (at_ >= arguments_.size()) {
    mistake("Value must be supplied for option " + text() + ".");
    return std::nullopt;
  }
  return arguments_[at_++];
}

std::optional<std::uint64_t> OptionReader::number(std::uint64_t least, std::uint64_t most) {
  const std::string option = text();
  const std::optional<std::string> digits = value();
  if (!digits) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  const char* end = digits->data() + digits->size();
  const auto read = std::from_chars(digits->data(), end, number);
  if (read.ec != std::errc{} || read.ptr != end || number < least || number > most) {
    mistake("Bad value for option " + option + ", valid range is from " + std::to_string(least) +
            " to " + std::to_string(most) + ".");
    return std::nullopt;
  }
  return number;
}

std::vector<std::string> OptionReader::words() {
  std::vector<std::string> words;
  while (at_ < arguments_.size() && !isWrittenAsOption(arguments_[at_])) {
    words.push_back(arguments_[at_++]);
  }
  if (words.empty()) {
    mistake("Value must be supplied for option " + text() + ".");
  }
  return words;
}

void OptionReader::badOption() {
  mistake("Bad option " + text() + ".");
  wantsUsage_ = true;
}

void OptionReader::badParameter() { mistake("Bad parameter " + text() + "."); }

void OptionReader::mistake(std::string sentence) {
  if (problem_.empty()) {
    problem_ = std::move(sentence);
  }
}

char lowerLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace veltrin

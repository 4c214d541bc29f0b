// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a console tool's arguments by the rules that all of the tools share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veltrin {

// Goes through the arguments one by one. An option is "-" or "/" and one
// character; its value, where it has one, is the argument behind it. The first
// mistake ends the reading and is kept as the sentence to print.
class OptionReader {
 public:
  // The arguments without the program's name.
  explicit OptionReader(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

  // Steps to the next argument. False at the end and after a mistake.
  bool next();

  // Leaves out whatever stands behind the present argument.
  void skipRest() { at_ = arguments_.size(); }

  // The present argument.
  const std::string& text() const { return arguments_[at_ - 1]; }

  // Whether the present argument is written as an option.
  bool isOption() const;

  // The option's character as typed; '\0' for an option of another length.
  char letter() const;

  // The value of the present option. Nothing, and a mistake, when it is missing.
  std::optional<std::string> value();

  // The value of the present option as a whole number from `least` to `most`.
  // Nothing, and a mistake, for any other text.
  std::optional<std::uint64_t> number(std::uint64_t least, std::uint64_t most);

  // Puts such a number into a setting, which keeps its value after a mistake.
  template <typename Number>
  void take(Number& setting, std::uint64_t least, std::uint64_t most) {
    if (const auto taken = number(least, most)) {
      setting = static_cast<Number>(*taken);
    }
  }

  // The words up to the next option or the end, as the value of the present
  // option. Empty, and a mistake, when there is none.
  std::vector<std::string> words();

  // Mistakes of the present argument: no such option; one argument too many; or
  // any other sentence.
  void badOption();
  void badParameter();
  void mistake(std::string sentence);

  // The first mistake as a sentence without a line break; empty when none.
  const std::string& problem() const { return problem_; }

  // Whether the mistake is an unknown option, which the usage is printed after.
  bool wantsUsage() const { return wantsUsage_; }

 private:
  std::vector<std::string> arguments_;
  std::size_t at_ = 0;  // arguments stepped over, the present one included
  std::string problem_;
  bool wantsUsage_ = false;
};

// The letter in lower case when it is an ASCII letter.
char lowerLetter(char letter);

}  // namespace veltrin

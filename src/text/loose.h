// SPDX-License-Identifier: GPL-3.0-or-later
// A value that holds nothing, a number or a text, and turns into what is asked.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <variant>

#include "text/numbers.h"

namespace veltrin {

class Loose {
 public:
  Loose() = default;
  template <class Number>
  requires std::integral<Number> || std::floating_point<Number> Loose(Number number)
      : value_(static_cast<double>(number)) {}
  Loose(std::string text) : value_(std::move(text)) {}
  Loose(std::string_view text) : value_(std::string(text)) {}
  Loose(const char* text) : value_(std::string(text)) {}

  bool isEmpty() const { return std::holds_alternative<std::monostate>(value_); }

  // As a text; nothing is the empty text.
  std::string text() const {
    if (const auto* text = std::get_if<std::string>(&value_)) return *text;
    const auto* number = std::get_if<double>(&value_);
    return number ? toText(*number) : std::string();
  }

  // As a number; nothing is 0. Throws StatementFailed for a text that is none.
  double number() const {
    if (const auto* text = std::get_if<std::string>(&value_)) return toNumber(*text);
    const auto* number = std::get_if<double>(&value_);
    return number ? *number : 0;
  }

  // Compares as texts, so that the number 1 equals the text "1".
  friend bool operator==(const Loose& left, const Loose& right) {
    return left.text() == right.text();
  }

 private:
  std::variant<std::monostate, double, std::string> value_;
};

// The number at the start of the value's text.
template <std::same_as<Loose> Value>
double Val(const Value& value) {
  return Val(value.text());
}

}  // namespace veltrin

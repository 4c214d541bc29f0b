// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string withoutBlanks(std::string_view text) {
  std::string kept;
  for (char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') kept += c;
  }
  return kept;
}

// Digits of base 8 or 16 behind "&O" or "&H".
double prefixedNumber(std::string_view digits, int base) {
  unsigned long long value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  return static_cast<double>(value);
}

// Reads the longest decimal number at the start of `text`, which holds no
// blanks. Returns how many characters belong to it, 0 when it starts with none.
std::size_t decimalNumber(std::string_view text, double& value) {
  std::string number;
  std::size_t at = 0;
  const auto digits = [&] {
    std::size_t count = 0;
    for (; at < text.size() && isDigit(text[at]); ++at, ++count) number += text[at];
    return count;
  };
  if (at < text.size() && (text[at] == '-' || text[at] == '+')) {
    if (text[at] == '-') number += '-';
    ++at;
  }
  std::size_t mantissa = digits();
  if (at < text.size() && text[at] == '.') {
    number += '.';
    ++at;
    mantissa += digits();
  }
  if (mantissa == 0) return 0;
  if (at < text.size() && InStr(1, "eEdD", text.substr(at, 1)) > 0) {
    const std::size_t end = at;
    const std::string before = number;
    number += 'e';
    ++at;
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) number += text[at++];
    if (digits() == 0) {
      number = before;
      at = end;
    }
  }
  const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
  if (read.ec == std::errc::result_out_of_range) {
    const auto exponent = number.find("e-");
    value = exponent == std::string::npos ? HUGE_VAL : 0;
    if (number.front() == '-') value = -value;
  }
  return at;
}

// As std::printf writes it, but with a point whatever the desktop's language: the toolkit sets
// the locale of the whole program.
std::string written(double number, std::chars_format form, std::size_t precision) {
  char text[400];
  const auto end =
      std::to_chars(text, text + sizeof text, number, form, static_cast<int>(precision)).ptr;
  return {text, end};
}

constexpr std::size_t kExactDigits = 15;  // that a number keeps in any case

// A number of at least 0 rounded to so many digits behind its point, halves up. Digits that
// are only how a number such as 2.675 is kept do not count.
double roundedTo(std::size_t digits, double number) {
  if (digits == 0) return std::round(number);
  const double scale = std::pow(10.0, static_cast<double>(digits));
  const std::string scaled = written(number * scale, std::chars_format::general, kExactDigits);
  double exact = number * scale;
  std::from_chars(scaled.data(), scaled.data() + scaled.size(), exact);
  return std::round(exact) / scale;
}

std::string withSeparators(std::string digits) {
  for (auto at = static_cast<std::ptrdiff_t>(digits.size()) - 3; at > 0; at -= 3) {
    digits.insert(static_cast<std::size_t>(at), 1, ',');
  }
  return digits;
}

}  // namespace

double Val(std::string_view text) {
  const std::string compact = withoutBlanks(text);
  if (compact.size() >= 2 && compact[0] == '&') {
    const char prefix = compact[1];
    if (prefix == 'h' || prefix == 'H') return prefixedNumber(compact.substr(2), 16);
    if (prefix == 'o' || prefix == 'O') return prefixedNumber(compact.substr(2), 8);
    return 0;
  }
  double value = 0;
  decimalNumber(compact, value);
  return value;
}

double toNumber(std::string_view text) {
  std::string plain;
  for (char c : Trim(text)) {
    if (c != ',') plain += c;
  }
  double value = 0;
  if (plain.empty() || decimalNumber(plain, value) != plain.size()) {
    throw StatementFailed("The text is no number", kTypeMismatch);
  }
  if (std::isinf(value)) throw StatementFailed("The number is too large", kOverflow);
  return value;
}

std::int32_t toLong(double number) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  const double whole = std::nearbyint(number);
  if (!(whole >= kLowest && whole <= kHighest)) {
    throw StatementFailed("The number is too large", kOverflow);
  }
  return static_cast<std::int32_t>(whole);
}

std::string toText(double number) {
  if (number == 0) return "0";
  return written(number, std::chars_format::general, kExactDigits);
}

std::string Format(double number, std::string_view pattern) {
  const std::string_view whole = pattern.substr(0, pattern.find('.'));
  const std::string_view part = pattern.substr(std::min(whole.size() + 1, pattern.size()));
  const double rounded = roundedTo(part.size(), std::fabs(number));
  std::string digits = written(rounded, std::chars_format::fixed, part.size());
  std::string fraction = digits.substr(std::min(digits.find('.') + 1, digits.size()));
  if (part.empty()) fraction.clear();
  digits.resize(std::min(digits.find('.'), digits.size()));
  if (digits == "0" && whole.find('0') == std::string_view::npos) digits.clear();
  if (whole.find(',') != std::string_view::npos) digits = withSeparators(std::move(digits));
  const std::size_t needed = part.find_last_of('0') + 1;
  while (fraction.size() > needed && fraction.back() == '0') fraction.pop_back();
  std::string text = number < 0 && rounded != 0 ? "-" : "";
  text += digits;
  if (whole.size() < pattern.size()) text += '.' + fraction;
  return text;
}

std::string FormatNumber(double number) { return Format(number, "#,##0"); }

}  // namespace veltrin

#include "text/numbers.h"

#include <charconv>
#include <cmath>
#include <cstdio>
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
  char buffer[32];
  const int length = std::snprintf(buffer, sizeof buffer, "%.15g", number);
  return std::string(buffer, static_cast<std::size_t>(length));
}

std::string Format(double number, std::string_view pattern) {
  const double whole = std::round(number);
  if (whole == 0) return pattern == "0" ? "0" : "";
  char buffer[400];
  const int length = std::snprintf(buffer, sizeof buffer, "%.0f", std::fabs(whole));
  std::string digits(buffer, static_cast<std::size_t>(length));
  if (pattern == "#,###") digits = withSeparators(digits);
  if (whole < 0) digits.insert(digits.begin(), '-');
  return digits;
}

std::string FormatNumber(double number) {
  const std::string digits = Format(number, "#,###");
  return digits.empty() ? "0" : digits;
}

}  // namespace veltrin

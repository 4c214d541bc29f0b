// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/fact_text.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace veltrin {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kBlanks = " \t"sv;
constexpr std::string_view kSurroundings = " \t\r\n\v\f\0"sv;

// The length of the UTF-8 character at the start of a text (RFC 3629 section 4);
// 0 when no character stands there.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
  };
  const auto within = [&](std::size_t at, unsigned least, unsigned most) {
    return byte(at) >= least && byte(at) <= most;
  };
  const unsigned first = byte(0);
  if (first < 0x80) {
    return 1;
  }
  if (first >= 0xC2 && first <= 0xDF) {
    return within(1, 0x80, 0xBF) ? 2 : 0;
  }
  if (first >= 0xE0 && first <= 0xEF) {
    const unsigned least = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned most = first == 0xED ? 0x9F : 0xBF;
    return within(1, least, most) && within(2, 0x80, 0xBF) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const unsigned least = first == 0xF0 ? 0x90 : 0x80;
    const unsigned most = first == 0xF4 ? 0x8F : 0xBF;
    return within(1, least, most) && within(2, 0x80, 0xBF) && within(3, 0x80, 0xBF) ? 4 : 0;
  }
  return 0;
}

bool isControl(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 || byte == 0x7F;
}

char lowered(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

char raised(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool sameName(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return lowered(a) == lowered(b); });
}

// Undoes a shell's quotes and escapes in one word.
std::string unquoted(std::string_view text) {
  std::string value;
  char quote = '\0';
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char character = text[i];
    if (character == '\\' && quote != '\'' && i + 1 < text.size()) {
      value += text[++i];
    } else if (quote != '\0' && character == quote) {
      quote = '\0';
    } else if (quote == '\0' && (character == '"' || character == '\'')) {
      quote = character;
    } else {
      value += character;
    }
  }
  return value;
}

}  // namespace

bool LineReader::next(std::string_view& line) {
  if (rest_.empty()) {
    return false;
  }
  const std::size_t end = rest_.find('\n');
  line = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  if (!line.empty() && line.back() == '\r') {
    line.remove_suffix(1);
  }
  return true;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kSurroundings);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(kSurroundings) - first + 1);
}

std::vector<std::string_view> wordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  std::size_t at = text.find_first_not_of(kBlanks);
  while (at != std::string_view::npos) {
    const std::size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
    words.push_back(text.substr(at, end - at));
    at = text.find_first_not_of(kBlanks, end);
  }
  return words;
}

std::vector<std::string> piecesOf(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find(separator));
    if (!piece.empty()) {
      pieces.emplace_back(piece);
    }
    text.remove_prefix(std::min(piece.size() + 1, text.size()));
  }
  return pieces;
}

std::optional<std::uint64_t> wholeNumber(std::string_view text, int base) {
  std::uint64_t number = 0;
  const char* end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number, base);
  if (read.ec != std::errc{} || read.ptr != end) {
    return std::nullopt;
  }
  return number;
}

std::string printable(std::string_view text) {
  text = trimmed(text);
  std::string value;
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) {
      value += '?';
    } else if (isControl(text[0])) {
      value += ' ';
    } else {
      value += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return std::string(trimmed(value));
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), lowered);
  return lower;
}

std::string upperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), raised);
  return upper;
}

std::string unescaped(std::string_view path) {
  std::string text;
  for (std::size_t i = 0; i < path.size(); ++i) {
    const auto code = path[i] == '\\' && i + 3 < path.size() ? wholeNumber(path.substr(i + 1, 3), 8)
                                                             : std::nullopt;
    if (code && *code <= 0xFF) {
      text += static_cast<char>(*code);
      i += 3;
    } else {
      text += path[i];
    }
  }
  return text;
}

std::string shellValue(std::string_view text, std::string_view key) {
  std::string value;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    line = trimmed(line);
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=') {
      value = unquoted(line.substr(key.size() + 1));
    }
  }
  return value;
}

std::string sectionValue(std::string_view text, std::string_view section, std::string_view key) {
  std::string value;
  bool inside = false;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    line = trimmed(line);
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      inside = sameName(trimmed(line.substr(1, line.size() - 2)), section);
      continue;
    }
    const std::size_t sign = line.find('=');
    if (inside && sign != std::string_view::npos && sameName(trimmed(line.substr(0, sign)), key)) {
      value = trimmed(line.substr(sign + 1));
    }
  }
  return value;
}

std::optional<std::uint64_t> littleEndian(std::string_view bytes, std::size_t at,
                                          std::size_t size) {
  if (at > bytes.size() || size > bytes.size() - at) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  for (std::size_t i = size; i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
  }
  return number;
}

std::string withCommas(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) {
    at -= 3;
    text.insert(at, ",");
  }
  return text;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/json.h"

#include <cctype>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr int kDeepest = 100;

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  Json whole() {
    Json value = next(0);
    if (skipBlanks(); at_ != text_.size()) fail("more than one value");
    return value;
  }

 private:
  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error("no JSON at byte " + std::to_string(at_) + ": " + what);
  }

  void skipBlanks() {
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) != 0) ++at_;
  }

  // Whether this character comes next, behind blanks; takes it then.
  bool take(char character) {
    skipBlanks();
    if (at_ == text_.size() || text_[at_] != character) return false;
    ++at_;
    return true;
  }

  void expect(char character) {
    if (!take(character)) fail(std::string("no ") + character);
  }

  Json next(int depth) {
    if (depth > kDeepest) fail("too deep");
    Json value;
    if (take('{')) {
      readMembers(value, depth);
    } else if (take('[')) {
      readItems(value, depth);
    } else if (take('"')) {
      value.text = string();
    } else {
      value.text = word();
    }
    return value;
  }

  void readMembers(Json& value, int depth) {
    if (take('}')) return;
    do {
      expect('"');
      std::string name = string();
      expect(':');
      value.names.push_back(std::move(name));
      value.items.push_back(next(depth + 1));
    } while (take(','));
    expect('}');
  }

  void readItems(Json& value, int depth) {
    if (take(']')) return;
    do {
      value.items.push_back(next(depth + 1));
    } while (take(','));
    expect(']');
  }

  // A number, or true and false; null is empty.
  std::string word() {
    const std::size_t start = at_;
    while (at_ < text_.size() && (std::isalnum(static_cast<unsigned char>(text_[at_])) != 0 ||
                                  text_[at_] == '-' || text_[at_] == '+' || text_[at_] == '.')) {
      ++at_;
    }
    if (at_ == start) fail("no value");
    const std::string found(text_.substr(start, at_ - start));
    return found == "null" ? "" : found;
  }

  // Behind its first quote.
  std::string string() {
    std::string found;
    while (true) {
      if (at_ == text_.size()) fail("a text without an end");
      const char character = text_[at_++];
      if (character == '"') return found;
      found += character == '\\' ? escaped() : std::string(1, character);
    }
  }

  std::string escaped() {
    if (at_ == text_.size()) fail("a text without an end");
    const char character = text_[at_++];
    switch (character) {
      case 'b':
        return "\b";
      case 'f':
        return "\f";
      case 'n':
        return "\n";
      case 'r':
        return "\r";
      case 't':
        return "\t";
      case 'u':
        return utf8(codePoint());
      default:
        return std::string(1, character);
    }
  }

  // A character beyond 16 bits is written as two halves.
  std::uint32_t codePoint() {
    constexpr std::uint32_t kHigh = 0xD800;
    constexpr std::uint32_t kLow = 0xDC00;
    const std::uint32_t first = unit();
    if (first < kHigh || first >= kLow || text_.substr(at_, 2) != "\\u") return first;
    at_ += 2;
    return 0x10000 + ((first - kHigh) << 10) + (unit() - kLow);
  }

  std::uint32_t unit() {
    const auto number = wholeNumber(text_.substr(at_, 4), 16);
    if (!number || at_ + 4 > text_.size()) fail("no character");
    at_ += 4;
    return static_cast<std::uint32_t>(*number);
  }

  static std::string utf8(std::uint32_t code) {
    const auto byte = [](std::uint32_t value) { return static_cast<char>(value); };
    const auto rest = [&](int shift) { return byte(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xC0 | code >> 6), rest(0)};
    if (code < 0x10000) return {byte(0xE0 | code >> 12), rest(6), rest(0)};
    return {byte(0xF0 | code >> 18), rest(12), rest(6), rest(0)};
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace

const Json& Json::at(std::string_view name) const {
  static const Json kNone;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return items[i];
  }
  return kNone;
}

Json Json::parse(std::string_view text) { return Reader(text).whole(); }

}  // namespace veltrin

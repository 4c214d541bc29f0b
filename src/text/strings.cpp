// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/strings.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "text/statement.h"
#include "text/utf8.h"

namespace veltrin {
namespace {

using Word = std::uint64_t;
constexpr std::size_t kBytesOfWord = sizeof(Word);
constexpr Word kHighBits = 0x8080808080808080;  // set in every byte that is not ASCII
constexpr Word kLowBits = 0x0101010101010101;
constexpr Word kCaseBits = 0x2020202020202020;  // what lower case letters have and others not
constexpr std::size_t kBytesOfBlock = 4 * kBytesOfWord;
constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

void requireNotNegative(std::int64_t length) {
  if (length < 0) throw StatementFailed("Invalid length of a text", kInvalidProcedureCall);
}

void requirePosition(std::int64_t start) {
  if (start < 1) throw StatementFailed("Invalid position in a text", kInvalidProcedureCall);
}

Word wordAt(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, kBytesOfWord);
  return word;
}

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

bool isAsciiWord(const char* bytes) { return (wordAt(bytes) & kHighBits) == 0; }

// Whether four words' bytes are ASCII.
bool isAsciiBlock(const char* bytes) {
  const Word all = wordAt(bytes) | wordAt(bytes + kBytesOfWord) | wordAt(bytes + 2 * kBytesOfWord) |
                   wordAt(bytes + 3 * kBytesOfWord);
  return (all & kHighBits) == 0;
}

// Bytes of the character at the start of a text that is not empty.
std::size_t characterLength(std::string_view text) {
  const Utf8Front front = utf8Front(text);
  return front.kind == Utf8Front::Kind::Character ? front.bytes : 1;
}

// Bytes of the character that ends where a text ends that is not empty.
std::size_t lastCharacterLength(std::string_view text) {
  const std::size_t most = std::min(text.size(), kLongestCharacter);
  for (std::size_t length = 1; length <= most; ++length) {
    if (isContinuation(text[text.size() - length])) continue;
    return characterLength(text.substr(text.size() - length)) == length ? length : 1;
  }
  return 1;
}

// Whether a byte's position, or that of the text's end, lies between two characters.
bool isBetweenCharacters(std::string_view text, std::size_t at) {
  if (at == text.size() || !isContinuation(text[at])) return true;
  const std::size_t most = std::min(at, kLongestCharacter - 1);
  for (std::size_t back = 1; back <= most; ++back) {
    if (isContinuation(text[at - back])) continue;
    return characterLength(text.substr(at - back)) <= back;
  }
  return true;
}

struct Stretch {
  std::size_t bytes;
  std::uint64_t characters;
};

// Bytes at the start of a text that are ASCII, up to `most` of them.
std::size_t asciiFront(std::string_view text, std::uint64_t most) {
  const char* const bytes = text.data();
  const std::size_t end = std::min<std::uint64_t>(text.size(), most);
  std::size_t at = 0;
  while (end - at >= kBytesOfBlock && isAsciiBlock(bytes + at)) at += kBytesOfBlock;
  while (end - at >= kBytesOfWord && isAsciiWord(bytes + at)) at += kBytesOfWord;
  // The last few may be looked at together with what follows them.
  if (text.size() - at >= kBytesOfWord && isAsciiWord(bytes + at)) return end;
  while (at < end && isAscii(bytes[at])) ++at;
  return at;
}

// The same at its end.
std::size_t asciiBack(std::string_view text, std::uint64_t most) {
  const char* const behind = text.data() + text.size();
  const std::size_t end = std::min<std::uint64_t>(text.size(), most);
  std::size_t at = 0;
  while (end - at >= kBytesOfWord && isAsciiWord(behind - at - kBytesOfWord)) at += kBytesOfWord;
  if (text.size() - at >= kBytesOfWord && isAsciiWord(behind - at - kBytesOfWord)) return end;
  while (at < end && isAscii(*(behind - at - 1))) ++at;
  return at;
}

// The first characters of a text, all when there are fewer than `most`.
Stretch front(std::string_view text, std::uint64_t most) {
  std::size_t bytes = asciiFront(text, most);
  std::uint64_t characters = bytes;
  while (characters < most && bytes < text.size()) {
    bytes += characterLength(text.substr(bytes));
    ++characters;
    const std::size_t ascii = asciiFront(text.substr(bytes), most - characters);
    bytes += ascii;
    characters += ascii;
  }
  return {bytes, characters};
}

// Bytes of the last characters of a text, of all when there are fewer than `most`.
std::size_t backBytes(std::string_view text, std::uint64_t most) {
  std::size_t bytes = asciiBack(text, most);
  std::uint64_t characters = bytes;
  while (characters < most && bytes < text.size()) {
    bytes += lastCharacterLength(text.substr(0, text.size() - bytes));
    ++characters;
    const std::size_t ascii = asciiBack(text.substr(0, text.size() - bytes), most - characters);
    bytes += ascii;
    characters += ascii;
  }
  return bytes;
}

std::string_view behind(std::string_view text, std::int64_t characters) {
  return text.substr(front(text, static_cast<std::uint64_t>(characters)).bytes);
}

// A byte to look for in eight bytes at once, in lower and upper case if it is a letter.
struct Sought {
  explicit Sought(char c)
      : bytes(kLowBits * static_cast<unsigned char>(folded(c))),
        caseBits(folded(c) >= 'a' && folded(c) <= 'z' ? kCaseBits : 0) {}

  // Zero in each byte that is the one sought.
  Word differences(const char* text) const { return (wordAt(text) | caseBits) ^ bytes; }

  Word bytes;
  Word caseBits;
};

bool hasZeroByte(Word word) { return ((word - kLowBits) & ~word & kHighBits) != 0; }

// Byte position of the first `wanted`, which is not empty, at or behind another; npos
// when there is none. Eight places at once are passed over at which its first two bytes
// do not stand.
std::size_t findIgnoringCase(std::string_view text, std::string_view wanted, std::size_t from) {
  if (wanted.size() > text.size()) return text.npos;
  const std::size_t second = std::min<std::size_t>(1, wanted.size() - 1);
  const Sought firstByte(wanted[0]);
  const Sought secondByte(wanted[second]);
  const std::size_t end = text.size() - wanted.size() + 1;  // behind the last place
  for (std::size_t at = from; at < end;) {
    const char* const place = text.data() + at;
    const std::size_t places = std::min(end - at, kBytesOfWord);
    const bool wordsFit = text.size() - at >= kBytesOfWord + second;
    at += places;
    if (wordsFit &&
        !hasZeroByte(firstByte.differences(place) | secondByte.differences(place + second))) {
      continue;
    }
    for (std::size_t back = places; back > 0; --back) {
      if (equalIgnoringCase(text.substr(at - back, wanted.size()), wanted)) return at - back;
    }
  }
  return text.npos;
}

}  // namespace

std::string Mid(std::string_view text, std::int64_t start) {
  requirePosition(start);
  return std::string(behind(text, start - 1));
}

std::string Mid(std::string_view text, std::int64_t start, std::int64_t length) {
  requirePosition(start);
  return Left(behind(text, start - 1), length);
}

std::string Left(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  return std::string(text.substr(0, front(text, static_cast<std::uint64_t>(length)).bytes));
}

std::string Right(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  const std::size_t kept = backBytes(text, static_cast<std::uint64_t>(length));
  return std::string(text.substr(text.size() - kept));
}

std::int64_t InStr(std::int64_t start, std::string_view text, std::string_view wanted,
                   Compare compare) {
  requirePosition(start);
  text = behind(text, start - 1);
  if (text.empty()) return 0;
  if (wanted.empty()) return start;
  const auto find = [&](std::size_t from) {
    return compare == Compare::Exact ? text.find(wanted, from)
                                     : findIgnoringCase(text, wanted, from);
  };
  for (std::size_t at = find(0); at != text.npos; at = find(at + 1)) {
    if (!isBetweenCharacters(text, at) || !isBetweenCharacters(text, at + wanted.size())) continue;
    return start + Len(text.substr(0, at));
  }
  return 0;
}

std::int64_t Len(std::string_view text) {
  return static_cast<std::int64_t>(front(text, kAll).characters);
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string LCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), folded);
  return lower;
}

std::string UCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return folded(a) == folded(b); });
}

}  // namespace veltrin

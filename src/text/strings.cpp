#include "text/strings.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "text/statement.h"

namespace veltrin {
namespace {

using Word = std::uint64_t;
constexpr std::size_t kBytesOfWord = sizeof(Word);
constexpr Word kHighBits = 0x8080808080808080;  // set in every byte that is not ASCII
constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

// Bytes of the longest sequence of UTF-8.
constexpr std::size_t kLongestCharacter = 4;

char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

void requireNotNegative(std::int64_t length) {
  if (length < 0) throw StatementFailed("Invalid length of a text", kInvalidProcedureCall);
}

void requirePosition(std::int64_t start) {
  if (start < 1) throw StatementFailed("Invalid position in a text", kInvalidProcedureCall);
}

bool isAsciiWord(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, kBytesOfWord);
  return (word & kHighBits) == 0;
}

// 80 to BF: what follows the first byte of a sequence, and never starts one.
bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Bytes of the character at the start of a text that is not empty. The ranges are
// those of RFC 3629, section 4, which leave out longer forms than needed, halves of
// surrogate pairs and what is above U+10FFFF.
std::size_t characterLength(std::string_view text) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  if (lead < 0xC2 || lead > 0xF4) return 1;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : kLongestCharacter;
  if (text.size() < length) return 1;
  const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (byte(1) < least || byte(1) > most) return 1;
  for (std::size_t at = 2; at < length; ++at) {
    if (!isContinuation(text[at])) return 1;
  }
  return length;
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
  std::size_t bytes = 0;
  std::uint64_t characters = 0;
};

// The first characters of a text, all when there are fewer than `most`.
Stretch front(std::string_view text, std::uint64_t most) {
  Stretch stretch;
  while (stretch.characters < most && stretch.bytes < text.size()) {
    const bool wordFits =
        text.size() - stretch.bytes >= kBytesOfWord && most - stretch.characters >= kBytesOfWord;
    if (wordFits && isAsciiWord(text.data() + stretch.bytes)) {
      stretch.bytes += kBytesOfWord;
      stretch.characters += kBytesOfWord;
    } else {
      stretch.bytes += characterLength(text.substr(stretch.bytes));
      ++stretch.characters;
    }
  }
  return stretch;
}

std::string_view behind(std::string_view text, std::int64_t characters) {
  return text.substr(front(text, static_cast<std::uint64_t>(characters)).bytes);
}

std::size_t findIgnoringCase(std::string_view text, std::string_view wanted, std::size_t from) {
  const auto same = [](char left, char right) { return folded(left) == folded(right); };
  const auto found = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                 wanted.begin(), wanted.end(), same);
  return found == text.end() ? text.npos : static_cast<std::size_t>(found - text.begin());
}

}  // namespace

std::string Mid(std::string_view text, std::int64_t start) {
  requirePosition(start);
  return std::string(behind(text, start - 1));
}

std::string Mid(std::string_view text, std::int64_t start, std::int64_t length) {
  requirePosition(start);
  requireNotNegative(length);
  return Left(behind(text, start - 1), length);
}

std::string Left(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  return std::string(text.substr(0, front(text, static_cast<std::uint64_t>(length)).bytes));
}

std::string Right(std::string_view text, std::int64_t length) {
  requireNotNegative(length);
  std::string_view before = text;
  for (std::int64_t taken = 0; taken < length && !before.empty(); ++taken) {
    before.remove_suffix(lastCharacterLength(before));
  }
  return std::string(text.substr(before.size()));
}

std::int64_t InStr(std::int64_t start, std::string_view text, std::string_view wanted,
                   Compare compare) {
  requirePosition(start);
  text = behind(text, start - 1);
  if (text.empty()) return 0;
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

bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return folded(a) == folded(b); });
}

}  // namespace veltrin

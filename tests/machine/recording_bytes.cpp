// SPDX-License-Identifier: GPL-3.0-or-later
#include "recording_bytes.h"

#include <array>
#include <cctype>
#include <cstdint>

#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::size_t kHeader = 4;  // bytes of type, length and handle

char checksumOf(const std::string& bytes) {
  unsigned sum = 0;
  for (const char byte : bytes) {
    sum += static_cast<unsigned char>(byte);
  }
  return static_cast<char>(256 - sum % 256);
}

void addBytes(std::string& bytes, const RecordingLine& line) {
  std::string_view rest = line.text;
  for (rest = trimmed(rest); !rest.empty() && !rest.starts_with("#"); rest = trimmed(rest)) {
    if (rest.starts_with("\"")) {
      const std::size_t end = rest.find('"', 1);
      if (end == std::string_view::npos) {
        throw RecordingMistake(line.number, "a text that does not end");
      }
      bytes += rest.substr(1, end - 1);
      rest.remove_prefix(end + 1);
      continue;
    }
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(word.size());
    if (word == "checksum") {
      bytes += checksumOf(bytes);
    } else {
      const auto byte = wholeNumber(word, 16);
      if (!byte || word.size() != 2) {
        throw RecordingMistake(line.number, "no byte: " + std::string(word));
      }
      bytes += static_cast<char>(*byte);
    }
  }
}

std::string lowestFirst(std::uint64_t value, std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return bytes;
}

// A structure that grows field by field.
class Structure {
 public:
  void add(const RecordingLine& line) {
    const std::vector<std::string_view> words = wordsOf(line.text);
    if (words.empty()) {
      return;
    }
    if (words.size() == 2 && words[0] == "length") {
      reach(numberIn(words[1], line.number));
    } else if (words.size() < 3) {
      throw RecordingMistake(line.number, "no field of a structure: " + line.text);
    } else {
      // The words stand in the line, so what is behind the second follows it there.
      const auto behind = static_cast<std::size_t>(words[2].data() - line.text.data());
      put(numberIn(words[0], line.number),
          fieldOf(words[1], {line.number, line.text.substr(behind)}), line.number);
    }
  }

  std::string bytes(std::uint64_t type, std::uint64_t handle) const {
    return lowestFirst(type, 1) + lowestFirst(fixed_.size() + kHeader, 1) + lowestFirst(handle, 2) +
           fixed_ + (texts_ == 0 ? std::string(1, '\0') : strings_) + '\0';
  }

 private:
  std::string fieldOf(std::string_view kind, const RecordingLine& value) {
    if (kind == "text") {
      strings_ += std::string(trimmed(value.text)) + '\0';
      return lowestFirst(++texts_, 1);
    }
    if (kind == "bytes") {
      return bytesIn({value});
    }
    struct Size {
      std::string_view kind;
      std::size_t bytes;
    };
    constexpr std::array kSizes{Size{"byte", 1}, Size{"word", 2}, Size{"dword", 4},
                                Size{"qword", 8}};
    for (const Size& size : kSizes) {
      if (size.kind == kind) {
        return lowestFirst(numberIn(wordsOf(value.text).front(), value.number), size.bytes);
      }
    }
    throw RecordingMistake(value.number, "no kind of field: " + std::string(kind));
  }

  void put(std::uint64_t offset, const std::string& field, std::size_t line) {
    if (offset < kHeader || offset + field.size() > 255) {
      throw RecordingMistake(line, "a field outside of its structure");
    }
    reach(offset + field.size());
    fixed_.replace(offset - kHeader, field.size(), field);
  }

  void reach(std::uint64_t length) {
    if (length > fixed_.size() + kHeader) {
      fixed_.resize(length - kHeader);
    }
  }

  std::string fixed_;  // behind the header
  std::string strings_;
  std::size_t texts_ = 0;
};

}  // namespace

std::string bytesIn(const std::vector<RecordingLine>& lines) {
  std::string bytes;
  for (const RecordingLine& line : lines) {
    addBytes(bytes, line);
  }
  return bytes;
}

std::string smbiosStructures(const RecordingSection& section) {
  std::string head = section.rest;
  const Repetition repetition = takeRepetition(head, section.line);
  const std::vector<std::string_view> words = wordsOf(head);
  if (words.size() != 2) {
    throw RecordingMistake(section.line, "a structure has a type and a handle");
  }
  std::string table;
  for (std::uint64_t number = repetition.first; number <= repetition.last; ++number) {
    Structure structure;
    for (const RecordingLine& line : section.body) {
      structure.add({line.number, filledIn(line.text, repetition, number, line.number)});
    }
    table += structure.bytes(numberIn(words[0], section.line),
                             numberIn(words[1], section.line) + number - repetition.first);
  }
  return table;
}

std::string smbiosEnd() { return {'\x7F', '\x04', '\xFF', '\xFE', '\0', '\0'}; }

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a recorded machine: sections of a line each, with indented lines below them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// What somebody wrote that means nothing, at a line counted from 1.
class RecordingMistake : public std::runtime_error {
 public:
  RecordingMistake(std::size_t line, const std::string& what)
      : std::runtime_error(what), line_(line) {}

  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

struct RecordingLine {
  std::size_t number = 0;
  std::string text;
};

struct RecordingSection {
  std::size_t line = 0;
  std::string kind;                 // its first word
  std::string rest;                 // what stands behind it
  std::vector<RecordingLine> body;  // the lines below it, without the two blanks in front
};

// The sections of a text. Lines that begin with "#" are remarks; empty ones part sections, and
// belong to a body when more of it follows. Throws RecordingMistake for a body without a
// section.
std::vector<RecordingSection> sectionsOf(std::string_view text);

// The numbers that a section is to be repeated for. One that is not repeated counts as one
// number, which changes nothing.
struct Repetition {
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  bool isOne = true;  // not repeated
};

// Takes " repeated 0-95" off the end of a text.
Repetition takeRepetition(std::string& text, std::size_t line);

// Takes the range of a path with one, "/sys/cpu/cpu{0-95}/online": the path has {n} there
// afterwards.
Repetition takeRange(std::string& path, std::size_t line);

// A text with the number in the places of {n}. Behind the n stand operations, done from the left
// to the right whatever they are: {n%48/2+1}. A text of a section that is not repeated stays.
std::string filledIn(std::string_view text, const Repetition& repetition, std::uint64_t number,
                     std::size_t line);

// The whole text as a number, "12" or "0x0C". Throws RecordingMistake for any other text.
std::uint64_t numberIn(std::string_view text, std::size_t line);

}  // namespace veltrin

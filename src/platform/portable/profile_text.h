// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a profile file: "[Section]" lines and "Key=Value" lines, read and
// changed in memory so that every other line stays as it is, byte for byte.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// A line ends with CR LF, LF or CR. Blanks around names and values do not count.
// A line whose first character is ';' is a comment; one that starts with '[' and
// has a ']' opens the section of the name between them; any other line with '='
// holds a key; what remains is kept and not understood. Names are compared without
// case. Of sections or keys of the same name the first counts. Bytes of a line
// behind a NUL are not looked at. A byte order mark of UTF-8 may stand in front.
class ProfileText {
 public:
  explicit ProfileText(std::string text = {}) : text_(std::move(text)) {}

  // The whole file as it is to be stored.
  const std::string& text() const { return text_; }

  // Names of all sections in the file's order, those that occur twice twice, the
  // empty name left out.
  std::vector<std::string> sections() const;

  // Names of the keys of a section in the file's order, those that occur twice twice,
  // the empty name left out. No names when there is no such section.
  std::vector<std::string> keys(std::string_view section) const;

  // Whether the section is there, with or without keys.
  bool hasSection(std::string_view section) const;

  // The value of a key without blanks around it and without one pair of equal
  // quotation marks ('..' or "..") around that. Nothing when there is no such key.
  std::optional<std::string> value(std::string_view section, std::string_view key) const;

  // Stores a value as it is: behind the '=' of the line that holds the key, else in
  // a new line behind the section's last key, else in a new section at the end of
  // the file. A value that stands there already, blanks aside, changes nothing.
  void set(std::string_view section, std::string_view key, std::string_view value);

  // Takes the key's line out. Nothing happens when there is none.
  void removeKey(std::string_view section, std::string_view key);

  // Takes out all lines from the section's own to the next section. Nothing happens
  // when there is none.
  void removeSection(std::string_view section);

  // Adds an empty section at the end of the file unless there is one of that name.
  void addSection(std::string_view section);

 private:
  void insertLines(std::size_t position, const std::vector<std::string>& lines);

  std::string text_;
};

}  // namespace veltrin

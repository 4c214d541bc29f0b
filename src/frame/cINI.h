// SPDX-License-Identifier: GPL-3.0-or-later
// One value of a profile file.
#pragma once

#include <cstdint>
#include <string>

#include "platform/profile_store.h"

namespace veltrin {

class cINI {
 public:
  explicit cINI(ProfileStore& store) : store_(store) {}

  std::string Path;                 // full path of the file
  std::string Key;                  // name of the value
  std::string Section;              // name of the section
  std::string Default;              // what a read gives when the key is absent
  std::int32_t LastReturnCode = 0;  // of the last write: 0 when it failed

  // The value, at most 1023 characters of it.
  std::string Value() const;

  // Stores a text under the key, without its NUL characters.
  void setValue(std::string text);

  // Empties the value; its line stays in the file.
  void DeleteValue();

  // Drops the section with all its keys.
  void DeleteSection();

  // The names of the section's keys, each followed by a NUL, at most 255 characters.
  std::string INISection() const;

  // Writes with no key, which drops the section whatever the text holds.
  void setINISection(const std::string& text);

 private:
  void write(const std::optional<std::string>& key, const std::string& text);

  ProfileStore& store_;
};

}  // namespace veltrin

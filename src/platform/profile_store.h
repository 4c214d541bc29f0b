// SPDX-License-Identifier: GPL-3.0-or-later
// Profile files: text files of "[Section]" and "Key=Value" lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace veltrin {

// Reads and writes single values of profile files, with the documented meaning
// of GetPrivateProfileStringA and WritePrivateProfileStringA. Section and key
// names are compared without case. Paths are the program's own, with
// backslashes. Texts are UTF-8; the platform converts at its edge.
class ProfileStore {
 public:
  virtual ~ProfileStore() = default;

  // The value of `key` in `section`, or `fallback` when there is none, at most
  // size - 1 characters of it. Without a key: the key names of the section, each
  // followed by a NUL; without a section: the section names in that form; a list
  // that does not fit is cut so that it ends in two NULs within `size`. What is
  // returned is what the call counts as copied, without the closing NUL.
  virtual std::string read(const std::optional<std::string>& section,
                           const std::optional<std::string>& key, const std::string& fallback,
                           std::size_t size, const std::string& path) = 0;

  // Stores `value` under `key`, in place where the key exists, else as a new
  // last key of the section. No value deletes the key, no key the whole section.
  // The file is made when it is missing and replaced as a whole, so that a
  // failed write leaves the old one. Returns whether it was written.
  virtual bool write(const std::string& section, const std::optional<std::string>& key,
                     const std::optional<std::string>& value, const std::string& path) = 0;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// What udev has found out about a device.
#pragma once

#include <string>
#include <string_view>

#include "machine/file_tree.h"

namespace veltrin {

// The record that udev keeps of one device below /run/udev/data. Without udev it is empty.
class UdevRecord {
 public:
  // `id` is "b" and the numbers of a block device: "b259:2".
  UdevRecord(const FileTree& files, const std::string& id)
      : text_(files.text("/run/udev/data/" + id)) {}

  // A property; empty when the device has none of this name.
  std::string value(std::string_view name) const;

  // The same for one whose name ends in _ENC: its escapes (\x20 for a blank) undone.
  std::string decoded(std::string_view name) const;

 private:
  std::string text_;
};

// Undoes udev's escapes \xHH (two hexadecimal digits).
std::string undoHexEscapes(std::string_view text);

}  // namespace veltrin

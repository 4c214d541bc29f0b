// SPDX-License-Identifier: GPL-3.0-or-later
// The names of devices in the hardware database of udev (hwdb(7)).
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace veltrin {

// Reads the compiled database: a tree of the patterns of device IDs, at whose ends
// the properties stand that a matching device has.
class HardwareDatabase {
 public:
  // `bytes` is the file hwdb.bin; it outlives this. Bytes of another form make an
  // empty database.
  explicit HardwareDatabase(std::string_view bytes);

  // The properties of the device with this ID ("pci:v00008086d..."). Where several
  // patterns match, the one that stands furthest in the sources counts.
  std::map<std::string, std::string> properties(std::string_view id) const;

 private:
  std::string_view bytes_;  // empty for an empty database
};

// Whether a text fits a pattern in which "*" stands for anything, "?" for one
// character, and "[abc]", "[a-c]", "[!a-c]" for one of some (glob(7)).
bool fitsPattern(std::string_view text, std::string_view pattern);

}  // namespace veltrin

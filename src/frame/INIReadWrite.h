// SPDX-License-Identifier: GPL-3.0-or-later
// The two routines through which every window reads and writes settings.
#pragma once

#include <memory>
#include <string>

#include "frame/cINI.h"
#include "text/loose.h"

namespace veltrin {

class INIReadWrite {
 public:
  explicit INIReadWrite(ProfileStore& store) : store_(store) {}

  // Stores a value, turned to text. A file that cannot be written loses it.
  void write(const std::string& file, const std::string& section, const std::string& key,
             const Loose& value);

  // Reads a value; an absent one is the empty text.
  Loose read(const std::string& file, const std::string& section, const std::string& key);

  // The one cINI of the program, made on first use.
  cINI& ini();

 private:
  cINI& at(const std::string& file, const std::string& section, const std::string& key);

  ProfileStore& store_;
  std::unique_ptr<cINI> ini_;
  Loose lastRead_;
};

}  // namespace veltrin

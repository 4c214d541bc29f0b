// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/INIReadWrite.h"

namespace veltrin {

void INIReadWrite::write(const std::string& file, const std::string& section,
                         const std::string& key, const Loose& value) {
  at(file, section, key).setValue(value.text());
}

Loose INIReadWrite::read(const std::string& file, const std::string& section,
                         const std::string& key) {
  lastRead_ = at(file, section, key).Value();
  return lastRead_;
}

cINI& INIReadWrite::ini() {
  if (!ini_) ini_ = std::make_unique<cINI>(store_);
  return *ini_;
}

cINI& INIReadWrite::at(const std::string& file, const std::string& section,
                       const std::string& key) {
  cINI& value = ini();
  value.Path = file;
  value.Section = section;
  value.Key = key;
  return value;
}

}  // namespace veltrin

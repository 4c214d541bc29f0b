// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/cINI.h"

#include <algorithm>

namespace veltrin {
namespace {

constexpr std::size_t kValueSize = 1024;
constexpr std::size_t kSectionSize = 255;

}  // namespace

std::string cINI::Value() const { return store_.read(Section, Key, Default, kValueSize, Path); }

void cINI::setValue(std::string text) {
  std::erase(text, '\0');
  write(Key, text);
}

// An empty text and not the absence of one: the key stays in the file.
void cINI::DeleteValue() { write(Key, ""); }

void cINI::DeleteSection() { write(std::nullopt, "0"); }

std::string cINI::INISection() const {
  return store_.read(Section, std::nullopt, Default, kSectionSize, Path);
}

void cINI::setINISection(const std::string& text) { write(std::nullopt, text); }

void cINI::write(const std::optional<std::string>& key, const std::string& text) {
  LastReturnCode = store_.write(Section, key, text, Path) ? 1 : 0;
}

}  // namespace veltrin

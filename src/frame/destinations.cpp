// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/destinations.h"

#include <utility>

namespace veltrin {
namespace {

// Well-known public hosts behind the installation's own one.
constexpr std::array<const char*, Destinations::kCount - 1> kMoreHosts = {
    "www.debian.org", "www.kernel.org", "www.python.org", "www.mozilla.org"};

}  // namespace

Destinations::Destinations(Program& program, std::string section, std::string keyStart, Boxes boxes)
    : program_(program),
      section_(std::move(section)),
      keyStart_(std::move(keyStart)),
      boxes_(boxes) {}

void Destinations::setDefaults() {
  boxes_[0]->text = program_.installation.ProbeHost;
  for (std::size_t index = 1; index < kCount; ++index) {
    boxes_[index]->text = kMoreHosts[index - 1];
  }
}

void Destinations::clear() {
  for (TextBox* box : boxes_) box->text = "";
}

void Destinations::recall() {
  for (std::size_t index = 0; index < kCount; ++index) {
    const std::string remembered = program_.readSetting(section_, key(index));
    if (!remembered.empty()) boxes_[index]->text = remembered;
  }
}

void Destinations::remember() {
  for (std::size_t index = 0; index < kCount; ++index) {
    program_.writeSetting(section_, key(index), boxes_[index]->text.get());
  }
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a clip: what is read holds together.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/portable/avi_clip.h"

namespace {

void check(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto clip = veltrin::readAvi({reinterpret_cast<const char*>(data), size});
  if (!clip) return 0;
  check(clip->width > 0 && clip->height > 0 && !clip->frames.empty());
  const std::size_t bytes = std::size_t{3} * static_cast<std::size_t>(clip->width) *
                            static_cast<std::size_t>(clip->height);
  for (const auto& picture : clip->pictures) check(picture.size() == bytes);
  for (const std::size_t frame : clip->frames) check(frame < clip->pictures.size());
  return 0;
}

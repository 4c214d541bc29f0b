// SPDX-License-Identifier: GPL-3.0-or-later
// Short clips from files of the AVI form.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace veltrin {

// A silent clip. Every picture holds width * height pixels of 3 bytes (red, green,
// blue), from the topmost row on, without gaps.
struct AviClip {
  int width = 0;  // pixels, 1 to 4096
  int height = 0;
  std::chrono::microseconds frameTime{0};  // how long each frame is shown; 10 ms to 10 s
  std::vector<std::vector<std::uint8_t>> pictures;

  // The pictures in the order in which they are shown; one that stays for several
  // frames stands here several times.
  std::vector<std::size_t> frames;
};

// Reads the first video stream of a file: uncompressed, 24 bits a pixel, in rows from
// the lowest or from the topmost. Broken and cut frames are left out. Nothing when no
// picture can be read.
std::optional<AviClip> readAvi(std::string_view bytes);

}  // namespace veltrin

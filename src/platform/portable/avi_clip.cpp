// SPDX-License-Identifier: GPL-3.0-or-later
// The file is a tree of chunks: four letters of a kind, the size of the body in four
// bytes, the body, and a byte of padding behind an odd one. A "RIFF" and a "LIST" chunk
// hold four more letters and then chunks. Numbers stand with the lowest byte first.
#include "platform/portable/avi_clip.h"

#include <algorithm>
#include <cstdlib>

namespace veltrin {
namespace {

using std::chrono::microseconds;

constexpr std::size_t kChunkHeader = 8;
constexpr std::size_t kKindLength = 4;
constexpr int kLongestSide = 4096;  // pixels
constexpr int kMostLists = 4;       // inside each other
constexpr std::size_t kMostFrames = 100'000;

// The main header "avih" starts with the microseconds of a frame.
constexpr microseconds kShortestFrame{10'000};
constexpr microseconds kLongestFrame{10'000'000};
constexpr microseconds kUsualFrame{100'000};  // where the header names none

// The stream format "strf" is a BITMAPINFOHEADER: places of its members, and their
// values for pictures that are not compressed.
constexpr std::size_t kWidthAt = 4;
constexpr std::size_t kHeightAt = 8;
constexpr std::size_t kBitsAt = 14;
constexpr std::size_t kCompressionAt = 16;
constexpr std::size_t kFormatLength = 40;
constexpr std::uint32_t kBitsPerPixel = 24;
constexpr std::uint32_t kNotCompressed = 0;
constexpr std::size_t kBytesPerPixel = 3;
constexpr std::size_t kRowUnit = 4;  // rows are padded to a multiple of it

struct Chunk {
  std::string_view kind;
  std::string_view body;
};

// The first `length` bytes at `at` as a number; 0 behind the end.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t length) {
  if (at > bytes.size() || bytes.size() - at < length) return 0;
  std::uint32_t value = 0;
  for (std::size_t index = length; index > 0; --index) {
    value = value << 8 | static_cast<std::uint8_t>(bytes[at + index - 1]);
  }
  return value;
}

// Takes one chunk off the front. A body that the file does not hold to its end is cut.
std::optional<Chunk> takeChunk(std::string_view& rest) {
  if (rest.size() < kChunkHeader) return std::nullopt;
  const std::size_t size = number(rest, kKindLength, 4);
  const Chunk chunk{rest.substr(0, kKindLength), rest.substr(kChunkHeader, size)};
  rest.remove_prefix(std::min(rest.size(), kChunkHeader + size + size % 2));
  return chunk;
}

class AviReader {
 public:
  std::optional<AviClip> read(std::string_view bytes) {
    const auto file = takeChunk(bytes);
    if (!file || file->kind != "RIFF" || !file->body.starts_with("AVI ")) return std::nullopt;
    clip_.frameTime = kUsualFrame;
    readList(file->body.substr(kKindLength), 1);
    if (clip_.frames.empty()) return std::nullopt;
    return std::move(clip_);
  }

 private:
  void readList(std::string_view chunks, int depth) {
    while (const auto chunk = takeChunk(chunks)) {
      if (chunk->kind == "LIST") {
        readInnerList(*chunk, depth);
      } else {
        readChunk(*chunk);
      }
    }
  }

  // Each list "strl" describes one more stream.
  void readInnerList(const Chunk& list, int depth) {
    if (depth == kMostLists || list.body.size() < kKindLength) return;
    if (list.body.starts_with("strl")) ++stream_;
    readList(list.body.substr(kKindLength), depth + 1);
  }

  void readChunk(const Chunk& chunk) {
    if (chunk.kind == "avih") {
      readFrameTime(chunk.body);
    } else if (chunk.kind == "strh") {
      isVideo_ = chunk.body.starts_with("vids");
    } else if (chunk.kind == "strf") {
      if (isVideo_ && clip_.width == 0) readFormat(chunk.body);
    } else if (isFrame(chunk.kind)) {
      readFrame(chunk.body);
    }
  }

  void readFrameTime(std::string_view body) {
    const microseconds time(number(body, 0, 4));
    if (time.count() > 0) clip_.frameTime = std::clamp(time, kShortestFrame, kLongestFrame);
  }

  // A height below 0 means rows from the topmost.
  void readFormat(std::string_view body) {
    if (body.size() < kFormatLength || number(body, kBitsAt, 2) != kBitsPerPixel ||
        number(body, kCompressionAt, 4) != kNotCompressed) {
      return;
    }
    const auto width = static_cast<std::int32_t>(number(body, kWidthAt, 4));
    const auto height = static_cast<std::int32_t>(number(body, kHeightAt, 4));
    if (width < 1 || width > kLongestSide || height == 0 || height < -kLongestSide ||
        height > kLongestSide) {
      return;
    }
    clip_.width = width;
    clip_.height = std::abs(height);
    fromTop_ = height < 0;
    shown_ = stream_;
  }

  // Frames are named by the number of their stream and "db" or "dc".
  bool isFrame(std::string_view kind) const {
    if (clip_.width == 0 || (!kind.ends_with("db") && !kind.ends_with("dc"))) return false;
    return kind[0] == static_cast<char>('0' + shown_ / 10) &&
           kind[1] == static_cast<char>('0' + shown_ % 10);
  }

  // An empty frame leaves the picture before it where it is.
  void readFrame(std::string_view body) {
    if (clip_.frames.size() == kMostFrames) return;
    if (body.empty() && !clip_.frames.empty()) {
      clip_.frames.push_back(clip_.frames.back());
      return;
    }
    const std::size_t used = static_cast<std::size_t>(clip_.width) * kBytesPerPixel;
    const std::size_t stride = (used + kRowUnit - 1) / kRowUnit * kRowUnit;
    const auto height = static_cast<std::size_t>(clip_.height);
    if (body.size() < stride * height) return;
    std::vector<std::uint8_t> picture;
    picture.reserve(used * height);
    for (std::size_t row = 0; row < height; ++row) {
      appendRow(picture, body.substr((fromTop_ ? row : height - 1 - row) * stride, used));
    }
    clip_.frames.push_back(clip_.pictures.size());
    clip_.pictures.push_back(std::move(picture));
  }

  // Pixels are stored as blue, green, red.
  static void appendRow(std::vector<std::uint8_t>& picture, std::string_view row) {
    for (std::size_t at = 0; at < row.size(); at += kBytesPerPixel) {
      picture.push_back(static_cast<std::uint8_t>(row[at + 2]));
      picture.push_back(static_cast<std::uint8_t>(row[at + 1]));
      picture.push_back(static_cast<std::uint8_t>(row[at]));
    }
  }

  AviClip clip_;
  int stream_ = -1;  // that is being described
  int shown_ = -1;   // whose pictures are taken
  bool isVideo_ = false;
  bool fromTop_ = false;
};

}  // namespace

std::optional<AviClip> readAvi(std::string_view bytes) { return AviReader().read(bytes); }

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Clips are read to the pixel, and broken files do no harm.
#include "platform/portable/avi_clip.h"

#include <string>

#include "gmock/gmock.h"
#include "gtest/gtest.h"

namespace veltrin {
namespace {

using testing::ElementsAre;

std::string number(std::uint32_t value, int length = 4) {
  std::string bytes;
  for (int index = 0; index < length; ++index) {
    bytes += static_cast<char>(value >> (8 * index) & 0xff);
  }
  return bytes;
}

std::string chunk(const std::string& kind, const std::string& body) {
  return kind + number(static_cast<std::uint32_t>(body.size())) + body +
         std::string(body.size() % 2, '\0');
}

// A clip of pictures of 1 x 2 pixels; each row is 3 bytes and one of padding.
struct Clip {
  std::uint32_t frameTime = 40'000;
  std::int32_t height = 2;
  std::uint32_t bits = 24;
  std::uint32_t compression = 0;
  std::string movie;

  std::string format() const {
    return number(40) + number(1) + number(static_cast<std::uint32_t>(height)) + number(1, 2) +
           number(bits, 2) + number(compression) + std::string(20, '\0');
  }
  std::string bytes() const {
    const std::string stream =
        chunk("strh", "vids" + std::string(44, '\0')) + chunk("strf", format());
    const std::string header =
        chunk("avih", number(frameTime) + std::string(52, '\0')) + chunk("LIST", "strl" + stream);
    return chunk("RIFF", "AVI " + chunk("LIST", "hdrl" + header) + chunk("LIST", "movi" + movie));
  }
};

const std::string kLowerRow = "\x01\x02\x03_";  // blue, green, red
const std::string kUpperRow = "\x04\x05\x06_";

TEST(AviClip, ThePictureStandsUprightInRedGreenBlue) {
  const auto clip = readAvi(Clip{.movie = chunk("00db", kLowerRow + kUpperRow)}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->width, 1);
  EXPECT_EQ(clip->height, 2);
  EXPECT_THAT(clip->pictures[0], ElementsAre(6, 5, 4, 3, 2, 1));
}

TEST(AviClip, ANegativeHeightMeansRowsFromTheTopmost) {
  const auto clip =
      readAvi(Clip{.height = -2, .movie = chunk("00db", kUpperRow + kLowerRow)}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_THAT(clip->pictures[0], ElementsAre(6, 5, 4, 3, 2, 1));
}

TEST(AviClip, FramesAreShownAsLongAsTheHeaderSays) {
  const auto clip = readAvi(Clip{.movie = chunk("00dc", kLowerRow + kUpperRow)}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->frameTime, std::chrono::milliseconds(40));
}

TEST(AviClip, AHeaderWithoutATimeMeansATenthOfASecond) {
  const auto clip =
      readAvi(Clip{.frameTime = 0, .movie = chunk("00dc", kLowerRow + kUpperRow)}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->frameTime, std::chrono::milliseconds(100));
}

TEST(AviClip, AnEmptyFrameShowsThePictureBeforeItOnceMore) {
  const auto clip =
      readAvi(Clip{.movie = chunk("00db", kLowerRow + kUpperRow) + chunk("00db", "")}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->pictures.size(), 1U);
  EXPECT_THAT(clip->frames, ElementsAre(0, 0));
}

TEST(AviClip, AFrameThatIsTooShortIsLeftOut) {
  const auto clip = readAvi(
      Clip{.movie = chunk("00db", kLowerRow) + chunk("00db", kLowerRow + kUpperRow)}.bytes());

  ASSERT_TRUE(clip);
  EXPECT_THAT(clip->frames, ElementsAre(0));
}

TEST(AviClip, FramesOfOtherStreamsAreLeftOut) {
  const auto clip = readAvi(Clip{.movie = chunk("01db", kLowerRow + kUpperRow) +
                                          chunk("00wb", kLowerRow + kUpperRow) +
                                          chunk("00db", kLowerRow + kUpperRow)}
                                .bytes());

  ASSERT_TRUE(clip);
  EXPECT_EQ(clip->frames.size(), 1U);
}

TEST(AviClip, FramesInAnInnerListAreRead) {
  const auto clip =
      readAvi(Clip{.movie = chunk("LIST", "rec " + chunk("00db", kLowerRow + kUpperRow))}.bytes());

  EXPECT_TRUE(clip);
}

TEST(AviClip, ACompressedClipIsNotRead) {
  EXPECT_FALSE(
      readAvi(Clip{.compression = 1, .movie = chunk("00dc", kLowerRow + kUpperRow)}.bytes()));
}

TEST(AviClip, AClipOfAnotherDepthIsNotRead) {
  EXPECT_FALSE(readAvi(Clip{.bits = 32, .movie = chunk("00dc", kLowerRow + kUpperRow)}.bytes()));
}

TEST(AviClip, AClipWithoutFramesIsNotRead) { EXPECT_FALSE(readAvi(Clip{}.bytes())); }

TEST(AviClip, AFileOfAnotherKindIsNotRead) { EXPECT_FALSE(readAvi("MZ and so on")); }

TEST(AviClip, AClipThatIsCutAnywhereIsReadAsFarAsItGoes) {
  const std::string whole = Clip{.movie = chunk("00db", kLowerRow + kUpperRow)}.bytes();
  std::size_t readable = 0;

  for (std::size_t length = 0; length < whole.size(); ++length) {
    readable += readAvi(whole.substr(0, length)) ? 1 : 0;
  }

  EXPECT_EQ(readable, 0U);
}

}  // namespace
}  // namespace veltrin

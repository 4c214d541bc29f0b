// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/sound_cards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;

constexpr const char* kCards =
    " 0 [PCH            ]: HDA-Intel - HDA Intel PCH\n"
    "                      HDA Intel PCH at 0x604a1b8000 irq 158\n"
    "10 [Webcam         ]: USB-Audio - C922 - Pro\n"
    "                      Example C922 at usb-0000:00:14.0-4, high speed\n";

std::vector<std::string> namesIn(const TemporaryTree& tree) {
  std::vector<std::string> names;
  for (const SoundCard& card : soundCards(tree.files())) {
    names.push_back(std::to_string(card.number) + " " + card.name);
  }
  return names;
}

TEST(SoundCards, AreNoneWithoutASoundSystem) {
  const TemporaryTree tree;
  EXPECT_THAT(namesIn(tree), ElementsAre());
}

TEST(SoundCards, AreNamedInTheOrderOfTheirNumbers) {
  const TemporaryTree tree;
  tree.put("/proc/asound/cards", kCards);
  for (const char* entry :
       {"card10", "card2", "card0", "controlC0", "pcmC0D0p", "cardX", "timer"}) {
    tree.put("/sys/class/sound/" + std::string(entry) + "/id", "Short\n");
  }
  EXPECT_THAT(namesIn(tree), ElementsAre("0 HDA Intel PCH", "2 Short", "10 C922 - Pro"));
}

TEST(SoundCards, HaveAFolderOfTheirDevice) {
  const TemporaryTree tree;
  tree.makeFolder("/sys/class/sound/card3");
  ASSERT_EQ(soundCards(tree.files()).size(), 1U);
  EXPECT_EQ(soundCards(tree.files())[0].folder, "/sys/class/sound/card3/device");
  EXPECT_EQ(soundCards(tree.files())[0].name, "");
}

TEST(SoundCards, WithNamesThatAreNoTextHaveQuestionMarks) {
  const TemporaryTree tree;
  tree.put("/proc/asound/cards", " 0 [A  ]: USB-Audio - \xFFmic\n");
  tree.put("/sys/class/sound/card0/id", "A\n");
  tree.put("/sys/class/sound/card1/id", "\xFE\n");
  EXPECT_THAT(namesIn(tree), ElementsAre("0 ?mic", "1 ?"));
}

TEST(SoundCards, TakeNoNameFromAnotherLine) {
  const TemporaryTree tree;
  tree.put("/proc/asound/cards",
           "--- no soundcards ---\n 0 [A]: nothing\n 0 A]: USB - a\nx [A]: USB - a\n"
           " 0 - 0]: x [ - b\n");
  tree.put("/sys/class/sound/card0/id", "Own\n");
  EXPECT_THAT(namesIn(tree), ElementsAre("0 Own"));
}

TEST(SoundCodecs, AreNamedByMakerAndChip) {
  const TemporaryTree tree;
  tree.put("/sys/bus/hdaudio/devices/hdaudioC0D0/vendor_name", "Realtek\n");
  tree.put("/sys/bus/hdaudio/devices/hdaudioC0D0/chip_name", "ALC287\n");
  tree.put("/sys/bus/hdaudio/devices/hdaudioC0D2/vendor_name", "Intel\n");
  EXPECT_THAT(soundCodecs(tree.files()), ElementsAre("Realtek ALC287", "Intel"));
}

}  // namespace
}  // namespace veltrin

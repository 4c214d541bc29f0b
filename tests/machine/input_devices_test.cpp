// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/input_devices.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

constexpr const char* kList = "/proc/bus/input/devices";

constexpr const char* kAtKeyboard =
    "I: Bus=0011 Vendor=0001 Product=0002 Version=ab41\n"
    "N: Name=\"AT Translated Set 2 keyboard\"\n"
    "P: Phys=isa0060/serio0/input0\n"
    "S: Sysfs=/devices/platform/i8042/serio0/input/input3\n"
    "U: Uniq=\n"
    "H: Handlers=sysrq kbd event3 leds \n"
    "B: PROP=0\n"
    "B: EV=120013\n"
    "B: KEY=402000000 3803078f800d001 feffffdfffefffff fffffffffffffffe\n"
    "B: MSC=10\n"
    "B: LED=7\n"
    "\n";

std::vector<InputDevice> read(const std::string& text) {
  const TemporaryTree tree;
  tree.put(kList, text);
  return inputDevices(tree.files());
}

// A device with these abilities, "B:" and on.
InputDevice with(const std::string& abilities) {
  const auto found = read("I: Bus=0003 Vendor=0001 Product=0001 Version=0001\n" + abilities);
  EXPECT_EQ(found.size(), 1U);
  return found.empty() ? InputDevice() : found[0];
}

TEST(AbilitySet, HasTheBitsOfItsWordsTheHighestFirst) {
  const AbilitySet set("8000000000000000 0 3");
  for (const std::size_t number : {0, 1, 191}) EXPECT_TRUE(set.has(number)) << number;
  for (const std::size_t number : {2, 63, 64, 128, 190, 192, 5000}) {
    EXPECT_FALSE(set.has(number)) << number;
  }
}

TEST(AbilitySet, CountsFromTheFirstToTheLast) {
  const AbilitySet set("ff00");
  EXPECT_EQ(set.count(8, 15), 8U);
  EXPECT_EQ(set.count(9, 14), 6U);
  EXPECT_EQ(set.count(15, 20), 1U);
}

TEST(AbilitySet, IsEmptyWithoutNumbers) {
  for (const char* words : {"", "  ", "x", "fffffffffffffffff"}) {
    EXPECT_EQ(AbilitySet(words).count(0, 200), 0U) << words;
  }
}

TEST(AbilitySet, TakesNoMoreWordsThanThereAreKeys) {
  std::string words;
  for (int i = 0; i < 10'000; ++i) words += "ffffffffffffffff ";
  EXPECT_TRUE(AbilitySet(words).has(KEY_MAX));
  EXPECT_FALSE(AbilitySet(words).has(5000));
}

TEST(InputDevices, AreNoneWithoutTheKernelsList) {
  const TemporaryTree tree;
  EXPECT_TRUE(inputDevices(tree.files()).empty());
}

TEST(InputDevices, AreReadWithAllThatIsToldOfThem) {
  const auto found = read(kAtKeyboard);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].bus, 0x11);
  EXPECT_EQ(found[0].vendor, 1);
  EXPECT_EQ(found[0].product, 2);
  EXPECT_EQ(found[0].name, "AT Translated Set 2 keyboard");
  EXPECT_EQ(found[0].folder, "/sys/devices/platform/i8042/serio0/input/input3");
  EXPECT_TRUE(found[0].events.has(EV_REP));
  EXPECT_TRUE(found[0].keys.has(KEY_A));
}

TEST(InputDevices, StandInTheKernelsOrderWithoutThoseThatAProgramMadeUp) {
  const auto found = read(
      "I: Bus=0003 Vendor=0001 Product=0001 Version=0001\nN: Name=\"one\"\n\n"
      "I: Bus=0006 Vendor=0001 Product=0001 Version=0001\nN: Name=\"made up\"\n\n"
      "I: Bus=0019 Vendor=0001 Product=0001 Version=0001\nN: Name=\"two\"\n");
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].name, "one");
  EXPECT_EQ(found[1].name, "two");
}

TEST(InputDevices, KeepQuotesWithinTheirNames) {
  EXPECT_EQ(with("N: Name=\"19\" pad\"\n").name, "19\" pad");
}

TEST(InputDevices, WithNamesThatAreNoTextHaveQuestionMarks) {
  EXPECT_EQ(with("N: Name=\"\xFFpad\x02\"\n").name, "?pad");
}

TEST(InputDevices, WithoutAFolderTellNone) {
  EXPECT_EQ(with("S: Sysfs=/\n").folder, "");
  EXPECT_EQ(with("S: Sysfs=\n").folder, "");
}

TEST(InputDevices, WithAbsurdNumbersTellNone) {
  const auto found = read("I: Bus=10003 Vendor=xyz Product=\nN: Name=\"one\"\n");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].bus, 0);
  EXPECT_EQ(found[0].vendor, 0);
  EXPECT_EQ(found[0].product, 0);
}

TEST(InputDevices, BeginWithTheirNumbers) {
  EXPECT_TRUE(read("N: Name=\"nobody's\"\nB: EV=120013\n\nrubbish\n").empty());
}

TEST(InputDevices, MayBeHundreds) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += kAtKeyboard;
  EXPECT_EQ(read(text).size(), 600U);
}

// --- What they are ---

TEST(Keyboard, HasTheLettersAndRepeats) {
  EXPECT_TRUE(isKeyboard(read(kAtKeyboard).at(0)));
  EXPECT_FALSE(isPointer(read(kAtKeyboard).at(0)));
}

// The letters alone: bits 16 to 25, 30 to 38 and 44 to 50.
constexpr std::uint64_t kLetters = 0x7F07FC3FF0000;

std::string keysWithout(std::uint64_t key) {
  char text[64];
  std::snprintf(text, sizeof text, "B: EV=100003\nB: KEY=%llx\n",
                static_cast<unsigned long long>(kLetters & ~(std::uint64_t{1} << key)));
  return text;
}

TEST(Keyboard, NeedsNothingButLettersAndRepeats) { EXPECT_TRUE(isKeyboard(with(keysWithout(0)))); }

TEST(Keyboard, NeedsEachLetter) {
  for (const int key : {KEY_Q, KEY_P, KEY_A, KEY_L, KEY_Z, KEY_M}) {
    EXPECT_FALSE(isKeyboard(with(keysWithout(static_cast<std::uint64_t>(key))))) << key;
  }
}

TEST(Keyboard, NeedsKeysAndRepeats) {
  EXPECT_FALSE(isKeyboard(with("B: EV=3\nB: KEY=fffffffffffffffe\n")));
  EXPECT_FALSE(isKeyboard(with("B: EV=100001\nB: KEY=fffffffffffffffe\n")));
}

TEST(Pointer, MayBeAMouse) {
  const InputDevice mouse = with("B: PROP=0\nB: EV=17\nB: KEY=1f0000 0 0 0 0\nB: REL=1943\n");
  EXPECT_TRUE(isPointer(mouse));
  EXPECT_FALSE(isKeyboard(mouse));
  EXPECT_EQ(buttonsOf(mouse), 5U);
}

TEST(Pointer, MayBeAMouseWithAllTheButtonsThereAre) {
  EXPECT_EQ(buttonsOf(with("B: EV=17\nB: KEY=fffffffffff8ffff ff0000 0 0 0 0\n")), 8U);
  EXPECT_EQ(buttonsOf(with("B: EV=17\nB: KEY=1000000 0 0 0 0\n")), 0U);
}

TEST(Pointer, MayBeATouchpad) {
  const InputDevice touchpad =
      with("B: PROP=5\nB: EV=b\nB: KEY=e520 10000 0 0 0 0\nB: ABS=660800011000003\n");
  EXPECT_TRUE(isPointer(touchpad));
  EXPECT_EQ(buttonsOf(touchpad), 1U);
}

TEST(Pointer, MayBeATouchpadWithoutButtons) {
  const InputDevice touchpad =
      with("B: PROP=1\nB: EV=b\nB: KEY=e520 0 0 0 0 0\nB: ABS=660800011000003\n");
  EXPECT_TRUE(isPointer(touchpad));
  EXPECT_EQ(buttonsOf(touchpad), 0U);
}

TEST(Pointer, MayBeTheMouseOfAVirtualMachine) {
  EXPECT_TRUE(isPointer(with("B: PROP=0\nB: EV=1f\nB: KEY=70000 0 0 0 0\nB: REL=100\nB: ABS=3\n")));
}

TEST(Pointer, NeedsBothDirections) {
  EXPECT_FALSE(isPointer(with("B: EV=7\nB: KEY=70000 0 0 0 0\nB: REL=1\n")));
  EXPECT_FALSE(isPointer(with("B: EV=7\nB: KEY=70000 0 0 0 0\nB: REL=2\n")));
  EXPECT_FALSE(isPointer(with("B: EV=b\nB: KEY=70000 0 0 0 0\nB: ABS=1\n")));
  EXPECT_FALSE(isPointer(with("B: EV=b\nB: KEY=70000 0 0 0 0\nB: ABS=2\n")));
}

TEST(Pointer, NeedsTheEventsOfItsAbilities) {
  EXPECT_FALSE(isPointer(with("B: EV=5\nB: KEY=70000 0 0 0 0\nB: REL=3\n")));
  EXPECT_FALSE(isPointer(with("B: EV=3\nB: KEY=70000 0 0 0 0\nB: REL=3\n")));
  EXPECT_FALSE(isPointer(with("B: EV=3\nB: KEY=70000 0 0 0 0\nB: ABS=3\n")));
}

TEST(Pointer, NeedsALeftButtonToMove) {
  EXPECT_FALSE(isPointer(with("B: EV=7\nB: KEY=60000 0 0 0 0\nB: REL=3\n")));
}

TEST(Pointer, IsNoTouchScreen) {
  EXPECT_FALSE(isPointer(with("B: PROP=2\nB: EV=b\nB: KEY=400 0 0 0 0 0\nB: ABS=3\n")));
  EXPECT_FALSE(isPointer(with("B: PROP=2\nB: EV=b\nB: KEY=420 10000 0 0 0 0\nB: ABS=3\n")));
  EXPECT_FALSE(isPointer(with("B: PROP=0\nB: EV=b\nB: KEY=400 0 0 0 0 0\nB: ABS=3\n")));
}

TEST(Pointer, IsNoPen) {
  EXPECT_FALSE(isPointer(with("B: PROP=1\nB: EV=b\nB: KEY=401 10000 0 0 0 0\nB: ABS=3\n")));
}

TEST(Pointer, IsNoJoystick) {
  EXPECT_FALSE(
      isPointer(with("B: PROP=0\nB: EV=b\nB: KEY=7cdb000000000000 0 0 0 0\nB: ABS=3003f\n")));
}

TEST(OtherDevices, AreNeitherKeyboardNorPointer) {
  for (const char* abilities : {
           "B: PROP=0\nB: EV=3\nB: KEY=10000000000000 0\n",                    // power button
           "B: PROP=0\nB: EV=21\nB: SW=1\n",                                   // lid
           "B: PROP=0\nB: EV=3\nB: KEY=3e000b00000000 0 0 0\n",                // video bus
           "B: PROP=0\nB: EV=40001\nB: SND=6\n",                               // speaker
           "B: PROP=0\nB: EV=120013\nB: KEY=10000 38000000000000 3fc0c000\n",  // number pad
       }) {
    EXPECT_FALSE(isKeyboard(with(abilities))) << abilities;
    EXPECT_FALSE(isPointer(with(abilities))) << abilities;
  }
}

}  // namespace
}  // namespace veltrin

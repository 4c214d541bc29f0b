// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/windows_keys.h"

#include <algorithm>
#include <array>

namespace veltrin {
namespace {

struct Key {
  int key;
  std::int16_t code;
};

constexpr std::array kKeys{
    Key{Qt::Key_Backspace, 0x08}, Key{Qt::Key_Tab, 0x09},       Key{Qt::Key_Backtab, 0x09},
    Key{Qt::Key_Return, 0x0D},    Key{Qt::Key_Enter, 0x0D},     Key{Qt::Key_Shift, 0x10},
    Key{Qt::Key_Control, 0x11},   Key{Qt::Key_Alt, 0x12},       Key{Qt::Key_AltGr, 0x12},
    Key{Qt::Key_Pause, 0x13},     Key{Qt::Key_CapsLock, 0x14},  Key{Qt::Key_Escape, 0x1B},
    Key{Qt::Key_Space, 0x20},     Key{Qt::Key_PageUp, 0x21},    Key{Qt::Key_PageDown, 0x22},
    Key{Qt::Key_End, 0x23},       Key{Qt::Key_Home, 0x24},      Key{Qt::Key_Left, 0x25},
    Key{Qt::Key_Up, 0x26},        Key{Qt::Key_Right, 0x27},     Key{Qt::Key_Down, 0x28},
    Key{Qt::Key_Print, 0x2C},     Key{Qt::Key_Insert, 0x2D},    Key{Qt::Key_Delete, 0x2E},
    Key{Qt::Key_Meta, 0x5B},      Key{Qt::Key_Menu, 0x5D},      Key{Qt::Key_Asterisk, 0x6A},
    Key{Qt::Key_Plus, 0x6B},      Key{Qt::Key_Minus, 0x6D},     Key{Qt::Key_Slash, 0x6F},
    Key{Qt::Key_NumLock, 0x90},   Key{Qt::Key_ScrollLock, 0x91}};

constexpr std::int16_t kNumberPad0 = 0x60;
constexpr std::int16_t kF1 = 0x70;
constexpr int kLastCharacter = 0xFF;

}  // namespace

// Letters and digits have the numbers of their characters.
std::int16_t keyCodeOf(const QKeyEvent& key) {
  const int number = key.key();
  const bool isDigit = number >= Qt::Key_0 && number <= Qt::Key_9;
  if (isDigit && (key.modifiers() & Qt::KeypadModifier)) {
    return static_cast<std::int16_t>(kNumberPad0 + number - Qt::Key_0);
  }
  if (isDigit || (number >= Qt::Key_A && number <= Qt::Key_Z)) {
    return static_cast<std::int16_t>(number);
  }
  if (number >= Qt::Key_F1 && number <= Qt::Key_F24) {
    return static_cast<std::int16_t>(kF1 + number - Qt::Key_F1);
  }
  const auto* known = std::find_if(kKeys.begin(), kKeys.end(),
                                   [number](const Key& each) { return each.key == number; });
  return known == kKeys.end() ? std::int16_t{0} : known->code;
}

std::int16_t shiftOf(const QKeyEvent& key) {
  const Qt::KeyboardModifiers held = key.modifiers();
  return static_cast<std::int16_t>((held & Qt::ShiftModifier ? 1 : 0) +
                                   (held & Qt::ControlModifier ? 2 : 0) +
                                   (held & Qt::AltModifier ? 4 : 0));
}

std::int16_t characterOf(const QKeyEvent& key) {
  if (key.text().isEmpty()) return 0;
  const int number = key.text().at(0).unicode();
  return static_cast<std::int16_t>(number <= kLastCharacter ? number : 0);
}

}  // namespace veltrin

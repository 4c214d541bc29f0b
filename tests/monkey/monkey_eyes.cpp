// SPDX-License-Identifier: GPL-3.0-or-later
// What the random user sees, in one number.
#include <cstdint>

#include "controls/LVListBox.h"
#include "controls/bkCProg.h"
#include "forms/option_button.h"
#include "forms/picture_box.h"
#include "monkey/monkey.h"
#include "text/strings.h"

namespace veltrin {
namespace {

// Of a text that grows and grows, the last bytes tell one state from another.
constexpr std::size_t kLastBytes = 300;

constexpr std::uint64_t kDigestPrime = 1099511628211ULL;  // FNV-1a

}  // namespace

void Monkey::lookAt(const Form& form) {
  remember(form.name() + form.caption.get());
  for (const Control* control : form.controls()) {
    if (const auto* label = dynamic_cast<const Label*>(control)) remember(label->caption);
    if (const auto* text = dynamic_cast<const TextBox*>(control)) {
      remember(std::to_string(text->text.get().size()));
      remember(Right(text->text.get(), kLastBytes));
    }
    if (const auto* button = dynamic_cast<const CommandButton*>(control)) {
      remember(button->caption.get() + (button->enabled ? "+" : "-"));
    }
    if (const auto* list = dynamic_cast<const LVListBox*>(control)) {
      remember(std::to_string(list->ListCount()) + " " + std::to_string(list->ListIndex()));
    }
    if (const auto* option = dynamic_cast<const OptionButton*>(control)) {
      remember(option->value() ? "+" : "-");
    }
    if (const auto* dial = dynamic_cast<const bkCProg*>(control)) {
      remember(std::to_string(dial->Value) + (dial->visible ? "+" : "-"));
    }
    if (const auto* picture = dynamic_cast<const PictureBox*>(control)) {
      for (const Polyline& line : picture->lines()) {
        remember(std::to_string(line.points.back().y) + (picture->visible ? "+" : "-"));
      }
    }
  }
}

void Monkey::remember(const std::string& seen) {
  for (const char character : seen) {
    result_.digest ^= static_cast<unsigned char>(character);
    result_.digest *= kDigestPrime;
  }
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/update_endpoint/dialogue.h"

namespace veltrin::endpoint {
namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

bool isVersion(std::string_view text) {
  return text.size() == kVersionLength && isDigit(text[0]) && text[1] == '.' && isDigit(text[2]) &&
         isDigit(text[3]);
}

std::string answerTo(const Address& caller, std::string_view version) {
  return std::string(version) + caller.text();
}

}  // namespace veltrin::endpoint

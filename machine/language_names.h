// SPDX-License-Identifier: GPL-3.0-or-later
// English names of languages.
#pragma once

#include <string_view>

namespace veltrin {

// The name of a language by its code of two small letters (ISO 639-1), or of three
// for some that have no such code; empty for any other text.
std::string_view languageName(std::string_view code);

}  // namespace veltrin

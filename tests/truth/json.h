// SPDX-License-Identifier: GPL-3.0-or-later
// A text in JSON, as tools print it (RFC 8259).
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltrin {

// A value: a text, a number or a word as they stand, or what is inside of an array or an object.
struct Json {
  std::string text;                // of null, empty
  std::vector<Json> items;         // of an array, or the values of an object
  std::vector<std::string> names;  // of an object's values, in their order

  // A member of an object; an empty value when there is none.
  const Json& at(std::string_view name) const;

  // Reads a whole text. Throws std::runtime_error for one that is no JSON.
  static Json parse(std::string_view text);
};

}  // namespace veltrin

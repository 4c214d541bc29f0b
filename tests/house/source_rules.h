// SPDX-License-Identifier: GPL-3.0-or-later
// The rules that the project's sources keep: who includes whom, and their length.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace veltrin {

// The longest that a source may be, in lines. More is a sign of two things in one
// file.
inline constexpr std::size_t kLongestSource = 500;

// What a source's include lines name, without quotes and brackets, in order.
std::vector<std::string> includesOf(const std::string& text);

// Whether an included name is a header of Qt, or one that Qt's tools make.
bool isQtHeader(const std::string& name);

// The house that a path lies in: the longest folder that has a rule of its own
// ("platform/linux" for "src/platform/linux/linux_clock.h"). `path` is relative to
// the project's folder, or the name of an include. Empty for what has no rule.
std::string houseOf(const std::string& path);

// The first call in a source that would hand a text to a shell, or the name of a shell that it
// holds: "system", "popen", "sh". Empty when there is none. Remarks do not count.
std::string shellIn(const std::string& text);

// The first word in a source by which a widget would read a text as marked-up: "setHtml",
// "RichText". Empty when there is none. Remarks do not count.
std::string markupIn(const std::string& text);

// What is wrong with a source, one sentence for each finding. `path` is relative
// to the project's folder and has slashes.
std::vector<std::string> findingsIn(const std::string& path, const std::string& text);

}  // namespace veltrin

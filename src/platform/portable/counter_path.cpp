// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/counter_path.h"

namespace veltrin {
namespace {

// Takes the object and its instance from "Object(instance)". False for another form.
bool takeObject(std::string_view text, CounterPath& path) {
  const auto open = text.find('(');
  if (open != std::string_view::npos) {
    if (text.back() != ')') return false;
    path.instance = text.substr(open + 1, text.size() - open - 2);
    text = text.substr(0, open);
  }
  path.object = text;
  return !path.object.empty();
}

}  // namespace

std::optional<CounterPath> splitCounterPath(std::string_view path) {
  constexpr std::string_view kBeforeMachine = "\\\\";
  CounterPath parts;
  if (path.starts_with(kBeforeMachine)) {
    path.remove_prefix(kBeforeMachine.size());
    const auto end = path.find('\\');
    if (end == std::string_view::npos) return std::nullopt;
    parts.machine = path.substr(0, end);
    path.remove_prefix(end);
  }
  if (!path.starts_with('\\')) return std::nullopt;
  path.remove_prefix(1);
  const auto end = path.rfind('\\');
  if (end == std::string_view::npos || !takeObject(path.substr(0, end), parts)) {
    return std::nullopt;
  }
  parts.counter = path.substr(end + 1);
  if (parts.counter.empty()) return std::nullopt;
  return parts;
}

}  // namespace veltrin

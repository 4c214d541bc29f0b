// What a class of WMI answers, in a form in which a test compares it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/wmi_classes.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {

inline WmiSources sourcesOf(const TemporaryTree& tree) {
  return {tree.files(), std::make_shared<FakeMachine>(), nullptr};
}

// One property of each object; "null" where it is null.
inline std::vector<std::string> answered(const WmiAnswer& answer, const std::string& property) {
  std::vector<std::string> texts;
  for (const WmiObject& object : answer) {
    const WmiValue& value = object.value(property);
    texts.push_back(value.isNull() ? "null" : value.text());
  }
  return texts;
}

}  // namespace veltrin

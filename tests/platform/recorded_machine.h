// A machine that a test makes up, asked in the words of WMI.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/linux_wmi.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {

class RecordedMachine {
 public:
  RecordedMachine() { machine->kernelFacts.machine = "x86_64"; }

  // All objects of a class.
  std::vector<WmiObject> all(const std::string& name) const {
    LinuxWmi wmi({tree.files(), machine, nullptr});
    const auto objects =
        wmi.connect("winmgmts:\\\\.\\root\\cimv2")->ExecQuery("Select * from " + name, 48);
    std::vector<WmiObject> all;
    while (auto object = objects->next()) {
      all.push_back(std::move(*object));
    }
    return all;
  }

  // The texts of one property in all objects, "null" for a null, and the elements of an array
  // with a blank between them in brackets.
  std::vector<std::string> values(const std::string& name, const std::string& property) const {
    std::vector<std::string> texts;
    for (const WmiObject& object : all(name)) {
      texts.push_back(textOf(object.value(property)));
    }
    return texts;
  }

  // All properties of the first object.
  std::map<std::string, std::string> properties(const std::string& name) const {
    std::map<std::string, std::string> texts;
    for (const WmiObject& object : all(name)) {
      for (const auto& [property, value] : object.properties) {
        texts.emplace(property, textOf(value));
      }
    }
    return texts;
  }

  static std::string textOf(const WmiValue& value) {
    if (value.isNull()) {
      return "null";
    }
    if (!value.isArray()) {
      return value.text();
    }
    std::string text = "[";
    for (const Loose& element : value.elements()) {
      text += (text.size() > 1 ? " " : "") + element.text();
    }
    return text + "]";
  }

  TemporaryTree tree;
  std::shared_ptr<FakeMachine> machine = std::make_shared<FakeMachine>();
};

}  // namespace veltrin

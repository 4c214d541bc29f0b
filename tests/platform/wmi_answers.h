// SPDX-License-Identifier: GPL-3.0-or-later
// What a Linux machine that a test makes up answers in the words of WMI, in forms in which a test
// compares it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/linux_wmi.h"
#include "platform/linux/wmi_classes.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {

// Sources of a machine of which nothing but its files matters.
inline WmiSources sourcesOf(const TemporaryTree& tree) {
  return {tree.files(), std::make_shared<FakeMachine>(), nullptr};
}

// The objects of a class, by the query that the report asks with.
inline WmiAnswer wmiAnswer(const WmiSources& sources, const std::string& name) {
  LinuxWmi wmi(sources);
  const auto objects =
      wmi.connect("winmgmts:\\\\.\\root\\cimv2")->ExecQuery("Select * from " + name, 48);
  WmiAnswer answer;
  while (auto object = objects->next()) {
    answer.push_back(std::move(*object));
  }
  return answer;
}

inline WmiAnswer wmiAnswer(const FileTree& files, const FakeMachine& machine,
                           const std::string& name) {
  return wmiAnswer({files, std::make_shared<FakeMachine>(machine), nullptr}, name);
}

// "null" for a null, and the elements of an array with a blank between them in brackets.
inline std::string textOf(const WmiValue& value) {
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

// One property of each object.
inline std::vector<std::string> answered(const WmiAnswer& answer, const std::string& property) {
  std::vector<std::string> texts;
  for (const WmiObject& object : answer) {
    texts.push_back(textOf(object.value(property)));
  }
  return texts;
}

// "Caption=Text;Name=null;" of all that an object tells, by the names' order.
inline std::string wmiText(const WmiObject& object) {
  std::string text;
  for (const auto& [name, value] : object.properties) {
    text += name + "=" + textOf(value) + ";";
  }
  return text;
}

inline std::vector<std::string> wmiTexts(const FileTree& files, const FakeMachine& machine,
                                         const std::string& name) {
  std::vector<std::string> texts;
  for (const WmiObject& object : wmiAnswer(files, machine, name)) {
    texts.push_back(wmiText(object));
  }
  return texts;
}

// A machine with its files, to be made up and asked.
class AskedMachine {
 public:
  AskedMachine() { machine->kernelFacts.machine = "x86_64"; }

  // All objects of a class.
  WmiAnswer all(const std::string& name) const {
    return wmiAnswer({tree.files(), machine, nullptr}, name);
  }

  // One property of each.
  std::vector<std::string> values(const std::string& name, const std::string& property) const {
    return answered(all(name), property);
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

  TemporaryTree tree;
  std::shared_ptr<FakeMachine> machine = std::make_shared<FakeMachine>();
};

}  // namespace veltrin

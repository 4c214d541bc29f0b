// Whole answers of a made-up machine, by the query that the report asks with.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/linux_wmi.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {

// The objects of a class.
inline std::vector<WmiObject> wmiAnswer(const FileTree& files, const FakeMachine& machine,
                                        const std::string& wanted) {
  LinuxWmi wmi({files, std::make_shared<FakeMachine>(machine), nullptr});
  const auto objects =
      wmi.connect("winmgmts:\\\\.\\root\\cimv2")->ExecQuery("Select * from " + wanted, 48);
  std::vector<WmiObject> answer;
  while (auto object = objects->next()) {
    answer.push_back(std::move(*object));
  }
  return answer;
}

// "Caption=Text;Name=null;" of all that an object tells, by the names' order.
inline std::string wmiText(const WmiObject& object) {
  std::string text;
  for (const auto& [name, value] : object.properties) {
    text += name + "=" + (value.isNull() ? "null" : value.text()) + ";";
  }
  return text;
}

inline std::vector<std::string> wmiTexts(const FileTree& files, const FakeMachine& machine,
                                         const std::string& wanted) {
  std::vector<std::string> texts;
  for (const WmiObject& object : wmiAnswer(files, machine, wanted)) {
    texts.push_back(wmiText(object));
  }
  return texts;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The tools of this machine, and the program's own answers about it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/fact_text.h"
#include "platform/wmi.h"
#include "truth/json.h"

namespace veltrin {

// What a command of the shell prints, in English; nothing when its tool is not installed, or fails.
std::optional<std::string> printedBy(const std::string& command);

// The same from a tool that prints JSON.
std::optional<Json> jsonOf(const std::string& command);

std::vector<std::string> linesIn(std::string_view text);

// A section of what inxi tells ("CPU", "Drives"): names and values in their order. A name stands
// there once for each thing that has it. Nothing when the tool is not installed.
class InxiSection {
 public:
  static std::optional<InxiSection> of(const std::string& name);

  // The values of a name; those that the tool does not know are left out.
  std::vector<std::string> values(const std::string& name) const;

  // The first of them, empty when there is none.
  std::string value(const std::string& name) const;

  // The names of the devices of a section, without those on USB unless they are wanted.
  std::vector<std::string> devices(bool withUsb) const;

 private:
  std::vector<std::pair<std::string, std::string>> facts_;
};

// What the program's window asks of a class; fails the test when the class is not there.
std::vector<WmiObject> objectsOf(const std::string& name);

// A property as a text, empty when it is null; fails the test when the object has none.
std::string textOf(const WmiObject& object, const std::string& property);

// A property of all objects that have it.
std::vector<std::string> textsOf(const std::vector<WmiObject>& objects,
                                 const std::string& property);

// The value of a line of the tool that tells of the machine ("OS Name").
std::string summaryOf(const std::string& label);

// The whole text of that tool.
const std::string& summary();

}  // namespace veltrin

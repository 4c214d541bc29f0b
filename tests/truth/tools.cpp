// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth/tools.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>

#include "console/sysinfo/systeminfo.h"
#include "machine/linux_machine.h"
#include "platform/linux/linux_wmi.h"

namespace veltrin {
namespace {

class KeptOutput : public Output {
 public:
  bool write(std::string_view text) override {
    kept += text;
    return true;
  }
  void letReaderCatchUp() override {}

  std::string kept;
};

// The keys of inxi are "003#1#2#model": the place among the others, two numbers for the looks,
// and the name.
struct Fact {
  std::string place;
  std::string name;
  std::string value;
};

Fact factOf(const std::string& key, const std::string& value) {
  const std::size_t end = key.rfind('#');
  return {key.substr(0, key.find('#')), key.substr(end == std::string::npos ? 0 : end + 1), value};
}

void addFacts(const Json& row, std::vector<Fact>& facts) {
  for (std::size_t i = 0; i < row.names.size(); ++i) {
    facts.push_back(factOf(row.names[i], row.items[i].text));
  }
}

// inxi asks whom it prints for; without a terminal it takes itself for part of a chat.
const std::optional<Json>& inxi() {
  static const std::optional<Json> kOutput =
      jsonOf("inxi -Fxxx --tty -c0 --output json --output-file print");
  return kOutput;
}

}  // namespace

std::optional<std::string> printedBy(const std::string& command) {
  FILE* tool = popen(("LC_ALL=C " + command + " 2>/dev/null </dev/null").c_str(), "r");
  if (tool == nullptr) return std::nullopt;
  std::string text;
  std::array<char, 65536> piece{};
  for (std::size_t count = 0; (count = fread(piece.data(), 1, piece.size(), tool)) > 0;) {
    text.append(piece.data(), count);
  }
  return pclose(tool) == 0 ? std::optional(text) : std::nullopt;
}

std::optional<Json> jsonOf(const std::string& command) {
  const auto text = printedBy(command);
  return text ? std::optional(Json::parse(*text)) : std::nullopt;
}

std::vector<std::string> linesIn(std::string_view text) {
  std::vector<std::string> lines;
  LineReader reader(text);
  for (std::string_view line; reader.next(line);) lines.emplace_back(line);
  return lines;
}

std::optional<InxiSection> InxiSection::of(const std::string& name) {
  if (!inxi()) return std::nullopt;
  std::vector<Fact> facts;
  for (const Json& section : inxi()->items) {
    for (std::size_t i = 0; i < section.names.size(); ++i) {
      if (factOf(section.names[i], "").name != name) continue;
      for (const Json& row : section.items[i].items) addFacts(row, facts);
    }
  }
  std::sort(facts.begin(), facts.end(),
            [](const Fact& left, const Fact& right) { return left.place < right.place; });
  InxiSection section;
  for (const Fact& fact : facts) section.facts_.emplace_back(fact.name, fact.value);
  return section;
}

std::vector<std::string> InxiSection::values(const std::string& name) const {
  std::vector<std::string> values;
  for (const auto& [each, value] : facts_) {
    if (each == name && !value.empty() && value != "N/A") values.push_back(value);
  }
  return values;
}

std::string InxiSection::value(const std::string& name) const {
  const std::vector<std::string> all = values(name);
  return all.empty() ? "" : all.front();
}

// What belongs to a device stands behind it.
std::vector<std::string> InxiSection::devices(bool withUsb) const {
  std::vector<std::string> devices;
  for (const auto& [name, value] : facts_) {
    if (name == "Device") devices.push_back(value);
    if (name == "type" && value == "USB" && !withUsb && !devices.empty()) devices.pop_back();
  }
  return devices;
}

std::vector<WmiObject> objectsOf(const std::string& name) {
  LinuxWmi wmi(
      {FileTree(), std::make_shared<LinuxMachine>(), [] { return std::vector<PrinterFacts>(); }});
  std::vector<WmiObject> objects;
  try {
    const auto answer =
        wmi.connect("winmgmts:\\\\.\\root\\cimv2")
            ->ExecQuery("Select * from " + name, kWmiReturnImmediately | kWmiForwardOnly);
    while (auto object = answer->next()) objects.push_back(std::move(*object));
  } catch (const StatementFailed& failure) {
    ADD_FAILURE() << name << ": " << failure.what();
  }
  return objects;
}

std::string textOf(const WmiObject& object, const std::string& property) {
  const auto found = object.properties.find(property);
  if (found == object.properties.end()) {
    ADD_FAILURE() << "an object without " << property;
    return {};
  }
  return found->second.text();
}

std::vector<std::string> textsOf(const std::vector<WmiObject>& objects,
                                 const std::string& property) {
  std::vector<std::string> texts;
  for (const WmiObject& object : objects) {
    if (std::string text = textOf(object, property); !text.empty()) texts.push_back(text);
  }
  return texts;
}

const std::string& summary() {
  static const std::string kText = [] {
    const FileTree files;
    const LinuxMachine machine;
    KeptOutput output;
    EXPECT_EQ(SystemInfo(files, machine, output).run({}), kSystemInfoTold);
    return output.kept;
  }();
  return kText;
}

std::string summaryOf(const std::string& label) {
  for (const std::string& line : linesIn(summary())) {
    if (line.starts_with(label + ":")) {
      return std::string(trimmed(std::string_view(line).substr(label.size() + 1)));
    }
  }
  ADD_FAILURE() << "the summary has no line " << label;
  return {};
}

}  // namespace veltrin

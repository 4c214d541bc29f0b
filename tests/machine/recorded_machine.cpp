// SPDX-License-Identifier: GPL-3.0-or-later
#include "recorded_machine.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "hardware_database_file.h"
#include "journal_file.h"
#include "machine/fact_text.h"
#include "recorded_devices.h"
#include "recording_bytes.h"

namespace veltrin {
namespace {

using Section = RecordingSection;

std::string wholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << "no file " << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The two sides of "PATH -> TARGET".
std::pair<std::string, std::string> linkIn(std::string_view text, std::size_t line) {
  constexpr std::string_view kArrow = " -> ";
  const std::size_t arrow = text.find(kArrow);
  if (arrow == std::string_view::npos) {
    throw RecordingMistake(line, "no link: " + std::string(text));
  }
  return {std::string(trimmed(text.substr(0, arrow))),
          std::string(trimmed(text.substr(arrow + kArrow.size())))};
}

// Unpacks the sections of one text.
class Unpacking {
 public:
  explicit Unpacking(RecordedMachine& recorded) : recorded_(recorded) {}

  void unpack(const Section& section) {
    if (RecordedDevices::isDevice(section)) {
      filesIn(devices_.make(section), section.body, {}, 0);
      return;
    }
    struct Kind {
      std::string_view name;
      void (Unpacking::*unpack)(const Section&);
    };
    static constexpr std::array kKinds{
        Kind{"file", &Unpacking::file},
        Kind{"bytes", &Unpacking::bytes},
        Kind{"in", &Unpacking::folderWithFiles},
        Kind{"link", &Unpacking::link},
        Kind{"folder", &Unpacking::folder},
        Kind{"written", &Unpacking::written},
        Kind{"smbios", &Unpacking::smbios},
        Kind{"hwdb", &Unpacking::hardware},
        Kind{"journal", &Unpacking::journal},
        Kind{"host", &Unpacking::host},
        Kind{"identity", &Unpacking::identity},
        Kind{"kernel", &Unpacking::kernel},
        Kind{"architecture", &Unpacking::architecture},
        Kind{"clock", &Unpacking::clock},
        Kind{"born", &Unpacking::born},
        Kind{"environment", &Unpacking::environment},
        Kind{"interface", &Unpacking::interface},
        Kind{"room", &Unpacking::room},
        Kind{"screen", &Unpacking::screen},
        Kind{"setting", &Unpacking::setting},
        Kind{"printer", &Unpacking::printer},
    };
    const auto* kind = std::find_if(kKinds.begin(), kKinds.end(),
                                    [&](const Kind& each) { return each.name == section.kind; });
    if (kind == kKinds.end()) {
      throw RecordingMistake(section.line, "no such section: " + section.kind);
    }
    (this->*kind->unpack)(section);
  }

  // Writes what has been gathered of all sections. Returns what cannot be written here.
  std::string end() {
    const bool canTell = messages_.empty() || canMakeJournals();
    if (!messages_.empty() && canTell) {
      EXPECT_TRUE(makeJournal(recorded_.tree, messages_)) << "no journal was made";
    }
    if (!smbios_.empty()) {
      recorded_.tree.put("/sys/firmware/dmi/tables/DMI", smbios_ + smbiosEnd());
    }
    if (!hardware_.empty()) {
      recorded_.tree.put("/usr/lib/udev/hwdb.bin", databaseFile(hardware_));
    }
    // Last, as writing into a folder changes its moment.
    for (const auto& [path, seconds] : written_) {
      const auto moment = std::chrono::file_clock::from_sys(
          std::chrono::sys_seconds(std::chrono::seconds(seconds)));
      std::filesystem::last_write_time(recorded_.tree.real(path), moment);
    }
    return canTell ? "" : "systemd-journal-remote is not installed";
  }

 private:
  void file(const Section& section) {
    std::string path = section.rest;
    const Repetition repetition = takeRepetition(path, section.line);
    const Repetition range = takeRange(path, section.line);
    for (std::uint64_t each = range.first; each <= range.last; ++each) {
      std::string content;
      for (std::uint64_t number = repetition.first; number <= repetition.last; ++number) {
        for (const RecordingLine& line : section.body) {
          const std::string once = filledIn(line.text, repetition, number, line.number);
          content.append(filledIn(once, range, each, line.number)).append("\n");
        }
      }
      put(filledIn(path, range, each, section.line), content, section.line);
    }
  }

  void bytes(const Section& section) { put(section.rest, bytesIn(section.body), section.line); }

  void folderWithFiles(const Section& section) {
    std::string folder = section.rest;
    const Repetition range = takeRange(folder, section.line);
    for (std::uint64_t each = range.first; each <= range.last; ++each) {
      filesIn(filledIn(folder, range, each, section.line), section.body, range, each);
    }
  }

  // Makes the small files and links of a folder.
  void filesIn(const std::string& folder, const std::vector<RecordingLine>& lines,
               const Repetition& range, std::uint64_t number) {
    const std::string start = folder + "/";
    std::string path;
    for (const RecordingLine& line : lines) {
      const std::string text = filledIn(line.text, range, number, line.number);
      if (text.find(" -> ") != std::string::npos) {
        const auto [name, target] = linkIn(text, line.number);
        makeLink(path.assign(start).append(name), target, line.number);
      } else if (!trimmed(text).empty() && !text.starts_with("#")) {
        const std::string_view name = std::string_view(text).substr(0, text.find(' '));
        std::string value(trimmed(std::string_view(text).substr(name.size())));
        put(path.assign(start).append(name), value.append("\n"), line.number);
      }
    }
  }

  void link(const Section& section) {
    std::string text = section.rest;
    const Repetition range = takeRange(text, section.line);
    for (std::uint64_t each = range.first; each <= range.last; ++each) {
      const auto [path, target] = linkIn(filledIn(text, range, each, section.line), section.line);
      makeLink(path, target, section.line);
    }
  }

  void folder(const Section& section) {
    std::string path = section.rest;
    const Repetition range = takeRange(path, section.line);
    for (std::uint64_t each = range.first; each <= range.last; ++each) {
      recorded_.tree.makeFolder(filledIn(path, range, each, section.line));
    }
  }

  void written(const Section& section) {
    const auto words = wordsIn(section, 2);
    const std::string path(words[0]);
    if (!std::filesystem::exists(recorded_.tree.real(path))) {
      throw RecordingMistake(section.line, "no file " + path + " above");
    }
    written_.emplace_back(path, numberIn(words[1], section.line));
  }

  void smbios(const Section& section) { smbios_ += smbiosStructures(section); }

  void hardware(const Section& section) {
    for (const RecordingLine& line : section.body) {
      const std::size_t equals = line.text.find('=');
      if (equals == std::string::npos) {
        throw RecordingMistake(line.number, "no property: " + line.text);
      }
      hardware_.push_back({section.rest, " " + line.text.substr(0, equals),
                           line.text.substr(equals + 1), static_cast<std::uint32_t>(line.number)});
    }
  }

  void journal(const Section& section) {
    std::string rest = section.kind + " " + section.rest;
    const Repetition repetition = takeRepetition(rest, section.line);
    for (std::uint64_t number = repetition.first; number <= repetition.last; ++number) {
      for (const RecordingLine& line : section.body) {
        messages_.push_back(
            messageIn({line.number, filledIn(line.text, repetition, number, line.number)}));
      }
    }
  }

  // In the journal's export form.
  static std::string messageIn(const RecordingLine& line) {
    const std::vector<std::string_view> words = wordsOf(line.text);
    const std::size_t colon = line.text.find(": ");
    if (words.size() < 4 || colon == std::string::npos || !words[2].ends_with(":")) {
      throw RecordingMistake(line.number, "no message of the journal: " + line.text);
    }
    return "MESSAGE=" + line.text.substr(colon + 2) +
           "\nPRIORITY=" + std::to_string(numberIn(words[1], line.number)) +
           "\nSYSLOG_FACILITY=" + std::to_string(numberIn(words[0], line.number)) +
           "\nSYSLOG_IDENTIFIER=" + std::string(words[2].substr(0, words[2].size() - 1)) + "\n";
  }

  void host(const Section& section) { recorded_.machine.kernelFacts.host = section.rest; }

  void identity(const Section& section) {
    Id128 id{};
    const bool isWhole = section.rest.size() == 2 * id.size();
    for (std::size_t i = 0; i < id.size(); ++i) {
      const auto byte = isWhole ? wholeNumber(section.rest.substr(2 * i, 2), 16) : std::nullopt;
      if (!byte) {
        throw RecordingMistake(section.line, "no 32 hexadecimal digits: " + section.rest);
      }
      id[i] = static_cast<std::uint8_t>(*byte);
    }
    recorded_.machine.anyId = id;
  }

  void kernel(const Section& section) {
    const std::size_t end = section.rest.find(' ');
    recorded_.machine.kernelFacts.release = section.rest.substr(0, end);
    recorded_.machine.kernelFacts.version =
        end == std::string::npos ? "" : section.rest.substr(end + 1);
  }

  void architecture(const Section& section) {
    recorded_.machine.kernelFacts.machine = section.rest;
  }

  void clock(const Section& section) {
    const auto words = wordsIn(section, 3);
    recorded_.machine.time = static_cast<std::int64_t>(numberIn(words[0], section.line));
    const bool isBehind = words[1].starts_with("-");
    const auto minutes =
        static_cast<int>(numberIn(words[1].substr(isBehind ? 1 : 0), section.line));
    recorded_.machine.offset = isBehind ? -minutes : minutes;
    recorded_.machine.zone = words[2];
  }

  void born(const Section& section) {
    recorded_.machine.rootBorn = static_cast<std::int64_t>(numberIn(section.rest, section.line));
  }

  void environment(const Section& section) {
    const std::size_t equals = section.rest.find('=');
    if (equals == std::string::npos) {
      throw RecordingMistake(section.line, "no variable: " + section.rest);
    }
    recorded_.machine.variables[section.rest.substr(0, equals)] = section.rest.substr(equals + 1);
  }

  void interface(const Section& section) {
    const std::vector<std::string_view> words = wordsOf(section.rest);
    if (words.size() < 2) {
      throw RecordingMistake(section.line, "an interface has an index and a name");
    }
    NetworkInterface interface;
    interface.index = static_cast<std::uint32_t>(numberIn(words[0], section.line));
    interface.name = words[1];
    interface.kind = words.size() > 2 ? words[2] : "";
    for (const RecordingLine& line : section.body) {
      if (line.text == "running") {
        interface.running = true;
      } else {
        interface.addresses.push_back(addressIn(line));
      }
    }
    if (!recorded_.machine.network) {
      recorded_.machine.network.emplace();
    }
    recorded_.machine.network->push_back(interface);
  }

  static InterfaceAddress addressIn(const RecordingLine& line) {
    const std::vector<std::string_view> words = wordsOf(line.text);
    const auto address = words.size() == 2 ? Address::parse(std::string(words[0])) : std::nullopt;
    if (!address || (words[1] != "lasting" && words[1] != "lent")) {
      throw RecordingMistake(line.number, "no address of an interface: " + line.text);
    }
    return {*address, words[1] == "lasting"};
  }

  void room(const Section& section) {
    const auto words = wordsIn(section, 5);
    recorded_.machine.rooms[std::string(words[0])] = {
        numberIn(words[1], section.line), numberIn(words[2], section.line),
        numberIn(words[3], section.line), numberIn(words[4], section.line)};
  }

  void screen(const Section& section) {
    const auto words = wordsIn(section, 6);
    const auto number = [&](std::size_t place) {
      return static_cast<std::uint32_t>(numberIn(words[place], section.line));
    };
    recorded_.machine.screens[std::string(words[0])].push_back(
        {std::string(words[1]), number(2), number(3), number(4), number(5)});
  }

  void setting(const Section& section) {
    const std::vector<std::string_view> words = wordsOf(section.rest);
    if (words.size() < 3) {
      throw RecordingMistake(section.line, "a setting has a schema, a key and a value");
    }
    const auto value = static_cast<std::size_t>(words[2].data() - section.rest.data());
    recorded_.settings[std::string(words[0]) + " " + std::string(words[1])] =
        section.rest.substr(value);
  }

  void printer(const Section& section) {
    recorded_.printers.emplace_back(section.rest,
                                    section.body.empty() ? "" : section.body.front().text);
  }

  static std::vector<std::string_view> wordsIn(const Section& section, std::size_t count) {
    std::vector<std::string_view> words = wordsOf(section.rest);
    if (words.size() != count) {
      throw RecordingMistake(section.line, section.kind + " takes " + std::to_string(count) +
                                               " words: " + section.rest);
    }
    return words;
  }

  // What a later section would overwrite was told by mistake.
  void put(const std::string& path, const std::string& content, std::size_t line) {
    mustBeNew(path, line);
    recorded_.tree.put(path, content);
  }

  void makeLink(const std::string& path, const std::string& target, std::size_t line) {
    mustBeNew(path, line);
    recorded_.tree.link(path, target);
  }

  void mustBeNew(const std::string& path, std::size_t line) const {
    if (!path.starts_with("/")) {
      throw RecordingMistake(line, "a path that does not begin at the root: " + path);
    }
    if (std::filesystem::symlink_status(recorded_.tree.real(path)).type() !=
        std::filesystem::file_type::not_found) {
      throw RecordingMistake(line, "told twice: " + path);
    }
  }

  RecordedMachine& recorded_;
  RecordedDevices devices_{{[this](const std::string& path, const std::string& content,
                                   std::size_t line) { put(path, content, line); },
                            [this](const std::string& path, const std::string& target,
                                   std::size_t line) { makeLink(path, target, line); }}};
  std::string smbios_;
  std::vector<DatabaseEntry> hardware_;
  std::vector<std::string> messages_;
  std::vector<std::pair<std::string, std::uint64_t>> written_;
};

}  // namespace

RecordedMachine::RecordedMachine(const std::string& path) {
  unpack(wholeFile(path), std::filesystem::path(path).filename());
  for (const std::string& mistake : mistakes_) {
    ADD_FAILURE() << mistake;
  }
}

RecordedMachine::RecordedMachine(std::string_view text, const std::string& name) {
  unpack(text, name);
}

std::optional<std::string> RecordedMachine::setting(const std::string& schema,
                                                    const std::string& key) const {
  const auto found = settings.find(schema + " " + key);
  return found == settings.end() ? std::nullopt : std::optional(found->second);
}

void RecordedMachine::unpack(std::string_view text, const std::string& name) {
  const auto tell = [&](const RecordingMistake& mistake) {
    mistakes_.push_back(name + ":" + std::to_string(mistake.line()) + ": " + mistake.what());
  };
  try {
    Unpacking unpacking(*this);
    for (const Section& section : sectionsOf(text)) {
      try {
        unpacking.unpack(section);
      } catch (const RecordingMistake& mistake) {
        tell(mistake);
      }
    }
    lacks_ = unpacking.end();
  } catch (const RecordingMistake& mistake) {
    tell(mistake);
  }
}

std::string recordingsFolder() { return std::string(RECORDED_MACHINES) + "/"; }

std::vector<std::string> recordedMachines() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(recordingsFolder())) {
    if (entry.path().extension() == ".machine") {
      names.push_back(entry.path().stem());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace veltrin

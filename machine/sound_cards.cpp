// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/sound_cards.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>

#include "machine/device_folder.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr std::string_view kCard = "card";

// The names behind the numbers in lines like
// " 0 [PCH            ]: HDA-Intel - HDA Intel PCH"; every second line tells other things.
std::map<std::uint64_t, std::string> namesOfCards(const FileTree& files) {
  std::map<std::uint64_t, std::string> names;
  files.readLines("/proc/asound/cards", [&](std::string_view line) {
    const std::size_t bracket = line.find(" [");
    const std::size_t colon = line.find("]: ");
    const auto number =
        bracket < colon ? wholeNumber(trimmed(line.substr(0, bracket))) : std::nullopt;
    const std::size_t dash = colon == std::string_view::npos ? colon : line.find(" - ", colon);
    if (number && dash != std::string_view::npos) {
      names[*number] = printable(line.substr(dash + 3));
    }
  });
  return names;
}

}  // namespace

std::vector<SoundCard> soundCards(const FileTree& files) {
  std::map<std::uint64_t, std::string> names = namesOfCards(files);
  std::vector<SoundCard> cards;
  for (const std::string& entry : files.names("/sys/class/sound")) {
    const auto number =
        entry.starts_with(kCard) ? wholeNumber(entry.substr(kCard.size())) : std::nullopt;
    if (!number) {
      continue;
    }
    const std::string folder = "/sys/class/sound/" + entry;
    std::string& name = names[*number];
    if (name.empty()) {
      name = printable(files.line(folder + "/id"));
    }
    cards.push_back({*number, name, folder + "/device"});
  }
  std::stable_sort(cards.begin(), cards.end(),
                   [](const auto& left, const auto& right) { return left.number < right.number; });
  return cards;
}

std::vector<std::string> soundCodecs(const FileTree& files) {
  std::vector<std::string> codecs;
  for (const std::string& entry : files.names("/sys/bus/hdaudio/devices")) {
    const std::string folder = "/sys/bus/hdaudio/devices/" + entry;
    codecs.push_back(joinedWords(printable(files.line(folder + "/vendor_name")),
                                 printable(files.line(folder + "/chip_name"))));
  }
  return codecs;
}

}  // namespace veltrin

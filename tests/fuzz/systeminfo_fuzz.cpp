// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds texts about the machine, whole and broken, to the readers line by line and, in
// chunks of any bounds, to both collectors, and checks what must hold for every text.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/simulation.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/DosFrm.h"
#include "sysinfo/summary_reader.h"
#include "tests/support/characters.h"
#include "text/strings.h"

namespace {

using veltrin::SummaryForm;
using veltrin::SystemSummary;
using Texts = std::vector<std::string>;

// Pieces of which texts are built. A byte of the input below their number stands
// for its piece.
constexpr std::array<std::string_view, 32> kPieces = {
    "\r\n",
    "Product ID:                ",
    "Total Physical Memory:     ",
    "Available Physical Memory: ",
    "OS Name:                   Example Desktop 7\r\n",
    "Processor(s):              2 Processor(s) Installed.\r\n",
    "System Model:              ",
    "Input Locale:              nl;Dutch (Netherlands)\r\n",
    "OS Version:                6.1\r\n",
    "System Boot Time:          3/7/2026\r\n",
    "Domain:                    WORKGROUP\r\n",
    "Hotfix(s):                 ",
    "Hotfix(s):                 9 Hotfix(s) Installed.\r\n",
    "Hotfix(s):                 12 Hotfix(s) Installed.\r\n",
    "Hotfix(s):                 120 Hotfix(s) Installed.\r\n",
    "Network Card(s):           ",
    "Network Card(s):           0 NIC(s) Installed.\r\n",
    "Network Card(s):           1 NIC(s) Installed.\r\n",
    "Network Card(s):           2 NIC(s) Installed.\r\n",
    "Network Card(s):           3 NIC(s) Installed.\r\n",
    "Network Card(s):           5 NIC(s) Installed.\r\n",
    "Network Card(s):           12 NIC(s) Installed.\r\n",
    "                           [01]: one\r\n",
    "                           [02]: two\r\n",
    "                           [03]: three\r\n",
    "                                 Connection Name: Local\r\n",
    "                                 DHCP Server:     198.51.100.1\r\n",
    "                                 [01]: 192.0.2.1\r\n",
    "                           ",
    "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n",
    " MB\r\n",
    "4,095",
};

constexpr std::uint8_t kChunkEnd = 0xFE;  // ends a chunk
constexpr std::size_t kMostHotfixes = 99;

void check(bool holds) {
  if (!holds) std::abort();
}

Texts chunksOf(const std::uint8_t* data, std::size_t size) {
  Texts chunks(1);
  for (std::size_t at = 0; at < size; ++at) {
    if (data[at] == kChunkEnd) {
      chunks.emplace_back();
    } else if (data[at] < kPieces.size()) {
      chunks.back() += kPieces[data[at]];
    } else {
      chunks.back() += static_cast<char>(data[at]);
    }
  }
  return chunks;
}

std::string joined(const Texts& texts, std::string_view between = {}) {
  std::string whole;
  for (const std::string& text : texts) {
    if (&text != texts.data()) whole += between;
    whole += text;
  }
  return whole;
}

// All fields of a summary that the readers fill; the width of the hotfixes, which may be
// a digit of their own, is the last.
Texts fieldsOf(const SystemSummary& summary) {
  Texts fields{summary.OsName,   summary.TotalRam,   summary.AvailableRam, summary.WinVersion,
               summary.CpuNum,   summary.MbModel,    summary.BiosVersion,  summary.Location,
               summary.MbMan,    summary.BootDevice, summary.OsVersion,    summary.Installed,
               summary.BootTime, summary.UpTime,     summary.PageFile,     summary.Domain};
  for (const SystemSummary::NetCard& card : summary.NetCards) {
    for (const std::string& field : {card.Name, card.Connection, card.Dhcp, card.Ip}) {
      fields.push_back(field);
    }
  }
  fields.push_back(summary.HotfixWidth);
  return fields;
}

// One line changes one field at most, and that to a piece of itself.
void checkChange(const Texts& before, const Texts& after, const std::string& line) {
  int changes = 0;
  for (std::size_t field = 0; field < before.size(); ++field) {
    if (after[field] == before[field]) continue;
    ++changes;
    const bool isWidth = field == before.size() - 1;
    check(line.find(after[field]) != std::string::npos ||
          (isWidth && (after[field] == "2" || after[field] == "3")));
  }
  check(changes <= 1);
}

// What stands behind a label in the last line that begins with it.
std::string lastValue(const Texts& lines, std::string_view label) {
  std::string value;
  for (const std::string& line : lines) {
    if (line.starts_with(label)) value = line.substr(label.size());
  }
  return value;
}

std::string firstCharacter(const std::string& text) {
  return veltrin::joinedCharacters(veltrin::charactersOf(text), 0, 1);
}

bool isEmpty(const SystemSummary::NetCard& card) {
  return (card.Name + card.Connection + card.Dhcp + card.Ip).empty();
}

// Cards that no count told of stay empty. A count of 0 behind another one lets the card
// move on, so that it is left out of all but the first.
void checkCards(const Texts& lines, const SystemSummary& summary) {
  constexpr std::string_view kCards = "Network Card(s):           ";
  const auto allCountsAreIn = [&](std::string_view counts) {
    return std::all_of(lines.begin(), lines.end(), [&](const std::string& line) {
      if (!line.starts_with(kCards)) return true;
      const std::string count = firstCharacter(line.substr(kCards.size()));
      return !count.empty() && counts.find(count) != std::string_view::npos;
    });
  };
  if (allCountsAreIn("0")) check(isEmpty(summary.NetCards[0]));
  if (allCountsAreIn("1")) check(isEmpty(summary.NetCards[1]));
  if (allCountsAreIn("12")) check(isEmpty(summary.NetCards[2]));
}

void checkFullReader(const Texts& lines) {
  SystemSummary summary;
  veltrin::SummaryReader reader(summary);
  for (const std::string& line : lines) {
    const Texts before = fieldsOf(summary);
    const std::size_t hotfixes = reader.hotfixes().size();
    reader.readLine(line);
    checkChange(before, fieldsOf(summary), line);
    if (reader.hotfixes().size() == hotfixes) continue;
    check(reader.hotfixes().size() == hotfixes + 1);
    check(line.ends_with("]: " + reader.hotfixes().back()));
    check(fieldsOf(summary) == before);
  }
  check(reader.hotfixes().size() <= kMostHotfixes);
  check(reader.cardCount() == firstCharacter(lastValue(lines, "Network Card(s):           ")));
  check(summary.MbModel == lastValue(lines, "System Model:              "));
  check(summary.Domain == lastValue(lines, "Domain:                    "));
  checkCards(lines, summary);
}

void checkShortReader(const Texts& lines) {
  SystemSummary summary;
  for (const std::string& line : lines) {
    const Texts before = fieldsOf(summary);
    const bool read = veltrin::readLabelledLine(SummaryForm::Short, line, summary);
    checkChange(before, fieldsOf(summary), line);
    check(read || fieldsOf(summary) == before);
  }
  check(summary.MbModel == lastValue(lines, "System Model:              "));
  check(summary.Domain.empty() && summary.HotfixWidth.empty() && summary.NetCards[0].Name.empty());
}

// What both collectors leave behind when the tool writes so. They write no settings: that
// would take most of the time, and their number is enough.
std::string collected(const Texts& chunks) {
  veltrin::Simulation simulation;
  simulation.profiles.refuseWriting = true;
  std::vector<veltrin::ToolWrite> writes;
  for (const std::string& chunk : chunks) writes.push_back({1, chunk});
  simulation.processes.tool = [&](const std::string&) { return writes; };
  veltrin::Program& program = simulation.program();
  const auto shortForm = program.keep<veltrin::DosFrm>();
  shortForm->getinfo();
  check((shortForm->Buffer.count() < 11) == (simulation.profiles.writes == 0));
  const auto fullForm = program.keep<veltrin::DosApp>();
  fullForm->SysInfo("1");
  check(veltrin::charactersOf(program.summary.CpuNum).size() <= 1);
  check(shortForm->dosbox.text.get() == joined(chunks));
  check(shortForm->Buffer.count() == fullForm->List1.count());
  std::string result =
      std::to_string(simulation.profiles.writes) + joined(fieldsOf(program.summary), "\n");
  for (std::size_t index = 0; index < fullForm->List3.count(); ++index) {
    result += "\n" + fullForm->List3.item(index);
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Texts chunks = chunksOf(data, size);
  const std::string text = joined(chunks);
  const Texts lines = veltrin::piecesOf(text);
  check(joined(lines, veltrin::kLineBreak) == text);
  for (const std::string& line : lines) {
    check(line.find(veltrin::kLineBreak) == std::string::npos);
  }
  checkFullReader(lines);
  checkShortReader(lines);
  // Of one chunk there is nothing to compare.
  if (chunks.size() > 1) check(collected(chunks) == collected({text}));
  return 0;
}

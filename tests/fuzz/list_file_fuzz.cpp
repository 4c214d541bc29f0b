// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as the file of a list box: each line of it becomes a line of the list, and what
// is then saved gives the same lines and the same file again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "controls/LVListBox.h"
#include "support/simulation.h"

namespace {

using veltrin::ListLine;
using veltrin::LVListBox;

const std::string kFirst = "first.txt";
const std::string kSecond = "second.txt";
const std::string kTexts = "texts.txt";

constexpr std::uint8_t kSeparator = 0xFE;  // a byte that stands for the two of "Ø"

void check(bool holds) {
  if (!holds) std::abort();
}

std::string fileOf(const std::uint8_t* data, std::size_t size) {
  std::string bytes;
  for (std::size_t at = 0; at < size; ++at) {
    if (data[at] == kSeparator) {
      bytes += "Ø";
    } else {
      bytes += static_cast<char>(data[at]);
    }
  }
  return bytes;
}

// How many lines there are, each ended by a carriage return, a line feed, or both; the last
// one need not be.
std::int32_t linesIn(std::string_view text) {
  std::int32_t count = 0;
  bool isOpen = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\n' && at > 0 && text[at - 1] == '\r') continue;
    isOpen = text[at] != '\r' && text[at] != '\n';
    if (!isOpen) ++count;
  }
  return count + (isOpen ? 1 : 0);
}

// Whether a text can stand in a field without ending it.
bool isPlain(const std::string& text) {
  return text.find_first_of("\r\n") == std::string::npos && text.find("Ø") == std::string::npos;
}

bool areSame(const ListLine& one, const ListLine& other) {
  return one.Text == other.Text && one.SmallIcon == other.SmallIcon &&
         one.ForeColor == other.ForeColor && one.Bold == other.Bold &&
         one.Checked == other.Checked && one.Ghosted == other.Ghosted &&
         one.Selected == other.Selected && one.Tag == other.Tag && one.Key == other.Key;
}

void checkLine(const ListLine& line) {
  check(isPlain(line.Text) && isPlain(line.Tag) && isPlain(line.Key));
  check(line.SmallIcon >= 0);
  check(line.ForeColor <= 0x7FFFFFFF || line.ForeColor == veltrin::kWindowText);
}

// The lines that are selected, of which ListIndex tells one.
void checkSelection(const LVListBox& list) {
  std::int32_t count = 0;
  for (std::int32_t index = 0; index < list.ListCount(); ++index) {
    if (list.Selected(index)) ++count;
  }
  check((count > 0) == (list.ListIndex() >= 0));
  check(list.ListIndex() < 0 || list.Selected(list.ListIndex()));
  check(list.MultiSelect || count <= 1);
}

void checkSaved(veltrin::Simulation& simulation, const LVListBox& list, const LVListBox& again) {
  check(list.ListCount() == again.ListCount());
  for (std::size_t index = 0; index < list.ListView1.count(); ++index) {
    check(areSame(list.ListView1.line(index), again.ListView1.line(index)));
  }
  check(simulation.files.contents[kFirst] == simulation.files.contents[kSecond]);
}

void checkTexts(const LVListBox& list, const LVListBox& texts) {
  check(list.ListCount() == texts.ListCount());
  for (std::int32_t index = 0; index < list.ListCount(); ++index) {
    check(list.List(index) == texts.List(index));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool isMulti = data[0] % 2 != 0;
  const std::string bytes = fileOf(data + 1, size - 1);
  veltrin::Simulation simulation;
  simulation.files.contents["any.txt"] = bytes;

  LVListBox list(simulation.platform);
  list.MultiSelect = isMulti;
  list.LoadFromFile("any.txt", true, false);
  check(list.ListCount() == linesIn(bytes));
  for (std::size_t index = 0; index < list.ListView1.count(); ++index) {
    checkLine(list.ListView1.line(index));
  }
  checkSelection(list);

  check(list.SaveToFile(kFirst, true));
  LVListBox again(simulation.platform);
  again.MultiSelect = isMulti;
  again.LoadFromFile(kFirst, true, false);
  check(again.SaveToFile(kSecond, true));
  checkSaved(simulation, list, again);

  check(list.SaveToFile(kTexts, false));
  again.LoadFromFile(kTexts, true, false);
  checkTexts(list, again);
  return 0;
}

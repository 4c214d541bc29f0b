// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/LVListBox.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr const char* kControlName = "LVListBox";

// U+00D8, between the fields of a stored line.
constexpr std::string_view kSeparator = "\xC3\x98";

// Bytes that were no characters may become a separator once the one between them is gone.
std::string withoutSeparators(std::string text) {
  for (std::size_t at = 0; (at = text.find(kSeparator, at)) != std::string::npos;) {
    text.erase(at, kSeparator.size());
    if (at > 0) --at;
  }
  return text;
}

// Of a line that has the list's own colour.
constexpr std::int32_t kOwnColour = -1;

// Flags are stored as numbers, as the language of the first files wrote them.
std::string stored(bool flag) { return flag ? "-1" : "0"; }

std::string detailsOf(const ListLine& line) {
  const std::string fields[] = {withoutSeparators(line.Text),
                                std::to_string(line.SmallIcon),
                                std::to_string(static_cast<std::int32_t>(line.ForeColor)),
                                stored(line.Bold),
                                stored(line.Checked),
                                stored(line.Ghosted),
                                stored(line.Selected),
                                line.Tag,
                                line.Key};
  std::string details;
  for (const std::string& field : fields) {
    if (&field != fields) details += kSeparator;
    details += field;
  }
  return details;
}

// The pieces of a stored line; nothing behind its end.
class Fields {
 public:
  explicit Fields(std::string_view line) : rest_(line) {}

  bool areOver() const { return over_; }

  std::string text() {
    const std::size_t end = std::min(rest_.find(kSeparator), rest_.size());
    std::string field(rest_.substr(0, end));
    over_ = end == rest_.size();
    rest_.remove_prefix(std::min(end + kSeparator.size(), rest_.size()));
    return field;
  }
  template <class Number>
  Number number() {
    const double value = Val(text());
    const bool fits =
        value >= std::numeric_limits<Number>::min() && value <= std::numeric_limits<Number>::max();
    return fits ? static_cast<Number>(value) : Number{};
  }
  bool flag() { return Val(text()) != 0; }

 private:
  std::string_view rest_;
  bool over_ = false;
};

// The next line of a text, which ends with a carriage return, a line feed, or both.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::string_view line = text.substr(0, end);
  const bool isPair = text.substr(end).starts_with(kLineBreak);
  text.remove_prefix(std::min(end + (isPair ? 2 : 1), text.size()));
  return line;
}

}  // namespace

AnyListProperty::AnyListProperty(LVListBox& list, const char* name) : list_(list), name_(name) {
  list.properties_.push_back(this);
}

void AnyListProperty::noteWrite() const {
  if (list_.propertyChanged) list_.propertyChanged(name_);
}

LVListBox::LVListBox(Platform& platform) : platform_(platform) {}

void LVListBox::setImageList(const ImageList* pictures) { ListView1.SmallIcons = pictures; }

std::int32_t LVListBox::ListCount() const { return static_cast<std::int32_t>(ListView1.count()); }

// A caller that wants the end sets the number of lines, which is one more than the last index.
void LVListBox::setListIndex(std::int32_t index) {
  if (index < 0 || ListCount() == 0) {
    ListView1.selectOnly({});
    return;
  }
  const auto line = static_cast<std::size_t>(std::min(index, ListCount() - 1));
  ListView1.selectOnly({line});
  ListView1.ensureVisible(line);
}

std::string LVListBox::List(std::int32_t index) const {
  return ListView1.line(static_cast<std::size_t>(index)).Text;
}

void LVListBox::setList(std::int32_t index, const std::string& text) {
  if (isLine(index)) ListView1.setText(static_cast<std::size_t>(index), text);
}

bool LVListBox::Selected(std::int32_t index) const {
  return ListView1.line(static_cast<std::size_t>(index)).Selected;
}

void LVListBox::setSelected(std::int32_t index, bool isSelected) {
  ListView1.select(static_cast<std::size_t>(index), isSelected);
}

std::string LVListBox::Text() const {
  const ListLine* line = ListView1.SelectedItem();
  return line == nullptr ? std::string() : line->Text;
}

void LVListBox::setText(const std::string& text) { setList(ListIndex(), text); }

void LVListBox::AddItem(const std::string& Item, std::int16_t Icon, std::int32_t ForeColor,
                        bool Bold, bool Checked, bool Ghosted, bool Selected,
                        const std::string& Tag, const std::string& Key) {
  ListLine line;
  line.Text = Item;
  if (Icon > 0) line.SmallIcon = Icon;
  if (ForeColor > kOwnColour) line.ForeColor = static_cast<ColourCode>(ForeColor);
  line.Bold = Bold;
  line.Checked = Checked;
  line.Ghosted = Ghosted;
  line.Selected = Selected;
  line.Tag = Tag;
  line.Key = Key;
  ListView1.add(std::move(line));
}

void LVListBox::Clear() {
  ListView1.lockDrawing(true);
  ListView1.clear();
  ListView1.lockDrawing(false);
}

void LVListBox::RemoveItem(std::int32_t Index) {
  ListView1.remove(static_cast<std::size_t>(Index));
}

void LVListBox::AboutBox() { platform_.desktop.messageBox(kControlName, kMessageOk, "About..."); }

std::int32_t LVListBox::FindItem(const std::string& Text, std::int32_t Start, bool MatchCase,
                                 bool Exact, bool SelectIt) {
  const Compare compare = MatchCase ? Compare::Exact : Compare::IgnoreCase;
  const auto matches = [&](const std::string& text) {
    if (!Exact) return InStr(1, text, Text, compare) > 0;
    return MatchCase ? text == Text : equalIgnoringCase(text, Text);
  };
  const std::vector<ListLine>& lines = ListView1.lines();
  const std::int32_t first = isLine(Start) && Start < kFromTheFirst ? Start : 0;
  const auto found = std::find_if(lines.begin() + first, lines.end(),
                                  [&](const ListLine& line) { return matches(line.Text); });
  if (found == lines.end()) return -1;
  const auto index = static_cast<std::int32_t>(found - lines.begin());
  if (SelectIt) setSelected(index, true);
  return index;
}

void LVListBox::StartEdit() const {
  if (ListIndex() >= 0) ListView1.startLabelEdit(static_cast<std::size_t>(ListIndex()));
}

bool LVListBox::SaveToFile(const std::string& FileName, bool SaveDetails) {
  return skip([&] {
    const auto file = platform_.files.openOutput(FileName);
    std::string text;
    for (std::size_t index = 0; index < ListView1.count(); ++index) {
      const ListLine& line = ListView1.line(index);
      text += SaveDetails ? detailsOf(line) : withoutSeparators(line.Text);
      text += kLineBreak;
    }
    file->Write(text);
    file->Close();
  });
}

void LVListBox::LoadFromFile(const std::string& FileName, bool Clear, bool Append) {
  if (!platform_.files.exists(FileName)) return;
  skip([&] {
    const std::string text = platform_.files.readText(FileName);
    if (Clear || !Append) this->Clear();
    for (std::string_view rest = text; !rest.empty();) addStored(std::string(takeLine(rest)));
  });
}

void LVListBox::addStored(const std::string& line) {
  if (line.find(kSeparator) == std::string::npos) {
    AddItem(line);
    return;
  }
  Fields fields(line);
  const std::string text = fields.text();
  const auto icon = fields.number<std::int16_t>();
  const auto colour = fields.areOver() ? kOwnColour : fields.number<std::int32_t>();
  const bool isBold = fields.flag();
  const bool isChecked = fields.flag();
  const bool isGhosted = fields.flag();
  const bool isSelected = fields.flag();
  const std::string tag = fields.text();
  AddItem(text, icon, colour, isBold, isChecked, isGhosted, isSelected, tag, fields.text());
}

void LVListBox::ReadProperties(const PropertyBag& bag) {
  for (AnyListProperty* property : properties_) property->read(bag);
}

void LVListBox::WriteProperties(PropertyBag& bag) const {
  for (const AnyListProperty* property : properties_) property->write(bag);
}

bool LVListBox::isCurrent(std::size_t index, std::uint64_t life) const {
  return isUsable() && life == ListView1.life() && index < ListView1.count();
}

void LVListBox::takeSelection(const std::vector<std::size_t>& indexes, std::uint64_t life) {
  const bool areCurrent = std::all_of(indexes.begin(), indexes.end(),
                                      [&](std::size_t index) { return isCurrent(index, life); });
  if (isUsable() && life == ListView1.life() && areCurrent) ListView1.selectOnly(indexes);
}

void LVListBox::clickItem(std::size_t index, std::uint64_t life) {
  if (!isCurrent(index, life)) return;
  if (ItemClick) raise([&] { ItemClick(index); });
}

void LVListBox::clickList() {
  if (isUsable()) raise(Click);
}

void LVListBox::doubleClick() {
  if (isUsable()) raise(DblClick);
}

void LVListBox::tick(std::size_t index, std::uint64_t life) {
  if (isCurrent(index, life)) ListView1.setChecked(index, !ListView1.line(index).Checked);
}

void LVListBox::endEdit(std::size_t index, std::uint64_t life, const std::string& text) {
  if (!isCurrent(index, life)) return;
  bool isCancelled = false;
  if (AfterLabelEdit) raise([&] { AfterLabelEdit(isCancelled, text); });
  if (!isCancelled && isCurrent(index, life)) ListView1.setText(index, text);
}

bool LVListBox::pressKey(std::int16_t KeyCode, std::int16_t Shift) {
  if (KeyDown && isUsable()) raise([&] { KeyDown(KeyCode, Shift); });
  return KeyCode != 0;
}

bool LVListBox::typeKey(std::int16_t KeyAscii) {
  if (KeyPress && isUsable()) raise([&] { KeyPress(KeyAscii); });
  return KeyAscii != 0;
}

void LVListBox::releaseKey(std::int16_t KeyCode, std::int16_t Shift) {
  if (KeyUp && isUsable()) raise([&] { KeyUp(KeyCode, Shift); });
}

}  // namespace veltrin

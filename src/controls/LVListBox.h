// SPDX-License-Identifier: GPL-3.0-or-later
// A list box whose lines have a picture, a colour, bold letters, a check box, a tag and a
// key each. Its texts can be edited in place, searched, sorted, and kept in a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/list_view.h"
#include "controls/property_bag.h"
#include "forms/control.h"
#include "platform/platform.h"

namespace veltrin {

class LVListBox;

// One property of the list box. It passes through to the list and stands in a bag unless it
// has its default.
class AnyListProperty {
 public:
  AnyListProperty(LVListBox& list, const char* name);
  virtual ~AnyListProperty() = default;
  AnyListProperty(const AnyListProperty&) = delete;
  AnyListProperty& operator=(const AnyListProperty&) = delete;

  const std::string& name() const { return name_; }
  virtual void read(const PropertyBag& bag) = 0;
  virtual void write(PropertyBag& bag) const = 0;

 protected:
  // Marks the property as changed for the container.
  void noteWrite() const;

 private:
  LVListBox& list_;
  std::string name_;
};

template <class Value>
class ListProperty : public AnyListProperty {
 public:
  using Get = std::function<Value()>;
  using Let = std::function<void(const Value&)>;

  ListProperty(LVListBox& list, const char* name, Get get, Let let)
      : AnyListProperty(list, name), get_(std::move(get)), let_(std::move(let)), initial_(get_()) {}
  ListProperty(LVListBox& list, const char* name, Property<Value>& property)
      : ListProperty(
            list, name, [&property] { return property.get(); },
            [&property](const Value& value) { property = value; }) {}

  Value get() const { return get_(); }
  operator Value() const { return get_(); }
  ListProperty& operator=(const Value& value) {
    let_(value);
    noteWrite();
    return *this;
  }

  void read(const PropertyBag& bag) override {
    let_(bag.ReadProperty<Value>(name()).value_or(initial_));
  }
  void write(PropertyBag& bag) const override {
    if (get_() != initial_) bag.WriteProperty(name(), get_());
  }

 private:
  Get get_;
  Let let_;
  Value initial_;
};

class LVListBox : public Control {
 public:
  // Of FindItem: from the first line on, as all that is above. It is the 16-bit number that
  // stands for none.
  static constexpr std::int32_t kFromTheFirst = 65535;

  explicit LVListBox(Platform& platform);

  // The lines, and how they look. What the program does to them goes through the properties
  // and methods below.
  ListView ListView1;

 private:
  // Stands before the properties, which enter themselves here.
  friend class AnyListProperty;
  std::vector<AnyListProperty*> properties_;

 public:
  ListProperty<std::int32_t> Appearance{*this, "Appearance", ListView1.Appearance};
  ListProperty<ColourCode> BackColor{*this, "BackColor", ListView1.BackColor};
  ListProperty<std::int32_t> BorderStyle{*this, "BorderStyle", ListView1.BorderStyle};
  ListProperty<bool> CheckBoxes{*this, "CheckBoxes", ListView1.CheckBoxes};
  ListProperty<bool> Enabled{*this, "Enabled", enabled};
  ListProperty<DeviceFont> Font{*this, "Font", ListView1.Font};
  ListProperty<ColourCode> ForeColor{*this, "ForeColor", ListView1.ForeColor};
  ListProperty<bool> HideSelection{*this, "HideSelection", ListView1.HideSelection};
  ListProperty<bool> HotTracking{*this, "HotTracking", ListView1.HotTracking};
  ListProperty<bool> HoverSelection{*this, "HoverSelection", ListView1.HoverSelection};
  ListProperty<std::int32_t> LabelEdit{*this, "LabelEdit", ListView1.LabelEdit};
  ListProperty<bool> LabelWrap{*this, "LabelWrap", ListView1.LabelWrap};
  ListProperty<DevicePicture> MouseIcon{*this, "MouseIcon", ListView1.MouseIcon};
  ListProperty<std::int16_t> MousePointer{*this, "MousePointer", ListView1.MousePointer};
  ListProperty<bool> MultiSelect{*this, "MultiSelect", ListView1.MultiSelect};
  ListProperty<DevicePicture> Picture{*this, "Picture", ListView1.Picture};
  ListProperty<std::int32_t> PictureAlignment{*this, "PictureAlignment",
                                              ListView1.PictureAlignment};
  ListProperty<bool> Sorted{*this, "Sorted", [this] { return ListView1.Sorted(); },
                            [this](const bool& isSorted) { ListView1.setSorted(isSorted); }};
  ListProperty<std::int32_t> SortOrder{
      *this, "SortOrder", [this] { return ListView1.SortOrder(); },
      [this](const std::int32_t& order) { ListView1.setSortOrder(order); }};

  // Told the name of each property that was written.
  std::function<void(std::string_view)> propertyChanged;

  // What the user does. KeyCode and KeyAscii are 0 behind a routine that wants the key for
  // itself; Shift has 1 for the shift key, 2 for control, 4 for alt.
  std::function<void(bool& Cancel, const std::string& NewString)> AfterLabelEdit;
  std::function<void(std::size_t index)> ItemClick;
  EventRoutine Click;
  EventRoutine DblClick;
  std::function<void(std::int16_t& KeyCode, std::int16_t Shift)> KeyDown;
  std::function<void(std::int16_t& KeyAscii)> KeyPress;
  std::function<void(std::int16_t& KeyCode, std::int16_t Shift)> KeyUp;

  std::uintptr_t hWnd() const { return ListView1.hWnd(); }

  // The pictures that the small icon numbers select; null for none.
  const ImageList* getImageList() const { return ListView1.SmallIcons.get(); }
  void setImageList(const ImageList* pictures);

  std::int32_t ListCount() const;

  // Index of the selected line, from 0; -1 when none is selected. Setting it selects a line
  // and brings it into view: the last one for an index behind it, none for one below 0.
  std::int32_t ListIndex() const { return ListView1.SelectedIndex(); }
  void setListIndex(std::int32_t index);

  // The text of a line. Reading one that is not there throws StatementFailed; setting it does
  // nothing.
  std::string List(std::int32_t index) const;
  void setList(std::int32_t index, const std::string& text);

  // Throws StatementFailed when there is no such line, as do RemoveItem and its like.
  bool Selected(std::int32_t index) const;
  void setSelected(std::int32_t index, bool isSelected);

  // The text of the selected line; empty when there is none, and setting it then does nothing.
  std::string Text() const;
  void setText(const std::string& text);

  // Adds a line at the end, or where it belongs in a sorted list. A picture is one above 0,
  // a colour of its own one above -1.
  void AddItem(const std::string& Item, std::int16_t Icon = 0, std::int32_t ForeColor = -1,
               bool Bold = false, bool Checked = false, bool Ghosted = false, bool Selected = false,
               const std::string& Tag = {}, const std::string& Key = {});
  void Clear();
  void Refresh() const { ListView1.Refresh(); }
  void RemoveItem(std::int32_t Index);

  // Tells what the control is, and pumps until that was read.
  void AboutBox();

  // The index of the first line from `Start` on whose text contains `Text`, or equals it when
  // `Exact`; -1 when there is none. A start that is no line's means the first. ASCII letters
  // are folded unless `MatchCase`. A line that was found is selected if `SelectIt`.
  std::int32_t FindItem(const std::string& Text, std::int32_t Start = kFromTheFirst,
                        bool MatchCase = false, bool Exact = false, bool SelectIt = false);

  // Begins the edit of the selected line's text; nothing happens without one.
  void StartEdit() const;

  // Writes the lines to a file, one each: with details nine fields with "Ø" between them,
  // else the text. The text loses each "Ø". False when the system refuses it; the older file
  // then is as it was.
  bool SaveToFile(const std::string& FileName, bool SaveDetails);

  // Adds the lines of such a file, which may have fields or not, line by line. A field that is
  // missing has its default. The list is emptied first if `Clear`, or without `Append`. A file
  // that cannot be read adds nothing.
  void LoadFromFile(const std::string& FileName, bool Clear, bool Append);

  // Properties out of and into a container's store. Reading gives those that are not there
  // their default.
  void ReadProperties(const PropertyBag& bag);
  void WriteProperties(PropertyBag& bag) const;

  // What the user does, told by the view. An index of a life that is over does nothing. A key
  // that is pressed or typed goes on to the view unless that is false.
  void takeSelection(const std::vector<std::size_t>& indexes, std::uint64_t life);
  void clickItem(std::size_t index, std::uint64_t life);
  void clickList();
  void doubleClick();
  void tick(std::size_t index, std::uint64_t life);
  void endEdit(std::size_t index, std::uint64_t life, const std::string& text);
  bool pressKey(std::int16_t KeyCode, std::int16_t Shift);
  bool typeKey(std::int16_t KeyAscii);
  void releaseKey(std::int16_t KeyCode, std::int16_t Shift);

 private:
  bool isLine(std::int32_t index) const { return index >= 0 && index < ListCount(); }
  bool isUsable() const { return visible && enabled; }
  bool isCurrent(std::size_t index, std::uint64_t life) const;
  void addStored(const std::string& line);

  Platform& platform_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Properties of the list box, and what a container keeps of them.
#include <gmock/gmock.h>

#include "list_box.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Value = PropertyBag::Value;

const DeviceFont kLetters{"Liberation Serif", 12, true, false};
const DevicePicture kHand{"hand", nullptr, 16, 16};
const DevicePicture kGround{"ground", nullptr, 80, 60};

class ListBoxPropertiesTest : public ListBoxTest {
 protected:
  PropertyBag stored() const {
    PropertyBag bag;
    list.WriteProperties(bag);
    return bag;
  }

  // Gives every property another value than its default.
  void changeAll() {
    list.Appearance = 0;
    list.BackColor = 0x102030;
    list.BorderStyle = 0;
    list.CheckBoxes = true;
    list.Enabled = false;
    list.Font = kLetters;
    list.ForeColor = 0x405060;
    list.HideSelection = false;
    list.HotTracking = true;
    list.HoverSelection = true;
    list.LabelEdit = kEditByCallOnly;
    list.LabelWrap = true;
    list.MouseIcon = kHand;
    list.MousePointer = 99;
    list.MultiSelect = true;
    list.Picture = kGround;
    list.PictureAlignment = 4;
    list.Sorted = true;
    list.SortOrder = kDescending;
  }

  void expectDefaults() const {
    EXPECT_EQ(list.Appearance.get(), 1);
    EXPECT_EQ(list.BackColor.get(), 0x80000005);
    EXPECT_EQ(list.BorderStyle.get(), 1);
    EXPECT_FALSE(list.CheckBoxes);
    EXPECT_TRUE(list.Enabled);
    EXPECT_EQ(list.Font.get(), DeviceFont());
    EXPECT_EQ(list.ForeColor.get(), 0x80000008);
    EXPECT_TRUE(list.HideSelection);
    EXPECT_FALSE(list.HotTracking);
    EXPECT_FALSE(list.HoverSelection);
    EXPECT_EQ(list.LabelEdit.get(), 0);
    EXPECT_FALSE(list.LabelWrap);
    EXPECT_FALSE(list.MouseIcon.get().isSet());
    EXPECT_EQ(list.MousePointer.get(), 0);
    EXPECT_FALSE(list.MultiSelect);
    EXPECT_FALSE(list.Picture.get().isSet());
    EXPECT_EQ(list.PictureAlignment.get(), 5);
    EXPECT_FALSE(list.Sorted);
    EXPECT_EQ(list.SortOrder.get(), 0);
  }
};

TEST_F(ListBoxPropertiesTest, HaveTheirDefaults) { expectDefaults(); }

TEST_F(ListBoxPropertiesTest, OfDefaultsNothingIsStored) {
  EXPECT_THAT(stored().values(), IsEmpty());
}

TEST_F(ListBoxPropertiesTest, AreStoredInTheirOrderAndKind) {
  changeAll();
  EXPECT_THAT(
      stored().values(),
      ElementsAre(Pair("Appearance", Value(std::int32_t{0})),
                  Pair("BackColor", Value(ColourCode{0x102030})),
                  Pair("BorderStyle", Value(std::int32_t{0})), Pair("CheckBoxes", Value(true)),
                  Pair("Enabled", Value(false)), Pair("Font", Value(kLetters)),
                  Pair("ForeColor", Value(ColourCode{0x405060})),
                  Pair("HideSelection", Value(false)), Pair("HotTracking", Value(true)),
                  Pair("HoverSelection", Value(true)), Pair("LabelEdit", Value(std::int32_t{1})),
                  Pair("LabelWrap", Value(true)), Pair("MouseIcon", Value(kHand)),
                  Pair("MousePointer", Value(std::int16_t{99})), Pair("MultiSelect", Value(true)),
                  Pair("Picture", Value(kGround)), Pair("PictureAlignment", Value(std::int32_t{4})),
                  Pair("Sorted", Value(true)), Pair("SortOrder", Value(std::int32_t{1}))));
}

TEST_F(ListBoxPropertiesTest, WhatIsSetToItsDefaultIsNotStored) {
  list.MousePointer = 99;
  list.MousePointer = 0;
  EXPECT_THAT(stored().values(), IsEmpty());
}

TEST_F(ListBoxPropertiesTest, WhatWasStoredComesBack) {
  changeAll();
  const PropertyBag bag = stored();

  LVListBox other(simulation.platform);
  other.ReadProperties(bag);

  PropertyBag again;
  other.WriteProperties(again);
  EXPECT_EQ(again.values(), bag.values());
}

TEST_F(ListBoxPropertiesTest, AnEmptyBagBringsTheDefaultsBack) {
  changeAll();
  list.ReadProperties(PropertyBag());
  expectDefaults();
}

TEST_F(ListBoxPropertiesTest, AValueOfAnotherKindIsTheDefault) {
  PropertyBag bag;
  bag.WriteProperty("MousePointer", std::int32_t{99});
  bag.WriteProperty("Enabled", std::int16_t{0});
  list.ReadProperties(bag);
  EXPECT_EQ(list.MousePointer.get(), 0);
  EXPECT_TRUE(list.Enabled);
}

TEST_F(ListBoxPropertiesTest, PassThroughToTheList) {
  changeAll();
  const ListView& view = list.ListView1;
  EXPECT_EQ(view.Appearance.get(), 0);
  EXPECT_EQ(view.BackColor.get(), 0x102030U);
  EXPECT_EQ(view.BorderStyle.get(), 0);
  EXPECT_TRUE(view.CheckBoxes);
  EXPECT_FALSE(list.enabled);
  EXPECT_EQ(view.Font.get(), kLetters);
  EXPECT_EQ(view.ForeColor.get(), 0x405060U);
  EXPECT_FALSE(view.HideSelection);
  EXPECT_TRUE(view.HotTracking);
  EXPECT_TRUE(view.HoverSelection);
  EXPECT_EQ(view.LabelEdit.get(), 1);
  EXPECT_TRUE(view.LabelWrap);
  EXPECT_EQ(view.MouseIcon.get(), kHand);
  EXPECT_EQ(view.MousePointer.get(), 99);
  EXPECT_TRUE(view.MultiSelect);
  EXPECT_EQ(view.Picture.get(), kGround);
  EXPECT_EQ(view.PictureAlignment.get(), 4);
  EXPECT_TRUE(view.Sorted());
  EXPECT_EQ(view.SortOrder(), 1);
}

TEST_F(ListBoxPropertiesTest, TellWhatTheListHas) {
  list.ListView1.BorderStyle = 0;
  list.enabled = false;
  list.ListView1.setSorted(true);
  EXPECT_EQ(list.BorderStyle.get(), 0);
  EXPECT_FALSE(list.Enabled);
  EXPECT_TRUE(list.Sorted);
}

TEST_F(ListBoxPropertiesTest, EachTellsTheContainerThatItWasWritten) {
  Texts changed;
  list.propertyChanged = [&](std::string_view name) { changed.emplace_back(name); };
  changeAll();
  EXPECT_THAT(changed,
              ElementsAre("Appearance", "BackColor", "BorderStyle", "CheckBoxes", "Enabled", "Font",
                          "ForeColor", "HideSelection", "HotTracking", "HoverSelection",
                          "LabelEdit", "LabelWrap", "MouseIcon", "MousePointer", "MultiSelect",
                          "Picture", "PictureAlignment", "Sorted", "SortOrder"));
}

TEST_F(ListBoxPropertiesTest, TellTheContainerAlsoOfTheValueThatTheyHad) {
  Texts changed;
  list.propertyChanged = [&](std::string_view name) { changed.emplace_back(name); };
  list.BorderStyle = 1;
  EXPECT_THAT(changed, ElementsAre("BorderStyle"));
}

TEST_F(ListBoxPropertiesTest, AreNotMarkedWhenTheyAreRead) {
  changeAll();
  const PropertyBag bag = stored();
  Texts changed;
  list.propertyChanged = [&](std::string_view name) { changed.emplace_back(name); };
  list.ReadProperties(bag);
  EXPECT_THAT(changed, IsEmpty());
}

TEST_F(ListBoxPropertiesTest, AreMarkedAfterTheListHasThem) {
  std::int32_t seen = -1;
  list.propertyChanged = [&](std::string_view) { seen = list.ListView1.LabelEdit; };
  list.LabelEdit = kEditByCallOnly;
  EXPECT_EQ(seen, kEditByCallOnly);
}

TEST_F(ListBoxPropertiesTest, ASortedListOfABagIsInItsOrder) {
  fill({"a", "b"});
  PropertyBag bag;
  bag.WriteProperty("Sorted", true);
  bag.WriteProperty("SortOrder", kDescending);
  list.ReadProperties(bag);
  EXPECT_THAT(texts(), ElementsAre("b", "a"));
}

TEST_F(ListBoxPropertiesTest, TheHandleIsThatOfTheShownList) {
  screen.handle = 77;
  EXPECT_EQ(list.hWnd(), 77U);
  list.ListView1.setScreen(nullptr);
  EXPECT_EQ(list.hWnd(), 0U);
}

TEST_F(ListBoxPropertiesTest, TheImageListPassesThrough) {
  const ImageList pictures;
  EXPECT_EQ(list.getImageList(), nullptr);
  list.setImageList(&pictures);
  EXPECT_EQ(list.getImageList(), &pictures);
  EXPECT_EQ(list.ListView1.SmallIcons.get(), &pictures);
  list.setImageList(nullptr);
  EXPECT_EQ(list.getImageList(), nullptr);
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the list box: what is written, what is read, and what may fail.
#include <gmock/gmock.h>

#include "list_box.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr bool kDetails = true;
constexpr bool kTextsAlone = false;
const std::string kPath = "C:\\Temp\\list.txt";

class ListBoxFileTest : public ListBoxTest {
 protected:
  std::string& file() { return simulation.files.contents[kPath]; }

  // What a file then holds.
  std::string saved(bool details) {
    EXPECT_TRUE(list.SaveToFile(kPath, details));
    return simulation.files.contents.at(kPath);
  }

  // The texts of the lines that a file adds to an empty list.
  Texts loaded(const std::string& content) {
    file() = content;
    list.LoadFromFile(kPath, true, false);
    return texts();
  }
};

using ListBoxSaveTest = ListBoxFileTest;

TEST_F(ListBoxSaveTest, NineFieldsStandInTheirOrder) {
  list.AddItem("text", 7, 0x123456, true, false, true, false, "tag", "key");
  EXPECT_EQ(saved(kDetails), "textØ7Ø1193046Ø-1Ø0Ø-1Ø0ØtagØkey\r\n");
}

TEST_F(ListBoxSaveTest, TheOtherFlagsHaveTheirPlaces) {
  list.AddItem("text", 0, 0, false, true, false, true);
  EXPECT_EQ(saved(kDetails), "textØ0Ø0Ø0Ø-1Ø0Ø-1ØØ\r\n");
}

TEST_F(ListBoxSaveTest, TheListsOwnColourIsANegativeNumber) {
  list.AddItem("text");
  EXPECT_EQ(saved(kDetails), "textØ0Ø-2147483640Ø0Ø0Ø0Ø0ØØ\r\n");
}

TEST_F(ListBoxSaveTest, TheLargestNumbersAreWrittenOut) {
  list.AddItem("text", 32767, 0xFFFFFF);
  EXPECT_EQ(saved(kDetails), "textØ32767Ø16777215Ø0Ø0Ø0Ø0ØØ\r\n");
}

TEST_F(ListBoxSaveTest, ATextLosesTheSeparator) {
  list.AddItem("ØaØØbØ");
  EXPECT_EQ(saved(kDetails), "abØ0Ø-2147483640Ø0Ø0Ø0Ø0ØØ\r\n");
  EXPECT_EQ(saved(kTextsAlone), "ab\r\n");
  EXPECT_THAT(texts(), ElementsAre("ØaØØbØ"));
}

TEST_F(ListBoxSaveTest, BrokenBytesMakeNoSeparatorWhenOneIsTakenOut) {
  list.AddItem(
      "a\xC3Ø\x98"
      "b");
  EXPECT_EQ(saved(kTextsAlone), "ab\r\n");
}

TEST_F(ListBoxSaveTest, ATagAndAKeyAreWrittenAsTheyAre) {
  list.AddItem("text", 0, 0, false, false, false, false, "tØg", "kØy");
  EXPECT_EQ(saved(kDetails), "textØ0Ø0Ø0Ø0Ø0Ø0ØtØgØkØy\r\n");
}

TEST_F(ListBoxSaveTest, WithoutDetailsALineIsItsText) {
  list.AddItem("one", 7, 0x123456, true, true, true, true, "tag", "key");
  list.AddItem("");
  list.AddItem("three");
  EXPECT_EQ(saved(kTextsAlone), "one\r\n\r\nthree\r\n");
}

TEST_F(ListBoxSaveTest, AnEmptyListIsAnEmptyFile) {
  EXPECT_EQ(saved(kDetails), "");
  EXPECT_EQ(saved(kTextsAlone), "");
}

TEST_F(ListBoxSaveTest, AnOlderFileIsReplaced) {
  file() = "a much longer older file";
  list.AddItem("new");
  EXPECT_EQ(saved(kTextsAlone), "new\r\n");
  EXPECT_EQ(simulation.files.closings, 1);
}

TEST_F(ListBoxSaveTest, IsFalseWhenTheFileCannotBeOpened) {
  file() = "older";
  list.AddItem("new");
  simulation.files.refuseOpening = true;
  EXPECT_FALSE(list.SaveToFile(kPath, kDetails));
  EXPECT_EQ(file(), "older");
}

TEST_F(ListBoxSaveTest, IsFalseOnAFullDiskWhichKeepsTheOlderFile) {
  file() = "older";
  list.AddItem("new");
  simulation.files.refuseWriting = true;
  EXPECT_FALSE(list.SaveToFile(kPath, kDetails));
  EXPECT_EQ(file(), "older");
}

TEST_F(ListBoxSaveTest, SucceedsAgainOnceTheDiskHasRoom) {
  list.AddItem("new");
  simulation.files.refuseWriting = true;
  EXPECT_FALSE(list.SaveToFile(kPath, kTextsAlone));
  simulation.files.refuseWriting = false;
  EXPECT_EQ(saved(kTextsAlone), "new\r\n");
}

using ListBoxLoadTest = ListBoxFileTest;

TEST_F(ListBoxLoadTest, NineFieldsAreALine) {
  file() = "textØ7Ø1193046Ø-1Ø0Ø-1Ø0ØtagØkey\r\n";
  list.LoadFromFile(kPath, true, false);
  ASSERT_EQ(list.ListCount(), 1);
  EXPECT_EQ(line(0).Text, "text");
  EXPECT_EQ(line(0).SmallIcon, 7);
  EXPECT_EQ(line(0).ForeColor, 0x123456U);
  EXPECT_TRUE(line(0).Bold);
  EXPECT_FALSE(line(0).Checked);
  EXPECT_TRUE(line(0).Ghosted);
  EXPECT_FALSE(line(0).Selected);
  EXPECT_EQ(line(0).Tag, "tag");
  EXPECT_EQ(line(0).Key, "key");
}

TEST_F(ListBoxLoadTest, TheOtherFlagsHaveTheirPlaces) {
  loaded("textØ0Ø0Ø0Ø-1Ø0Ø-1ØØ\r\n");
  EXPECT_FALSE(line(0).Bold);
  EXPECT_TRUE(line(0).Checked);
  EXPECT_FALSE(line(0).Ghosted);
  EXPECT_TRUE(line(0).Selected);
}

TEST_F(ListBoxLoadTest, AFlagIsTrueWhenItsValueIsNotZero) {
  loaded("1Ø0Ø0Ø1\r\n2Ø0Ø0Ø 5x\r\n3Ø0Ø0Ø0\r\n4Ø0Ø0Ø0.0\r\n5Ø0Ø0ØTrue\r\n6Ø0Ø0Ø\r\n7Ø0Ø0Ø0.5\r\n");
  std::vector<bool> bold;
  for (std::size_t index = 0; index < 7; ++index) bold.push_back(line(index).Bold);
  EXPECT_THAT(bold, ElementsAre(true, true, false, false, false, false, true));
}

TEST_F(ListBoxLoadTest, ANegativeColourIsTheListsOwn) {
  loaded("aØ0Ø-2147483640Ø0\r\nbØ0Ø-1Ø0\r\n");
  EXPECT_EQ(line(0).ForeColor, kWindowText);
  EXPECT_EQ(line(1).ForeColor, kWindowText);
}

TEST_F(ListBoxLoadTest, AColourIsTheNumberAtTheStartOfItsField) {
  loaded("aØ0Ø255 red\r\nbØ0Ø&HFF\r\ncØ0Øred\r\n");
  EXPECT_EQ(line(0).ForeColor, 255U);
  EXPECT_EQ(line(1).ForeColor, 255U);
  EXPECT_EQ(line(2).ForeColor, 0U);
}

TEST_F(ListBoxLoadTest, ANumberThatIsTooLargeIsZero) {
  loaded("aØ32768Ø2147483648Ø0\r\nbØ-32769Ø1E300Ø0\r\n");
  EXPECT_EQ(line(0).SmallIcon, 0);
  EXPECT_EQ(line(0).ForeColor, 0U);
  EXPECT_EQ(line(1).SmallIcon, 0);
  EXPECT_EQ(line(1).ForeColor, 0U);
}

TEST_F(ListBoxLoadTest, ALineWithoutASeparatorIsATextAlone) {
  EXPECT_THAT(loaded("just a text\r\n"), ElementsAre("just a text"));
  EXPECT_EQ(line(0).ForeColor, kWindowText);
  EXPECT_EQ(line(0).SmallIcon, 0);
}

TEST_F(ListBoxLoadTest, FieldsThatAreMissingHaveTheirDefaults) {
  EXPECT_THAT(loaded("aØ\r\nbØ3Ø5Ø-1\r\n"), ElementsAre("a", "b"));
  EXPECT_EQ(line(0).SmallIcon, 0);
  EXPECT_FALSE(line(0).Bold);
  EXPECT_EQ(line(0).Key, "");
  EXPECT_EQ(line(1).SmallIcon, 3);
  EXPECT_EQ(line(1).ForeColor, 5U);
  EXPECT_TRUE(line(1).Bold);
  EXPECT_FALSE(line(1).Checked);
  EXPECT_EQ(line(1).Tag, "");
}

TEST_F(ListBoxLoadTest, AColourThatIsMissingIsTheListsOwn) {
  loaded("aØ3\r\n");
  EXPECT_EQ(line(0).ForeColor, kWindowText);
}

TEST_F(ListBoxLoadTest, FieldsBehindTheNinthAreLeftOut) {
  loaded("aØ0Ø0Ø0Ø0Ø0Ø0ØtagØkeyØtenØeleven\r\n");
  ASSERT_EQ(list.ListCount(), 1);
  EXPECT_EQ(line(0).Tag, "tag");
  EXPECT_EQ(line(0).Key, "key");
}

TEST_F(ListBoxLoadTest, ATextMayBeEmpty) {
  EXPECT_THAT(loaded("Ø7Ø0Ø0Ø0Ø0Ø0ØØ\r\n"), ElementsAre(""));
  EXPECT_EQ(line(0).SmallIcon, 7);
}

TEST_F(ListBoxLoadTest, LinesEndWithACarriageReturnALineFeedOrBoth) {
  EXPECT_THAT(loaded("a\rb\nc\r\nd\r\n"), ElementsAre("a", "b", "c", "d"));
}

TEST_F(ListBoxLoadTest, EmptyLinesAreLines) {
  EXPECT_THAT(loaded("\r\na\r\n\r\n"), ElementsAre("", "a", ""));
  EXPECT_THAT(loaded("a\n\r\nb\r\rc\n\n"), ElementsAre("a", "", "b", "", "c", ""));
}

TEST_F(ListBoxLoadTest, TheLastLineNeedsNoEnd) {
  EXPECT_THAT(loaded("a\r\nb"), ElementsAre("a", "b"));
  EXPECT_THAT(loaded("aØ1\r\nbØ2"), ElementsAre("a", "b"));
  EXPECT_EQ(line(1).SmallIcon, 2);
}

TEST_F(ListBoxLoadTest, AnEmptyFileHasNoLines) { EXPECT_THAT(loaded(""), IsEmpty()); }

TEST_F(ListBoxLoadTest, AnEmptyFileEmptiesTheListAsAnyOther) {
  fill({"a"});
  EXPECT_THAT(loaded(""), IsEmpty());
}

TEST_F(ListBoxLoadTest, AppendsToTheLinesThatAreThere) {
  fill({"a"});
  file() = "b\r\nc\r\n";
  list.LoadFromFile(kPath, false, true);
  EXPECT_THAT(texts(), ElementsAre("a", "b", "c"));
}

TEST_F(ListBoxLoadTest, WithoutAppendTheListIsEmptied) {
  fill({"a"});
  file() = "b\r\n";
  list.LoadFromFile(kPath, false, false);
  EXPECT_THAT(texts(), ElementsAre("b"));
}

TEST_F(ListBoxLoadTest, ClearGoesBeforeAppend) {
  fill({"a"});
  file() = "b\r\n";
  list.LoadFromFile(kPath, true, true);
  EXPECT_THAT(texts(), ElementsAre("b"));
}

TEST_F(ListBoxLoadTest, AMissingFileChangesNothing) {
  fill({"a"});
  list.LoadFromFile("C:\\Temp\\missing.txt", true, false);
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(screen.told, IsEmpty());
}

TEST_F(ListBoxLoadTest, AFileThatCannotBeReadChangesNothing) {
  fill({"a"});
  simulation.files.others.push_back("C:\\Temp");  // a folder is there, but no text in it
  list.LoadFromFile("C:\\Temp", true, false);
  EXPECT_THAT(texts(), ElementsAre("a"));
  EXPECT_THAT(screen.told, IsEmpty());
}

TEST_F(ListBoxLoadTest, SeveralSelectedLinesLeaveTheLastOneSelected) {
  loaded("aØ0Ø0Ø0Ø0Ø0Ø-1\r\nbØ0Ø0Ø0Ø0Ø0Ø-1\r\n");
  EXPECT_THAT(selected(), ElementsAre("b"));
}

TEST_F(ListBoxLoadTest, SeveralSelectedLinesStaySoWithMultiSelect) {
  list.MultiSelect = true;
  loaded("aØ0Ø0Ø0Ø0Ø0Ø-1\r\nbØ0Ø0Ø0Ø0Ø0Ø-1\r\n");
  EXPECT_THAT(selected(), ElementsAre("a", "b"));
}

TEST_F(ListBoxLoadTest, LinesComeIntoTheOrderOfASortedList) {
  list.Sorted = true;
  EXPECT_THAT(loaded("b\r\na\r\n"), ElementsAre("a", "b"));
}

TEST_F(ListBoxFileTest, ASavedFileGivesTheSameTextsPicturesAndColours) {
  list.AddItem("one", 1, 0xFF0000, true, false, true, false, "t1", "k1");
  list.AddItem("two", 38, 0, false, true, false, true, "t2", "k2");
  list.AddItem("");
  const std::string before = saved(kDetails);

  LVListBox other(simulation.platform);
  other.LoadFromFile(kPath, true, false);

  ASSERT_EQ(other.ListCount(), 3);
  EXPECT_EQ(other.List(1), "two");
  EXPECT_EQ(other.ListView1.line(1).SmallIcon, 38);
  EXPECT_EQ(other.ListView1.line(0).ForeColor, 0xFF0000U);
  EXPECT_TRUE(other.SaveToFile("C:\\Temp\\again.txt", kDetails));
  EXPECT_EQ(simulation.files.contents["C:\\Temp\\again.txt"], before);
}

TEST_F(ListBoxFileTest, ATextHoldingTheSeparatorLosesItWhenItIsSaved) {
  list.AddItem("Ø 12 mm");
  saved(kDetails);
  list.LoadFromFile(kPath, true, false);
  EXPECT_THAT(texts(), ElementsAre(" 12 mm"));
}

}  // namespace
}  // namespace veltrin

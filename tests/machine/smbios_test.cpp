// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/smbios.h"

#include <gtest/gtest.h>
#include <vector>

#include "smbios_table.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

// A structure with a fixed part behind the header and its texts.
std::string structure(unsigned char type, const std::string& fixed,
                      const std::vector<std::string>& texts) {
  std::string bytes{static_cast<char>(type), static_cast<char>(4 + fixed.size()), '\x00', '\x01'};
  bytes += fixed;
  for (const std::string& text : texts) {
    bytes += text + '\0';
  }
  return bytes + (texts.empty() ? std::string(2, '\0') : std::string(1, '\0'));
}

// BIOS Information: numbers of the vendor and the version, a segment, the number of
// the date, a size.
const std::string kBiosFixed("\x01\x02\x00\xE0\x03\x7F", 6);
// System Information: numbers of the manufacturer, product, version and serial.
const std::string kSystemFixed("\x01\x02\x00\x03", 4);

std::string bios() { return structure(0, kBiosFixed, {"Example Firmware", "F.20", "08/10/2025"}); }

std::string system() { return structure(1, kSystemFixed, {"Example Works", "Model 7", "serial"}); }

SmbiosTexts readSmbios(const std::string& bytes) { return smbiosTexts(SmbiosTable(bytes)); }

const SmbiosTexts kBoth{"Example Firmware", "F.20", "08/10/2025", "Example Works", "Model 7"};

TEST(Smbios, ReadsTheFirmwareAndTheComputer) { EXPECT_EQ(readSmbios(bios() + system()), kBoth); }

TEST(Smbios, ReadsThemInEitherOrderAmongOthers) {
  EXPECT_EQ(readSmbios(structure(2, "\x01", {"board"}) + system() + structure(32, "", {}) + bios()),
            kBoth);
}

TEST(Smbios, TakesTheFirstOfSeveral) {
  EXPECT_EQ(readSmbios(bios() + system() + structure(1, kSystemFixed, {"Other", "Other", "x"})),
            kBoth);
}

TEST(Smbios, EndsAtTheEndOfTheTable) {
  EXPECT_EQ(readSmbios(structure(127, "", {}) + bios() + system()), SmbiosTexts());
}

TEST(Smbios, LeavesATextWithoutANumberEmpty) {
  const SmbiosTexts texts = readSmbios(structure(1, std::string("\x00\x01", 2), {"only"}));
  EXPECT_EQ(texts.manufacturer, "");
  EXPECT_EQ(texts.product, "only");
}

TEST(Smbios, LeavesATextBeyondTheLastEmpty) {
  const SmbiosTexts texts = readSmbios(structure(1, "\x01\x09", {"only"}));
  EXPECT_EQ(texts.manufacturer, "only");
  EXPECT_EQ(texts.product, "");
}

TEST(Smbios, LeavesATextBeyondTheFixedPartEmpty) {
  const SmbiosTexts texts = readSmbios(structure(1, "\x01", {"only", "unnumbered"}));
  EXPECT_EQ(texts.manufacturer, "only");
  EXPECT_EQ(texts.product, "");
}

TEST(Smbios, StopsAtAStructureShorterThanItsHeader) {
  EXPECT_EQ(readSmbios(std::string("\x05\x03\x00\x00\x00", 5) + bios()), SmbiosTexts());
}

TEST(Smbios, StopsAtAStructureThatTheTableCutsOff) {
  const std::string whole = system();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(readSmbios(whole.substr(0, size)), SmbiosTexts()) << size;
  }
}

TEST(Smbios, MarksBytesThatAreNoText) {
  EXPECT_EQ(readSmbios(structure(1, kSystemFixed, {"\xFF\xFF", " two\r\n", "3"})).manufacturer,
            "??");
}

TEST(Smbios, ReadsTheTableOfTheSystem) {
  const TemporaryTree tree;
  tree.put("/sys/firmware/dmi/tables/DMI", bios() + system());
  EXPECT_EQ(smbiosTexts(SmbiosTable(tree.files())), kBoth);
}

TEST(Smbios, HasNoStructuresWhereThereIsNoTable) {
  const SmbiosTable table(TemporaryTree().files());
  EXPECT_FALSE(table.first(SmbiosType::Bios));
  EXPECT_TRUE(table.all(SmbiosType::Bios).empty());
}

TEST(Smbios, GivesAllStructuresOfATypeInTheirOrder) {
  const SmbiosTable table(structure(9, "\x01", {"first"}) + system() +
                          structure(9, "\x01", {"second"}));
  const auto slots = table.all(SmbiosType::Slot);
  ASSERT_EQ(slots.size(), 2U);
  EXPECT_EQ(slots[0].text(4), "first");
  EXPECT_EQ(slots[1].text(4), "second");
}

TEST(Smbios, GivesNumbersOfAnySizeWithTheLowestByteFirst) {
  const SmbiosTable table(structure(7, "\x12\x34\x56\x78", {}));
  const auto cache = table.first(SmbiosType::Cache);
  ASSERT_TRUE(cache);
  EXPECT_EQ(cache->number(4), 0x12U);
  EXPECT_EQ(cache->number(5, 2), 0x5634U);
  EXPECT_EQ(cache->number(4, 4), 0x78563412U);
}

TEST(Smbios, GivesNoNumberThatTheFixedPartEndsWithin) {
  const SmbiosTable table(structure(7, "\x12\x34", {"a text behind"}));
  const auto cache = table.first(SmbiosType::Cache);
  ASSERT_TRUE(cache);
  EXPECT_EQ(cache->number(5), 0x34U);
  EXPECT_EQ(cache->number(5, 2), std::nullopt);
  EXPECT_EQ(cache->number(6), std::nullopt);
  EXPECT_EQ(cache->number(1000), std::nullopt);
}

TEST(Smbios, GivesTheHandleOfAStructure) {
  const SmbiosTable table(std::string("\x07\x04\x34\x12\0\0", 6));
  EXPECT_EQ(table.first(SmbiosType::Cache)->handle(), 0x1234U);
}

// --- The tables that tests make ---

TEST(SmbiosTableOfATest, IsMadeByteByByte) {
  const std::string table = smbiosTable(
      {SmbiosPart(9, 8).text(4, "one").number(5, 0x0201, 2).text(7, "two").handle(0x0304)});
  EXPECT_EQ(table, std::string("\x09\x08\x04\x03\x01\x01\x02\x02one\0two\0\0"
                               "\x7F\x04\x00\x01\0\0",
                               23));
}

}  // namespace
}  // namespace veltrin

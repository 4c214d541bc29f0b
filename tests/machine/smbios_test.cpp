#include "machine/smbios.h"

#include <gtest/gtest.h>
#include <vector>

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

}  // namespace
}  // namespace veltrin

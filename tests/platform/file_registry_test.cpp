// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/file_registry.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "platform/portable/registry_value.h"
#include "scratch_folder.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

// A value as `query` gives it, found the way callers do: the size first.
struct Answer {
  std::int32_t error = 0;
  std::uint32_t type = 0;
  std::string bytes;
};

class FileRegistryTest : public testing::Test {
 protected:
  Registry::Key opened(const std::string& path, std::uint32_t access = kKeyAccess) {
    Registry::Key key = 0;
    EXPECT_EQ(registry_.open(kHkeyCurrentUser, path, access, key), kRegistrySuccess);
    return key;
  }

  Registry::Key made(const std::string& path) {
    EXPECT_EQ(registry_.createKey(kHkeyCurrentUser, path), kRegistrySuccess);
    return opened(path);
  }

  std::int32_t openError(std::uint32_t hive, const std::string& path) {
    Registry::Key key = 0;
    return registry_.open(hive, path, kKeyAccess, key);
  }

  Answer query(Registry::Key key, const std::string& name) {
    Answer answer;
    std::uint32_t size = 0;
    answer.error = registry_.query(key, name, answer.type, size, nullptr);
    if (answer.error != kRegistrySuccess) return answer;
    answer.bytes.resize(size);
    answer.error = registry_.query(key, name, answer.type, size, answer.bytes.data());
    return answer;
  }

  ScratchFolder scratch_;
  FileRegistry registry_{scratch_.path("registry.ini")};
};

TEST_F(FileRegistryTest, DoesNotFindAMissingKey) {
  EXPECT_EQ(openError(kHkeyCurrentUser, "Software\\Veltrin"), 2);
}

TEST_F(FileRegistryTest, FindsAKeyWithoutRegardToCase) {
  registry_.createKey(kHkeyCurrentUser, "Software\\Veltrin");
  EXPECT_EQ(openError(kHkeyCurrentUser, "SOFTWARE\\veltrin"), 0);
}

TEST_F(FileRegistryTest, FindsTheKeysAboveOneThatWasMade) {
  registry_.createKey(kHkeyCurrentUser, "Software\\Veltrin\\Sub");
  EXPECT_EQ(openError(kHkeyCurrentUser, "Software\\Veltrin"), 0);
  EXPECT_EQ(openError(kHkeyCurrentUser, "Software"), 0);
}

TEST_F(FileRegistryTest, MakingAKeyThatExistsWritesNothing) {
  const std::string file = scratch_.path("registry.ini");
  registry_.createKey(kHkeyCurrentUser, "Software\\Veltrin\\Sub");
  const auto longAgo = std::filesystem::last_write_time(file) - std::chrono::hours(24);
  std::filesystem::last_write_time(file, longAgo);

  EXPECT_EQ(registry_.createKey(kHkeyCurrentUser, "SOFTWARE\\Veltrin"), 0);
  EXPECT_EQ(std::filesystem::last_write_time(file), longAgo);

  EXPECT_EQ(registry_.createKey(kHkeyCurrentUser, "Software\\Veltrin\\Other"), 0);
  EXPECT_GT(std::filesystem::last_write_time(file), longAgo);
}

TEST_F(FileRegistryTest, KeepsTheHivesApart) {
  registry_.createKey(kHkeyCurrentUser, "Software");
  EXPECT_EQ(openError(kHkeyLocalMachine, "Software"), 2);
}

TEST_F(FileRegistryTest, OpensAHiveByAnEmptyPath) {
  EXPECT_EQ(openError(kHkeyLocalMachine, ""), 0);
}

TEST_F(FileRegistryTest, PassesOverASeparatorAtTheEnd) {
  registry_.createKey(kHkeyCurrentUser, "Software");
  EXPECT_EQ(openError(kHkeyCurrentUser, "Software\\"), 0);
}

TEST_F(FileRegistryTest, RefusesASeparatorInFront) {
  EXPECT_EQ(openError(kHkeyCurrentUser, "\\Software"), 161);
}

TEST_F(FileRegistryTest, RefusesAnUnknownHive) { EXPECT_EQ(openError(0x1234, "Software"), 6); }

TEST_F(FileRegistryTest, GivesBackATextWithItsNul) {
  const auto key = made("Software");
  EXPECT_EQ(registry_.set(key, "MTU", kRegSz, "1500\0"s), 0);
  const Answer answer = query(key, "mtu");
  EXPECT_EQ(answer.error, 0);
  EXPECT_EQ(answer.type, kRegSz);
  EXPECT_EQ(answer.bytes, "1500\0"s);
}

TEST_F(FileRegistryTest, GivesBackATextWithoutANul) {
  const auto key = made("Software");
  registry_.set(key, "MTU", kRegSz, "1500");
  EXPECT_EQ(query(key, "MTU").bytes, "1500");
}

TEST_F(FileRegistryTest, GivesBackANumber) {
  const auto key = made("Software");
  registry_.set(key, "Count", kRegDword, "\x0F\x01\x00\xFF"s);
  const Answer answer = query(key, "Count");
  EXPECT_EQ(answer.type, kRegDword);
  EXPECT_EQ(answer.bytes, "\x0F\x01\x00\xFF"s);
}

TEST_F(FileRegistryTest, GivesBackANumberOfAnotherSize) {
  const auto key = made("Software");
  registry_.set(key, "Count", kRegDword, "\x0F\x01");
  const Answer answer = query(key, "Count");
  EXPECT_EQ(answer.type, kRegDword);
  EXPECT_EQ(answer.bytes, "\x0F\x01");
}

TEST_F(FileRegistryTest, GivesBackEveryByteOfAText) {
  const auto key = made("Software");
  std::string all;
  for (int byte = 255; byte >= 0; --byte) all += static_cast<char>(byte);
  registry_.set(key, "All", kRegSz, all);
  EXPECT_EQ(query(key, "All").bytes, all);
}

TEST_F(FileRegistryTest, GivesBackBlanksAndQuotationMarksAroundAText) {
  const auto key = made("Software");
  registry_.set(key, "Blanks", kRegSz, "  a b  ");
  registry_.set(key, "Quotes", kRegSz, "\"a\"");
  EXPECT_EQ(query(key, "Blanks").bytes, "  a b  ");
  EXPECT_EQ(query(key, "Quotes").bytes, "\"a\"");
}

TEST_F(FileRegistryTest, GivesBackBytesOfOtherTypes) {
  const auto key = made("Software");
  registry_.set(key, "Raw", 3, "\0\xFF\r\n"s);
  const Answer answer = query(key, "Raw");
  EXPECT_EQ(answer.type, 3U);
  EXPECT_EQ(answer.bytes, "\0\xFF\r\n"s);
}

TEST_F(FileRegistryTest, GivesBackAnEmptyText) {
  const auto key = made("Software");
  registry_.set(key, "Empty", kRegSz, "");
  const Answer answer = query(key, "Empty");
  EXPECT_EQ(answer.error, 0);
  EXPECT_EQ(answer.bytes, "");
}

TEST_F(FileRegistryTest, KeepsValuesOfOddNamesApart) {
  const auto key = made("Software");
  const std::string names[] = {"",       "@",   "a=b", ";a",  "[a]",      " a ",
                               "a\r\nb", "%40", "a%",  "\0"s, "\xC3\xA4", "a"};
  for (const auto& name : names) registry_.set(key, name, kRegSz, "value of " + name);
  for (const auto& name : names) EXPECT_EQ(query(key, name).bytes, "value of " + name);
}

TEST_F(FileRegistryTest, FindsKeysOfOddNames) {
  for (const std::string path : {"a]b\\[c", " a \\ b ", "a\r\nb", "%;="}) {
    registry_.set(made(path), "Path", kRegSz, path);
    EXPECT_EQ(query(opened(path), "Path").bytes, path);
  }
}

TEST_F(FileRegistryTest, ReplacesAValueAndItsType) {
  const auto key = made("Software");
  registry_.set(key, "MTU", kRegSz, "1500");
  registry_.set(key, "MTU", kRegDword, "\x01\x02\x03\x04");
  EXPECT_EQ(query(key, "MTU").type, kRegDword);
}

TEST_F(FileRegistryTest, DoesNotFindAMissingValue) {
  EXPECT_EQ(query(made("Software"), "MTU").error, 2);
}

TEST_F(FileRegistryTest, TellsTheSizeThatATooSmallBufferWouldNeed) {
  const auto key = made("Software");
  registry_.set(key, "MTU", kRegSz, "1500\0"s);
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  std::string buffer = "####";
  EXPECT_EQ(registry_.query(key, "MTU", type, size, buffer.data()), 234);
  EXPECT_EQ(size, 5U);
  EXPECT_EQ(buffer, "####");
}

TEST_F(FileRegistryTest, KnowsAClosedKeyNoMore) {
  const auto key = made("Software");
  registry_.close(key);
  EXPECT_EQ(registry_.set(key, "MTU", kRegSz, "1500"), 6);
  EXPECT_EQ(query(key, "MTU").error, 6);
}

TEST_F(FileRegistryTest, RefusesToStoreInAKeyThatWasOpenedForReading) {
  made("Software");
  EXPECT_EQ(registry_.set(opened("Software", 1), "MTU", kRegSz, "1500"), 5);
}

TEST_F(FileRegistryTest, RefusesToReadAKeyThatWasOpenedForStoring) {
  made("Software");
  EXPECT_EQ(query(opened("Software", 2), "MTU").error, 5);
}

TEST_F(FileRegistryTest, TellsThatAnOpenKeyIsGone) {
  const auto key = made("Software");
  scratch_.fill("registry.ini", "");
  EXPECT_EQ(registry_.set(key, "MTU", kRegSz, "1500"), 1018);
  EXPECT_EQ(query(key, "MTU").error, 1018);
}

TEST_F(FileRegistryTest, StoresInAHiveItself) {
  const auto key = opened("");
  EXPECT_EQ(registry_.set(key, "MTU", kRegSz, "1500"), 0);
  EXPECT_EQ(query(key, "MTU").bytes, "1500");
}

TEST_F(FileRegistryTest, WritesAFileThatPeopleCanRead) {
  const auto key = made("Software\\Veltrin");
  registry_.set(key, "MTU", kRegSz, "1500\0"s);
  registry_.set(key, "Count", kRegDword, "\x0F\x00\x00\x00"s);
  registry_.set(key, "", 3, "\x00\xFF"s);
  EXPECT_EQ(scratch_.content("registry.ini"),
            "[HKEY_CURRENT_USER\\Software]\r\n"
            "[HKEY_CURRENT_USER\\Software\\Veltrin]\r\n"
            "MTU=sz:1500%00\r\n"
            "Count=dword:0000000f\r\n"
            "@=hex(3):00ff\r\n");
}

TEST_F(FileRegistryTest, ReadsAFileThatPeopleHaveEdited) {
  scratch_.fill("registry.ini", "; mine\n[hkey_current_user\\software]\n mtu = SZ:1500 \n");
  EXPECT_EQ(query(opened("Software"), "MTU").bytes, "1500");
}

TEST_F(FileRegistryTest, TellsThatALineIsNoValue) {
  scratch_.fill("registry.ini",
                "[HKEY_CURRENT_USER\\A]\n"
                "a=1500\nb=sz:%4\nc=sz:%xx\nd=dword:12\ne=dword:0000000g\nf=hex(3):0\ng=hex(x):00\n"
                "h=hex(3\n");
  const auto key = opened("A");
  for (const std::string name : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
    EXPECT_EQ(query(key, name).error, 13) << name;
  }
}

TEST_F(FileRegistryTest, TellsThatItsFileCannotBeRead) {
  std::filesystem::create_directory(scratch_.path("registry.ini"));
  EXPECT_NE(openError(kHkeyCurrentUser, "Software"), 0);
}

TEST_F(FileRegistryTest, TellsThatItsFileCannotBeWritten) {
  FileRegistry registry(scratch_.path("missing/registry.ini"));
  EXPECT_EQ(registry.createKey(kHkeyCurrentUser, "Software"), 1016);
}

TEST_F(FileRegistryTest, IsFoundAgainByANewRegistry) {
  registry_.set(made("Software"), "MTU", kRegSz, "1500");
  FileRegistry again(scratch_.path("registry.ini"));
  Registry::Key key = 0;
  ASSERT_EQ(again.open(kHkeyCurrentUser, "Software", kKeyAccess, key), 0);
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  std::string buffer(4, '#');
  EXPECT_EQ(again.query(key, "MTU", type, size, buffer.data()), 0);
  EXPECT_EQ(buffer, "1500");
}

}  // namespace
}  // namespace veltrin

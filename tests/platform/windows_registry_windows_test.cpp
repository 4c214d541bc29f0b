// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

#include "platform/windows/windows_registry.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

// The tests' own key, gone when they are over.
constexpr const char* kPath = "Software\\VeltrinTest";

class WindowsRegistryTest : public testing::Test {
 protected:
  void SetUp() override {
    HKEY made = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, kPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &made, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(made);
    ASSERT_EQ(registry_.open(kHkeyCurrentUser, kPath, kKeyAccess, key_), 0);
  }

  void TearDown() override {
    registry_.close(key_);
    RegDeleteTreeA(HKEY_CURRENT_USER, kPath);
  }

  std::string bytes(const std::string& name) {
    std::uint32_t size = 0;
    EXPECT_EQ(registry_.query(key_, name, type_, size, nullptr), 0);
    std::string value(size, '#');
    EXPECT_EQ(registry_.query(key_, name, type_, size, value.data()), 0);
    return value;
  }

  WindowsRegistry registry_;
  Registry::Key key_ = 0;
  std::uint32_t type_ = 0;
};

TEST_F(WindowsRegistryTest, DoesNotFindAMissingKey) {
  Registry::Key key = 0;
  EXPECT_EQ(registry_.open(kHkeyCurrentUser, "Software\\VeltrinTest\\Missing", kKeyAccess, key), 2);
}

TEST_F(WindowsRegistryTest, FindsAKeyWithoutRegardToCase) {
  Registry::Key key = 0;
  EXPECT_EQ(registry_.open(kHkeyCurrentUser, "SOFTWARE\\veltrintest", kKeyAccess, key), 0);
  registry_.close(key);
}

TEST_F(WindowsRegistryTest, OpensAKeyOfTheMachine) {
  Registry::Key key = 0;
  EXPECT_EQ(registry_.open(kHkeyLocalMachine, "Software", KEY_QUERY_VALUE, key), 0);
  registry_.close(key);
}

TEST_F(WindowsRegistryTest, RefusesASeparatorInFront) {
  Registry::Key key = 0;
  EXPECT_EQ(registry_.open(kHkeyCurrentUser, "\\Software", kKeyAccess, key), 161);
}

TEST_F(WindowsRegistryTest, GivesBackATextWithItsNul) {
  EXPECT_EQ(registry_.set(key_, "MTU", kRegSz, "1500\0"s), 0);
  EXPECT_EQ(bytes("mtu"), "1500\0"s);
  EXPECT_EQ(type_, kRegSz);
}

TEST_F(WindowsRegistryTest, EndsATextThatIsStoredWithoutANul) {
  EXPECT_EQ(registry_.set(key_, "MTU", kRegSz, "1500"), 0);
  EXPECT_EQ(bytes("MTU"), "1500\0"s);
}

TEST_F(WindowsRegistryTest, GivesBackATextOutsideAscii) {
  if (GetACP() != 1252) GTEST_SKIP() << "the code page of this machine is not 1252";
  EXPECT_EQ(registry_.set(key_, "N\xC3\xA4me", kRegSz, "\xC3\xBC\xE2\x82\xAC\0"s), 0);
  EXPECT_EQ(bytes("N\xC3\xA4me"), "\xC3\xBC\xE2\x82\xAC\0"s);
}

TEST_F(WindowsRegistryTest, GivesBackANumber) {
  EXPECT_EQ(registry_.set(key_, "Count", kRegDword, "\x0F\x01\x00\xFF"s), 0);
  EXPECT_EQ(bytes("Count"), "\x0F\x01\x00\xFF"s);
  EXPECT_EQ(type_, kRegDword);
}

TEST_F(WindowsRegistryTest, DoesNotFindAMissingValue) {
  std::uint32_t size = 0;
  EXPECT_EQ(registry_.query(key_, "MTU", type_, size, nullptr), 2);
}

TEST_F(WindowsRegistryTest, TellsTheSizeThatATooSmallBufferWouldNeed) {
  registry_.set(key_, "MTU", kRegSz, "1500\0"s);
  std::uint32_t size = 4;
  std::string buffer = "####";
  EXPECT_EQ(registry_.query(key_, "MTU", type_, size, buffer.data()), 234);
  EXPECT_EQ(size, 5U);
  EXPECT_EQ(buffer, "####");
}

TEST_F(WindowsRegistryTest, RefusesToStoreInAKeyThatWasOpenedForReading) {
  Registry::Key key = 0;
  ASSERT_EQ(registry_.open(kHkeyCurrentUser, kPath, KEY_QUERY_VALUE, key), 0);
  EXPECT_EQ(registry_.set(key, "MTU", kRegSz, "1500"), 5);
  registry_.close(key);
}

TEST_F(WindowsRegistryTest, TellsThatAnOpenKeyIsGone) {
  RegDeleteTreeA(HKEY_CURRENT_USER, kPath);
  EXPECT_EQ(registry_.set(key_, "MTU", kRegSz, "1500"), 1018);
}

}  // namespace
}  // namespace veltrin

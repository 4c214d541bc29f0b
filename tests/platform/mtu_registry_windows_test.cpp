// SPDX-License-Identifier: GPL-3.0-or-later
// The MTU in the registry of Windows, where the system itself keeps it.
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <windows.h>

#include "mtu/mtu_values.h"
#include "platform/windows/windows_registry.h"
#include "support/program_with_registry.h"

namespace veltrin {
namespace {

using namespace std::string_literals;

// The registry of the system, which notes what it is asked.
class NotingRegistry : public WindowsRegistry {
 public:
  std::int32_t open(std::uint32_t hive, const std::string& path, std::uint32_t access,
                    Key& key) override {
    this->access = access;
    return WindowsRegistry::open(hive, path, access, key);
  }
  std::int32_t set(Key key, const std::string& name, std::uint32_t type,
                   const std::string& data) override {
    handed = data;
    return error = WindowsRegistry::set(key, name, type, data);
  }

  std::uint32_t access = 0;
  std::optional<std::string> handed;
  std::int32_t error = -1;
};

// Nobody may open a key.
class RefusingRegistry : public NotingRegistry {
 public:
  std::int32_t open(std::uint32_t, const std::string&, std::uint32_t, Key&) override {
    return ERROR_ACCESS_DENIED;
  }
};

// The key is made where it is missing. The value that it had is there again at the end.
class MtuRegistryTest : public testing::Test {
 protected:
  void SetUp() override {
    DWORD disposition = 0;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, kInterfacesKey, 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &key_, &disposition),
              ERROR_SUCCESS);
    isOurs_ = disposition == REG_CREATED_NEW_KEY;
    present_ = stored();
    RegDeleteValueA(key_, "MTU");
  }

  void TearDown() override {
    RegDeleteValueA(key_, "MTU");
    if (present_) put(present_->type, present_->bytes);
    RegCloseKey(key_);
    if (isOurs_) RegDeleteKeyA(HKEY_LOCAL_MACHINE, kInterfacesKey);
  }

  struct Value {
    DWORD type = 0;
    std::string bytes;
  };

  void put(DWORD type, const std::string& bytes) const {
    ASSERT_EQ(RegSetValueExA(key_, "MTU", 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }

  // What the system has, to the last byte.
  std::optional<Value> stored() const {
    Value value;
    char bytes[64];
    DWORD size = sizeof bytes;
    if (RegQueryValueExA(key_, "MTU", nullptr, &value.type, reinterpret_cast<BYTE*>(bytes),
                         &size) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    value.bytes.assign(bytes, size);
    return value;
  }

  HKEY key_ = nullptr;
  bool isOurs_ = false;
  std::optional<Value> present_;
  NotingRegistry registry_;
  ProgramWithRegistry run_{registry_};
};

TEST_F(MtuRegistryTest, AnAbsentValueReadsAsNothing) {
  EXPECT_EQ(readMtu(run_.program).text(), "");
}

TEST_F(MtuRegistryTest, AValueIsReadWithTheTerminatorThatItWasStoredWith) {
  put(REG_SZ, "1500\0"s);
  EXPECT_EQ(readMtu(run_.program).text(), "1500\0"s);
}

TEST_F(MtuRegistryTest, AValueThatBeginsWithTheLargestIsReadAsAWhole) {
  put(REG_SZ, "15000\0"s);
  EXPECT_EQ(readMtu(run_.program).text(), "15000\0"s);
}

TEST_F(MtuRegistryTest, ASmallerValueIsRead) {
  put(REG_SZ, "1492\0"s);
  EXPECT_EQ(readMtu(run_.program).text(), "1492\0"s);
}

TEST_F(MtuRegistryTest, ADoubleWordIsReadAsItsNumber) {
  put(REG_DWORD, "\xD4\x05\0\0"s);
  EXPECT_EQ(readMtu(run_.program).text(), "1492");
}

TEST_F(MtuRegistryTest, TheKeyIsOpenedForAllRightsOnValuesAndSubkeys) {
  readMtu(run_.program);
  EXPECT_EQ(registry_.access, 0x3FU);
}

TEST_F(MtuRegistryTest, AWrittenValueIsHandedOverAsItsDigitsAlone) {
  writeMtu(run_.program, Loose(1492));

  EXPECT_EQ(registry_.handed, "1492");
  EXPECT_EQ(registry_.error, ERROR_SUCCESS);
}

// The system completes a text that is handed over without a terminator.
TEST_F(MtuRegistryTest, AWrittenValueIsATextInTheRegistry) {
  writeMtu(run_.program, Loose("1500"));

  const auto value = stored();
  ASSERT_TRUE(value.has_value());
  EXPECT_EQ(value->type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(value->bytes, "1500\0"s);
}

TEST_F(MtuRegistryTest, AWrittenValueTakesTheOldOnesPlace) {
  put(REG_SZ, "15000\0"s);
  writeMtu(run_.program, Loose("1492"));
  EXPECT_EQ(readMtu(run_.program).text(), "1492\0"s);
}

TEST_F(MtuRegistryTest, AKeyThatMayNotBeOpenedIsPassedOverInSilence) {
  put(REG_SZ, "1492\0"s);
  RefusingRegistry refusing;
  ProgramWithRegistry run(refusing);

  EXPECT_EQ(readMtu(run.program).text(), "");
  writeMtu(run.program, Loose("1500"));

  EXPECT_FALSE(refusing.handed.has_value());
  EXPECT_EQ(stored()->bytes, "1492\0"s);
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing of single registry values.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "frame/mdlRegistry.h"
#include "support/simulated_store.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kRegBinary = 3;  // a type that the program does not know
const std::string kPath = "Software\\Veltrin";

// Says a size at the first query and fails at the second, as when a value is
// deleted in between.
class ForgetfulRegistry : public SimulatedRegistry {
 public:
  std::int32_t query(Key key, const std::string& name, std::uint32_t& type, std::uint32_t& size,
                     char* data) override {
    constexpr std::int32_t kNotFound = 2;
    return data == nullptr ? SimulatedRegistry::query(key, name, type, size, data) : kNotFound;
  }
};

class RegistryValues : public ::testing::Test {
 protected:
  SimulatedRegistry::Values& values() { return registry.keys[{kHkeyCurrentUser, kKeyInMemory}]; }

  Loose read(const std::string& name) {
    return readRegistryValue(registry, kHkeyCurrentUser, kPath, name);
  }
  void write(const Loose& value, std::uint32_t type) {
    writeRegistryValue(registry, kHkeyCurrentUser, kPath, "MTU", value, type);
  }

  // The simulated registry keeps its paths in lower case.
  const std::string kKeyInMemory = "software\\veltrin";
  SimulatedRegistry registry;
};

// --- Reading ---

TEST_F(RegistryValues, ATextKeepsItsTerminatingNul) {
  values()["MTU"] = {kRegSz, std::string("1500\0", 5)};
  EXPECT_EQ(read("MTU").text(), std::string("1500\0", 5));
}

TEST_F(RegistryValues, ATextStoredWithoutANulComesWithoutOne) {
  values()["MTU"] = {kRegSz, "1500"};
  EXPECT_EQ(read("MTU").text(), "1500");
}

TEST_F(RegistryValues, AnEmptyTextIsRead) {
  values()["MTU"] = {kRegSz, ""};
  EXPECT_EQ(read("MTU").text(), "");
}

TEST_F(RegistryValues, ADoubleWordIsANumber) {
  values()["MTU"] = {kRegDword, std::string("\xDC\x05\0\0", 4)};
  EXPECT_EQ(read("MTU").number(), 1500);
}

TEST_F(RegistryValues, ADoubleWordOfAllOnesIsMinusOne) {
  values()["MTU"] = {kRegDword, "\xFF\xFF\xFF\xFF"};
  EXPECT_EQ(read("MTU").number(), -1);
}

TEST_F(RegistryValues, ADoubleWordOfMoreBytesIsEmpty) {
  values()["MTU"] = {kRegDword, "12345678"};
  EXPECT_TRUE(read("MTU").isEmpty());
}

TEST_F(RegistryValues, AnotherTypeIsEmpty) {
  values()["MTU"] = {kRegBinary, "1500"};
  EXPECT_TRUE(read("MTU").isEmpty());
}

TEST_F(RegistryValues, AMissingKeyIsEmptyWithoutAFailure) { EXPECT_TRUE(read("MTU").isEmpty()); }

TEST_F(RegistryValues, AMissingValueIsEmptyWithoutAFailure) {
  values()["Path"] = {kRegSz, "C:\\"};
  EXPECT_TRUE(read("MTU").isEmpty());
}

TEST_F(RegistryValues, AValueOfAnotherHiveIsNotFound) {
  registry.keys[{kHkeyLocalMachine, kKeyInMemory}]["MTU"] = {kRegSz, "1500"};
  EXPECT_TRUE(read("MTU").isEmpty());
}

TEST(ForgetfulRegistryValues, AValueThatVanishesBetweenTheQueriesIsEmptyAndTheKeyIsClosed) {
  ForgetfulRegistry registry;
  auto& values = registry.keys[{kHkeyCurrentUser, "software\\veltrin"}];
  values["Text"] = {kRegSz, "1500"};
  values["Number"] = {kRegDword, "1234"};
  EXPECT_TRUE(readRegistryValue(registry, kHkeyCurrentUser, kPath, "Text").isEmpty());
  EXPECT_TRUE(readRegistryValue(registry, kHkeyCurrentUser, kPath, "Number").isEmpty());
  EXPECT_EQ(registry.openKeys, 0);
}

// --- Writing ---

TEST_F(RegistryValues, WritesATextWithoutATerminatingNul) {
  values();
  write("1500", kRegSz);
  EXPECT_EQ(values()["MTU"].type, kRegSz);
  EXPECT_EQ(values()["MTU"].data, "1500");
}

TEST_F(RegistryValues, WritesANumberAsATextForThatType) {
  values();
  write(1500, kRegSz);
  EXPECT_EQ(values()["MTU"].data, "1500");
}

TEST_F(RegistryValues, WritesADoubleWordAsFourBytes) {
  values();
  write(1500, kRegDword);
  EXPECT_EQ(values()["MTU"].type, kRegDword);
  EXPECT_EQ(values()["MTU"].data, std::string("\xDC\x05\0\0", 4));
}

TEST_F(RegistryValues, WritesTheTextOfANumberAsADoubleWord) {
  values();
  write("1500", kRegDword);
  EXPECT_EQ(values()["MTU"].data, std::string("\xDC\x05\0\0", 4));
}

TEST_F(RegistryValues, WritesTheLargestAndTheSmallestDoubleWord) {
  values();
  write(4294967295.0, kRegDword);
  EXPECT_EQ(values()["MTU"].data, "\xFF\xFF\xFF\xFF");
  write(-2147483648.0, kRegDword);
  EXPECT_EQ(values()["MTU"].data, std::string("\0\0\0\x80", 4));
}

TEST_F(RegistryValues, ANumberThatDoesNotFitFailsAndClosesTheKey) {
  values();
  EXPECT_THROW(write(4294967296.0, kRegDword), StatementFailed);
  EXPECT_EQ(registry.openKeys, 0);
  EXPECT_TRUE(values().empty());
}

TEST_F(RegistryValues, ATextThatIsNoNumberFailsAndClosesTheKey) {
  values();
  EXPECT_THROW(write("many", kRegDword), StatementFailed);
  EXPECT_EQ(registry.openKeys, 0);
}

TEST_F(RegistryValues, WritesNothingForAnotherType) {
  values();
  write("1500", kRegBinary);
  EXPECT_TRUE(values().empty());
}

TEST_F(RegistryValues, DoesNotMakeAMissingKey) {
  write("1500", kRegSz);
  EXPECT_TRUE(registry.keys.empty());
}

// --- The key ---

TEST_F(RegistryValues, AsksForAllAccessToValuesAndSubkeys) {
  values();
  read("MTU");
  write("1500", kRegSz);
  EXPECT_EQ(registry.accesses, (std::vector<std::uint32_t>{63, 63}));
}

TEST_F(RegistryValues, ClosesTheKeyAfterEveryReadAndWrite) {
  values()["MTU"] = {kRegSz, "1500"};
  read("MTU");
  read("missing");
  write("1400", kRegSz);
  write("1400", kRegBinary);
  EXPECT_EQ(registry.openKeys, 0);
}

}  // namespace
}  // namespace veltrin

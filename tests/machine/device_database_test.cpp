// SPDX-License-Identifier: GPL-3.0-or-later
// Where the hardware database is found, what it says of a device, and that udev's own tool
// says the same.
#include "machine/device_database.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "hardware_database_file.h"
#include "machine/fact_text.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr const char* kId = "pci:v00008086d00001533sv00008086";
constexpr const char* kMaker = " ID_VENDOR_FROM_DATABASE";
constexpr const char* kModel = " ID_MODEL_FROM_DATABASE";

const std::vector<std::string> kPlaces{"/etc/systemd/hwdb/hwdb.bin", "/etc/udev/hwdb.bin",
                                       "/usr/lib/systemd/hwdb/hwdb.bin", "/usr/lib/udev/hwdb.bin",
                                       "/lib/udev/hwdb.bin"};

class DeviceDatabaseTest : public testing::Test {
 protected:
  // Puts a database into the last place, which knows these of the card's properties.
  void know(std::vector<DatabaseEntry> entries) const {
    for (DatabaseEntry& entry : entries) entry.pattern = "pci:v00008086d00001533*";
    tree.put("/lib/udev/hwdb.bin", databaseFile(entries));
  }

  // What it tells of the card's model; empty when nothing.
  std::string model() const {
    const auto known = DeviceDatabase(tree.files()).properties(kId);
    const auto found = known.find("ID_MODEL_FROM_DATABASE");
    return found == known.end() ? "" : found->second;
  }

  TemporaryTree tree;
};

TEST_F(DeviceDatabaseTest, TellsAllPropertiesByTheirNames) {
  know({{"", kMaker, "Intel Corporation"}, {"", " ID_AUTOSUSPEND", "1"}});
  EXPECT_THAT(DeviceDatabase(tree.files()).properties(kId),
              UnorderedElementsAre(Pair("ID_VENDOR_FROM_DATABASE", "Intel Corporation"),
                                   Pair("ID_AUTOSUSPEND", "1")));
}

TEST_F(DeviceDatabaseTest, KnowsNothingOfAnotherDeviceNorOfNone) {
  know({{"", kModel, "I210"}});
  const DeviceDatabase database(tree.files());
  for (const char* id : {"pci:v00008086d00001534sv00008086", "usb:v8086p1533", ""}) {
    EXPECT_THAT(database.properties(id), IsEmpty()) << id;
  }
}

// A pattern that fits everything fits no ID either, when there is none.
TEST_F(DeviceDatabaseTest, KnowsNothingOfNoIdWhateverItsPatterns) {
  tree.put("/lib/udev/hwdb.bin", databaseFile({{"*", kModel, "Everything"}}));
  const DeviceDatabase database(tree.files());
  EXPECT_THAT(database.properties("x"),
              UnorderedElementsAre(Pair("ID_MODEL_FROM_DATABASE", "Everything")));
  EXPECT_THAT(database.properties(""), IsEmpty());
}

TEST_F(DeviceDatabaseTest, IsTheFirstInTheOrderOfThePlaces) {
  for (std::size_t last = kPlaces.size(); last-- > 0;) {
    tree.put(kPlaces[last], databaseFile({{"pci:*", kModel, kPlaces[last]}}));
    EXPECT_EQ(model(), kPlaces[last]);
  }
}

TEST_F(DeviceDatabaseTest, KnowsNothingWithoutAFile) { EXPECT_EQ(model(), ""); }

TEST_F(DeviceDatabaseTest, PassesOverAnEmptyFileAndAFolder) {
  know({{"", kModel, "I210"}});
  tree.put(kPlaces[0], "");
  tree.makeFolder(kPlaces[1]);
  EXPECT_EQ(model(), "I210");
}

TEST_F(DeviceDatabaseTest, KnowsNothingFromABrokenFile) {
  const std::string whole = databaseFile({{"pci:*", kModel, "I210"}});
  for (const std::string& broken :
       {whole.substr(0, whole.size() - 1), whole + "x", "X" + whole.substr(1), whole.substr(0, 40),
        std::string(200, '\0'), std::string("no database\n")}) {
    tree.put(kPlaces[0], broken);
    EXPECT_EQ(model(), "") << broken.size();
  }
}

// --- The database of this machine ---

using Properties = std::map<std::string, std::string>;

struct PipeCloser {
  void operator()(FILE* pipe) const { pclose(pipe); }
};

// What udev's tool prints about an ID: lines of NAME=VALUE.
Properties askTool(const std::string& id) {
  const std::string command = "systemd-hwdb query '" + id + "' 2>/dev/null";
  const std::unique_ptr<FILE, PipeCloser> pipe(popen(command.c_str(), "r"));
  std::string text;
  std::array<char, 4096> part{};
  while (pipe && fgets(part.data(), part.size(), pipe.get()) != nullptr) text += part.data();
  Properties properties;
  LineReader lines(text);
  for (std::string_view line; lines.next(line);) {
    const std::size_t equals = line.find('=');
    properties.emplace(line.substr(0, equals), line.substr(equals + 1));
  }
  return properties;
}

// Cards, devices of both USB generations, wildcards in several places of a pattern, one that
// only its maker is known of, classes, and two that are not known at all.
constexpr std::array kIds{
    "pci:v00008086d000015F3sv00001028sd00000A1Bbc02sc00i00",
    "pci:v00001AF4d00001000sv00001AF4sd00000001bc02sc00i00",
    "pci:v000010DEd00001C82sv00001043sd00008613bc03sc00i00",
    "pci:v00008086d00001237sv00001AF4sd00001100bc06sc00i00",
    "usb:v046DpC52Bd1211dc00dsc00dp00ic03isc01ip01in00",
    "usb:v1D6Bp0003d0601dc09dsc00dp03ic09isc00ip00in00",
    "usb:vFFFEpFFFEd0100dc09dsc00dp01ic09isc00ip00in00",
    "OUI:001B21AABBCC",
    "bluetooth:v000Fp1200d1436",
    "sdio:c00v02D0d4324",
    "mouse:usb:v046dp4041:name:Logitech MX Master:",
    "acpi:PNP0C0A:",
    "pci:v0000FFFEd0000FFFEsv00000000sd00000000bcFFscFFiFF",
};

TEST(RealDeviceDatabase, SaysWhatTheToolOfUdevSays) {
  if (askTool(kIds[0]).empty()) {
    GTEST_SKIP() << "systemd-hwdb does not run here, or there is no database";
  }
  const DeviceDatabase database((FileTree()));
  for (const char* id : kIds) EXPECT_EQ(database.properties(id), askTool(id)) << id;
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The hardware of this machine as the program tells it, beside what the machine's tools tell. What
// a machine has not, or no tool is there to tell, is skipped in words.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "platform/linux/linux_drives.h"
#include "truth/tools.h"

namespace veltrin {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAreArray;

using Texts = std::vector<std::string>;

// What lscpu tells, by its labels without their colons.
std::optional<std::map<std::string, std::string>> processorFacts() {
  const auto told = jsonOf("lscpu -J");
  if (!told) return std::nullopt;
  std::map<std::string, std::string> facts;
  for (const Json& field : told->at("lscpu").items) {
    const std::string label = field.at("field").text;
    facts[label.substr(0, label.find(':'))] = field.at("data").text;
  }
  return facts;
}

// The words of a name, in small letters and without what tools leave out of names.
std::set<std::string> nameWords(const std::string& name) {
  std::string plain;
  for (const char character : name) {
    const auto byte = static_cast<unsigned char>(character);
    plain +=
        std::isalnum(byte) != 0 || character == '.' ? static_cast<char>(std::tolower(byte)) : ' ';
  }
  std::set<std::string> words;
  for (const std::string_view word : wordsOf(plain)) words.emplace(word);
  return words;
}

// Whether one of some names has all words of another.
bool hasNamed(const Texts& names, const std::string& wanted) {
  const std::set<std::string> words = nameWords(wanted);
  return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
    const std::set<std::string> all = nameWords(name);
    return std::includes(all.begin(), all.end(), words.begin(), words.end());
  });
}

TEST(ProcessorTruth, EachSocketHasTheNameAndMakerThatLscpuTells) {
  const auto told = processorFacts();
  if (!told) GTEST_SKIP() << "lscpu is not installed";
  const auto sockets = static_cast<std::size_t>(std::atoi(told->at("Socket(s)").c_str()));
  ASSERT_GT(sockets, 0U);
  const std::vector<WmiObject> processors = objectsOf("Win32_Processor");
  EXPECT_EQ(textsOf(processors, "Name"), Texts(sockets, told->at("Model name")));
  if (told->count("Vendor ID") == 0) GTEST_SKIP() << "lscpu knows no maker";
  EXPECT_EQ(textsOf(processors, "Manufacturer"), Texts(sockets, told->at("Vendor ID")));
}

TEST(ProcessorTruth, TheHighestSpeedIsThatOfLscpu) {
  const auto told = processorFacts();
  if (!told) GTEST_SKIP() << "lscpu is not installed";
  const auto highest = told->find("CPU max MHz");
  if (highest == told->end()) GTEST_SKIP() << "this kernel does not change the speed";
  for (const WmiObject& processor : objectsOf("Win32_Processor")) {
    EXPECT_EQ(textOf(processor, "MaxClockSpeed"),
              std::to_string(std::lround(std::strtod(highest->second.c_str(), nullptr))));
  }
}

TEST(ProcessorTruth, TheSpeedIsThatOfInxiWhereItDoesNotChange) {
  const auto told = InxiSection::of("CPU");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const Texts speeds = told->values("1");
  if (!told->value("min/max").empty() || speeds.empty()) {
    GTEST_SKIP() << "the speed changes all the time";
  }
  const Texts found = textsOf(objectsOf("Win32_Processor"), "CurrentClockSpeed");
  ASSERT_THAT(found, testing::Not(IsEmpty()));
  EXPECT_EQ(found.front(), speeds.front());
}

TEST(ProcessorTruth, InxiKnowsTheProcessorByTheSameName) {
  const auto told = InxiSection::of("CPU");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const Texts names = textsOf(objectsOf("Win32_Processor"), "Name");
  EXPECT_TRUE(hasNamed(names, told->value("model")))
      << told->value("model") << " in " << testing::PrintToString(names);
}

// By the level, kB of all caches together: the firmware tells data and code as one, the kernel
// apart.
TEST(ProcessorTruth, TheCachesOfEachLevelAreAsLargeAsLscpuTells) {
  const auto told = jsonOf("lscpu -J -B -C=level,all-size");
  if (!told) GTEST_SKIP() << "lscpu is not installed, or does not know caches";
  std::map<int, long> expected;
  for (const Json& cache : told->at("caches").items) {
    expected[std::atoi(cache.at("level").text.c_str())] +=
        std::atol(cache.at("all-size").text.c_str()) / 1024;
  }
  constexpr int kPrimary = 3;  // the code of the first level
  std::map<int, long> found;
  for (const WmiObject& cache : objectsOf("Win32_CacheMemory")) {
    found[std::atoi(textOf(cache, "Level").c_str()) - kPrimary + 1] +=
        std::atol(textOf(cache, "MaxCacheSize").c_str());
  }
  EXPECT_EQ(found, expected);
  if (expected.empty()) GTEST_SKIP() << "this machine tells of no caches";
}

TEST(MemoryTruth, AllOfItIsAsMuchAsInxiTells) {
  const auto told = InxiSection::of("Info");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const std::string size = told->value("Memory");
  const std::map<std::string, double> units{{"MiB", 1}, {"GiB", 1024}, {"TiB", 1024 * 1024}};
  const auto unit = units.find(size.substr(size.find(' ') + 1));
  ASSERT_NE(unit, units.end()) << size;
  std::string total = summaryOf("Total Physical Memory");
  ASSERT_TRUE(total.ends_with(" MB")) << total;
  std::erase(total, ',');
  // inxi tells two decimals, the program whole megabytes.
  EXPECT_NEAR(std::strtod(total.c_str(), nullptr),
              std::strtod(size.c_str(), nullptr) * unit->second, 1 + 0.005 * unit->second);
}

TEST(BoardTruth, BoardAndFirmwareAreThoseOfInxi) {
  const auto told = InxiSection::of("Machine");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const std::vector<WmiObject> boards = objectsOf("Win32_BaseBoard");
  const Texts models = textsOf(boards, "Product");
  if (told->value("Mobo").empty()) {
    EXPECT_THAT(models, IsEmpty());
    GTEST_SKIP() << "this machine tells of no board: " << told->value("Message");
  }
  EXPECT_TRUE(hasNamed(textsOf(boards, "Manufacturer"), told->value("Mobo")))
      << told->value("Mobo");
  EXPECT_TRUE(hasNamed(models, told->value("model"))) << told->value("model");
  EXPECT_TRUE(hasNamed({summaryOf("System Manufacturer")}, told->value("System")))
      << told->value("System");
  const std::string firmware = told->value("UEFI") + told->value("BIOS");
  EXPECT_TRUE(hasNamed({summaryOf("BIOS Version")}, firmware)) << firmware;
}

// --- Disks ---

// Whether lsblk's row is one of what the program calls a disk.
bool isDisk(const Json& device) {
  const std::string name = device.at("name").text;
  const bool isPartOfCard =
      name.starts_with("mmcblk") && (name.find("boot") < name.size() || name.ends_with("rpmb"));
  return device.at("type").text == "disk" && !isPartOfCard && !name.starts_with("zram") &&
         !name.starts_with("ram") && !name.starts_with("fd") && !name.starts_with("mtdblock");
}

// As the program tells a size: nothing without a medium.

std::string wholeCylinders(const std::string& bytes) {
  constexpr unsigned long long kCylinder = 255ULL * 63 * 512;
  const auto size = std::strtoull(bytes.c_str(), nullptr, 10);
  if (size == 0) return {};
  return std::to_string(size < kCylinder ? size : size / kCylinder * kCylinder);
}

TEST(DiskTruth, DisksHaveTheSizesThatLsblkTells) {
  const auto told = jsonOf("lsblk -J -b -d -o NAME,TYPE,SIZE");
  if (!told) GTEST_SKIP() << "lsblk is not installed";
  Texts expected;
  for (const Json& device : told->at("blockdevices").items) {
    if (isDisk(device)) {
      expected.push_back("/dev/" + device.at("name").text + " " +
                         wholeCylinders(device.at("size").text));
    }
  }
  Texts found;
  for (const WmiObject& disk : objectsOf("Win32_DiskDrive")) {
    found.push_back(textOf(disk, "DeviceID") + " " + textOf(disk, "Size"));
  }
  EXPECT_THAT(found, UnorderedElementsAreArray(expected));
  if (expected.empty()) GTEST_SKIP() << "this machine has no disks";
}

TEST(DiskTruth, DisksHaveTheModelsThatLsblkTells) {
  const auto told = jsonOf("lsblk -J -d -o NAME,TYPE,MODEL,VENDOR");
  if (!told) GTEST_SKIP() << "lsblk is not installed";
  std::map<std::string, std::string> expected;
  for (const Json& device : told->at("blockdevices").items) {
    const std::string model(trimmed(device.at("model").text));
    if (isDisk(device) && !model.empty()) expected["/dev/" + device.at("name").text] = model;
  }
  std::map<std::string, std::string> found;
  for (const WmiObject& disk : objectsOf("Win32_DiskDrive")) {
    const std::string model = textOf(disk, "Model");
    const std::string device = textOf(disk, "DeviceID");
    // The program puts the maker before the model where a disk tells it apart.
    const bool isSame = !expected[device].empty() && model.ends_with(expected[device]);
    if (!model.empty()) found[device] = isSame ? expected[device] : model;
  }
  std::erase_if(expected, [](const auto& each) { return each.second.empty(); });
  EXPECT_EQ(found, expected);
  if (expected.empty()) GTEST_SKIP() << "no disk of this machine tells its model";
}

TEST(DiskTruth, InxiListsTheSameDisks) {
  const auto told = InxiSection::of("Drives");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const Texts expected = told->values("ID");
  EXPECT_THAT(textsOf(objectsOf("Win32_DiskDrive"), "DeviceID"),
              UnorderedElementsAreArray(expected));
  if (expected.empty()) GTEST_SKIP() << "this machine has no disks";
}

TEST(DiskTruth, TheFirstDriveIsAsLargeAsTheDeviceOfTheRoot) {
  const auto size = printedBy("lsblk -b -d -n -o SIZE \"$(findmnt -n -v -o SOURCE /)\"");
  if (!size) GTEST_SKIP() << "lsblk is not installed, or the root lies on no device";
  std::uint64_t available = 0;
  std::uint64_t total = 0;
  std::uint64_t free = 0;
  LinuxDrives drives;
  ASSERT_TRUE(drives.GetDiskFreeSpaceExA("C:\\", available, total, free));
  EXPECT_EQ(std::to_string(total), trimmed(*size));
  EXPECT_THAT(textsOf(objectsOf("Win32_LogicalDisk"), "Caption"), Contains("C:"));
}

// --- Devices on buses ---

// Maker and model of all devices that lspci's database knows, as one name.
std::set<std::string> knownPciNames() {
  std::set<std::string> names;
  std::string maker;
  FileTree().readLines("/usr/share/misc/pci.ids", [&](std::string_view line) {
    if (line.starts_with("\t\t") || line.starts_with("#") || line.size() < 7) return;
    if (line.starts_with("\t")) {
      names.insert(maker + " " + std::string(trimmed(line.substr(6))));
    } else {
      maker = trimmed(line.substr(5));
    }
  });
  return names;
}

TEST(DeviceTruth, PciDevicesHaveTheNamesThatLspciTells) {
  const auto told = printedBy("lspci -Dvmm");
  if (!told) GTEST_SKIP() << "lspci is not installed";
  std::multiset<std::string> expected;
  std::string maker;
  for (const std::string& line : linesIn(*told)) {
    if (line.starts_with("Vendor:\t")) maker = line.substr(8);
    const std::string model = line.starts_with("Device:\t") ? line.substr(8) : "";
    // One without a name is called by its number.
    if (!model.empty() && !model.starts_with("Device "))
      expected.insert(std::string(maker).append(" ").append(model));
  }
  const std::set<std::string> known = knownPciNames();
  std::multiset<std::string> found;
  for (const std::string& name : textsOf(objectsOf("Win32_PnPSignedDriver"), "Description")) {
    if (known.count(name) > 0) found.insert(name);
  }
  EXPECT_EQ(found, expected);
  if (expected.empty()) GTEST_SKIP() << "this machine has no PCI device with a name";
}

TEST(DeviceTruth, UsbHubsAreThoseOfLsusb) {
  const auto told = printedBy("lsusb");
  const auto tree = printedBy("lsusb -t");
  const std::vector<WmiObject> hubs = objectsOf("Win32_USBHub");
  if (FileTree().names("/sys/bus/usb/devices").empty()) {
    EXPECT_THAT(hubs, IsEmpty());
    GTEST_SKIP() << "this machine has no USB";
  }
  if (!told || !tree) GTEST_SKIP() << "lsusb is not installed";
  Texts ids;  // of all devices
  for (const std::string& line : linesIn(*told)) {
    const std::size_t at = line.find(" ID ");
    if (at != std::string::npos) ids.push_back(upperCase(line.substr(at + 4, 9)));
  }
  Texts found;
  for (const std::string& id : textsOf(hubs, "DeviceID")) {
    const std::size_t maker = id.find("VID_");
    const std::size_t model = id.find("PID_");
    ASSERT_TRUE(maker != std::string::npos && model != std::string::npos) << id;
    found.push_back(id.substr(maker + 4, 4) + ":" + id.substr(model + 4, 4));
  }
  EXPECT_THAT(found, IsSubsetOf(ids));
  std::size_t count = 0;
  for (const std::string& line : linesIn(*tree)) {
    count += line.find("Class=root_hub") != std::string::npos ||
                     line.find("Class=Hub") != std::string::npos
                 ? 1
                 : 0;
  }
  EXPECT_THAT(hubs, SizeIs(count));
}

// What inxi lists as devices of a kind has the name that a class tells, and nothing else is there.
void compareWithInxi(const std::string& section, const std::string& className, bool withUsb) {
  const auto told = InxiSection::of(section);
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const Texts expected = told->devices(withUsb);
  const std::vector<WmiObject> objects = objectsOf(className);
  EXPECT_THAT(objects, SizeIs(expected.size()));
  const Texts names = textsOf(objects, "Caption");
  for (const std::string& name : expected) {
    EXPECT_TRUE(hasNamed(names, name)) << name << " in " << testing::PrintToString(names);
  }
  if (expected.empty()) GTEST_SKIP() << "this machine has none: " << told->value("Message");
}

// Among graphics cards inxi lists cameras, which are on USB.
TEST(DeviceTruth, GraphicsCardsAreThoseOfInxi) {
  compareWithInxi("Graphics", "Win32_VideoController", false);
}

TEST(DeviceTruth, SoundCardsAreThoseOfInxi) { compareWithInxi("Audio", "Win32_SoundDevice", true); }

TEST(DeviceTruth, NetworkCardsAreThoseOfInxi) {
  const auto told = InxiSection::of("Network");
  if (!told) GTEST_SKIP() << "inxi is not installed";
  const Texts expected = told->devices(true);
  const Texts lines = linesIn(summary());
  for (const std::string& name : expected) {
    EXPECT_TRUE(hasNamed(lines, name)) << name;
  }
  if (expected.empty()) GTEST_SKIP() << "this machine has none: " << told->value("Message");
}

}  // namespace
}  // namespace veltrin

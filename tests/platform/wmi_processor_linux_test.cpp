// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/machine/smbios_table.h"
#include "wmi_answers.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Texts = std::map<std::string, std::string>;

// --- Win32_Processor ---

class Win32Processor : public AskedMachine, public ::testing::Test {
 protected:
  void putProcessors(int packages) {
    std::string list;
    for (int package = 0; package < packages; ++package) {
      list += "processor\t: " + std::to_string(package) +
              "\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel\t\t: 158\n"
              "model name\t: Example Core 7\nstepping\t: 10\ncpu MHz\t\t: 800.4\nphysical id\t: " +
              std::to_string(package) + "\nflags\t: fpu lm\n\n";
    }
    tree.put("/proc/cpuinfo", list);
  }

  void putCache(int processor, int index, int level, const std::string& size) {
    const std::string folder = "/sys/devices/system/cpu/cpu" + std::to_string(processor) +
                               "/cache/index" + std::to_string(index) + "/";
    tree.put(folder + "level", std::to_string(level) + "\n");
    tree.put(folder + "type", "Unified\n");
    tree.put(folder + "size", size + "\n");
    tree.put(folder + "shared_cpu_list", std::to_string(processor) + "\n");
  }

  std::vector<std::string> values(const char* property) const {
    return AskedMachine::values("Win32_Processor", property);
  }
};

SmbiosPart socket(const std::string& name, unsigned type = 3, unsigned status = 0x41) {
  return SmbiosPart(4, 0x30)
      .text(0x04, name)
      .number(0x05, type)
      .text(0x07, "Table Maker")
      .text(0x10, "Table Processor")
      .number(0x14, 4700, 2)
      .number(0x16, 3200, 2)
      .number(0x18, status)
      .number(0x1C, 0x0007, 2);
}

TEST_F(Win32Processor, IsToldByTheKernelToEverybody) {
  putProcessors(1);
  tree.put("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "4600000\n");
  putCache(0, 0, 1, "32K");
  putCache(0, 1, 2, "256K");
  EXPECT_EQ(properties("Win32_Processor"),
            (Texts{{"DeviceID", "CPU0"},
                   {"Name", "Example Core 7"},
                   {"Manufacturer", "GenuineIntel"},
                   {"Description", "Intel64 Family 6 Model 158 Stepping 10"},
                   {"Revision", "40458"},
                   {"MaxClockSpeed", "4600"},
                   {"CurrentClockSpeed", "800"},
                   {"DataWidth", "64"},
                   {"L2CacheSize", "256"},
                   {"SocketDesignation", "null"},
                   {"ProcessorType", "3"}}));
}

TEST_F(Win32Processor, OfWhichTheKernelTellsNothingIsNull) {
  machine->kernelFacts.machine = "sh4";
  tree.put("/proc/cpuinfo", "processor : 0\n");
  EXPECT_EQ(properties("Win32_Processor"), (Texts{{"DeviceID", "CPU0"},
                                                  {"Name", "null"},
                                                  {"Manufacturer", "null"},
                                                  {"Description", "sh4"},
                                                  {"Revision", "null"},
                                                  {"MaxClockSpeed", "null"},
                                                  {"CurrentClockSpeed", "null"},
                                                  {"DataWidth", "null"},
                                                  {"L2CacheSize", "null"},
                                                  {"SocketDesignation", "null"},
                                                  {"ProcessorType", "3"}}));
}

TEST_F(Win32Processor, TakesFromTheFirmwareWhatTheKernelDoesNotTell) {
  machine->kernelFacts.machine = "sh4";
  tree.put("/proc/cpuinfo", "processor : 0\n");
  tree.put(kSmbiosFile,
           smbiosTable({socket("CPU 1"), SmbiosPart(7, 0x0F).number(0x07, 999, 2).handle(8),
                        SmbiosPart(7, 0x0F).number(0x07, 2048, 2).handle(7)}));
  EXPECT_EQ(properties("Win32_Processor"), (Texts{{"DeviceID", "CPU0"},
                                                  {"Name", "Table Processor"},
                                                  {"Manufacturer", "Table Maker"},
                                                  {"Description", "sh4"},
                                                  {"Revision", "null"},
                                                  {"MaxClockSpeed", "4700"},
                                                  {"CurrentClockSpeed", "3200"},
                                                  {"DataWidth", "null"},
                                                  {"L2CacheSize", "2048"},
                                                  {"SocketDesignation", "CPU 1"},
                                                  {"ProcessorType", "3"}}));
}

TEST_F(Win32Processor, BelievesTheKernelMoreThanTheFirmware) {
  putProcessors(1);
  putCache(0, 0, 2, "256K");
  tree.put("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "4600000\n");
  tree.put(kSmbiosFile,
           smbiosTable({socket("U3E1"), SmbiosPart(7, 0x0F).number(0x07, 2048, 2).handle(7)}));
  EXPECT_THAT(values("Name"), ElementsAre("Example Core 7"));
  EXPECT_THAT(values("Manufacturer"), ElementsAre("GenuineIntel"));
  EXPECT_THAT(values("MaxClockSpeed"), ElementsAre("4600"));
  EXPECT_THAT(values("CurrentClockSpeed"), ElementsAre("800"));
  EXPECT_THAT(values("L2CacheSize"), ElementsAre("256"));
  EXPECT_THAT(values("SocketDesignation"), ElementsAre("U3E1"));
}

TEST_F(Win32Processor, HasNoHighestSpeedWhereNobodyTellsIt) {
  putProcessors(1);
  EXPECT_THAT(values("MaxClockSpeed"), ElementsAre("null"));
  tree.put(kSmbiosFile, smbiosTable({socket("A").number(0x14, 0, 2)}));
  EXPECT_THAT(values("MaxClockSpeed"), ElementsAre("null"));
  tree.put(kSmbiosFile, smbiosTable({socket("A")}));
  EXPECT_THAT(values("MaxClockSpeed"), ElementsAre("4700"));
}

TEST_F(Win32Processor, IsOneForEachPackage) {
  putProcessors(3);
  EXPECT_THAT(values("DeviceID"), ElementsAre("CPU0", "CPU1", "CPU2"));
}

TEST_F(Win32Processor, SitsInTheFilledSocketsForCentralProcessorsInTheirOrder) {
  putProcessors(3);
  tree.put(kSmbiosFile, smbiosTable({socket("DSP", 5), socket("EMPTY", 3, 0x00), socket("CPU 1"),
                                     SmbiosPart(4, 0x06).text(0x04, "SHORT").number(0x05, 3)}));
  EXPECT_THAT(values("SocketDesignation"), ElementsAre("CPU 1", "SHORT", "null"));
}

TEST_F(Win32Processor, IsNoneWhereTheKernelListsNone) {
  EXPECT_THAT(all("Win32_Processor"), IsEmpty());
  tree.put("/proc/cpuinfo", "\xFF\x01garbage");
  EXPECT_THAT(all("Win32_Processor"), IsEmpty());
}

// --- Win32_CacheMemory ---

class Win32CacheMemory : public Win32Processor {
 protected:
  std::vector<std::string> values(const char* property) const {
    return AskedMachine::values("Win32_CacheMemory", property);
  }
};

SmbiosPart cache(std::uint64_t configuration, std::uint64_t size) {
  return SmbiosPart(7, 0x0F).number(0x05, configuration, 2).number(0x07, size, 2);
}

TEST_F(Win32CacheMemory, StandsInTheOrderOfTheFirmwaresTable) {
  tree.put(kSmbiosFile,
           smbiosTable({cache(0x0180, 384), cache(0x0181, 1536), cache(0x01A2, 0x80C0)}));
  EXPECT_THAT(values("MaxCacheSize"), ElementsAre("384", "1536", "12288"));
  EXPECT_THAT(values("Level"), ElementsAre("3", "4", "5"));
  EXPECT_THAT(values("Location"), ElementsAre("0", "0", "1"));
  EXPECT_THAT(values("Status"), ElementsAre("OK", "OK", "OK"));
}

TEST_F(Win32CacheMemory, HasTheCodeOfEachLevel) {
  tree.put(kSmbiosFile,
           smbiosTable({cache(0x180, 1), cache(0x181, 1), cache(0x182, 1), cache(0x183, 1),
                        cache(0x184, 1), cache(0x187, 1), SmbiosPart(7, 0x05)}));
  EXPECT_THAT(values("Level"), ElementsAre("3", "4", "5", "1", "1", "1", "null"));
}

TEST_F(Win32CacheMemory, HasTheCodeOfEachLocation) {
  tree.put(kSmbiosFile,
           smbiosTable({cache(0x180, 1), cache(0x1A0, 1), cache(0x1C0, 1), cache(0x1E0, 1)}));
  EXPECT_THAT(values("Location"), ElementsAre("0", "1", "2", "3"));
}

TEST_F(Win32CacheMemory, IsNotInOrderWhenItIsDisabled) {
  tree.put(kSmbiosFile, smbiosTable({cache(0x100, 1), SmbiosPart(7, 0x05)}));
  EXPECT_THAT(values("Status"), ElementsAre("null", "null"));
}

TEST_F(Win32CacheMemory, IsListedByTheKernelForEachPackageElse) {
  putProcessors(2);
  tree.makeFolder(kSmbiosFile);
  for (int processor : {0, 1}) {
    putCache(processor, 0, 1, "48K");
    putCache(processor, 1, 2, "1024K");
    putCache(processor, 2, 4, "65536K");
  }
  EXPECT_THAT(values("MaxCacheSize"), ElementsAre("48", "1024", "65536", "48", "1024", "65536"));
  EXPECT_THAT(values("Level"), ElementsAre("3", "4", "1", "3", "4", "1"));
  EXPECT_THAT(values("Status"), ElementsAre("null", "null", "null", "null", "null", "null"));
}

TEST_F(Win32CacheMemory, IsInsideAnX86ProcessorThatListsIt) {
  putProcessors(1);
  putCache(0, 0, 1, "48K");
  for (const char* kind : {"x86_64", "i686", "i386"}) {
    machine->kernelFacts.machine = kind;
    EXPECT_THAT(values("Location"), ElementsAre("0")) << kind;
  }
  for (const char* kind : {"aarch64", "", "i6861"}) {
    machine->kernelFacts.machine = kind;
    EXPECT_THAT(values("Location"), ElementsAre("null")) << kind;
  }
}

TEST_F(Win32CacheMemory, IsNoneWhereNobodyTellsIt) {
  EXPECT_THAT(all("Win32_CacheMemory"), IsEmpty());
}

}  // namespace
}  // namespace veltrin

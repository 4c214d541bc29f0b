// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/processors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Kernel kernelOf(const std::string& machine) {
  Kernel kernel;
  kernel.machine = machine;
  return kernel;
}

std::string x86(int number, int package, const std::string& more = "") {
  return "processor\t: " + std::to_string(number) +
         "\n"
         "vendor_id\t: GenuineIntel\n"
         "cpu family\t: 6\n"
         "model\t\t: 37\n"
         "model name\t: Example Processor\n"
         "stepping\t: 5\n"
         "cpu MHz\t\t: 2666.760\n"
         "physical id\t: " +
         std::to_string(package) + "\n" + more + "\n";
}

std::vector<std::string> factsOf(const std::string& text, const std::string& machine = "x86_64") {
  const TemporaryTree tree;
  tree.put("/proc/cpuinfo", text);
  return processorFacts(tree.files(), kernelOf(machine));
}

TEST(Processors, AreOneForEachPackage) {
  EXPECT_THAT(factsOf(x86(0, 0) + x86(1, 0) + x86(2, 0) + x86(3, 0)),
              ElementsAre("Intel64 Family 6 Model 37 Stepping 5 GenuineIntel ~2667 Mhz"));
}

TEST(Processors, StandInTheOrderOfTheirPackages) {
  EXPECT_THAT(factsOf(x86(0, 1) + "processor : 1\nmodel name : Other\nphysical id : 0\n"),
              ElementsAre("Other", "Intel64 Family 6 Model 37 Stepping 5 GenuineIntel ~2667 Mhz"));
}

TEST(Processors, NameTheirKindByVendorAndKernel) {
  const std::string rest = "cpu family : 25\nmodel : 17\nstepping : 1\n";
  EXPECT_THAT(factsOf("processor : 0\nvendor_id : AuthenticAMD\n" + rest),
              ElementsAre("AMD64 Family 25 Model 17 Stepping 1 AuthenticAMD"));
  EXPECT_THAT(factsOf("processor : 0\nvendor_id : CentaurHauls\n" + rest),
              ElementsAre("x64 Family 25 Model 17 Stepping 1 CentaurHauls"));
  EXPECT_THAT(factsOf("processor : 0\nvendor_id : GenuineIntel\n" + rest, "i686"),
              ElementsAre("x86 Family 25 Model 17 Stepping 1 GenuineIntel"));
}

TEST(Processors, WithoutAKnownSteppingLeaveItOut) {
  EXPECT_THAT(factsOf("processor : 0\nvendor_id : GenuineIntel\ncpu family : 6\nmodel : 158\n"
                      "stepping : unknown\n"),
              ElementsAre("Intel64 Family 6 Model 158 GenuineIntel"));
}

TEST(Processors, OfArmNameTheirMakerPartAndRevision) {
  const std::string text =
      "processor\t: 0\nBogoMIPS\t: 108.00\nCPU implementer\t: 0x41\nCPU architecture: 8\n"
      "CPU variant\t: 0x0\nCPU part\t: 0xd08\nCPU revision\t: 3\n\n";
  const TemporaryTree tree;
  tree.put("/proc/cpuinfo", text);
  tree.put("/sys/devices/system/cpu/cpu0/topology/physical_package_id", "0\n");
  tree.put("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", "1500000\n");
  EXPECT_THAT(processorFacts(tree.files(), kernelOf("aarch64")),
              ElementsAre("ARMv8 (64-bit) Family 8 Model D08 Revision r0p3 ARM ~1500 Mhz"));
}

TEST(Processors, OfArmTakeWhatIsToldOnceForAll) {
  EXPECT_THAT(factsOf("Processor\t: ARMv7 Processor rev 4\nprocessor\t: 0\n\nprocessor\t: 1\n\n"
                      "CPU implementer\t: 0x99\nCPU architecture: 7\nCPU part\t: 0xc07\n",
                      "armv7l"),
              ElementsAre("ARMv7 Family 7 Model C07 Implementer 99",
                          "ARMv7 Family 7 Model C07 Implementer 99"));
}

TEST(Processors, TakeTheirPackagesFromTheTopology) {
  const TemporaryTree tree;
  tree.put("/proc/cpuinfo",
           "processor : 0\nmodel name : A\n\nprocessor : 1\nmodel name : A\n\n"
           "processor : 2\nmodel name : B\n");
  tree.put("/sys/devices/system/cpu/cpu0/topology/physical_package_id", "0\n");
  tree.put("/sys/devices/system/cpu/cpu1/topology/physical_package_id", "0\n");
  tree.put("/sys/devices/system/cpu/cpu2/topology/physical_package_id", "1\n");
  EXPECT_THAT(processorFacts(tree.files(), kernelOf("riscv64")), ElementsAre("A", "B"));
}

TEST(Processors, WithoutAPackageCountEach) {
  const TemporaryTree tree;
  tree.put("/proc/cpuinfo", "processor : 0\nuarch : example,u7\n\nprocessor : 1\nisa : rv64imac\n");
  tree.put("/sys/devices/system/cpu/cpu0/topology/physical_package_id", "-1\n");
  EXPECT_THAT(processorFacts(tree.files(), kernelOf("riscv64")),
              ElementsAre("example,u7", "rv64imac"));
}

TEST(Processors, OfWhichNothingIsToldGoByTheKernelsWord) {
  EXPECT_THAT(factsOf("processor : 0\n", "riscv64"), ElementsAre("riscv64"));
}

// --- Frequencies, from the surest to the last resort ---

class Frequency : public ::testing::Test {
 protected:
  void SetUp() override { putProcessor("Example Processor @ 2.67GHz"); }

  void putProcessor(const std::string& name) {
    tree_.put("/proc/cpuinfo", "processor : 0\nmodel name : " + name + "\ncpu MHz : 800.4\n");
  }

  void putFact(const std::string& name, const std::string& value) {
    tree_.put("/sys/devices/system/cpu/cpu0/" + name, value);
  }

  std::string text() {
    const auto texts = processorFacts(tree_.files(), kernelOf("x86_64"));
    return texts.empty() ? "" : texts[0];
  }

  TemporaryTree tree_;
};

TEST_F(Frequency, IsTheBaseFrequency) {
  putFact("cpufreq/base_frequency", "2500000\n");
  putFact("acpi_cppc/nominal_freq", "2400\n");
  putFact("cpufreq/cpuinfo_max_freq", "4700000\n");
  EXPECT_EQ(text(), "Example Processor @ 2.67GHz ~2500 Mhz");
}

TEST_F(Frequency, IsTheNominalOneOfTheFirmware) {
  putFact("acpi_cppc/nominal_freq", "2400\n");
  putFact("cpufreq/cpuinfo_max_freq", "4700000\n");
  EXPECT_EQ(text(), "Example Processor @ 2.67GHz ~2400 Mhz");
}

TEST_F(Frequency, IsTheOneInTheName) {
  putFact("cpufreq/cpuinfo_max_freq", "4700000\n");
  EXPECT_EQ(text(), "Example Processor @ 2.67GHz ~2670 Mhz");
}

TEST_F(Frequency, IsTheHighestAllowed) {
  putProcessor("Example");
  putFact("cpufreq/cpuinfo_max_freq", "4700000\n");
  EXPECT_EQ(text(), "Example ~4700 Mhz");
}

TEST_F(Frequency, IsThePresentOne) {
  putProcessor("Example");
  EXPECT_EQ(text(), "Example ~800 Mhz");
}

TEST_F(Frequency, OfGarbageIsLeftOut) {
  tree_.put("/proc/cpuinfo", "processor : 0\nmodel name : Example @ fastGHz\ncpu MHz : -7\n");
  putFact("cpufreq/base_frequency", "0\n");
  putFact("acpi_cppc/nominal_freq", "nan\n");
  putFact("cpufreq/cpuinfo_max_freq", "x\n");
  EXPECT_EQ(text(), "Example @ fastGHz");
}

// --- Nothing to read ---

TEST(Processors, AreNoneInAnEmptyOrBrokenList) {
  EXPECT_THAT(factsOf(""), IsEmpty());
  EXPECT_THAT(factsOf("processor :\n\nprocessor : x\n"), IsEmpty());
  EXPECT_THAT(factsOf("\x01\xFF garbage without end"), IsEmpty());
}

TEST(Processors, AreNoneWithoutAList) {
  EXPECT_THAT(processorFacts(TemporaryTree().files(), kernelOf("x86_64")), IsEmpty());
}

// --- Packages ---

class ProcessorPackages : public ::testing::Test {
 protected:
  void putFact(int processor, const std::string& name, const std::string& value) {
    tree_.put("/sys/devices/system/cpu/cpu" + std::to_string(processor) + "/" + name, value);
  }

  std::vector<ProcessorPackage> packages(const std::string& list,
                                         const std::string& machine = "x86_64") {
    tree_.put("/proc/cpuinfo", list);
    return processorPackages(tree_.files(), kernelOf(machine));
  }

  // Of the only package; an empty one when there is another number of them.
  ProcessorPackage package(const std::string& list, const std::string& machine = "x86_64") {
    const auto all = packages(list, machine);
    EXPECT_EQ(all.size(), 1U);
    return all.size() == 1 ? all[0] : ProcessorPackage();
  }

  TemporaryTree tree_;
};

TEST_F(ProcessorPackages, HoldTheirLogicalProcessors) {
  const auto all = packages(x86(0, 0) + x86(1, 1) + x86(2, 0) + x86(3, 1));
  ASSERT_EQ(all.size(), 2U);
  EXPECT_THAT(all[0].processors, ElementsAre(0, 2));
  EXPECT_THAT(all[1].processors, ElementsAre(1, 3));
}

TEST_F(ProcessorPackages, AreNamedAndIdentified) {
  const ProcessorPackage package = this->package(x86(0, 0));
  EXPECT_EQ(package.name, "Example Processor");
  EXPECT_EQ(package.identity.text, "Intel64 Family 6 Model 37 Stepping 5");
  EXPECT_EQ(package.identity.maker, "GenuineIntel");
  EXPECT_EQ(package.identity.revision, 0x2505U);
}

TEST_F(ProcessorPackages, WithoutASteppingHaveNoRevision) {
  EXPECT_EQ(package("processor : 0\nvendor_id : GenuineIntel\ncpu family : 6\nmodel : 158\n")
                .identity.revision,
            std::nullopt);
  EXPECT_EQ(package("processor : 0\nvendor_id : GenuineIntel\ncpu family : 6\nmodel : 256\n"
                    "stepping : 1\n")
                .identity.revision,
            std::nullopt);
}

constexpr const char* kArm =
    "processor\t: 0\nCPU implementer\t: 0x51\nCPU architecture: 8\nCPU variant\t: 0xd\n"
    "CPU part\t: 0x805\nCPU revision\t: 14\n\n";

TEST_F(ProcessorPackages, OfArmAreIdentifiedByVariantAndRevision) {
  const ProcessorPackage package = this->package(kArm, "aarch64");
  EXPECT_EQ(package.identity.text, "ARMv8 (64-bit) Family 8 Model 805 Revision r13p14");
  EXPECT_EQ(package.identity.maker, "Qualcomm");
  EXPECT_EQ(package.identity.revision, 0xD0EU);
}

TEST_F(ProcessorPackages, OfArmAreNamedByTheDeviceTree) {
  EXPECT_EQ(package(kArm, "aarch64").name, "");
  putFact(0, "of_node/compatible", std::string("arm,cortex-a72\0arm,armv8\0", 25));
  EXPECT_EQ(package(kArm, "aarch64").name, "arm,cortex-a72");
}

TEST_F(ProcessorPackages, OfOtherKindsAreNamedByTheirOwnFields) {
  EXPECT_EQ(package("processor : 0\ncpu : POWER9\n", "ppc64le").name, "POWER9");
  EXPECT_EQ(package("processor : 0\ncpu model : MIPS 24Kc\n", "mips").name, "MIPS 24Kc");
  EXPECT_EQ(package("processor : 0\nuarch : example,u7\n", "riscv64").name, "example,u7");
}

TEST_F(ProcessorPackages, ComputeWithAsManyBitsAsTheirKindCan) {
  EXPECT_EQ(package("processor : 0\n", "x86_64").width, 64U);
  EXPECT_EQ(package("processor : 0\nflags : fpu lm sse\n", "i686").width, 64U);
  EXPECT_EQ(package("processor : 0\nflags : fpu lmx sse\n", "i686").width, 32U);
  EXPECT_EQ(package("processor : 0\nCPU architecture: 7\n", "armv7l").width, 32U);
  EXPECT_EQ(package("processor : 0\nCPU architecture: 8\n", "armv8l").width, 64U);
  EXPECT_EQ(package("processor : 0\n", "ppc64le").width, 64U);
  EXPECT_EQ(package("processor : 0\n", "s390x").width, 64U);
  EXPECT_EQ(package("processor : 0\nCPU architecture: 8\n", "armv7l").width, std::nullopt);
  EXPECT_EQ(package("processor : 0\n", "sh4").width, std::nullopt);
}

TEST_F(ProcessorPackages, TellTheHighestFrequencyOfTheirCores) {
  putFact(0, "cpufreq/cpuinfo_max_freq", "3900000\n");
  putFact(1, "cpufreq/cpuinfo_max_freq", "5200000\n");
  putFact(2, "cpufreq/cpuinfo_max_freq", "4400000\n");
  putFact(3, "cpufreq/cpuinfo_max_freq", "6000000000\n");  // none that there is
  putFact(0, "cpufreq/base_frequency", "9000000\n");
  EXPECT_EQ(package(x86(0, 0) + x86(1, 0) + x86(2, 0) + x86(3, 0)).highest, 5200U);
}

TEST_F(ProcessorPackages, TellTheNominalFrequencyWhereThereIsNoGovernor) {
  EXPECT_EQ(package("processor : 0\nmodel name : Example @ 2.67GHz\n").highest, 2670U);
  EXPECT_EQ(package("processor : 0\nmodel name : Example\ncpu MHz : 800\n").highest, std::nullopt);
}

TEST_F(ProcessorPackages, TellTheFastestCoreAtPresent) {
  EXPECT_EQ(package("processor : 0\nphysical id : 0\ncpu MHz : 799.6\n\n"
                    "processor : 1\nphysical id : 0\ncpu MHz : 4300.2\n")
                .present,
            4300U);
  putFact(0, "cpufreq/scaling_cur_freq", "1500000\n");
  EXPECT_EQ(package("processor : 0\n", "aarch64").present, 1500U);
  EXPECT_EQ(package("processor : 0\ncpu MHz : 600\n").present, 600U);
}

TEST_F(ProcessorPackages, AreNoneWithoutAList) {
  EXPECT_THAT(processorPackages(TemporaryTree().files(), kernelOf("x86_64")), IsEmpty());
}

}  // namespace
}  // namespace veltrin

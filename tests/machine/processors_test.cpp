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

}  // namespace
}  // namespace veltrin

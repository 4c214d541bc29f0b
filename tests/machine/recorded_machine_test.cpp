// SPDX-License-Identifier: GPL-3.0-or-later
#include "recorded_machine.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "machine/device_names.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The content of a file that a recording tells of, which has no mistakes.
std::string fileOf(const std::string& recording, const std::string& path) {
  const RecordedMachine recorded(recording, "test.machine");
  EXPECT_THAT(recorded.mistakes(), IsEmpty());
  return recorded.files().read(path).value_or("no such file");
}

std::vector<std::string> mistakesIn(const std::string& recording) {
  return RecordedMachine(recording, "test.machine").mistakes();
}

TEST(RecordedMachine, AFileHasTheLinesBelowIt) {
  EXPECT_EQ(fileOf("# A machine.\nfile /proc/a\n  one\ttwo\n    three\n", "/proc/a"),
            "one\ttwo\n  three\n");
}

TEST(RecordedMachine, AnEmptyLineBelongsToAFileThatGoesOn) {
  const std::string text = "file /a\n  one\n\n\n  two\n\nfile /b\n  three\n";
  EXPECT_EQ(fileOf(text, "/a"), "one\n\n\ntwo\n");
  EXPECT_EQ(fileOf(text, "/b"), "three\n");
}

TEST(RecordedMachine, ARemarkMayStandWithinAFile) {
  EXPECT_EQ(fileOf("file /a\n  one\n# not of it\n  # of it\n", "/a"), "one\n# of it\n");
}

TEST(RecordedMachine, AFileWithNothingBelowItIsEmpty) { EXPECT_EQ(fileOf("file /a\n", "/a"), ""); }

TEST(RecordedMachine, ARepeatedFileHasItsLinesForEachNumber) {
  EXPECT_EQ(fileOf("file /a repeated 0-2\n  n {n}, {n%2*10+1} {x}\n", "/a"),
            "n 0, 1 {x}\nn 1, 11 {x}\nn 2, 1 {x}\n");
}

TEST(RecordedMachine, ANumberIsCalculatedFromTheLeftToTheRight) {
  EXPECT_EQ(fileOf("file /a repeated 7-7\n  {n-1*2+10/4%3}\n", "/a"), "2\n");
}

TEST(RecordedMachine, BracesOfAFileThatIsNotRepeatedStay) {
  EXPECT_EQ(fileOf("file /a\n  {n}\n", "/a"), "{n}\n");
}

TEST(RecordedMachine, ARangeInAPathMakesAFileForEachNumber) {
  const std::string text = "in /cpu{8-10}/topology\n  core {n/2}\n";
  EXPECT_EQ(fileOf(text, "/cpu8/topology/core"), "4\n");
  EXPECT_EQ(fileOf(text, "/cpu10/topology/core"), "5\n");
  EXPECT_EQ(fileOf(text, "/cpu11/topology/core"), "no such file");
}

TEST(RecordedMachine, AFolderHasSmallFilesAndLinks) {
  const RecordedMachine recorded(
      "in /sys/a\n  vendor 0x8086\n  label Two words\n  empty\n  driver -> ../../b\n", "test");
  EXPECT_THAT(recorded.files().names("/sys/a"), ElementsAre("driver", "empty", "label", "vendor"));
  EXPECT_EQ(recorded.files().text("/sys/a/label"), "Two words\n");
  EXPECT_EQ(recorded.files().text("/sys/a/empty"), "\n");
  EXPECT_EQ(recorded.files().linkTarget("/sys/a/driver"), "../../b");
}

TEST(RecordedMachine, ALinkPointsWhereItIsTold) {
  const RecordedMachine recorded("link /cpu{0-1} -> devices/cpu{n}\nfolder /empty\n", "test");
  EXPECT_EQ(recorded.files().linkTarget("/cpu1"), "devices/cpu1");
  EXPECT_THAT(recorded.files().names("/"), ElementsAre("cpu0", "cpu1", "empty"));
}

TEST(RecordedMachine, BytesAreDigitsTextsAndASum) {
  EXPECT_EQ(fileOf("bytes /a\n  01 ff  # a remark\n  \"a # b\" 00 checksum\n", "/a"),
            std::string("\x01\xFF"
                        "a # b\0\xDA",
                        9));
}

TEST(RecordedMachine, AStructureOfTheFirmwareHasItsFieldsAtTheirOffsets) {
  EXPECT_EQ(fileOf("smbios 17 0x0102\n  0x04 word 0x0304 handle\n  0x07 text Bank 1\n"
                   "  0x08 text B\n  length 10\n",
                   "/sys/firmware/dmi/tables/DMI"),
            std::string("\x11\x0A\x02\x01\x04\x03\x00\x01\x02\x00"
                        "Bank 1\0B\0\0"
                        "\x7F\x04\xFF\xFE\0\0",
                        26));
}

TEST(RecordedMachine, AStructureIsRepeatedWithItsHandle) {
  EXPECT_EQ(fileOf("smbios 9 0x20 repeated 1-2\n  0x04 byte {n}\n", "/sys/firmware/dmi/tables/DMI"),
            std::string("\x09\x05\x20\x00\x01\0\0"
                        "\x09\x05\x21\x00\x02\0\0"
                        "\x7F\x04\xFF\xFE\0\0",
                        20));
}

TEST(RecordedMachine, APciDeviceStandsOnItsBus) {
  const RecordedMachine recorded(
      "pci pci0000:00/0000:00:1d.0/0000:02:00.0 144d:a808 144d:a801 010802 nvme\n  numa_node 0\n",
      "test.machine");
  ASSERT_THAT(recorded.mistakes(), IsEmpty());
  const FileTree files = recorded.files();
  const std::string device = "/sys/bus/pci/devices/0000:02:00.0";
  EXPECT_EQ(files.text(device + "/subsystem_device"), "0xa801\n");
  EXPECT_EQ(files.text(device + "/numa_node"), "0\n");
  EXPECT_EQ(files.text(device + "/uevent"),
            "DRIVER=nvme\nPCI_CLASS=10802\nPCI_ID=144D:A808\nPCI_SUBSYS_ID=144D:A801\n"
            "PCI_SLOT_NAME=0000:02:00.0\n"
            "MODALIAS=pci:v0000144Dd0000A808sv0000144Dsd0000A801bc01sc08i02\n");
  EXPECT_EQ(files.linkTarget(device + "/driver"), "../../../../bus/pci/drivers/nvme");
  EXPECT_EQ(files.linkTarget(device + "/subsystem"), "../../../../bus/pci");
  EXPECT_EQ(files.text("/sys/bus/pci/drivers/nvme/0000:02:00.0/class"), "0x010802\n");
}

TEST(RecordedMachine, AUsbDeviceHasItsInterfaces) {
  const RecordedMachine recorded(
      "usb pci0/usb1/1-2 046d:0c77 00 1.5\n  product Mouse\n"
      "usb-interface pci0/usb1/1-2/1-2:1.0 030102 usbhid\n",
      "test.machine");
  ASSERT_THAT(recorded.mistakes(), IsEmpty());
  const FileTree files = recorded.files();
  EXPECT_EQ(files.text("/sys/bus/usb/devices/1-2/product"), "Mouse\n");
  EXPECT_EQ(files.text("/sys/bus/usb/devices/1-2/uevent"),
            "DEVTYPE=usb_device\nDRIVER=usb\nPRODUCT=46d/c77/100\nTYPE=0/0/0\n");
  EXPECT_EQ(files.text("/sys/bus/usb/devices/1-2:1.0/modalias"),
            "usb:v046Dp0C77d0100dc00dsc00dp00ic03isc01ip02in00\n");
  EXPECT_EQ(files.linkTarget("/sys/bus/usb/devices/1-2:1.0/driver"),
            "../../../../../bus/usb/drivers/usbhid");
}

TEST(RecordedMachine, ADiskAndItsPartitionsAreBlockDevices) {
  const RecordedMachine recorded(
      "block pci0/nvme0n1 259:0 1000\n  queue/rotational 0\n"
      "block pci0/nvme0n1/nvme0n1p1 259:1 500 partition 1\n  start 2048\n",
      "test.machine");
  ASSERT_THAT(recorded.mistakes(), IsEmpty());
  const FileTree files = recorded.files();
  EXPECT_THAT(files.names("/sys/block"), ElementsAre("nvme0n1"));
  EXPECT_THAT(files.names("/sys/class/block"), ElementsAre("nvme0n1", "nvme0n1p1"));
  EXPECT_EQ(files.text("/sys/block/nvme0n1/queue/rotational"), "0\n");
  EXPECT_EQ(files.text("/sys/dev/block/259:1/partition"), "1\n");
  EXPECT_EQ(files.text("/sys/dev/block/259:1/uevent"),
            "MAJOR=259\nMINOR=1\nDEVNAME=nvme0n1p1\nDEVTYPE=partition\n");
}

TEST(RecordedMachine, DevicesStandOnOtherBusesAndInClasses) {
  const RecordedMachine recorded(
      "bus virtio pci0/virtio1 virtio_net\n  device 0x0001\n"
      "class net pci0/virtio1/net/eth0\n  address 52:54:00:00:00:01\n",
      "test.machine");
  ASSERT_THAT(recorded.mistakes(), IsEmpty());
  const FileTree files = recorded.files();
  EXPECT_EQ(files.text("/sys/bus/virtio/devices/virtio1/device"), "0x0001\n");
  EXPECT_EQ(files.text("/sys/class/net/eth0/address"), "52:54:00:00:00:01\n");
  EXPECT_EQ(files.linkTarget("/sys/class/net/eth0/subsystem"), "../../../../../class/net");
}

TEST(RecordedMachine, TheDatabaseKnowsItsDevices) {
  const RecordedMachine recorded("hwdb pci:v00008086*\n  ID_VENDOR_FROM_DATABASE=Example=Works\n",
                                 "test");
  EXPECT_EQ(DeviceNames(recorded.files()).makerOf("pci:v00008086d00000001"), "Example=Works");
}

TEST(RecordedMachine, TheJournalHasItsMessages) {
  const RecordedMachine recorded("journal repeated 1-3\n  0 4 kernel: event {n}: all is well\n",
                                 "test");
  EXPECT_THAT(recorded.mistakes(), IsEmpty());
  if (!recorded.lacks().empty()) GTEST_SKIP() << recorded.lacks();
  const std::string folder =
      recorded.tree.real("/var/log/journal/00112233445566778899aabbccddeeff");
  FILE* tool = popen(("journalctl -q -o short-unix --directory=" + folder).c_str(), "r");
  ASSERT_NE(tool, nullptr);
  std::string printed;
  for (int byte = 0; (byte = fgetc(tool)) != EOF;) printed += static_cast<char>(byte);
  if (pclose(tool) != 0) GTEST_SKIP() << "journalctl does not run here";
  EXPECT_THAT(printed, ::testing::ContainsRegex("kernel: event 1: all is well\n"
                                                ".*kernel: event 2: all is well\n"
                                                ".*kernel: event 3: all is well\n"));
}

TEST(RecordedMachine, TheKernelTellsWhatItIs) {
  const RecordedMachine recorded("host a.example\nkernel 6.1.0 #1 SMP X\narchitecture riscv64\n",
                                 "test");
  EXPECT_EQ(recorded.machine.kernelFacts.host, "a.example");
  EXPECT_EQ(recorded.machine.kernelFacts.release, "6.1.0");
  EXPECT_EQ(recorded.machine.kernelFacts.version, "#1 SMP X");
  EXPECT_EQ(recorded.machine.kernelFacts.machine, "riscv64");
}

TEST(RecordedMachine, TheClockHasAZone) {
  const RecordedMachine recorded("clock 1770027672 -300 EST\nborn 17\nenvironment A=b=c\n", "test");
  EXPECT_EQ(recorded.machine.now(), 1770027672);
  EXPECT_EQ(recorded.machine.local(1770027672).time.hour, 5);
  EXPECT_EQ(recorded.machine.local(0).zone, "EST");
  EXPECT_EQ(recorded.machine.born("/"), 17);
  EXPECT_EQ(recorded.machine.environment("A"), "b=c");
}

TEST(RecordedMachine, InterfacesStandInTheirOrder) {
  const RecordedMachine recorded(
      "interface 2 eth0\n  running\n  192.0.2.7 lent\n  fe80::1 lasting\n"
      "interface 3 br0 bridge\n",
      "test");
  const auto interfaces = recorded.machine.interfaces().value();
  ASSERT_EQ(interfaces.size(), 2U);
  EXPECT_TRUE(interfaces[0].running);
  ASSERT_EQ(interfaces[0].addresses.size(), 2U);
  EXPECT_EQ(interfaces[0].addresses[0].address.text(), "192.0.2.7");
  EXPECT_FALSE(interfaces[0].addresses[0].lasting);
  EXPECT_TRUE(interfaces[0].addresses[1].lasting);
  EXPECT_EQ(interfaces[1].kind, "bridge");
  EXPECT_FALSE(interfaces[1].running);
}

TEST(RecordedMachine, ScreensAndFileSystemsAreAskedOfIt) {
  const RecordedMachine recorded(
      "room /home 4096 10 5 4\nscreen card0 eDP-1 1920 1080 60 24\nprinter Office\n  In the hall\n",
      "test");
  EXPECT_EQ(recorded.machine.room("/home")->available, 4U);
  EXPECT_EQ(recorded.machine.room("/home")->block, 4096U);
  ASSERT_EQ(recorded.machine.displayModes("card0").size(), 1U);
  EXPECT_EQ(recorded.machine.displayModes("card0")[0].height, 1080U);
  EXPECT_EQ(recorded.machine.displayModes("card0")[0].depth, 24U);
  EXPECT_THAT(recorded.printers,
              ElementsAre(std::pair<std::string, std::string>("Office", "In the hall")));
}

TEST(RecordedMachine, SettingsAreKnownBySchemaAndKey) {
  const RecordedMachine recorded("setting org.example.ground file  a picture.png\n", "test");
  EXPECT_EQ(recorded.setting("org.example.ground", "file"), "a picture.png");
  EXPECT_EQ(recorded.setting("org.example.ground", "colour"), std::nullopt);
}

TEST(RecordedMachine, AFileWasWrittenWhenItIsTold) {
  const RecordedMachine recorded("file /a/b\nwritten /a/b 1000000000\nwritten /a 900000000\n",
                                 "test");
  EXPECT_THAT(recorded.mistakes(), IsEmpty());
  EXPECT_EQ(recorded.files().written("/a/b"), 1000000000);
  EXPECT_EQ(recorded.files().written("/a"), 900000000);
}

TEST(RecordedMachine, EachMistakeIsToldWithItsLine) {
  EXPECT_THAT(mistakesIn("file /a\n  x\nfil /b\nfile b\nfile /a\n"),
              ElementsAre("test.machine:3: no such section: fil",
                          "test.machine:4: a path that does not begin at the root: b",
                          "test.machine:5: told twice: /a"));
}

struct Mistake {
  const char* recording;
  const char* what;
};

class RecordedMistake : public testing::TestWithParam<Mistake> {};

TEST_P(RecordedMistake, IsTold) {
  EXPECT_THAT(mistakesIn(GetParam().recording), ElementsAre(GetParam().what));
}

INSTANTIATE_TEST_SUITE_P(
    Each, RecordedMistake,
    testing::Values(
        Mistake{"  x\n", "test.machine:1: an indented line below no section"},
        Mistake{"file /a repeated 3\n  x\n", "test.machine:1: no range of numbers: 3"},
        Mistake{"file /a repeated 3-2\n  x\n",
                "test.machine:1: a range that ends before it begins: 3-2"},
        Mistake{"file /a repeated 1-2\n  {n/0}\n", "test.machine:2: cannot calculate {n/0}"},
        Mistake{"file /a repeated 1-2\n  {nx1}\n", "test.machine:2: cannot calculate {nx1}"},
        Mistake{"link /a b\n", "test.machine:1: no link: /a b"},
        Mistake{"bytes /a\n  0\n", "test.machine:2: no byte: 0"},
        Mistake{"bytes /a\n  \"ab\n", "test.machine:2: a text that does not end"},
        Mistake{"smbios 1\n", "test.machine:1: a structure has a type and a handle"},
        Mistake{"smbios 1 2\n  0x04 half 3\n", "test.machine:2: no kind of field: half"},
        Mistake{"smbios 1 2\n  0x04 byte\n", "test.machine:2: no field of a structure: 0x04 byte"},
        Mistake{"smbios 1 2\n  0x03 byte 1\n", "test.machine:2: a field outside of its structure"},
        Mistake{"smbios 1 2\n  0xFE word 1\n", "test.machine:2: a field outside of its structure"},
        Mistake{"smbios 1 2\n  0x04 byte x\n", "test.machine:2: no number: \"x\""},
        Mistake{"hwdb a*\n  b\n", "test.machine:2: no property: b"},
        Mistake{"journal\n  0 kernel: text\n",
                "test.machine:2: no message of the journal: 0 kernel: text"},
        Mistake{"setting a b\n", "test.machine:1: a setting has a schema, a key and a value"},
        Mistake{"environment a\n", "test.machine:1: no variable: a"},
        Mistake{"interface 2\n", "test.machine:1: an interface has an index and a name"},
        Mistake{"interface 2 a\n  192.0.2.7\n",
                "test.machine:2: no address of an interface: 192.0.2.7"},
        Mistake{"interface 2 a\n  192.0.2 lasting\n",
                "test.machine:2: no address of an interface: 192.0.2 lasting"},
        Mistake{"room / 1 2 3\n", "test.machine:1: room takes 5 words: / 1 2 3"},
        Mistake{"pci a 8086:1\n", "test.machine:1: too little of a device: a 8086:1"},
        Mistake{"pci a 8086:1 030000\n", "test.machine:1: no IDs of maker and device: 8086:1"},
        Mistake{"pci a 8086:1111 0300\n", "test.machine:1: no class of a device: 0300"},
        Mistake{"usb-interface a/b 030102\n", "test.machine:1: an interface of no USB device: a/b"},
        Mistake{"block a 259 12\n", "test.machine:1: no disk and no partition: a"},
        Mistake{"written /a 1\n", "test.machine:1: no file /a above"}));

class RecordedMachineFile : public testing::TestWithParam<std::string> {};

TEST_P(RecordedMachineFile, HoldsTogether) {
  const RecordedMachine recorded(recordingsFolder() + GetParam() + ".machine");
  EXPECT_THAT(recorded.mistakes(), IsEmpty());
  EXPECT_NE(recorded.machine.kernelFacts.release, "");
}

INSTANTIATE_TEST_SUITE_P(Each, RecordedMachineFile, testing::ValuesIn(recordedMachines()),
                         [](const auto& info) { return info.param; });

TEST(RecordedMachines, AreSix) {
  EXPECT_THAT(recordedMachines(),
              ElementsAre("board", "container", "desktop", "laptop", "server", "virtual"));
}

}  // namespace
}  // namespace veltrin

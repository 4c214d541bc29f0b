// SPDX-License-Identifier: GPL-3.0-or-later
// Graphics cards and monitors, on machines that are made up.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wmi_classes.h"
#include "tests/machine/device_tree.h"
#include "tests/machine/edid_block.h"
#include "tests/machine/fake_machine.h"
#include "tests/machine/hardware_database_file.h"
#include "tests/machine/temporary_tree.h"

namespace veltrin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The properties of a card, in the order of the report; "-" for null.
struct Card {
  std::string name = "-";
  std::string chip = "-";
  std::string depth = "-";
  std::string width = "-";
  std::string height = "-";
  std::string refresh = "-";
  std::string least = "-";
  std::string most = "-";

  friend bool operator==(const Card&, const Card&) = default;
  friend void PrintTo(const Card& card, std::ostream* out) {
    *out << card.name << " | " << card.chip << " | " << card.depth << " | " << card.width << " | "
         << card.height << " | " << card.refresh << " | " << card.least << " | " << card.most;
  }
};

struct Monitor {
  std::string description = "-";
  std::string caption = "-";

  friend bool operator==(const Monitor&, const Monitor&) = default;
  friend void PrintTo(const Monitor& monitor, std::ostream* out) {
    *out << monitor.description << " | " << monitor.caption;
  }
};

class ScreensTest : public ::testing::Test {
 protected:
  // Puts a device on the PCI bus. The class is as the kernel writes it, "30000" for 030000h.
  void putPci(const std::string& slot, const std::string& classCode, const std::string& modalias,
              const std::string& driver) {
    PciFolder device;
    device.address = slot;
    device.code = classCode;
    device.modalias = modalias;
    device.driver = driver;
    veltrin::putPci(tree_, device);
  }

  // Puts a card of the direct rendering manager at a device.
  void putScreen(const std::string& card, const std::string& device) {
    const std::string folder = "/sys/devices/" + device + "/drm/" + card;
    tree_.put(folder + "/uevent", "DEVNAME=dri/" + card + "\n");
    tree_.link(folder + "/device", "../../../" + device.substr(device.rfind('/') + 1));
    tree_.link("/sys/class/drm/" + card, "../../devices/" + device + "/drm/" + card);
  }

  void putConnector(const std::string& name, const std::string& status,
                    const std::string& edid = "") {
    tree_.put("/sys/class/drm/" + name + "/status", status + "\n");
    tree_.put("/sys/class/drm/" + name + "/edid", edid);
  }

  void putFrameBuffer(const std::string& name, const std::string& size, const std::string& depth,
                      const std::string& mode = "") {
    tree_.put("/sys/class/graphics/fb0/name", name + "\n");
    tree_.put("/sys/class/graphics/fb0/virtual_size", size + "\n");
    tree_.put("/sys/class/graphics/fb0/bits_per_pixel", depth + "\n");
    tree_.put("/sys/class/graphics/fb0/mode", mode + "\n");
  }

  void putNames() {
    const std::string maker = " ID_VENDOR_FROM_DATABASE";
    const std::string model = " ID_MODEL_FROM_DATABASE";
    const std::string kind = " ID_PCI_SUBCLASS_FROM_DATABASE";
    tree_.put("/lib/udev/hwdb.bin",
              databaseFile({{"pci:v00008086*", maker, "Intel Corporation"},
                            {"pci:v00008086d00005917*", model, "UHD Graphics 620"},
                            {"pci:v000010DE*", maker, "NVIDIA Corporation"},
                            {"pci:v000010DEd00001C8D*", model, "GP107M [GeForce GTX 1050 Mobile]"},
                            {"pci:v00001B36*", maker, "Red Hat, Inc."},
                            {"pci:v00001B36d00000100*", model, "QXL paravirtual graphic card"},
                            {"pci:v00001AF4*", maker, "Red Hat, Inc."},
                            {"pci:v00001AF4d00001050*", model, "Virtio 1.0 GPU"},
                            {"pci:v*d*sv*sd*bc03sc00*", kind, "VGA compatible controller"},
                            {"acpi:DEL*:", maker, "Dell Inc."},
                            {"acpi:AUO*:", maker, "AU Optronics"},
                            {"acpi:SAM*:", maker, "Samsung Electric Company"}}));
  }

  std::vector<Card> cards() const {
    std::vector<Card> cards;
    for (const WmiObject& object : win32VideoController(sources_)) {
      cards.push_back(
          {text(object, "Caption"), text(object, "VideoProcessor"),
           text(object, "CurrentBitsPerPixel"), text(object, "CurrentHorizontalResolution"),
           text(object, "CurrentVerticalResolution"), text(object, "CurrentRefreshRate"),
           text(object, "MinRefreshRate"), text(object, "MaxRefreshRate")});
    }
    return cards;
  }

  std::vector<Monitor> monitors() const {
    std::vector<Monitor> monitors;
    for (const WmiObject& object : win32DesktopMonitor(sources_)) {
      monitors.push_back({text(object, "Description"), text(object, "Caption")});
    }
    return monitors;
  }

  static std::string text(const WmiObject& object, const std::string& name) {
    const WmiValue& value = object.value(name);
    return value.isNull() ? "-" : value.text();
  }

  static constexpr const char* kIntel = "pci:v00008086d00005917sv00001028sd0000081Cbc03sc00i00";
  static constexpr const char* kNvidia = "pci:v000010DEd00001C8Dsv00001028sd0000081Cbc03sc02i00";
  static constexpr const char* kVirtio = "pci:v00001AF4d00001050sv00001AF4sd00001100bc03sc00i00";
  static constexpr const char* kQxl = "pci:v00001B36d00000100sv00001AF4sd00001100bc03sc00i00";
  const std::string kDevices = "/sys/devices/pci0000:00/";

  TemporaryTree tree_;
  std::shared_ptr<FakeMachine> machine_ = std::make_shared<FakeMachine>();
  const WmiSources sources_{tree_.files(), machine_, nullptr};
};

// A laptop with the processor's own graphics and a second card that sleeps.
class TwoCardsTest : public ScreensTest {
 protected:
  TwoCardsTest() {
    putNames();
    putPci("0000:00:02.0", "30000", kIntel, "i915");
    putPci("0000:00:1f.3", "40300", "pci:v00008086d00009D71sv0sd0bc04sc03i00", "snd_hda_intel");
    putPci("0000:01:00.0", "30200", kNvidia, "nvidia");
    putScreen("card0", "pci0000:00/0000:01:00.0");
    putScreen("card1", "pci0000:00/0000:00:02.0");
    putConnector("card1-eDP-1", "connected",
                 EdidBlock("AUO", 0x38ED).withTiming().withRefresh(48, 60).bytes());
    putConnector("card1-DP-1", "connected",
                 EdidBlock("SAM", 0x0F9C).withRefresh(40, 75).withName("U32R59x").bytes());
    putConnector("card1-HDMI-A-1", "disconnected");
    machine_->screens["card1"] = {{"eDP-1", 1920, 1080, 60, 32}, {"DP-1", 3840, 2160, 30, 32}};
  }
};

TEST_F(TwoCardsTest, AreToldInTheOrderOfTheirBusWithWhatTheyShow) {
  EXPECT_THAT(cards(),
              ElementsAre(Card{"Intel Corporation UHD Graphics 620", "UHD Graphics 620", "32",
                               "1920", "1080", "60", "40", "75"},
                          Card{"NVIDIA Corporation GP107M [GeForce GTX 1050 Mobile]", "GP107M"}));
}

TEST_F(TwoCardsTest, TheDriversOwnNameOfAChipComesFirst) {
  tree_.put("/proc/driver/nvidia/gpus/0000:01:00.0/information",
            "Model: \t\t NVIDIA GeForce GTX 1050\nIRQ:   \t\t 141\n");
  tree_.put(kDevices + "0000:00:02.0/product_name", "A Card of Many\n");
  EXPECT_EQ(cards()[1].chip, "NVIDIA GeForce GTX 1050");
  EXPECT_EQ(cards()[0].chip, "A Card of Many");
}

TEST_F(TwoCardsTest, ACardThatSleepsIsNotWokenUp) {
  machine_->screens["card0"] = {{"HDMI-A-2", 1280, 720, 50, 16}};
  EXPECT_EQ(cards()[1].width, "1280");
  tree_.put(kDevices + "0000:01:00.0/power/runtime_status", "suspended\n");
  EXPECT_EQ(cards()[1].width, "-");
}

TEST_F(TwoCardsTest, MonitorsAreNamedByTheirMakerAndThemselves) {
  EXPECT_THAT(monitors(), ElementsAre(Monitor{"U32R59x", "Samsung Electric Company U32R59x"},
                                      Monitor{"AU Optronics 0x38ED", "AU Optronics 0x38ED"}));
}

TEST_F(TwoCardsTest, AMonitorWhoseNameBeginsWithItsMakerIsNotNamedTwice) {
  putConnector("card1-DP-1", "connected", EdidBlock("DEL").withName("DELL U2412M").bytes());
  EXPECT_EQ(monitors()[0], (Monitor{"DELL U2412M", "DELL U2412M"}));
}

TEST_F(TwoCardsTest, AMakerThatNobodyKnowsIsToldByItsLetters) {
  putConnector("card1-DP-1", "connected", EdidBlock("QQX").withName("Screen").bytes());
  EXPECT_EQ(monitors()[0], (Monitor{"Screen", "QQX Screen"}));
  putConnector("card1-DP-1", "connected", EdidBlock().withByte(8, 0).withName("Screen").bytes());
  EXPECT_EQ(monitors()[0], (Monitor{"Screen", "Screen"}));
}

TEST_F(TwoCardsTest, AMonitorThatTellsNothingIsKnownByItsConnectorAlone) {
  putConnector("card1-DP-1", "connected");
  putConnector("card1-eDP-1", "connected", EdidBlock().bytes().substr(0, 127));
  EXPECT_THAT(monitors(), ElementsAre(Monitor{"-", "DP-1"}, Monitor{"-", "eDP-1"}));
  EXPECT_EQ(cards()[0].least, "-");
  EXPECT_EQ(cards()[0].most, "-");
}

TEST_F(TwoCardsTest, MonitorsOfTheTenthCardComeBehindThoseOfTheSecond) {
  putConnector("card10-DP-1", "connected");
  putScreen("card10", "pci0000:00/0000:00:1f.3");
  putConnector("card2-VGA-1", "connected");
  putScreen("card2", "pci0000:00/0000:00:1f.3");
  EXPECT_THAT(monitors(), ElementsAre(Monitor{"U32R59x", "Samsung Electric Company U32R59x"},
                                      Monitor{"AU Optronics 0x38ED", "AU Optronics 0x38ED"},
                                      Monitor{"-", "VGA-1"}, Monitor{"-", "DP-1"}));
}

TEST_F(TwoCardsTest, WithoutADatabaseCardsAreNamedByTheirDrivers) {
  tree_.put("/lib/udev/hwdb.bin", "");
  EXPECT_THAT(cards(), ElementsAre(Card{"i915", "-", "32", "1920", "1080", "60", "40", "75"},
                                   Card{"nvidia"}));
}

TEST_F(ScreensTest, AModelThatIsNotKnownIsNamedByItsMakerAndKind) {
  putNames();
  putPci("0000:00:02.0", "30000", "pci:v00008086d0000FFF7sv0sd0bc03sc00i00", "xe");
  EXPECT_THAT(cards(), ElementsAre(Card{"Intel Corporation VGA compatible controller"}));
}

TEST_F(ScreensTest, ACardWithoutNameAndDriverIsACardStill) {
  putPci("0000:00:02.0", "38000", "", "");
  EXPECT_THAT(cards(), ElementsAre(Card{}));
}

TEST_F(ScreensTest, AServerWithoutAMonitorShowsNothing) {
  putNames();
  putPci("0000:03:00.0", "30000", "pci:v0000102Bd00000534sv0sd0bc03sc00i00", "mgag200");
  putScreen("card0", "pci0000:00/0000:03:00.0");
  putConnector("card0-VGA-1", "disconnected");
  putFrameBuffer("mgag200drmfb", "1024,768", "32");
  tree_.link("/sys/class/graphics/fb0/device", "../../../devices/pci0000:00/0000:03:00.0");
  EXPECT_THAT(cards(), ElementsAre(Card{"VGA compatible controller"}));
  EXPECT_THAT(monitors(), IsEmpty());
}

TEST_F(ScreensTest, AMachineWithoutGraphicsHasNoCardsAndNoMonitors) {
  putPci("0000:00:1f.3", "40300", "pci:v00008086d00009D71sv0sd0bc04sc03i00", "snd_hda_intel");
  EXPECT_THAT(cards(), IsEmpty());
  EXPECT_THAT(monitors(), IsEmpty());
}

TEST_F(ScreensTest, AVirtualCardIsThatOfTheBusThatCarriesIt) {
  putNames();
  putPci("0000:00:01.0", "30000", kVirtio, "virtio-pci");
  tree_.put(kDevices + "0000:00:01.0/virtio0/uevent", "DRIVER=virtio_gpu\n");
  putScreen("card0", "pci0000:00/0000:00:01.0/virtio0");
  putConnector("card0-Virtual-1", "connected");
  machine_->screens["card0"] = {{"Virtual-1", 1280, 800, 75, 32}};
  EXPECT_THAT(cards(), ElementsAre(Card{"Red Hat, Inc. Virtio 1.0 GPU", "Virtio 1.0 GPU", "32",
                                        "1280", "800", "75"}));
  EXPECT_THAT(monitors(), ElementsAre(Monitor{"-", "Virtual-1"}));
}

TEST_F(ScreensTest, AVirtualCardOnNoBusIsNamedByItsDriver) {
  const std::string device = "platform/a003e00.virtio_mmio/virtio5";
  tree_.put("/sys/devices/" + device + "/uevent", "DRIVER=virtio_gpu\n");
  tree_.link("/sys/devices/" + device + "/driver", "../../../../bus/virtio/drivers/virtio_gpu");
  putScreen("card0", device);
  machine_->screens["card0"] = {{"Virtual-1", 1280, 800, 0, 0}};
  EXPECT_THAT(cards(), ElementsAre(Card{"virtio_gpu", "-", "-", "1280", "800"}));
}

TEST_F(ScreensTest, ACardInAChipIsNamedByItsDriverAndTheBoardsDescription) {
  const std::string device = "platform/gpu";
  tree_.put("/sys/devices/" + device + "/uevent",
            "DRIVER=vc4-drm\nOF_NAME=gpu\nOF_COMPATIBLE_0=brcm,bcm2711-vc5\nOF_COMPATIBLE_N=1\n");
  tree_.put("/sys/devices/" + device + "/modalias", "of:NgpuT(null)Cbrcm,bcm2711-vc5\n");
  tree_.link("/sys/devices/" + device + "/driver", "../../../bus/platform/drivers/vc4-drm");
  putScreen("card0", device);
  EXPECT_THAT(cards(), ElementsAre(Card{"vc4-drm", "brcm,bcm2711-vc5"}));
}

// A user who may not ask the card, but reads the frame buffer of the console.
class QxlTest : public ScreensTest {
 protected:
  QxlTest() {
    putNames();
    putPci("0000:00:02.0", "30000", kQxl, "qxl");
    putScreen("card0", "pci0000:00/0000:00:02.0");
    putConnector("card0-Virtual-1", "connected");
    putFrameBuffer("qxldrmfb", "1024,768", "32");
    tree_.link("/sys/class/graphics/fb0/device", "../../../devices/pci0000:00/0000:00:02.0");
  }
};

TEST_F(QxlTest, TheFrameBufferTellsWhatTheCardDoesNot) {
  EXPECT_THAT(cards(), ElementsAre(Card{"Red Hat, Inc. QXL paravirtual graphic card",
                                        "QXL paravirtual graphic card", "32", "1024", "768"}));
}

TEST_F(QxlTest, WhatTheCardTellsComesBeforeTheFrameBuffer) {
  machine_->screens["card0"] = {{"Virtual-1", 800, 600, 60, 0}};
  EXPECT_EQ(cards()[0], (Card{"Red Hat, Inc. QXL paravirtual graphic card",
                              "QXL paravirtual graphic card", "-", "800", "600", "60"}));
}

TEST_F(QxlTest, TheFrameBufferOfAnotherCardTellsNothingOfThisOne) {
  putPci("0000:00:03.0", "30000", kQxl, "qxl");
  putScreen("card1", "pci0000:00/0000:00:03.0");
  putConnector("card1-Virtual-2", "connected");
  ASSERT_EQ(cards().size(), 2U);
  EXPECT_EQ(cards()[0].width, "1024");
  EXPECT_EQ(cards()[1].width, "-");
}

TEST_F(ScreensTest, AFrameBufferAloneIsACard) {
  putFrameBuffer("EFI VGA", "1280,1024", "32");
  EXPECT_THAT(cards(), ElementsAre(Card{"EFI VGA", "-", "32", "1280", "1024"}));
  EXPECT_THAT(monitors(), IsEmpty());
}

TEST_F(ScreensTest, TheFirmwaresFrameBufferIsThatOfTheOnlyCard) {
  putNames();
  putPci("0000:00:02.0", "30000", kIntel, "");
  putFrameBuffer("EFI VGA", "1280,1024", "32");
  tree_.link("/sys/class/graphics/fb0/device", "../../../devices/platform/efi-framebuffer.0");
  EXPECT_THAT(cards(), ElementsAre(Card{"Intel Corporation UHD Graphics 620", "UHD Graphics 620",
                                        "32", "1280", "1024"}));
  putPci("0000:01:00.0", "30200", kNvidia, "nvidia");
  ASSERT_EQ(cards().size(), 2U);
  EXPECT_EQ(cards()[0].width, "-");
  EXPECT_EQ(cards()[1].width, "-");
}

TEST_F(ScreensTest, AFrameBufferBesideAScreenElsewhereIsNotThatOfTheOnlyCard) {
  putPci("0000:00:02.0", "30000", kIntel, "");
  putScreen("card0", "platform/gpu");
  putFrameBuffer("gpudrmfb", "1280,1024", "32");
  ASSERT_EQ(cards().size(), 2U);
  EXPECT_EQ(cards()[0].width, "-");
}

TEST_F(ScreensTest, OfAFrameBufferCountsWhatIsSeen) {
  putFrameBuffer("EFI VGA", "1024,1536", "16", "U:1024x768p-75");
  EXPECT_THAT(cards(), ElementsAre(Card{"EFI VGA", "-", "16", "1024", "768"}));
}

TEST_F(ScreensTest, AFrameBufferOfAbsurdSizeTellsNothing) {
  for (const char* size : {"", "1024", "x,y", "0,768", "1024,0", "99999999999,1"}) {
    putFrameBuffer("odd", size, "32");
    EXPECT_THAT(cards(), ElementsAre(Card{"odd"})) << size;
  }
}

TEST_F(ScreensTest, NamesThatAreNoTextArePrintable) {
  putFrameBuffer("\xFF\x01 odd", "", "");
  EXPECT_THAT(cards(), ElementsAre(Card{"?  odd"}));
}

TEST_F(ScreensTest, FoldersWithoutFilesAreNoTrouble) {
  tree_.makeFolder("/sys/bus/pci/devices/0000:00:02.0");
  tree_.makeFolder("/sys/class/drm/card0");
  tree_.makeFolder("/sys/class/drm/card0-VGA-1");
  tree_.makeFolder("/sys/class/drm/renderD128");
  tree_.put("/sys/class/drm/version", "drm 1.1.0 20060810\n");
  tree_.makeFolder("/sys/class/drm/card");
  tree_.makeFolder("/sys/class/drm/card99999999999999999999999");
  EXPECT_THAT(cards(), IsEmpty());
  EXPECT_THAT(monitors(), IsEmpty());
}

}  // namespace
}  // namespace veltrin

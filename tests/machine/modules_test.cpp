// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/modules.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_machine.h"
#include "module_image.h"
#include "temporary_tree.h"

namespace veltrin {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kFolder = "/lib/modules/6.1.0-21-amd64/";

class Modules : public ::testing::Test {
 protected:
  Modules() { machine_.kernelFacts.release = "6.1.0-21-amd64"; }

  void load(const std::string& lines) { tree_.put("/proc/modules", lines); }
  void putOfKernel(const std::string& file, const std::string& bytes) {
    tree_.put(kFolder + file, bytes);
  }

  // "NAME|DESCRIPTION|PATH" of each.
  std::vector<std::string> texts() const {
    std::vector<std::string> texts;
    for (const ModuleFacts& module : kernelModules(tree_.files(), machine_)) {
      texts.push_back(module.name + "|" + module.description + "|" + module.path);
    }
    return texts;
  }

  ModuleStart startOf(const std::string& name) const {
    const auto modules = kernelModules(tree_.files(), machine_);
    const auto found = std::find_if(modules.begin(), modules.end(),
                                    [&](const ModuleFacts& each) { return each.name == name; });
    if (found == modules.end()) {
      ADD_FAILURE() << name << " is not there";
      return ModuleStart::OnDemand;
    }
    return found->start;
  }

  TemporaryTree tree_;
  FakeMachine machine_;
};

TEST_F(Modules, AreTheLoadedOnesByName) {
  load("snd_hda_intel 57344 0 - Live 0x0000000000000000\nahci 49152 2 libahci, Live 0x0 (OE)\n");
  EXPECT_THAT(texts(), ElementsAre("ahci||", "snd_hda_intel||"));
}

TEST_F(Modules, HaveThePathsThatTheKernelsListTells) {
  load("a_b 1 0 - Live 0x0\nc 1 0 - Live 0x0\nd 1 0 - Live 0x0\ngone 1 0 - Live 0x0\n");
  putOfKernel("modules.dep",
              "kernel/drivers/a-b.ko.xz: kernel/lib/x.ko.xz\nkernel/lib/x.ko.xz:\n"
              "updates/c.ko.zst:\n/opt/vendor/d.ko:\nno module\n");
  EXPECT_THAT(texts(), ElementsAre("a_b||/lib/modules/6.1.0-21-amd64/kernel/drivers/a-b.ko.xz",
                                   "c||/lib/modules/6.1.0-21-amd64/updates/c.ko.zst",
                                   "d||/opt/vendor/d.ko", "gone||"));
}

TEST_F(Modules, AreDescribedByTheirFiles) {
  load("ahci 1 0 - Live 0x0\nbad 1 0 - Live 0x0\n");
  putOfKernel("modules.dep", "kernel/ahci.ko:\nkernel/bad.ko:\n");
  putOfKernel("kernel/ahci.ko", moduleImage("description=AHCI \xFF driver\0license=GPL\0"s));
  putOfKernel("kernel/bad.ko", "");
  EXPECT_THAT(texts(), ElementsAre("ahci|AHCI ? driver|/lib/modules/6.1.0-21-amd64/kernel/ahci.ko",
                                   "bad||/lib/modules/6.1.0-21-amd64/kernel/bad.ko"));
}

TEST_F(Modules, AreThoseInTheKernelsFileToo) {
  load("zram 1 0 - Live 0x0\n");
  putOfKernel("modules.builtin", "kernel/fs/ext4/ext4.ko\nkernel/drivers/tty/serial/8250/x-y.ko\n");
  putOfKernel("modules.builtin.modinfo",
              "ext4.license=GPL\0ext4.description=Fourth = Extended\0ext4.description=Second\0"
              "x_y.parm=a.description=b\0other.description=c\0"s);
  EXPECT_THAT(texts(), ElementsAre("ext4|Fourth = Extended|", "x_y||", "zram||"));
  EXPECT_EQ(startOf("ext4"), ModuleStart::WithKernel);
  EXPECT_EQ(startOf("zram"), ModuleStart::OnDemand);
}

TEST_F(Modules, OfASettingAreLoadedAtTheStart) {
  load(
      "loop 1 0 - Live 0\nlp_x 1 0 - Live 0\nvia_line 1 0 - Live 0\nother 1 0 - Live 0\n"
      "fuse 1 0 - Live 0\n");
  tree_.put("/etc/modules", "# comment\n\n  loop max_loop=8\r\n");
  tree_.put("/usr/lib/modules-load.d/printing.conf", "; comment\nlp-x\n");
  tree_.put("/proc/cmdline", "quiet root=/dev/sda1 modules-load=via-line,fuse\n");
  EXPECT_EQ(startOf("loop"), ModuleStart::AtStart);
  EXPECT_EQ(startOf("lp_x"), ModuleStart::AtStart);
  EXPECT_EQ(startOf("via_line"), ModuleStart::AtStart);
  EXPECT_EQ(startOf("fuse"), ModuleStart::AtStart);
  EXPECT_EQ(startOf("other"), ModuleStart::OnDemand);
}

TEST_F(Modules, OfASettingThatAnotherHidesAreNot) {
  load("lp 1 0 - Live 0\nloop 1 0 - Live 0\n");
  tree_.put("/usr/lib/modules-load.d/printing.conf", "lp\n");
  tree_.put("/etc/modules-load.d/printing.conf", "");
  tree_.put("/etc/modules-load.d/readme", "loop\n");
  EXPECT_EQ(startOf("lp"), ModuleStart::OnDemand);
  EXPECT_EQ(startOf("loop"), ModuleStart::OnDemand);
}

TEST_F(Modules, OfASettingThatIsALinkAreLoadedAtTheStart) {
  load("loop 1 0 - Live 0\n");
  tree_.put("/usr/share/own/list", "loop\n");
  tree_.link("/etc/modules-load.d/modules.conf", "/usr/share/own/list");
  EXPECT_EQ(startOf("loop"), ModuleStart::AtStart);
}

TEST_F(Modules, AreNoneWhereTheKernelHasNone) { EXPECT_THAT(texts(), IsEmpty()); }

TEST_F(Modules, AreReadFromFilesThatAreNoText) {
  for (const std::string& bytes : {std::string(), std::string(70000, '\0'), "\xFF\n\n\xFE 1\n"s}) {
    load(bytes);
    putOfKernel("modules.dep", bytes);
    putOfKernel("modules.builtin", bytes);
    putOfKernel("modules.builtin.modinfo", bytes);
    tree_.put("/etc/modules", bytes);
    tree_.put("/proc/cmdline", bytes);
    for (const std::string& text : texts()) {
      EXPECT_EQ(text.find('\xFF'), std::string::npos);
    }
  }
  EXPECT_THAT(texts(), ElementsAre("?||"));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The files in which a made-up Linux machine keeps its network devices.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "machine/file_tree.h"
#include "platform/linux/adapter_names.h"
#include "tests/platform/scratch_folder.h"

namespace veltrin {

class NetworkTree {
 public:
  NetworkTree() {
    std::filesystem::create_directories(tree_.folder() / "proc/net");
    std::filesystem::create_directories(tree_.folder() / "sys/class/net");
    std::filesystem::create_directories(tree_.folder() / "sys/devices");
  }

  std::string proc() const { return tree_.path("proc"); }
  std::string sys() const { return tree_.path("sys"); }
  FileTree files() const { return FileTree(tree_.folder().string()); }

  void fillProc(const std::string& name, const std::string& content) const {
    tree_.fill("proc/" + name, content);
  }
  void removeProc(const std::string& name) const { std::filesystem::remove(proc() + "/" + name); }

  // A file below a device's folder in /sys/class/net.
  void fillSys(const std::string& device, const std::string& file,
               const std::string& content) const {
    const std::filesystem::path path = sys() + "/class/net/" + device + "/" + file;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << content;
  }

  // Plugs the device into a place of the bus ("pci0/0000:03:00.0") where hardware of this ID
  // sits.
  void plug(const std::string& device, const std::string& place, const std::string& id) const {
    const std::filesystem::path hardware = sys() + "/devices/" + place;
    std::filesystem::create_directories(hardware);
    std::ofstream(hardware / "modalias") << id << "\n";
    const std::filesystem::path folder = sys() + "/class/net/" + device;
    std::filesystem::create_directories(folder);
    std::filesystem::create_symlink(hardware, folder / "device");
  }

  void unplug(const std::string& device) const {
    std::filesystem::remove_all(sys() + "/class/net/" + device);
  }

  // A hardware database that knows these, and how often it was asked.
  std::map<std::string, std::string> known{{"pci:i210", "Intel Corporation I210 (Copper)"},
                                           {"pci:wifi", "Qualcomm QCA6174 802.11ac"}};
  int asked = 0;
  AdapterNames::Database database() {
    return [this](const std::string& id) {
      ++asked;
      const auto found = known.find(id);
      return found == known.end() ? std::string() : found->second;
    };
  }

 private:
  ScratchFolder tree_;
};

}  // namespace veltrin

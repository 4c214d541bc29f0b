// SPDX-License-Identifier: GPL-3.0-or-later
// The sound cards and the hubs of the USB.
#include "machine/device_names.h"
#include "machine/sound_cards.h"
#include "machine/usb_devices.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// How many folders above a card's own its device on a bus may lie: a card of a board's sound
// processor is a child of the PCI device.
constexpr int kMostAbove = 3;

// The device of a card; empty when it is not known.
std::string deviceOf(const SoundCard& card, const FileTree& files, DeviceNames& names) {
  std::string folder = card.folder;
  for (int above = 0; above <= kMostAbove; ++above, folder += "/..") {
    const std::string modalias = files.line(folder + "/modalias");
    if (modalias.starts_with("pci:")) {
      return names.pciNameOf(modalias);
    }
    if (modalias.starts_with("usb:")) {
      const std::string name = names.modelOf(modalias);
      return name.empty() ? wholeName(usbTextsIn(files, folder + "/..")) : name;
    }
  }
  return {};
}

bool isHub(const UsbDevice& device) { return device.code.kind == kUsbHub; }

}  // namespace

// Caption: the hardware database by "modalias" of the card's device, or "manufacturer" and
// "product" of it. Name: /proc/asound/cards, or "id" of the card. Each stands for the other
// where that is not known.
WmiAnswer win32SoundDevice(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const SoundCard& card : soundCards(sources.files)) {
    const std::string device = deviceOf(card, sources.files, names);
    answer.push_back({{
        {"Caption", orNull(device.empty() ? card.name : device)},
        {"Name", orNull(card.name.empty() ? device : card.name)},
    }});
  }
  return answer;
}

// Description: the hardware database by the numbers in "uevent" of the device's folder, or its
// own "manufacturer" and "product". DeviceID: the same numbers, and its address.
WmiAnswer win32UsbHub(const WmiSources& sources) {
  WmiAnswer answer;
  DeviceNames names(sources.files);
  for (const UsbDevice& device : usbDevices(sources.files)) {
    if (isHub(device)) {
      answer.push_back({{
          {"Description", orNull(names.nameOf(device))},
          {"DeviceID", orNull(deviceIdOf(device))},
      }});
    }
  }
  return answer;
}

}  // namespace veltrin

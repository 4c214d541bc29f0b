// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/graphics.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "machine/device_folder.h"
#include "machine/device_names.h"
#include "machine/fact_text.h"
#include "machine/pci_devices.h"

namespace veltrin {
namespace {

const std::string kPciDevices = "/sys/bus/pci/devices/";
const std::string kScreens = "/sys/class/drm/";
const std::string kFrameBuffer = "/sys/class/graphics/fb0/";

// The base class of display controllers (PCI Code and ID Assignment Specification, section 1.4).
constexpr std::uint8_t kDisplay = 0x03;

// Of what a monitor tells, no more than the base block is read.
constexpr std::size_t kEdidBlock = 128;

// A card as the kernel's direct rendering manager knows it.
struct Screen {
  std::string card;  // "card0"
  std::string slot;  // on the PCI bus; empty for one that lies elsewhere
};

std::string behindLastSlash(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// "card0" and on in the order of their numbers.
std::vector<std::string> cardsOfScreens(const FileTree& files) {
  constexpr std::string_view kStart = "card";
  std::vector<std::pair<std::uint64_t, std::string>> numbered;
  for (const std::string& name : files.names(kScreens)) {
    if (!name.starts_with(kStart)) {
      continue;
    }
    if (const auto number = wholeNumber(std::string_view(name).substr(kStart.size()))) {
      numbered.emplace_back(*number, name);
    }
  }
  std::sort(numbered.begin(), numbered.end());
  std::vector<std::string> cards;
  cards.reserve(numbered.size());
  for (auto& [number, name] : numbered) {
    cards.push_back(std::move(name));
  }
  return cards;
}

// The place on the PCI bus of a device, or of the one that it is a part of, as a virtual card
// is. Empty for one that lies elsewhere.
std::string slotOf(const FileTree& files, const std::string& device) {
  for (const char* file : {"/uevent", "/../uevent"}) {
    std::string slot = eventValue(files.text(device + file), "PCI_SLOT_NAME");
    if (!slot.empty()) {
      return slot;
    }
  }
  return {};
}

std::vector<MonitorFacts> monitorsOf(const FileTree& files, const std::string& card) {
  std::vector<MonitorFacts> monitors;
  const std::string start = card + "-";
  for (const std::string& name : files.names(kScreens)) {
    if (name.starts_with(start) && files.line(kScreens + name + "/status") == "connected") {
      monitors.push_back(
          {printable(name.substr(start.size())),
           readEdid(files.read(kScreens + name + "/edid", kEdidBlock).value_or(""))});
    }
  }
  return monitors;
}

// The number at the start of a text; 0 when there is none.
std::uint32_t numberAt(std::string_view text) {
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
  const std::uint64_t number = wholeNumber(digits).value_or(0);
  return number <= UINT32_MAX ? static_cast<std::uint32_t>(number) : 0;
}

// Takes the size out of a text such as "1024x768p-75". False when it tells none.
bool takeSize(DisplayMode& shown, std::string_view text, char between) {
  const std::size_t middle = text.find(between);
  if (middle == std::string_view::npos) {
    return false;
  }
  shown.width = numberAt(text.substr(0, middle));
  shown.height = numberAt(text.substr(middle + 1));
  return shown.width != 0 && shown.height != 0;
}

// What the frame buffer holds: by the size of what is seen, "U:1024x768p-75", where it is told,
// else by all that there is, "1024,768". The rate in the first is none of what is truly shown.
DisplayMode frameBuffer(const FileTree& files) {
  const std::string mode = files.line(kFrameBuffer + "mode");
  DisplayMode shown;
  if (!takeSize(shown, std::string_view(mode).substr(mode.find(':') + 1), 'x') &&
      !takeSize(shown, files.line(kFrameBuffer + "virtual_size"), ',')) {
    return {};
  }
  shown.depth = numberAt(files.line(kFrameBuffer + "bits_per_pixel"));
  return shown;
}

// Puts the cards of a machine together.
class Cards {
 public:
  Cards(const FileTree& files, const Machine& machine)
      : files_(files), machine_(machine), names_(files) {
    for (const std::string& card : cardsOfScreens(files)) {
      screens_.push_back({card, slotOf(files, kScreens + card + "/device")});
    }
  }

  std::vector<GraphicsCard> all() {
    std::vector<GraphicsCard> cards;
    devices_ = pciDevices(files_);
    std::erase_if(devices_, [](const PciDevice& device) { return device.kind() != kDisplay; });
    for (const PciDevice& device : devices_) {
      cards.push_back(cardAt(device));
    }
    for (const Screen& screen : screens_) {
      if (std::none_of(devices_.begin(), devices_.end(),
                       [&](const PciDevice& device) { return device.address == screen.slot; })) {
        GraphicsCard card = cardBeside(screen);
        // Without a device, as in a container, it is no more than a folder's name.
        if (!files_.linkTarget(kScreens + screen.card + "/device").empty()) {
          cards.push_back(std::move(card));
        }
      }
    }
    if (cards.empty() && !files_.line(kFrameBuffer + "name").empty()) {
      cards.push_back({printable(files_.line(kFrameBuffer + "name")), "", frameBuffer(files_), {}});
    }
    return cards;
  }

 private:
  GraphicsCard cardAt(const PciDevice& device) {
    const std::string& slot = device.address;
    GraphicsCard card = named(kPciDevices + slot, device.modalias, device.driver);
    if (std::string model = modelByDriver(slot); !model.empty()) {
      card.chip = std::move(model);
    }
    bool hasScreen = false;
    bool mayShow = false;
    for (const Screen& screen : screens_) {
      if (screen.slot == slot) {
        hasScreen = true;
        mayShow = addScreen(card, screen.card) || mayShow;
      }
    }
    if (hasScreen ? mayShow && ownsFrameBuffer(slot)
                  : ownsFrameBuffer(slot) || (devices_.size() == 1 && screens_.empty())) {
      addFrameBuffer(card);
    }
    return card;
  }

  GraphicsCard cardBeside(const Screen& screen) {
    const std::string device = kScreens + screen.card + "/device";
    GraphicsCard card = named(device, files_.line(device + "/modalias"), driverIn(files_, device));
    if (addScreen(card, screen.card) && ownsFrameBuffer(slotOrName(device))) {
      addFrameBuffer(card);
    }
    return card;
  }

  // By the hardware database, else by its driver. `device` is its folder.
  GraphicsCard named(const std::string& device, const std::string& modalias,
                     const std::string& driver) {
    GraphicsCard card;
    card.name = names_.pciNameOf(modalias);
    if (card.name.empty()) {
      card.name = printable(driver);
    }
    // The database tells the cards that a chip is sold on in brackets behind its name.
    const std::string model = names_.modelAloneOf(modalias);
    card.chip = printable(std::string_view(model).substr(0, model.find(" [")));
    if (card.chip.empty()) {
      card.chip = printable(eventValue(files_.text(device + "/uevent"), "OF_COMPATIBLE_0"));
    }
    return card;
  }

  // The drivers of NVIDIA and, for some cards, of AMD tell what is on the card.
  std::string modelByDriver(const std::string& slot) const {
    constexpr std::string_view kModel = "Model:";
    const std::string facts = files_.text("/proc/driver/nvidia/gpus/" + slot + "/information");
    LineReader lines(facts);
    for (std::string_view line; lines.next(line);) {
      if (line.starts_with(kModel)) {
        return printable(line.substr(kModel.size()));
      }
    }
    return printable(files_.line(kPciDevices + slot + "/product_name"));
  }

  // Adds what is connected and shown. False when nothing can be shown, as nothing is connected
  // or the card sleeps.
  bool addScreen(GraphicsCard& card, const std::string& screen) const {
    const std::vector<MonitorFacts> monitors = monitorsOf(files_, screen);
    card.monitors.insert(card.monitors.end(), monitors.begin(), monitors.end());
    if (files_.line(kScreens + screen + "/device/power/runtime_status") == "suspended") {
      return false;
    }
    if (card.shown.width == 0) {
      const std::vector<DisplayMode> modes = machine_.displayModes(screen);
      card.shown = modes.empty() ? DisplayMode() : modes.front();
    }
    return !monitors.empty();
  }

  void addFrameBuffer(GraphicsCard& card) const {
    if (card.shown.width == 0) {
      card.shown = frameBuffer(files_);
    }
  }

  // By the device that the frame buffer leads to; one of the firmware leads to none.
  bool ownsFrameBuffer(const std::string& device) const {
    const std::string owner = slotOrName(kFrameBuffer + "device");
    return !owner.empty() && owner == device;
  }

  std::string slotOrName(const std::string& device) const {
    std::string slot = slotOf(files_, device);
    return slot.empty() ? behindLastSlash(files_.linkTarget(device)) : slot;
  }

  const FileTree& files_;
  const Machine& machine_;
  DeviceNames names_;
  std::vector<Screen> screens_;
  std::vector<PciDevice> devices_;  // the cards on the PCI bus
};

}  // namespace

std::vector<GraphicsCard> graphicsCards(const FileTree& files, const Machine& machine) {
  return Cards(files, machine).all();
}

std::vector<MonitorFacts> connectedMonitors(const FileTree& files) {
  std::vector<MonitorFacts> monitors;
  for (const std::string& card : cardsOfScreens(files)) {
    for (MonitorFacts& monitor : monitorsOf(files, card)) {
      monitors.push_back(std::move(monitor));
    }
  }
  return monitors;
}

}  // namespace veltrin

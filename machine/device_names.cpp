// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/device_names.h"

#include "machine/device_folder.h"
#include "machine/fact_text.h"

namespace veltrin {
namespace {

constexpr const char* kMaker = "ID_VENDOR_FROM_DATABASE";
constexpr const char* kModel = "ID_MODEL_FROM_DATABASE";

}  // namespace

std::string DeviceNames::pciNameOf(const std::string& modalias) {
  if (std::string name = modelOf(modalias); !name.empty()) {
    return name;
  }
  std::string purpose = property(modalias, "ID_PCI_SUBCLASS_FROM_DATABASE");
  if (purpose.empty()) {
    purpose = property(modalias, "ID_PCI_CLASS_FROM_DATABASE");
  }
  return purpose.empty() ? "" : joinedWords(makerOf(modalias), purpose);
}

std::string DeviceNames::nameOf(const UsbDevice& device) {
  const std::string modalias = modaliasOf(device, purposeOf(device));
  if (std::string name = modelOf(modalias); !name.empty()) {
    return name;
  }
  if (std::string name = wholeName(textsOf(files_, device)); !name.empty()) {
    return name;
  }
  const std::string purpose = property(modalias, "ID_USB_CLASS_FROM_DATABASE");
  return purpose.empty() ? "" : joinedWords(makerOf(modalias), purpose);
}

std::string DeviceNames::modelOf(const std::string& modalias) {
  const std::string model = modelAloneOf(modalias);
  return model.empty() ? "" : joinedWords(makerOf(modalias), model);
}

std::string DeviceNames::makerOf(const std::string& modalias) { return property(modalias, kMaker); }

std::string DeviceNames::modelAloneOf(const std::string& modalias) {
  return property(modalias, kModel);
}

// The list of scanners that the library of scanning brings into the database.
bool DeviceNames::isScanner(const UsbDevice& device) {
  return property(modaliasOf(device, purposeOf(device)), "libsane_matched") == "yes";
}

const DeviceNames::Properties& DeviceNames::propertiesOf(const std::string& modalias) {
  const auto [place, first] = known_.try_emplace(modalias);
  if (first) {
    place->second = database_.properties(modalias);
  }
  return place->second;
}

std::string DeviceNames::property(const std::string& modalias, const char* name) {
  const Properties& known = propertiesOf(modalias);
  const auto found = known.find(name);
  return found == known.end() ? std::string() : printable(found->second);
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/firmware.h"

#include <string_view>

#include "machine/fact_text.h"
#include "machine/smbios.h"

namespace veltrin {
namespace {

// Documentation/ABI/testing/sysfs-firmware-devicetree and drivers/firmware/dmi-id.c of the kernel.
constexpr const char* kTexts = "/sys/class/dmi/id/";
constexpr const char* kDeviceTree = "/sys/firmware/devicetree/base/";

SmbiosTexts textsOf(const FileTree& files) {
  const auto text = [&](const char* name) {
    return printable(files.text(kTexts + std::string(name)));
  };
  const SmbiosTexts texts{text("bios_vendor"), text("bios_version"), text("bios_date"),
                          text("sys_vendor"), text("product_name")};
  return texts == SmbiosTexts() ? smbiosTexts(SmbiosTable(files)) : texts;
}

std::string withoutZero(std::string_view number) {
  return std::string(number.substr(number.size() == 2 && number[0] == '0' ? 1 : 0));
}

// "08/10/2025" as "8/10/2025"; any other text as it is.
std::string dateOf(const std::string& text) {
  const std::size_t first = text.find('/');
  const std::size_t second = first == std::string::npos ? first : text.find('/', first + 1);
  if (second == std::string::npos) {
    return text;
  }
  return withoutZero(std::string_view(text).substr(0, first)) + "/" +
         withoutZero(std::string_view(text).substr(first + 1, second - first - 1)) +
         text.substr(second);
}

std::string joined(const std::string& left, const std::string& between, const std::string& right) {
  return left.empty() || right.empty() ? left + right : left + between + right;
}

// A list of texts with a zero byte behind each: the first one.
std::string firstText(const std::string& texts) {
  return printable(std::string_view(texts).substr(0, texts.find('\0')));
}

// The part of "vendor,model" that names the vendor.
std::string vendorIn(const std::string& compatible) {
  const std::size_t comma = compatible.find(',');
  return comma == std::string::npos ? std::string() : compatible.substr(0, comma);
}

}  // namespace

FirmwareFacts firmwareFacts(const FileTree& files) {
  const SmbiosTexts texts = textsOf(files);
  FirmwareFacts facts;
  facts.manufacturer = texts.manufacturer;
  facts.model = texts.product;
  facts.bios =
      joined(joined(texts.biosVendor, " ", texts.biosVersion), ", ", dateOf(texts.biosDate));
  if (facts.manufacturer.empty() && facts.model.empty()) {
    facts.model = firstText(files.text(std::string(kDeviceTree) + "model"));
    facts.manufacturer = vendorIn(firstText(files.text(std::string(kDeviceTree) + "compatible")));
  }
  return facts;
}

}  // namespace veltrin

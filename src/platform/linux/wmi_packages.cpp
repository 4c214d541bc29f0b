// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/packages.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// Win32_Product, by the package manager's list of what is installed.
WmiObject productOf(const PackageFacts& package) {
  WmiObject product;
  product.properties["Name"] = package.name;
  product.properties["Version"] = orNull(package.version);
  return product;
}

}  // namespace

std::unique_ptr<WmiObjects> win32Product(const WmiSources& sources) {
  return std::make_unique<FactObjects<PackageFacts>>(installedPackages(sources.files), productOf);
}

}  // namespace veltrin

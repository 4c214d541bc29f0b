// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/fact_text.h"
#include "machine/modules.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

// StartMode of Win32_SystemDriver: what the loader of the system starts, what the system starts
// by itself as it comes up, and what it starts when somebody asks for it.
const char* startMode(ModuleStart start) {
  switch (start) {
    case ModuleStart::WithKernel:
      return "Boot";
    case ModuleStart::AtStart:
      return "Auto";
    default:
      return "Manual";
  }
}

// A driver without a name for people goes by its own.
WmiObject driverOf(const ModuleFacts& module) {
  WmiObject driver;
  driver.properties["Caption"] = module.description.empty() ? module.name : module.description;
  driver.properties["Name"] = module.name;
  driver.properties["PathName"] = orNull(printable(module.path));
  driver.properties["StartMode"] = startMode(module.start);
  return driver;
}

}  // namespace

WmiAnswer win32SystemDriver(const WmiSources& sources) {
  WmiAnswer answer;
  for (const ModuleFacts& module : kernelModules(sources.files, *sources.machine)) {
    answer.push_back(driverOf(module));
  }
  return answer;
}

}  // namespace veltrin

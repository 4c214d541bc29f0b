#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32LogicalDisk(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32DiskDrive(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

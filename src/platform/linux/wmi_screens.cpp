#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32VideoController(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32DesktopMonitor(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32ComputerSystem(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32StartupCommand(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Keyboard(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32PointingDevice(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

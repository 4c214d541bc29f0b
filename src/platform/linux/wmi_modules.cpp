#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32SystemDriver(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

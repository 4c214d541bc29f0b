#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Desktop(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

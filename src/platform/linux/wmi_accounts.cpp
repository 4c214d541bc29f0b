#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Account(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

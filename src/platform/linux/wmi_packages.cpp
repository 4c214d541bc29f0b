#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Product(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Printer(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32IdeController(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32FloppyController(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

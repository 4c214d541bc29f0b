#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32Processor(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32CacheMemory(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32BaseBoard(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32SystemSlot(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

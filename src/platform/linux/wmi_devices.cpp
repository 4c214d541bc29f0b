#include "platform/linux/wmi_classes.h"

namespace veltrin {

WmiAnswer win32SoundDevice(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32UsbHub(const WmiSources& /*sources*/) { return {}; }

WmiAnswer win32PnpSignedDriver(const WmiSources& /*sources*/) { return {}; }

}  // namespace veltrin

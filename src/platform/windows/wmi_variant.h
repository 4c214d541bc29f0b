// Values as the service of WMI hands them over.
#pragma once

// The second stands on the first.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include "platform/wmi.h"

namespace veltrin {

// Null for what is no single value of its own: an object within an object, a table of more
// than one dimension. A number of 32 bits has a sign, as the service gives even those that are
// declared without.
WmiValue wmiValueOf(const VARIANT& variant);

}  // namespace veltrin

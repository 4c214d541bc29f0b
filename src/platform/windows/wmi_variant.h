// SPDX-License-Identifier: GPL-3.0-or-later
// Values as the service of WMI hands them over.
#pragma once

// The second stands on the first.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include "platform/wmi.h"

namespace veltrin {

// A flag, number or text, or a table of such of one dimension. All else is null: an object within
// an object, a table of more dimensions, and the types that the service never uses (dates, which
// it gives as texts, currencies, decimals, references to a value elsewhere). A number of 32 bits
// has a sign, as the service gives even those that are declared without.
WmiValue wmiValueOf(const VARIANT& variant);

}  // namespace veltrin

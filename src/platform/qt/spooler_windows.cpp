// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/spooler.h"

namespace veltrin {

// A driver may ask the user for the name of a file before it takes the job.
const std::chrono::milliseconds kSpoolerTime{10 * 60 * 1000};

// Windows refuses a job when it begins or begins a sheet, which Qt tells.
std::string spoolerRefusal() { return {}; }

}  // namespace veltrin

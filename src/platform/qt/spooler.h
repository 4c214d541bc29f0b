// SPDX-License-Identifier: GPL-3.0-or-later
// What Qt does not tell of the system's spooler.
#pragma once

#include <chrono>
#include <string>

namespace veltrin {

// How long the spooler may take to accept a job.
extern const std::chrono::milliseconds kSpoolerTime;

// Why the spooler refused the job that this thread handed over last; empty when it took it.
std::string spoolerRefusal();

}  // namespace veltrin

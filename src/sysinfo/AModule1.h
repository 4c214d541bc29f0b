// SPDX-License-Identifier: GPL-3.0-or-later
// What the routines about single drives share.
#pragma once

#include <cstdint>
#include <string>

#include "frame/program.h"

namespace veltrin {

struct DriveValues {
  // Bytes of the drive that was last asked for its room; 0 when it told nothing.
  std::uint64_t FreeBytes = 0;
  std::uint64_t TotalBytes = 0;

  // The same of the drive that was last looked into, as short texts: "62 GB".
  std::string FreeText;
  std::string TotalText;

  std::string DriveLetter;  // of the drive that is to be written on, without a colon
};

// Asks a drive by its root ("C:") for its room and keeps what it tells.
void FreeSpace(Program& program, const std::string& Root);

}  // namespace veltrin

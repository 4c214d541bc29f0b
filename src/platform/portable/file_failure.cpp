// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/file_failure.h"

#include "text/statement.h"

namespace veltrin {
namespace {

// Number of a failure of files, as users of Basic know it.
constexpr int kDeviceError = 57;

}  // namespace

void failFile(std::error_code error) {
  if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
    throw StatementFailed("Path not found", kPathNotFound);
  }
  if (error == std::errc::no_space_on_device || error == std::errc::file_too_large) {
    throw StatementFailed("Disk full", kDiskFull);
  }
  if (error == std::errc::permission_denied || error == std::errc::is_a_directory ||
      error == std::errc::operation_not_permitted || error == std::errc::read_only_file_system) {
    throw StatementFailed("Permission denied", kPermissionDenied);
  }
  if (error == std::errc::filename_too_long || error == std::errc::invalid_argument) {
    throw StatementFailed("Bad file name or number", kBadFileName);
  }
  throw StatementFailed("Device I/O error", kDeviceError);
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/portable/regular_file.h"

#include <filesystem>
#include <system_error>

#include "platform/portable/atomic_file.h"
#include "platform/portable/file_failure.h"
#ifdef _WIN32
#include "platform/windows/code_page.h"
#endif

namespace veltrin {
namespace {

std::filesystem::path nativePath(const std::string& path) {
#ifdef _WIN32
  return toWide(path);
#else
  return path;
#endif
}

}  // namespace

std::string readRegularFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::path file = nativePath(path);
  const bool isRegular = std::filesystem::is_regular_file(file, error);
  if (error) failFile(error);
  if (!isRegular) failFile(std::make_error_code(std::errc::permission_denied));
  if (std::filesystem::file_size(file, error) > kLargestRead) {
    failFile(std::make_error_code(std::errc::file_too_large));
  }
  std::string content;
  error = readWholeFile(path, content);
  if (error) failFile(error);
  return content;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Profile files through the calls of Windows.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/profile_store.h"

namespace veltrin {

// GetPrivateProfileStringA and WritePrivateProfileStringA, with texts and paths in
// UTF-8 on this side and in the ANSI code page on the system's. `size` counts bytes
// of the code page, in which most systems' characters have one; what is cut ends in a
// whole character. A path without a folder means the Windows folder, as ever.
class WindowsProfileStore : public ProfileStore {
 public:
  // Tells where a file is to be read that the program names by a path of its own.
  using NativePath = std::function<std::string(const std::string&)>;

  // Tells whether a file may be written; what may not is left as it is.
  using MayWrite = std::function<bool(const std::string&)>;

  explicit WindowsProfileStore(
      NativePath nativePath = [](const std::string& path) { return path; },
      MayWrite mayWrite = [](const std::string&) { return true; })
      : nativePath_(std::move(nativePath)), mayWrite_(std::move(mayWrite)) {}

  std::string read(const std::optional<std::string>& section, const std::optional<std::string>& key,
                   const std::string& fallback, std::size_t size, const std::string& path) override;

  bool write(const std::string& section, const std::optional<std::string>& key,
             const std::optional<std::string>& value, const std::string& path) override;

 private:
  NativePath nativePath_;
  MayWrite mayWrite_;
};

}  // namespace veltrin

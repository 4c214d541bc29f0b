// SPDX-License-Identifier: GPL-3.0-or-later
// The program's files on Windows.
#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace veltrin {

// Keeps files in the program folder, in the system's ANSI code page. Paths of the
// program are those of the system.
class WindowsFiles : public Files {
 public:
  // The folder of the running executable, without a separator at the end.
  static std::string executableFolder();

  explicit WindowsFiles(std::string programFolder = executableFolder());

  std::string programFolder() const override;
  std::string native(const std::string& path) const override;

  // GetFileAttributesA. A path with a NUL is not there.
  bool exists(const std::string& path) const override;

  void CreateFolder(const std::string& path) override;
  std::unique_ptr<TextStream> OpenTextFile(const std::string& folder, const std::string& name,
                                           FileMode mode, bool create) override;
  std::unique_ptr<TextStream> openOutput(const std::string& path) override;
  std::string readText(const std::string& path) const override;
  std::unique_ptr<ByteStream> openBinary(const std::string& path) override;
  void Kill(const std::string& path) override;

 private:
  std::string programFolder_;
};

}  // namespace veltrin

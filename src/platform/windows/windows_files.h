// SPDX-License-Identifier: GPL-3.0-or-later
// The program's files on Windows.
#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace veltrin {

// Keeps files in the program folder, in the system's ANSI code page. Paths of the
// program are those of the system.
//
// An installation for all users lies where only administrators may write: whoever could
// put a file beside the program could let everybody else run it, as the system looks there
// first for libraries and for tools that it lacks. There the program folder is one of the
// user's own, and what is only in the installation is read from there.
class WindowsFiles : public Files {
 public:
  // Without a separator at the end.
  struct Folders {
    std::string data;   // the program folder
    std::string share;  // the installation, only read; empty where it is the program folder
  };

  // The file beside the program that marks an installation for all users.
  static constexpr const char* kForAllUsers = "\\for-all-users.txt";

  // The folder of the running executable, without a separator at the end.
  static std::string executableFolder();

  // The folders of an installation: its own folder alone, or, with the mark in it, a folder
  // "Veltrin" below `userData` as well, which is made with the folder "Files" in it. Without
  // `userData` there is no such folder.
  static Folders foldersOf(const std::string& installation, const std::string& userData);

  // Of the running program, with the user's local application data.
  WindowsFiles();
  explicit WindowsFiles(Folders folders);
  explicit WindowsFiles(std::string programFolder);

  std::string programFolder() const override;
  std::string native(const std::string& path) const override;

  // Whether a file may be written, replaced or made: in the program folder not through a
  // link, or below a junction, that leads out of it.
  bool mayWrite(const std::string& path) const;

  // GetFileAttributesA, in the program folder and then in the installation. A path with a NUL is
  // not there.
  bool exists(const std::string& path) const override;

  void CreateFolder(const std::string& path) override;
  std::unique_ptr<TextStream> OpenTextFile(const std::string& folder, const std::string& name,
                                           FileMode mode, bool create) override;
  std::unique_ptr<TextStream> openOutput(const std::string& path) override;
  std::string readText(const std::string& path) const override;
  std::unique_ptr<ByteStream> openBinary(const std::string& path) override;
  void Kill(const std::string& path) override;

 private:
  bool isOwn(const std::string& path) const;

  // Throws StatementFailed, "Permission denied", where a path may not be written.
  void requireMayWrite(const std::string& path) const;

  Folders folders_;
};

}  // namespace veltrin

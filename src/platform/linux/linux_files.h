// SPDX-License-Identifier: GPL-3.0-or-later
// The program's files on Linux.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace veltrin {

// Keeps the program folder in the user's data folder, and looks for what is not
// there in the installation's read-only share. As on Windows, the case of a path
// below these folders does not matter: a name that is not there as it is written
// means the one that differs in ASCII case only.
class LinuxFiles : public Files {
 public:
  // Native paths of the program folder and of the installation's share.
  struct Folders {
    std::string data;
    std::string share;
  };

  // The folders of this user and this installation. The program folder is
  // veltrin below $XDG_DATA_HOME, or below ~/.local/share where that is not set
  // or not absolute (the XDG base directories); it and its subfolder
  // Files are made when they are missing, for the user alone. The share is
  // ../share/veltrin, seen from the folder of the executable.
  static Folders defaultFolders();

  explicit LinuxFiles(Folders folders);

  std::string programFolder() const override;
  std::string native(const std::string& path) const override;

  // The file that a path of the program folder is written to. Empty when it would lie
  // elsewhere, as a link leads out of that folder: nothing is written there. A path
  // elsewhere is whoever's that named it, links and all.
  std::string pathToWrite(const std::string& path) const;

  // A path outside the program folder is the system's own, taken letter by letter.
  bool exists(const std::string& path) const override;

  void CreateFolder(const std::string& path) override;
  std::unique_ptr<TextStream> OpenTextFile(const std::string& folder, const std::string& name,
                                           FileMode mode, bool create) override;
  std::unique_ptr<TextStream> openOutput(const std::string& path) override;
  std::string readText(const std::string& path) const override;
  std::unique_ptr<ByteStream> openBinary(const std::string& path) override;
  void Kill(const std::string& path) override;

 private:
  // Whether a program path is the program folder or below it.
  bool isOwn(std::string_view path) const;

  // A program path's file below the program folder, whether it exists or not. A
  // path elsewhere only gets slashes.
  std::string own(std::string_view path) const;

  // As pathToWrite; throws StatementFailed, "Permission denied", instead.
  std::string requirePathToWrite(const std::string& path) const;

  Folders folders_;
};

}  // namespace veltrin

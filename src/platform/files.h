// SPDX-License-Identifier: GPL-3.0-or-later
// Files that the program writes and reads, by the program's own paths.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace veltrin {

// A file open for writing. Each call throws StatementFailed when the system
// refuses it. Destroying an unclosed stream closes it and drops what failed.
class TextStream {
 public:
  virtual ~TextStream() = default;
  virtual void Write(const std::string& text) = 0;
  virtual void Close() = 0;
};

// A file open for writing bytes over what it holds. Each call throws StatementFailed when
// the system refuses it. Destroying an unclosed stream closes it.
class ByteStream {
 public:
  virtual ~ByteStream() = default;

  // Puts bytes behind those that were put before; the first at the file's beginning.
  virtual void Put(std::string_view bytes) = 0;
  virtual void Close() = 0;
};

// Modes of OpenTextFile, by the numbers of Scripting.FileSystemObject.
enum class FileMode { Reading = 1, Writing = 2, Appending = 8 };

// Paths are the program folder followed by a literal, with backslashes.
class Files {
 public:
  virtual ~Files() = default;

  // The program folder: the executable's on Windows, the user's data folder on
  // Linux. Without a separator at the end.
  virtual std::string programFolder() const = 0;

  // The system's own form of one of the program's paths, for people to read and
  // for other programs. A path whose file stands only in the installation's
  // read-only share gives that file.
  virtual std::string native(const std::string& path) const = 0;

  // Whether a file or a folder is there, by one of the program's paths or the
  // system's own.
  virtual bool exists(const std::string& path) const = 0;

  // Makes one folder. Throws StatementFailed when it exists already or cannot be
  // made.
  virtual void CreateFolder(const std::string& path) = 0;

  // OpenTextFile of the file system object for writing, replacing older content
  // when the stream is closed, made when missing if `create`. `name` is one file
  // name and starts with the separator ("\PingTest.txt"). Throws StatementFailed
  // when the system refuses it, and on every system for a name that Windows
  // refuses (\ / : * ? " < > | and control characters, the device names, or a
  // path of more than 259 characters).
  virtual std::unique_ptr<TextStream> OpenTextFile(const std::string& folder,
                                                   const std::string& name, FileMode mode,
                                                   bool create) = 0;

  // Opens a file for writing text (Open For Output), made when missing. Its new content
  // replaces the older one when the stream is closed: the text as the system writes it, in
  // its code page on Windows and in UTF-8 on Linux. Throws StatementFailed when the system
  // refuses it.
  virtual std::unique_ptr<TextStream> openOutput(const std::string& path) = 0;

  // All of a text file that was written that way. Throws StatementFailed when it cannot be
  // read, and for a file of more than 256 MB.
  virtual std::string readText(const std::string& path) const = 0;

  // Opens a file for writing bytes in its place (Open For Binary), made when missing. It is
  // not cut: what a longer, older file holds behind the new bytes stays. Throws
  // StatementFailed when the system refuses it.
  virtual std::unique_ptr<ByteStream> openBinary(const std::string& path) = 0;

  // Deletes one file. Throws StatementFailed (kFileNotFound) when there is none, and when
  // the system refuses it. A file of the installation's share is none.
  virtual void Kill(const std::string& path) = 0;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Child processes whose output comes through an anonymous pipe.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace veltrin {

// Bytes of one read of a console tool's output.
inline constexpr std::size_t kReadGrain = 256;

// The operations of the operating system that the console runner is made of.
class Processes {
 public:
  using Handle = std::intptr_t;
  static constexpr Handle kNoHandle = -1;

  // What CreateProcess tells of a started child.
  struct ProcessInformation {
    Handle process = kNoHandle;
    Handle thread = kNoHandle;
  };

  virtual ~Processes() = default;

  // CreatePipe: both ends of a new pipe; only a child's output inherits the
  // write end. False when the system has none to give.
  virtual bool CreatePipe(Handle& readEnd, Handle& writeEnd) = 0;

  // CreateProcess: starts the program that the command line names, hidden, with
  // standard output and standard error on the write end and no standard input.
  // The command line is one text, split by the Windows quoting rules. Returns 1
  // on success.
  virtual int CreateProcess(const std::string& commandLine, Handle writeEnd,
                            ProcessInformation& started) = 0;

  // ReadFile: waits until the pipe holds something and takes up to 256 bytes of
  // it. `count` is the bytes taken. False at the end of the pipe and on an error.
  // No event routine runs while it waits.
  virtual bool ReadFile(Handle readEnd, std::array<char, kReadGrain>& buffer,
                        std::size_t& count) = 0;

  // Turns bytes in the system's ANSI code page into text.
  virtual void fromCodePage(std::string& bytes) const { static_cast<void>(bytes); }

  // CloseHandle for any of the handles above. A closed process is not ended.
  virtual void CloseHandle(Handle handle) = 0;
};

}  // namespace veltrin

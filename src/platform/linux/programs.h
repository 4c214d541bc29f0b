// SPDX-License-Identifier: GPL-3.0-or-later
// Programs on the disk, and the start of one.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace veltrin {

// Whether a path is that of a file that this user may execute. A folder is none.
bool isExecutable(const std::string& path);

// The path of the first executable file `name` in the folders of PATH; empty when there
// is none. Only folders from the root on count, so never the current one.
std::string findInPath(const std::string& name);

// What a program is started with.
struct Start {
  std::string path;
  std::vector<std::string> arguments;  // the first is the program's name for itself
  std::string folder;                  // it works in; empty for the starter's own
  int output = -1;                     // its standard output and error; none: /dev/null
  bool ownSession = false;             // it lives on when the starter's terminal closes
  int longest = -1;                    // ms until it is ended by force; -1: never
};

// What has become of a start: the number of the process, or the system's error number.
struct Started {
  pid_t process = 0;
  int error = 0;
};

// Starts a program that nobody has to wait for. It has three descriptors, of which the
// input is /dev/null; its signals are as in a fresh login.
//
// A thread of the child's own starts it, then sleeps in waitpid for this one process
// number and ends with it: so a child is reaped at once, without polling, without a
// SIGCHLD handler, and without taking the exit of any process that another part of the
// program waits for.
Started startProgram(Start what);

}  // namespace veltrin

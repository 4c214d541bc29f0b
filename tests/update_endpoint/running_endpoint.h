// SPDX-License-Identifier: GPL-3.0-or-later
// The built update_endpoint, run by a test.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "caller.h"
#include "tools/update_endpoint/descriptor.h"

namespace veltrin::endpoint {

// What surrounds the program besides its arguments.
struct Surroundings {
  std::vector<std::pair<std::string, std::string>> variables;
  std::vector<int> handedOver;  // descriptors of the test, from 3 on in the program
  // Whose process the descriptors are said to be for: its own, or one that it is not.
  bool forAnother = false;
  bool unread = false;  // nobody reads its output
  int descriptors = 0;  // the most it may open; 0 for as many as the test may
  // As many as it may open before it asks for more; 0 for the same as above.
  int descriptorsAtFirst = 0;
};

// Started in the constructor, killed in the destructor if it still runs.
class RunningEndpoint {
 public:
  explicit RunningEndpoint(const std::vector<std::string>& arguments,
                           const Surroundings& surroundings = {});
  ~RunningEndpoint();
  RunningEndpoint(const RunningEndpoint&) = delete;
  RunningEndpoint& operator=(const RunningEndpoint&) = delete;

  // Where it listens, in the order in which it says so. Waits for `count` lines; fewer
  // come back when it ends before.
  std::vector<Place> places(std::size_t count);

  // The same for the first.
  Place place();

  pid_t process() const { return process_; }

  // The descriptors it has open now.
  std::size_t openDescriptors() const;

  // The number that the next one would have.
  std::size_t lowestFreeDescriptor() const;

  // Waits until so many callers stand at it, which it has a descriptor open for each.
  // The test fails when that does not come about within a minute.
  void waitForCallers(std::size_t count) const;

  // Processor time that it takes while so much time passes. What a process does that
  // turns round for nothing can be seen in real time only.
  std::chrono::nanoseconds processorTimeOver(std::chrono::milliseconds time) const;

  // Stops it in its tracks, and lets it go on.
  void freeze() const;
  void thaw() const;

  void send(int signal) const;

  // Waits for the end; the exit code, -1 when a signal ended it.
  int exitCode();

  // The next line that it writes, without its break; empty at the end.
  std::string line();

  // What it wrote that was not read yet, until its end.
  std::string restOfOutput();
  std::string errors();

 private:
  std::chrono::nanoseconds processorTime() const;

  pid_t process_ = 0;
  Descriptor output_;
  Descriptor errors_;
  std::size_t descriptorsAtRest_ = 0;  // what it has open without a caller
};

// The arguments of an endpoint on any free port of the IPv4 loopback address, and more
// in front of the version 1.03.
std::vector<std::string> onLoopback(std::vector<std::string> more = {});

// Lets this process have so many descriptors open. False when the machine forbids it.
bool raiseDescriptorLimit(std::size_t count);

}  // namespace veltrin::endpoint

// SPDX-License-Identifier: GPL-3.0-or-later
// update_endpoint: tells callers the newest version and the address they are seen under.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <sys/resource.h>
#include <utility>
#include <vector>

#include "tools/update_endpoint/descriptor.h"
#include "tools/update_endpoint/listeners.h"
#include "tools/update_endpoint/options.h"
#include "tools/update_endpoint/server.h"
#include "tools/update_endpoint/service_manager.h"
#include "tools/update_endpoint/signals.h"

namespace veltrin::endpoint {
namespace {

void complain(const std::string& sentence) {
  std::fprintf(stderr, "update_endpoint: %s\n", sentence.c_str());
}

int refuseCommandLine(const std::string& mistake) {
  complain(mistake);
  std::fputs("\"update_endpoint --help\" tells what it understands.\n", stderr);
  return kExitUsage;
}

// Lets this process open as many descriptors as its hard limit allows, and tells when
// that is fewer than the callers who may stand.
void raiseDescriptorLimit(const Limits& limits) {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur > limits.mostCallers) return;
  complain("Only " + std::to_string(limit.rlim_cur) + " descriptors may be open, so fewer than " +
           std::to_string(limits.mostCallers) + " callers can stand at once.");
}

void tell(const std::string& state) {
  if (!tellManager(state)) complain("The service manager cannot be told " + state + ".");
}

int serve(const Options& options, std::vector<Descriptor> handedOver) {
  Descriptor endSignals = collectEndSignals();
  raiseDescriptorLimit(options.limits);
  std::vector<Listener> listeners = handedOver.empty()
                                        ? openListeners(options.addresses, options.ports)
                                        : adoptListeners(std::move(handedOver));
  std::string places;
  for (const Listener& listener : listeners) places += nameOf(listener) + "\n";
  Server server(options.version, options.limits, std::move(listeners), std::move(endSignals));
  std::fputs(places.c_str(), stdout);
  std::fflush(stdout);
  tell("READY=1");
  server.run();
  tell("STOPPING=1");
  return kExitDone;
}

int obey(const std::vector<std::string>& arguments) {
  const Options options = readOptions(arguments);
  if (!options.mistake.empty()) return refuseCommandLine(options.mistake);
  if (options.help) {
    std::fputs(usage().c_str(), stdout);
    return kExitDone;
  }
  std::vector<Descriptor> handedOver = takeHandedOver();
  if (!handedOver.empty() && options.choosesSockets) {
    return refuseCommandLine(
        "--ports and --listen cannot stand beside sockets that are handed over.");
  }
  return serve(options, std::move(handedOver));
}

int guardedMain(int count, char** words) {
  try {
    return obey({words + std::min(count, 1), words + count});
  } catch (const std::exception& error) {
    complain(std::string(error.what()) + ".");
    return kExitCannotServe;
  }
}

}  // namespace
}  // namespace veltrin::endpoint

int main(int count, char** words) { return veltrin::endpoint::guardedMain(count, words); }

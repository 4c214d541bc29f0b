// SPDX-License-Identifier: GPL-3.0-or-later
// lab: runs a command on a simulated Internet.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lab/command.h"
#include "lab/far_side.h"
#include "lab/interface.h"
#include "lab/internet.h"
#include "lab/library.h"
#include "lab/namespaces.h"
#include "lab/scenario.h"
#include "lab/simulation.h"
#include "lab/web_server.h"

namespace veltrin::lab {
namespace {

constexpr int kExitUsage = 2;
constexpr int kExitBadScenario = 1;

constexpr const char* kHelp =
    "\n"
    "Runs COMMAND on a simulated Internet. No packet leaves the lab.\n"
    "SCENARIO is a name that --list shows, or the path of a scenario file.\n"
    "\n"
    "  --check   say whether a scenario file is sound\n"
    "  --list    show the scenarios that come with the lab\n"
    "  --help    show this help\n"
    "\n"
    "The exit code is that of COMMAND, or\n"
    "  1     the scenario cannot be read\n"
    "  2     the command line is not understood\n"
    "  77    the lab cannot run on this machine; the reason is told\n"
    "  126   COMMAND cannot be started\n"
    "  127   COMMAND is not found\n"
    "  128+N COMMAND was ended by signal N\n";

// A package may have given the lab another name.
void printUsage(std::FILE* to) {
  const char* name = program_invocation_short_name;
  std::fprintf(to,
               "Usage: %s SCENARIO [--] COMMAND [ARGUMENTS...]\n"
               "       %s --check SCENARIO\n"
               "       %s --list\n"
               "       %s --help\n",
               name, name, name, name);
}

int refuseCommandLine() {
  printUsage(stderr);
  return kExitUsage;
}

int list() {
  for (const std::string& name : listScenarios(scenarioFolder())) {
    const Scenario scenario = loadScenario(findScenario(scenarioFolder(), name));
    std::printf("%-16s %s\n", name.c_str(), scenario.title.c_str());
  }
  return 0;
}

int check(const std::string& word) {
  const Scenario scenario = loadScenario(findScenario(scenarioFolder(), word));
  const auto routers = std::count_if(scenario.nodes.begin(), scenario.nodes.end(),
                                     [](const Node& node) { return node.router; });
  std::printf("%s: sound. Hosts: %td. Routers: %td.\n", word.c_str(),
              static_cast<std::ptrdiff_t>(scenario.nodes.size()) - routers, routers);
  return 0;
}

int run(const std::string& word, const std::vector<std::string>& command) {
  const Scenario scenario = loadScenario(findScenario(scenarioFolder(), word));
  enterNamespaces();
  installFiles(scenario, installationFile());
  FarSide farSide = makeFarSide(scenario);
  const Descriptor interface = makeInterface({scenario.machine, scenario.gateways, scenario.mtu});
  Internet internet(scenario);
  const WaitedSignals signals;
  const StartedCommand started = startCommand(command, signals);
  // Its thread begins behind the fork, which would not take it along.
  std::optional<WebServer> server;
  if (!farSide.doors.empty()) server.emplace(std::move(farSide.doors));
  return simulate(internet, {interface.get(), farSide.interface.get()}, signals, started.process);
}

int obey(std::vector<std::string> arguments) {
  if (arguments.empty()) return refuseCommandLine();
  const std::string first = arguments[0];
  if (first == "--help" && arguments.size() == 1) {
    printUsage(stdout);
    std::fputs(kHelp, stdout);
    return 0;
  }
  if (first == "--list" && arguments.size() == 1) return list();
  if (first == "--check" && arguments.size() == 2) return check(arguments[1]);
  if (first.starts_with('-')) return refuseCommandLine();
  arguments.erase(arguments.begin());
  if (!arguments.empty() && arguments[0] == "--") arguments.erase(arguments.begin());
  if (arguments.empty()) return refuseCommandLine();
  return run(first, arguments);
}

int guardedMain(int count, char** words) {
  try {
    return obey({words + std::min(count, 1), words + count});
  } catch (const ScenarioError& error) {
    std::fprintf(stderr, "lab: %s\n", error.what());
    return kExitBadScenario;
  } catch (const CannotRun& reason) {
    std::fprintf(stderr, "lab: cannot run here: %s\n", reason.what());
    return kExitCannotRun;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lab: %s\n", error.what());
    return kExitBadScenario;
  }
}

}  // namespace
}  // namespace veltrin::lab

int main(int count, char** words) { return veltrin::lab::guardedMain(count, words); }

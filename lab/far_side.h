// SPDX-License-Identifier: GPL-3.0-or-later
// The far side of the simulated Internet: the web hosts, whose sockets are real and stand
// in a network namespace of their own, so that what they say goes the whole way.
#pragma once

#include <vector>

#include "lab/descriptor.h"
#include "lab/scenario.h"
#include "lab/web_server.h"

namespace veltrin::lab {

struct FarSide {
  Descriptor interface;  // as makeInterface gives it; none when no host serves
  std::vector<WebDoor> doors;
};

// Makes the namespace with the addresses of all web hosts and opens their doors, which the
// kernel holds even before a server looks after them. This process stays in its own network
// namespace; the other one lives as long as what is given here. Throws CannotRun.
FarSide makeFarSide(const Scenario& scenario);

}  // namespace veltrin::lab

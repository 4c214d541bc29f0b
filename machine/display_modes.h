// SPDX-License-Identifier: GPL-3.0-or-later
// What the connectors of a graphics card show, as its driver in the kernel tells (drm(7)).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "machine/machine.h"

namespace veltrin {

// Puts a question to a driver, ioctl(2): a request with what goes with it, which takes the
// answer, too. Tests answer themselves. False when it is refused.
using DriverCall = std::function<bool(unsigned long request, void* about)>;

// What is shown at present, connector by connector in the card's order. The driver is not made
// to look whether monitors have come or gone, which takes long and makes them flicker.
std::vector<DisplayMode> readDisplayModes(const DriverCall& call);

// The same of the card behind a device file ("/dev/dri/card0"). Empty when this user may not
// ask it. Whoever draws on the screen goes on undisturbed.
std::vector<DisplayMode> displayModesOf(const std::string& device);

}  // namespace veltrin

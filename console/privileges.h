// SPDX-License-Identifier: GPL-3.0-or-later
// Gives up what a tool was granted only to open its sockets.
#pragma once

namespace veltrin {

// Returns to the user who started the program, and gives up every capability,
// the superuser's too, and the right to win one back by starting a program: a tool
// needs none once its sockets are open. False when the system refuses; the tool
// must not go on then.
bool dropPrivileges();

}  // namespace veltrin

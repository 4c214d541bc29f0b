// SPDX-License-Identifier: GPL-3.0-or-later
// The counters of the network interfaces: which interfaces there are, and how many bytes
// pass through each in a second.
#pragma once

#include <cstdint>
#include <string>

#include "frame/program.h"
#include "monitor/counter_values.h"

namespace veltrin {

// Finds the interfaces whose traffic counts: those whose names have five characters or more
// and begin neither with "local" nor with "isata", in any case. The names go into the empty
// places of their table; those that it holds from an earlier call stay. Without an answer
// of the counter service there is none.
void EnumNetworkInterfaces(Program& program);

// Adds the counters of all accepted interfaces to the program's query; lets events run.
// Counters of earlier calls stay in the query, and the tables forget them.
void AddNetworkCounters(Program& program);

// Samples and reads the counters of all accepted interfaces; lets events run.
void ReadNetworkCounters(Program& program);

// The names of an object's counters and instances on a machine, each ended by a NUL, one
// more NUL behind all. Returns the status of the service; with any but 0 both texts stay
// as they were.
std::int32_t GetObjectItems(Program& program, const std::string& machine, const std::string& object,
                            std::string& counters, std::string& instances);

}  // namespace veltrin

// The readings of the text that `ping` prints.
#pragma once

#include <optional>
#include <string>

#include "text/loose.h"

namespace veltrin {

// Chain reading: looks for "Average = " anywhere in a chunk, in any case, and
// takes the text between it and "ms" as the time in milliseconds; the first line
// of a chunk counts. Leaves `PingTime` as it was when the chunk holds no average.
void readAverage(const std::string& chunk, Loose& PingTime);

// Tail reading: trusts that a chunk ends in a summary line, "ms" and exactly three
// more characters, and takes the digits before them. `PingTime` serves as scratch
// text and holds the last characters looked at. Returns the time as text, or
// nothing when the chunk changes nothing.
std::optional<std::string> readTail(const std::string& chunk, Loose& PingTime);

}  // namespace veltrin

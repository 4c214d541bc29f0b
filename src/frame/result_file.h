// The one way in which a window saves its result as a text file.
#pragma once

#include <string>

#include "frame/program.h"

namespace veltrin {

// Where and how a window saves.
struct ResultName {
  std::string namePart;     // first part of the file's name, with the separator
  std::string destination;  // second part; may be empty, may be what a user typed
  std::string title;        // of the closing message
  std::string message;      // before the full name of the file
};

// Writes `text` to a file that is named by the window, the day and the minute, in
// the program folder, and tells its name. A second save of a minute replaces the
// first. A file that cannot be written is not reported.
void saveResult(Program& program, const ResultName& name, const std::string& text);

}  // namespace veltrin

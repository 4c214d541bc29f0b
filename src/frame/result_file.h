// SPDX-License-Identifier: GPL-3.0-or-later
// The one way in which a window writes a text file.
#pragma once

#include <memory>
#include <string>

#include "frame/program.h"

namespace veltrin {

// The last saved result, one for the whole program.
struct ResultValues {
  std::string ResultFolder;
  std::string ResultFile;
  std::unique_ptr<TextStream> ResultStream;
  Loose UseTempFolder;  // 1 saves results to the temporary folder
};

// Where and how a window saves.
struct ResultName {
  std::string namePart;     // first part of the file's name, with the separator
  std::string destination;  // second part; may be empty, may be what a user typed
  std::string title;        // of the closing message
  std::string message;      // before the full name of the file
};

// Opens a file, made when missing, writes a text and closes the file. A step that the
// system refuses is skipped, and so are those that would need it.
void writeFile(Files& files, std::unique_ptr<TextStream>& stream, const std::string& folder,
               const std::string& name, FileMode mode, const std::string& text);

// Writes `text` to a file that is named by the window, the day and the minute, in
// the program folder, and tells its name. A second save of a minute replaces the
// first. A file that cannot be written is not reported.
void saveResult(Program& program, const ResultName& name, const std::string& text);

}  // namespace veltrin

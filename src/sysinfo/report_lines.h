// SPDX-License-Identifier: GPL-3.0-or-later
// How lines get into the report.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <utility>

#include "sysinfo/frmSysInfo.h"
#include "text/statement.h"

namespace veltrin {

// The pictures of the lines, by their numbers in report_pictures.h.
enum class Picture : std::int16_t {
  None = 0,
  Processor = 1,
  UsersAndEvents = 2,
  VideoCard = 4,
  Card = 6,
  Cache = 9,
  Desktop = 10,
  Keyboard = 19,
  Board = 20,
  Memory = 21,
  Monitor = 23,
  Mouse = 24,
  OperatingSystem = 26,
  PrinterPort = 27,
  Printer = 29,
  Scanner = 30,
  CommunicationsPort = 31,
  Sound = 33,
  Usb = 34,
  Computer = 35,
  Programs = 36,
  Camera = 37,
};

// Writes lines of the usual looks into the window of a report.
class ReportLines {
 public:
  explicit ReportLines(frmSysInfo& window) : window_(window) {}

  // In the colour of headings and bold.
  void heading(const std::string& text, Picture picture = Picture::None) const;

  // In the colour of all other lines.
  void bold(const std::string& text) const;
  void plain(const std::string& text, Picture picture = Picture::None) const;

  // Blanks, to keep sections apart.
  void gap() const { plain(kBlanks); }
  void gapOfHeading() const { heading(kBlanks); }

  // The same with a text that is made of properties. One line is one statement: without a
  // property that cannot be read there is no line.
  template <std::invocable Text>
  void heading(Text&& text) const {
    skip([&] { heading(std::string(text())); });
  }
  template <std::invocable Text>
  void bold(Text&& text) const {
    skip([&] { bold(std::string(text())); });
  }
  template <std::invocable Text>
  void plain(Text&& text) const {
    skip([&] { plain(std::string(text())); });
  }

 private:
  static constexpr const char* kBlanks = "    ";

  frmSysInfo& window_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// One report under way, as its sections see it.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "frame/program.h"
#include "sysinfo/frmSysInfo.h"
#include "sysinfo/report_lines.h"
#include "sysinfo/report_values.h"
#include "sysinfo/result_set.h"
#include "sysinfo/status_text.h"

namespace veltrin {

// The check boxes of the report window, by their numbers.
enum class ReportBox : std::size_t {
  Users = 0,
  Processors = 1,
  Memory = 2,
  HardDrives = 3,
  Board = 4,
  Video = 5,
  Peripherals = 6,
  Software = 7,
  Startup = 8,
  Drivers = 9,
  Hotfixes = 10,
  Errors = 11,
  Desktop = 12,
  System = 13,
};

class ObjectLines;

class Report {
 public:
  // A report into that window, which outlives it, for a machine with so many network cards.
  Report(Program& program, frmSysInfo& window, double netCards);

  Program& program;
  frmSysInfo& window;
  const double netCards;
  const ReportLines lines;
  ReportValues& values;

  const SystemSummary& summary() const { return program.summary; }
  bool wants(ReportBox box) const;

  // A set of answers about the machine that the window was opened on.
  ResultSet resultSet() const;

  // Asks, and prints the lines of each object of the answer; of the one before it when the
  // query fails.
  template <class Print>
  void each(ResultSet& results, const std::string& query, Print&& print);
};

// The lines of one object.
class ObjectLines {
 public:
  ObjectLines(const Report& report, const WmiObject& object)
      : lines_(report.lines), object_(object), status_(report.values.Status) {}

  // A property. Throw StatementFailed for one that cannot be read, the second also for an
  // array.
  const WmiValue& value(const char* property) const { return object_.value(property); }
  std::string text(const char* property) const { return value(property).text(); }

  // A label and the property's text, in the looks of ReportLines.
  void heading(const char* property) const;  // without one
  void bold(const char* label, const char* property) const;
  void plain(const char* label, const char* property) const;

  // A label and the working text that the property's lookup leaves.
  using Lookup = void (StatusText::*)(const WmiValue&);
  void boldWord(const char* label, const char* property, Lookup lookup) const;
  void word(const char* label, const char* property, Lookup lookup) const;

  // The same for an array of codes. One that is null has no element.
  void words(const char* label, const char* property, Lookup lookup) const;

  // Any text.
  template <class Text>
  void bold(Text&& text) const {
    lines_.bold(std::forward<Text>(text));
  }
  template <class Text>
  void plain(Text&& text) const {
    lines_.plain(std::forward<Text>(text));
  }
  StatusText& status() const { return status_; }

 private:
  std::string lookedUp(const char* label, const WmiValue& code, Lookup lookup) const;

  const ReportLines& lines_;
  const WmiObject& object_;
  StatusText& status_;
};

template <class Print>
void Report::each(ResultSet& results, const std::string& query, Print&& print) {
  results.ExecQuery(query);
  results.forEach([&](const WmiObject& object) { print(ObjectLines(*this, object)); });
}

// A text that is a number with commas between thousands, nothing for 0; any other text as it
// is.
std::string grouped(const std::string& text);

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Sections of the report whose lines are properties of objects, told as data.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "simulated/catalogue_run.h"

namespace veltrin {

// A line of an object: what it reads when all is known, and when one of its properties is
// null.
struct PropertyLine {
  ReportLine line;
  std::map<std::string, std::string> withNull;
};

enum class Place { BeforeGaps, BetweenGaps, BehindGaps };

struct SectionCase {
  std::string name;
  ReportBox box;
  Place place;
  std::string query;
  ReportText above;  // the lines that its check box prints above the first object
  ReportText below;  // and below the last
  decltype(WmiObject::properties) properties;
  std::vector<PropertyLine> lines;

  friend void PrintTo(const SectionCase& section, std::ostream* out) { *out << section.name; }
};

// The sections of the machine, and of what is installed on it.
std::vector<SectionCase> hardwareSections();
std::vector<SectionCase> softwareSections();

}  // namespace veltrin

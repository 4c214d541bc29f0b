// SPDX-License-Identifier: GPL-3.0-or-later
#include "sysinfo/report.h"

#include <vector>

#include "text/numbers.h"
#include "text/statement.h"

namespace veltrin {

Report::Report(Program& program, frmSysInfo& window, double netCards)
    : program(program),
      window(window),
      netCards(netCards),
      lines(window),
      values(program.shared<ReportValues>()) {}

bool Report::wants(ReportBox box) const {
  return window.Showme[static_cast<std::size_t>(box)].value == kChecked;
}

ResultSet Report::resultSet() const { return {program.platform.wmi, values.ComputerName}; }

void ObjectLines::heading(const char* property) const {
  lines_.heading([&] { return text(property); });
}

void ObjectLines::bold(const char* label, const char* property) const {
  lines_.bold([&] { return label + text(property); });
}

void ObjectLines::plain(const char* label, const char* property) const {
  lines_.plain([&] { return label + text(property); });
}

void ObjectLines::boldWord(const char* label, const char* property, Lookup lookup) const {
  lines_.bold([&] { return lookedUp(label, value(property), lookup); });
}

void ObjectLines::word(const char* label, const char* property, Lookup lookup) const {
  lines_.plain([&] { return lookedUp(label, value(property), lookup); });
}

void ObjectLines::words(const char* label, const char* property, Lookup lookup) const {
  lines_.plain([&] {
    const WmiValue& codes = value(property);
    return lookedUp(label, codes.isNull() ? WmiValue(std::vector<Loose>()) : codes, lookup);
  });
}

std::string ObjectLines::lookedUp(const char* label, const WmiValue& code, Lookup lookup) const {
  (status_.*lookup)(code);
  return label + status_.text;
}

std::string grouped(const std::string& text) {
  std::string number = text;
  skip([&] { number = Format(toNumber(text), "#,###"); });
  return number;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/fact_text.h"
#include "platform/linux/wmi_classes.h"

namespace veltrin {

// The printers that the program prints on, as CUPS tells them: "printer-name", and "printer-info"
// (RFC 8011, section 5.4).
WmiAnswer win32Printer(const WmiSources& sources) {
  WmiAnswer answer;
  if (!sources.printers) {
    return answer;
  }
  for (const PrinterFacts& printer : sources.printers()) {
    WmiObject object;
    object.properties["Name"] = printable(printer.name);
    object.properties["Description"] = orNull(printable(printer.description));
    answer.push_back(std::move(object));
  }
  return answer;
}

}  // namespace veltrin

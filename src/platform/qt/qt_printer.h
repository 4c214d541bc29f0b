// SPDX-License-Identifier: GPL-3.0-or-later
// A printer of the system, by Qt's print support.
#pragma once

#include <string>
#include <vector>

#include "platform/printers.h"
#include "platform/qt/qt_event_loop.h"

namespace veltrin {

// Gathers lines; EndDoc puts them on sheets and hands these over, on a thread of its own.
class QtPrinter : public Printer {
 public:
  QtPrinter(QtEventLoop& events, std::string deviceName);

  void setProperties(const PrinterProperties& properties) override;
  void Print(const std::string& text) override;
  void EndDoc() override;

 private:
  QtEventLoop& events_;
  std::string deviceName_;
  PrinterProperties properties_;
  std::vector<std::string> lines_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_printer.h"

#include <memory>
#include <utility>

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include "platform/qt/qt_text.h"
#include "platform/qt/sheet_text.h"
#include "platform/qt/side_call.h"
#include "platform/qt/spooler.h"
#include "text/statement.h"

namespace veltrin {
namespace {

constexpr const char* kJobName = "Veltrin";
constexpr std::string_view kLineEnd = "\r\n";

// The number of the failure, as users of Basic know it.
constexpr int kInvalidPropertyValue = 380;

// Of a printer on which nothing has been set.
constexpr double kUsualSize = 12;  // points

// A letter of this size fills more than a metre; beyond it some fonts have no measures.
constexpr double kLargestSize = 2160;  // points

struct Job {
  std::string deviceName;
  PrinterProperties properties;
  std::vector<std::string> lines;
};

// Without the size Qt takes that of the user's country, when the printer has it. Without the
// margins, which are those of the device else, a sheet begins at them on Windows.
void prepare(QPrinter& printer, const QPageSize& size, const PrinterProperties& properties) {
  printer.setDocName(kJobName);
  if (size.isValid()) printer.setPageSize(size);
  printer.setPageOrientation(properties.Orientation == kLandscape ? QPageLayout::Landscape
                                                                  : QPageLayout::Portrait);
  printer.setCopyCount(properties.Copies);
  printer.setFullPage(true);
  printer.setPageMargins(QMarginsF());
}

bool paint(QPrinter& printer, QPainter& painter, const Job& job) {
  SheetText text(printer, painter, job.properties.FontName, job.properties.FontSize);
  for (const std::string& line : job.lines) {
    if (!text.add(line)) return false;
  }
  return true;
}

// Returns why it could not be printed; empty when it was. Runs on a thread of its own, since
// each look at the printer may wait for a server.
std::string carryOut(const Job& job) {
  const QPrinterInfo device = QPrinterInfo::printerInfo(toQt(job.deviceName));
  if (device.isNull()) return "No such printer: " + job.deviceName;
  QPrinter printer(device, QPrinter::HighResolution);
  if (!printer.isValid() || printer.outputFormat() != QPrinter::NativeFormat) {
    return "The printer is not ready: " + job.deviceName;
  }
  prepare(printer, device.defaultPageSize(), job.properties);
  QPainter painter;
  if (!painter.begin(&printer)) return "The printer takes no job: " + job.deviceName;
  if (!paint(printer, painter, job)) {
    printer.abort();
    return "The printer takes no other sheet: " + job.deviceName;
  }
  if (!painter.end()) return "The printer does not end the job: " + job.deviceName;
  return spoolerRefusal();
}

}  // namespace

QtPrinter::QtPrinter(QtEventLoop& events, std::string deviceName)
    : events_(events), deviceName_(std::move(deviceName)) {
  properties_.FontSize = kUsualSize;
}

void QtPrinter::setProperties(const PrinterProperties& properties) {
  const bool isPossible =
      properties.Copies > 0 && properties.FontSize > 0 && properties.FontSize <= kLargestSize &&
      (properties.Orientation == kPortrait || properties.Orientation == kLandscape);
  if (!isPossible) throw StatementFailed("Invalid property value", kInvalidPropertyValue);
  properties_ = properties;
}

// What stands behind the last line end is a line, too, unless it is nothing.
void QtPrinter::Print(const std::string& text) {
  std::size_t start = 0;
  for (std::size_t end = text.find(kLineEnd); end != std::string::npos;
       end = text.find(kLineEnd, start)) {
    lines_.push_back(text.substr(start, end - start));
    start = end + kLineEnd.size();
  }
  if (start < text.size() || text.empty()) lines_.push_back(text.substr(start));
}

void QtPrinter::EndDoc() {
  if (lines_.empty()) return;
  const auto refusal = std::make_shared<std::string>();
  SideCall call([refusal, job = Job{deviceName_, properties_, std::exchange(lines_, {})}] {
    *refusal = carryOut(job);
  });
  if (!call.wait(events_, kSpoolerTime)) {
    throw StatementFailed("The printer does not answer: " + deviceName_);
  }
  if (!refusal->empty()) throw StatementFailed(*refusal);
}

}  // namespace veltrin

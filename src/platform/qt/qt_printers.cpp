#include "platform/qt/qt_printers.h"

#include <algorithm>

#include <QPrinterInfo>

#include "platform/qt/qt_printer.h"
#include "platform/qt/qt_text.h"
#include "text/statement.h"

namespace veltrin {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

// How long a window may wait for the names, and how long whoever wants to print.
constexpr milliseconds kNamesTime{1500};
constexpr milliseconds kOpenTime{5000};

// A window asks several times while it loads, and each question costs CUPS up to half a
// second, as it listens for printers of the neighbourhood.
constexpr milliseconds kAnswerHolds{2000};

// A question without a reader stands for so long; the next call asks anew then.
constexpr milliseconds kSilenceHolds{30'000};

milliseconds since(steady_clock::time_point start) {
  return duration_cast<milliseconds>(steady_clock::now() - start);
}

}  // namespace

QtPrinters::Question::Question()
    : call([answer = answer] {
        for (const QString& name : QPrinterInfo::availablePrinterNames()) {
          answer->names.push_back(fromQt(name));
        }
        answer->defaultName = fromQt(QPrinterInfo::defaultPrinterName());
      }) {}

QtPrinters::QtPrinters(QtEventLoop& events) : events_(events) {}

std::vector<std::string> QtPrinters::deviceNames() {
  const Answer* answer = ask();
  return answer == nullptr ? std::vector<std::string>() : answer->names;
}

std::string QtPrinters::defaultDeviceName() {
  const Answer* answer = ask();
  return answer == nullptr ? std::string() : answer->defaultName;
}

std::unique_ptr<Printer> QtPrinters::open(const std::string& deviceName) {
  Question now;
  if (!now.call.wait(events_, kOpenTime)) {
    throw StatementFailed("The printers do not answer");
  }
  const std::vector<std::string>& names = now.answer->names;
  if (std::find(names.begin(), names.end(), deviceName) == names.end()) {
    throw StatementFailed("No such printer: " + deviceName);
  }
  return std::make_unique<QtPrinter>(events_, deviceName);
}

// What the system tells; null while it is silent. The time for it counts from the question
// on, so that several calls in a row do not wait several times.
const QtPrinters::Answer* QtPrinters::ask() {
  if (isOutOfDate()) question_.reset();
  if (!question_) question_.emplace();
  if (!question_->call.wait(events_, kNamesTime - since(question_->since))) return nullptr;
  if (!question_->wasRead) {
    question_->wasRead = true;
    question_->since = steady_clock::now();
  }
  return question_->answer.get();
}

bool QtPrinters::isOutOfDate() const {
  if (!question_) return false;
  const milliseconds limit = question_->wasRead ? kAnswerHolds : kSilenceHolds;
  return since(question_->since) > limit;
}

}  // namespace veltrin

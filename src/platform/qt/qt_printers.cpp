// SPDX-License-Identifier: GPL-3.0-or-later
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

// Whether a question is to be put anew.
template <class Question>
bool isOutOfDate(const Question& question) {
  const milliseconds limit = question.wasRead ? kAnswerHolds : kSilenceHolds;
  return since(question.since) > limit;
}

}  // namespace

QtPrinters::Answer QtPrinters::namesNow() {
  Answer answer;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) {
    answer.names.push_back(fromQt(name));
  }
  answer.defaultName = fromQt(QPrinterInfo::defaultPrinterName());
  return answer;
}

// Costs a question to the server for each printer, which the names alone do not.
QtPrinters::Descriptions QtPrinters::descriptionsNow(const std::vector<std::string>& names) {
  Descriptions descriptions;
  for (const std::string& name : names) {
    descriptions[name] = fromQt(QPrinterInfo::printerInfo(toQt(name)).description());
  }
  return descriptions;
}

QtPrinters::QtPrinters(QtEventLoop& events) : events_(events) {}

std::vector<std::string> QtPrinters::deviceNames() {
  const Answer* answer = askNames();
  return answer == nullptr ? std::vector<std::string>() : answer->names;
}

std::string QtPrinters::defaultDeviceName() {
  const Answer* answer = askNames();
  return answer == nullptr ? std::string() : answer->defaultName;
}

std::unique_ptr<Printer> QtPrinters::open(const std::string& deviceName) {
  Question<Answer> now(namesNow);
  if (!now.call.wait(events_, kOpenTime)) {
    throw StatementFailed("The printers do not answer");
  }
  const std::vector<std::string>& names = now.answer->names;
  if (std::find(names.begin(), names.end(), deviceName) == names.end()) {
    throw StatementFailed("No such printer: " + deviceName);
  }
  return std::make_unique<QtPrinter>(events_, deviceName);
}

std::vector<PrinterFacts> QtPrinters::facts() {
  const std::vector<std::string> names = deviceNames();
  if (names.empty()) return {};
  const auto* told = ask<Descriptions>(descriptions_, [names] { return descriptionsNow(names); });
  std::vector<PrinterFacts> facts;
  facts.reserve(names.size());
  for (const std::string& name : names) {
    const bool isTold = told != nullptr && told->count(name) != 0;
    facts.push_back({name, isTold ? told->at(name) : std::string()});
  }
  return facts;
}

// What the system tells; null while it is silent. The time for it counts from the question
// on, so that several calls in a row do not wait several times.
template <class Told>
const Told* QtPrinters::ask(std::optional<Question<Told>>& question,
                            const std::function<Told()>& work) {
  if (question && isOutOfDate(*question)) question.reset();
  if (!question) question.emplace(work);
  if (!question->call.wait(events_, kNamesTime - since(question->since))) return nullptr;
  if (!question->wasRead) {
    question->wasRead = true;
    question->since = steady_clock::now();
  }
  return question->answer.get();
}

const QtPrinters::Answer* QtPrinters::askNames() { return ask<Answer>(names_, namesNow); }

}  // namespace veltrin

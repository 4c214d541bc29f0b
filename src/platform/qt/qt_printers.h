// SPDX-License-Identifier: GPL-3.0-or-later
// The printers of the system, by Qt's print support: those of CUPS on Linux, those of the
// spooler on Windows.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/printer_facts.h"
#include "platform/printers.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/side_call.h"

namespace veltrin {

// A server of printers may be slow or silent, so each question is put on a thread of its own.
// One that stays without an answer is left behind.
class QtPrinters : public Printers {
 public:
  // Needs the application object.
  explicit QtPrinters(QtEventLoop& events);

  std::vector<std::string> deviceNames() override;
  std::string defaultDeviceName() override;
  std::unique_ptr<Printer> open(const std::string& deviceName) override;

  // The printers by their names and their owners' descriptions, within the same time; without
  // the descriptions when these alone need longer.
  std::vector<PrinterFacts> facts();

 private:
  struct Answer {
    std::vector<std::string> names;
    std::string defaultName;
  };

  using Descriptions = std::map<std::string, std::string>;  // by the names

  // A question, and when it was put or its answer first read.
  template <class Told>
  struct Question {
    explicit Question(std::function<Told()> work)
        : call([answer = answer, work = std::move(work)] { *answer = work(); }) {}

    std::shared_ptr<Told> answer = std::make_shared<Told>();
    SideCall call;
    std::chrono::steady_clock::time_point since = std::chrono::steady_clock::now();
    bool wasRead = false;
  };

  static Answer namesNow();
  static Descriptions descriptionsNow(const std::vector<std::string>& names);

  template <class Told>
  const Told* ask(std::optional<Question<Told>>& question, const std::function<Told()>& work);
  const Answer* askNames();

  QtEventLoop& events_;
  std::optional<Question<Answer>> names_;  // the last one of each kind
  std::optional<Question<Descriptions>> descriptions_;
};

}  // namespace veltrin

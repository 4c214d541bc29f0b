// The printers of the system, by Qt's print support: those of CUPS on Linux, those of the
// spooler on Windows.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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

 private:
  struct Answer {
    std::vector<std::string> names;
    std::string defaultName;
  };

  // A question, and when it was put or its answer first read.
  struct Question {
    Question();

    std::shared_ptr<Answer> answer = std::make_shared<Answer>();
    SideCall call;
    std::chrono::steady_clock::time_point since = std::chrono::steady_clock::now();
    bool wasRead = false;
  };

  const Answer* ask();
  bool isOutOfDate() const;

  QtEventLoop& events_;
  std::optional<Question> question_;  // the last one
};

}  // namespace veltrin

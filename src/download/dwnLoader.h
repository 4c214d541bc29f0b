// SPDX-License-Identifier: GPL-3.0-or-later
// The control that reads one URL into one file, in the background.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include "download/download_values.h"
#include "forms/control.h"
#include "frame/program.h"

namespace veltrin {

// A small square that nobody sees. Its events are events of its window: they come through
// the gate, and none comes once the window is unloaded. What a read is of is told by the
// path that it is saved to, so that any number of them can run.
class dwnLoader : public Control {
 public:
  explicit dwnLoader(Program& program);

  static constexpr int kSide = 32;  // pixels

  // Width and height, in twips; whoever sets another size finds the one size again.
  Property<int> width{0};
  Property<int> height{0};

  // At each report with a known size. Bytes as countIn32Bits.
  std::function<void(std::int32_t CurBytes, std::int32_t MaxBytes, const std::string& SaveFile)>
      DownloadProgress;

  // At the end of a read of nothing, which a failed one is too.
  std::function<void(const std::string& SaveFile)> DownloadError;

  // At each end, behind DownloadError and behind the writing of the file. MaxBytes is the
  // size of the body, 0 where there is none.
  std::function<void(std::int32_t MaxBytes, const std::string& SaveFile)> DownloadComplete;

  // At each report and at each end, before the events above: bytes that have come so far,
  // whether their whole number is known or not.
  std::function<void(std::int64_t arrived, const std::string& SaveFile)> BytesArrived;

  // Starts a read; a file that is there is written over from its beginning on, and not cut.
  // A failure to start is told to the user.
  void BeginDownload(const std::string& URL, const std::string& SaveFile);

  // Makes the control its one size.
  void SizeIt();

  // Gives up all reads: their connections are closed, and nothing more is told of them.
  void giveUp();

 private:
  // A read under way.
  struct Transfer {
    std::unique_ptr<Downloads::Read> read;
    std::optional<AsyncProperty> progress;  // the newest that was not told
    std::optional<AsyncProperty> end;
    bool waiting = false;  // at the gate
  };

  void AsyncReadProgress(const AsyncProperty& property);
  void AsyncReadComplete(AsyncProperty property);
  void post(const std::shared_ptr<Transfer>& transfer);
  void tell(const std::shared_ptr<Transfer>& transfer);
  void warn(const char* operation, const std::function<void()>& routine);
  void save(const AsyncProperty& property);

  Program& program_;
  DownloadValues& values_;
  std::list<std::shared_ptr<Transfer>> reads_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "download/dwnLoader.h"

#include <utility>

#include "forms/form.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kTwipsPerPixel = 15;

}  // namespace

dwnLoader::dwnLoader(Program& program)
    : program_(program), values_(program.shared<DownloadValues>()) {
  visible = false;
  width.observe([this] { SizeIt(); });
  height.observe([this] { SizeIt(); });
  SizeIt();
}

void dwnLoader::BeginDownload(const std::string& URL, const std::string& SaveFile) {
  warn("BeginDownload", [&] {
    const auto transfer = std::make_shared<Transfer>();
    const std::weak_ptr<Transfer> mine = transfer;
    transfer->read = program_.platform.downloads.AsyncRead(
        URL, kAsyncTypeByteArray, SaveFile, kAsyncReadForceUpdate,
        {[this, mine](const AsyncProperty& report) {
           const auto told = mine.lock();
           if (!told) return;
           told->progress = report;
           post(told);
         },
         [this, mine](AsyncProperty report) {
           const auto told = mine.lock();
           if (!told) return;
           told->end = std::move(report);
           post(told);
         }});
    reads_.push_back(transfer);
  });
}

void dwnLoader::giveUp() {
  for (const auto& transfer : std::exchange(reads_, {})) transfer->read.reset();
}

void dwnLoader::SizeIt() {
  warn("SizeIt", [this] {
    width = kSide * kTwipsPerPixel;
    height = kSide * kTwipsPerPixel;
  });
}

// A failure here is told to the user, who would wait in vain otherwise.
void dwnLoader::warn(const char* operation, const std::function<void()>& routine) {
  try {
    routine();
  } catch (const StatementFailed& failure) {
    const std::string end(kLineBreak);
    program_.MsgBox(std::to_string(failure.number()) + ":Error in call to " + operation + "()." +
                        end + end + "Error Description: " + failure.what(),
                    kMessageCritical, "Warning");
  }
}

// What comes while the gate is closed is told in one: the newest report, and then the end.
void dwnLoader::post(const std::shared_ptr<Transfer>& transfer) {
  if (form() == nullptr || std::exchange(transfer->waiting, true)) return;
  program_.platform.events.gate().post(
      [window = form()->weak_from_this(), this, read = std::weak_ptr(transfer)] {
        const auto alive = window.lock();
        const auto told = read.lock();
        if (alive && told) alive->run([&] { tell(told); });
      });
}

void dwnLoader::tell(const std::shared_ptr<Transfer>& transfer) {
  transfer->waiting = false;
  if (const auto report = std::exchange(transfer->progress, std::nullopt))
    AsyncReadProgress(*report);
  if (!transfer->read) return;
  if (auto report = std::exchange(transfer->end, std::nullopt)) {
    transfer->read.reset();
    reads_.remove(transfer);
    AsyncReadComplete(*std::move(report));
  }
}

void dwnLoader::AsyncReadProgress(const AsyncProperty& property) {
  if (BytesArrived) BytesArrived(property.arrived, property.PropertyName);
  if (property.BytesMax == 0) return;
  if (values_.DownloadLag.text().empty()) {
    values_.DownloadLag =
        secondsSinceMidnight(program_.platform.clock.now()) - values_.DownloadStartTime;
  }
  if (DownloadProgress) {
    DownloadProgress(property.BytesRead, property.BytesMax, property.PropertyName);
  }
}

void dwnLoader::AsyncReadComplete(AsyncProperty property) {
  if (BytesArrived) BytesArrived(property.arrived, property.PropertyName);
  if (property.BytesMax != 0) save(property);
  property.Value.clear();
  if (property.BytesMax == 0 && DownloadError) DownloadError(property.PropertyName);
  if (DownloadComplete) DownloadComplete(property.BytesMax, property.PropertyName);
}

// What the system refuses to take is lost without a word.
void dwnLoader::save(const AsyncProperty& property) {
  skip([&] {
    const auto file = program_.platform.files.openBinary(property.PropertyName);
    for (const std::string& piece : property.Value) file->Put(piece);
    file->Close();
  });
}

}  // namespace veltrin

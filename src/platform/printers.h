// SPDX-License-Identifier: GPL-3.0-or-later
// The printers of the system.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veltrin {

// Orientations of the paper, by their numbers in the system.
inline constexpr std::int16_t kPortrait = 1;
inline constexpr std::int16_t kLandscape = 2;

// How a job is printed.
struct PrinterProperties {
  std::string FontName;
  std::int16_t Copies = 1;
  double FontSize = 0;  // points
  std::int16_t Orientation = kPortrait;
  friend bool operator==(const PrinterProperties&, const PrinterProperties&) = default;
};

// One printer. setProperties is for the job under way and the next ones, and throws StatementFailed
// for what no printer can do. Destroying a printer drops what was printed since the last EndDoc.
class Printer {
 public:
  virtual ~Printer() = default;

  virtual void setProperties(const PrinterProperties& properties) = 0;

  // Puts a text on the paper, below what is there, from the sheet's upper left corner on: the
  // program counts lines and no margins. Lines end with "\r\n". A line that is too long for
  // the paper goes on in the next one, and a text that is too long goes on with another sheet.
  virtual void Print(const std::string& text) = 0;

  // Hands what was printed since then to the system, as one job; nothing printed: no job. Throws
  // StatementFailed when it is refused, or not taken within seconds; it may still come out then.
  virtual void EndDoc() = 0;
};

class Printers {
 public:
  virtual ~Printers() = default;

  // The DeviceName of every printer, in the system's order; empty when there are none, and
  // when the system needs more than a second or two. A call soon after may get what came late.
  virtual std::vector<std::string> deviceNames() = 0;

  // That of the default printer; the empty text without one, or without the names.
  virtual std::string defaultDeviceName() = 0;

  // Throws StatementFailed when there is no printer of that name now, or nobody tells.
  virtual std::unique_ptr<Printer> open(const std::string& deviceName) = 0;
};

}  // namespace veltrin

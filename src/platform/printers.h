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

// How a text is printed from then on.
struct PrinterProperties {
  std::string FontName;
  std::int16_t Copies = 1;
  double FontSize = 0;  // points
  std::int16_t Orientation = kPortrait;
  friend bool operator==(const PrinterProperties&, const PrinterProperties&) = default;
};

// One printer. Each call throws StatementFailed when the printer refuses it or is there no
// longer. Destroying a printer drops what was printed since the last EndDoc.
class Printer {
 public:
  virtual ~Printer() = default;

  virtual void setProperties(const PrinterProperties& properties) = 0;

  // Puts a text on the paper, below what is there, from the sheet's upper left corner on: the
  // program counts lines and no margins. Lines end with "\r\n". A line that is too long for
  // the paper goes on in the next one, and a text that is too long goes on with another sheet.
  virtual void Print(const std::string& text) = 0;

  // Hands what was printed since the last EndDoc to the system, as one job. Nothing was
  // printed: no job.
  virtual void EndDoc() = 0;
};

class Printers {
 public:
  virtual ~Printers() = default;

  // The DeviceName of every printer, in the system's order; empty when there are none, and
  // when the system does not tell them within a second or two.
  virtual std::vector<std::string> deviceNames() = 0;

  // That of the default printer; the empty text without one.
  virtual std::string defaultDeviceName() = 0;

  // Throws StatementFailed when there is no printer of that name.
  virtual std::unique_ptr<Printer> open(const std::string& deviceName) = 0;
};

}  // namespace veltrin

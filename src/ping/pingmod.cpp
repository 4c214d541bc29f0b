#include "ping/pingmod.h"

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::string_view kAverage = "Average = ";
constexpr std::string_view kAverageOfZero = "Average = 0ms";

// The tail reading's places, counted back from the end of a chunk.
constexpr std::int64_t kUnitFromEnd = 4;     // "ms" with three characters behind it
constexpr std::int64_t kWindowFromEnd = 11;  // the nine characters before those three
constexpr std::int64_t kWindowLength = 9;
constexpr std::int64_t kDigits = 6;  // less the place of "=", from the second place behind it

}  // namespace

// A first digit from 1 to 9 needs no case of its own: the text up to "ms" is the
// number whatever its length.
void readAverage(const std::string& chunk, Loose& PingTime) {
  if (InStr(1, chunk, kAverageOfZero, Compare::IgnoreCase) > 0) {
    PingTime = 0;
    return;
  }
  const std::int64_t found = InStr(1, chunk, kAverage, Compare::IgnoreCase);
  if (found == 0) return;
  PingTime = Mid(chunk, found + Len(kAverage));
  if (Left(PingTime.text(), 1) == "0") {
    PingTime = 0;
    return;
  }
  skip([&] {
    const std::string text = PingTime.text();
    PingTime = Left(text, InStr(1, text, "ms", Compare::IgnoreCase) - 1);
  });
}

std::optional<std::string> readTail(const std::string& chunk, Loose& PingTime) {
  // What stands before these places of the chunk is not looked at.
  const std::string end = Right(chunk, kWindowFromEnd + 1);
  const std::int64_t length = Len(end);
  if (!holds([&] { return Mid(end, length - kUnitFromEnd, 2) == "ms"; })) return std::nullopt;
  skip([&] { PingTime = Mid(end, length - kWindowFromEnd, kWindowLength); });
  const std::string window = PingTime.text();
  const std::int64_t sign = InStr(1, Left(window, kWindowLength), "=");
  std::optional<std::string> value;
  if (sign > 0) skip([&] { value = Mid(window, sign + 2, kDigits - sign); });
  return value;
}

}  // namespace veltrin

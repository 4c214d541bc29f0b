// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLibrary>

#include "platform/qt/spooler.h"

namespace veltrin {
namespace {

// The highest status of CUPS that is a success (RFC 8011, appendix B: errors begin at 0x0400).
constexpr int kHighestSuccess = 0x00ff;

}  // namespace

// CUPS asks nobody anything; a server that is further away gets the time of a slow line.
const std::chrono::milliseconds kSpoolerTime{10'000};

// Qt hands a job to CUPS and does not look at the answer, which the library keeps for each
// thread. It is there when Qt's support of CUPS has been loaded, and needs no other package.
std::string spoolerRefusal() {
  QLibrary cups("cups", 2);
  const auto status = reinterpret_cast<int (*)()>(cups.resolve("cupsLastError"));
  const auto words = reinterpret_cast<const char* (*)()>(cups.resolve("cupsLastErrorString"));
  if (status == nullptr || words == nullptr) return "There is no spooler";
  if (status() <= kHighestSuccess) return {};
  const char* refusal = words();
  return refusal != nullptr && *refusal != '\0' ? refusal : "The spooler refused the job";
}

}  // namespace veltrin

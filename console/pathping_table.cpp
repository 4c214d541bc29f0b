// SPDX-License-Identifier: GPL-3.0-or-later
#include "console/pathping_table.h"

#include <cstdint>

#include "console/route_session.h"

namespace veltrin {
namespace {

constexpr std::string_view kTitles =
    "            Source to Here   This Node/Link\r\n"
    "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n";

// How many characters stand before the figures of a link, and before an address.
constexpr std::size_t kBeforeLink = 27;
constexpr std::size_t kBeforeMachine = 43;

// "   13/ 100 = 13%" in 17 characters.
std::string share(std::uint64_t lost, std::uint64_t sent) {
  const std::uint64_t percent = sent == 0 ? 0 : lost * 100 / sent;
  return padded(lost, 6) + "/" + padded(sent, 4) + " =" + padded(percent, 3) + "%";
}

// In 7 characters.
std::string roundTrip(const HopFigures& figures) {
  if (figures.received == 0) {
    return "  ---  ";
  }
  const Microseconds average = figures.trips / static_cast<Microseconds>(figures.received);
  return padded(inMilliseconds(average), 5) + "ms";
}

}  // namespace

std::string pathTable(const std::string& machine, const std::vector<TableHop>& hops) {
  std::vector<HopFigures> figures;
  figures.reserve(hops.size());
  for (const TableHop& hop : hops) {
    figures.push_back(hop.figures);
  }
  const std::vector<HopLoss> losses = lossesOf(figures);

  std::string text(kTitles);
  text += "  0" + std::string(kBeforeMachine, ' ') + machine + " \r\n";
  for (std::size_t at = 0; at < hops.size(); ++at) {
    const HopFigures& counts = hops[at].figures;
    text += std::string(kBeforeLink, ' ') + share(losses[at].link, counts.sent) + "   |\r\n";
    text += padded(at + 1, 3) + roundTrip(counts) + share(counts.lost(), counts.sent) +
            share(losses[at].node, counts.sent) + "  " + hops[at].label + " \r\n";
  }
  return text;
}

}  // namespace veltrin

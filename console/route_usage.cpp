// SPDX-License-Identifier: GPL-3.0-or-later
// What tracert and pathping say of themselves.
#include "console/route_options.h"

namespace veltrin {
namespace {

constexpr std::string_view kTracertUsage =
    "\r\n"
    "Usage: tracert [-d] [-h maximum_hops] [-j host-list] [-w timeout]\r\n"
    "               [-R] [-S srcaddr] [-4] [-6] target_name\r\n"
    "\r\n"
    "Shows the routers on the way to a host and how long each takes to answer.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -d                 Show addresses only, no names.\r\n"
    "    -h maximum_hops    Look at most so many hops far (30).\r\n"
    "    -j host-list       Pass these hosts on the way, at most 9 (IPv4 only).\r\n"
    "                       Most routers drop such packets.\r\n"
    "    -w timeout         Wait exactly so many milliseconds for each reply.\r\n"
    "                       Otherwise the wait is 4000 ms for a hop as long as\r\n"
    "                       neither it nor one behind it has answered. Then it is\r\n"
    "                       three times its longest round trip and 400 ms; for a\r\n"
    "                       hop that never has, ten times that of the nearest\r\n"
    "                       behind it that has, but 500 ms at least.\r\n"
    "    -R                 Not done here: the way back of IPv6 packets would take a\r\n"
    "                       header that is withdrawn (RFC 5095). Ends the program.\r\n"
    "    -S srcaddr         Send from this address of the machine.\r\n"
    "    -4                 Use IPv4.\r\n"
    "    -6                 Use IPv6.\r\n"
    "    -?                 Show these lines.\r\n"
    "\r\n"
    "Each hop gets three probes; the address is that of the last one that was\r\n"
    "answered. A name that does not come within two seconds is left out.\r\n";

constexpr std::string_view kPathpingUsage =
    "\r\n"
    "Usage: pathping [-g host-list] [-h maximum_hops] [-i address] [-n]\r\n"
    "                [-p period] [-q num_queries] [-w timeout]\r\n"
    "                [-P] [-R] [-T] [-4] [-6] [-b] target_name\r\n"
    "\r\n"
    "Shows the way to a host and what each router and link on it loses.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -g host-list       Pass these hosts on the way, at most 9 (IPv4 only).\r\n"
    "                       Most routers drop such packets.\r\n"
    "    -h maximum_hops    Look at most so many hops far (30).\r\n"
    "    -i address         Send from this address of the machine.\r\n"
    "    -n                 Show addresses only, no names.\r\n"
    "    -p period          Milliseconds from one query to the next (250). They go\r\n"
    "                       to the hops in turn, so that all take hops times\r\n"
    "                       queries times period.\r\n"
    "    -q num_queries     How many queries each hop gets (100).\r\n"
    "    -w timeout         Wait exactly so many milliseconds for each reply.\r\n"
    "                       Otherwise the wait is 3000 ms for a hop as long as\r\n"
    "                       neither it nor one behind it has answered. Then it is\r\n"
    "                       three times its longest round trip and 400 ms; for a\r\n"
    "                       hop that never has, ten times that of the nearest\r\n"
    "                       behind it that has, but 500 ms at least.\r\n"
    "    -P                 RSVP PATH connectivity: taken, but not tested here; the\r\n"
    "                       report tells why.\r\n"
    "    -R                 RSVP awareness: taken, but not tested here; the report\r\n"
    "                       tells why.\r\n"
    "    -T                 Test which hops answer echoes that are sent with\r\n"
    "                       priority, three to each. Whether links carry it as a\r\n"
    "                       tag is not seen.\r\n"
    "    -4                 Use IPv4.\r\n"
    "    -6                 Use IPv6.\r\n"
    "    -b                 This program's own: query all hops beside each other,\r\n"
    "                       each of them once a period, so that all take queries\r\n"
    "                       times period. Routers that answer only so many times a\r\n"
    "                       second look lossy then.\r\n"
    "    -?                 Show these lines.\r\n";

}  // namespace

std::string_view tracertUsage() { return kTracertUsage; }

std::string_view pathpingUsage() { return kPathpingUsage; }

}  // namespace veltrin

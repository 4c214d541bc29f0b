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
    "                       three times the longest round trip of the nearest that\r\n"
    "                       has, and 400 ms, or 100 ms for a hop that never has.\r\n"
    "    -R                 Not available: the IPv6 header it needs is withdrawn.\r\n"
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
    "                [-P] [-R] [-T] [-4] [-6] target_name\r\n"
    "\r\n"
    "Shows the way to a host and what each router and link on it loses.\r\n"
    "\r\n"
    "Options:\r\n"
    "    -g host-list       Pass these hosts on the way, at most 9 (IPv4 only).\r\n"
    "                       Most routers drop such packets.\r\n"
    "    -h maximum_hops    Look at most so many hops far (30).\r\n"
    "    -i address         Send from this address of the machine.\r\n"
    "    -n                 Show addresses only, no names.\r\n"
    "    -p period          Milliseconds from query to query of a hop (250).\r\n"
    "    -q num_queries     How many queries each hop gets (100). All hops get\r\n"
    "                       theirs side by side.\r\n"
    "    -w timeout         Wait exactly so many milliseconds for each reply.\r\n"
    "                       Otherwise the wait is 3000 ms for a hop as long as\r\n"
    "                       neither it nor one behind it has answered. Then it is\r\n"
    "                       three times the longest round trip of the nearest that\r\n"
    "                       has, and 400 ms, or 100 ms for a hop that never has.\r\n"
    "    -P                 Not testable: tells why.\r\n"
    "    -R                 Not testable: tells why.\r\n"
    "    -T                 Test which hops answer echoes that are sent with\r\n"
    "                       priority.\r\n"
    "    -4                 Use IPv4.\r\n"
    "    -6                 Use IPv6.\r\n"
    "    -?                 Show these lines.\r\n";

}  // namespace

std::string_view tracertUsage() { return kTracertUsage; }

std::string_view pathpingUsage() { return kPathpingUsage; }

}  // namespace veltrin

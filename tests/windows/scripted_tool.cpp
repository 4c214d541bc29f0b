// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in for the console tools of Windows where they cannot be had, as under Wine: prints
// what they print, each piece when it would be known, about a made-up Internet. Which tool it is
// tells the name of its program: ping, tracert or pathping. The time of an echo is 24 ms.
//
// Whoever the host, it is 203.0.113.7. On the way lie a gateway, a hop that is silent, and a
// router; to a host whose name begins with "near" the silent hop alone.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenEchoes{50};
constexpr milliseconds kBetweenProbes{20};

const std::string kAddress = "203.0.113.7";
const std::string kBracketed = " [" + kAddress + "]";

// One write, which its reader may get before the next.
void tell(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

void pause(milliseconds time) { std::this_thread::sleep_for(time); }

// The words behind the program's name.
struct Words {
  int number(std::string_view option, int otherwise) const {
    for (std::size_t at = 0; at + 1 < all.size(); ++at) {
      if (all[at] == option) return std::atoi(all[at + 1].c_str());
    }
    return otherwise;
  }
  // The word that neither is an option nor belongs to one.
  std::string host() const {
    for (std::size_t at = 0; at < all.size(); ++at) {
      if (takesWord(all[at])) {
        ++at;
      } else if (all[at][0] != '-') {
        return all[at];
      }
    }
    return {};
  }
  static bool takesWord(std::string_view option) {
    for (const std::string_view each : {"-n", "-l", "-w", "-i", "-h", "-q", "-p"}) {
      if (option == each) return true;
    }
    return false;
  }

  std::vector<std::string> all;
};

std::string row(int hop) {
  std::string number = std::to_string(hop);
  return std::string(3 - number.size(), ' ') + number + "  ";
}

bool isNear(const std::string& host) { return host.starts_with("near"); }

int ping(const Words& words) {
  const std::string host = words.host();
  if (host.empty()) {
    tell("IP address must be specified.\r\n");
    return EXIT_FAILURE;
  }
  const int count = words.number("-n", 4);
  const std::string size = std::to_string(words.number("-l", 32));
  tell("\r\nPinging " + host + kBracketed + " with " + size + " bytes of data:\r\n");
  for (int sent = 0; sent < count; ++sent) {
    if (sent > 0) pause(kBetweenEchoes);
    tell("Reply from " + kAddress + ": bytes=" + size + " time=24ms TTL=56\r\n");
  }
  const std::string number = std::to_string(count);
  tell("\r\nPing statistics for " + kAddress + ":\r\n    Packets: Sent = " + number +
       ", Received = " + number + ", Lost = 0 (0% loss),\r\n");
  tell(
      "Approximate round trip times in milli-seconds:\r\n"
      "    Minimum = 24ms, Maximum = 24ms, Average = 24ms \r\n");
  return EXIT_SUCCESS;
}

void tellTracing(const std::string& host) {
  tell("\r\nTracing route to " + host + kBracketed + "\r\nover a maximum of 30 hops:\r\n");
}

void traceHop(int hop, std::string_view probe, const std::string& who) {
  tell(row(hop));
  for (int probes = 0; probes < 3; ++probes) {
    pause(kBetweenProbes);
    tell(probe);
  }
  tell(who + "\r\n");
}

int tracert(const Words& words) {
  constexpr std::string_view kSilent = "   *     ";
  const std::string host = words.host();
  tellTracing(host);
  tell("\r\n");
  int hop = 0;
  if (!isNear(host)) traceHop(++hop, "  <1 ms  ", "gateway.example [198.51.100.1] ");
  traceHop(++hop, kSilent, "Request timed out.");
  if (!isNear(host)) traceHop(++hop, "   9 ms  ", "203.0.113.9 ");
  traceHop(++hop, "  24 ms  ", host + kBracketed + " ");
  tell("\r\nTrace complete.\r\n");
  return EXIT_SUCCESS;
}

int pathping(const Words& words) {
  const std::string host = words.host();
  const std::string queries = std::to_string(words.number("-q", 100));
  const std::string sent = std::string(4 - queries.size(), ' ') + queries;
  const std::string all = "   0/" + sent + " =  0%  ";
  tellTracing(host);
  tell("  0  mypc [198.51.100.20] \r\n");
  for (const char* hop : {"  1  198.51.100.1 \r\n", "  2  203.0.113.9 \r\n"}) {
    pause(kBetweenProbes);
    tell(hop);
  }
  tell("  3  " + host + kBracketed + " \r\n\r\nComputing statistics for 1 seconds...\r\n");
  pause(milliseconds(1000));
  tell(
      "            Source to Here   This Node/Link\r\n"
      "Hop  RTT    Lost/Sent = Pct  Lost/Sent = Pct  Address\r\n"
      "  0                                           mypc [198.51.100.20] \r\n");
  const auto hop = [&](const std::string& begin, const std::string& who) {
    tell("                             " + all + " |\r\n" + begin + "  " + all + all + who +
         " \r\n");
  };
  hop("  1    1ms", "198.51.100.1");
  hop("  2    9ms", "203.0.113.9");
  hop("  3   24ms", host + kBracketed);
  tell("\r\nTrace complete.\r\n");
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  // The ends of lines are written out here.
  _setmode(_fileno(stdout), _O_BINARY);
  const std::string name = std::filesystem::path(argv[0]).stem().string();
  const Words words{{argv + 1, argv + argc}};
  if (name == "ping") return ping(words);
  if (name == "tracert") return tracert(words);
  if (name == "pathping") return pathping(words);
  std::fprintf(stderr, "%s is none of ping, tracert and pathping.\n", name.c_str());
  return EXIT_FAILURE;
}

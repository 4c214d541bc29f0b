// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/protocol_counters.h"

#include <array>
#include <fstream>
#include <sstream>
#include <string_view>

namespace veltrin {
namespace {

struct ProtocolCounter {
  const char* name;
  CounterKind kind;
  const char* figure;
  const char* addend = nullptr;  // a second figure, to be added
};

constexpr auto kRate = CounterKind::Rate;
constexpr auto kNumber = CounterKind::Number;

// Beside each counter stands what the kernel keeps for it, by the name without its protocol's
// prefix: IPv4 has it in the line "Ip:" (snmp4_ipstats_list in net/ipv4/proc.c), IPv6 with
// "Ip6" in front (snmp6_ipstats_list in net/ipv6/proc.c). Linux keeps the same sixteen of
// both; it does not keep the sum of those that came and went, which is made here.
constexpr std::array kProtocolCounters{
    // IPv4 InReceives + OutRequests; IPv6 Ip6InReceives + Ip6OutRequests. What is forwarded
    // was received, too, and is not counted a second time.
    ProtocolCounter{"Datagrams/sec", kRate, "InReceives", "OutRequests"},
    // IPv4 InReceives; IPv6 Ip6InReceives. All that came in, those with errors included.
    ProtocolCounter{"Datagrams Received/sec", kRate, "InReceives"},
    // IPv4 InHdrErrors; IPv6 Ip6InHdrErrors.
    ProtocolCounter{"Datagrams Received Header Errors", kNumber, "InHdrErrors"},
    // IPv4 InAddrErrors; IPv6 Ip6InAddrErrors.
    ProtocolCounter{"Datagrams Received Address Errors", kNumber, "InAddrErrors"},
    // IPv4 ForwDatagrams; IPv6 Ip6OutForwDatagrams, which "ForwDatagrams" stands for here.
    ProtocolCounter{"Datagrams Forwarded/sec", kRate, "ForwDatagrams"},
    // IPv4 InUnknownProtos; IPv6 Ip6InUnknownProtos.
    ProtocolCounter{"Datagrams Received Unknown Protocol", kNumber, "InUnknownProtos"},
    // IPv4 InDiscards; IPv6 Ip6InDiscards.
    ProtocolCounter{"Datagrams Received Discarded", kNumber, "InDiscards"},
    // IPv4 InDelivers; IPv6 Ip6InDelivers.
    ProtocolCounter{"Datagrams Received Delivered/sec", kRate, "InDelivers"},
    // IPv4 OutRequests; IPv6 Ip6OutRequests. Kernels that do not tell
    // OutTransmits beside it count what they forward in it as well.
    ProtocolCounter{"Datagrams Sent/sec", kRate, "OutRequests"},
    // IPv4 OutDiscards; IPv6 Ip6OutDiscards.
    ProtocolCounter{"Datagrams Outbound Discarded", kNumber, "OutDiscards"},
    // IPv4 OutNoRoutes; IPv6 Ip6OutNoRoutes.
    ProtocolCounter{"Datagrams Outbound No Route", kNumber, "OutNoRoutes"},
    // IPv4 ReasmReqds; IPv6 Ip6ReasmReqds.
    ProtocolCounter{"Fragments Received/sec", kRate, "ReasmReqds"},
    // IPv4 ReasmOKs; IPv6 Ip6ReasmOKs. Datagrams, not fragments.
    ProtocolCounter{"Fragments Re-assembled/sec", kRate, "ReasmOKs"},
    // IPv4 ReasmFails; IPv6 Ip6ReasmFails.
    ProtocolCounter{"Fragment Re-assembly Failures", kNumber, "ReasmFails"},
    // IPv4 FragOKs; IPv6 Ip6FragOKs.
    ProtocolCounter{"Fragmented Datagrams/sec", kRate, "FragOKs"},
    // IPv4 FragFails; IPv6 Ip6FragFails.
    ProtocolCounter{"Fragmentation Failures", kNumber, "FragFails"},
    // IPv4 FragCreates; IPv6 Ip6FragCreates.
    ProtocolCounter{"Fragments Created/sec", kRate, "FragCreates"},
};

constexpr std::string_view kIPv4Line = "Ip:";
constexpr std::string_view kIPv6Prefix = "Ip6";

}  // namespace

std::vector<CounterName> ProtocolCounters::counters() const {
  std::vector<CounterName> names;
  names.reserve(kProtocolCounters.size());
  for (const ProtocolCounter& each : kProtocolCounters) names.push_back({each.name, each.kind});
  return names;
}

std::vector<CounterInstance> ProtocolCounters::read() const {
  const Figures kept = figures();
  if (kept.empty()) return {};
  const auto figure = [&](const char* name) {
    const auto found = name == nullptr ? kept.end() : kept.find(std::string_view(name));
    return found == kept.end() ? 0 : found->second;
  };
  CounterInstance instance;
  instance.readings.reserve(kProtocolCounters.size());
  for (const ProtocolCounter& each : kProtocolCounters) {
    instance.readings.push_back({figure(each.figure) + figure(each.addend), 1});
  }
  return {instance};
}

ProtocolCounters::Figures IPv4Counters::figures() const {
  std::ifstream file(procFolder() + "/net/snmp");
  std::string names;
  std::string numbers;
  while (std::getline(file, names) && !names.starts_with(kIPv4Line)) {
  }
  std::getline(file, numbers);
  if (!numbers.starts_with(kIPv4Line)) return {};
  std::istringstream eachName(names.substr(kIPv4Line.size()));
  std::istringstream eachNumber(numbers.substr(kIPv4Line.size()));
  Figures all;
  double number = 0;
  for (std::string name; eachName >> name && eachNumber >> number;) all[name] = number;
  return all;
}

// The file goes on with other protocols, "Icmp6" and so on.
ProtocolCounters::Figures IPv6Counters::figures() const {
  std::ifstream file(procFolder() + "/net/snmp6");
  Figures all;
  std::string name;
  for (double number = 0; file >> name >> number && name.starts_with(kIPv6Prefix);) {
    name.erase(0, kIPv6Prefix.size());
    if (name == "OutForwDatagrams") name = "ForwDatagrams";
    all[name] = number;
  }
  return all;
}

}  // namespace veltrin

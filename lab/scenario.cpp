// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/scenario.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>

#include "lab/values.h"
#include "text/strings.h"

namespace veltrin::lab {
namespace {

constexpr std::uint32_t kLeastMtu = 1280;  // what IPv6 asks of every link (RFC 8200 section 5)
constexpr std::uint32_t kMostMtu = 65535;
constexpr std::size_t kMostAddresses = 16;  // of one node
constexpr std::size_t kMostHops = 64;       // the way that a new packet can go at the longest

[[noreturn]] void fail(std::size_t line, const std::string& message) {
  throw ScenarioError("line " + std::to_string(line) + ": " + message);
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

// Reads a text line by line, then ties together what the lines name.
class Reader {
 public:
  Scenario read(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = text.find('\n');
      ++line_;
      readLine(text.substr(0, end));
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    finishSection();
    finish();
    return std::move(scenario_);
  }

 private:
  enum class Section { None, Internet, Node, Change, Web, Installation };

  // What stands in the file about a node, beside the node's values.
  struct Origin {
    std::size_t line = 0;
    std::size_t viaLine = 0;
    std::vector<std::vector<std::string>> via;  // the names at each hop
  };

  void readLine(std::string_view raw) {
    if (raw.ends_with('\r')) raw.remove_suffix(1);
    const std::string line = Trim(raw);
    if (line.empty() || line[0] == ';' || line[0] == '#') return;
    if (line[0] == '[') {
      finishSection();
      openSection(line);
      return;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) {
      fail(line_, "expected [SECTION] or KEY = VALUE, found " + quoted(line));
    }
    readPair(Trim(std::string_view(line).substr(0, equals)),
             Trim(std::string_view(line).substr(equals + 1)));
  }

  void openSection(const std::string& line) {
    sectionLine_ = line_;
    keys_.clear();
    if (line == "[internet]") return openOnce(Section::Internet, internetSeen_, line);
    if (line == "[installation]") return openOnce(Section::Installation, installationSeen_, line);
    const bool closed = line.ends_with(']');
    const std::size_t blank = line.find(' ');
    const std::string kind = line.substr(0, blank);
    if (!closed || blank == std::string::npos ||
        (kind != "[host" && kind != "[router" && kind != "[at" && kind != "[web")) {
      fail(line_,
           "expected [internet], [host NAME], [router NAME], [at TIME NAME], [web NAME] or "
           "[installation], found " +
               quoted(line));
    }
    const std::string words = Trim(std::string_view(line).substr(blank, line.size() - blank - 1));
    if (kind == "[at") {
      openChange(words);
    } else if (kind == "[web") {
      openWeb(words);
    } else {
      openNode(words, kind == "[router");
    }
  }

  void openOnce(Section section, bool& seen, const std::string& line) {
    if (seen) fail(line_, "a second section " + line);
    seen = true;
    section_ = section;
  }

  void openWeb(const std::string& name) {
    current_ = nodeAbove(name);
    if (current().router) fail(line_, quoted(name) + " is a router, which serves nothing");
    if (current().web) fail(line_, "a second section [web " + name + "]");
    current().web.emplace();
    section_ = Section::Web;
  }

  std::size_t nodeAbove(const std::string& name) const {
    const auto known = byName_.find(LCase(name));
    if (known == byName_.end()) fail(line_, "no section of " + quoted(name) + " above this one");
    return known->second;
  }

  void openNode(const std::string& name, bool router) {
    attempt([&] { checkName(name); });
    const auto [known, fresh] = byName_.try_emplace(LCase(name), scenario_.nodes.size());
    if (!fresh) {
      fail(line_, quoted(name) + " stands already in line " +
                      std::to_string(origins_[known->second].line));
    }
    Node node;
    node.name = name;
    node.router = router;
    scenario_.nodes.push_back(node);
    origins_.push_back({line_, line_, {}});
    section_ = Section::Node;
    current_ = scenario_.nodes.size() - 1;
  }

  // "20 s one.example"
  void openChange(const std::string& words) {
    const std::size_t blank = std::min(words.rfind(' '), words.size());
    const std::string name = Trim(std::string_view(words).substr(blank));
    Change change;
    attempt([&] { change.at = readDuration(Trim(words.substr(0, blank)), kLatestMoment); });
    current_ = nodeAbove(name);
    auto& changes = current().changes;
    if (!changes.empty() && changes.back().at >= change.at) {
      fail(line_, "the changes of " + quoted(name) + " are not in the order of their times");
    }
    change.behaviour = changes.empty() ? current().atFirst : changes.back().behaviour;
    changes.push_back(change);
    section_ = Section::Change;
  }

  Node& current() { return scenario_.nodes[current_]; }
  const Node& current() const { return scenario_.nodes[current_]; }

  void readPair(const std::string& key, const std::string& value) {
    if (section_ == Section::None) fail(line_, "a key before the first section");
    if (!keys_.insert(key).second) fail(line_, quoted(key) + " stands twice in this section");
    bool known = false;
    attempt([&] { known = take(key, value); });
    if (!known) fail(line_, quoted(key) + " is no key here; known are " + keysHere());
  }

  bool take(const std::string& key, const std::string& value) {
    if (section_ == Section::Internet) return takeInternet(key, value);
    if (section_ == Section::Web) return setWeb(*current().web, key, value);
    if (section_ == Section::Installation) {
      scenario_.installation.push_back({key, value});
      return true;
    }
    Node& node = current();
    if (section_ == Section::Change) {
      return setBehaviour(node.changes.back().behaviour, node.router, key, value);
    }
    return takeNode(node, key, value) || setBehaviour(node.atFirst, node.router, key, value);
  }

  std::string keysHere() const {
    if (section_ == Section::Internet) return "title, machine, gateway, dns, seed, mtu, public";
    if (section_ == Section::Web) return webKeys();
    std::string behaviour = behaviourKeys(current().router);
    if (section_ == Section::Change) return behaviour;
    return (current().router ? "address, nameless, " : "address, nameless, via, ") + behaviour;
  }

  // Runs a reading of values and says in which line it failed.
  template <typename Reading>
  void attempt(Reading reading) const {
    try {
      reading();
    } catch (const std::invalid_argument& error) {
      fail(line_, error.what());
    }
  }

  bool takeInternet(const std::string& key, const std::string& value) {
    if (key == "title") {
      scenario_.title = value;
    } else if (key == "machine") {
      scenario_.machine = readMachineAddresses(value);
      for (const auto& machine : scenario_.machine) claim(machine.address);
    } else if (key == "gateway") {
      scenario_.gateways = readAddresses(value);
      checkGateways();
    } else if (key == "dns") {
      scenario_.dns = readAddresses(value);
    } else if (key == "seed") {
      scenario_.seed = readNumber(value, 0, UINT64_MAX);
    } else if (key == "mtu") {
      scenario_.mtu = static_cast<std::uint32_t>(readNumber(value, kLeastMtu, kMostMtu));
    } else if (key == "public") {
      publicLine_ = line_;
      publicNames_ = splitList(value);
    } else {
      return false;
    }
    return true;
  }

  bool takeNode(Node& node, const std::string& key, const std::string& value) {
    if (key == "address") {
      node.addresses = readAddresses(value);
      if (node.addresses.size() > kMostAddresses) fail(line_, "more than 16 addresses");
      for (const IpAddress& address : node.addresses) claim(address);
    } else if (key == "nameless") {
      node.nameless = readYesNo(value);
    } else if (key == "via" && !node.router) {
      Origin& origin = origins_[current_];
      origin.viaLine = line_;
      for (const std::string& hop : splitList(value)) origin.via.push_back(splitList(hop, '|'));
    } else {
      return false;
    }
    return true;
  }

  // Nothing in the lab shares an address.
  void claim(const IpAddress& address) {
    const auto [known, fresh] = claimed_.try_emplace(address, line_);
    if (!fresh) {
      fail(line_, address.text() + " stands already in line " + std::to_string(known->second));
    }
  }

  void checkGateways() const {
    for (const Family family : {Family::V4, Family::V6}) {
      const auto ofFamily = [&](const IpAddress& each) { return each.family() == family; };
      if (std::count_if(scenario_.gateways.begin(), scenario_.gateways.end(), ofFamily) > 1) {
        fail(line_, "more than one gateway of a kind");
      }
    }
  }

  void finishSection() const {
    if (section_ == Section::Internet) {
      if (scenario_.machine.empty()) fail(sectionLine_, "[internet] lacks the key \"machine\"");
      if (scenario_.dns.empty()) fail(sectionLine_, "[internet] lacks the key \"dns\"");
    }
    if (section_ == Section::Web && current().web->files.empty()) {
      fail(sectionLine_, "[web " + current().name + "] lacks the key \"files\"");
    }
    if (section_ != Section::Node && section_ != Section::Change) return;
    const Node& node = current();
    if (node.addresses.empty())
      fail(sectionLine_, quoted(node.name) + " lacks the key \"address\"");
    try {
      checkBehaviour(section_ == Section::Node ? node.atFirst : node.changes.back().behaviour);
    } catch (const std::invalid_argument& error) {
      fail(sectionLine_, quoted(node.name) + ' ' + error.what());
    }
  }

  void finish() {
    if (!internetSeen_) fail(line_, "the file ends without a section [internet]");
    std::vector<bool> onAWay(scenario_.nodes.size());
    for (std::size_t host = 0; host < scenario_.nodes.size(); ++host) tieWay(host, onAWay);
    for (const std::string& name : publicNames_) {
      scenario_.publicHosts.push_back(findNode(name, false, publicLine_));
    }
  }

  // Turns the names of a host's way into positions, and gives each router on it
  // that has no way yet its own.
  void tieWay(std::size_t host, std::vector<bool>& onAWay) {
    const Origin& origin = origins_[host];
    if (origin.via.size() > kMostHops) fail(origin.viaLine, "more than 64 hops on the way");
    std::vector<std::vector<std::size_t>> way;
    for (const auto& names : origin.via) {
      std::vector<std::size_t> hop;
      for (const std::string& name : names) {
        const std::size_t router = findNode(name, true, origin.viaLine);
        if (!onAWay[router]) scenario_.nodes[router].via = wayOfTurn(way, hop.size());
        onAWay[router] = true;
        hop.push_back(router);
      }
      way.push_back(hop);
    }
    if (!scenario_.nodes[host].router) scenario_.nodes[host].via = way;
  }

  // The router, or else the host, that a line names.
  std::size_t findNode(const std::string& name, bool router, std::size_t line) const {
    const auto known = byName_.find(LCase(name));
    if (known == byName_.end() || scenario_.nodes[known->second].router != router) {
      fail(line,
           "no section [" + std::string(router ? "router " : "host ") + name + "] in this file");
    }
    return known->second;
  }

  // The one router at each hop that a packet of a turn passes.
  static std::vector<std::vector<std::size_t>> wayOfTurn(
      const std::vector<std::vector<std::size_t>>& way, std::size_t turn) {
    std::vector<std::vector<std::size_t>> passed;
    passed.reserve(way.size());
    for (const auto& hop : way) passed.push_back({hop[turn % hop.size()]});
    return passed;
  }

  Scenario scenario_;
  std::size_t line_ = 0;
  Section section_ = Section::None;
  std::size_t sectionLine_ = 0;
  std::size_t current_ = 0;  // position of the node that the section is about
  bool internetSeen_ = false;
  bool installationSeen_ = false;
  std::size_t publicLine_ = 0;
  std::vector<std::string> publicNames_;
  std::set<std::string> keys_;   // of the present section
  std::vector<Origin> origins_;  // one for each node
  std::map<std::string, std::size_t> byName_;
  std::map<IpAddress, std::size_t> claimed_;  // and the line that did
};

}  // namespace

const Behaviour& Node::behaviour(Time at) const {
  const auto next = std::find_if(changes.begin(), changes.end(),
                                 [&](const Change& each) { return each.at > at; });
  return next == changes.begin() ? atFirst : std::prev(next)->behaviour;
}

Scenario readScenario(std::string_view text) { return Reader().read(text); }

}  // namespace veltrin::lab

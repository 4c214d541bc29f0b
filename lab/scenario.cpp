#include "lab/scenario.h"

#include <algorithm>
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
constexpr std::size_t kMostVia = 64;        // the way that a new packet can go at the longest

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
  enum class Section { None, Internet, Node };

  // What stands in the file about a node, beside the node's values.
  struct Origin {
    std::size_t line = 0;
    std::size_t viaLine = 0;
    std::vector<std::string> via;
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
    if (line == "[internet]") {
      if (internetSeen_) fail(line_, "a second section [internet]");
      internetSeen_ = true;
      section_ = Section::Internet;
      return;
    }
    const bool host = line.starts_with("[host ");
    if (!line.ends_with(']') || (!host && !line.starts_with("[router "))) {
      fail(line_, "expected [internet], [host NAME] or [router NAME], found " + quoted(line));
    }
    section_ = Section::Node;
    openNode(Trim(std::string_view(line).substr(line.find(' '), line.size() - line.find(' ') - 1)),
             !host);
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
  }

  void readPair(const std::string& key, const std::string& value) {
    if (section_ == Section::None) fail(line_, "a key before the first section");
    if (!keys_.insert(key).second) fail(line_, quoted(key) + " stands twice in this section");
    bool known = false;
    attempt([&] {
      known = section_ == Section::Internet ? takeInternet(key, value) : takeNode(key, value);
    });
    if (known) return;
    if (section_ == Section::Internet) {
      fail(line_, "[internet] has no key " + quoted(key) +
                      "; it has title, machine, gateway, dns, seed and mtu");
    }
    fail(line_, (scenario_.nodes.back().router ? "a router has no key " : "a host has no key ") +
                    quoted(key) + "; it has address, delay, jitter, loss, loss-pattern, silent" +
                    (scenario_.nodes.back().router ? " and nameless" : ", nameless and via"));
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
    } else {
      return false;
    }
    return true;
  }

  bool takeNode(const std::string& key, const std::string& value) {
    Node& node = scenario_.nodes.back();
    if (key == "address") {
      node.addresses = readAddresses(value);
      if (node.addresses.size() > kMostAddresses) fail(line_, "more than 16 addresses");
      for (const IpAddress& address : node.addresses) claim(address);
    } else if (key == "delay") {
      node.delay = readDuration(value);
    } else if (key == "jitter") {
      node.jitter = readDuration(value);
    } else if (key == "loss") {
      node.loss = readPercentage(value);
    } else if (key == "loss-pattern") {
      node.loseEvery = readPattern(value);
    } else if (key == "silent") {
      node.silent = readYesNo(value);
    } else if (key == "nameless") {
      node.nameless = readYesNo(value);
    } else if (key == "via" && !node.router) {
      origins_.back().viaLine = line_;
      origins_.back().via = splitList(value);
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
    if (section_ != Section::Node) return;
    const Node& node = scenario_.nodes.back();
    if (node.addresses.empty())
      fail(sectionLine_, quoted(node.name) + " lacks the key \"address\"");
    if (node.jitter > node.delay) {
      fail(sectionLine_, quoted(node.name) + " has a jitter longer than its delay");
    }
    if (node.loss > 0 && node.loseEvery > 0) {
      fail(sectionLine_, quoted(node.name) + " has both loss and loss-pattern");
    }
  }

  void finish() {
    if (!internetSeen_) fail(line_, "the file ends without a section [internet]");
    std::vector<bool> onAWay(scenario_.nodes.size());
    for (std::size_t host = 0; host < scenario_.nodes.size(); ++host) tieWay(host, onAWay);
  }

  // Turns the names of a host's way into positions, and gives each router on it
  // that has no way yet its own.
  void tieWay(std::size_t host, std::vector<bool>& onAWay) {
    const Origin& origin = origins_[host];
    if (origin.via.size() > kMostVia) fail(origin.viaLine, "more than 64 routers on the way");
    std::vector<std::size_t> way;
    for (const std::string& name : origin.via) {
      const auto known = byName_.find(LCase(name));
      if (known == byName_.end() || !scenario_.nodes[known->second].router) {
        fail(origin.viaLine, "no section [router " + name + "] in this file");
      }
      const std::size_t router = known->second;
      if (!onAWay[router]) scenario_.nodes[router].via = way;
      onAWay[router] = true;
      way.push_back(router);
    }
    if (!scenario_.nodes[host].router) scenario_.nodes[host].via = way;
  }

  Scenario scenario_;
  std::size_t line_ = 0;
  Section section_ = Section::None;
  std::size_t sectionLine_ = 0;
  bool internetSeen_ = false;
  std::set<std::string> keys_;   // of the present section
  std::vector<Origin> origins_;  // one for each node
  std::map<std::string, std::size_t> byName_;
  std::map<IpAddress, std::size_t> claimed_;  // and the line that did
};

}  // namespace

Scenario readScenario(std::string_view text) { return Reader().read(text); }

}  // namespace veltrin::lab

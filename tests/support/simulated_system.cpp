// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulated_system.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr std::int32_t kInvalidHandle = static_cast<std::int32_t>(0xC0000BBC);  // PDH

}  // namespace

bool SimulatedShell::execute(const std::string& verb, const std::string& file,
                             const std::string& parameters, const std::string& folder, int show) {
  note("execute " + file);
  executions.push_back({verb, file, parameters, folder, show});
  return !refuse;
}

void SimulatedShell::run(const std::string& commandLine, int show) {
  note("run " + commandLine);
  runs.push_back({commandLine, show});
  if (refuse) throw StatementFailed("File not found", kFileNotFound);
}

std::string SimulatedEnvironment::variable(const std::string& name) const {
  note("variable " + name);
  for (const auto& [key, value] : variables) {
    if (equalIgnoringCase(key, name)) return value;
  }
  return {};
}

std::int32_t SimulatedCounters::PdhOpenQuery(Query& query) {
  note("open counters");
  if (openStatus == 0) query = 1;
  return openStatus;
}

std::int32_t SimulatedCounters::PdhEnumObjectItemsA(
    const std::string& machine, const std::string& object, std::string& counters,
    std::uint32_t& countersLength, std::string& instanceNames, std::uint32_t& instancesLength,
    std::uint32_t detail, std::uint32_t flags) {
  note("enumerate " + object);
  enumerations.push_back(machine + "|" + object + "|" + std::to_string(detail) + "|" +
                         std::to_string(flags));
  enumBuffers = {counters.size(), countersLength, instanceNames.size(), instancesLength};
  if (enumStatus != 0) return enumStatus;
  const auto fill = [](std::string& buffer, std::uint32_t& length,
                       const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) list += name + '\0';
    list += '\0';
    buffer.replace(0, list.size(), list);
    length = static_cast<std::uint32_t>(list.size());
  };
  fill(counters, countersLength, {"Bytes Total/sec"});
  fill(instanceNames, instancesLength, instances);
  return 0;
}

std::int32_t SimulatedCounters::PdhVbAddCounter(Query /*query*/, const std::string& path,
                                                Counter& counter) {
  note("add " + path);
  if (onCall) onCall();
  paths.push_back(path);
  if (addStatus == 0) counter = static_cast<Counter>(paths.size());
  return addStatus;
}

std::int32_t SimulatedCounters::PdhCollectQueryData(Query query) {
  ++collections;
  note("collect");
  if (onCall) onCall();
  return query == 1 ? 0 : kInvalidHandle;
}

double SimulatedCounters::PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) {
  status = kInvalidHandle;
  if (onCall) onCall();
  if (counter < 1 || counter > static_cast<Counter>(paths.size())) return 0;
  status = 0;
  const std::string& path = paths[static_cast<std::size_t>(counter - 1)];
  note("value " + path);
  return values[path];
}

class SimulatedWmi::Answer : public WmiObjects {
 public:
  Answer(SimulatedWmi& wmi, std::string query)
      : wmi_(wmi), query_(std::move(query)), objects_(wmi.answers.at(query_)) {}

  // Nobody may go on behind the end, or behind a failure.
  std::optional<WmiObject> next() override {
    if (ended_) throw std::logic_error("The answer is over: " + query_);
    const auto broken = wmi_.breaks.find(query_);
    if (broken != wmi_.breaks.end() && next_ >= broken->second) {
      ended_ = true;
      throw StatementFailed("The answer breaks off", kInvalidProcedureCall);
    }
    if (next_ >= objects_.size()) {
      ended_ = true;
      return std::nullopt;
    }
    ++wmi_.taken[query_];
    return objects_[next_++];
  }

 private:
  SimulatedWmi& wmi_;
  std::string query_;
  std::vector<WmiObject> objects_;
  std::size_t next_ = 0;
  bool ended_ = false;
};

class SimulatedWmi::Service : public WmiService {
 public:
  Service(SimulatedWmi& wmi, std::string moniker) : wmi_(wmi), moniker_(std::move(moniker)) {}

  std::unique_ptr<WmiObjects> ExecQuery(const std::string& query,
                                        std::optional<std::int32_t> flags) override {
    wmi_.note("query " + query);
    wmi_.queries.push_back(query);
    wmi_.asked.push_back({moniker_, query, flags ? std::to_string(*flags) : "none"});
    if (!wmi_.answers.contains(query)) throw StatementFailed("No answer", kInvalidProcedureCall);
    return std::make_unique<Answer>(wmi_, query);
  }

 private:
  SimulatedWmi& wmi_;
  std::string moniker_;
};

std::unique_ptr<WmiService> SimulatedWmi::connect(const std::string& moniker) {
  note("connect " + moniker);
  if (silent.contains(moniker)) throw StatementFailed("No service", kInvalidProcedureCall);
  ++connections;
  return std::make_unique<Service>(*this, moniker);
}

int SimulatedIcmp::WSAStartup(std::uint16_t version, WSADATA& data) {
  note("WSAStartup " + std::to_string(version));
  data = startupData;
  if (startupResult == 0) ++layers;
  return startupResult;
}

int SimulatedIcmp::WSACleanup() {
  note("WSACleanup");
  if (cleanupResult == 0) --layers;
  return cleanupResult;
}

Icmp::Handle SimulatedIcmp::IcmpCreateFile() {
  note("IcmpCreateFile");
  ++openHandles;
  return ++last_;
}

std::uint32_t SimulatedIcmp::IcmpSendEcho(Handle handle, std::uint32_t address,
                                          const std::string& data, ICMP_ECHO_REPLY& reply,
                                          std::uint32_t replySize, std::uint32_t timeout) {
  note("IcmpSendEcho " + std::to_string(handle));
  constexpr std::uint32_t kUsualTime = 20;  // ms
  const Echo echo{loop_.milliseconds(), address, data, replySize, timeout};
  if (keepsEchoes) echoes.push_back(echo);
  const auto time = this->reply ? this->reply(echo) : kUsualTime;
  const bool answered = time && *time <= timeout;
  reply = {};
  reply.Address = address;
  reply.Status = answered ? kIpSuccess : kIpTimedOut;
  reply.RoundTripTime = time.value_or(kNoReplyTime);
  if (answered) reply.DataSize = static_cast<std::uint16_t>(data.size());
  if (answered) reply.Data = data;
  constexpr std::uint32_t kShortest = 1;  // ms that an echo takes at least
  loop_.passUntil(loop_.milliseconds() + std::clamp(time.value_or(timeout), kShortest, timeout));
  return answered ? 1 : 0;
}

bool SimulatedIcmp::IcmpCloseHandle(Handle handle) {
  note("IcmpCloseHandle " + std::to_string(handle));
  --openHandles;
  return true;
}

SimulatedTcpSocket::~SimulatedTcpSocket() { std::erase(network_.sockets, this); }

void SimulatedTcpSocket::connect(const std::string& host, std::uint16_t port,
                                 std::uint16_t localPort) {
  ++network_.uses_[this];
  network_.enter("connect " + host + " " + std::to_string(port) +
                 (localPort == 0 ? "" : " from " + std::to_string(localPort)));
  arrived_.clear();
  state_ = SocketState::Connecting;
  if (network_.onConnect) network_.onConnect(*this, port);
}

void SimulatedTcpSocket::listen(std::uint16_t localPort) {
  ++network_.uses_[this];
  network_.enter("listen " + std::to_string(localPort));
  arrived_.clear();
  state_ = SocketState::Listening;
}

void SimulatedTcpSocket::accept(std::intptr_t request) {
  network_.enter("accept " + std::to_string(request));
  state_ = SocketState::Connected;
}

void SimulatedTcpSocket::send(const std::string& bytes) {
  if (state_ != SocketState::Connected) {
    throw StatementFailed("No connection", kInvalidProcedureCall);
  }
  sent += bytes;
}

std::string SimulatedTcpSocket::receive() { return std::exchange(arrived_, {}); }

void SimulatedTcpSocket::close() {
  ++network_.uses_[this];
  network_.enter("close");
  arrived_.clear();
  state_ = SocketState::Closed;
}

void SimulatedTcpSocket::comeData(const std::string& bytes) {
  arrived_ += bytes;
  routines_.dataArrival();
}

void SimulatedTcpSocket::comeClosed() {
  state_ = SocketState::Closing;
  routines_.closed();
}

void SimulatedTcpSocket::comeRequest(std::intptr_t request) {
  routines_.connectionRequest(request);
}

void SimulatedSockets::later(std::int64_t delay, SimulatedTcpSocket& socket,
                             std::function<void(SimulatedTcpSocket&)> action) {
  const int use = uses_[&socket];
  // The wire does not wait for the program: only what the socket then tells does.
  loop_.after(delay, [this, &socket, use, action = std::move(action)] {
    const bool lives = std::find(sockets.begin(), sockets.end(), &socket) != sockets.end();
    if (lives && uses_[&socket] == use) action(socket);
  });
}

std::unique_ptr<TcpSocket> SimulatedSockets::makeTcpSocket(TcpSocket::Routines routines) {
  auto socket = std::make_unique<SimulatedTcpSocket>(*this, std::move(routines));
  sockets.push_back(socket.get());
  return socket;
}

std::string SimulatedSockets::localHostName() const {
  note("local host name");
  return hostName;
}

std::string SimulatedSockets::localAddress() const {
  note("local address");
  return address;
}

void SimulatedSockets::enter(const std::string& call) {
  note(call);
  calls.push_back(call);
  moments.push_back(loop_.milliseconds());
}

}  // namespace veltrin

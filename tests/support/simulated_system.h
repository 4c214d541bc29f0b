// SPDX-License-Identifier: GPL-3.0-or-later
// What else the simulated platform supplies: other programs, surroundings, counters,
// facts by query, echoes, and TCP sockets whose other side a test plays.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/counters.h"
#include "platform/environment.h"
#include "platform/icmp.h"
#include "platform/shell.h"
#include "platform/sockets.h"
#include "platform/wmi.h"
#include "support/journal.h"
#include "support/simulated_loop.h"

namespace veltrin {

class SimulatedShell : public Shell, public Journalled {
 public:
  struct Execution {
    std::string verb;
    std::string file;
    std::string parameters;
    std::string folder;
    int show = 0;
    friend bool operator==(const Execution&, const Execution&) = default;
  };
  struct Run {
    std::string commandLine;
    int show = 0;
    friend bool operator==(const Run&, const Run&) = default;
  };
  std::vector<Execution> executions;
  std::vector<Run> runs;
  bool refuse = false;  // no such program

  bool execute(const std::string& verb, const std::string& file, const std::string& parameters,
               const std::string& folder, int show) override;
  void run(const std::string& commandLine, int show) override;
};

class SimulatedEnvironment : public Environment, public Journalled {
 public:
  std::map<std::string, std::string> variables{{"windir", "C:\\Windows"},
                                               {"ProgramFiles", "C:\\Program Files"}};

  // Names are compared without case, as the system does it.
  std::string variable(const std::string& name) const override;
  std::string systemFolder() const override { return "C:\\Windows\\System32"; }
};

class SimulatedCounters : public Counters, public Journalled {
 public:
  std::int32_t openStatus = 0;
  std::int32_t addStatus = 0;
  std::vector<std::string> paths;  // of the added counters; a handle is the place from 1
  std::map<std::string, double> values;
  std::vector<std::string> instances;  // of every object
  std::int32_t enumStatus = 0;
  std::vector<std::string> enumerations;  // "machine|object|detail|flags"
  std::vector<std::size_t> enumBuffers;   // of the last one: each buffer and what it was told to be
  int collections = 0;

  // Called within each adding, collecting and reading of a counter.
  std::function<void()> onCall;

  std::int32_t PdhEnumObjectItemsA(const std::string& machine, const std::string& object,
                                   std::string& counters, std::uint32_t& countersLength,
                                   std::string& instanceNames, std::uint32_t& instancesLength,
                                   std::uint32_t detail, std::uint32_t flags) override;
  std::int32_t PdhOpenQuery(Query& query) override;
  std::int32_t PdhVbAddCounter(Query query, const std::string& path, Counter& counter) override;
  std::int32_t PdhCollectQueryData(Query query) override;
  double PdhVbGetDoubleCounterValue(Counter counter, std::int32_t& status) override;
};

class SimulatedWmi : public Wmi, public Journalled {
 public:
  std::map<std::string, std::vector<WmiObject>> answers;  // by query; others fail
  std::vector<std::string> queries;

  // The machines whose service does not answer, by moniker.
  std::set<std::string> silent;

  // Queries whose answers break off behind so many objects.
  std::map<std::string, std::size_t> breaks;

  // What was asked of the service: each query behind the moniker of its connection, and its
  // flags, "none" without.
  struct Asked {
    std::string moniker;
    std::string query;
    std::string flags;
    friend bool operator==(const Asked&, const Asked&) = default;
  };
  std::vector<Asked> asked;
  int connections = 0;

  // How many objects were taken of the answers to a query.
  std::map<std::string, std::size_t> taken;

  std::unique_ptr<WmiService> connect(const std::string& moniker) override;

 private:
  class Service;
  class Answer;
};

// Echoes whose replies a test scripts. The program waits for each as for a silent child.
class SimulatedIcmp : public Icmp, public Journalled {
 public:
  explicit SimulatedIcmp(SimulatedLoop& loop) : loop_(loop) {}

  struct Echo {
    std::int64_t moment = 0;  // ms
    std::uint32_t address = 0;
    std::string data;
    std::uint32_t replySize = 0;
    std::uint32_t timeout = 0;
  };
  std::vector<Echo> echoes;
  bool keepsEchoes = true;  // off for runs of a day

  // The round trip of the next echo in ms; nothing for no reply. Without it every echo
  // takes 20 ms.
  std::function<std::optional<std::uint32_t>(const Echo& echo)> reply;

  // What the socket layer answers.
  int startupResult = 0;
  WSADATA startupData{0x0101, 32767};
  int cleanupResult = 0;

  int openHandles = 0;
  int layers = 0;  // started and not ended

  int WSAStartup(std::uint16_t version, WSADATA& data) override;
  int WSACleanup() override;
  Handle IcmpCreateFile() override;
  std::uint32_t IcmpSendEcho(Handle handle, std::uint32_t address, const std::string& data,
                             ICMP_ECHO_REPLY& reply, std::uint32_t replySize,
                             std::uint32_t timeout) override;
  bool IcmpCloseHandle(Handle handle) override;

 private:
  SimulatedLoop& loop_;
  Handle last_ = 0;
};

class SimulatedSockets;

class SimulatedTcpSocket : public TcpSocket {
 public:
  SimulatedTcpSocket(SimulatedSockets& network, Routines routines)
      : network_(network), routines_(std::move(routines)) {}
  ~SimulatedTcpSocket() override;

  SocketState state() const override { return state_; }
  void connect(const std::string& host, std::uint16_t port, std::uint16_t localPort) override;
  void listen(std::uint16_t localPort) override;
  void accept(std::intptr_t request) override;
  void send(const std::string& bytes) override;
  std::string receive() override;
  void close() override;

  // What the other side does, called by a test while the socket lives.
  void comeConnected() { state_ = SocketState::Connected; }
  void comeError() { state_ = SocketState::Error; }
  void comeData(const std::string& bytes);
  void comeClosed();
  void comeRequest(std::intptr_t request);

  std::string sent;

 private:
  SimulatedSockets& network_;
  Routines routines_;
  SocketState state_ = SocketState::Closed;
  std::string arrived_;
};

class SimulatedSockets : public Sockets, public Journalled {
 public:
  explicit SimulatedSockets(SimulatedLoop& loop) : loop_(loop) {}

  std::string hostName = "MYPC";
  std::string address = "192.0.2.20";

  // Everything that was asked of sockets, in order: "connect HOST PORT [from PORT]", "listen PORT",
  // "accept NUMBER", "close".
  std::vector<std::string> calls;
  std::vector<std::int64_t> moments;  // of the calls, ms

  // Plays the other side of each connection that is tried; without one nobody answers.
  // What it scripts on the loop has to go through `later`.
  std::function<void(SimulatedTcpSocket& socket, std::uint16_t port)> onConnect;

  // Does something to the socket after a time in ms, if it has done nothing else since.
  void later(std::int64_t delay, SimulatedTcpSocket& socket,
             std::function<void(SimulatedTcpSocket&)> action);

  std::unique_ptr<TcpSocket> makeTcpSocket(TcpSocket::Routines routines) override;
  std::string localHostName() const override;
  std::string localAddress() const override;

  // The sockets that live.
  std::vector<SimulatedTcpSocket*> sockets;

 private:
  friend class SimulatedTcpSocket;
  void enter(const std::string& call);

  SimulatedLoop& loop_;
  std::map<const SimulatedTcpSocket*, int> uses_;  // one more with each connect, listen, close
};

}  // namespace veltrin

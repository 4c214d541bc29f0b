// SPDX-License-Identifier: GPL-3.0-or-later
// What a service manager and the server do for each other.
#include <array>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "running_endpoint.h"
#include "tools/update_endpoint/listeners.h"
#include "tools/update_endpoint/service_manager.h"

namespace veltrin::endpoint {
namespace {

// Listening sockets as a service manager has them.
class Manager {
 public:
  explicit Manager(std::size_t count)
      : listeners_(
            openListeners({*Address::parse("127.0.0.1")}, std::vector<std::uint16_t>(count, 0))) {}

  Surroundings surroundings() const {
    Surroundings result;
    for (const Listener& listener : listeners_) {
      result.handedOver.push_back(listener.socket.get());
    }
    return result;
  }

  Place place(std::size_t at) const {
    const std::string name = nameOf(listeners_[at]);
    const std::size_t colon = name.find(':');
    return {name.substr(0, colon), static_cast<std::uint16_t>(std::stoi(name.substr(colon + 1)))};
  }

 private:
  std::vector<Listener> listeners_;
};

TEST(HandedOverSockets, AreServedOn) {
  const Manager manager(2);
  RunningEndpoint endpoint({"1.03"}, manager.surroundings());
  EXPECT_EQ(Caller(manager.place(0)).listen().text, "1.03127.0.0.1");
  EXPECT_EQ(Caller(manager.place(1)).listen().text, "1.03127.0.0.1");
}

TEST(HandedOverSockets, ArePrintedLikeOthers) {
  const Manager manager(2);
  RunningEndpoint endpoint({"1.03"}, manager.surroundings());
  const std::vector<Place> places = endpoint.places(2);
  EXPECT_EQ(places[0].port, manager.place(0).port);
  EXPECT_EQ(places[1].port, manager.place(1).port);
}

TEST(HandedOverSockets, ForAnotherProcessAreLeftAlone) {
  const Manager manager(1);
  Surroundings surroundings = manager.surroundings();
  surroundings.forAnother = true;
  RunningEndpoint endpoint(onLoopback(), surroundings);
  EXPECT_NE(endpoint.place().port, manager.place(0).port);
}

TEST(HandedOverSockets, CannotStandBesideChosenOnes) {
  const Manager manager(1);
  RunningEndpoint endpoint(onLoopback(), manager.surroundings());
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: --ports and --listen cannot stand beside sockets that are handed "
            "over.\n\"update_endpoint --help\" tells what it understands.\n");
  EXPECT_EQ(endpoint.exitCode(), 2);
}

TEST(HandedOverSockets, ThatDoNotListenAreRefused) {
  const Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  Surroundings surroundings;
  surroundings.handedOver = {socket.get()};
  RunningEndpoint endpoint({"1.03"}, surroundings);
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: Descriptor 3 of the service manager is no listening TCP socket.\n");
  EXPECT_EQ(endpoint.exitCode(), 1);
}

TEST(HandedOverSockets, OfAnotherKindAreRefused) {
  const Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  Surroundings surroundings;
  surroundings.handedOver = {socket.get()};
  RunningEndpoint endpoint({"1.03"}, surroundings);
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: Descriptor 3 of the service manager is no listening TCP socket.\n");
}

TEST(HandedOverSockets, KeepWhoWaitsForTheNextServer) {
  const Manager manager(1);
  std::vector<Caller> callers;
  {
    RunningEndpoint endpoint({"--most-per-address", "200", "1.03"}, manager.surroundings());
    endpoint.place();
    endpoint.freeze();
    for (int at = 0; at < 150; ++at) callers.emplace_back(manager.place(0));
    endpoint.send(SIGTERM);
    endpoint.thaw();
    EXPECT_EQ(endpoint.exitCode(), 0);
  }
  RunningEndpoint next({"--most-per-address", "200", "1.04"}, manager.surroundings());
  std::size_t ofTheNext = 0;
  for (Caller& caller : callers) {
    const std::string text = caller.listen().text;
    ofTheNext += text == "1.04127.0.0.1" ? 1 : 0;
    EXPECT_TRUE(text == "1.03127.0.0.1" || text == "1.04127.0.0.1") << text;
  }
  EXPECT_GT(ofTheNext, 0U);
}

TEST(UnreadOutput, IsNoReasonNotToServe) {
  const Manager manager(1);
  Surroundings surroundings = manager.surroundings();
  surroundings.unread = true;
  RunningEndpoint endpoint({"1.03"}, surroundings);
  EXPECT_EQ(Caller(manager.place(0)).listen().text, "1.03127.0.0.1");
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.exitCode(), 0);
}

// A socket on which a service manager hears of its services.
class Ear {
 public:
  explicit Ear(const std::string& name) : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    const auto place = notifyAddressOf(name);
    const auto* const pointer = reinterpret_cast<const sockaddr*>(&place->address);
    EXPECT_EQ(bind(socket_.get(), pointer, place->length), 0) << std::strerror(errno);
    const timeval minute{60, 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &minute, sizeof(minute));
  }

  std::string next() {
    std::array<char, 256> piece{};
    const ssize_t length = recv(socket_.get(), piece.data(), piece.size(), 0);
    return length < 0 ? "nothing" : std::string(piece.data(), static_cast<std::size_t>(length));
  }

 private:
  Descriptor socket_;
};

std::string uniqueName() { return "veltrin-endpoint-" + std::to_string(getpid()); }

Surroundings withEar(const std::string& name) {
  Surroundings surroundings;
  surroundings.variables = {{"NOTIFY_SOCKET", name}};
  return surroundings;
}

TEST(ServiceManager, IsToldThatCallersMayCome) {
  Ear ear("@" + uniqueName());
  RunningEndpoint endpoint(onLoopback(), withEar("@" + uniqueName()));
  EXPECT_EQ(ear.next(), "READY=1");
  EXPECT_EQ(Caller(endpoint.place()).listen().text, "1.03127.0.0.1");
}

TEST(ServiceManager, IsToldThatTheServerEnds) {
  Ear ear("@" + uniqueName());
  RunningEndpoint endpoint(onLoopback(), withEar("@" + uniqueName()));
  endpoint.place();
  endpoint.send(SIGTERM);
  EXPECT_EQ(ear.next(), "READY=1");
  EXPECT_EQ(ear.next(), "STOPPING=1");
}

TEST(ServiceManager, MayListenAtAPath) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / uniqueName();
  {
    Ear ear(path);
    RunningEndpoint endpoint(onLoopback(), withEar(path));
    EXPECT_EQ(ear.next(), "READY=1");
  }
  std::filesystem::remove(path);
}

TEST(ServiceManager, WhoCannotBeToldIsNoReasonNotToServe) {
  RunningEndpoint endpoint(onLoopback(), withEar("/nowhere/at/all"));
  EXPECT_EQ(Caller(endpoint.place()).listen().text, "1.03127.0.0.1");
  endpoint.send(SIGTERM);
  EXPECT_EQ(endpoint.errors(),
            "update_endpoint: The service manager cannot be told READY=1.\n"
            "update_endpoint: The service manager cannot be told STOPPING=1.\n");
}

}  // namespace
}  // namespace veltrin::endpoint

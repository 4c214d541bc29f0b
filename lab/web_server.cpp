// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/web_server.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <list>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <poll.h>
#include <span>
#include <string>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/socket.h>

#include "lab/clock.h"
#include "lab/http.h"
#include "lab/pace.h"
#include "lab/web_pattern.h"

namespace veltrin::lab {
namespace {

using std::chrono::seconds;

// More clients wait until one of these has gone.
constexpr std::size_t kMostClients = 64;

// A client that says or takes nothing for so long is let go.
constexpr Time kPatience = seconds(30);

// How long the server waits for a client to close an answered connection: who closes
// first would drop bytes that are still on their way.
constexpr Time kFarewell = seconds(5);

constexpr std::size_t kBlock = 16384;

// One connection, from its first byte to its last.
class Client {
 public:
  Client(Descriptor socket, const WebSite& site, Time now)
      : socket_(std::move(socket)), site_(site), lastSign_(now) {}

  // What it waits for: events, or a moment to come.
  pollfd waitsFor(Time now) {
    short events = POLLIN;
    if (state_ == State::Answering) events = mayWrite(now) ? POLLOUT : short{0};
    return {socket_.get(), events, 0};
  }
  Time wakeUp(Time now) const {
    if (state_ == State::Answering && headSent_ == answer_.head.size() && ready_ > now) {
      return std::min(ready_, deadline());
    }
    return deadline();
  }

  // Goes on as far as it can without waiting. False when the connection is over.
  bool goOn(short events, Time now) {
    if ((events & (POLLERR | POLLHUP | POLLNVAL)) != 0 || now >= deadline()) return false;
    if (state_ == State::Answering) return mayWrite(now) ? write(now) : true;
    return (events & POLLIN) == 0 || read(now);
  }

 private:
  enum class State { Asking, Answering, Leaving };

  // A pause of the server's own is no fault of the client.
  Time deadline() const {
    return std::max(lastSign_, ready_) + (state_ == State::Leaving ? kFarewell : kPatience);
  }

  bool mayWrite(Time now) const { return headSent_ < answer_.head.size() || ready_ <= now; }

  bool read(Time now) {
    std::array<char, 4096> buffer{};
    const ssize_t length = recv(socket_.get(), buffer.data(), buffer.size(), 0);
    if (length < 0) return errno == EAGAIN || errno == EINTR;
    if (length == 0) return false;
    if (state_ == State::Leaving) return true;
    lastSign_ = now;
    request_.append(buffer.data(), static_cast<std::size_t>(length));
    const std::size_t end = request_.find("\r\n\r\n");
    if (end != std::string::npos) {
      begin(answerTo(std::string_view(request_).substr(0, end), site_, std::time(nullptr)));
    } else if (request_.size() > kLongestHead) {
      begin(answerToLongHead(std::time(nullptr)));
    }
    return true;
  }

  void begin(WebAnswer answer) {
    answer_ = std::move(answer);
    state_ = State::Answering;
  }

  bool write(Time now) {
    if (headSent_ < answer_.head.size()) return writeHead(now);
    if (bodySent_ == answer_.body) return leave(now);
    return writeBody(now);
  }

  bool writeHead(Time now) {
    const auto rest = std::string_view(answer_.head).substr(headSent_);
    const auto sent = put({reinterpret_cast<const std::uint8_t*>(rest.data()), rest.size()}, now);
    if (!sent) return false;
    headSent_ += *sent;
    if (headSent_ == answer_.head.size()) pace_.emplace(site_, now);
    return true;
  }

  bool writeBody(Time now) {
    const std::uint64_t allowed =
        std::min({pace_->allowed(now), answer_.body - bodySent_, std::uint64_t{kBlock}});
    if (allowed == 0) {
      ready_ = pace_->next(now);
      return true;
    }
    std::array<std::uint8_t, kBlock> block{};
    for (std::uint64_t at = 0; at < allowed; ++at) block[at] = webByte(bodySent_ + at);
    const auto sent = put(std::span(block).first(allowed), now);
    if (!sent) return false;
    bodySent_ += *sent;
    pace_->sent(*sent, now);
    return true;
  }

  // How many bytes the system took; nothing when the client has gone.
  std::optional<std::size_t> put(std::span<const std::uint8_t> bytes, Time now) {
    const ssize_t sent = send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0) {
      return errno == EAGAIN || errno == EINTR ? std::optional<std::size_t>(0) : std::nullopt;
    }
    lastSign_ = now;
    return static_cast<std::size_t>(sent);
  }

  bool leave(Time now) {
    state_ = State::Leaving;
    lastSign_ = now;
    return shutdown(socket_.get(), SHUT_WR) == 0;
  }

  Descriptor socket_;
  const WebSite& site_;
  State state_ = State::Asking;
  Time lastSign_;  // when the client last said or took something
  std::string request_;
  WebAnswer answer_;
  std::size_t headSent_ = 0;
  std::uint64_t bodySent_ = 0;
  std::optional<Pace> pace_;
  Time ready_{};  // when more may go out
};

// The work of the thread.
class Service {
 public:
  Service(const std::vector<WebDoor>& doors, int end) : doors_(doors), end_(end) {}

  void run() {
    // Bytes are to go out at their moment.
    prctl(PR_SET_TIMERSLACK, 1UL);
    while (true) {
      const std::vector<pollfd> sources = wait();
      if (sources[0].revents != 0) return;
      letGoOn(std::span(sources).subspan(1 + doors_.size()));
      for (std::size_t door = 0; door < doors_.size(); ++door) {
        if (sources[1 + door].revents != 0) let(doors_[door]);
      }
    }
  }

 private:
  // The end, the doors and the clients, with what has come from each.
  std::vector<pollfd> wait() {
    const Time present = now();
    std::vector<pollfd> sources{{end_, POLLIN, 0}};
    const short doors = clients_.size() < kMostClients ? POLLIN : short{0};
    for (const WebDoor& door : doors_) sources.push_back({door.listener.get(), doors, 0});
    std::optional<Time> wakeUp;
    for (Client& client : clients_) {
      sources.push_back(client.waitsFor(present));
      wakeUp = std::min(wakeUp.value_or(Time::max()), client.wakeUp(present));
    }
    const timespec limit = timespecOf(std::max(wakeUp.value_or(present) - present, Time::zero()));
    if (ppoll(sources.data(), sources.size(), wakeUp ? &limit : nullptr, nullptr) < 0) {
      for (pollfd& source : sources) source.revents = 0;
    }
    return sources;
  }

  void letGoOn(std::span<const pollfd> sources) {
    const Time present = now();
    auto source = sources.begin();
    for (auto client = clients_.begin(); client != clients_.end(); ++source) {
      client = client->goOn(source->revents, present) ? std::next(client) : clients_.erase(client);
    }
  }

  void let(const WebDoor& door) {
    Descriptor socket(accept4(door.listener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (socket.get() < 0) return;
    // Small pieces go at their moment instead of being gathered.
    const int on = 1;
    setsockopt(socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on));
    clients_.emplace_back(std::move(socket), door.site, now());
  }

  const std::vector<WebDoor>& doors_;
  int end_;
  std::list<Client> clients_;
};

}  // namespace

WebServer::WebServer(std::vector<WebDoor> doors)
    : doors_(std::move(doors)), end_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (end_.get() < 0) failWithErrno("cannot make an event");
  thread_ = std::thread([this] { Service(doors_, end_.get()).run(); });
}

WebServer::~WebServer() {
  eventfd_write(end_.get(), 1);
  thread_.join();
}

}  // namespace veltrin::lab

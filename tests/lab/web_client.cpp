// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a file of a web host and tells in one line what came, and when:
//   web_client METHOD HOST PORT PATH [LEAVE-AFTER]
// With a number of bytes at the end it goes away as soon as it has read so many.
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <netdb.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

#include "lab/web_pattern.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

// A connected socket; -1 when there is none to be had.
int connectTo(const char* host, const char* port) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(host, port, &hints, &found) != 0) return -1;
  int connected = -1;
  for (const addrinfo* at = found; at != nullptr && connected < 0; at = at->ai_next) {
    const int attempt = socket(at->ai_family, at->ai_socktype, at->ai_protocol);
    if (attempt < 0) continue;
    if (connect(attempt, at->ai_addr, at->ai_addrlen) == 0) {
      connected = attempt;
    } else {
      close(attempt);
    }
  }
  freeaddrinfo(found);
  return connected;
}

// What has come of an answer.
class Answer {
 public:
  void take(std::string_view bytes, double moment) {
    if (!headEnded_) {
      head_ += bytes;
      const std::size_t end = head_.find("\r\n\r\n");
      if (end == std::string::npos) return;
      headEnded_ = true;
      lastMoment_ = begin_ = moment;
      const std::string rest = head_.substr(end + 4);
      head_.resize(end);
      if (!rest.empty()) takeBody(rest, moment);
      return;
    }
    takeBody(bytes, moment);
  }

  std::uint64_t body() const { return body_; }

  void print(double connect) const {
    const std::size_t length = head_.find("Content-Length: ");
    std::printf(
        "status %s length %s body %llu right %s connect %.1f head %.1f time %.1f pause %.1f at "
        "%llu\n",
        head_.substr(9, 3).c_str(),
        length == std::string::npos
            ? "-"
            : head_.substr(length + 16, head_.find('\r', length) - length - 16).c_str(),
        static_cast<unsigned long long>(body_), right_ ? "yes" : "no", connect, begin_,
        lastMoment_ - begin_, pause_, static_cast<unsigned long long>(pauseAt_));
  }

 private:
  void takeBody(std::string_view bytes, double moment) {
    if (moment - lastMoment_ > pause_) {
      pause_ = moment - lastMoment_;
      pauseAt_ = body_;
    }
    lastMoment_ = moment;
    for (const char byte : bytes) {
      right_ = right_ && static_cast<std::uint8_t>(byte) == veltrin::lab::webByte(body_);
      ++body_;
    }
  }

  std::string head_;
  bool headEnded_ = false;
  std::uint64_t body_ = 0;
  bool right_ = true;
  double begin_ = 0;       // ms, when the head had come
  double lastMoment_ = 0;  // ms, when the last of the body came
  double pause_ = 0;       // the longest in the body, ms
  std::uint64_t pauseAt_ = 0;
};

int read(int socket, const std::string& request, std::uint64_t leaveAfter, double connect) {
  const auto begin = Clock::now();
  if (send(socket, request.data(), request.size(), MSG_NOSIGNAL) < 0) return 1;
  Answer answer;
  std::array<char, 65536> buffer{};
  while (answer.body() < leaveAfter) {
    const ssize_t length = recv(socket, buffer.data(), buffer.size(), 0);
    if (length < 0) return 1;
    if (length == 0) break;
    answer.take({buffer.data(), static_cast<std::size_t>(length)}, millisecondsSince(begin));
  }
  answer.print(connect);
  return 0;
}

}  // namespace

int main(int count, char** words) {
  if (count < 5) return 2;
  const auto begin = Clock::now();
  const int socket = connectTo(words[2], words[3]);
  if (socket < 0) {
    std::puts("no connection");
    return 1;
  }
  const std::string request = std::string(words[1]) + ' ' + words[4] +
                              " HTTP/1.1\r\nHost: " + words[2] + "\r\nConnection: close\r\n\r\n";
  const std::uint64_t leaveAfter = count > 5 ? std::strtoull(words[5], nullptr, 10) : UINT64_MAX;
  const int code = read(socket, request, leaveAfter, millisecondsSince(begin));
  close(socket);
  return code;
}

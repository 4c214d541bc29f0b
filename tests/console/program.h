// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a built console tool and reads it through pipes.
#pragma once

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "console/echo_socket.h"

namespace veltrin {

// A running tool whose output and errors come through pipes.
class Program {
 public:
  Program(const std::string& path, std::vector<std::string> arguments) {
    if (pipe2(output_.data(), O_CLOEXEC) != 0 || pipe2(errors_.data(), O_CLOEXEC) != 0) {
      ADD_FAILURE() << "no pipe";
      return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output_[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors_[1], STDERR_FILENO);
    arguments.insert(arguments.begin(), path);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
      pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    EXPECT_EQ(posix_spawn(&process_, path.c_str(), &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    closeEnd(output_[1]);
    closeEnd(errors_[1]);
  }

  ~Program() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    closeEnd(output_[0]);
    closeEnd(errors_[0]);
  }

  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The next piece of at most 256 bytes; empty at the end.
  std::string readPiece() { return readFrom(output_[0]); }

  // Adds pieces to `text` until it holds `wanted` or the output ends.
  void readUntil(const std::string& wanted, std::string& text) {
    while (text.find(wanted) == std::string::npos) {
      const std::string piece = readPiece();
      if (piece.empty()) {
        return;
      }
      text += piece;
    }
  }

  // The rest of the output; `last` is its last piece.
  std::string readRest(std::string* last = nullptr) {
    std::string text;
    for (std::string piece = readPiece(); !piece.empty(); piece = readPiece()) {
      text += piece;
      if (last != nullptr) {
        *last = piece;
      }
    }
    return text;
  }

  std::string readErrors() { return readFrom(errors_[0]); }

  void stopReading() { closeEnd(output_[0]); }

  // Waits for the end; the exit code, -1 when a signal ended it.
  int exitCode() {
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  pid_t process() const { return process_; }

 private:
  static std::string readFrom(int file) {
    std::array<char, 256> bytes{};
    const ssize_t size = read(file, bytes.data(), bytes.size());
    return std::string(bytes.data(), size < 0 ? 0 : static_cast<std::size_t>(size));
  }

  static void closeEnd(int& file) {
    if (file >= 0) {
      close(file);
      file = -1;
    }
  }

  pid_t process_ = 0;
  std::array<int, 2> output_{-1, -1};
  std::array<int, 2> errors_{-1, -1};
};

// Why this machine cannot send echoes to its loopback address; empty when it can.
inline std::string obstacle(const std::string& loopback) {
  EchoRequest request;
  request.destination = *Address::parse(loopback);
  EchoSocket socket;
  if (!socket.open(request.destination.family)) {
    return "this user may open no ICMP socket";
  }
  return socket.send(request) == 0 ? "" : "this machine has no " + loopback;
}

}  // namespace veltrin

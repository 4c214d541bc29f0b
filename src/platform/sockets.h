// SPDX-License-Identifier: GPL-3.0-or-later
// TCP sockets whose events come on the program's thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace veltrin {

// States of a socket, by the numbers of the socket control.
enum class SocketState {
  Closed = 0,
  Listening = 2,
  ResolvingHost = 4,
  Connecting = 6,
  Connected = 7,
  Closing = 8,  // the other side has closed
  Error = 9,
};

class TcpSocket {
 public:
  // What comes in, told from the pump and never from within a call of this class.
  struct Routines {
    std::function<void()> dataArrival;  // receive() has something
    std::function<void()> closed;       // the other side closed the connection
    std::function<void(std::intptr_t request)> connectionRequest;  // while listening
  };

  virtual ~TcpSocket() = default;

  virtual SocketState state() const = 0;

  // Gives up what the socket does and connects it to a host, by name or address,
  // without waiting. What comes of it is told by the state.
  virtual void connect(const std::string& host, std::uint16_t port, std::uint16_t localPort) = 0;

  // Gives up what the socket does and waits for callers. Port 0 is any free one.
  virtual void listen(std::uint16_t localPort) = 0;

  // Takes a caller's connection over. Throws StatementFailed for an unknown request.
  virtual void accept(std::intptr_t request) = 0;

  // Throws StatementFailed without a connection.
  virtual void send(const std::string& bytes) = 0;

  // Takes all bytes that have arrived and were not taken yet.
  virtual std::string receive() = 0;

  // Gives up what the socket does. What it has not received is lost.
  virtual void close() = 0;
};

class Sockets {
 public:
  virtual ~Sockets() = default;

  virtual std::unique_ptr<TcpSocket> makeTcpSocket(TcpSocket::Routines routines) = 0;

  // The name of this computer.
  virtual std::string localHostName() const = 0;

  // The address by which this computer reaches the Internet, IPv4 where there is one;
  // "127.0.0.1" without a network.
  virtual std::string localAddress() const = 0;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The TCP socket control of a window.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "forms/control.h"
#include "platform/platform.h"

namespace veltrin {

// Its events are events of the window: they come through the gate, in order, and none
// comes once the window is unloaded. An arrival that comes while the routine of an
// earlier one is on the stack is told when that has returned, if the connection still
// stands then, so that a talkative endpoint cannot pile routines upon each other.
class Winsock : public Control {
 public:
  explicit Winsock(Platform& platform);

  // 0 is any free port.
  int LocalPort = 0;
  std::string RemoteHost;
  int RemotePort = 0;

  std::string LocalHostName() const { return platform_.sockets.localHostName(); }
  std::string LocalIP() const { return platform_.sockets.localAddress(); }
  SocketState State() const { return socket_->state(); }

  // Gives up what the socket does and connects to RemoteHost without waiting.
  void Connect();

  // Gives up what the socket does and waits for callers on LocalPort.
  void Listen();

  void Accept(std::intptr_t requestID) { socket_->accept(requestID); }
  void Close();

  // Sends a text, of which the empty one is nothing. Throws StatementFailed without a
  // connection.
  void SendData(const std::string& text);

  // All that has arrived and was not taken yet.
  std::string GetData() { return socket_->receive(); }

  EventRoutine DataArrival;
  EventRoutine Closed;  // by the other side
  std::function<void(std::intptr_t requestID)> ConnectionRequest;

 private:
  class Arriving;

  void post(EventRoutine routine);
  void postOfThisUse(EventRoutine routine);
  void giveUp();
  void arrive();
  void postArrival();
  void deliverArrival();

  Platform& platform_;
  int use_ = 0;            // one more with each connecting, listening and closing
  bool arriving_ = false;  // the routine is on the stack
  bool untold_ = false;    // something has arrived that no routine was told of
  std::unique_ptr<TcpSocket> socket_;
};

}  // namespace veltrin

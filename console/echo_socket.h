// SPDX-License-Identifier: GPL-3.0-or-later
// One ICMP socket of Linux: opening, its options, and what it hands over.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <sys/socket.h>

#include "console/network.h"
#include "machine/address.h"

namespace veltrin {

// A socket that sends echo requests and receives the answers to them alone. Where
// the kernel lets the user have a datagram socket, the kernel chooses the id and
// sorts the answers; else it is a raw socket, which needs CAP_NET_RAW and sorts
// them by an id of its own.
class EchoSocket {
 public:
  EchoSocket() = default;
  ~EchoSocket() { close(); }
  EchoSocket(const EchoSocket&) = delete;
  EchoSocket& operator=(const EchoSocket&) = delete;

  // Opens the socket of a family. False when the system allows neither kind.
  bool open(Family family);

  void close();
  bool isOpen() const { return file_ >= 0; }
  int file() const { return file_; }

  // Turns on error reports, time stamps, hop counts and the filter of replies.
  void prepare();

  // Binds to a source address. False when it is none of this machine.
  bool bindTo(const Address& source);

  // Sends a request with the header settings it asks for; an errno, 0 for sent.
  int send(const EchoRequest& request);

  // The next answer that is already there.
  enum class Reading {
    Taken,    // an answer was stored
    Ignored,  // something else was there and is gone now
    Nothing,  // nothing was there
    Error,    // the error queue has something to tell
  };
  Reading readReply(Incoming& incoming);
  Reading readError(Incoming& incoming);

 private:
  void setNumber(int level, int option, int value) const;
  void setOptions(const Bytes& options) const;
  void applySettings(const EchoRequest& request);
  bool isOurs(const EchoMessage& echo) const { return !raw_ || echo.id == id_; }
  void filterReplies() const;

  Family family_ = Family::IPv4;
  int file_ = -1;
  bool raw_ = false;
  std::uint16_t id_ = 0;
  // Header settings that the socket has; nothing before the first echo.
  std::optional<EchoRequest> applied_;
};

}  // namespace veltrin

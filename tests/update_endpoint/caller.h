// SPDX-License-Identifier: GPL-3.0-or-later
// A caller of the endpoint, played by a test with a socket of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/update_endpoint/descriptor.h"

namespace veltrin::endpoint {

// Where an endpoint listens.
struct Place {
  std::string address;
  std::uint16_t port = 0;
};

// How a connection ended for the caller.
enum class Ending {
  Closed,   // in order, after all that was sent
  Reset,    // by the other side's reset
  Silence,  // not at all, for longer than a test waits
};

struct Heard {
  std::string text;
  std::string first;  // what the first arrival held
  Ending ending = Ending::Silence;
};

// Connected until it is destroyed. Whatever it does waits a minute at the most, which
// is for a server that hangs; a slow machine takes nothing near it.
class Caller {
 public:
  // Calls, from one of this machine's addresses when one is named. The test fails when
  // there is no connection.
  explicit Caller(const Place& place, const std::string& from = "");

  // The same through an address of a link, which means something on one interface only.
  Caller(const Place& place, unsigned int interface);

  // Reads until the connection ends.
  Heard listen();

  // The same with a wait of this many milliseconds at the most.
  Heard listenFor(int milliseconds);

  // Sends so many bytes, waiting whenever there is no room. How many went out before
  // the connection failed, or all.
  std::size_t send(std::size_t bytes);

  // The same, giving up when there is no room for so many milliseconds.
  std::size_t sendFor(std::size_t bytes, int milliseconds);

  // Of what was sent so far, how many bytes the other side has not confirmed.
  std::size_t unconfirmed() const;

  // In how many packets what was heard so far arrived.
  std::size_t packetsHeard() const;

  // Ends this side's direction; the other one stays open.
  void finish();

  // Closes.
  void hangUp();

  // Closes with a reset.
  void slam();

  // Drops, from now on, every packet that arrives for this socket, unconfirmed, as if
  // the machine had lost its network.
  void goDeaf();

  // The port on this side.
  std::uint16_t port() const;

 private:
  void connectTo(const Place& place, const std::string& from, unsigned int interface);
  void setWait(int milliseconds);

  Descriptor socket_;
};

// So many callers who stand together, at the places in turn.
std::vector<Caller> callersOf(const std::vector<Place>& places, std::size_t count);

}  // namespace veltrin::endpoint

// SPDX-License-Identifier: GPL-3.0-or-later
// The one gate through which every event reaches the event routines.
#pragma once

#include <deque>
#include <functional>

namespace veltrin {

// Unwinds every routine on the stack when the program ends. It is no failure of
// a statement, so that nothing that goes on after failures holds it up.
struct ProgramEnded {};

// Holds what comes in while a routine runs, and delivers it in order while the
// gate is open: in the resting main loop, in a yield, and in a pumping wait. A
// routine that is delivered closes the gate until it returns or opens it anew.
class EventGate {
 public:
  using Routine = std::function<void()>;

  // Delivers the routine at once when the gate is open, else when it opens.
  void post(Routine routine);

  bool isOpen() const { return open_; }

  // Whether something waits for the gate to open, so that nobody may sleep.
  bool hasWaiting() const { return !waiting_.empty() || (holdsInput_ && holdsInput_()); }

  // Keeps the gate open for its lifetime. What waits is delivered first.
  class Opening {
   public:
    explicit Opening(EventGate& gate);
    ~Opening();
    Opening(const Opening&) = delete;
    Opening& operator=(const Opening&) = delete;

   private:
    EventGate& gate_;
    bool wasOpen_;
  };

  // Ends the program: nothing more is delivered, and whoever pumps unwinds.
  void end();
  bool hasEnded() const { return ended_; }

  // For whoever pumps, after each pumping. Throws ProgramEnded.
  void throwIfEnded() const;

  // Called by end(), so that a loop that sleeps wakes up.
  void onEnd(Routine routine) { onEnd_ = std::move(routine); }

  // Called whenever the gate opens, behind what waits; a view hands in the input
  // of the window system that it held back. `holdsInput` tells whether it has any.
  void onOpen(Routine routine, std::function<bool()> holdsInput) {
    onOpen_ = std::move(routine);
    holdsInput_ = std::move(holdsInput);
  }

  // Statements that failed outside any rule that goes on after failures; each
  // ended its event routine. A program without defects counts none.
  int escapedFailures() const { return escaped_; }

 private:
  void deliver();

  std::deque<Routine> waiting_;
  Routine onEnd_;
  Routine onOpen_;
  std::function<bool()> holdsInput_;
  bool open_ = false;
  bool ended_ = false;
  int escaped_ = 0;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// How the program's thread sleeps until something comes in.
#pragma once

#include <QEvent>
#include <QObject>

namespace veltrin {

// The dispatcher of Windows hands in what was posted and then sleeps all the same, so that
// whoever waits for just that would sleep on until something else happens. This one keeps it
// awake once anything was handed in.
class LightSleep : public QObject {
 public:
  // Needs the application object.
  LightSleep();

  // Sleeps until something comes in, and hands it in. What is handed in may sleep itself.
  void sleep();

  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool isAsleep_ = false;
  bool hasCome_ = false;  // something that nobody was kept awake for yet
};

}  // namespace veltrin

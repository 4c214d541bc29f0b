// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/light_sleep.h"

#include <utility>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QScopeGuard>

namespace veltrin {

LightSleep::LightSleep() {
  QCoreApplication::instance()->installEventFilter(this);
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
          [this] {
            // Once for what has come: a loop within the sleep is to sleep itself.
            if (isAsleep_ && std::exchange(hasCome_, false)) {
              QAbstractEventDispatcher::instance()->wakeUp();
            }
          });
}

// A sleep within a sleep began with something that was handed in to the outer one.
void LightSleep::sleep() {
  const auto awake = qScopeGuard([this, wasAsleep = std::exchange(isAsleep_, true)] {
    isAsleep_ = wasAsleep;
    hasCome_ = true;
  });
  hasCome_ = false;
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

bool LightSleep::eventFilter(QObject* /*target*/, QEvent* /*event*/) {
  hasCome_ = true;
  return false;
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include <QSocketNotifier>
#include <QTimer>

#include "platform/qt/silent_wait.h"

namespace veltrin {

void sleepUntilReadable(QtEventLoop& events, int descriptor, int milliseconds) {
  bool over = false;
  QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
    over = true;
    notifier.setEnabled(false);
  });
  QTimer end;
  end.setSingleShot(true);
  end.setTimerType(Qt::PreciseTimer);
  end.callOnTimeout([&] { over = true; });
  if (milliseconds >= 0) end.start(milliseconds);
  while (!over) events.sleep();
}

}  // namespace veltrin

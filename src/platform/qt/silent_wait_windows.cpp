// SPDX-License-Identifier: GPL-3.0-or-later
#include <QWinEventNotifier>

#include "platform/qt/silent_wait.h"

namespace veltrin {

void sleepUntilSignalled(QtEventLoop& events, void* event) {
  bool signalled = false;
  QWinEventNotifier notifier(event);
  QObject::connect(&notifier, &QWinEventNotifier::activated, &notifier, [&] {
    signalled = true;
    notifier.setEnabled(false);
  });
  while (!signalled) events.sleep();
}

}  // namespace veltrin

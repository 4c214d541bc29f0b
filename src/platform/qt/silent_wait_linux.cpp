#include <QSocketNotifier>

#include "platform/qt/silent_wait.h"

namespace veltrin {

void sleepUntilReadable(QtEventLoop& events, int descriptor) {
  bool readable = false;
  QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
    readable = true;
    notifier.setEnabled(false);
  });
  while (!readable) events.sleep();
}

}  // namespace veltrin

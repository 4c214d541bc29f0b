// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/watcher.h"

#include <memory>
#include <utility>

namespace veltrin {
namespace {

// Lives as long as the widget.
class Watcher : public QObject {
 public:
  using Routine = std::function<void(const QEvent&)>;

  Watcher(QWidget& widget, Routine routine)
      : QObject(&widget), routine_(std::make_shared<Routine>(std::move(routine))) {
    widget.installEventFilter(this);
  }

  void release() { routine_.reset(); }

  // The routine is held meanwhile, as it may be taken away from inside itself.
  bool eventFilter(QObject*, QEvent* event) override {
    const auto routine = routine_;
    if (routine) (*routine)(*event);
    return false;
  }

 private:
  std::shared_ptr<Routine> routine_;
};

}  // namespace

void watch(QWidget& widget, Binding& binding, std::function<void(const QEvent&)> routine) {
  auto* watcher = new Watcher(widget, std::move(routine));
  QObject::connect(binding.receiver(), &QObject::destroyed, watcher,
                   [watcher] { watcher->release(); });
}

}  // namespace veltrin

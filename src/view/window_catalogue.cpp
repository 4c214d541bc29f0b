#include "view/window_catalogue.h"

#include <array>

#include "ui_About.h"
#include "ui_indepth.h"
#include "ui_indepth2.h"
#include "ui_pingtester.h"
#include "ui_setlang.h"
#include "ui_starter.h"
#include "ui_startup.h"
#include "ui_trace.h"
#include "view/binder.h"

namespace veltrin {
namespace {

struct Entry {
  const char* name;
  void (*lay)(FormWindow&);
  Qt::WindowFlags flags = Qt::Window;
};

template <class Look>
void lay(FormWindow& window) {
  Look().setupUi(&window);
}

constexpr std::array<Entry, 8> kWindows = {{
    {"starter", lay<Ui::starter>, Qt::Window | Qt::FramelessWindowHint},
    {"startup", lay<Ui::startup>},
    {"About", lay<Ui::About>, Qt::Dialog},
    {"setlang", lay<Ui::setlang>},
    {"pingtester", lay<Ui::pingtester>},
    {"trace", lay<Ui::trace>},
    {"indepth", lay<Ui::indepth>},
    {"indepth2", lay<Ui::indepth2>},
}};

}  // namespace

std::unique_ptr<FormWindow> makeWindow(const std::string& name) {
  for (const Entry& entry : kWindows) {
    if (name != entry.name) continue;
    auto window = std::make_unique<FormWindow>();
    window->setWindowFlags(entry.flags);
    entry.lay(*window);
    return window;
  }
  return nullptr;
}

std::unique_ptr<ShownForm> showInWindow(Form& form, EventGate& gate, const Files& files) {
  auto window = makeWindow(form.name());
  if (window == nullptr) return nullptr;
  return std::make_unique<Binder>(form, std::move(window), gate, files);
}

std::vector<std::string> windowNames() {
  std::vector<std::string> names;
  names.reserve(kWindows.size());
  for (const Entry& entry : kWindows) names.emplace_back(entry.name);
  return names;
}

}  // namespace veltrin

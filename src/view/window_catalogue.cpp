#include "view/window_catalogue.h"

#include <array>

#include "ui_pingtester.h"
#include "ui_setlang.h"

namespace veltrin {
namespace {

struct Entry {
  const char* name;
  void (*lay)(FormWindow&);
};

template <class Look>
void lay(FormWindow& window) {
  Look().setupUi(&window);
}

constexpr std::array<Entry, 2> kWindows = {{
    {"pingtester", lay<Ui::pingtester>},
    {"setlang", lay<Ui::setlang>},
}};

}  // namespace

std::unique_ptr<FormWindow> makeWindow(const std::string& name) {
  for (const Entry& entry : kWindows) {
    if (name != entry.name) continue;
    auto window = std::make_unique<FormWindow>();
    entry.lay(*window);
    return window;
  }
  return nullptr;
}

std::vector<std::string> windowNames() {
  std::vector<std::string> names;
  names.reserve(kWindows.size());
  for (const Entry& entry : kWindows) names.emplace_back(entry.name);
  return names;
}

}  // namespace veltrin

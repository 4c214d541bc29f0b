// The windows that there are, by the names of their forms.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "view/form_window.h"

namespace veltrin {

// A new window with the look of that name and nothing in it yet; null when there is none.
std::unique_ptr<FormWindow> makeWindow(const std::string& name);

// The names of all windows.
std::vector<std::string> windowNames();

}  // namespace veltrin

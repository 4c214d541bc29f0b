// The colours, letters and style that all windows share.
#pragma once

#include <QApplication>

namespace veltrin {

// Sets the program's own look, the same on every system and every desktop theme.
void setAppearance();

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The colours, letters and style that all windows share.
#pragma once

#include <QApplication>
#include <QFont>

namespace veltrin {

// Sets the program's own look, the same on every system and every desktop theme.
void setAppearance();

// Letters of one width, for texts whose columns are to stand.
QFont fixedLetters();

// Letters with feet, as in a book.
QFont bookLetters();

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// How scroll bars are drawn.
#pragma once

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWidget>

namespace veltrin {

// A flat groove, lighter than the handle in it, which is darker under the pointer and
// darkest while it is held. Where there is nothing to scroll there is no handle.
void drawScrollBar(const QStyle& style, const QStyleOptionSlider& bar, QPainter& painter,
                   const QWidget* widget);

}  // namespace veltrin

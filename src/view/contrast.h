// SPDX-License-Identifier: GPL-3.0-or-later
// Colours that can be read.
#pragma once

#include <QColor>

namespace veltrin {

// The contrast of two colours, from 1 for equal ones to 21 for black and white (WCAG 2.1,
// "contrast ratio").
double contrast(const QColor& one, const QColor& other);

// The least contrast that text needs (WCAG 2.1, success criterion 1.4.3).
inline constexpr double kReadableContrast = 4.5;

// A colour as it is, or as much darker, on a dark ground lighter, as it takes to be read
// there.
QColor readableOn(const QColor& ground, const QColor& colour);

}  // namespace veltrin

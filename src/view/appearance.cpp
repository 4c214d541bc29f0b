// SPDX-License-Identifier: GPL-3.0-or-later
#include "view/appearance.h"

#include <QFont>
#include <QPalette>
#include <QToolTip>

#include "forms/control.h"
#include "view/accessible_kinds.h"
#include "view/app_style.h"

namespace veltrin {
namespace {

constexpr QRgb kWindow = 0xffecebe6;  // also the background of the clips
constexpr QRgb kPaper = 0xffffffff;
constexpr QRgb kTint = 0xfff6f5f0;  // behind every other row
constexpr QRgb kInk = 0xff23221e;
constexpr QRgb kPaleInk = 0xff625f50;   // of what is disabled
constexpr QRgb kFaintInk = 0xff69665a;  // of hints in empty fields, captions of columns
constexpr QRgb kControl = 0xffe2dfd0;   // arrows of combo boxes, bars
constexpr QRgb kRule = 0xffcbc7b8;      // lines
constexpr QRgb kShade = 0xffa8a48f;
constexpr QRgb kAccent = 0xff2f5f7d;  // selection and keyboard focus
constexpr QRgb kTip = 0xfffffdf2;

constexpr double kTextSize = 10;  // points
constexpr double kFixedTextSize = 9;

QPalette lightPalette() {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(kWindow));
  palette.setColor(QPalette::WindowText, QColor(kInk));
  palette.setColor(QPalette::Base, QColor(kPaper));
  palette.setColor(QPalette::AlternateBase, QColor(kTint));
  palette.setColor(QPalette::Text, QColor(kInk));
  palette.setColor(QPalette::PlaceholderText, QColor(kFaintInk));
  palette.setColor(QPalette::Button, QColor(kControl));
  palette.setColor(QPalette::ButtonText, QColor(kInk));
  palette.setColor(QPalette::BrightText, QColor(kPaper));
  palette.setColor(QPalette::Light, QColor(kPaper));
  palette.setColor(QPalette::Midlight, QColor(kTint));
  palette.setColor(QPalette::Mid, QColor(kRule));
  palette.setColor(QPalette::Dark, QColor(kShade));
  palette.setColor(QPalette::Shadow, QColor(kFaintInk));
  palette.setColor(QPalette::Highlight, QColor(kAccent));
  palette.setColor(QPalette::HighlightedText, QColor(kPaper));
  palette.setColor(QPalette::Link, QColor(kAccent));
  palette.setColor(QPalette::LinkVisited, QColor(kAccent));
  palette.setColor(QPalette::ToolTipBase, QColor(kTip));
  palette.setColor(QPalette::ToolTipText, QColor(kInk));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(kPaleInk));
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor(kWindow));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(kPaleInk));
  return palette;
}

// The first of them that the system has.
QFont letters() {
#ifdef Q_OS_WIN
  const QStringList families{"Segoe UI", "Tahoma", "DejaVu Sans"};
#else
  const QStringList families{"DejaVu Sans", "Noto Sans", "Liberation Sans"};
#endif
  QFont font(families);
  font.setStyleHint(QFont::SansSerif);
  font.setPointSizeF(kTextSize);
  return font;
}

}  // namespace

QFont fixedLetters() {
#ifdef Q_OS_WIN
  const QStringList families{"Cascadia Mono", "Consolas", "Courier New", "DejaVu Sans Mono"};
#else
  const QStringList families{"DejaVu Sans Mono", "Noto Sans Mono", "Liberation Mono"};
#endif
  QFont font(families);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  font.setPointSizeF(kFixedTextSize);
  return font;
}

QFont bookLetters() {
  QFont font(QStringList{"Times New Roman", "Liberation Serif", "Tinos", "DejaVu Serif"});
  font.setStyleHint(QFont::Serif);
  font.setPointSizeF(kTextSize);
  return font;
}

void setAppearance() {
  const QPalette palette = lightPalette();
  QPalette buttons = palette;
  buttons.setColor(QPalette::Button,
                   QColor(kButtonColour.red, kButtonColour.green, kButtonColour.blue));
  // The application owns the style. NOLINTBEGIN(clang-analyzer-cplusplus.NewDeleteLeaks)
  QApplication::setStyle(new AppStyle);
  QApplication::setPalette(palette);
  // NOLINTEND(clang-analyzer-cplusplus.NewDeleteLeaks)
  QApplication::setPalette(buttons, "QPushButton");
  tellKindsOfWidgets();
  QToolTip::setPalette(palette);
  QApplication::setFont(letters());
  // All texts are English, paths and addresses among them.
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
  QFont::insertSubstitutions("Times New Roman",
                             {"Liberation Serif", "Nimbus Roman", "DejaVu Serif"});
}

}  // namespace veltrin

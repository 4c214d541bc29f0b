// SPDX-License-Identifier: GPL-3.0-or-later
// Ties a list box of the program's own to its view.
#include <array>
#include <utility>

#include "view/binding.h"
#include "view/line_list.h"
#include "view/picture.h"

namespace veltrin {
namespace {

constexpr std::int32_t kNoBorder = 0;
constexpr std::int32_t kFlat = 0;
constexpr std::int16_t kOwnPicture = 99;
constexpr int kPointerSize = 32;  // pixels, of a picture that does not tell

// The pointers of the system by the numbers of their property, from the usual one on.
constexpr std::array<Qt::CursorShape, 16> kPointers{
    Qt::ArrowCursor,     Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,
    Qt::ArrowCursor,     Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
    Qt::SizeFDiagCursor, Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,
    Qt::ForbiddenCursor, Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor};

QCursor pointerOf(const ListView& lines, const PictureSource& pictures) {
  const std::int16_t number = lines.MousePointer;
  if (number == kOwnPicture) {
    const DevicePicture& picture = lines.MouseIcon;
    const QSize size(picture.width > 0 ? picture.width : kPointerSize,
                     picture.height > 0 ? picture.height : kPointerSize);
    const QIcon icon = pictures ? pictures(picture.name) : QIcon();
    return icon.isNull() ? QCursor(Qt::ArrowCursor) : QCursor(icon.pixmap(size));
  }
  const auto index = static_cast<std::size_t>(number);
  return {number > 0 && index < kPointers.size() ? kPointers.at(index) : Qt::ArrowCursor};
}

}  // namespace

void LineList::observe(Binding& binding) {
  ListView& lines = list_->ListView1;
  const auto then = [this](auto routine) {
    return [this, routine](const auto&) {
      if (list_ != nullptr) (this->*routine)();
    };
  };
  binding.show(lines.Appearance, then(&LineList::takeFrame));
  binding.show(lines.BorderStyle, then(&LineList::takeFrame));
  binding.show(lines.BackColor, then(&LineList::takeColours));
  binding.show(lines.ForeColor, then(&LineList::takeColours));
  binding.show(lines.MultiSelect, then(&LineList::takeSelectionMode));
  binding.show(lines.LabelEdit, then(&LineList::takeSelectionMode));
  binding.show(lines.HotTracking, then(&LineList::takeMouse));
  binding.show(lines.HoverSelection, then(&LineList::takeMouse));
  binding.show(lines.MousePointer, then(&LineList::takePointer));
  binding.show(lines.MouseIcon, then(&LineList::takePointer));
  binding.show(lines.Font, then(&LineList::takeLook));
  binding.show(lines.CheckBoxes, then(&LineList::takeLook));
  binding.show(lines.LabelWrap, then(&LineList::takeLook));
  binding.show(lines.SmallIcons, then(&LineList::takeLook));
  binding.show(lines.HideSelection, then(&LineList::schedule));
  binding.show(lines.Picture, then(&LineList::schedule));
  binding.show(lines.PictureAlignment, then(&LineList::schedule));
}

void LineList::takeFrame() {
  const ListView& lines = list_->ListView1;
  if (lines.BorderStyle == kNoBorder) return setFrameStyle(NoFrame);
  setFrameStyle(lines.Appearance == kFlat ? Box | static_cast<int>(Plain)
                                          : StyledPanel | static_cast<int>(Sunken));
}

// Colours that are not the window's own hold in every state of the list.
void LineList::takeColours() {
  const ListView& lines = list_->ListView1;
  QPalette own;
  if (lines.BackColor != kWindowBackground) {
    own.setColor(QPalette::Base, toQt(translated(lines.BackColor)));
  }
  if (lines.ForeColor != kWindowText) {
    const QColor ink = toQt(translated(lines.ForeColor));
    own.setColor(QPalette::Active, QPalette::Text, ink);
    own.setColor(QPalette::Inactive, QPalette::Text, ink);
  }
  setPalette(own);
}

void LineList::takePointer() { viewport()->setCursor(pointerOf(list_->ListView1, pictures_)); }

void LineList::takeSelectionMode() {
  const ListView& lines = list_->ListView1;
  setSelectionMode(lines.MultiSelect ? ExtendedSelection : SingleSelection);
  setEditTriggers(lines.LabelEdit == kEditByClick ? SelectedClicked | EditKeyPressed
                                                  : EditTriggers(NoEditTriggers));
}

void LineList::takeMouse() {
  const ListView& lines = list_->ListView1;
  viewport()->setMouseTracking(lines.HotTracking || lines.HoverSelection);
  setHover(-1);
}

// The letters around the list are those that it has unless it has some of its own.
void LineList::takeLook() {
  const QFont around = parentWidget() == nullptr ? QApplication::font() : parentWidget()->font();
  const DeviceFont& own = list_->ListView1.Font;
  setFont(own == DeviceFont() ? QFont() : lettersOf(own, around));
  look_->refresh();
  schedule();
}

void LineList::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  const bool isLook =
      event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
      event->type() == QEvent::EnabledChange || event->type() == QEvent::StyleChange;
  if (!isLook || !look_) return;
  look_->refresh();
  schedule();
}

void bindLineList(LVListBox& list, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<LineList*>(&widget);
  if (view == nullptr) return;
  view->setList(list, binding, [&files = binding.files()](const std::string& name) {
    return loadPicture(files, name);
  });
  binding.atEnd([view] { view->release(); });
}

}  // namespace veltrin

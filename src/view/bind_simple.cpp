// SPDX-License-Identifier: GPL-3.0-or-later
// Controls that show what the program sets: labels, lists, clips, charts, pictures,
// bars and gauges.
#include <QFile>
#include <QLabel>
#include <QListView>
#include <QPushButton>

#include "platform/portable/avi_clip.h"
#include "platform/qt/qt_text.h"
#include "view/animation_view.h"
#include "view/binding.h"
#include "view/chart_view.h"
#include "view/contrast.h"
#include "view/drawing_view.h"
#include "view/gauge_view.h"
#include "view/list_model.h"
#include "view/picture.h"
#include "view/picture_view.h"
#include "view/progress_view.h"
#include "view/summary_list.h"

namespace veltrin {
namespace {

// A clip is held in memory as a whole; a larger file is not opened.
constexpr qint64 kLargestClip = qint64{256} * 1024 * 1024;

void openClip(const std::string& path, AnimationView& view) {
  view.clear();
  QFile file(toQt(path));
  if (path.empty() || !file.open(QIODevice::ReadOnly) || file.size() > kLargestClip) return;
  const QByteArray bytes = file.readAll();
  const auto clip = readAvi({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  if (clip) view.open(*clip);
}

void bindLink(Label& label, QPushButton& link, Binding& binding) {
  binding.show(label.caption, [&link](const std::string& caption) { link.setText(toQt(caption)); });
  QObject::connect(&link, &QPushButton::clicked, binding.receiver(),
                   [&label, &binding] { binding.post([&label] { label.press(); }); });
}

// A disabled label is as pale as any other.
void colourText(QLabel& label, const std::optional<Colour>& colour) {
  QPalette palette;
  if (colour) {
    const QColor ground = label.palette().color(label.backgroundRole());
    const QColor ink = readableOn(ground, QColor(colour->red, colour->green, colour->blue));
    palette.setColor(QPalette::Active, label.foregroundRole(), ink);
    palette.setColor(QPalette::Inactive, label.foregroundRole(), ink);
  }
  label.setPalette(palette);
}

}  // namespace

// A value with a meaning that only its place in the window shows, such as a number in a
// column, has that meaning as its accessible name; the value is then told behind it.
void bindLabel(Label& label, QWidget& widget, Binding& binding) {
  if (auto* link = qobject_cast<QPushButton*>(&widget)) return bindLink(label, *link, binding);
  auto* view = qobject_cast<QLabel*>(&widget);
  if (view == nullptr) return;
  if (dynamic_cast<PictureView*>(view) != nullptr) return;  // a picture in a text's place
  view->setTextFormat(Qt::PlainText);
  const QString meaning = view->accessibleName();
  binding.show(label.caption, [view, meaning](const std::string& caption) {
    const QString text = toQt(caption).replace(QLatin1String("\r\n"), QLatin1String("\n"));
    view->setText(text);
    if (!meaning.isEmpty()) view->setAccessibleName((meaning + ' ' + text).trimmed());
  });
  binding.show(label.foreColour,
               [view](const std::optional<Colour>& colour) { colourText(*view, colour); });
  if (!label.click) return;
  bindClick([view](const QPointF& place) { return QRectF(view->rect()).contains(place); }, *view,
            binding, [&label] { label.press(); });
}

void bindListBox(ListBox& list, QWidget& widget, Binding& binding) {
  auto* view = qobject_cast<QListView*>(&widget);
  if (view == nullptr) return;
  auto* model = new ListModel(list, view);
  view->setModel(model);
  view->setUniformItemSizes(dynamic_cast<SummaryList*>(view) == nullptr);  // one looks at all
  list.observe([model] { model->refresh(); });
  binding.atEnd([&list, model] {
    list.observe({});
    model->release();
  });
}

void bindAnimation(Animation& animation, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<AnimationView*>(&widget);
  if (view == nullptr) return;
  binding.show(animation.file, [view, &binding](const std::string& path) {
    openClip(path.empty() ? path : binding.files().native(path), *view);
  });
  binding.show(animation.playing, [view](bool playing) { view->setPlaying(playing); });
}

void bindChart(Chart& chart, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<ChartView*>(&widget);
  if (view == nullptr) return;
  const auto repaint = [view](const auto&) { view->update(); };
  binding.show(chart.automaticScale, repaint);
  binding.show(chart.axisMinimum, repaint);
  binding.show(chart.axisMaximum, repaint);
  binding.show(chart.wallColour, repaint);
  chart.observe([view] { view->update(); });
  view->setChart(&chart);
  binding.atEnd([&chart, view] {
    chart.observe({});
    view->setChart(nullptr);
  });
}

void bindPictureBox(PictureBox& picture, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<DrawingView*>(&widget);
  if (view == nullptr) return;
  const auto noteChange = [view](const auto&) { view->noteChange(); };
  binding.show(picture.scale, noteChange);
  binding.show(picture.backColour, noteChange);
  picture.observe([view] { view->noteChange(); });
  view->setPicture(&picture);
  binding.atEnd([&picture, view] {
    picture.observe({});
    view->setPicture(nullptr);
  });
}

void bindProgressBar(ProgressBar& bar, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<ProgressView*>(&widget);
  if (view == nullptr) return;
  const auto showProgress = [&bar, view](double) {
    view->showProgress(bar.minimum, bar.maximum, bar.value);
  };
  binding.show(bar.minimum, showProgress);
  binding.show(bar.maximum, showProgress);
  binding.show(bar.value, showProgress);
  binding.show(bar.barColour, [view](const Colour& colour) {
    view->showColour({colour.red, colour.green, colour.blue});
  });
}

void bindGauge(bkCProg& gauge, QWidget& widget, Binding& binding) {
  auto* view = dynamic_cast<GaugeView*>(&widget);
  if (view == nullptr) return;
  view->setGauge(&gauge, [&files = binding.files()](const std::string& name) {
    return loadPicture(files, name);
  });
  binding.atEnd([view] { view->setGauge(nullptr); });
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/form.h"

#include <algorithm>

namespace veltrin {

void Control::raise(const EventRoutine& routine) {
  if (!routine) return;
  if (form_ == nullptr) {
    routine();
    return;
  }
  form_->run(routine);
}

void Control::raise(const MouseRoutine& routine, MouseButton button, int x) {
  if (!routine || !visible || !enabled) return;
  mouseX_ = x;
  raise([&] { routine(button); });
}

Control* Form::find(const std::string& name, int index) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(), [&](const Control* control) {
    return control->name() == name && control->index() == index;
  });
  return found == controls_.end() ? nullptr : *found;
}

void Form::load() {
  const auto alive = weak_from_this().lock();
  loaded_ = true;
  Form_Load();
}

bool Form::end() {
  if (!loaded_ || ending_) return false;
  const auto alive = weak_from_this().lock();
  struct Ending {
    bool& flag;
    explicit Ending(bool& ending) : flag(ending) { flag = true; }
    ~Ending() { flag = false; }
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;
  } const ending(ending_);
  Form_Unload();
  loaded_ = false;
  return true;
}

void Form::close() {
  run([this] { unload(); });
}

void Form::run(const EventRoutine& routine) {
  if (!loaded_ || !routine) return;
  const auto alive = weak_from_this().lock();
  routine();
}

void Form::raise(const MouseRoutine& routine, MouseButton button, int x) {
  if (!routine) return;
  mouseX_ = x;
  run([&] { routine(button); });
}

void Form::own(const std::string& name, Control& control) {
  control.form_ = this;
  control.name_ = name;
  controls_.push_back(&control);
}

}  // namespace veltrin

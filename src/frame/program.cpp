// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/program.h"

#include <algorithm>

#include "frame/clsWaitableTimer.h"

namespace veltrin {

Program::Program(Platform& system)
    : platform(system),
      installation(readInstallation(system.profiles, system.files)),
      programFolder(system.files.programFolder()),
      settingsFile(programFolder + "\\Files\\Veltrin.dat"),
      settings(system.profiles) {}

// The program ends with the last window that was to be seen.
void Program::unload(Form& form) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const Window& window) { return window.form.get() == &form; });
  if (found == windows_.end()) return;
  const std::shared_ptr<Form> alive = found->form;
  const auto unloaded = found->unloaded;
  if (!form.end()) return;
  platform.events.timers().remove(form);
  platform.desktop.remove(form);
  std::erase_if(windows_, [&](const Window& window) { return window.form == alive; });
  if (unloaded) unloaded();
  const bool anyShown = std::any_of(windows_.begin(), windows_.end(), [](const Window& window) {
    return window.sight == Sight::Shown;
  });
  if (!anyShown) platform.events.gate().end();
}

void Program::end() {
  platform.events.gate().end();
  throw ProgramEnded();
}

std::string Program::readSetting(const std::string& section, const std::string& key) {
  return settings.read(settingsFile, section, key).text();
}

void Program::writeSetting(const std::string& section, const std::string& key, const Loose& value) {
  settings.write(settingsFile, section, key, value);
}

void Program::Wait(std::int32_t milliSeconds) { veltrin::Wait(platform, milliSeconds); }

int Program::MsgBox(const std::string& text, int style, const std::string& title) {
  // The system takes a text up to its first NUL.
  return platform.desktop.messageBox(text.substr(0, text.find('\0')), style, title);
}

std::shared_ptr<Form> Program::find(std::type_index type) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const Window& window) { return window.type == type; });
  return found == windows_.end() ? nullptr : found->form;
}

void Program::noteShown(const Form& form) {
  for (Window& window : windows_) {
    if (window.form.get() == &form) window.sight = Sight::Shown;
  }
}

void Program::load(std::type_index type, const std::shared_ptr<Form>& form, Sight sight) {
  windows_.push_back({type, form, sight});
  platform.events.timers().add(form);
  form->load();
}

void Program::pumpModal(Form& form, const std::function<void()>& unloaded) {
  for (Window& window : windows_) {
    if (unloaded && window.form.get() == &form) window.unloaded = unloaded;
  }
  showInLoad(form);
  platform.events.pumpUntil([&form] { return !form.isLoaded(); });
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// One running program: its platform, its program-wide values, its windows.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "frame/INIReadWrite.h"
#include "frame/installation.h"
#include "frame/language.h"
#include "frame/start_values.h"
#include "frame/system_summary.h"
#include "frame/tool_windows.h"
#include "platform/platform.h"
#include "text/loose.h"

namespace veltrin {

class Program : public FormHost {
 public:
  explicit Program(Platform& system);

  Platform& platform;
  const Installation installation;

  // The program folder, and the file that holds all settings.
  const std::string programFolder;
  const std::string settingsFile;
  INIReadWrite settings;

  // What the start of the program found out, and what the user set in the menu.
  StartValues start;
  MenuValues menu;

  // The summary of the machine. The start fills two of its fields from the settings:
  // OsName, and BoardModel, which is MbModel.
  SystemSummary summary;

  // Windows that are opened by name, and the collector of the short summary.
  ToolWindows tools;
  std::function<void()> getinfo;

  // Language of the texts: 1 English, 4 Dutch.
  Loose LanguageId;
  LanguageTexts texts;

  // The program's one record of a type: values that some windows share and that outlive
  // them, declared where those windows are. Made on first use.
  template <class Record>
  Record& shared() {
    std::shared_ptr<void>& record = records_[typeid(Record)];
    if (!record) record = std::make_shared<Record>();
    return *static_cast<Record*>(record.get());
  }

  // Shows the default window of a type: made and loaded when it is not loaded,
  // else brought to the front.
  template <class Kind>
  std::shared_ptr<Kind> show() {
    auto window = loaded<Kind>(Sight::Shown);
    if (window->isLoaded()) platform.desktop.show(*window);
    return window;
  }

  // The default window of a type, loaded and out of sight. Such a window does not keep
  // the program running.
  template <class Kind>
  std::shared_ptr<Kind> keep() {
    return loaded<Kind>(Sight::Hidden);
  }

  // Shows the default window of a type and pumps until it is unloaded; no other
  // window takes input meanwhile. `unloaded` is called as soon as it is, once its load is
  // over: a routine of the window that goes on keeps this one from returning.
  template <class Kind>
  void showModal(const std::function<void()>& unloaded = {}) {
    const auto window = loaded<Kind>(Sight::Shown);
    if (window->isLoaded()) {
      pumpModal(*window, unloaded);
    } else if (unloaded) {
      unloaded();
    }
  }

  // Shows a window, modally, that is still being loaded: its load goes on before its user.
  void showInLoad(Form& form) { platform.desktop.makeModal(form); }

  // Unloads the default window of a type, if it is loaded.
  template <class Kind>
  void unload() {
    if (const auto form = find(typeid(Kind))) unload(*form);
  }

  // Whether the default window of a type is loaded.
  template <class Kind>
  bool isLoaded() const {
    return find(typeid(Kind)) != nullptr;
  }

  void unload(Form& form) override;

  // Enters a type's window under its name among those that are opened by name.
  template <class Kind>
  void provide(WindowName name) {
    tools.enter(name,
                {[this] { show<Kind>(); },
                 [this](const std::function<void()>& unloaded) { showModal<Kind>(unloaded); }});
  }

  // Ends the program at once. Throws ProgramEnded.
  [[noreturn]] void end();

  // Settings by section and key.
  std::string readSetting(const std::string& section, const std::string& key);
  void writeSetting(const std::string& section, const std::string& key, const Loose& value);

  // Waits for a time in milliseconds while everything that comes in is delivered.
  void Wait(std::int32_t milliSeconds);

  // Shows a message and returns the answer. An empty title is the application's.
  int MsgBox(const std::string& text, int style = kMessageOk, const std::string& title = {});

 private:
  enum class Sight { Hidden, Shown };

  struct Window {
    std::type_index type;
    std::shared_ptr<Form> form;
    Sight sight;
    std::function<void()> unloaded = {};  // what is to be done then
  };

  template <class Kind>
  std::shared_ptr<Kind> loaded(Sight sight) {
    if (const auto form = find(typeid(Kind))) {
      if (sight == Sight::Shown) noteShown(*form);
      return std::static_pointer_cast<Kind>(form);
    }
    auto made = std::make_shared<Kind>(*this);
    load(typeid(Kind), made, sight);
    return made;
  }

  std::shared_ptr<Form> find(std::type_index type) const;
  void load(std::type_index type, const std::shared_ptr<Form>& form, Sight sight);
  void noteShown(const Form& form);
  void pumpModal(Form& form, const std::function<void()>& unloaded);

  // The records outlive the windows that refer to them.
  std::map<std::type_index, std::shared_ptr<void>> records_;
  std::vector<Window> windows_;
};

}  // namespace veltrin

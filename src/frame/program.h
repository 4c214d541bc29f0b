// One running program: its platform, its program-wide values, its windows.
#pragma once

#include <memory>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "frame/INIReadWrite.h"
#include "frame/installation.h"
#include "frame/language.h"
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

  // Language of the texts: 1 English, 4 Dutch.
  Loose LanguageId;
  LanguageTexts texts;

  // The last saved result.
  std::string ResultFolder;
  std::string ResultFile;
  std::unique_ptr<TextStream> ResultStream;
  Loose UseTempFolder;  // 1 saves results to the temporary folder

  // The last reading of a ping, and the run of the Ping Test. Shared by all tools
  // that ping, so that only one of them may run at a time.
  Loose PingTime;    // milliseconds; 99999 for no reply
  Loose PingPasses;  // the text of the passes at the start of the run
  int PingPassNo = 0;
  int PingStop = 0;  // 1 when the run is to end
  int PingRow = 0;
  double PingSum = 0;
  std::size_t PingItem = 0;

  // Shows the default window of a type: made and loaded when it is not loaded,
  // else brought to the front.
  template <class Kind>
  std::shared_ptr<Kind> show() {
    auto window = loaded<Kind>();
    if (window->isLoaded()) platform.desktop.show(*window);
    return window;
  }

  // Shows the default window of a type and pumps until it is unloaded; no other
  // window takes input meanwhile.
  template <class Kind>
  void showModal() {
    const auto window = loaded<Kind>();
    if (window->isLoaded()) pumpModal(*window);
  }

  // Whether the default window of a type is loaded.
  template <class Kind>
  bool isLoaded() const {
    return find(typeid(Kind)) != nullptr;
  }

  void unload(Form& form) override;

  // Settings by section and key.
  std::string readSetting(const std::string& section, const std::string& key);
  void writeSetting(const std::string& section, const std::string& key, const Loose& value);

  // Waits for a time in milliseconds while everything that comes in is delivered.
  void Wait(std::int32_t milliSeconds);

  // Shows a message and returns the answer. An empty title is the application's.
  int MsgBox(const std::string& text, int style = kMessageOk, const std::string& title = {});

 private:
  struct Window {
    std::type_index type;
    std::shared_ptr<Form> form;
  };

  template <class Kind>
  std::shared_ptr<Kind> loaded() {
    if (const auto form = find(typeid(Kind))) return std::static_pointer_cast<Kind>(form);
    auto made = std::make_shared<Kind>(*this);
    load(typeid(Kind), made);
    return made;
  }

  std::shared_ptr<Form> find(std::type_index type) const;
  void load(std::type_index type, const std::shared_ptr<Form>& form);
  void pumpModal(Form& form);

  std::vector<Window> windows_;
};

}  // namespace veltrin

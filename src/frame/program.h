// One running program: its platform, its program-wide values, its windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "frame/INIReadWrite.h"
#include "frame/installation.h"
#include "frame/language.h"
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

  // What the start of the program finds out.
  const std::string AppVersion = "1.03";
  const std::string AppDate = "5 Jan 2012";
  std::string HostName;
  std::string WinDir;
  std::string LocalIp;
  std::string PublicIp;   // as the update endpoint sees it; empty when it said nothing
  int UpdateWaiting = 0;  // 1 while the endpoint has not answered
  int PdhFailed = 0;      // 1 when there is no performance query
  Counters::Query PdhQuery = 0;
  SystemSummary summary;
  std::string& OsName = summary.OsName;
  std::string& BoardModel = summary.MbModel;

  // What the user set in the main menu.
  std::string RatedSpeed;  // KB, without separators
  int PostVistaOs = 0;     // 1 on systems with fewer InDepth options

  // Windows that are opened by name, and the collector of the short summary.
  ToolWindows tools;
  std::function<void()> getinfo;

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

  // The run of the route tools, which count their passes by one counter. Shared by all
  // of them, so that only one may run at a time.
  Loose RoutePasses;           // the text of the passes at the start of the run
  int RoutePass = 0;           // as the last loop left it
  int InDepthRunning = 0;      // 1 while an InDepth test runs
  double InDepthStart = 0;     // of that test, in seconds since midnight
  std::string InDepthOptions;  // arguments of pathping, but the destination

  // The last item of the list of silent hops, as text, from the window that keeps the
  // list; empty while no such window is loaded.
  std::function<std::string()> lastBadHop;

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
  // window takes input meanwhile.
  template <class Kind>
  void showModal() {
    const auto window = loaded<Kind>(Sight::Shown);
    if (window->isLoaded()) pumpModal(*window);
  }

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
  void provide(const std::string& name) {
    tools.enter(name, {[this] { show<Kind>(); }, [this] { showModal<Kind>(); }});
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
  void pumpModal(Form& form);

  std::vector<Window> windows_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "desk/desk.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <spawn.h>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "desk/window_manager.h"

namespace veltrin::desk {
namespace {

constexpr milliseconds kPatience{30000};
constexpr milliseconds kGlance{50};
const char* const kProgram = "veltrin";

std::vector<char*> pointersTo(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

// A folder for what the programs of this desk leave behind.
std::string makeRunFolder() {
  std::string folder = (std::filesystem::temp_directory_path() / "veltrin-desk-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no folder for the desk");
  return folder;
}

// The number of a screen that nobody else is likely to take.
int anyDisplay() {
  constexpr int kFirst = 1000;
  constexpr int kLast = 50000;  // a screen's number, with 6000 added, is a port
  std::random_device chance;
  return std::uniform_int_distribution(kFirst, kLast)(chance);
}

// A text as an expression that means just itself.
std::string literal(const std::string& text) {
  std::string expression;
  for (const char each : text) {
    if (std::string_view("\\.[](){}*+?^$|").find(each) != std::string_view::npos)
      expression += '\\';
    expression += each;
  }
  return expression;
}

}  // namespace

Child::Child(const std::vector<std::string>& command) {
  std::vector<std::string> words = command;
  const int error =
      posix_spawnp(&pid_, words[0].c_str(), nullptr, nullptr, pointersTo(words).data(), environ);
  if (error != 0) throw std::runtime_error("cannot start " + command[0]);
}

Child::~Child() {
  if (exit_) return;
  kill(pid_, SIGTERM);
  if (!waitFor(milliseconds(3000))) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
}

std::optional<int> Child::waitFor(milliseconds time) {
  eventually(time, [this] {
    int status = 0;
    if (!exit_ && waitpid(pid_, &status, WNOHANG) == pid_) {
      exit_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return exit_.has_value();
  });
  return exit_;
}

std::string outputOf(const std::vector<std::string>& command) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, ends[0]);
  posix_spawn_file_actions_addclose(&actions, ends[1]);
  std::vector<std::string> words = command;
  pid_t pid = 0;
  const int error =
      posix_spawnp(&pid, words[0].c_str(), &actions, nullptr, pointersTo(words).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string output;
  std::array<char, 4096> buffer{};
  ssize_t taken = 0;
  while (error == 0 && (taken = read(ends[0], buffer.data(), buffer.size())) > 0) {
    output.append(buffer.data(), static_cast<std::size_t>(taken));
  }
  close(ends[0]);
  int status = 0;
  if (error != 0 || waitpid(pid, &status, 0) != pid || status != 0) {
    throw std::runtime_error(command[0] + " did not do what it was asked");
  }
  return output;
}

bool eventually(milliseconds time, const std::function<bool()>& question) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!question()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kGlance);
  }
  return true;
}

Desk::Desk() {
  const std::string folder = makeRunFolder();
  const std::string bus = "unix:path=" + folder + "/bus";
  setenv("DBUS_SESSION_BUS_ADDRESS", bus.c_str(), 1);
  setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
  setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("LC_ALL", "C.UTF-8", 1);
  // Desks may be made side by side. A server that looks for a free number by itself does not see
  // those in other network namespaces, whose sockets lie in the same folder, so each takes one at
  // random. It tells the number when it is ready. A server that begins anew when its last
  // program leaves refuses the next for a moment.
  const std::string number = folder + "/display";
  screen_.emplace(std::vector<std::string>{
      "sh", "-c",
      "exec Xvfb :" + std::to_string(anyDisplay()) +
          " -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset 3>'" + number + "'"});
  bus_.emplace(std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                        "--address=" + bus});
  std::string display;
  const bool ready = eventually(kPatience, [&] {
    display.clear();
    std::ifstream(number) >> display;
    return !display.empty() && std::filesystem::exists(folder + "/bus");
  });
  if (!ready) throw std::runtime_error("neither Xvfb nor a bus came up");
  setenv("DISPLAY", (":" + display).c_str(), 1);
  windowManager_.emplace(std::vector<std::string>{"openbox"});
  // A window that comes while the manager starts may never be shown.
  const bool managed = eventually(kPatience, [] {
    const std::string told = outputOf({"xprop", "-root", "_NET_SUPPORTING_WM_CHECK"});
    return told.find("window id") != std::string::npos;
  });
  if (!managed) throw std::runtime_error("the window manager did not come up");
}

Element Desk::find(const std::string& what, const std::function<bool(const Element&)>& fits) const {
  std::optional<Element> found;
  const bool there = eventually(kPatience, [&] {
    for (const Element& element : elementsOf(kProgram)) {
      if (element.showing && fits(element)) found = element;
    }
    return found.has_value();
  });
  if (!there) throw std::runtime_error("not on the screen: " + what);
  return *found;
}

// The program has a window on the screen before the window manager has placed it.
Element Desk::placed(const Element& element) const {
  awaitWindowManager(kPatience);
  std::optional<Element> found;
  for (const Element& each : elementsOf(kProgram)) {
    if (!each.showing || each.window != element.window || each.role != element.role ||
        each.name != element.name) {
      continue;
    }
    if (each.left == element.left && each.top == element.top) return each;
    found = each;
  }
  return found.value_or(element);
}

Element Desk::button(const std::string& window, const std::string& caption) const {
  return find("button " + caption, [&](const Element& element) {
    return element.window == window && element.role == "push button" && element.name == caption;
  });
}

Element Desk::named(const std::string& window, const std::string& name) const {
  return find(name, [&](const Element& element) {
    return element.window == window && element.name.starts_with(name);
  });
}

std::string Desk::valueOf(const std::string& window, const std::string& name) const {
  const std::string whole = named(window, name).name;
  return whole.size() > name.size() ? whole.substr(name.size() + 1) : std::string();
}

bool Desk::hasWindow(const std::string& title) const {
  for (const Element& element : elementsOf(kProgram)) {
    if (element.window == title && element.showing) return true;
  }
  return false;
}

std::ptrdiff_t Desk::windowsOnScreen() const {
  const std::string ids = outputOf({"xdotool", "search", "--onlyvisible", "--class", kProgram});
  return std::count(ids.begin(), ids.end(), '\n');
}

void Desk::bringToFront(const std::string& title) const {
  outputOf({"xdotool", "search", "--sync", "--onlyvisible", "--name", "^" + literal(title) + "$",
            "windowactivate", "--sync"});
}

// The window manager looks at each press before the program has it, and keys that are struck
// meanwhile overtake it.
void Desk::click(const Element& seen, int times) const {
  const Element element = placed(seen);
  outputOf({"xdotool", "mousemove", "--sync", std::to_string(element.left + element.width / 2),
            std::to_string(element.top + element.height / 2), "click", "--repeat",
            std::to_string(times), "--delay", "60", "1"});
  for (int press = 0; press < times; ++press) awaitWindowManager(kPatience);
}

void Desk::doubleClick(const Element& element) const { click(element, 2); }

void Desk::type(const std::string& text) const {
  outputOf({"xdotool", "type", "--delay", "15", text});
}

void Desk::press(const std::string& keys) const { outputOf({"xdotool", "key", keys}); }

std::string Desk::clipboard() const { return outputOf({"xclip", "-selection", "clipboard", "-o"}); }

void Desk::photograph(const std::string& name) const {
  std::filesystem::create_directories(VELTRIN_PICTURES);
  outputOf({"import", "-window", "root", std::string(VELTRIN_PICTURES) + "/" + name + ".png"});
}

}  // namespace veltrin::desk

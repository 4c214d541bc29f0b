// SPDX-License-Identifier: GPL-3.0-or-later
#include "machine/modules.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "machine/fact_text.h"
#include "machine/module_file.h"

namespace veltrin {
namespace {

// The kernel takes "-" in a module's name for "_".
std::string moduleName(std::string_view text) {
  std::string name(text);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

// The module whose file has a path, "kernel/fs/ext4/ext4.ko.xz"; empty for another path.
std::string moduleOfFile(std::string_view path) {
  const std::string_view file = path.substr(path.rfind('/') + 1);
  const std::size_t ending = file.find(".ko");
  return ending == std::string_view::npos ? std::string() : moduleName(file.substr(0, ending));
}

using Modules = std::map<std::string, ModuleFacts, std::less<>>;

// /proc/modules: a module is the first word of its line.
void addLoaded(const FileTree& files, Modules& modules) {
  files.readLines("/proc/modules", [&](std::string_view line) {
    const std::string name = printable(moduleName(line.substr(0, line.find(' '))));
    if (!name.empty()) {
      modules[name].name = name;
    }
  });
}

// modules.dep: "PATH: what it needs", below the folder of the kernel unless the path is whole.
void addPaths(const FileTree& files, const std::string& folder, Modules& modules) {
  files.readLines(folder + "modules.dep", [&](std::string_view line) {
    const std::string_view path = line.substr(0, line.find(':'));
    if (const auto found = modules.find(moduleOfFile(path)); found != modules.end()) {
      found->second.path = path.starts_with('/') ? std::string(path) : folder + std::string(path);
    }
  });
}

void addDescriptions(const FileTree& files, Modules& modules) {
  for (auto& [name, module] : modules) {
    if (module.path.ends_with(".ko")) {
      const MappedFile file = files.map(module.path);
      module.description = printable(moduleValue(moduleInformation(file.bytes()), "description"));
    }
  }
}

// modules.builtin lists the modules in the kernel's file by the files that they would have,
// modules.builtin.modinfo what they tell, as "NAME.KEY=VALUE".
void addBuiltIn(const FileTree& files, const std::string& folder, Modules& modules) {
  const std::string list = files.text(folder + "modules.builtin.modinfo");
  std::unordered_map<std::string_view, std::string_view> descriptions;
  for (std::string_view rest = list; !rest.empty();) {
    const std::string_view entry = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
    const std::size_t key = entry.find(".description=");
    if (key != std::string_view::npos && key < entry.find('=')) {
      descriptions.try_emplace(entry.substr(0, key), entry.substr(entry.find('=') + 1));
    }
  }
  files.readLines(folder + "modules.builtin", [&](std::string_view line) {
    const std::string name = moduleOfFile(line);
    if (!name.empty()) {
      const auto found = descriptions.find(name);
      modules[name] = {printable(name), found == descriptions.end() ? "" : printable(found->second),
                       "", ModuleStart::WithKernel};
    }
  });
}

// The modules that the system loads at its start.
class StartedModules {
 public:
  explicit StartedModules(const FileTree& files) {
    addFile(files, "/etc/modules");
    addFolders(files);
    addCommandLine(files);
  }

  bool holds(const std::string& name) const { return names_.contains(name); }

 private:
  // modules-load.d(5): a name on each line, comments after "#" and ";". Of files with the same
  // name the first folder's counts.
  void addFolders(const FileTree& files) {
    constexpr std::array kFolders{"/etc/modules-load.d/", "/run/modules-load.d/",
                                  "/usr/local/lib/modules-load.d/", "/usr/lib/modules-load.d/"};
    std::set<std::string> taken;
    for (const std::string folder : kFolders) {
      for (const std::string& file : files.names(folder)) {
        if (file.ends_with(".conf") && taken.insert(file).second) {
          addFile(files, folder + file);
        }
      }
    }
  }

  // modules(5) knows parameters behind the name.
  void addFile(const FileTree& files, const std::string& path) {
    files.readLines(files.resolved(path), [&](std::string_view line) {
      const auto words = wordsOf(line);
      if (!words.empty() && words[0][0] != '#' && words[0][0] != ';') {
        names_.insert(moduleName(words[0]));
      }
    });
  }

  // modules_load=NAME,NAME of the kernel (systemd-modules-load.service(8)).
  void addCommandLine(const FileTree& files) {
    const std::string line = files.line("/proc/cmdline");
    for (std::string_view word : wordsOf(line)) {
      const std::size_t sign = word.find('=');
      if (sign == std::string_view::npos || moduleName(word.substr(0, sign)) != "modules_load") {
        continue;
      }
      word.remove_prefix(sign + 1);
      while (!word.empty()) {
        const std::string_view name = word.substr(0, word.find(','));
        names_.insert(moduleName(name));
        word.remove_prefix(std::min(name.size() + 1, word.size()));
      }
    }
  }

  std::set<std::string, std::less<>> names_;
};

}  // namespace

std::vector<ModuleFacts> kernelModules(const FileTree& files, const Machine& machine) {
  Modules modules;
  addLoaded(files, modules);
  const std::string folder = "/lib/modules/" + machine.kernel().release + "/";
  if (!modules.empty()) {
    addPaths(files, folder, modules);
    addDescriptions(files, modules);
    const StartedModules started(files);
    for (auto& [name, module] : modules) {
      module.start = started.holds(name) ? ModuleStart::AtStart : ModuleStart::OnDemand;
    }
  }
  addBuiltIn(files, folder, modules);
  std::vector<ModuleFacts> facts;
  facts.reserve(modules.size());
  for (auto& [name, module] : modules) {
    facts.push_back(std::move(module));
  }
  return facts;
}

}  // namespace veltrin

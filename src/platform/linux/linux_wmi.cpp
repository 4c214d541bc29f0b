// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/linux_wmi.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "machine/fact_text.h"
#include "machine/linux_machine.h"
#include "platform/linux/gsettings.h"
#include "platform/linux/wmi_classes.h"
#include "platform/portable/wmi_moniker.h"

namespace veltrin {
namespace {

using Sources = std::shared_ptr<const WmiSources>;

// An answer that is collected as a whole when its first object is taken.
class CollectedObjects : public WmiObjects {
 public:
  using Collect = WmiAnswer (*)(const WmiSources&);

  CollectedObjects(Sources sources, Collect collect)
      : sources_(std::move(sources)), collect_(collect) {}

  std::optional<WmiObject> next() override {
    if (collect_ != nullptr) {
      answer_ = std::exchange(collect_, nullptr)(*sources_);
    }
    if (taken_ == answer_.size()) {
      return std::nullopt;
    }
    return std::move(answer_[taken_++]);
  }

 private:
  Sources sources_;
  Collect collect_;
  WmiAnswer answer_;
  std::size_t taken_ = 0;
};

// The answer of a class that reads as far as it is asked.
class ReadObjects : public WmiObjects {
 public:
  using Open = std::unique_ptr<WmiObjects> (*)(const WmiSources&);

  ReadObjects(Sources sources, Open open) : sources_(std::move(sources)), open_(open) {}

  std::optional<WmiObject> next() override {
    if (!objects_) {
      objects_ = open_(*sources_);
    }
    return objects_->next();
  }

 private:
  Sources sources_;
  Open open_;
  std::unique_ptr<WmiObjects> objects_;
};

class UnknownClass : public WmiObjects {
 public:
  explicit UnknownClass(std::string name) : name_(std::move(name)) {}

  std::optional<WmiObject> next() override {
    throw StatementFailed("There is no class " + name_, kInvalidProcedureCall);
  }

 private:
  std::string name_;
};

struct Class {
  std::string_view name;  // in lower case
  CollectedObjects::Collect collect = nullptr;
  ReadObjects::Open open = nullptr;  // where collect is none
};

constexpr std::array kClasses{
    Class{"win32_account", nullptr, win32Account},
    Class{"win32_baseboard", win32BaseBoard},
    Class{"win32_cachememory", win32CacheMemory},
    Class{"win32_computersystem", win32ComputerSystem},
    Class{"win32_desktop", win32Desktop},
    Class{"win32_desktopmonitor", win32DesktopMonitor},
    Class{"win32_diskdrive", win32DiskDrive},
    Class{"win32_floppycontroller", win32FloppyController},
    Class{"win32_idecontroller", win32IdeController},
    Class{"win32_keyboard", win32Keyboard},
    Class{"win32_logicaldisk", win32LogicalDisk},
    Class{"win32_ntlogevent", nullptr, win32NtLogEvent},
    Class{"win32_physicalmemory", win32PhysicalMemory},
    Class{"win32_pnpsigneddriver", win32PnpSignedDriver},
    Class{"win32_pointingdevice", win32PointingDevice},
    Class{"win32_printer", win32Printer},
    Class{"win32_processor", win32Processor},
    Class{"win32_product", nullptr, win32Product},
    Class{"win32_sounddevice", win32SoundDevice},
    Class{"win32_startupcommand", win32StartupCommand},
    Class{"win32_systemdriver", win32SystemDriver},
    Class{"win32_systemslot", win32SystemSlot},
    Class{"win32_usbhub", win32UsbHub},
    Class{"win32_videocontroller", win32VideoController},
};

std::unique_ptr<WmiObjects> answerOf(const Sources& sources, std::string_view name) {
  const auto* found =
      std::find_if(kClasses.begin(), kClasses.end(),
                   [wanted = lowerCase(name)](const Class& each) { return each.name == wanted; });
  if (found == kClasses.end()) {
    return std::make_unique<UnknownClass>(std::string(name));
  }
  if (found->collect != nullptr) {
    return std::make_unique<CollectedObjects>(sources, found->collect);
  }
  return std::make_unique<ReadObjects>(sources, found->open);
}

class LinuxWmiService : public WmiService {
 public:
  explicit LinuxWmiService(Sources sources) : sources_(std::move(sources)) {}

  std::unique_ptr<WmiObjects> ExecQuery(const std::string& query,
                                        std::optional<std::int32_t> /*flags*/) override {
    const std::vector<std::string_view> words = wordsOf(query);
    if (words.size() != 4 || lowerCase(words[0]) != "select" || words[1] != "*" ||
        lowerCase(words[2]) != "from") {
      throw StatementFailed("Invalid query: " + query, kInvalidProcedureCall);
    }
    return answerOf(sources_, words[3]);
  }

 private:
  Sources sources_;
};

// A machine goes by its name with or without its domain.
bool isThis(const std::string& wanted, const Machine& machine) {
  const std::string name = lowerCase(wanted);
  const std::string own = lowerCase(machine.kernel().host);
  return name == "." || name == "localhost" || name == own || name == own.substr(0, own.find('.'));
}

}  // namespace

WmiSources sourcesOfThisMachine(std::function<std::vector<PrinterFacts>()> printers) {
  return {FileTree(), std::make_shared<LinuxMachine>(), std::move(printers), gsetting};
}

std::unique_ptr<WmiService> LinuxWmi::connect(const std::string& moniker) {
  const auto wanted = wmiMonikerOf(moniker);
  if (!wanted || lowerCase(wanted->spaceName) != "root\\cimv2" ||
      !isThis(wanted->machine, *sources_->machine)) {
    throw StatementFailed("Nothing answers at " + moniker, kInvalidProcedureCall);
  }
  return std::make_unique<LinuxWmiService>(sources_);
}

}  // namespace veltrin

#include "platform/linux/wmi_classes.h"

namespace veltrin {
namespace {

class Nothing : public WmiObjects {
 public:
  std::optional<WmiObject> next() override { return std::nullopt; }
};

}  // namespace

std::unique_ptr<WmiObjects> win32NtLogEvent(const WmiSources& /*sources*/) {
  return std::make_unique<Nothing>();
}

}  // namespace veltrin

#include "sysinfo/modTasks.h"

namespace veltrin {

void modTasks(Program& /*program*/, frmSysInfo* /*window*/) {}

}  // namespace veltrin

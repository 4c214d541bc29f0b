#include "toolbox/toolbox.h"

#include "ping/pingtester.h"

namespace veltrin {

void provideTools(Program& program) { program.provide<pingtester>("pingtester"); }

}  // namespace veltrin

#include "toolbox/toolbox.h"

#include "ping/pingtester.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/DosFrm.h"

namespace veltrin {

void provideTools(Program& program) {
  program.provide<pingtester>("pingtester");
  program.provide<trace>("trace");
  program.provide<indepth>("indepth");
  program.provide<indepth2>("indepth2");
  program.getinfo = [&program] { program.keep<DosFrm>()->getinfo(); };
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolbox/toolbox.h"

#include "download/testdl.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "ping/pingtester.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/DosFrm.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {

void provideTools(Program& program) {
  program.provide<pingtester>(WindowName::pingtester);
  program.provide<trace>(WindowName::trace);
  program.provide<Stability>(WindowName::Stability);
  program.provide<MonOut>(WindowName::MonOut);
  program.provide<indepth>(WindowName::indepth);
  program.provide<indepth2>(WindowName::indepth2);
  program.provide<mtutest>(WindowName::mtutest);
  program.provide<testdl>(WindowName::testdl);
  program.provide<frmNetwork>(WindowName::frmNetwork);
  program.provide<frmIP>(WindowName::frmIP);
  program.provide<frmSysInfo>(WindowName::frmSysInfo);
  program.getinfo = [&program] { program.keep<DosFrm>()->getinfo(); };
}

}  // namespace veltrin

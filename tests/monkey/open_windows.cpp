// SPDX-License-Identifier: GPL-3.0-or-later
#include "monkey/open_windows.h"

#include "download/testdl.h"
#include "frame/About.h"
#include "frame/setlang.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "ping/pingtester.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/StabilitySUM.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/DosFrm.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {
namespace {

template <class... Kinds>
OpenWindows openOf(const Program& program) {
  return {program.isLoaded<Kinds>()...};
}

}  // namespace

OpenWindows openWindows(const Program& program) {
  return openOf<starter, startup, About, setlang, pingtester, trace, Stability, StabilitySUM,
                MonOut, indepth, indepth2, mtutest, pingit, setmtu, testdl, frmNetwork, frmIP,
                frmSysInfo, frmPrint, DosFrm, DosApp>(program);
}

}  // namespace veltrin

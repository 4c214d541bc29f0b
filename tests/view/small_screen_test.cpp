// SPDX-License-Identifier: GPL-3.0-or-later
// Every window has its place on a screen of 1280 by 720, beside a task bar and within a
// frame, at each scale.
#include "download/testdl.h"
#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "monitor/frmIP.h"
#include "monitor/frmNetwork.h"
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "pictures.h"
#include "route/MonOut.h"
#include "route/Stability.h"
#include "route/StabilitySUM.h"
#include "route/indepth.h"
#include "route/indepth2.h"
#include "route/trace.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"

namespace veltrin {
namespace {

// What a task bar of 40 pixels and the frame of a window leave of the screen.
constexpr QSize kRoom(1280, 650);

class RoomOnASmallScreen : public Pictures {
 protected:
  // Shows a window as it opens, and photographs it there and at its smallest.
  template <class Kind>
  void lookAt() {
    const auto form = look<Kind>();
    form->caption = form->name();
    const QSize opening = window->size();
    window->resize(1, 1);
    photograph("small-" + form->name());
    smallest = window->size();
    EXPECT_TRUE(fits(opening)) << opening.width() << " by " << opening.height();
    EXPECT_TRUE(fits(smallest)) << smallest.width() << " by " << smallest.height();
  }

  static bool fits(const QSize& size) { return size == size.boundedTo(kRoom); }

  QSize smallest;
};

TEST_F(RoomOnASmallScreen, Splash) { lookAt<starter>(); }
TEST_F(RoomOnASmallScreen, Menu) { lookAt<startup>(); }
TEST_F(RoomOnASmallScreen, AboutWindow) { lookAt<About>(); }
TEST_F(RoomOnASmallScreen, LanguageWindow) { lookAt<setlang>(); }
TEST_F(RoomOnASmallScreen, PingTest) { lookAt<pingtester>(); }
TEST_F(RoomOnASmallScreen, TraceRoute) { lookAt<trace>(); }
TEST_F(RoomOnASmallScreen, StabilitySummary) { lookAt<StabilitySUM>(); }
TEST_F(RoomOnASmallScreen, InDepth) { lookAt<indepth>(); }
TEST_F(RoomOnASmallScreen, InDepthAfterAHopStabilityTest) { lookAt<indepth2>(); }

TEST_F(RoomOnASmallScreen, EntryOfTheMtuOptimizer) { lookAt<mtutest>(); }
TEST_F(RoomOnASmallScreen, PingsBeforeTheMtuSearch) { lookAt<pingit>(); }
TEST_F(RoomOnASmallScreen, MtuSearch) { lookAt<setmtu>(); }
TEST_F(RoomOnASmallScreen, DownloadTest) { lookAt<testdl>(); }

TEST_F(RoomOnASmallScreen, SystemReport) { lookAt<frmSysInfo>(); }
TEST_F(RoomOnASmallScreen, Printing) { lookAt<frmPrint>(); }

TEST_F(RoomOnASmallScreen, BandwidthMonitor) { lookAt<frmNetwork>(); }

TEST_F(RoomOnASmallScreen, ProtocolMonitor) {
  shown<frmIP>();

  EXPECT_TRUE(fits(window->size())) << window->height();
}

TEST_F(RoomOnASmallScreen, PingTestWithItsChart) {
  const auto form = look<pingtester>();
  form->PingChart.visible = true;
  form->Text1.visible = true;
  form->Text2.visible = true;
  atRest([] {});

  EXPECT_TRUE(fits(window->size())) << window->height();
}

TEST_F(RoomOnASmallScreen, StabilityTestWithAllItsGraphs) {
  const auto form = shown<Stability>();
  form->height = 7550;

  EXPECT_TRUE(fits(window->size())) << window->height();
}

TEST_F(RoomOnASmallScreen, OutageMonitorInAnOutage) {
  const auto form = shown<MonOut>();
  form->height = 6700;

  EXPECT_TRUE(fits(window->size())) << window->height();
}

// A window that is added is to be looked at here too.
TEST_F(RoomOnASmallScreen, TheseAreAllWindows) { EXPECT_EQ(windowNames().size(), 19U); }

}  // namespace
}  // namespace veltrin

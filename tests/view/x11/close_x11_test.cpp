// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that their user cannot close, on a real X server with a window manager.
#include <cstdio>

#include "mtu/setmtu.h"
#include "view_test.h"
#include "x11/x11_tools.h"

namespace veltrin {
namespace {

class CloseOnX11 : public ViewTest {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    ASSERT_EQ(QGuiApplication::platformName(), "xcb");
    other = program.show<pingtester>();
  }

  template <class Kind>
  std::shared_ptr<Kind> exposed() {
    auto form = shown<Kind>();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    return form;
  }

  std::string id() const { return std::to_string(window->winId()); }

  // Whether the window's hints let a window manager close it (_MOTIF_WM_HINTS: the second
  // number is the functions, of which 0x20 closes).
  bool offersClosing() const {
    const std::string hints = outputOf("xprop -id " + id() + " _MOTIF_WM_HINTS");
    unsigned functions = 0;
    EXPECT_EQ(std::sscanf(hints.c_str(), "%*[^=]= %*x, %x", &functions), 1) << hints;
    return (functions & 0x20U) != 0;
  }

  // Does something by another program, and looks for a while whether the form ends.
  bool endsBy(const std::string& command, const Form& form) {
    const EventGate::Opening opening(events.gate());
    outputOf(command);
    constexpr int kPatience = 1500;  // ms
    return QTest::qWaitFor([&] { return !form.isLoaded(); }, kPatience);
  }

  // A click on the last button of the frame that the window manager draws.
  std::string clickOnFrame() const {
    const std::string frame = outputOf("xprop -id " + id() + " _NET_FRAME_EXTENTS");
    int top = 0;
    EXPECT_EQ(std::sscanf(frame.c_str(), "%*[^=]= %*d, %*d, %d", &top), 1) << frame;
    const QPoint corner = window->mapToGlobal(QPoint(window->width(), 0));
    const double scale = window->devicePixelRatioF();
    return "xdotool mousemove " + std::to_string(qRound(corner.x() * scale) - top / 2) + " " +
           std::to_string(qRound(corner.y() * scale) - top / 2) + " click 1";
  }

  std::shared_ptr<pingtester> other;
};

TEST_F(CloseOnX11, TheMtuSearchOffersNoClosingToTheWindowManager) {
  exposed<setmtu>();

  EXPECT_FALSE(offersClosing());
}

TEST_F(CloseOnX11, OtherWindowsOfferClosingToTheWindowManager) {
  exposed<setlang>();

  EXPECT_TRUE(offersClosing());
}

// This window manager draws the button whatever the hints say, and its close message comes.
TEST_F(CloseOnX11, AltF4DoesNotCloseTheMtuSearch) {
  const auto form = exposed<setmtu>();

  EXPECT_FALSE(endsBy("xdotool key --clearmodifiers alt+F4", *form));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(CloseOnX11, AltF4ClosesOtherWindows) {
  const auto form = exposed<setlang>();

  EXPECT_TRUE(endsBy("xdotool key --clearmodifiers alt+F4", *form));
}

TEST_F(CloseOnX11, TheButtonOfTheFrameDoesNotCloseTheMtuSearch) {
  const auto form = exposed<setmtu>();

  EXPECT_FALSE(endsBy(clickOnFrame(), *form));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(CloseOnX11, TheButtonOfTheFrameClosesOtherWindows) {
  const auto form = exposed<setlang>();

  EXPECT_TRUE(endsBy(clickOnFrame(), *form));
}

}  // namespace
}  // namespace veltrin

// Windows that their user cannot close, on a real X server with a window manager.
#include "mtu/setmtu.h"
#include "view_test.h"
#include "x11/x11_tools.h"

namespace veltrin {
namespace {

using testing::HasSubstr;
using testing::Not;

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

  // What the window manager lets be done with the window.
  std::string allowed() const { return outputOf("xprop -id " + id() + " _NET_WM_ALLOWED_ACTIONS"); }

  // Does something by another program, and looks for a while whether the form ends.
  bool endsBy(const std::string& command, const Form& form) {
    const EventGate::Opening opening(events.gate());
    outputOf(command);
    constexpr int kPatience = 1500;  // ms
    return QTest::qWaitFor([&] { return !form.isLoaded(); }, kPatience);
  }

  // The window manager's close message, straight to the window.
  std::string closeMessage() const { return "xdotool windowquit " + id(); }

  std::shared_ptr<pingtester> other;
};

TEST_F(CloseOnX11, TheWindowManagerMayNotCloseTheMtuSearch) {
  exposed<setmtu>();

  EXPECT_TRUE(
      QTest::qWaitFor([&] { return allowed().find("_NET_WM_ACTION_MOVE") != std::string::npos; }));
  EXPECT_THAT(allowed(), Not(HasSubstr("_NET_WM_ACTION_CLOSE")));
}

TEST_F(CloseOnX11, TheWindowManagerMayCloseOtherWindows) {
  exposed<setlang>();

  EXPECT_TRUE(
      QTest::qWaitFor([&] { return allowed().find("_NET_WM_ACTION_CLOSE") != std::string::npos; }));
}

TEST_F(CloseOnX11, AltF4DoesNotCloseTheMtuSearch) {
  const auto form = exposed<setmtu>();

  EXPECT_FALSE(endsBy("xdotool key --clearmodifiers alt+F4", *form));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(CloseOnX11, AltF4ClosesOtherWindows) {
  const auto form = exposed<setlang>();

  EXPECT_TRUE(endsBy("xdotool key --clearmodifiers alt+F4", *form));
}

TEST_F(CloseOnX11, TheCloseMessageDoesNotCloseTheMtuSearch) {
  const auto form = exposed<setmtu>();

  EXPECT_FALSE(endsBy(closeMessage(), *form));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(CloseOnX11, TheCloseMessageClosesOtherWindows) {
  const auto form = exposed<setlang>();

  EXPECT_TRUE(endsBy(closeMessage(), *form));
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that their user cannot close.
#include "mtu/setmtu.h"
#include "view_test.h"

namespace veltrin {
namespace {

class SystemMenu : public ViewTest {
 protected:
  // A loaded window, before it is first shown.
  std::shared_ptr<setlang> unshown() { return program.keep<setlang>(); }

  void closeBySystem() {
    atRest([&] { window->windowHandle()->close(); });
  }
};

TEST_F(SystemMenu, AWindowWithoutTheCloseCommandStaysWhenTheSystemClosesIt) {
  desktop.removeFromSystemMenu(*unshown(), kCloseCommand, kByCommand);
  const auto form = shown<setlang>();

  closeBySystem();

  EXPECT_TRUE(form->isLoaded());
  EXPECT_TRUE(window->isVisible());
}

TEST_F(SystemMenu, ItsFrameHasNoCloseButton) {
  desktop.removeFromSystemMenu(*unshown(), kCloseCommand, kByCommand);
  shown<setlang>();

  EXPECT_TRUE(window->windowFlags() & Qt::CustomizeWindowHint);
  EXPECT_FALSE(window->windowFlags() & Qt::WindowCloseButtonHint);
}

TEST_F(SystemMenu, ItsFrameKeepsItsTitleAndItsOtherButtons) {
  desktop.removeFromSystemMenu(*unshown(), kCloseCommand, kByCommand);
  shown<setlang>();

  EXPECT_TRUE(window->windowFlags() & Qt::WindowTitleHint);
  EXPECT_TRUE(window->windowFlags() & Qt::WindowSystemMenuHint);
  EXPECT_TRUE(window->windowFlags() & Qt::WindowMinimizeButtonHint);
}

TEST_F(SystemMenu, TheProgramStillTakesItAway) {
  program.show<pingtester>();
  desktop.removeFromSystemMenu(*unshown(), kCloseCommand, kByCommand);
  const auto form = shown<setlang>();

  program.unload(*form);

  EXPECT_FALSE(form->isLoaded());
  EXPECT_EQ(desktop.windowOf(*form), nullptr);
}

TEST_F(SystemMenu, AWindowWithoutASeparatorIsClosedLikeAnyOther) {
  program.show<pingtester>();
  desktop.removeFromSystemMenu(*unshown(), 5, kByPosition);
  const auto form = shown<setlang>();

  closeBySystem();

  EXPECT_FALSE(form->isLoaded());
}

TEST_F(SystemMenu, OtherWindowsOfTheProgramAreClosedAsEver) {
  desktop.removeFromSystemMenu(*unshown(), kCloseCommand, kByCommand);
  program.show<setlang>();
  const auto form = shown<pingtester>();

  closeBySystem();

  EXPECT_FALSE(form->isLoaded());
}

TEST_F(SystemMenu, TheMtuSearchStaysWhenTheSystemClosesIt) {
  const auto form = shown<setmtu>();

  closeBySystem();

  EXPECT_TRUE(form->isLoaded());
  EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace veltrin

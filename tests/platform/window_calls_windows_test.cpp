// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

#include "platform/windows/window_calls.h"

namespace veltrin {
namespace {

class WindowCallsTest : public testing::Test {
 protected:
  void SetUp() override {
    window_ = CreateWindowExA(0, "STATIC", "Test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 90, 300,
                              200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(window_, nullptr);
  }
  void TearDown() override { DestroyWindow(window_); }

  HWND window_ = nullptr;
};

TEST_F(WindowCallsTest, TellsTheMouse) {
  SetCursorPos(123, 145);
  EXPECT_TRUE((nativeCursorPosition() == ScreenPoint{123, 145}));
}

TEST_F(WindowCallsTest, TellsAWindowsPlaceWithItsFrame) {
  EXPECT_TRUE((nativeWindowRectangle(window_) == ScreenRectangle{100, 90, 400, 290}));
}

TEST_F(WindowCallsTest, MovesAWindow) {
  moveNativeWindow(window_, {50, 60, 370, 290});
  EXPECT_TRUE((nativeWindowRectangle(window_) == ScreenRectangle{50, 60, 370, 290}));
}

// The system's own copy of the menu: Restore, Move, Size, Minimize, Maximize, a line, Close.
TEST_F(WindowCallsTest, ASystemMenuHasNoCloseCommandWhenThatIsTakenAway) {
  const HMENU menu = GetSystemMenu(window_, FALSE);
  const int entries = GetMenuItemCount(menu);
  ASSERT_NE(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND), ~0U);

  removeFromNativeSystemMenu(window_, kCloseCommand, kByCommand);

  EXPECT_EQ(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND), ~0U);
  EXPECT_EQ(GetMenuItemCount(menu), entries - 1);
}

TEST_F(WindowCallsTest, TheLineAboveTheCloseCommandIsTakenAwayByItsPlace) {
  const HMENU menu = GetSystemMenu(window_, FALSE);
  removeFromNativeSystemMenu(window_, kCloseCommand, kByCommand);
  const int entries = GetMenuItemCount(menu);
  ASSERT_NE(GetMenuState(menu, 5, MF_BYPOSITION) & MF_SEPARATOR, 0U);

  removeFromNativeSystemMenu(window_, 5, kByPosition);

  EXPECT_EQ(GetMenuItemCount(menu), entries - 1);
  EXPECT_NE(GetMenuState(menu, SC_MAXIMIZE, MF_BYCOMMAND), ~0U);
}

TEST_F(WindowCallsTest, AWindowThatIsNoneHasNoMenuToTakeFrom) {
  removeFromNativeSystemMenu(nullptr, kCloseCommand, kByCommand);

  EXPECT_NE(GetMenuState(GetSystemMenu(window_, FALSE), SC_CLOSE, MF_BYCOMMAND), ~0U);
}

TEST_F(WindowCallsTest, HasNoPlaceOfAWindowThatIsNone) {
  EXPECT_TRUE(nativeWindowRectangle(nullptr) == ScreenRectangle());
}

// Pixels of the desktop around a border.
class InvertedBorderTest : public testing::Test {
 protected:
  static std::vector<COLORREF> pixels() {
    const HWND desktop = GetDesktopWindow();
    const HDC screen = GetWindowDC(desktop);
    std::vector<COLORREF> colours;
    for (int y = 498; y < 520; ++y) {
      for (int x = 598; x < 630; ++x) colours.push_back(GetPixel(screen, x, y));
    }
    ReleaseDC(desktop, screen);
    return colours;
  }
};

TEST_F(InvertedBorderTest, IsGoneWhenItIsDrawnTwice) {
  const auto before = pixels();
  invertBorder({600, 500, 620, 510});
  const auto drawn = pixels();
  invertBorder({600, 500, 620, 510});

  EXPECT_NE(drawn, before);
  EXPECT_EQ(pixels(), before);
}

}  // namespace
}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The splash, the main menu and the About window under real input.
#include <QLabel>
#include <QScreen>

#include "frame/About.h"
#include "frame/starter.h"
#include "frame/startup.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class StartWindows : public ViewTest {
 protected:
  // Enters a tool that logs that it was opened.
  void provide(WindowName name) {
    program.tools.enter(name, {[this, name] { log.push_back("show " + nameOf(name)); },
                               [this, name](const std::function<void()>& unloaded) {
                                 log.push_back("show modally " + nameOf(name));
                                 if (unloaded) unloaded();
                               }});
  }

  std::shared_ptr<startup> menu() { return shown<startup>(); }

  void press(Qt::Key key) {
    atRest([&] { QTest::keyClick(window->windowHandle(), key); });
  }

  std::vector<std::string> log;
};

TEST_F(StartWindows, TheSplashHasNoFrame) {
  const auto form = std::make_shared<starter>(program);
  desktop.show(*form);

  EXPECT_TRUE(desktop.windowOf(*form)->windowFlags() & Qt::FramelessWindowHint);

  desktop.remove(*form);
}

TEST_F(StartWindows, TheSplashComesUpInTheMiddleOfTheScreen) {
  const auto form = std::make_shared<starter>(program);
  desktop.show(*form);
  const QWidget* splash = desktop.windowOf(*form);

  const QPoint away = splash->geometry().center() - splash->screen()->availableGeometry().center();

  EXPECT_LE(away.manhattanLength(), 2);
  desktop.remove(*form);
}

TEST_F(StartWindows, TheSplashKeepsItsSizeWhenTheNewestVersionComes) {
  const auto form = std::make_shared<starter>(program);
  form->Label1.caption = "Veltrin";
  form->Label2.caption = "Your Version 1.03  -  Dated 5 Jan 2012";
  desktop.show(*form);
  const QWidget* splash = desktop.windowOf(*form);
  const QSize before = splash->size();

  form->Label1.caption = "Current Version: 1.05";
  QCoreApplication::processEvents();

  EXPECT_EQ(splash->size(), before);
  desktop.remove(*form);
}

TEST_F(StartWindows, AClickOnAToolOpensIt) {
  provide(WindowName::trace);
  menu();

  atRest([&] { clickAt(widget("Command1")); });

  EXPECT_THAT(log, ElementsAre("show trace"));
}

TEST_F(StartWindows, EnterOpensTheToolThatHasTheKeyboard) {
  provide(WindowName::pingtester);
  provide(WindowName::indepth);
  menu();
  widget("Command2")->setFocus();

  press(Qt::Key_Return);

  EXPECT_THAT(log, ElementsAre("show indepth"));
}

TEST_F(StartWindows, AToolToComeCannotBePressed) {
  menu();

  atRest([&] { clickAt(widget("Command9")); });

  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(widget("Command9")->isEnabled());
}

TEST_F(StartWindows, AClickOnThePictureOpensTheDownloadTest) {
  provide(WindowName::testdl);
  menu();

  atRest([&] { clickAt(widget("Image3")); });

  EXPECT_THAT(log, ElementsAre("show modally testdl"));
}

TEST_F(StartWindows, ThePictureOfAToolToComeCannotBePressed) {
  menu();

  atRest([&] { clickAt(widget("Image3")); });

  EXPECT_THAT(log, IsEmpty());
}

TEST_F(StartWindows, AClickOnTheMakersMarkOpensTheHomePage) {
  menu();

  atRest([&] { clickAt(widget("Image2")); });

  EXPECT_THAT(shell.runs, SizeIs(1));
}

TEST_F(StartWindows, TheSpaceBarPressesThePictureThatHasTheKeyboard) {
  menu();
  widget("Image2")->setFocus();

  press(Qt::Key_Space);

  EXPECT_THAT(shell.runs, SizeIs(1));
}

TEST_F(StartWindows, EnterPressesThePictureThatHasTheKeyboard) {
  menu();
  widget("Image2")->setFocus();

  press(Qt::Key_Return);

  EXPECT_THAT(shell.runs, SizeIs(1));
}

TEST_F(StartWindows, PicturesThatCanBeClickedShowAHand) {
  menu();

  EXPECT_EQ(widget("Image2")->cursor().shape(), Qt::PointingHandCursor);
  EXPECT_EQ(widget("Image3")->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(StartWindows, TheGripShowsThatItMovesTheWindow) {
  menu();

  atRest([&] {
    QTest::mouseMove(window->windowHandle(),
                     widget("Image1")->mapTo(window, widget("Image1")->rect().center()));
  });

  EXPECT_EQ(widget("Image1")->cursor().shape(), Qt::SizeAllCursor);
}

TEST_F(StartWindows, BesideTheGripThePointerIsTheUsualOne) {
  const auto form = menu();
  form->mousePointer = MousePointer::SizeAll;

  atRest([&] { QTest::mouseMove(window->windowHandle(), QPoint(3, 3)); });

  EXPECT_EQ(window->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(StartWindows, TheAddressesStandOnTwoLines) {
  program.start.LocalIp = "192.168.178.24";
  program.start.PublicIp = "203.0.113.201";
  menu();

  EXPECT_EQ(widget<QLabel>("Label4")->text(), "Your IP - 203.0.113.201\nLocal - 192.168.178.24");
}

TEST_F(StartWindows, TheMenuHasTheSizeOfItsContents) {
  menu();

  EXPECT_EQ(window->size(), window->sizeHint());
  EXPECT_EQ(window->maximumSize(), window->size());
}

TEST_F(StartWindows, AModalWindowBelongsToTheOneItWasOpenedFrom) {
  menu();
  const QWindow* opener = window->windowHandle();
  const QWindow* owner = nullptr;

  soon([&] {
    const QWidget* front = QApplication::activeModalWidget();
    ASSERT_NE(front, nullptr);
    owner = front->windowHandle()->transientParent();
    events.gate().post([this] { program.unload<About>(); });
  });
  atRest([&] { clickAt(widget("Command6")); });

  EXPECT_EQ(owner, opener);
}

class AboutTest : public StartWindows {
 protected:
  void SetUp() override {
    StartWindows::SetUp();
    provide(WindowName::frmSysInfo);
    menu();
    about = shown<About>();
  }

  std::shared_ptr<About> about;
};

TEST_F(AboutTest, AClickOnTheWindowClosesIt) {
  atRest([&] { QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(3, 3)); });

  EXPECT_FALSE(about->isLoaded());
}

TEST_F(AboutTest, AClickOnTheSignClosesTheWindow) {
  atRest([&] { clickAt(widget("decorSign")); });

  EXPECT_FALSE(about->isLoaded());
}

TEST_F(AboutTest, AClickOnTheVersionClosesTheWindow) {
  atRest([&] { clickAt(widget("Label2")); });

  EXPECT_FALSE(about->isLoaded());
}

TEST_F(AboutTest, AClickOnTheEmptyTextClosesNothing) {
  atRest([&] { clickAt(widget("Label4")); });

  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutTest, TheRightButtonClosesNothing) {
  atRest([&] { QTest::mouseClick(window->windowHandle(), Qt::RightButton, {}, QPoint(3, 3)); });

  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutTest, APressThatIsReleasedOverAnotherControlIsNoClick) {
  atRest([&] {
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, QPoint(3, 3));
    const QWidget* elsewhere = widget("Label4");
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {},
                        elsewhere->mapTo(window, elsewhere->rect().center()));
  });

  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutTest, EscapeClosesTheWindow) {
  press(Qt::Key_Escape);

  EXPECT_FALSE(about->isLoaded());
}

TEST_F(AboutTest, AClickOnTheLinkOpensTheReportAndClosesNothing) {
  atRest([&] { clickAt(widget("Label1")); });

  EXPECT_THAT(log, ElementsAre("show modally frmSysInfo"));
  EXPECT_TRUE(about->isLoaded());
}

TEST_F(AboutTest, EnterPressesTheLinkThatHasTheKeyboard) {
  widget("Label1")->setFocus();

  press(Qt::Key_Return);

  EXPECT_THAT(log, ElementsAre("show modally frmSysInfo"));
}

TEST_F(AboutTest, TheSpaceBarPressesTheLinkThatHasTheKeyboard) {
  widget("Label1")->setFocus();

  press(Qt::Key_Space);

  EXPECT_THAT(log, ElementsAre("show modally frmSysInfo"));
}

TEST_F(AboutTest, ADisabledLinkOpensNothingAndClosesNothing) {
  about->Label1.enabled = false;

  atRest([&] { clickAt(widget("Label1")); });

  EXPECT_THAT(log, IsEmpty());
  EXPECT_TRUE(about->isLoaded());
}

}  // namespace
}  // namespace veltrin

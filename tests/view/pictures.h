// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the windows, for people to look at.
#pragma once

#include <filesystem>
#include <string>

#include <QPixmap>

#include "view_test.h"

namespace veltrin {

class Pictures : public ViewTest {
 protected:
  // Saves a window as it looks at the scale of the screen.
  void photograph(const std::string& name) {
    atRest([] {});
    const double scale = window->devicePixelRatioF();
    QPixmap picture(window->size() * scale);
    picture.setDevicePixelRatio(scale);
    window->render(&picture);
    std::filesystem::create_directories(PICTURE_FOLDER);
    const std::string file =
        std::string(PICTURE_FOLDER) + "/" + name + "-" + fromQt(QString::number(scale)) + ".png";
    EXPECT_TRUE(picture.save(toQt(file))) << file;
  }

  // Puts a form on the screen that does not begin its work.
  template <class Kind>
  std::shared_ptr<Kind> look() {
    auto form = std::make_shared<Kind>(program);
    looked = form;
    desktop.show(*form);
    window = desktop.windowOf(*form);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return form;
  }

  void TearDown() override {
    if (looked) desktop.remove(*looked);
  }

  std::shared_ptr<Form> looked;
};

}  // namespace veltrin

// Colours and pictures of the windows.
#include <QIcon>

#include "frame/startup.h"
#include "view/picture.h"
#include "view/picture_view.h"
#include "view/window_catalogue.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

class LookTest : public ViewTest {
 protected:
  static int opacityOf(const QPixmap& picture) {
    const QImage image = picture.toImage();
    int highest = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        highest = std::max(highest, image.pixelColor(x, y).alpha());
      }
    }
    return highest;
  }
};

TEST_F(LookTest, NoColourIsLeftToTheDesktop) {
  const QPalette palette = QApplication::palette();
  std::vector<int> unset;

  for (int role = 0; role < QPalette::NColorRoles; ++role) {
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      const auto which = static_cast<QPalette::ColorRole>(role);
      if (which != QPalette::NoRole && !palette.isBrushSet(group, which)) unset.push_back(role);
    }
  }

  EXPECT_THAT(unset, IsEmpty());
}

TEST_F(LookTest, EveryPictureOfTheFormsIsInstalledForAllScales) {
  std::vector<std::string> missing;
  int pictures = 0;

  for (const std::string& name : windowNames()) {
    const auto made = makeWindow(name);
    for (const QWidget* child : made->findChildren<QWidget*>()) {
      const std::string picture = fromQt(child->property(kPictureProperty).toString());
      if (picture.empty()) continue;
      ++pictures;
      if (loadPicture(files, picture).availableSizes().size() != 3) missing.push_back(picture);
    }
  }

  EXPECT_THAT(missing, IsEmpty());
  EXPECT_EQ(pictures, 12);
}

TEST_F(LookTest, EveryToolOfTheMenuHasItsPicture) {
  shown<startup>();

  for (const char* name : {"Command1", "Command2", "Command4", "Command7", "Command8", "Command9",
                           "Command10", "Command12", "Image2", "Image3"}) {
    EXPECT_FALSE(widget<QPushButton>(name)->icon().isNull()) << name;
  }
}

TEST_F(LookTest, AScreenAt150PercentGetsPixelsOfItsOwn) {
  const QIcon picture = loadPicture(files, "ping");

  const QPixmap shown = picture.pixmap(QSize(32, 32), 1.5);

  EXPECT_EQ(shown.size(), QSize(48, 48));
  EXPECT_EQ(shown.toImage(),
            QImage(SHARE_FOLDER "/icons/ping-150.png").convertToFormat(shown.toImage().format()));
}

TEST_F(LookTest, APictureThatIsNotInstalledIsEmpty) {
  EXPECT_TRUE(loadPicture(files, "nothing").isNull());
}

TEST_F(LookTest, ThePictureOfWhatIsDisabledIsPale) {
  const auto form = shown<startup>();
  const QIcon picture = loadPicture(files, "trace");

  EXPECT_EQ(opacityOf(picture.pixmap(QSize(32, 32), 1.0, QIcon::Normal)), 255);
  EXPECT_LT(opacityOf(picture.pixmap(QSize(32, 32), 1.0, QIcon::Disabled)), 128);
}

TEST_F(LookTest, APictureInTheWindowFollowsItsControlsState) {
  const auto form = shown<startup>();
  auto* grip = dynamic_cast<PictureView*>(widget("Image1"));
  const int before = opacityOf(grip->pixmap());

  form->Image1.enabled = false;

  EXPECT_EQ(before, 255);
  EXPECT_LT(opacityOf(grip->pixmap()), 128);
}

}  // namespace
}  // namespace veltrin

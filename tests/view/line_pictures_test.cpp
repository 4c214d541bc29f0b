// SPDX-License-Identifier: GPL-3.0-or-later
// The small pictures of the report's lines: whether they are all there, and look like one
// family.
#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QPainter>

#include "sysinfo/report_pictures.h"
#include "view/contrast.h"
#include "view/picture.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::IsEmpty;

constexpr int kSide = 16;  // pixels of a picture at 100 percent
constexpr std::array<int, 3> kPercents = {100, 150, 200};

// The colours that the pictures are drawn in; the others are those of rounded and slanting
// edges.
constexpr std::array<QRgb, 8> kFamily = {0xff23221e, 0xff7a7560, 0xffbdb795, 0xfff7f6f1,
                                         0xff2f5f7d, 0xff5a92b4, 0xff4c8a3a, 0xffc24000};

const QColor kLightGround(Qt::white);
const QColor kDarkGround(0x2b, 0x2b, 0x2b);

// What a graphical object needs to be made out (WCAG 2.1, success criterion 1.4.11) is 3; the
// orange of warnings is a little below that on the dark ground.
constexpr double kSeenContrast = 2.5;
constexpr double kSeenPart = 0.25;

// Of what is painted at 100 percent; twice as much at 200. Round ones have most pixels between.
constexpr double kClearPart = 0.3;

class LinePictures : public testing::Test {
 protected:
  // A picture as it is installed.
  static QImage installed(const ReportPicture& picture, int percent) {
    const std::string file =
        std::string(SHARE_FOLDER "/icons/") + picture.name + "-" + std::to_string(percent) + ".png";
    return QImage(toQt(file)).convertToFormat(QImage::Format_ARGB32);
  }

  // The names of those of which something does not hold at some scale.
  template <class Holds>
  static std::vector<std::string> failing(Holds holds) {
    std::vector<std::string> names;
    for (const ReportPicture& picture : kReportPictures) {
      for (const int percent : kPercents) {
        const QImage image = installed(picture, percent);
        if (image.isNull() || !holds(image, percent)) {
          names.push_back(picture.name + std::string("-") + std::to_string(percent));
        }
      }
    }
    return names;
  }

  // How many pixels are such ones.
  template <class Such>
  static int count(const QImage& image, Such such) {
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (such(image.pixel(x, y))) ++pixels;
      }
    }
    return pixels;
  }

  static int painted(const QImage& image) {
    return count(image, [](QRgb pixel) { return qAlpha(pixel) != 0; });
  }

  static int differing(const QImage& one, const QImage& other) {
    int pixels = 0;
    for (int y = 0; y < one.height(); ++y) {
      for (int x = 0; x < one.width(); ++x) {
        if (one.pixel(x, y) != other.pixel(x, y)) ++pixels;
      }
    }
    return pixels;
  }

  // The part of what is painted that is to be made out on a ground.
  static double seenOn(const QColor& ground, const QImage& image) {
    QImage shown(image.size(), QImage::Format_RGB32);
    shown.fill(ground);
    QPainter(&shown).drawImage(0, 0, image);
    const int seen =
        count(shown, [&](QRgb pixel) { return contrast(QColor(pixel), ground) >= kSeenContrast; });
    return static_cast<double>(seen) / painted(image);
  }
};

TEST_F(LinePictures, EachHasANameAndAMeaningOfItsOwn) {
  std::set<std::string> names;
  std::set<std::string> meanings;

  for (const ReportPicture& picture : kReportPictures) {
    names.insert(picture.name);
    meanings.insert(picture.meaning);
  }

  EXPECT_EQ(names.size(), 38U);
  EXPECT_EQ(meanings.size(), 38U);
  EXPECT_FALSE(names.contains(""));
  EXPECT_FALSE(meanings.contains(""));
}

TEST_F(LinePictures, TheNumbersOfTheReportNameThePicturesOfTheirSubjects) {
  const std::vector<std::pair<std::size_t, std::string>> subjects = {
      {1, "report-processor"},      {2, "report-user"},        {4, "report-video-card"},
      {6, "report-network-card"},   {7, "report-ram-drive"},   {8, "report-optical-drive"},
      {9, "report-cache"},          {10, "report-desktop"},    {13, "report-process"},
      {14, "report-network-drive"}, {15, "report-hard-drive"}, {16, "report-floppy-drive"},
      {19, "report-keyboard"},      {20, "report-board"},      {21, "report-memory"},
      {23, "report-monitor"},       {24, "report-mouse"},      {26, "report-operating-system"},
      {27, "report-parallel-port"}, {29, "report-printer"},    {30, "report-scanner"},
      {31, "report-serial-port"},   {33, "report-sound"},      {34, "report-usb"},
      {35, "report-computer"},      {36, "report-program"},    {37, "report-camera"}};

  for (const auto& [number, name] : subjects) {
    EXPECT_EQ(kReportPictures.at(number - 1).name, name) << number;
  }
}

TEST_F(LinePictures, EachIsInstalledForAllScalesInTheSizeOfItsScale) {
  EXPECT_THAT(failing([](const QImage& image, int percent) {
                return image.size() == QSize(kSide, kSide) * percent / 100;
              }),
              IsEmpty());
}

TEST_F(LinePictures, AScreenAt150PercentGetsPixelsOfItsOwn) {
  FilesOfBuild files;
  const ReportPicture& first = kReportPictures.front();

  const QPixmap shown = loadPicture(files, first.name).pixmap(QSize(kSide, kSide), 1.5);

  EXPECT_EQ(shown.toImage().convertToFormat(QImage::Format_ARGB32), installed(first, 150));
}

TEST_F(LinePictures, EachHasABodyInItsCell) {
  EXPECT_THAT(failing([](const QImage& image, int) {
                const int opaque = count(image, [](QRgb pixel) { return qAlpha(pixel) == 255; });
                return opaque * 5 > image.width() * image.height();
              }),
              IsEmpty());
}

// So that nothing is cut off, and the pictures of lines that follow each other stay apart.
TEST_F(LinePictures, AllLeaveTheEdgeOfTheirCellFree) {
  EXPECT_THAT(failing([](const QImage& image, int percent) {
                const int edge = percent / 100;
                return painted(image.copy(edge, edge, image.width() - 2 * edge,
                                          image.height() - 2 * edge)) == painted(image);
              }),
              IsEmpty());
}

TEST_F(LinePictures, NoTwoLookAlikeAtTheSmallestSize) {
  for (std::size_t one = 0; one < kReportPictures.size(); ++one) {
    for (std::size_t other = 0; other < one; ++other) {
      EXPECT_GE(differing(installed(kReportPictures.at(one), 100),
                          installed(kReportPictures.at(other), 100)),
                20)
          << kReportPictures.at(one).name << " and " << kReportPictures.at(other).name;
    }
  }
}

TEST_F(LinePictures, AllAreSeenOnALightAndOnADarkGround) {
  EXPECT_THAT(
      failing([](const QImage& image, int) { return seenOn(kLightGround, image) >= kSeenPart; }),
      IsEmpty());
  EXPECT_THAT(
      failing([](const QImage& image, int) { return seenOn(kDarkGround, image) >= kSeenPart; }),
      IsEmpty());
}

// At 150 percent the lines, which are one pixel wide at 100, cannot end where pixels do.
TEST_F(LinePictures, EdgesEndWherePixelsDoAndTheColoursAreFew) {
  EXPECT_THAT(failing([](const QImage& image, int percent) {
                const int clear = count(image, [](QRgb pixel) {
                  return std::find(kFamily.begin(), kFamily.end(), pixel) != kFamily.end();
                });
                return percent == 150 || clear >= painted(image) * kClearPart * percent / 100;
              }),
              IsEmpty());
}

// A photograph of all, with numbers and meanings, for people to look at.
class LinePicturesSheet : public LinePictures {
 protected:
  static constexpr int kColumns = 4;
  static constexpr int kCellWidth = 240;
  static constexpr int kCellHeight = 40;

  static constexpr int kRows = (static_cast<int>(kReportPictures.size()) + kColumns - 1) / kColumns;

  // Where a picture's cell begins, on the light or the dark half.
  static QPoint cell(int index, int half) {
    return {index % kColumns * kCellWidth, (index / kColumns + half * kRows) * kCellHeight};
  }

  // Draws a picture at 100 and at 200 percent, and what it means.
  static void draw(QPainter& painter, int index, int half) {
    const ReportPicture& picture = kReportPictures.at(static_cast<std::size_t>(index));
    const QPoint corner = cell(index, half);
    painter.drawImage(corner + QPoint(8, 12), installed(picture, 100));
    painter.drawImage(corner + QPoint(32, 4), installed(picture, 200));
    painter.setPen(half == 0 ? Qt::black : Qt::white);
    painter.drawText(QRect(corner + QPoint(72, 0), QSize(kCellWidth - 72, kCellHeight)),
                     Qt::AlignVCenter, QString::number(index + 1) + " " + picture.meaning);
  }
};

TEST_F(LinePicturesSheet, ShowsAllOnALightAndOnADarkGround) {
  QImage sheet(kColumns * kCellWidth, 2 * kRows * kCellHeight, QImage::Format_RGB32);
  sheet.fill(kLightGround);
  QPainter painter(&sheet);
  painter.fillRect(0, kRows * kCellHeight, sheet.width(), kRows * kCellHeight, kDarkGround);

  for (int half = 0; half < 2; ++half) {
    for (int index = 0; index < static_cast<int>(kReportPictures.size()); ++index) {
      draw(painter, index, half);
    }
  }
  painter.end();

  std::filesystem::create_directories(PICTURE_FOLDER);
  const std::string file = std::string(PICTURE_FOLDER) + "/report-pictures-" +
                           fromQt(QString::number(qApp->devicePixelRatio())) + ".png";
  EXPECT_TRUE(sheet.save(toQt(file))) << file;
  for (int half = 0; half < 2; ++half) {
    const QRgb ground = (half == 0 ? kLightGround : kDarkGround).rgb();
    for (int index = 0; index < static_cast<int>(kReportPictures.size()); ++index) {
      const auto isDrawn = [&](int x, int y, int side) {
        return count(sheet.copy(QRect(cell(index, half) + QPoint(x, y), QSize(side, side))),
                     [&](QRgb pixel) { return pixel != ground; }) > side * side / 5;
      };
      EXPECT_TRUE(isDrawn(8, 12, 16)) << index + 1;
      EXPECT_TRUE(isDrawn(32, 4, 32)) << index + 1;
    }
  }
}

}  // namespace
}  // namespace veltrin

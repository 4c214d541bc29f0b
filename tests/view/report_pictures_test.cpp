// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the report window and of the window that prints it.
#include <array>

#include <QAbstractItemView>
#include <QComboBox>
#include <QPalette>

#include "pictures.h"
#include "sysinfo/frmPrint.h"
#include "sysinfo/frmSysInfo.h"
#include "view/appearance.h"

namespace veltrin {
namespace {

struct Line {
  const char* text;
  std::int16_t icon;
  std::int16_t colour;
  bool bold = false;
};

constexpr std::int16_t kNormal = 1;
constexpr std::int16_t kHeading = 2;

constexpr std::array kReport{
    Line{"Processors", 1, kHeading, true},
    Line{"    Intel(R) Core(TM) i5-8250U CPU @ 1.60GHz", 1, kNormal},
    Line{"    Number of Cores: 4", 0, kNormal},
    Line{"    Logical Processors: 8", 0, kNormal},
    Line{"    Current Clock Speed: 1800 MHz", 12, kNormal},
    Line{"    Address Width: 64", 0, kNormal},
    Line{"Cache", 9, kHeading, true},
    Line{"    L1 Cache: 256 KB", 9, kNormal},
    Line{"    L2 Cache: 1024 KB", 9, kNormal},
    Line{"    L3 Cache: 6144 KB", 9, kNormal},
    Line{"Physical Memory", 21, kHeading, true},
    Line{"    BANK 0: 8 GB, 2400 MHz", 21, kNormal},
    Line{"    BANK 2: 8 GB, 2400 MHz", 21, kNormal},
    Line{"    Total: 16 GB", 0, kNormal},
    Line{"Hard Drive", 15, kHeading, true},
    Line{"    C:\\ Fixed  NTFS  237.9 GB  91.2 GB Free", 15, kHeading},
    Line{"    D:\\ Removable  FAT32  29.8 GB  11.0 GB Free", 17, kHeading},
    Line{"    E:\\ CD-ROM", 8, kHeading},
    Line{"    Z:\\ Network  \\\\server.example\\files", 14, kHeading},
    Line{"MotherBoard", 20, kHeading, true},
    Line{"    Manufacturer: Example Boards Ltd.", 20, kNormal},
    Line{"    Product: EB-450", 0, kNormal},
    Line{"    Serial Number: 0123456789", 0, kNormal},
    Line{"    BIOS Version: 1.24", 0, kNormal},
    Line{"    BIOS Date: 5 Jan 2012", 12, kNormal},
    Line{"    USB Controller: USB 3.0 eXtensible Host Controller", 32, kNormal},
    Line{"    USB Controller: USB Root Hub", 34, kNormal},
    Line{"    IDE Controller: Standard SATA AHCI Controller", 20, kNormal},
    Line{"Video Card", 4, kHeading, true},
    Line{"    Example Graphics 620", 4, kNormal},
    Line{"    Adapter RAM: 1 GB", 21, kNormal},
    Line{"    Driver Version: 26.20.100.7637", 11, kNormal},
    Line{"    Resolution: 1920 x 1080, 60 Hz", 23, kNormal},
    Line{"Monitor", 23, kHeading, true},
    Line{"    Generic PnP Monitor", 23, kNormal},
    Line{"Sound", 33, kHeading, true},
    Line{"    High Definition Audio Device", 33, kNormal},
    Line{"Keyboard", 19, kHeading, true},
    Line{"    Standard PS/2 Keyboard", 19, kNormal},
    Line{"Mouse", 24, kHeading, true},
    Line{"    HID-compliant mouse", 24, kNormal},
    Line{"Printer", 29, kHeading, true},
    Line{"    Laser", 29, kNormal},
    Line{"    Ink", 29, kNormal},
    Line{"    Print to a file", 29, kNormal},
    Line{"Network", 25, kHeading, true},
    Line{"    Wireless-AC Network Adapter", 6, kNormal},
    Line{"    MAC Address: 00:00:5E:00:53:01", 0, kNormal},
    Line{"    IP Address: 192.0.2.17, 2001:db8::17", 0, kNormal},
    Line{"    Gigabit Ethernet Adapter", 6, kNormal},
    Line{"    MAC Address: 00:00:5E:00:53:02", 0, kNormal},
    Line{"Modem", 22, kHeading, true},
    Line{"    None", 22, kNormal},
    Line{"Serial Ports", 31, kHeading, true},
    Line{"    COM1: Communications Port", 31, kNormal},
    Line{"Parallel Ports", 27, kHeading, true},
    Line{"    LPT1: ECP Printer Port", 27, kNormal},
    Line{"PnP Signed Drivers", 11, kHeading, true},
    Line{"    ACPI Fixed Feature Button", 28, kNormal},
    Line{"    High precision event timer, a device whose name is so long that the line goes on "
         "beyond the right edge of the list however wide the window may be made",
         12, kNormal},
};

class ReportPictures : public Pictures {
 protected:
  std::shared_ptr<frmSysInfo> report() {
    auto form = shown<frmSysInfo>();
    for (const Line& line : kReport) {
      form->LogEvents(line.text, line.icon, line.colour, line.bold);
    }
    form->SYSView.setListIndex(1);
    form->SYSView.Refresh();
    const auto* list = window->findChild<QAbstractItemView*>(QStringLiteral("SYSView"));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return list->model()->rowCount() == form->SYSView.ListCount(); }));
    return form;
  }

  void resizeTo(int width, int height) {
    atRest([&] { window->resize(width, height); });
  }
};

TEST_F(ReportPictures, Empty) {
  shown<frmSysInfo>();
  photograph("report-empty");
}

TEST_F(ReportPictures, Filled) {
  report();
  photograph("report");
}

TEST_F(ReportPictures, AtItsSmallest) {
  report();
  resizeTo(1, 1);
  photograph("report-smallest");
}

TEST_F(ReportPictures, Wide) {
  report();
  resizeTo(1400, 900);
  photograph("report-wide");
}

TEST_F(ReportPictures, WithItsKeyboardInTheColumn) {
  report();
  widget("Showme_8")->setFocus();
  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Tab); });
  photograph("report-keyboard");
  widget("Showme_0")->setFocus();
  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Tab); });
  photograph("report-keyboard-link");
}

TEST_F(ReportPictures, WithEverySectionTicked) {
  const auto form = report();
  form->Label1.press();
  photograph("report-all");
}

TEST_F(ReportPictures, WhileItIsCollected) {
  const auto form = report();
  form->mousePointer = MousePointer::Hourglass;
  EXPECT_EQ(window->cursor().shape(), Qt::WaitCursor);
  photograph("report-hourglass");
}

TEST_F(ReportPictures, WithItsMenuOpen) {
  report();
  atRest([&] {
    QTest::keyClick(window->windowHandle(), Qt::Key_Alt);
    QTest::keyClick(window->windowHandle(), Qt::Key_Down);
  });
  photograph("report-menu");
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  window = menu;
  photograph("report-menu-open");
  menu->close();
}

// The colours of a dark desktop are there before the program chooses its own.
TEST_F(ReportPictures, OnADarkDesktop) {
  QPalette dark(QColor(0x2b2b2b));
  for (const char* kind : {"QListView", "QAbstractItemView", "QCheckBox", "QMenuBar", "QMenu"}) {
    QApplication::setPalette(dark, kind);
  }
  QApplication::setPalette(dark);
  setAppearance();
  report();

  EXPECT_EQ(widget("SYSView")->palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_EQ(widget("Showme_4")->palette().color(QPalette::Window), QColor(0xec, 0xeb, 0xe6));
  photograph("report-dark");
}

class PrintPictures : public Pictures {
 protected:
  void setPrinter(const std::string& printer) {
    profiles.write("Printer", "Printer", printer, program.settingsFile);
    profiles.write("Printer", "Copies", "1", program.settingsFile);
    profiles.write("Printer", "Orientation", "2", program.settingsFile);
    profiles.write("Printer", "Size", "10", program.settingsFile);
  }
};

TEST_F(PrintPictures, WithPrinters) {
  shown<frmPrint>();
  photograph("print");
}

TEST_F(PrintPictures, WithoutPrinters) {
  printers.names.clear();
  printers.defaultName.clear();
  shown<frmPrint>();
  photograph("print-none");
}

TEST_F(PrintPictures, WithALongName) {
  printers.names = {"Colour printer of the second floor, between the kitchen and the meeting room",
                    "Ink"};
  printers.defaultName = printers.names.front();
  shown<frmPrint>();
  photograph("print-long");
}

TEST_F(PrintPictures, WithAPrinterThatIsNotThereAnyMore) {
  setPrinter("Plotter");
  shown<frmPrint>();
  photograph("print-gone");
}

TEST_F(PrintPictures, WithItsKeyboardOnTheOrientation) {
  shown<frmPrint>();
  widget("Combo2")->setFocus();
  atRest([&] { QTest::keyClick(window->windowHandle(), Qt::Key_Tab); });
  photograph("print-keyboard");
}

TEST_F(PrintPictures, WithItsListOpen) {
  printers.names = {"Colour printer of the second floor, between the kitchen and the meeting room",
                    "Ink", "Laser"};
  setPrinter("Plotter");
  shown<frmPrint>();
  auto* box = widget<QComboBox>("cboPrinter");
  box->showPopup();
  atRest([] {});
  window = box->view()->window();
  photograph("print-list");
  box->hidePopup();
}

}  // namespace
}  // namespace veltrin

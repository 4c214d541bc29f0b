// SPDX-License-Identifier: GPL-3.0-or-later
// The print window: printers of any kind, choices, keyboard.
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QListView>
#include <QRadioButton>
#include <QStyleOptionComboBox>

#include "sysinfo/frmPrint.h"
#include "view_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kLongName =
    "Colour printer of the second floor, between the kitchen and the meeting room, "
    "at \\\\printserver.office.example\\queue-with-a-long-name-of-its-own";

class PrintWindow : public ViewTest {
 protected:
  void open() {
    form = shown<frmPrint>();
    box = widget<QComboBox>("cboPrinter");
  }

  // Opens with a printer in the settings.
  void openWith(const std::string& printer) {
    profiles.write("Printer", "Printer", printer, program.settingsFile);
    profiles.write("Printer", "Copies", "2", program.settingsFile);
    profiles.write("Printer", "Orientation", "2", program.settingsFile);
    profiles.write("Printer", "Size", "14", program.settingsFile);
    open();
  }

  void press(Qt::Key key) {
    atRest([&] { QTest::keyClick(window->windowHandle(), key); });
  }

  // The names that the list offers when it is opened.
  std::vector<std::string> offered() const {
    std::vector<std::string> names;
    const auto* list = qobject_cast<QListView*>(box->view());
    for (int row = 0; row < box->count(); ++row) {
      if (!list->isRowHidden(row)) names.push_back(fromQt(box->itemText(row)));
    }
    return names;
  }

  QString read(const char* name, QAccessible::Text text) const {
    return QAccessible::queryAccessibleInterface(widget(name))->text(text);
  }

  // What a screen reader takes for the label of a field.
  QString labelOf(const char* name) const {
    const auto labels =
        QAccessible::queryAccessibleInterface(widget(name))->relations(QAccessible::Label);
    return labels.isEmpty() ? QString() : labels.front().first->text(QAccessible::Name);
  }

  bool isChosen(const char* name) const { return widget<QRadioButton>(name)->isChecked(); }

  std::shared_ptr<frmPrint> form;
  QComboBox* box = nullptr;
};

TEST_F(PrintWindow, OffersThePrintersAndShowsTheDefaultOne) {
  open();

  EXPECT_THAT(offered(), ElementsAre("Laser", "Ink"));
  EXPECT_EQ(box->currentText(), "Ink");
  EXPECT_EQ(widget<QComboBox>("Combo1")->currentText(), "1");
  EXPECT_EQ(widget<QComboBox>("Combo2")->currentText(), "12");
  EXPECT_TRUE(isChosen("Option1"));
  EXPECT_FALSE(isChosen("Option2"));
}

TEST_F(PrintWindow, ShowsWhatTheSettingsTell) {
  openWith("Laser");

  EXPECT_EQ(box->currentText(), "Laser");
  EXPECT_EQ(widget<QComboBox>("Combo1")->currentText(), "2");
  EXPECT_EQ(widget<QComboBox>("Combo2")->currentText(), "14");
  EXPECT_FALSE(isChosen("Option1"));
  EXPECT_TRUE(isChosen("Option2"));
}

TEST_F(PrintWindow, ShowsAPrinterThatIsNotThereAnyMoreAndDoesNotOfferIt) {
  openWith("Plotter");

  EXPECT_EQ(box->currentText(), "Plotter");
  EXPECT_EQ(read("cboPrinter", QAccessible::Value), "Plotter");
  EXPECT_THAT(offered(), ElementsAre("Laser", "Ink"));
}

TEST_F(PrintWindow, FromAPrinterThatIsNotThereTheKeyboardGoesToOneThatIs) {
  openWith("Plotter");
  box->setFocus();

  press(Qt::Key_Up);
  EXPECT_EQ(form->cboPrinter.text.get(), "Ink");

  press(Qt::Key_Down);
  EXPECT_EQ(form->cboPrinter.text.get(), "Ink");
  EXPECT_EQ(box->currentText(), "Ink");
}

TEST_F(PrintWindow, ArrowKeysPick) {
  open();
  box->setFocus();

  press(Qt::Key_Up);

  EXPECT_EQ(form->cboPrinter.text.get(), "Laser");
  EXPECT_EQ(box->currentText(), "Laser");
}

TEST_F(PrintWindow, ALetterPicksWhatBeginsWithIt) {
  open();
  box->setFocus();

  press(Qt::Key_L);

  EXPECT_EQ(form->cboPrinter.text.get(), "Laser");
}

TEST_F(PrintWindow, NothingElseIsTyped) {
  open();
  box->setFocus();

  atRest([&] { type("zebra"); });

  EXPECT_EQ(form->cboPrinter.text.get(), "Ink");
  EXPECT_EQ(box->currentText(), "Ink");
  EXPECT_FALSE(box->isEditable());
}

TEST_F(PrintWindow, APickThatTheFormDoesNotTakeIsShownAsItWas) {
  open();
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Up);
  form->cboPrinter.enabled = false;

  atRest([] {});

  EXPECT_EQ(form->cboPrinter.text.get(), "Ink");
  EXPECT_EQ(box->currentText(), "Ink");
}

TEST_F(PrintWindow, WithoutPrintersThereIsNothingToPick) {
  printers.names.clear();
  printers.defaultName.clear();

  open();

  EXPECT_THAT(offered(), IsEmpty());
  EXPECT_EQ(box->currentText(), "");
}

TEST_F(PrintWindow, AVeryLongNameKeepsTheWindowAsItIs) {
  open();
  const QSize size = window->size();

  form->cboPrinter.items = {kLongName, "Ink"};
  form->cboPrinter.text = kLongName;
  atRest([] {});

  EXPECT_EQ(window->size(), size);
  EXPECT_EQ(fromQt(box->currentText()), kLongName);
}

// It looks as the beginning that fits, with dots behind it, would look by itself.
TEST_F(PrintWindow, AVeryLongNameEndsInDots) {
  openWith(kLongName);
  const QImage picture = box->grab().toImage();
  QStyleOptionComboBox option;
  option.initFrom(box);
  option.subControls = QStyle::SC_All;
  const QRect field =
      box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box);
  const QString fitting =
      box->fontMetrics().elidedText(toQt(kLongName), Qt::ElideRight, field.width() - 4);
  ASSERT_TRUE(fitting.endsWith(QChar(0x2026)));

  form->cboPrinter.text = fromQt(fitting);

  EXPECT_EQ(box->grab().toImage(), picture);
}

TEST_F(PrintWindow, AClickChoosesTheOrientation) {
  open();

  atRest([&] { QTest::mouseClick(widget("Option2"), Qt::LeftButton, {}, {8, 10}); });
  EXPECT_TRUE(form->Option2.value());
  EXPECT_FALSE(form->Option1.value());

  form->Option1.choose();
  EXPECT_TRUE(isChosen("Option1"));
  EXPECT_FALSE(isChosen("Option2"));
}

TEST_F(PrintWindow, ArrowKeysChooseTheOrientation) {
  open();
  widget("Option1")->setFocus();

  press(Qt::Key_Right);
  EXPECT_TRUE(form->Option2.value());
  EXPECT_TRUE(widget("Option2")->hasFocus());

  press(Qt::Key_Left);
  EXPECT_TRUE(form->Option1.value());
  EXPECT_FALSE(isChosen("Option2"));
}

TEST_F(PrintWindow, AChoiceThatTheFormDoesNotTakeIsShownAsItWas) {
  open();
  QTest::mouseClick(widget("Option2"), Qt::LeftButton, {}, {8, 10});
  ASSERT_TRUE(isChosen("Option2"));
  form->Option2.enabled = false;

  atRest([] {});

  EXPECT_TRUE(form->Option1.value());
  EXPECT_TRUE(isChosen("Option1"));
  EXPECT_FALSE(isChosen("Option2"));
}

TEST_F(PrintWindow, AClickOnAPictureDoesNothing) {
  open();

  atRest([&] { clickAt(widget("Picture2")); });

  EXPECT_TRUE(form->Option1.value());
  EXPECT_TRUE(form->isLoaded());
}

TEST_F(PrintWindow, TheKeyTabGoesFromTopToBottomAndStopsOnceAtTheOrientation) {
  open();
  std::vector<std::string> stops;
  box->setFocus();
  atRest([&] {
    do {
      stops.push_back(fromQt(QApplication::focusWidget()->objectName()));
      QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    } while (!box->hasFocus() && stops.size() < 12);
  });

  EXPECT_THAT(stops,
              ElementsAre("cboPrinter", "Combo1", "Combo2", "Option1", "cmdPrint", "cmdExit"));
}

TEST_F(PrintWindow, AScreenReaderHearsTheLabelsOfTheFieldsAndTheChoice) {
  open();

  EXPECT_EQ(labelOf("cboPrinter"), "Select Printer");
  EXPECT_EQ(labelOf("Combo1"), "Copies");
  EXPECT_EQ(labelOf("Combo2"), "Font Size");
  EXPECT_EQ(read("Option1", QAccessible::Name), "Portrait");
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(widget("Option1"))->state().checked);
  EXPECT_EQ(read("Picture1", QAccessible::Name), "Sheet that stands upright");
}

TEST_F(PrintWindow, TheKeyEnterPrints) {
  open();
  int prints = 0;
  form->cmdPrint.click = [&] { ++prints; };

  press(Qt::Key_Return);

  EXPECT_EQ(prints, 1);
}

TEST_F(PrintWindow, TheKeyEscapeCancels) {
  open();

  press(Qt::Key_Escape);

  EXPECT_FALSE(form->isLoaded());
}

TEST_F(PrintWindow, TheKeyEscapeInAnOpenListClosesTheListAlone) {
  open();
  box->showPopup();
  ASSERT_TRUE(box->view()->isVisible());

  atRest([&] { QTest::keyClick(box->view(), Qt::Key_Escape); });

  EXPECT_FALSE(box->view()->isVisible());
  EXPECT_TRUE(form->isLoaded());
}

}  // namespace
}  // namespace veltrin

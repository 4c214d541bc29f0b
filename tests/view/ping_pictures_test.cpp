// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the Ping Test and the language window.
#include "pictures.h"

namespace veltrin {
namespace {

class PingPictures : public Pictures {
 protected:
  static void fill(pingtester& form, std::size_t row, const std::vector<const char*>& figures) {
    form.pingcur[row].caption = figures[0];
    form.pinglow[row].caption = figures[1];
    form.pingav[row].caption = figures[2];
    form.pinghi[row].caption = figures[3];
    form.packetloss[row].caption = figures[4];
  }

  static void fillAll(pingtester& form) {
    fill(form, 0, {"12", "11", "12", "19", "0"});
    fill(form, 1, {"31", "30", "32", "48", "0"});
    fill(form, 2, {"142", "139", "146", "203", "0"});
    fill(form, 3, {"99999", "24", "20019", "99999", "1"});
    fill(form, 4, {"8", "8", "8", "9", "0"});
  }
};

TEST_F(PingPictures, PingTestAtRest) {
  shown<pingtester>();
  photograph("pingtester-idle");
}

TEST_F(PingPictures, PingTestRunning) {
  const auto form = shown<pingtester>();
  atRest([&] { clickAt(widget("Command1")); });
  fillAll(*form);
  fill(*form, 4, {"", "", "", "", "0"});
  form->Label9.caption = "Test Remaining = 21";
  photograph("pingtester-running");
}

TEST_F(PingPictures, PingTestComplete) {
  const auto form = shown<pingtester>();
  fillAll(*form);
  form->Label9.caption = "Complete";
  form->Command2.enabled = true;
  form->Command3.enabled = true;
  widget("Command2")->setFocus();
  photograph("pingtester-complete");
}

// As on a poor wireless connection: the router at home, in the first row, is bad already.
TEST_F(PingPictures, PingTestOfABadLine) {
  const auto form = shown<pingtester>();
  const std::vector<const char*> hosts = {"192.168.178.1", "www.debian.org", "www.kernel.org",
                                          "www.python.org", "www.mozilla.org"};
  for (std::size_t row = 0; row < hosts.size(); ++row) form->url[row].text = hosts[row];
  fill(*form, 0, {"3", "2", "8026", "99999", "2"});
  fill(*form, 1, {"214", "31", "12086", "99999", "3"});
  fill(*form, 2, {"99999", "140", "16211", "99999", "4"});
  fill(*form, 3, {"25", "24", "8094", "99999", "2"});
  fill(*form, 4, {"391", "9", "4088", "99999", "1"});
  form->Label9.caption = "Complete";
  form->Command2.enabled = true;
  form->Command3.enabled = true;
  widget("Command2")->setFocus();
  photograph("pingtester-bad");
}

TEST_F(PingPictures, PingTestInDutch) {
  speak(kDutch);
  const auto form = shown<pingtester>();
  fillAll(*form);
  photograph("pingtester-dutch");
}

TEST_F(PingPictures, PingTestAtItsSmallest) {
  shown<pingtester>();
  window->resize(1, 1);
  photograph("pingtester-smallest");
}

TEST_F(PingPictures, PingTestWide) {
  const auto form = shown<pingtester>();
  fillAll(*form);
  window->resize(1100, 560);
  photograph("pingtester-wide");
}

TEST_F(PingPictures, PingTestWithItsChart) {
  const auto form = shown<pingtester>();
  fillAll(*form);
  form->PingChart.visible = true;
  form->Text1.visible = true;
  form->Text2.visible = true;
  form->PingChart.automaticScale = false;
  form->PingChart.axisMinimum = 8;
  form->PingChart.axisMaximum = 203;
  form->PingChart.wallColour = Colour{235, 234, 225};
  form->PingChart.setColumnCount(3);
  form->PingChart.setRowCount(10);
  for (std::size_t column = 1; column <= 3; ++column) {
    for (std::size_t row = 1; row <= 10; ++row) {
      form->PingChart.column = column;
      form->PingChart.row = row;
      form->PingChart.setData(static_cast<double>(column * 50 + row * row % 17));
    }
  }
  form->Text1.text = "Upper = 203";
  form->Text2.text = "Lower = 8";
  photograph("pingtester-chart");
}

TEST_F(PingPictures, SetLanguage) {
  shown<setlang>();
  photograph("setlang");
}

}  // namespace
}  // namespace veltrin

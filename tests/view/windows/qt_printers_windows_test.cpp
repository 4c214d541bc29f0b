// SPDX-License-Identifier: GPL-3.0-or-later
// The printers of Windows. Which there are is the machine's affair.
#include <algorithm>
#include <chrono>

#include "gtest/gtest.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_printers.h"
#include "text/statement.h"

namespace veltrin {
namespace {

class QtPrintersTest : public testing::Test {
 protected:
  QtEventLoop events;
  QtPrinters printers{events};
};

TEST_F(QtPrintersTest, TheListOfPrintersComesInTime) {
  const auto start = std::chrono::steady_clock::now();
  const std::vector<std::string> names = printers.deviceNames();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
  EXPECT_EQ(std::count(names.begin(), names.end(), ""), 0);
}

TEST_F(QtPrintersTest, TheDefaultPrinterIsOneOfTheList) {
  const std::vector<std::string> names = printers.deviceNames();
  const std::string name = printers.defaultDeviceName();
  if (names.empty()) {
    EXPECT_EQ(name, "");
  } else if (!name.empty()) {
    EXPECT_EQ(std::count(names.begin(), names.end(), name), 1);
  }
}

TEST_F(QtPrintersTest, APrinterThatIsNotThereCannotBeOpened) {
  EXPECT_THROW(printers.open("No printer has this name"), StatementFailed);
}

}  // namespace
}  // namespace veltrin

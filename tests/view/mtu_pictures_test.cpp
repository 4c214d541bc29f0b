// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the three windows of the MTU optimizer.
#include "mtu/mtutest.h"
#include "mtu/pingit.h"
#include "mtu/setmtu.h"
#include "pictures.h"

namespace veltrin {
namespace {

constexpr Colour kRed{0xFF, 0x00, 0x00};
constexpr Colour kCoarseGood{0x00, 0x80, 0x00};
constexpr Colour kFineGood{0x00, 0xC0, 0x00};

const char* const kNoDestination = "IP address must be specified.\r\n";

std::string tooBig(const std::string& size) {
  return "\r\nPinging www.example.org [203.0.113.80] with " + size +
         " bytes of data:\r\n"
         "Packet needs to be fragmented but DF set.\r\n"
         "Packet needs to be fragmented but DF set.\r\n"
         "\r\nPing statistics for 203.0.113.80:\r\n"
         "    Packets: Sent = 2, Received = 0, Lost = 2 (100% loss),\r\n";
}

const char* const kReplies =
    "\r\nPinging www.example.org [203.0.113.80] with 1462 bytes of data:\r\n"
    "Reply from 203.0.113.80: bytes=1462 time=18ms TTL=52\r\n"
    "Reply from 203.0.113.80: bytes=1462 time=19ms TTL=52\r\n"
    "\r\nPing statistics for 203.0.113.80:\r\n"
    "    Packets: Sent = 2, Received = 2, Lost = 0 (0% loss),\r\n"
    "Approximate round trip times in milli-seconds:\r\n"
    "    Minimum = 18ms, Maximum = 19ms, Average = 18ms \r\n";

class MtuPictures : public Pictures {
 protected:
  std::shared_ptr<pingit> pings(const std::string& last, int left) {
    auto form = look<pingit>();
    form->pingtotal.caption = last;
    form->lb[0].caption = "Min Ping Result = 17 ms";
    form->lb[1].caption = "Average Ping = 19 ms";
    form->lb[2].caption = "Max Ping Result = 31 ms";
    form->lb[3].caption = "Lost Packets = 0";
    form->lb[5].caption = std::to_string(left);
    return form;
  }

  std::shared_ptr<setmtu> search(const std::string& title) {
    auto form = look<setmtu>();
    form->caption = title;
    form->playit.open(program.programFolder + "\\files\\ping.avi");
    form->playit.visible = true;
    return form;
  }

  std::shared_ptr<setmtu> coarse() { return search("SpeedTest (MTU) Course Test"); }
  std::shared_ptr<setmtu> fine() {
    auto form = search("SpeedTest (MTU) Fine Test");
    form->Label1.caption = "18 ms";
    return form;
  }
};

TEST_F(MtuPictures, Entry) {
  const auto form = look<mtutest>();
  form->testit.text = program.installation.ProbeHost;
  photograph("mtutest");
}

TEST_F(MtuPictures, PingsThatBegin) {
  look<pingit>();
  photograph("pingit-start");
}

TEST_F(MtuPictures, PingsRunning) {
  pings("18", 23);
  photograph("pingit-running");
}

TEST_F(MtuPictures, PingsRated) {
  const auto form = pings("18", 0);
  form->lb[7].caption = "Ping Test Results are Excellent";
  photograph("pingit-rated");
}

TEST_F(MtuPictures, PingsToBeRepeated) {
  const auto form = pings("2183", 0);
  form->lb[0].caption = "Min Ping Result = 21 ms";
  form->lb[1].caption = "Average Ping = 204 ms";
  form->lb[2].caption = "Max Ping Result = 2183 ms";
  form->lb[3].caption = "Lost Packets = 5";
  form->lb[7].caption = "Retesting due to Packet Loss";
  photograph("pingit-retest");
}

TEST_F(MtuPictures, SearchWaiting) {
  const auto form = search("Veltrin (MTU Test) ");
  form->testmtu.caption = "Testing will start in 5 Seconds";
  photograph("setmtu-waiting");
}

TEST_F(MtuPictures, SearchWithAGoodCoarseSize) {
  const auto form = coarse();
  form->testmtu.caption = "Test MTU setting of 1440";
  form->results.foreColour = kCoarseGood;
  form->results.caption = "MTU of 1420 test Good";
  form->txtOutputs.text = kNoDestination;
  photograph("setmtu-coarse-good");
}

TEST_F(MtuPictures, SearchWithABadCoarseSize) {
  const auto form = coarse();
  form->testmtu.caption = "Test MTU setting of 1480";
  form->results.foreColour = kRed;
  form->results.caption = "Course Test of MTU 1480 test Bad";
  form->txtOutputs.text = tooBig("1480");
  photograph("setmtu-coarse-bad");
}

TEST_F(MtuPictures, SearchWithAGoodFineSize) {
  const auto form = fine();
  form->testmtu.caption = "Fine Test of MTU setting of 1462";
  form->results.foreColour = kFineGood;
  form->results.caption = "Fine Test of MTU setting of 1462 test Good";
  form->txtOutputs.text = kReplies;
  photograph("setmtu-fine-good");
}

TEST_F(MtuPictures, SearchComplete) {
  const auto form = fine();
  form->testmtu.foreColour = kRed;
  form->testmtu.caption = "Course Test of MTU 1473 test Bad";
  form->results.foreColour = kFineGood;
  form->results.caption = "Highest MTU for your system is 1472";
  form->txtOutputs.text = tooBig("1473");
  photograph("setmtu-complete");
}

}  // namespace
}  // namespace veltrin

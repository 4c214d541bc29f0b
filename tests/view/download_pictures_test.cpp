// SPDX-License-Identifier: GPL-3.0-or-later
// Photographs of the download test.
#include <cmath>

#include "download/testdl.h"
#include "pictures.h"

namespace veltrin {
namespace {

constexpr std::uint32_t kMagenta = 0xFF00FF;
constexpr std::uint32_t kGreen = 65280;

// The speed of a line that is slow to start, uneven, and falls off twice.
std::int32_t speedOf(int sample, int samples, int usual) {
  const double part = static_cast<double>(sample) / samples;
  const double start = std::min(1.0, part * 12);
  const double wave = 0.06 * std::sin(sample / 9.0) + 0.04 * std::sin(sample / 2.3);
  const bool isLow = (part > 0.44 && part < 0.48) || (part > 0.8 && part < 0.81);
  return static_cast<std::int32_t>(usual * start * (1 + wave) * (isLow ? 0.35 : 1));
}

class DownloadPictures : public Pictures {
 protected:
  // The window as it comes up.
  std::shared_ptr<testdl> running() {
    auto form = look<testdl>();
    form->caption = "Stability Analyzer ";
    form->prgBAR[0].SendMessageA(kSetBarColour, 0, kMagenta);
    form->picGraph[0].visible = true;
    form->lb1.caption = "Testing Internet Connection";
    return form;
  }

  // So many samples of a run as the program draws them, in that picture and on that scale.
  std::shared_ptr<testdl> drawing(std::size_t picture, std::size_t scale, const char* label,
                                  int drawn, int samples, int usual) {
    constexpr std::array<double, 6> kWidths = {100, 175, 300, 1500, 3000, 6000};
    auto form = running();
    form->Command1.caption = "Done";
    form->picGraph[0].visible = false;
    form->Label4.caption = label;
    PictureBox& graph = form->picGraph[picture];
    graph.scale = UserScale{kWidths[picture], static_cast<double>(kSpeedHeights[scale])};
    graph.visible = true;
    const auto last = static_cast<int>(kWidths[picture]) - 1;
    const auto placeOf = [&](int at) {
      const int sample = drawn - 1 - (last - at);
      const double speed = sample < 1 ? 0 : speedOf(sample, samples, usual);
      return PicturePoint{static_cast<double>(at), kSpeedHeights[scale] - speed};
    };
    for (int at = 0; at < last; ++at) graph.Line(placeOf(at), placeOf(at + 1), SpeedGraph::kGreen);
    return form;
  }

  static void summarise(testdl& form, const std::string& folder, const std::string& bytes,
                        const std::string& speed) {
    for (const std::string& row :
         {std::string("Advance Settings Summary"), "Total Bytes Received = " + bytes,
          std::string("Download Time = "), "Speed: " + speed, std::string(),
          std::string("Total Packets Send = 0"), std::string("Total Packets Received = 0"),
          std::string("Total Lost/Dropped Packets = 0"), std::string("Latency Lag = 0 sec"),
          std::string(), std::string("Data Saved in"), folder + "\\Download Stability Test.txt"}) {
      form.summ.add(row);
    }
    form.Command1.enabled = true;
  }
};

TEST_F(DownloadPictures, WhileTheFileComes) {
  running();
  photograph("download-running");
}

TEST_F(DownloadPictures, WhileTheCurveIsDrawn) {
  drawing(2, 3, "Graph 0 to 15 Mbps", 140, 250, 9400);
  photograph("download-drawing");
}

TEST_F(DownloadPictures, OfASlowLine) {
  const auto form = drawing(0, 5, "Graph 0 to 5 Mbps", 62, 62, 3900);
  summarise(*form, "/home/kim/.local/share/veltrin", "3145728", "487.52 KB/s   /  3900.16 Kb/s");
  photograph("download-5");
}

TEST_F(DownloadPictures, OfAUsualLine) {
  const auto form = drawing(2, 3, "Graph 0 to 15 Mbps", 250, 250, 9400);
  summarise(*form, "/home/kim/.local/share/veltrin", "29360128", "1174.41 KB/s   /  9395.24 Kb/s");
  photograph("download-15");
}

TEST_F(DownloadPictures, OfAQuickLineForTenMinutes) {
  const auto form = drawing(5, 0, "Graph 0 to 100 Mbps", 6000, 6000, 84000);
  summarise(*form, "C:\\Users\\Kim\\Desktop\\Tools for the connection\\Veltrin", "2147483647",
            "10491.03 KB/s   /  83928.22 Kb/s");
  photograph("download-100");
}

TEST_F(DownloadPictures, OfALineFasterThanItsScale) {
  const auto form = drawing(1, 4, "Graph 0 to 10 Mbps", 120, 120, 11200);
  summarise(*form, "/home/kim/.local/share/veltrin", "10485760", "1400.2 KB/s   /  11201.60 Kb/s");
  photograph("download-beyond");
}

TEST_F(DownloadPictures, OfAReadThatFailed) {
  const auto form = running();
  form->Command1.caption = "Done";
  form->Label4.caption = "Graph 0 to 100 Mbps";
  summarise(*form, "/home/kim/.local/share/veltrin", "0", "0.00 KB/s   /  0.00 Kb/s");
  photograph("download-failed");
}

TEST_F(DownloadPictures, WithAPathThatIsTooLong) {
  const auto form = drawing(0, 5, "Graph 0 to 5 Mbps", 62, 62, 3900);
  summarise(*form, "/home/" + std::string(90, 'k') + "/.local/share/veltrin", "3145728",
            "487.52 KB/s   /  3900.16 Kb/s");
  photograph("download-path");
}

// A build that lets the bar and the lines of text move would show them here.
TEST_F(DownloadPictures, WithEverythingThatItCouldTell) {
  const auto form = drawing(2, 3, "Graph 0 to 15 Mbps", 250, 250, 9400);
  form->prgBAR[0].SendMessageA(kSetBarColour, 0, kGreen);
  form->prgBAR[0].maximum = 29360128;
  form->prgBAR[0].value = 20360128;
  form->lb2.caption = "20,360,128 of 29,360,128";
  form->Label5.caption = "Downloaded 29,360Kb in 0:25.012";
  photograph("download-all");
}

}  // namespace
}  // namespace veltrin

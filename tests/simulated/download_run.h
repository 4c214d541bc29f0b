// SPDX-License-Identifier: GPL-3.0-or-later
// The download test on the simulated platform, with a server that a test plays.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "download/testdl.h"
#include "frame/startup.h"
#include "simulated/route_run.h"

namespace veltrin {

class DownloadRun : public RouteRun {
 protected:
  using Server = SimulatedDownloads::Asked;

  DownloadRun() {
    std::string lines = "[Installation]\r\n";
    for (int place = 1; place <= 6; ++place) {
      lines += "DownloadTestUrl" + std::to_string(place) + "=" + url(place) + "\r\n";
    }
    simulation.profiles.contents[kProgramFolder + "\\installation.ini"] = lines;
  }

  static std::string url(int place) {
    return "https://files.example/" + std::to_string(place) + ".dat";
  }

  // The menu with a rated speed, and the window over it, whose load has run: its read is
  // under way.
  testdl& open(const std::string& ratedSpeed = "5,000") {
    menu = simulation.program().show<startup>();
    menu->Combo1.text = ratedSpeed;
    window = simulation.program().show<testdl>();
    return *window;
  }

  Server& server() { return *simulation.downloads.asked.at(0); }

  // Something that happens so many ms from now.
  void after(std::int64_t delay, std::function<void()> action) {
    simulation.loop.after(delay, std::move(action));
  }

  // The body comes now, in one piece, and the run goes on to its end.
  void finishWith(const std::string& body) {
    after(0, [this, body] { server().comeBody(body); });
    simulation.run(60'000);
  }

  // So many samples are in the list: each of them a tick of the sampler with some speed.
  // The read then ends, with the samples as the only ones.
  void finishWithSamples(const std::vector<std::string>& samples) {
    for (const std::string& sample : samples) window->List2.add(sample);
    finishWith("x");
  }

  std::vector<std::string> summary() const {
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < window->summ.count(); ++row) {
      rows.push_back(window->summ.item(row));
    }
    return rows;
  }

  std::string savedReport() { return simulation.files.contents[kReportFile]; }

  std::vector<int> visiblePictures() const {
    std::vector<int> places;
    for (const PictureBox& picture : window->picGraph) {
      if (picture.visible) places.push_back(picture.index());
    }
    return places;
  }

  const std::vector<PicturePoint>& curve(std::size_t place) const {
    return window->picGraph.at(place).lines()[0].points;
  }

  static const inline std::string kReportFile = kProgramFolder + "\\Download Stability Test.txt";
  static const inline std::string kTestFile = kProgramFolder + "\\TestDL.tst";

  std::shared_ptr<startup> menu;
  std::shared_ptr<testdl> window;
};

}  // namespace veltrin

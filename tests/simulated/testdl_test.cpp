// SPDX-License-Identifier: GPL-3.0-or-later
// The download test: its start, its sampler, its tables.
#include "simulated/download_run.h"
#include "toolbox/toolbox.h"

namespace veltrin {
namespace {

using Strings = std::vector<std::string>;

class DownloadTest : public DownloadRun {};

// --- The start ---

TEST_F(DownloadTest, BearsItsCaptionsBeforeItIsLoaded) {
  const testdl unloaded(simulation.program());
  EXPECT_EQ(unloaded.caption.get(), "Stability Test");
  EXPECT_EQ(unloaded.Command1.caption.get(), "Cancel");
  EXPECT_FALSE(unloaded.Command1.enabled);
  EXPECT_EQ(unloaded.Label1.caption.get(), "Low");
  EXPECT_EQ(unloaded.Label2.caption.get(), "Current");
  EXPECT_EQ(unloaded.Label3.caption.get(), "High");
  EXPECT_FALSE(unloaded.Text1.visible);
  EXPECT_FALSE(unloaded.Text2.visible);
}

TEST_F(DownloadTest, StartsByItselfInItsLoad) {
  open();
  EXPECT_EQ(window->caption.get(), "Stability Analyzer ");
  EXPECT_EQ(window->Text1.text.get(), url(6));
  EXPECT_EQ(window->Text2.text.get(), kTestFile);
  EXPECT_EQ(window->lb1.caption.get(), "Testing Internet Connection");
  EXPECT_EQ(window->prgBAR[0].barColour.get(), (Colour{255, 0, 255}));
  EXPECT_EQ(visiblePictures(), std::vector<int>{0});
  EXPECT_EQ(window->Timer1.interval.get(), 100);
  EXPECT_TRUE(window->Timer1.isRunning());
  ASSERT_EQ(simulation.downloads.asked.size(), 1U);
  EXPECT_EQ(server().target, url(6));
  EXPECT_EQ(server().propertyName, kTestFile);
  EXPECT_FALSE(window->Command1.enabled);
}

TEST_F(DownloadTest, IsShownASecondAfterItsLoadBegins) {
  menu = simulation.program().show<startup>();
  const std::int64_t begin = simulation.loop.milliseconds();
  std::int64_t shownAt = 0;
  simulation.desktop.onModal = [&](Form& form) {
    EXPECT_EQ(form.name(), "testdl");
    shownAt = simulation.loop.milliseconds() - begin;
    EXPECT_TRUE(simulation.downloads.asked.empty());
  };
  simulation.program().show<testdl>();
  EXPECT_EQ(shownAt, 1000);
}

TEST_F(DownloadTest, ResetsTheLagAndTheSuggestedSpeedAndNotesItsStart) {
  DownloadValues& values = simulation.program().shared<DownloadValues>();
  values.DownloadLag = "7";
  values.SuggestedSpeed = "512";
  open();
  EXPECT_EQ(values.DownloadLag.text(), "0");
  EXPECT_FALSE(values.DownloadLag.isEmpty());
  EXPECT_EQ(values.SuggestedSpeed.text(), "");
  EXPECT_EQ(values.DownloadStartTime, 9 * 3600 + 5 * 60 + 1);
}

TEST_F(DownloadTest, HasPicturesAsWideAsTheirArrays) {
  open();
  std::vector<UserScale> scales;
  for (const PictureBox& picture : window->picGraph) scales.push_back(picture.scale);
  EXPECT_EQ(scales, (std::vector<UserScale>{{100, 100000},
                                            {175, 100000},
                                            {300, 100000},
                                            {1500, 100000},
                                            {3000, 100000},
                                            {6000, 100000}}));
}

TEST_F(DownloadTest, IsOpenedModallyByThePictureOfTheMenu) {
  provideTools(simulation.program());
  menu = simulation.program().show<startup>();
  after(5000, [this] { simulation.desktop.closeWindow(*simulation.desktop.shown.back()); });
  simulation.desktop.onModal = [](Form& form) { EXPECT_EQ(form.name(), "testdl"); };
  simulation.desktop.click(menu->Image3);
  EXPECT_EQ(simulation.loop.milliseconds(), 5000);
  EXPECT_FALSE(simulation.program().isLoaded<testdl>());
  EXPECT_TRUE(menu->isLoaded());
}

// A second press, as of a double click, shows the window before its load does.
TEST_F(DownloadTest, StaysClosedWhenItsUserClosesItBeforeItsLoadShowsIt) {
  provideTools(simulation.program());
  menu = simulation.program().show<startup>();
  after(200, [this] { simulation.desktop.click(menu->Image3); });
  after(500, [this] { simulation.desktop.closeWindow(*simulation.desktop.shown.back()); });
  simulation.desktop.click(menu->Image3);
  EXPECT_FALSE(simulation.program().isLoaded<testdl>());
  EXPECT_EQ(simulation.desktop.shown, std::vector<Form*>{menu.get()});
  EXPECT_TRUE(simulation.downloads.asked.empty());
}

// --- The URL ---

struct UrlCase {
  const char* ratedSpeed;
  int url;
};

class DownloadTestUrl : public DownloadRun, public ::testing::WithParamInterface<UrlCase> {};

TEST_P(DownloadTestUrl, IsChosenByTheNumberBeforeTheComma) {
  open(GetParam().ratedSpeed);
  EXPECT_EQ(server().target, url(GetParam().url));
}

INSTANTIATE_TEST_SUITE_P(AtEachBoundary, DownloadTestUrl,
                         ::testing::Values(UrlCase{"61,000", 1}, UrlCase{"60,000", 2},
                                           UrlCase{"60.5", 1}, UrlCase{"31,000", 2},
                                           UrlCase{"30,000", 3}, UrlCase{"21,000", 3},
                                           UrlCase{"20,000", 4}, UrlCase{"11,000", 4},
                                           UrlCase{"10,000", 5}, UrlCase{"6,000", 5},
                                           UrlCase{"5,000", 6}, UrlCase{"1,000", 6},
                                           UrlCase{"0", 6}, UrlCase{"", 6}, UrlCase{"nonsense", 6},
                                           UrlCase{"-70", 6}, UrlCase{"256", 1}, UrlCase{"512", 1},
                                           UrlCase{"768", 1}, UrlCase{"100,000", 1}),
                         [](const auto& each) { return "Case" + std::to_string(each.index); });

TEST_F(DownloadTest, ARatedSpeedOf5000TakesTheSmallestFileAndAGraphTo10Mbps) {
  open("5,000");
  EXPECT_EQ(server().target, url(6));
  finishWith("x");
  EXPECT_EQ(window->Label4.caption.get(), "Graph 0 to 10 Mbps");
}

TEST_F(DownloadTest, ARatedSpeedOf512TakesTheLargestFileAndAGraphTo5Mbps) {
  open("512");
  EXPECT_EQ(server().target, url(1));
  finishWith("x");
  EXPECT_EQ(window->Label4.caption.get(), "Graph 0 to 5 Mbps");
}

TEST_F(DownloadTest, AUrlThatIsNoneIsToldAndLeavesTheWindowToItsCloseBox) {
  simulation.profiles.contents[kProgramFolder + "\\installation.ini"] = "";
  open();
  expectOneMessage(
      "Warning", 16,
      "5:Error in call to BeginDownload().\r\n\r\nError Description: Invalid procedure "
      "call or argument");
  simulation.run(10'000);
  EXPECT_FALSE(window->Command1.enabled);
  EXPECT_EQ(window->List2.count(), 0U);
  simulation.desktop.closeWindow(*window);
  EXPECT_FALSE(window->isLoaded());
  EXPECT_TRUE(menu->isLoaded());
}

// --- The sampler ---

TEST_F(DownloadTest, SamplesTheSpeedOfTheLastHalfSecondTenTimesASecond) {
  open();
  for (std::int64_t step = 1; step <= 20; ++step) {
    after(step * 50 - 10, [this, step] { server().comeProgress(step * 10'000, 0); });
  }
  simulation.run(1000);
  Strings samples;
  for (std::size_t row = 0; row < window->List2.count(); ++row) {
    samples.push_back(window->List2.item(row));
  }
  EXPECT_EQ(samples, Strings(10, "1600"));
  EXPECT_EQ(window->DownloadSpeed, 200);
  EXPECT_EQ(window->DownloadTotal, 200'000);
}

TEST_F(DownloadTest, TakesNoSampleOfAStall) {
  open();
  after(50, [this] { server().comeProgress(50'000, 0); });
  after(2050, [this] { server().comeProgress(100'000, 0); });
  simulation.run(520);
  EXPECT_EQ(window->List2.count(), 5U);
  simulation.run(1500);
  EXPECT_EQ(window->List2.count(), 5U);
  EXPECT_EQ(window->DownloadSpeed, 0);
  simulation.run(100);
  EXPECT_EQ(window->List2.count(), 6U);
  EXPECT_EQ(window->List2.item(5), "800");
}

TEST_F(DownloadTest, TheBarAndTheCounterStayAsTheyAre) {
  open();
  after(50, [this] { server().comeProgress(50'000, 100'000); });
  simulation.run(200);
  EXPECT_EQ(window->prgBAR[0].value.get(), 0);
  EXPECT_EQ(window->prgBAR[0].maximum.get(), 100);
  EXPECT_EQ(window->lb2.caption.get(), "");
}

TEST_F(DownloadTest, AFileOfTheNameThatIsLookedForShowsItsProgress) {
  open();
  window->TestFileName = "TestDL.tst";
  bool hasYielded = false;
  after(50, [&] {
    server().comeProgress(50'000, 1'234'567);
    simulation.loop.gate().post([&] { hasYielded = window->prgBAR[0].value == 50'000.0; });
  });
  simulation.run(60);
  EXPECT_EQ(window->prgBAR[0].maximum.get(), 1'234'567);
  EXPECT_EQ(window->lb2.caption.get(), "50,000 of 1,234,567");
  EXPECT_TRUE(hasYielded);
}

TEST_F(DownloadTest, TheNameIsLookedForInItsExactCase) {
  open();
  window->TestFileName = "testdl.tst";
  after(50, [this] { server().comeProgress(50'000, 100'000); });
  simulation.run(60);
  EXPECT_EQ(window->lb2.caption.get(), "");
}

// --- The scales ---

struct ScaleCase {
  const char* ratedSpeed;
  double height;
  const char* label;
};

class DownloadTestScale : public DownloadRun, public ::testing::WithParamInterface<ScaleCase> {};

TEST_P(DownloadTestScale, IsThatOfTheExactTextOfTheSpeed) {
  open(GetParam().ratedSpeed);
  finishWithSamples({"11", "22"});
  EXPECT_EQ(window->Label4.caption.get(), GetParam().label);
  EXPECT_EQ(window->picGraph[0].scale.get(), (UserScale{100, GetParam().height}));
  EXPECT_EQ(curve(0).back(), (PicturePoint{99, GetParam().height - 22}));
}

constexpr const char* k100 = "Graph 0 to 100 Mbps";
constexpr const char* k50 = "Graph 0 to 50 Mbps";
constexpr const char* k30 = "Graph 0 to 30 Mbps";
constexpr const char* k15 = "Graph 0 to 15 Mbps";
constexpr const char* k10 = "Graph 0 to 10 Mbps";
constexpr const char* k5 = "Graph 0 to 5 Mbps";

INSTANTIATE_TEST_SUITE_P(
    OfEachSpeedOfTheList, DownloadTestScale,
    ::testing::Values(ScaleCase{"100,000", 100000, k100}, ScaleCase{"95,000", 100000, k100},
                      ScaleCase{"90,000", 100000, k100}, ScaleCase{"85,000", 100000, k100},
                      ScaleCase{"80,000", 100000, k100}, ScaleCase{"75,000", 100000, k100},
                      ScaleCase{"70,000", 100000, k100}, ScaleCase{"65,000", 100000, k100},
                      ScaleCase{"60,000", 100000, k100}, ScaleCase{"55,000", 100000, k100},
                      ScaleCase{"50,000", 100000, k100}, ScaleCase{"45,000", 100000, k100},
                      ScaleCase{"40,000", 100000, k100}, ScaleCase{"35,000", 50000, k50},
                      ScaleCase{"30,000", 50000, k50}, ScaleCase{"25,000", 50000, k50},
                      ScaleCase{"20,000", 50000, k50}, ScaleCase{"15,000", 30000, k30},
                      ScaleCase{"14,000", 30000, k30}, ScaleCase{"13,000", 30000, k30},
                      ScaleCase{"12,000", 30000, k30}, ScaleCase{"11,000", 30000, k30},
                      ScaleCase{"10,000", 15000, k15}, ScaleCase{"9,000", 15000, k15},
                      ScaleCase{"8,000", 15000, k15}, ScaleCase{"7,500", 15000, k15},
                      ScaleCase{"7,000", 15000, k15}, ScaleCase{"6,000", 10000, k10},
                      ScaleCase{"5,000", 10000, k10}, ScaleCase{"4,500", 10000, k10},
                      ScaleCase{"4,000", 10000, k10}, ScaleCase{"3,500", 5000, k5},
                      ScaleCase{"3,000", 5000, k5}, ScaleCase{"2,000", 5000, k5},
                      ScaleCase{"1,500", 5000, k5}, ScaleCase{"1,000", 5000, k5},
                      ScaleCase{"768", 5000, k5}, ScaleCase{"512", 5000, k5},
                      ScaleCase{"256", 5000, k5}, ScaleCase{"40000", 5000, k5},
                      ScaleCase{"", 5000, k5}),
    [](const auto& each) { return "Case" + std::to_string(each.index); });

TEST_F(DownloadTest, KnowsAScaleForEverySpeedOfTheMenu) {
  menu = simulation.program().show<startup>();
  const Strings speeds = menu->Combo1.items;
  ASSERT_FALSE(speeds.empty());
  for (const std::string& speed : speeds) {
    menu->Combo1.text = speed;
    const double rated = Val(speed) * (speed.find(',') == std::string::npos ? 1 : 1000);
    window = simulation.program().show<testdl>();
    const std::size_t run = simulation.downloads.asked.size() - 1;
    after(0, [this, run] { simulation.downloads.asked.at(run)->comeBody("x"); });
    simulation.run(60'000);
    const double highest = window->picGraph[0].scale.get().height;
    EXPECT_GE(highest, std::min(rated, 5000.0)) << speed;
    simulation.program().unload<testdl>();
  }
}

// --- The pictures ---

struct PictureCase {
  std::size_t samples;
  int picture;
  double width;
};

class DownloadTestPicture : public DownloadRun,
                            public ::testing::WithParamInterface<PictureCase> {};

TEST_P(DownloadTestPicture, IsWideEnoughForTheSamples) {
  open();
  finishWithSamples(Strings(GetParam().samples, "7"));
  EXPECT_EQ(visiblePictures(), std::vector<int>{GetParam().picture});
  const PictureBox& picture = window->picGraph[static_cast<std::size_t>(GetParam().picture)];
  EXPECT_EQ(picture.scale.get(), (UserScale{GetParam().width, 10000}));
  ASSERT_EQ(picture.lines().size(), 1U);
  EXPECT_EQ(picture.lines()[0].points.size(), static_cast<std::size_t>(GetParam().width));
}

INSTANTIATE_TEST_SUITE_P(AtEachBoundary, DownloadTestPicture,
                         ::testing::Values(PictureCase{2, 0, 100}, PictureCase{100, 0, 100},
                                           PictureCase{101, 1, 175}, PictureCase{175, 1, 175},
                                           PictureCase{176, 2, 300}, PictureCase{300, 2, 300},
                                           PictureCase{301, 3, 1500}, PictureCase{1500, 3, 1500},
                                           PictureCase{1501, 4, 3000}, PictureCase{3000, 4, 3000},
                                           PictureCase{3001, 5, 6000}),
                         [](const auto& each) { return "Case" + std::to_string(each.index); });

}  // namespace
}  // namespace veltrin

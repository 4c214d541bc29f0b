// SPDX-License-Identifier: GPL-3.0-or-later
#include "download/testdl.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <vector>

#include "frame/result_file.h"
#include "frame/startup.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kSamplePause = 100;            // ms between samples
constexpr int kLoadPause = 1000;             // ms before the window is shown
constexpr int kDrawPause = 1;                // ms between two values of the curve
constexpr int kLastPause = 2000;             // ms before the window can be closed by its button
constexpr std::int64_t kLeastTotal = 10000;  // bytes of a test that has not failed
constexpr int kBitsPerByte = 8;

// Blue, green and red of the bar while the read goes on, and behind it.
constexpr std::uint32_t kMagenta = 0xFF00FF;
constexpr std::uint32_t kGreen = 65280;

const char* const kOutputFile = "\\Download Stability Test.txt";

// Rated speeds above these take the files in their order; all others take the last one. The
// text of a speed is read up to its comma: "512" is far above "1,000".
constexpr std::array<int, 5> kUrlLimits = {60, 30, 20, 10, 5};

// Samples up to which each picture but the last is wide enough.
constexpr std::array<std::size_t, 5> kPictureLimits = {101, 176, 301, 1501, 3001};

// Widths of the pictures, in samples.
constexpr std::array<int, 6> kPictureWidths = {100, 175, 300, 1500, 3000, 6000};

struct Scale {
  std::vector<std::string_view> speeds;  // texts of the menu's list
  const char* label;
};

// The last one is of every other text.
const std::array<Scale, 6> kScales = {{
    {{"100,000", "95,000", "90,000", "85,000", "80,000", "75,000", "70,000", "65,000", "60,000",
      "55,000", "50,000", "45,000", "40,000"},
     "Graph 0 to 100 Mbps"},
    {{"35,000", "30,000", "25,000", "20,000"}, "Graph 0 to 50 Mbps"},
    {{"15,000", "14,000", "13,000", "12,000", "11,000"}, "Graph 0 to 30 Mbps"},
    {{"10,000", "9,000", "8,000", "7,500", "7,000"}, "Graph 0 to 15 Mbps"},
    {{"6,000", "5,000", "4,500", "4,000"}, "Graph 0 to 10 Mbps"},
    {{}, "Graph 0 to 5 Mbps"},
}};

// The scale of a rated speed.
std::size_t scaleOf(std::string_view speed) {
  const auto found =
      std::find_if(kScales.begin(), std::prev(kScales.end()), [speed](const Scale& scale) {
        return std::find(scale.speeds.begin(), scale.speeds.end(), speed) != scale.speeds.end();
      });
  return static_cast<std::size_t>(found - kScales.begin());
}

// The picture for so many samples.
std::size_t pictureFor(std::size_t samples) {
  const auto wide = std::upper_bound(kPictureLimits.begin(), kPictureLimits.end(), samples);
  return static_cast<std::size_t>(wide - kPictureLimits.begin());
}

double timeOfDay(const Program& program) {
  return secondsSinceMidnight(program.platform.clock.now());
}

}  // namespace

testdl::testdl(Program& program)
    : Form(nameOf(WindowName::testdl), program),
      dwnLoader1(program),
      program_(program),
      values_(program.shared<DownloadValues>()) {
  ownControls();
  caption = "Stability Test";
  Text1.visible = false;
  Text2.visible = false;
  Label1.caption = "Low";
  Label2.caption = "Current";
  Label3.caption = "High";
  Command1.enabled = false;
  hidePictures();
  for (std::size_t place = 0; place < picGraph.size(); ++place) {
    picGraph[place].scale = UserScale{static_cast<double>(kPictureWidths[place]),
                                      static_cast<double>(kSpeedHeights[0])};
  }
  Timer1.timer = [this] { Timer1_Timer(); };
  Command1.click = [this] { Command1_Click(); };
  dwnLoader1.BytesArrived = [this](std::int64_t arrived, const std::string&) {
    dwnLoader1_BytesArrived(arrived);
  };
  dwnLoader1.DownloadProgress = [this](std::int32_t CurBytes, std::int32_t MaxBytes,
                                       const std::string& SaveFile) {
    dwnLoader1_DownloadProgress(CurBytes, MaxBytes, SaveFile);
  };
  dwnLoader1.DownloadComplete = [this](std::int32_t MaxBytes, const std::string& SaveFile) {
    dwnLoader1_DownloadComplete(MaxBytes, SaveFile);
  };
}

void testdl::ownControls() {
  own("lb1", lb1);
  own("prgBAR", prgBAR);
  own("lb2", lb2);
  own("Label4", Label4);
  own("picGraph", picGraph);
  own("Label5", Label5);
  own("summ", summ);
  own("Command1", Command1);
  own("dwnLoader1", dwnLoader1);
  own("Timer1", Timer1);
  own("Text1", Text1);
  own("Text2", Text2);
  own("text3", text3);
  own("Label1", Label1);
  own("Label2", Label2);
  own("Label3", Label3);
  own("List1", List1);
  own("List2", List2);
  own("List3", List3);
  own("buff1", buff1);
  own("buff2", buff2);
  own("buff3", buff3);
  own("buff4", buff4);
  own("dinfo1", dinfo1);
  own("dinfo2", dinfo2);
  own("dinfo3", dinfo3);
}

// The file that is looked for in the path of the download has another name than the one it
// is saved to. Users' bars have stood still and their results have been unjudged since.
void testdl::Form_Load() {
  SetBarColour(prgBAR[0], kMagenta);
  caption = "Stability Analyzer ";
  TestFileName = "Stability.tst";
  values_.SuggestedSpeed = "";
  Text1.text = chosenUrl();
  Text2.text = program_.programFolder + "\\TestDL.tst";
  skip([this] { program_.Wait(kLoadPause); });
  // Its user may have opened it a second time meanwhile, which shows it, and closed it.
  if (!isLoaded()) return;
  picGraph[0].visible = true;
  program_.showInLoad(*this);
  program_.platform.events.DoEvents();
  if (!isLoaded()) return;
  values_.DownloadLag = 0;
  DownloadStart = timeOfDay(program_);
  lb1.caption = "Testing Internet Connection";
  Timer1.interval = kSamplePause;
  values_.DownloadStartTime = timeOfDay(program_);
  meter_.start(program_.platform.events.milliseconds());
  reading_ = true;
  dwnLoader1.BeginDownload(Text1.text, Text2.text);
}

// A read that the window leaves behind would go on for nobody.
void testdl::Form_Unload() {
  dwnLoader1.giveUp();
  skip([this] { program_.platform.files.Kill(program_.programFolder + "\\" + TestFileName); });
}

std::string testdl::chosenUrl() const {
  const double speed = Val(program_.keep<startup>()->Combo1.text);
  const auto limit = std::find_if(kUrlLimits.begin(), kUrlLimits.end(),
                                  [speed](int each) { return speed > each; });
  return program_.installation
      .DownloadTestUrl[static_cast<std::size_t>(limit - kUrlLimits.begin())];
}

void testdl::SetBarColour(ProgressBar& bar, std::uint32_t colour) {
  bar.SendMessageA(kSetBarColour, 0, colour);
}

void testdl::Timer1_Timer() {
  if (reading_) DownloadSpeed = meter_.speed(program_.platform.events.milliseconds());
  if (DownloadSpeed > 0) List2.add(toText(kBitsPerByte * DownloadSpeed));
}

void testdl::dwnLoader1_BytesArrived(std::int64_t arrived) {
  DownloadTotal = arrived;
  meter_.count(arrived, program_.platform.events.milliseconds());
}

bool testdl::isNamed(const std::string& SaveFile) const {
  return InStr(1, SaveFile, TestFileName) != 0;
}

void testdl::dwnLoader1_DownloadProgress(std::int32_t CurBytes, std::int32_t MaxBytes,
                                         const std::string& SaveFile) {
  if (!isNamed(SaveFile)) return;
  prgBAR[0].maximum = MaxBytes;
  prgBAR[0].value = CurBytes;
  lb2.caption = Format(CurBytes, "#,###") + " of " + Format(MaxBytes, "#,###");
  program_.platform.events.DoEvents();
}

// Behind each yield the window may be gone: then nothing is drawn any more, but what was
// measured is saved all the same.
void testdl::dwnLoader1_DownloadComplete(std::int32_t MaxBytes, const std::string& SaveFile) {
  reading_ = false;
  DownloadSpeed = meter_.mean(program_.platform.events.milliseconds());
  Command1.caption = "Done";
  if (isNamed(SaveFile) && !showResult(MaxBytes)) return;
  hidePictures();
  GraphIndex = pictureFor(List2.count());
  findHighest();
  ScaleIndex = scaleOf(program_.keep<startup>()->Combo1.text.get());
  Label4.caption = kScales[ScaleIndex].label;
  picGraph[GraphIndex].scale = UserScale{static_cast<double>(kPictureWidths[GraphIndex]),
                                         static_cast<double>(kSpeedHeights[ScaleIndex])};
  program_.platform.events.DoEvents();
  picGraph[GraphIndex].visible = true;
  program_.platform.events.DoEvents();
  drawSamples();
  summarise(MaxBytes);
  save();
  if (!isLoaded()) return;
  skip([this] { program_.Wait(kLastPause); });
  Command1.enabled = true;
}

// False when the test has failed, and the window is gone.
bool testdl::showResult(std::int32_t MaxBytes) {
  Timer1.enabled = false;
  SetBarColour(prgBAR[0], kGreen);
  DownloadTime = Format(timeOfDay(program_) - DownloadStart, "##.###");
  DownloadElapsed = DownloadTime;
  skip([&] {
    const double elapsed = toNumber(DownloadElapsed);
    Label5.caption = "Downloaded " + Format(MaxBytes / 1000.0, "#,###") + "Kb in " +
                     Format(std::trunc(elapsed / 60), "#0") + ":" + Format(elapsed, "#.###");
  });
  if (DownloadTotal >= kLeastTotal) return true;
  program_.MsgBox("Download Test Failed, try again later");
  unload();
  return false;
}

void testdl::hidePictures() {
  for (PictureBox& picture : picGraph) picture.visible = false;
}

// The first sample is left out here and where the curve is drawn.
void testdl::findHighest() {
  SampleMax = 0;
  for (std::size_t row = 1; row < List2.count(); ++row) {
    if (Val(List2.item(row)) > Val(SampleMax)) SampleMax = List2.item(row);
  }
}

// The sampler goes on meanwhile; what it adds now is of no read.
void testdl::drawSamples() {
  ZeroSamples = 0;
  const std::size_t samples = List2.count();
  for (std::size_t row = 1; row < samples && isLoaded(); ++row) {
    skip([&] { CurrentSample = toLong(toNumber(List2.item(row))); });
    if (CurrentSample == 0) ++ZeroSamples;
    values_.graph.DrawUsage(ScaleIndex, CurrentSample, picGraph[GraphIndex],
                            static_cast<int>(GraphIndex));
    program_.platform.events.DoEvents();
    skip([this] { program_.Wait(kDrawPause); });
  }
  SentCount = List1.count();
}

void testdl::summarise(std::int32_t MaxBytes) {
  const auto sent = static_cast<int>(SentCount);
  const std::vector<std::string> lines = {
      "Advance Settings Summary",
      "Total Bytes Received = " + toText(MaxBytes),
      "Download Time = " + DownloadTime,
      "Speed: " + Format(DownloadSpeed, "##.#0#") + " KB/s   /  " +
          Format(kBitsPerByte * DownloadSpeed, "##.#0#") + " Kb/s",
      "",
      "Total Packets Send = " + toText(sent),
      "Total Packets Received = " + toText(sent - ZeroSamples),
      "Total Lost/Dropped Packets = " + toText(ZeroSamples),
      "Latency Lag = " + values_.DownloadLag.text() + " sec",
  };
  for (const std::string& line : lines) {
    summ.add(line);
    text3.text += line + std::string(kLineBreak);
  }
  summ.add("");
  summ.add("Data Saved in");
  summ.add(program_.platform.files.native(program_.programFolder + kOutputFile));
}

void testdl::save() {
  std::unique_ptr<TextStream> stream;
  writeFile(program_.platform.files, stream, program_.programFolder, kOutputFile, FileMode::Writing,
            text3.text.get());
}

// The button can be pressed behind the test only, when nothing is left to cancel, and no
// test suggests a speed.
void testdl::Command1_Click() {
  if (Command1.caption.get() != "Cancel" && !values_.SuggestedSpeed.text().empty() &&
      !(values_.SuggestedSpeed == Loose(program_.menu.RatedSpeed))) {
    program_.keep<startup>()->Combo1.text = values_.SuggestedSpeed.text();
    program_.menu.RatedSpeed = values_.SuggestedSpeed.text();
  }
  unload();
}

}  // namespace veltrin

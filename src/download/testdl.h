// SPDX-License-Identifier: GPL-3.0-or-later
// The Download Stability Test: one file read, its speed as a curve, and a summary.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "download/download_values.h"
#include "download/dwnLoader.h"
#include "download/transfer_meter.h"
#include "forms/command_button.h"
#include "forms/label.h"
#include "forms/list_box.h"
#include "forms/picture_box.h"
#include "forms/progress_bar.h"
#include "forms/text_box.h"
#include "forms/timer.h"
#include "frame/program.h"

namespace veltrin {

// Starts by itself and writes its summary beside the program's other files.
class testdl : public Form {
 public:
  explicit testdl(Program& program);

  dwnLoader dwnLoader1;
  TextBox Text1;  // the URL
  TextBox Text2;  // the file it is saved to
  TextBox text3;  // the report, as it is built
  std::array<ProgressBar, 1> prgBAR;
  Label lb1;     // what is being done
  Label lb2;     // bytes
  Label Label4;  // scale of the curve
  Label Label5;  // result
  Label Label1;
  Label Label2;
  Label Label3;
  std::array<PictureBox, 6> picGraph;
  ListBox List1;  // never filled: its count stands for what was sent
  ListBox List2;  // the samples, in Kb/s
  ListBox summ;   // the summary
  Timer Timer1;
  CommandButton Command1{"Cancel"};

  // Nobody uses these.
  ListBox List3;
  ListBox buff1;
  ListBox buff2;
  ListBox buff3;
  ListBox buff4;
  Label dinfo1;
  Label dinfo2;
  Label dinfo3;

  // What a saved path has to hold for its progress to be shown, and the file that goes with
  // the window.
  std::string TestFileName;

  // KB/s, a KB being 1000 bytes: of the last half second while the read goes on, at its end
  // of the whole of it.
  double DownloadSpeed = 0;
  std::int64_t DownloadTotal = 0;  // bytes that have come

  // The highest sample but the first, in Kb/s. Nobody is shown it.
  Loose SampleMax;

 private:
  void Form_Load() override;
  void Form_Unload() override;

  void ownControls();
  std::string chosenUrl() const;
  void SetBarColour(ProgressBar& bar, std::uint32_t colour);

  void Timer1_Timer();
  void Command1_Click();
  void dwnLoader1_BytesArrived(std::int64_t arrived);
  void dwnLoader1_DownloadProgress(std::int32_t CurBytes, std::int32_t MaxBytes,
                                   const std::string& SaveFile);
  void dwnLoader1_DownloadComplete(std::int32_t MaxBytes, const std::string& SaveFile);

  bool isNamed(const std::string& SaveFile) const;
  bool showResult(std::int32_t MaxBytes);
  void hidePictures();
  void findHighest();
  void drawSamples();
  void summarise(std::int32_t MaxBytes);
  void save();

  Program& program_;
  DownloadValues& values_;
  TransferMeter meter_;
  bool reading_ = false;  // DownloadSpeed is of the present

  double DownloadStart = 0;     // seconds since midnight
  std::string DownloadTime;     // seconds that the read took
  std::string DownloadElapsed;  // the same, for the result line
  std::size_t ScaleIndex = 0;
  std::size_t GraphIndex = 0;
  std::int32_t CurrentSample = 0;
  int ZeroSamples = 0;
  std::size_t SentCount = 0;
};

}  // namespace veltrin

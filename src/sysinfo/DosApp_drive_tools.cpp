// SPDX-License-Identifier: GPL-3.0-or-later
// The routines about one drive.
#include <string>

#include "sysinfo/AModule1.h"
#include "sysinfo/DosApp.h"
#include "sysinfo/drive_sizes.h"
#include "sysinfo/summary_reader.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

const std::string kFreeLine = "Total # of free";
const std::string kTotalLine = "Total # of bytes";
constexpr std::int64_t kFigure = 32;  // where a line's figure begins

constexpr int kTestLines = 20'480;
constexpr std::size_t kTestLineLength = 1024;

bool startsWith(const std::string& line, const std::string& start) {
  return Left(line, Len(start)) == start;
}

}  // namespace

void DosApp::runDriveTool(const std::string& arguments) {
  DosBox.text = "";
  List1.clear();
  objDOSB.run(program_.start.WinDir + "\\System32\\fsutil.exe " + arguments);
}

void DosApp::CheckDirty(const std::string& Drive) {
  skip([&] { runDriveTool("dirty query " + Drive); });
  for (const std::string& line : piecesOf(DosBox.text.get())) {
    if (!line.empty()) List1.add(line);
  }
}

void DosApp::DriveCInfo(const std::string& Drive) {
  runDriveTool("volume diskfree " + Drive);
  std::string free;
  std::string total;
  for (const std::string& piece : piecesOf(DosBox.text.get())) {
    const std::string line = Trim(piece);
    if (startsWith(line, kFreeLine)) free = Mid(line, kFigure);
    if (startsWith(line, kTotalLine)) total = Mid(line, kFigure);
  }
  auto& values = program_.shared<DriveValues>();
  const bool isRefused = Val(free) == 0;
  if (isRefused) {
    FreeSpace(program_, Left(Drive, 1) + ":");
    free = std::to_string(values.FreeBytes);
    total = std::to_string(values.TotalBytes);
  }
  const ShortSizes sizes = shortSizes(Val(free), Val(total));
  values.FreeText = sizes.free;
  values.TotalText = sizes.total;
  askForClusters(Drive);
  runDriveTool("fsinfo volumeinfo " + Drive);
  if (isRefused) return;  // it would refuse these, too
  runDriveTool("repair query " + Drive);
  runDriveTool("fsinfo statistics " + Drive);
  runDriveTool("fsinfo ntfsinfo " + Drive);
}

// Only the asking counts: nobody reads the figures.
void DosApp::askForClusters(const std::string& drive) {
  std::uint32_t sectorsPerCluster = 0;
  std::uint32_t bytesPerSector = 0;
  std::uint32_t freeClusters = 0;
  std::uint32_t totalClusters = 0;
  program_.platform.drives.GetDiskFreeSpaceA(drive, sectorsPerCluster, bytesPerSector, freeClusters,
                                             totalClusters);
}

void DosApp::testdrivers() {
  skip([&] { program_.Wait(0); });
  const std::string path = program_.shared<DriveValues>().DriveLetter + ":\\Performance.tmp";
  std::unique_ptr<TextStream> file;
  skip([&] { file = program_.platform.files.openOutput(path); });
  if (!file) return;  // then nothing of the rest can be done
  const std::string line = std::string(kTestLineLength, ' ') + std::string(kLineBreak);
  for (int number = 0; number < kTestLines; ++number) {
    skip([&] { file->Write(line); });
  }
  skip([&] { file->Close(); });
}

}  // namespace veltrin

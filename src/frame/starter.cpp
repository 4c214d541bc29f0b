// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/starter.h"

#include "frame/mdlRegistry.h"
#include "frame/startup.h"
#include "text/statement.h"
#include "text/strings.h"

namespace veltrin {
namespace {

constexpr int kPaintPause = 100;     // ms in which the splash comes up
constexpr int kAnswerPause = 2500;   // ms for an answer on the first port
constexpr int kVersionPause = 1000;  // ms in which the newest version is shown
constexpr int kLastPause = 1000;     // ms before the menu
constexpr int kFirstPort = 31112;
constexpr int kSecondPort = 31113;
constexpr int kShortestPath = 3;  // characters; a shorter setting is none
const char* const kNoAnswer = "XXX";
const char* const kOldKey = "Software\\Veltrin";

// "1.05" as the text "105".
std::string withoutPoint(const std::string& version) {
  return Left(version, 1) + Mid(version, 3, 2);
}

}  // namespace

starter::starter(Program& program)
    : Form(nameOf(WindowName::starter), program), Winsock1(program.platform), program_(program) {
  own("Label1", Label1);
  own("Label2", Label2);
  own("playit", playit);
  own("Winsock1", Winsock1);
  caption = "Veltrin";
  Winsock1.DataArrival = [this] { Winsock1_DataArrival(); };
  Winsock1.ConnectionRequest = [this](std::intptr_t request) {
    Winsock1_ConnectionRequest(request);
  };
  Winsock1.Closed = [this] { Winsock1_Close(); };
}

void starter::Form_Load() {
  program_.start.HostName = Winsock1.LocalHostName();
  program_.summary.MbModel = program_.readSetting("SysInfo", "MB Model");
  Label1.caption = "Veltrin";
  playit.open(program_.programFolder + "\\files\\update.avi");
  Label2.caption =
      "Your Version " + program_.start.AppVersion + "  -  Dated " + program_.start.AppDate;
  program_.platform.desktop.show(*this);
  skip([&] { program_.Wait(kPaintPause); });
  takeOverOldSettings();
  readSystemName();
  openCounters();
  program_.writeSetting("Settings", "Path", program_.programFolder);
  chk4up();
  program_.start.WinDir = program_.platform.environment.variable("windir");
  skip([&] { program_.Wait(kLastPause); });
  program_.start.LocalIp = Winsock1.LocalIP();
  if (program_.readSetting("Settings", "Version") != program_.start.AppVersion) {
    program_.writeSetting("Settings", "Version", program_.start.AppVersion);
  }
  program_.show<startup>();
}

// Older versions kept their settings in the registry. The source lands in the place of the
// InDepth windows' pause, too, and the pause where nobody reads it: users' files have been
// like that ever since.
void starter::takeOverOldSettings() {
  const auto isMissing = [](const std::string& path) { return Len(path) < kShortestPath; };
  if (!isMissing(program_.readSetting("Settings", "Path"))) return;
  if (!isMissing(readRegistryValue(program_.platform.registry, kHkeyCurrentUser, kOldKey, "Path")
                     .text())) {
    return;
  }
  copyOldSetting("InDepth Source", "InDepth", "Source");
  copyOldSetting("InDepth Queries", "InDepth", "Queries");
  copyOldSetting("InDepth Source", "InDepth", "Period");
  copyOldSetting("InDepth Period", "Settings", "InDepth Queries");
  program_.writeSetting("Settings", "Path", program_.programFolder);
}

void starter::copyOldSetting(const char* oldName, const char* section, const char* key) {
  program_.writeSetting(
      section, key,
      readRegistryValue(program_.platform.registry, kHkeyCurrentUser, kOldKey, oldName));
}

void starter::readSystemName() {
  program_.summary.OsName = program_.readSetting("Settings", "OS");
  if (program_.summary.OsName.empty() && program_.getinfo) program_.getinfo();
}

// The counter that is added only proves that the counter service works.
void starter::openCounters() {
  Counters& counters = program_.platform.counters;
  program_.start.PdhFailed = 0;
  if (counters.PdhOpenQuery(program_.start.PdhQuery) != 0) {
    program_.start.PdhFailed = 1;
    program_.MsgBox("Windows performance service disabled or broken!",
                    kMessageCritical + kMessageToForeground);
  }
  const std::string path = "\\\\" + program_.start.HostName + "\\Processor(0)\\% Idle Time";
  Counters::Counter proof = 0;
  if (counters.PdhVbAddCounter(program_.start.PdhQuery, path, proof) != 0) program_.MsgBox("Fail");
}

void starter::chk4up() {
  program_.start.UpdateWaiting = 1;
  Winsock1.LocalPort = 0;
  Winsock1.RemoteHost = program_.installation.UpdateServer;
  Winsock1.RemotePort = kFirstPort;
  Winsock1.Connect();
  skip([&] { program_.Wait(kAnswerPause); });
  if (program_.start.UpdateWaiting != 1) return;
  Winsock1.LocalPort = 0;
  Winsock1.RemoteHost = program_.installation.UpdateServer;
  Winsock1.RemotePort = kSecondPort;
  if (Winsock1.State() == SocketState::Error) {
    Winsock1.Close();
    Winsock1.Listen();
  }
  Winsock1.Connect();
}

// The endpoint speaks first. What this side would say to it is empty by now.
void starter::Winsock1_DataArrival() {
  const std::string reply;
  const std::string text = Winsock1.GetData();
  if (program_.start.UpdateWaiting == 1) skip([&] { Winsock1.SendData(reply); });
  if (text == kNoAnswer) return;
  chkupdate(text);
  program_.start.UpdateWaiting = 0;
}

void starter::chkupdate(std::string answer) {
  skip([&] { program_.start.PublicIp = Mid(answer, 5, Len(answer) - 4); });
  answer = Left(answer, 4);
  const std::string remote = withoutPoint(answer);
  const std::string local = withoutPoint(program_.start.AppVersion);
  Label1.caption = "Current Version: " + answer;
  skip([&] { program_.Wait(kVersionPause); });
  if (Val(local) < Val(remote) &&
      program_.MsgBox("An update is available for Veltrin." + std::string(kLineBreak) +
                          "Would you like to Download/Update it now?",
                      kMessageYesNo, "Update") == kAnswerYes) {
    startUpdate();
  }
  Winsock1.Close();
  Winsock1.Close();
}

void starter::startUpdate() {
  program_.platform.shell.execute("open", program_.programFolder + "\\Downloader.exe", "-Veltrin",
                                  program_.programFolder, kShowNormal);
  program_.end();
}

void starter::Winsock1_ConnectionRequest(std::intptr_t requestID) {
  Winsock1.Close();
  program_.platform.events.DoEvents();
  skip([&] { Winsock1.Accept(requestID); });
}

void starter::Winsock1_Close() {
  Winsock1.Close();
  Winsock1.Listen();
}

}  // namespace veltrin

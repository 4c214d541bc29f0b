// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/printing/cups_server.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <netinet/in.h>
#include <signal.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace veltrin {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

// Debian's places, which are not in everybody's PATH.
constexpr const char* kProgram = "/usr/sbin/cupsd";
constexpr const char* kPrograms = "PATH=/usr/sbin:/usr/bin:/sbin:/bin ";
constexpr const char* kFilters = "/usr/lib/cups/filter";
constexpr const char* kDaemons = "/usr/lib/cups/daemon";

// The printer: a program that CUPS hands the paper as a sixth word or through its input. The
// report is renamed at the end, so that whoever sees it sees all of it.
constexpr const char* kPrinter = R"(#!/bin/sh
if [ $# -eq 0 ]; then echo 'direct paper:/ "Unknown" "Paper"'; exit 0; fi
file="${DEVICE_URI#paper:}/$1.pdf"
if [ -e "$file" ]; then exit 1; fi
if [ $# -ge 6 ]; then cat "$6" >"$file"; else cat >"$file"; fi
printf '%s\n' "$1" "$3" "$4" "$5" >"$file.part"
mv "$file.part" "${DEVICE_URI#paper:}/$1.job"
)";

// A description of the printer, without which Qt takes none. It tells its sheets, of which a
// strip of 12 points cannot be reached on each side, and what it takes.
std::string descriptionOf(const CupsServer::Queue& queue) {
  const std::string takes = queue.isFiltered ? "application/vnd.cups-pdf" : "application/pdf";
  std::ostringstream text;
  text << "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
       << "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"PAPER.PPD\"\n"
       << "*Product: \"(Paper)\"\n*Manufacturer: \"Test\"\n*ModelName: \"Paper\"\n"
       << "*ShortNickName: \"Paper\"\n*NickName: \"Paper\"\n*PSVersion: \"(3010.000) 0\"\n"
       << "*LanguageLevel: \"3\"\n*ColorDevice: False\n*DefaultColorSpace: Gray\n"
       << "*FileSystem: False\n*LandscapeOrientation: Plus90\n"
       << "*cupsFilter2: \"" << takes << " application/pdf 0 -\"\n";
  for (const char* kind : {"PageSize", "PageRegion"}) {
    text << "*OpenUI *" << kind << ": PickOne\n*OrderDependency: 10 AnySetup *" << kind << "\n"
         << "*Default" << kind << ": " << queue.size << "\n"
         << "*" << kind << " A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
         << "*" << kind << " Letter/Letter: \"<</PageSize[612 792]>>setpagedevice\"\n"
         << "*CloseUI: *" << kind << "\n";
  }
  text << "*DefaultImageableArea: " << queue.size << "\n"
       << "*ImageableArea A4/A4: \"12 12 583 830\"\n"
       << "*ImageableArea Letter/Letter: \"12 12 600 780\"\n"
       << "*DefaultPaperDimension: " << queue.size << "\n"
       << "*PaperDimension A4/A4: \"595 842\"\n*PaperDimension Letter/Letter: \"612 792\"\n"
       << "*DefaultFont: Courier\n";
  return text.str();
}

sockaddr_in loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

std::uint16_t freePort() {
  const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  const bool isBound = bind(probe, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                       getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  close(probe);
  return isBound ? ntohs(address.sin_port) : 0;
}

bool answers(std::uint16_t port) {
  const int caller = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = loopback(port);
  const int result = connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  close(caller);
  return result == 0;
}

PaperJob readJob(const fs::path& report) {
  std::ifstream file(report);
  PaperJob job;
  std::string number;
  std::getline(file, number);
  std::getline(file, job.title);
  std::getline(file, job.copies);
  std::getline(file, job.options);
  job.number = std::atoi(number.c_str());
  job.paper = fs::path(report).replace_extension(".pdf").string();
  return job;
}

}  // namespace

std::string outputOf(const std::string& commandLine) {
  FILE* pipe = popen((kPrograms + commandLine).c_str(), "r");
  if (pipe == nullptr) return {};
  std::string text;
  std::array<char, 4096> part{};
  for (std::size_t count = 0; (count = fread(part.data(), 1, part.size(), pipe)) > 0;) {
    text.append(part.data(), count);
  }
  return pclose(pipe) == 0 ? text : std::string();
}

// The folder stands in for the user's home, too, where the choice of a default printer lies.
void usePrintServer(const std::string& place, const std::string& folder) {
  setenv("CUPS_SERVER", place.c_str(), 1);
  setenv("CUPS_SERVERROOT", folder.c_str(), 1);
  setenv("HOME", folder.c_str(), 1);
}

std::string CupsServer::lack() {
  if (access(kProgram, X_OK) != 0) return "The print server cupsd is not installed.";
  if (access(kFilters, X_OK) != 0) return "The filters of CUPS are not installed.";
  if (access("/usr/sbin/lpadmin", X_OK) != 0) return "The tools of CUPS are not installed.";
  if (access("/usr/bin/pdftotext", X_OK) != 0) return "The program pdftotext is not installed.";
  return {};
}

CupsServer::CupsServer(const std::vector<Queue>& queues, bool hasDefault) {
  fillFolder(queues, hasDefault);
  // A port may be taken between the look at it and the server's start.
  for (int attempt = 0; attempt < 5 && !isRunning(); ++attempt) start();
  usePrintServer("127.0.0.1:" + std::to_string(port_), folder_.path("root"));
}

CupsServer::~CupsServer() { stop(); }

void CupsServer::fillFolder(const std::vector<Queue>& queues, bool hasDefault) const {
  const fs::path& top = folder_.folder();
  fs::permissions(top, fs::perms(0755));
  for (const char* name :
       {"root/ppd", "bin/backend", "spool", "cache", "state", "temp", "log", "paper"}) {
    fs::create_directories(top / name);
  }
  for (const char* name : {"paper", "temp"}) fs::permissions(top / name, fs::perms::all);
  fs::create_symlink(kFilters, top / "bin/filter");
  fs::create_symlink(kDaemons, top / "bin/daemon");
  folder_.fill("bin/backend/paper", kPrinter);
  fs::permissions(top / "bin/backend/paper", fs::perms(0755));
  std::string printers;
  for (const Queue& queue : queues) {
    const std::string kind = hasDefault && &queue == &queues.front() ? "DefaultPrinter" : "Printer";
    printers.append("<" + kind).append(" " + queue.name).append(">\nDeviceURI paper:");
    printers.append(folder_.path("paper")).append(queue.info.empty() ? "" : "\nInfo " + queue.info);
    printers.append("\nState Idle\nAccepting Yes\nShared No\n");
    printers.append("</" + kind).append(">\n");
    folder_.fill("root/ppd/" + queue.name + ".ppd", descriptionOf(queue));
  }
  folder_.fill("root/printers.conf", printers);
}

void CupsServer::configure() const {
  const std::string top = folder_.folder().string();
  std::string files = "ServerRoot " + top + "/root\nServerBin " + top +
                      "/bin\nDataDir /usr/share/cups\nCacheDir " + top + "/cache\nStateDir " + top +
                      "/state\nRequestRoot " + top + "/spool\nTempDir " + top + "/temp\nErrorLog " +
                      top + "/log/error\nAccessLog " + top + "/log/access\nPageLog " + top +
                      "/log/page\n";
  if (geteuid() == 0) files += "SystemGroup root\nUser lp\nGroup lp\n";
  folder_.fill("root/cups-files.conf", files);
  const std::string all = "Order allow,deny\nAllow all\n";
  folder_.fill("root/cupsd.conf",
               "LogLevel debug\nMaxLogSize 0\nListen 127.0.0.1:" + std::to_string(port_) +
                   "\nBrowsing Off\nWebInterface No\nDefaultAuthType None\n<Location />\n" + all +
                   "</Location>\n<Policy default>\nJobPrivateAccess all\nJobPrivateValues none\n"
                   "SubscriptionPrivateAccess all\nSubscriptionPrivateValues none\n<Limit All>\n" +
                   all + "</Limit>\n</Policy>\n");
}

bool CupsServer::start() {
  port_ = freePort();
  configure();
  const std::string settings = folder_.path("root/cupsd.conf");
  const std::string files = folder_.path("root/cups-files.conf");
  const std::string output = folder_.path("log/output");
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (freopen(output.c_str(), "w", stderr) == nullptr) _exit(127);
    execl(kProgram, kProgram, "-f", "-c", settings.c_str(), "-s", files.c_str(), nullptr);
    _exit(127);
  }
  for (int wait = 0; wait < 2000; ++wait) {
    if (waitpid(process_, nullptr, WNOHANG) != 0) {
      process_ = -1;
      return false;
    }
    if (answers(port_)) return true;
    std::this_thread::sleep_for(milliseconds(5));
  }
  stop();
  return false;
}

void CupsServer::stop() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  process_ = -1;
}

void CupsServer::silence() const { kill(process_, SIGSTOP); }

void CupsServer::goOn() const { kill(process_, SIGCONT); }

int CupsServer::command(const std::string& line) const {
  return std::system((kPrograms + line + " >/dev/null 2>&1").c_str());
}

std::vector<PaperJob> CupsServer::paper(std::size_t count) const {
  std::vector<PaperJob> jobs;
  constexpr int kTries = 3000;
  for (int wait = 0; wait < kTries && jobs.size() < count; ++wait) {
    if (wait > 0) std::this_thread::sleep_for(milliseconds(10));
    jobs.clear();
    for (const auto& entry : fs::directory_iterator(folder_.folder() / "paper")) {
      if (entry.path().extension() == ".job") jobs.push_back(readJob(entry.path()));
    }
  }
  std::sort(jobs.begin(), jobs.end(),
            [](const PaperJob& one, const PaperJob& other) { return one.number < other.number; });
  return jobs;
}

int CupsServer::waitingJobs() const {
  const std::string list = outputOf("lpstat -W not-completed -o");
  return static_cast<int>(std::count(list.begin(), list.end(), '\n'));
}

}  // namespace veltrin

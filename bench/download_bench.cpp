// SPDX-License-Identifier: GPL-3.0-or-later
// A large body from nginx on the loopback into a file: by the download control of the
// program, and by curl.
//
//   download_bench [ROUNDS | --smoke]
//
// Both are measured alternately in each of ROUNDS rounds (3 by default); the best of each
// counts, as everything else on the machine can only slow them; of memory and gaps the worst.
//
// The ratio is the throughput that the reading reaches of curl's, which writes while it
// reads; 0.7 or better is the aim. The one write at the end is told apart, and so is the
// ratio with it. The memory is the most that the process took above what it had before, the
// body and 64 MB at most. The gap is the longest time in which the event loop told a timer of
// 1 ms nothing while the body came, 50 ms at most.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QTimer>

#include "download/dwnLoader.h"
#include "frame/program.h"
#include "own_folder.h"
#include "platform/qt/desktop_system.h"
#include "platform/qt/qt_text.h"
#include "support/nginx.h"
#include "table.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::int64_t kUsualSize = 500'000'000;
constexpr std::int64_t kSmokeSize = 3'000'001;
constexpr int kUsualRounds = 3;
constexpr double kLeastRatio = 0.7;
constexpr double kMostMemory = 64;  // MB above the body
constexpr double kMostGap = 50;     // ms
constexpr const char* kCurl = "/usr/bin/curl";

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// So that the folder with the large files goes, too.
[[noreturn]] void fail(const std::string& words) { throw std::runtime_error(words); }

// A line of /proc/self/status, in MB.
double memory(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::atof(line.c_str() + name.size()) / 1000 * 1.024;
  }
  fail("the system does not tell " + name);
}

// The most memory that the process takes from here on, above what it has here.
class MemoryPeak {
 public:
  MemoryPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;  // forgets the highest (proc(5))
    before_ = memory("VmRSS:");
  }
  double megabytes() const { return memory("VmHWM:") - before_; }

 private:
  double before_ = 0;
};

// The longest time between two turns of the event loop.
class Heartbeat {
 public:
  Heartbeat() {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { beat(); });
    timer_.start(1);
  }
  // In ms, up to now.
  double longestGap() const { return std::max(longest_, secondsSince(last_) * 1000); }

 private:
  void beat() {
    longest_ = std::max(longest_, secondsSince(last_) * 1000);
    last_ = Clock::now();
  }

  Clock::time_point last_ = Clock::now();
  double longest_ = 0;
  QTimer timer_;
};

struct Figures {
  double reading = 0;  // seconds
  double writing = 0;  // seconds
  double memory = 0;   // MB
  double gap = 0;      // ms
};

// A window that nobody sees, with the control.
class LoaderWindow : public veltrin::Form {
 public:
  explicit LoaderWindow(veltrin::Program& program) : Form("loader", program), loader(program) {
    own("loader", loader);
  }

  veltrin::dwnLoader loader;
};

// Reads a URL into a file. The last that the control tells before it writes is that all
// bytes have come.
Figures readIntoFile(veltrin::Program& program, const std::string& url, const std::string& path) {
  const auto window = program.keep<LoaderWindow>();
  Figures figures;
  const MemoryPeak peak;
  const Heartbeat heartbeat;
  const auto start = Clock::now();
  bool isOver = false;
  bool hasFailed = false;
  window->loader.BytesArrived = [&](std::int64_t, const std::string&) {
    figures.reading = secondsSince(start);
    figures.gap = heartbeat.longestGap();
  };
  window->loader.DownloadError = [&](const std::string&) { hasFailed = true; };
  window->loader.DownloadComplete = [&](std::int32_t, const std::string&) {
    figures.writing = secondsSince(start) - figures.reading;
    figures.memory = peak.megabytes();
    isOver = true;
  };
  window->loader.BeginDownload(url, path);
  program.platform.events.pumpUntil([&isOver] { return isOver; });
  if (hasFailed) fail("the read has failed");
  return figures;
}

// Seconds that curl takes.
double readByCurl(const std::string& url, const std::string& path) {
  const auto start = Clock::now();
  const pid_t child = fork();
  if (child == 0) {
    execl(kCurl, kCurl, "-s", "-o", path.c_str(), url.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) fail("curl has failed");
  return secondsSince(start);
}

void fill(const fs::path& path, std::int64_t size) {
  std::string block(1'000'000, '\0');
  std::uint32_t state = 1;
  for (char& byte : block) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(state >> 24U);
  }
  std::ofstream file(path, std::ios::binary);
  for (std::int64_t left = size; left > 0; left -= static_cast<std::int64_t>(block.size())) {
    file.write(block.data(), static_cast<std::streamsize>(
                                 std::min(left, static_cast<std::int64_t>(block.size()))));
  }
}

bool areAlike(const fs::path& left, const fs::path& right) {
  std::ifstream one(left, std::ios::binary);
  std::ifstream other(right, std::ios::binary);
  std::string piece(1 << 20, '\0');
  std::string same(1 << 20, '\0');
  do {
    one.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    other.read(same.data(), static_cast<std::streamsize>(same.size()));
    if (one.gcount() != other.gcount() || piece != same) return false;
  } while (one && other);
  return one.eof() == other.eof();
}

double megabytesPerSecond(std::int64_t size, double seconds) {
  return static_cast<double>(size) / 1e6 / seconds;
}

void measure(std::int64_t size, int rounds, veltrin::Table& table) {
  const veltrin::OwnFolder folder("download_bench");
  const fs::path body = folder.path() / "body.bin";
  const fs::path ours = folder.path() / "ours.bin";
  const fs::path theirs = folder.path() / "curl.bin";
  fill(body, size);
  const veltrin::Nginx server(folder.path());
  if (!server.isRunning()) fail("nginx does not start");
  const auto system = veltrin::makeDesktopSystem(
      veltrin::fromQt(QCoreApplication::applicationFilePath()), "Download bench", {});
  veltrin::Program program(system->platform());

  Figures best{1e9, 1e9, 0, 0};
  double both = 1e9;
  double curl = 1e9;
  const bool hasCurl = access(kCurl, X_OK) == 0;
  for (int round = 0; round < rounds; ++round) {
    fs::remove(theirs);
    sync();  // nobody pays for what another has written
    if (hasCurl) curl = std::min(curl, readByCurl(server.url("/body.bin"), theirs.string()));
    fs::remove(ours);
    sync();
    const Figures now = readIntoFile(program, server.url("/body.bin"), ours.string());
    best.reading = std::min(best.reading, now.reading);
    best.writing = std::min(best.writing, now.writing);
    both = std::min(both, now.reading + now.writing);
    best.memory = std::max(best.memory, now.memory);
    best.gap = std::max(best.gap, now.gap);
    if (!areAlike(body, ours)) fail("the file is not what the server has");
  }
  const auto speed = [size](double seconds) { return megabytesPerSecond(size, seconds); };
  const std::string megabytes = std::to_string(size / 1'000'000) + " MB";
  const std::optional<double> theirSpeed =
      hasCurl ? std::optional(speed(curl)) : std::optional<double>();
  const std::string peer = "`curl -s -o FILE`, which writes while it reads";
  table.add(
      {"A download of " + megabytes + " from nginx on the loopback, until all bytes are there",
       speed(best.reading), "MB/s", peer, theirSpeed, veltrin::atLeast(kLeastRatio)});
  table.add({"The same, with the one write of the body at its end", speed(both), "MB/s", peer,
             theirSpeed, std::nullopt});
  table.add({"The write alone", best.writing * 1000, "ms", "", std::nullopt, std::nullopt});
  table.add({"Memory at most during the download, above the body",
             best.memory - static_cast<double>(size) / 1e6, "MB", "", std::nullopt,
             veltrin::atMost(kMostMemory)});
  table.add({"The longest time between two turns of the event loop meanwhile", best.gap, "ms", "",
             std::nullopt, veltrin::atMost(kMostGap)});
}

}  // namespace

int main(int argc, char** argv) {
  const std::string word = argc > 1 ? argv[1] : std::to_string(kUsualRounds);
  const bool isSmoke = word == "--smoke";
  veltrin::Table table(!isSmoke);
  if (!veltrin::Nginx::isThere()) {
    table.cannot("A download", "nginx is not here");
    return table.exitCode();
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  try {
    measure(isSmoke ? kSmokeSize : kUsualSize, std::max(1, std::atoi(word.c_str())), table);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "download_bench: %s\n", failure.what());
    return EXIT_FAILURE;
  }
  return table.exitCode();
}

// SPDX-License-Identifier: GPL-3.0-or-later
// A child process for tests and benchmarks: carries out its arguments one by one.
//
//   file=PATH        prints what follows into a file, which has its name once all is in it
//   folder           prints the folder it works in
//   out=TEXT         prints TEXT and a line feed in one write
//   err=TEXT         the same on standard error
//   bytes=N          prints N bytes of the pattern in writes of 64 KB
//   bursts=N         prints N bytes of the pattern in writes of 1 byte to 64 KB
//   sleep=MS         waits that many milliseconds
//   stdin            prints how many bytes standard input holds
//   arguments        prints all arguments, one a line, and ends
//   descriptors      prints the numbers of its open descriptors (Linux)
//   signals          prints its blocked and its ignored signals (Linux)
//   grandchild=TEXT  leaves a process behind that prints TEXT and a line feed
//                    after the talker itself has ended
//   exit=CODE        ends with this code
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/platform/talker_pattern.h"
#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <dirent.h>
#include <signal.h>
#include <unistd.h>
#endif

namespace {

constexpr std::size_t kBlock = 65536;
constexpr int kOutput = 1;
constexpr int kError = 2;

// Writes everything; ends the program when nobody reads any more.
void writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
#ifdef _WIN32
    const auto written = _write(fd, bytes.data(), static_cast<unsigned>(bytes.size()));
#else
    const auto written = write(fd, bytes.data(), bytes.size());
#endif
    if (written <= 0) std::exit(1);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// Keeps line feeds as they are.
void printPlainly() {
#ifdef _WIN32
  _setmode(kOutput, _O_BINARY);
  _setmode(kError, _O_BINARY);
#endif
}

// Takes the place of standard output for the talker's life.
class OutputFile {
 public:
  ~OutputFile() {
    if (path_.empty()) return;
    close(kOutput);
    std::error_code ignored;
    std::filesystem::rename(path_ + ".part", path_, ignored);
  }

  void open(const std::string& path) {
    path_ = path;
    const int file = ::open((path + ".part").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, kOutput);
    close(file);
    printPlainly();
  }

 private:
  std::string path_;
};

void printLine(const std::string& text) { writeAll(kOutput, text + "\n"); }

// The pattern, over and over, long enough for a block from any place.
class Pattern {
 public:
  Pattern() {
    for (std::uint64_t i = 0; i < veltrin::kTalkerPeriod + kBlock; ++i) {
      table_ += veltrin::talkerByte(i);
    }
  }

  void print(std::size_t count) {
    writeAll(kOutput, std::string_view(table_).substr(position_, count));
    position_ = (position_ + count) % veltrin::kTalkerPeriod;
  }

 private:
  std::string table_;
  std::size_t position_ = 0;
};

void printBytes(Pattern& pattern, std::uint64_t count) {
  while (count > 0) {
    const auto block = static_cast<std::size_t>(std::min<std::uint64_t>(count, kBlock));
    pattern.print(block);
    count -= block;
  }
}

// Sizes come from a small generator (the multiplier and increment of the C
// standard's example of rand), so every run is the same.
void printBursts(Pattern& pattern, std::uint64_t count) {
  std::uint32_t state = 1;
  while (count > 0) {
    state = state * 1103515245U + 12345U;
    const std::uint64_t size = (state >> 8) % kBlock + 1;
    const auto block = static_cast<std::size_t>(std::min(count, size));
    pattern.print(block);
    count -= block;
    std::this_thread::yield();
  }
}

void printInputSize() {
  std::uint64_t size = 0;
  char buffer[256];
  for (;;) {
#ifdef _WIN32
    const auto taken = _read(0, buffer, sizeof buffer);
#else
    const auto taken = read(0, buffer, sizeof buffer);
#endif
    if (taken <= 0) break;
    size += static_cast<std::uint64_t>(taken);
  }
  printLine(std::to_string(size));
}

#ifdef _WIN32

void printDescriptors() {}
void printSignals() {}

// The copy is told the talker's process number and waits for its end.
void leaveGrandchild(const std::string& text) {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string line = "\"" + std::string(path) +
                     "\" after=" + std::to_string(GetCurrentProcessId()) + " out=" + text;
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION started{};
  CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                 &started);
}

void waitForEnd(unsigned long process) {
  const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
  if (handle != nullptr) WaitForSingleObject(handle, INFINITE);
}

#else

void printDescriptors() {
  DIR* folder = opendir("/proc/self/fd");
  if (folder == nullptr) std::exit(1);
  const std::string own = std::to_string(dirfd(folder));
  std::vector<int> numbers;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] != '.' && own != entry->d_name)
      numbers.push_back(std::stoi(entry->d_name));
  }
  closedir(folder);
  std::sort(numbers.begin(), numbers.end());
  std::string line;
  for (const int number : numbers) line += std::to_string(number) + " ";
  printLine(line);
}

void printSignals() {
  std::string blocked = "blocked:";
  std::string ignored = "ignored:";
  sigset_t mask;
  sigprocmask(SIG_SETMASK, nullptr, &mask);
  for (int number = 1; number < NSIG; ++number) {
    struct sigaction action {};
    if (sigismember(&mask, number) == 1) blocked += " " + std::to_string(number);
    const bool known = sigaction(number, nullptr, &action) == 0;
    if (known && action.sa_handler == SIG_IGN) ignored += " " + std::to_string(number);
  }
  printLine(blocked);
  printLine(ignored);
}

// The copy holds the only read end of a pipe whose only write end is the
// talker's, so it reads an end of file when the talker has ended.
void leaveGrandchild(const std::string& text) {
  int ends[2];
  if (pipe(ends) != 0) std::exit(1);
  const pid_t copy = fork();
  if (copy < 0) std::exit(1);
  if (copy > 0) {
    close(ends[0]);
    return;
  }
  close(ends[1]);
  char nothing = 0;
  if (read(ends[0], &nothing, 1) == 0) printLine(text);
  _exit(0);
}

void waitForEnd(unsigned long) {}

#endif

void printArguments(int count, char** values) {
  for (int i = 0; i < count; ++i) printLine(values[i]);
}

void carryOut(const std::string& action, const std::string& value, Pattern& pattern) {
  if (action == "folder") printLine(std::filesystem::current_path().string());
  if (action == "out") printLine(value);
  if (action == "err") writeAll(kError, value + "\n");
  if (action == "bytes") printBytes(pattern, std::stoull(value));
  if (action == "bursts") printBursts(pattern, std::stoull(value));
  if (action == "sleep") std::this_thread::sleep_for(std::chrono::milliseconds(std::stoul(value)));
  if (action == "stdin") printInputSize();
  if (action == "descriptors") printDescriptors();
  if (action == "signals") printSignals();
  if (action == "grandchild") leaveGrandchild(value);
  if (action == "after") waitForEnd(std::stoul(value));
  if (action == "exit") std::exit(std::stoi(value));
}

}  // namespace

int main(int argc, char** argv) {
  printPlainly();
  Pattern pattern;
  OutputFile file;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "arguments") {
      printArguments(argc, argv);
      return 0;
    }
    const auto equals = argument.find('=');
    const std::string value =
        equals == std::string::npos ? std::string() : argument.substr(equals + 1);
    if (argument.starts_with("file=")) file.open(value);
    carryOut(argument.substr(0, equals), value, pattern);
  }
  return 0;
}

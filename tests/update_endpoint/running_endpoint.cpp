// SPDX-License-Identifier: GPL-3.0-or-later
#include "running_endpoint.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace veltrin::endpoint {
namespace {

constexpr std::chrono::seconds kLongestWait{60};
constexpr std::chrono::milliseconds kLook{1};

// Where descriptors lie out of the way of those that are put in place, in a new process.
constexpr int kAside = 200;

std::array<Descriptor, 2> makePipe() {
  std::array<int, 2> ends{-1, -1};
  EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0) << std::strerror(errno);
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

void putHandedOverInPlace(const Surroundings& surroundings) {
  std::vector<int> aside;
  aside.reserve(surroundings.handedOver.size());
  for (const int number : surroundings.handedOver) {
    aside.push_back(fcntl(number, F_DUPFD_CLOEXEC, kAside));
  }
  for (std::size_t at = 0; at < aside.size(); ++at) dup2(aside[at], 3 + static_cast<int>(at));
  if (aside.empty()) return;
  const pid_t owner = getpid() + (surroundings.forAnother ? 1 : 0);
  setenv("LISTEN_PID", std::to_string(owner).c_str(), 1);
  setenv("LISTEN_FDS", std::to_string(aside.size()).c_str(), 1);
}

void limitDescriptors(const Surroundings& surroundings) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  if (surroundings.descriptors > 0) {
    limit.rlim_cur = limit.rlim_max = static_cast<rlim_t>(surroundings.descriptors);
  }
  if (surroundings.descriptorsAtFirst > 0) {
    limit.rlim_cur = static_cast<rlim_t>(surroundings.descriptorsAtFirst);
  }
  setrlimit(RLIMIT_NOFILE, &limit);
}

// In the new process, which then becomes the program.
[[noreturn]] void become(const std::vector<std::string>& arguments,
                         const Surroundings& surroundings, int output, int errors) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // not to outlive a test that is killed
  dup2(output, STDOUT_FILENO);
  dup2(errors, STDERR_FILENO);
  putHandedOverInPlace(surroundings);
  for (const auto& [name, value] : surroundings.variables) setenv(name.c_str(), value.c_str(), 1);
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), UPDATE_ENDPOINT);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  limitDescriptors(surroundings);
  execv(UPDATE_ENDPOINT, pointers.data());
  _exit(126);
}

std::string allOf(const Descriptor& file) {
  std::string text;
  std::array<char, 512> piece{};
  ssize_t length = 0;
  while ((length = read(file.get(), piece.data(), piece.size())) > 0) {
    text.append(piece.data(), static_cast<std::size_t>(length));
  }
  return text;
}

}  // namespace

RunningEndpoint::RunningEndpoint(const std::vector<std::string>& arguments,
                                 const Surroundings& surroundings) {
  std::array<Descriptor, 2> output = makePipe();
  std::array<Descriptor, 2> errors = makePipe();
  if (surroundings.unread) output[0].reset();
  process_ = fork();
  if (process_ == 0) become(arguments, surroundings, output[1].get(), errors[1].get());
  EXPECT_GT(process_, 0) << std::strerror(errno);
  output_ = std::move(output[0]);
  errors_ = std::move(errors[0]);
}

RunningEndpoint::~RunningEndpoint() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

std::string RunningEndpoint::line() {
  std::string line;
  char character = 0;
  while (read(output_.get(), &character, 1) == 1 && character != '\n') line += character;
  return line;
}

std::vector<Place> RunningEndpoint::places(std::size_t count) {
  std::vector<Place> places;
  while (places.size() < count) {
    const std::string text = line();
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos) {
      ADD_FAILURE() << "no place: \"" << text << "\" " << (text.empty() ? errors() : "");
      return std::vector<Place>(count);
    }
    std::string address = text.substr(0, colon);
    if (address.starts_with('[')) address = address.substr(1, address.size() - 2);
    places.push_back({address, static_cast<std::uint16_t>(std::stoi(text.substr(colon + 1)))});
  }
  // All that it needs for itself is open before the first line is written.
  descriptorsAtRest_ = openDescriptors();
  return places;
}

Place RunningEndpoint::place() { return places(1).front(); }

std::size_t RunningEndpoint::openDescriptors() const {
  const std::filesystem::directory_iterator all("/proc/" + std::to_string(process_) + "/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

std::size_t RunningEndpoint::lowestFreeDescriptor() const {
  const std::string folder = "/proc/" + std::to_string(process_) + "/fd/";
  std::size_t number = 0;
  while (std::filesystem::is_symlink(folder + std::to_string(number))) ++number;
  return number;
}

void RunningEndpoint::waitForCallers(std::size_t count) const {
  const auto end = std::chrono::steady_clock::now() + kLongestWait;
  while (openDescriptors() != descriptorsAtRest_ + count) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << openDescriptors() - descriptorsAtRest_ << " callers stand, not " << count;
      return;
    }
    std::this_thread::sleep_for(kLook);
  }
}

std::chrono::nanoseconds RunningEndpoint::processorTime() const {
  std::ifstream file("/proc/" + std::to_string(process_) + "/schedstat");
  std::int64_t nanoseconds = -1;
  file >> nanoseconds;
  EXPECT_GE(nanoseconds, 0) << "the kernel does not tell processor time";
  return std::chrono::nanoseconds(nanoseconds);
}

std::chrono::nanoseconds RunningEndpoint::processorTimeOver(std::chrono::milliseconds time) const {
  const auto before = processorTime();
  std::this_thread::sleep_for(time);
  return processorTime() - before;
}

void RunningEndpoint::freeze() const {
  send(SIGSTOP);
  siginfo_t state{};
  EXPECT_EQ(waitid(P_PID, static_cast<id_t>(process_), &state, WSTOPPED | WNOWAIT), 0);
}

void RunningEndpoint::thaw() const { send(SIGCONT); }

void RunningEndpoint::send(int signal) const { EXPECT_EQ(kill(process_, signal), 0); }

int RunningEndpoint::exitCode() {
  int status = 0;
  EXPECT_EQ(waitpid(process_, &status, 0), process_);
  process_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string RunningEndpoint::restOfOutput() { return allOf(output_); }

std::string RunningEndpoint::errors() { return allOf(errors_); }

std::vector<std::string> onLoopback(std::vector<std::string> more) {
  more.insert(more.begin(), {"--listen", "127.0.0.1", "--ports", "0"});
  more.emplace_back("1.03");
  return more;
}

bool raiseDescriptorLimit(std::size_t count) {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return false;
  limit.rlim_cur = std::max<rlim_t>(limit.rlim_cur, std::min<rlim_t>(count, limit.rlim_max));
  return setrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur >= count;
}

}  // namespace veltrin::endpoint

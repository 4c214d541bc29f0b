// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a fuzz target as a plain program, for systems without libFuzzer: each file of a corpus
// as it is, and then random changes to them, the same in every run.
// Usage: PROGRAM FOLDER_OF_THE_CORPUS NUMBER_OF_CHANGED_INPUTS
// Exit code 0 when the target took them all, 2 when there is nothing to run; a target that
// refuses an input aborts, and the input is then told.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLongestInput = 8192;  // bytes; the longest of the corpora has 6000
constexpr std::size_t kMostChanges = 5;      // of one input
constexpr std::size_t kLongestPiece = 64;    // bytes that are put in or taken out at once
constexpr int kNothingToRun = 2;

using Input = std::vector<std::uint8_t>;

// What the target has before it. A handler of signals reads it.
Input current;

void run(Input input) {
  current = std::move(input);
  LLVMFuzzerTestOneInput(current.data(), current.size());
}

// The bytes in hexadecimal digits, on one line. The process ends anyway, so that what a handler
// may not call does no more harm.
void tellInput(int signal) {
  std::fprintf(stderr, "Signal %d. The input of %zu bytes, in hexadecimal digits:\n", signal,
               current.size());
  for (const unsigned byte : current) std::fprintf(stderr, "%02X", byte);
  std::fprintf(stderr, "\n");
  std::fflush(stderr);
  std::_Exit(EXIT_FAILURE);
}

// In the order of their names, whatever the system's is.
std::vector<Input> readCorpus(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path());
  }
  std::sort(names.begin(), names.end());
  std::vector<Input> corpus;
  for (const auto& name : names) {
    std::ifstream file(name, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return corpus;
}

// Changes inputs. Its raw numbers are the same on every system, so that a failure comes again.
class Changes {
 public:
  explicit Changes(const std::vector<Input>& corpus) : corpus_(corpus) {}

  Input next() {
    Input input = any();
    for (std::size_t left = 1 + below(kMostChanges); left > 0; --left) change(input);
    if (input.size() > kLongestInput) input.resize(kLongestInput);
    return input;
  }

 private:
  std::size_t below(std::size_t limit) { return generator_() % limit; }
  const Input& any() { return corpus_[below(corpus_.size())]; }
  static Input::iterator at(Input& input, std::size_t place) {
    return input.begin() + static_cast<std::ptrdiff_t>(place);
  }

  void change(Input& input) {
    // Only pieces can be put into an input without bytes.
    const std::size_t kind = input.empty() ? 5 + below(2) : below(8);
    if (kind == 0) input[below(input.size())] ^= static_cast<std::uint8_t>(1U << below(8));
    if (kind == 1) input[below(input.size())] = static_cast<std::uint8_t>(below(256));
    if (kind == 2) input[below(input.size())] = special();
    if (kind == 3) takeOut(input);
    if (kind == 4) input.resize(below(input.size()));
    if (kind == 5) putIn(input, any());
    if (kind == 6) putIn(input, Input(1 + below(kLongestPiece), special()));
    if (kind == 7) putIn(input, Input(input));
  }

  // Bytes at which readers of texts and of numbers turn.
  std::uint8_t special() {
    constexpr std::array<std::uint8_t, 20> kBytes = {0,    1,    0x7F, 0x80, 0xFF, ' ', '\t',
                                                     '\r', '\n', '=',  '[',  ']',  ':', ',',
                                                     '.',  '0',  '9',  '-',  '<',  '"'};
    return kBytes[below(kBytes.size())];
  }

  void takeOut(Input& input) {
    const std::size_t first = below(input.size());
    const std::size_t count = 1 + below(std::min(kLongestPiece, input.size() - first));
    input.erase(at(input, first), at(input, first + count));
  }

  // A piece of another input, at any place.
  void putIn(Input& input, Input from) {
    if (from.empty()) return;
    const std::size_t first = below(from.size());
    const std::size_t count = 1 + below(std::min(kLongestPiece, from.size() - first));
    input.insert(at(input, below(input.size() + 1)), at(from, first), at(from, first + count));
  }

  const std::vector<Input>& corpus_;
  std::mt19937 generator_{1};  // NOLINT(cert-msc51-cpp): the same numbers in every run
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "Usage: %s FOLDER_OF_THE_CORPUS NUMBER_OF_CHANGED_INPUTS\n", argv[0]);
    return kNothingToRun;
  }
  const std::vector<Input> corpus = readCorpus(argv[1]);
  const std::size_t changed = std::strtoul(argv[2], nullptr, 10);
  if (corpus.empty() || changed == 0) {
    std::fprintf(stderr, "%s holds no inputs, or none are to be changed.\n", argv[1]);
    return kNothingToRun;
  }
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL}) std::signal(signal, tellInput);
  for (const Input& input : corpus) run(input);
  Changes changes(corpus);
  for (std::size_t left = changed; left > 0; --left) run(changes.next());
  std::printf("%zu inputs of the corpus and %zu changed ones: no complaint.\n", corpus.size(),
              changed);
  return EXIT_SUCCESS;
}

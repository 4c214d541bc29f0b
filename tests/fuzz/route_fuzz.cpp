// Answers a trace with whatever the bytes say, and checks that its text stays
// whole: each echo takes bytes that tell how its answers come.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "console/tracert.h"
#include "path_network.h"
#include "route_reading.h"

namespace {

using veltrin::Microseconds;
using veltrin::TimedAnswer;

// Hands out the bytes one by one, then zeros.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::uint8_t next() { return at_ < size_ ? data_[at_++] : 0; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

// An answer of any kind, from -1 to 6.5 seconds after its echo, from any of 256
// addresses.
TimedAnswer answerFrom(Source& source) {
  const int kind = source.next() % 11;
  const Microseconds delay = (source.next() * 256 + source.next()) * Microseconds{115} - 1'000'000;
  TimedAnswer answer = veltrin::passing("203.0.113." + std::to_string(source.next()), delay);
  answer.incoming.error.reset();
  if (kind < 9) {
    answer.incoming.error = static_cast<veltrin::IcmpError>(kind);
  }
  return answer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Source source(data, size);
  veltrin::PathNetwork network;
  network.decide = [&](int /*hop*/, int /*number*/) {
    veltrin::PathNetwork::Answers answers;
    for (int left = source.next() % 4; left > 0; --left) {
      answers.push_back(answerFrom(source));
    }
    return answers;
  };
  veltrin::KeptOutput output;
  veltrin::Tracert(network, output).run({"-d", "192.0.2.7"});
  const std::string fault = veltrin::faultOfTrace(output.text());
  if (!fault.empty()) {
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}

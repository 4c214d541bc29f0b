// SPDX-License-Identifier: GPL-3.0-or-later
// A counter service whose figures a test makes up.
#pragma once

#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/portable/counter_service.h"

namespace veltrin {

// A shop whose tills are instances, with a counter of each kind.
class Shop : public CounterSource {
 public:
  Shop(std::vector<CounterInstance>& tills, int& reads) : tills_(tills), reads_(reads) {}

  std::string object() const override { return "Till"; }
  std::vector<CounterName> counters() const override {
    return {{"Coins", CounterKind::Number},
            {"Coins/sec", CounterKind::Rate},
            {"% Open", CounterKind::Share}};
  }
  std::vector<CounterInstance> read() const override {
    ++reads_;
    return tills_;
  }

 private:
  std::vector<CounterInstance>& tills_;
  int& reads_;
};

// An object without instances.
class Door : public CounterSource {
 public:
  std::string object() const override { return "Door"; }
  std::vector<CounterName> counters() const override { return {{"Guests", CounterKind::Number}}; }
  bool hasInstances() const override { return false; }
  std::vector<CounterInstance> read() const override { return {{"", {{12, 1}}}}; }
};

// One that a system may lack.
class Lift : public CounterSource {
 public:
  std::string object() const override { return "Lift"; }
  std::vector<CounterName> counters() const override { return {{"Rides", CounterKind::Number}}; }
  bool hasInstances() const override { return false; }
  std::vector<CounterInstance> read() const override { return {}; }
};

class ShopTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(service_.PdhOpenQuery(query_), 0); }

  static CounterService::Sources sources(std::vector<CounterInstance>& tills, int& reads) {
    CounterService::Sources made;
    made.push_back(std::make_unique<Shop>(tills, reads));
    made.push_back(std::make_unique<Door>());
    made.push_back(std::make_unique<Lift>());
    return made;
  }

  // At `second` of the clock a till holds so many coins, and was open for `open` of the
  // seconds.
  static CounterInstance till(const std::string& name, double coins, double second,
                              double open = 0) {
    return {name, {{coins, 1}, {coins, 1}, {open, second}}};
  }

  // Samples what the tills are like at the second of the first one.
  std::int32_t collect(std::vector<CounterInstance> tills) {
    tills_ = std::move(tills);
    if (!tills_.empty()) setClock(tills_.front().readings.back().basis);
    return service_.PdhCollectQueryData(query_);
  }

  void setClock(double second) {
    now_ = CounterService::Moment(std::chrono::duration_cast<CounterService::Moment::duration>(
        std::chrono::duration<double>(second)));
  }

  Counters::Counter add(const std::string& path) {
    Counters::Counter counter = 0;
    EXPECT_EQ(service_.PdhVbAddCounter(query_, path, counter), 0) << path;
    return counter;
  }

  std::int32_t statusOfAdding(const std::string& path) {
    Counters::Counter counter = 77;
    const std::int32_t status = service_.PdhVbAddCounter(query_, path, counter);
    EXPECT_EQ(counter == 77, status != 0) << "the handle stays when the adding fails";
    return status;
  }

  double value(Counters::Counter counter) {
    return service_.PdhVbGetDoubleCounterValue(counter, status_);
  }

  std::vector<CounterInstance> tills_{till("Left", 0, 0), till("Right", 0, 0)};
  int reads_ = 0;
  CounterService::Moment now_;
  CounterService service_{"MyPC", sources(tills_, reads_), [this] { return now_; }};
  Counters::Query query_ = 0;
  std::int32_t status_ = -1;
};

}  // namespace veltrin

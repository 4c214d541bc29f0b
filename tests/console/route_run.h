// SPDX-License-Identifier: GPL-3.0-or-later
// A route tool on a scripted path, and what it printed.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "path_network.h"

namespace veltrin {

template <class Tool>
class RouteRun : public ::testing::Test {
 protected:
  int run(const std::vector<std::string>& arguments) {
    return Tool(network_, output_).run(arguments);
  }

  std::string textOf(const std::vector<std::string>& arguments) {
    run(arguments);
    return output_.text();
  }

  // How long the run took.
  Microseconds taken() { return network_.now() - 1'000'000; }

  PathNetwork network_;
  KeptOutput output_;
};

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// The real program in the lab, on a desk of its own, with an empty folder for its data.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "desk/desk.h"

namespace veltrin::desk {

inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class ProgramRun : public ::testing::Test {
 protected:
  static constexpr const char* kMenu = "Veltrin";

  void SetUp() override {
    std::string folder = (std::filesystem::temp_directory_path() / "veltrin-run-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    data_ = folder;
    std::filesystem::create_directories(data_ / "veltrin");
    setenv("XDG_DATA_HOME", data_.c_str(), 1);
    desk_ = std::make_unique<Desk>();
  }

  void TearDown() override {
    program_.reset();
    desk_.reset();
    std::filesystem::remove_all(data_);
  }

  void start() { program_ = std::make_unique<Child>(std::vector<std::string>{programFile_}); }

  bool isShown(const std::string& window, const std::string& name) {
    const auto elements = elementsOf("veltrin");
    return std::any_of(elements.begin(), elements.end(), [&](const Element& element) {
      return element.showing && element.window == window && element.name == name;
    });
  }

  bool hasSplash() { return isShown(kMenu, "Your Version 1.03  -  Dated 5 Jan 2012"); }

  void awaitMenu() {
    ASSERT_TRUE(eventually(milliseconds(30000), [&] { return isShown(kMenu, "Ping Test"); }));
  }

  // Starts the program and opens a tool by its button in the menu, which then goes.
  void startWith(const std::string& button, const std::string& window) {
    start();
    ASSERT_NO_FATAL_FAILURE(awaitMenu());
    desk_->click(desk_->button(kMenu, button));
    ASSERT_TRUE(eventually(milliseconds(20000), [&] { return desk_->hasWindow(window); }));
    desk_->bringToFront(kMenu);
    desk_->click(desk_->button(kMenu, "Exit"));
    ASSERT_TRUE(eventually(milliseconds(20000), [&] { return !desk_->hasWindow(kMenu); }));
  }

  // The text of the message in a box of that title, which is then answered.
  std::string readMessage(const std::string& title, const std::string& answer = "OK") {
    const Element message = desk_->find("message", [&](const Element& element) {
      return element.window == title && element.role == "label" && !element.name.empty();
    });
    desk_->photograph("message-" + title);
    desk_->click(desk_->button(title, answer));
    EXPECT_TRUE(eventually(milliseconds(20000), [&] { return !isShown(title, answer); }));
    return message.name;
  }

  std::string settings() { return contentOf(data_ / "veltrin" / "Files" / "Veltrin.dat"); }

  std::string programFile_ = VELTRIN_PROGRAM;
  std::filesystem::path data_;
  std::unique_ptr<Desk> desk_;
  std::unique_ptr<Child> program_;
};

}  // namespace veltrin::desk

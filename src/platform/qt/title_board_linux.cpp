// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "platform/linux/window_list.h"
#include "platform/qt/title_board.h"

namespace veltrin {
namespace {

class LinuxTitleBoard : public TitleBoard {
 public:
  explicit LinuxTitleBoard(std::string applicationTitle)
      : applicationTitle_(std::move(applicationTitle)) {
    publish();
  }

  void setApplicationTitle(const std::string& title) override {
    applicationTitle_ = title;
    publish();
  }

  void setWindowTitles(std::vector<std::string> titles) override {
    if (titles == windowTitles_) return;
    windowTitles_ = std::move(titles);
    publish();
  }

  std::uint32_t find(const std::string& title) const override { return list_.find(title); }

 private:
  void publish() {
    std::vector<std::string> titles = windowTitles_;
    titles.push_back(applicationTitle_);
    list_.publish(std::move(titles));
  }

  WindowList list_;
  std::string applicationTitle_;
  std::vector<std::string> windowTitles_;
};

}  // namespace

std::unique_ptr<TitleBoard> makeTitleBoard(const std::string& applicationTitle) {
  return std::make_unique<LinuxTitleBoard>(applicationTitle);
}

}  // namespace veltrin

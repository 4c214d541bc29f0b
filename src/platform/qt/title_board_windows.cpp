// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/title_board.h"
#include "platform/windows/window_calls.h"

namespace veltrin {
namespace {

class WindowsTitleBoard : public TitleBoard {
 public:
  explicit WindowsTitleBoard(const std::string& applicationTitle) : window_(applicationTitle) {}

  void setApplicationTitle(const std::string& title) override { window_.setTitle(title); }

  // The system knows them.
  void setWindowTitles(std::vector<std::string>) override {}

  std::uint32_t find(const std::string& title) const override { return findWindowByTitle(title); }

 private:
  ApplicationWindow window_;
};

}  // namespace

std::unique_ptr<TitleBoard> makeTitleBoard(const std::string& applicationTitle) {
  return std::make_unique<WindowsTitleBoard>(applicationTitle);
}

}  // namespace veltrin

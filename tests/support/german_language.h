// SPDX-License-Identifier: GPL-3.0-or-later
// The language of a German desktop, for programs that are run and for the test itself. The
// system's own compiler of locales makes it, so that it need not be installed.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace veltrin {

class GermanLanguage {
 public:
  static constexpr const char* kName = "de_DE.UTF-8";
  static constexpr const char* kMissing =
      "the language cannot be made here: the package locales is missing";

  GermanLanguage() {
    std::string made = (std::filesystem::temp_directory_path() / "veltrin-german-XXXXXX").string();
    if (mkdtemp(made.data()) == nullptr) return;
    folder_ = made;
    const std::string command =
        "localedef -i de_DE -f UTF-8 '" + folder_ + "/" + kName + "' 2>/dev/null";
    isMade_ = std::system(command.c_str()) == 0;
  }
  ~GermanLanguage() {
    std::error_code ignored;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
  }
  GermanLanguage(const GermanLanguage&) = delete;
  GermanLanguage& operator=(const GermanLanguage&) = delete;

  // Whether the compiler is there; else the test is to be skipped with the words above.
  bool isMade() const { return isMade_; }

  // What LOCPATH is to be where the language is wanted.
  const std::string& folder() const { return folder_; }

 private:
  std::string folder_;
  bool isMade_ = false;
};

}  // namespace veltrin

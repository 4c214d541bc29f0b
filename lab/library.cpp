// SPDX-License-Identifier: GPL-3.0-or-later
#include "lab/library.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

namespace veltrin::lab {
namespace {

constexpr std::string_view kEnding = ".ini";

}  // namespace

std::filesystem::path scenarioFolder() {
  std::error_code unknown;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", unknown);
  return program.parent_path().parent_path() / "share" / "veltrin" / "lab";
}

std::filesystem::path installationFile() {
  return scenarioFolder().parent_path() / "installation.ini";
}

std::vector<std::string> listScenarios(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  std::error_code unreadable;
  for (const auto& entry : std::filesystem::directory_iterator(folder, unreadable)) {
    if (entry.path().extension() == kEnding) names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::filesystem::path findScenario(const std::filesystem::path& folder, std::string_view word) {
  if (word.find('/') != std::string_view::npos || word.ends_with(kEnding)) return word;
  return folder / (std::string(word) + std::string(kEnding));
}

Scenario loadScenario(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  if (stream) text << stream.rdbuf();
  if (!stream || !text) throw ScenarioError(file.filename().string() + ": cannot be read");
  try {
    return readScenario(text.str());
  } catch (const ScenarioError& error) {
    throw ScenarioError(file.filename().string() + ": " + error.what());
  }
}

}  // namespace veltrin::lab

// SPDX-License-Identifier: GPL-3.0-or-later
// Where scenario files are found.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "lab/scenario.h"

namespace veltrin::lab {

// The folder of the scenarios that come with the lab: share/veltrin/lab beside
// the folder of the running program.
std::filesystem::path scenarioFolder();

// The settings of the program that is installed beside the lab: share/veltrin/installation.ini.
// Need not be there.
std::filesystem::path installationFile();

// The names of the scenarios in a folder, in order: its files NAME.ini.
std::vector<std::string> listScenarios(const std::filesystem::path& folder);

// The file that a user means: a path when the word has a slash in it or ends in
// ".ini", else the scenario of that name in the folder.
std::filesystem::path findScenario(const std::filesystem::path& folder, std::string_view word);

// Reads a file. Throws ScenarioError, whose what() begins with the file's name.
Scenario loadScenario(const std::filesystem::path& file);

}  // namespace veltrin::lab

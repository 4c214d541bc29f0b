// SPDX-License-Identifier: GPL-3.0-or-later
// The names of the program's windows. A window is made, laid out, given its tool tips
// and opened by others under this one name.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace veltrin {

enum class WindowName {
  starter,
  startup,
  About,
  setlang,
  pingtester,
  trace,
  Stability,
  StabilitySUM,
  MonOut,
  indepth,
  indepth2,
  mtutest,
  pingit,
  setmtu,
  testdl,
  frmNetwork,
  frmIP,
  frmSysInfo,
  frmPrint,
  DosFrm,
  DosApp,
};

// In the order of the names.
inline constexpr std::array<std::pair<WindowName, const char*>, 21> kWindowNames{{
    {WindowName::starter, "starter"},       {WindowName::startup, "startup"},
    {WindowName::About, "About"},           {WindowName::setlang, "setlang"},
    {WindowName::pingtester, "pingtester"}, {WindowName::trace, "trace"},
    {WindowName::Stability, "Stability"},   {WindowName::StabilitySUM, "StabilitySUM"},
    {WindowName::MonOut, "MonOut"},         {WindowName::indepth, "indepth"},
    {WindowName::indepth2, "indepth2"},     {WindowName::mtutest, "mtutest"},
    {WindowName::pingit, "pingit"},         {WindowName::setmtu, "setmtu"},
    {WindowName::testdl, "testdl"},         {WindowName::frmNetwork, "frmNetwork"},
    {WindowName::frmIP, "frmIP"},           {WindowName::frmSysInfo, "frmSysInfo"},
    {WindowName::frmPrint, "frmPrint"},     {WindowName::DosFrm, "DosFrm"},
    {WindowName::DosApp, "DosApp"},
}};

static_assert(std::is_sorted(kWindowNames.begin(), kWindowNames.end(),
                             [](const auto& one, const auto& other) {
                               return one.first < other.first;
                             }) &&
              kWindowNames.back().first == WindowName{kWindowNames.size() - 1});

// The name as text, as the window's Form bears it.
inline std::string nameOf(WindowName window) {
  return kWindowNames[static_cast<std::size_t>(window)].second;
}

}  // namespace veltrin

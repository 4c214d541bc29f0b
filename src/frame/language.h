// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of the program in the languages it speaks.
#pragma once

#include <string>

#include "text/loose.h"

namespace veltrin {

inline constexpr int kEnglish = 1;
inline constexpr int kDutch = 4;

// The texts that change with the language; empty until one is chosen.
struct LanguageTexts {
  std::string TipNoResolve;        // option of the InDepth windows: no names
  std::string TipRouteRsvp;        // the same: RSVP of the route
  std::string TipDeviceRsvp;       // the same: RSVP of each device
  std::string TipPriorityTag;      // the same: layer-2 priority
  std::string TipForceIpv4;        // the same: IPv4 only
  std::string TipForceIpv6;        // the same: IPv6 only
  std::string TipPeriod;           // the same: wait between tests
  std::string TipQueries;          // the same: tests of each hop
  std::string TextInDepthAbout;    // what the InDepth test tells
  std::string TextInDepthIntro;    // first lines of the InDepth windows
  std::string TextCopied;          // after every copy
  std::string TextFileCreated;     // before the name of a saved file
  std::string TextAlreadyRunning;  // a second copy of the program
  std::string TextFamilyNote;      // the family of programs
  std::string TextTestUrls;        // instruction of the Ping Test
  std::string TextClearData;       // question of the Trace Route
  std::string TextPassesRun;       // behind a number of passes
  std::string TextTracePass;       // before the number of a pass
  std::string TextTestComplete;    // end of a test
  std::string CaptionTests;        // column and field captions of the Ping Test
  std::string CaptionUrl;
  std::string CaptionCurrent;
  std::string CaptionLow;
  std::string CaptionAverage;
  std::string CaptionHigh;
  std::string CaptionLoss;
};

// Fills the texts for the language. An identifier that is empty or "0" becomes
// English; one of a language without texts leaves them as they were.
void chooseLanguage(Loose& LanguageId, LanguageTexts& texts);

}  // namespace veltrin

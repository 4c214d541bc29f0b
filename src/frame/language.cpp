// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/language.h"

#include <array>

namespace veltrin {
namespace {

struct Translation {
  std::string LanguageTexts::*text;
  const char* english;
  const char* dutch;
};

constexpr std::array<Translation, 26> kTranslations = {{
    {&LanguageTexts::TipNoResolve,
     "This prevents attempts to resolve the names of IP addresses of Intermediate Routers. (Can "
     "decrease test times)",
     "Dit voorkomt pogingen om namen van IP adressen bij te zoeken die horen bij tussenliggende "
     "Routers. (Kan testtijden verlagen)"},
    {&LanguageTexts::TipRouteRsvp,
     "Determines if the route supports the Resource Reservation Protocol (RSVP) is supported",
     "Bepaalt of de route het Resource Reservation Protocol (RSVP) ondersteund"},
    {&LanguageTexts::TipDeviceRsvp,
     "Determines whether each network device along the route supports the Resource Reservation "
     "Protocol (RSVP), which allows the host computer to reserve a specified amount of bandwidth "
     "for a data stream. This switch is used to test for Quality of Service (QoS) connectivity",
     "Bepaalt of ieder netwerk apparaat op de route het Resource Reservation Protocol (RSVP) "
     "ondersteund, het protocol maakt het de hostcomputer mogelijk om een bepaalde bandbreedte "
     "voor data te reserveren. Deze optie wordt gebruikt om de verbinding op Quality of Service "
     "(QoS) te testen"},
    {&LanguageTexts::TipPriorityTag,
     "Attaches a layer-2 priority tag (for example, 802.1p) to the Echo Request messages that it "
     "sends to each of the network devices along the route. This helps to identify network devices "
     "that do not have layer-2 priority capability. This switch is used to test for Quality of "
     "Service (QoS) connectivity.",
     "Voegt een laag-2 prioriterings tag (bijvoorbeeld, 802.1p) toe aan de Echo Verzoek berichten "
     "die verstuurd worden naar elk netwerk apparaat op de route. Hierdoor kan worden bepaald "
     "welke netwerk apparaten geen laag-2 prioriteit ondersteunen. Deze optie wordt gebruikt om de "
     "verbinding op Quality of Service (QoS) te testen"},
    {&LanguageTexts::TipForceIpv4, "Force the use of Internet Protocol version 4 (IPv4)",
     "Alleen het gebruik van Internet Protocol version 4 (IPv4) toestaan"},
    {&LanguageTexts::TipForceIpv6,
     "Force the use of Internet Protocol version 6 (IPv6), a new suite of standard protocols for "
     "the network layer of the Internet (SP1 or higher)",
     "Alleen het gebruik van Internet Protocol version 6 (IPv6) toestaan, een nieuwe serie van "
     "standaard protocollen voor de netwerk-laag van het Internet (SP1 of hoger)"},
    {&LanguageTexts::TipPeriod,
     "Number of milliseconds to wait between consecutive test, setting lower than 200 can cause "
     "failures but may be needed for certain problems.  Default is 250",
     "Het aantal milliseconden dat gewacht moet worden tussen twee opeenvolgende testen, Standaard "
     "is 250"},
    {&LanguageTexts::TipQueries,
     "Number of Test Performed on each HOP/Router in path, Default is 100",
     "Het aantal Echo Verzoeken dat verstuurd wordt naar elke router op het pad, Standaard is 100"},
    {&LanguageTexts::TextInDepthAbout,
     "This provides information about network latency and network loss at intermediate hops "
     "between a source and destination. InDepth Analysis sends multiple Echo Request messages to "
     "each router between a source and destination over a period of time and then computes results "
     "based on the packets returned from each router. Because InDepth Analysis displays the degree "
     "of packet loss at any given router or link, you can determine which routers or subnets might "
     "be having network problems.",
     "Dit geeft informatie over netwerk vertraging en netwerk verlies bij de tussenliggende "
     "sprongen van bron naar doel. Uitvoerige Analyse stuurt meerdere Echo Verzoek berichten naar "
     "elke router tussen bron en doel gedurende een bepaalde tijd en berekent vervolgens de "
     "resultaten gebaseerd op de pakketjes die terugontvangen worden van elke router. Omdat de "
     "Uitvoerige Analyse inzicht geeft in de mate van verlies van pakketjes bij een bepaalde "
     "router of verbinding, kun je bepalen welke routers of subnetten mogelijk netwerkproblemen "
     "hebben."},
    {&LanguageTexts::TextInDepthIntro,
     "This provides detailed information on internet latency and loss\r\nThis test can take up to "
     "10 minutes or longer depending on total hops and queries\r\n",
     "Dit geeft gedetailleerde informatie over internet vertraging en verlies\r\nDeze test kan tot "
     "10 minuten of langer duren afhankelijk van het aantal sprongen en het aantal vragen\r\n"},
    {&LanguageTexts::TextCopied,
     "Your information is now copied. You can either paste it in a document or an "
     "email.\r\n\r\nOpen the document/email and right click in the text area, then select "
     "PASTE.\r\n \r\n",
     "Uw informatie wordt nu gekopieerd. U kunt het plakken in een document of een "
     "email.\r\n\r\nOpen het document/email en klik met de rechter muisknop in het tekst "
     "gedeeelte, kies vervolgens PLAKKEN.\r\n \r\n"},
    {&LanguageTexts::TextFileCreated, "File created is ", "Het Bestand dat aangemaakt is heet "},
    {&LanguageTexts::TextAlreadyRunning, "Veltrin is already running",
     "Veltrin wordt al uitgevoerd"},
    {&LanguageTexts::TextFamilyNote,
     "This is part of Dorvane, a complete package to check, tweak, and protect your computer",
     "Dit maakt deel uit van de Dorvane, een compleet pakket om uw computer te controleren, "
     "tweaken en beschermen"},
    {&LanguageTexts::TextTestUrls, "Test with the listed URL Addresses or enter ones of your own.",
     "Test met de getoonde URL Adressen of vul uw eigen in."},
    {&LanguageTexts::TextClearData, "Would you like to clear the existing Data?",
     "Wilt u de bestaande Gegevens wissen?"},
    {&LanguageTexts::TextPassesRun, " passes will be run", " keer worden uitgevoerd"},
    {&LanguageTexts::TextTracePass, "Performing Trace Route - Pass ",
     "Trace Route wordt uitgevoerd - Eenmaal "},
    {&LanguageTexts::TextTestComplete, "******* Test is Complete ********* ",
     "******* Test is Klaar ********* "},
    {&LanguageTexts::CaptionTests, "Tests", "Testen"},
    {&LanguageTexts::CaptionUrl, "URL/IP", "URL/IP"},
    {&LanguageTexts::CaptionCurrent, "Current", "Huidig"},
    {&LanguageTexts::CaptionLow, "Low", "Laag"},
    {&LanguageTexts::CaptionAverage, "Average", "Gemiddeld"},
    {&LanguageTexts::CaptionHigh, "High", "Hoog"},
    {&LanguageTexts::CaptionLoss, "Loss", "Verlies"},
}};

}  // namespace

void chooseLanguage(Loose& LanguageId, LanguageTexts& texts) {
  if (LanguageId == "" || LanguageId == "0") LanguageId = kEnglish;
  const bool english = LanguageId == kEnglish;
  if (!english && !(LanguageId == kDutch)) return;
  for (const Translation& translation : kTranslations) {
    texts.*translation.text = english ? translation.english : translation.dutch;
  }
}

}  // namespace veltrin

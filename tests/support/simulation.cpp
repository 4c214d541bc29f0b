// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/simulation.h"

#include <initializer_list>

#include "toolbox/toolbox.h"

namespace veltrin {

void Simulation::keepJournal() {
  for (Journalled* part : std::initializer_list<Journalled*>{
           &loop, &desktop, &files, &processes, &profiles, &registry, &shell, &environment,
           &sockets, &counters, &wmi, &icmp, &printers}) {
    part->journal = &journal;
  }
}

Program& Simulation::program() {
  if (!program_) {
    program_ = std::make_unique<Program>(platform);
    program_->LanguageId = kEnglish;
    chooseLanguage(program_->LanguageId, program_->texts);
    provideTools(*program_);
  }
  return *program_;
}

std::string Simulation::settings() { return profiles.contents[program().settingsFile]; }

std::string pingReply(int milliseconds, const std::string& host) {
  const std::string time = std::to_string(milliseconds) + "ms";
  const std::string shown = milliseconds < 1 ? "<1ms" : "=" + time;
  return "\r\nPinging " + host + " with 32 bytes of data:\r\nReply from " + host +
         ": bytes=32 time" + shown + " TTL=56\r\n\r\nPing statistics for " + host +
         ":\r\n    Packets: Sent = 1, Received = 1, Lost = 0 (0% loss),\r\n"
         "Approximate round trip times in milli-seconds:\r\n    Minimum = " +
         time + ", Maximum = " + time + ", Average = " + time + " \r\n";
}

std::string pingTimeout(const std::string& host) {
  return "\r\nPinging " + host + " with 32 bytes of data:\r\nRequest timed out.\r\n\r\n" +
         "Ping statistics for " + host +
         ":\r\n    Packets: Sent = 1, Received = 0, Lost = 1 (100% loss),\r\n";
}

}  // namespace veltrin

// SPDX-License-Identifier: GPL-3.0-or-later
// A real print server of a test's own, whose printers put their paper into a folder.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

#include "tests/platform/scratch_folder.h"

namespace veltrin {

// One job as it reached a printer.
struct PaperJob {
  int number = 0;  // of the server, from 1 on
  std::string title;
  std::string copies;   // that the printer is to make
  std::string options;  // "media=A4 ...", as the server tells a printer
  std::string paper;    // the PDF's file
};

// The scheduler of CUPS with folders, a port and printers of its own, until this object goes.
// It has nothing to do with one that this machine may run.
//
// Started by root it insists on another user for what it runs, so it gets "lp", whom the
// folders of paper and of temporary files let in; those above are open to everybody. Started
// by anybody else it runs everything as that user and refuses to be told one. Root's programs
// must belong to root and nobody else may change them, which is why the printer is written as
// a file here.
class CupsServer {
 public:
  struct Queue {
    std::string name;
    std::string size = "A4";  // or "Letter"
    bool isFiltered = false;  // the paper goes through the system's filter of PDF
    std::string info{};       // its owner's description
  };

  // Why there can be none on this machine; empty when there can.
  static std::string lack();

  // The first queue is the default printer when `hasDefault`. Sets CUPS_SERVER and what else
  // leads this process to the server.
  explicit CupsServer(const std::vector<Queue>& queues, bool hasDefault = true);
  ~CupsServer();
  CupsServer(const CupsServer&) = delete;
  CupsServer& operator=(const CupsServer&) = delete;

  // Whether it answers; if not, log() says why.
  bool isRunning() const { return process_ > 0; }
  std::string log() const { return folder_.content("log/error"); }
  std::uint16_t port() const { return port_; }

  // Ends it, as a fault would.
  void stop();

  // Holds it up, so that it takes calls and answers none, and lets it go on.
  void silence() const;
  void goOn() const;

  // Runs a program of CUPS, such as "cupsdisable"; its exit code.
  int command(const std::string& line) const;

  // The jobs that reached a printer, in their order. Waits for so many.
  std::vector<PaperJob> paper(std::size_t count) const;

  // How many jobs wait at the printers.
  int waitingJobs() const;

 private:
  void fillFolder(const std::vector<Queue>& queues, bool hasDefault) const;
  void configure() const;
  bool start();

  ScratchFolder folder_;
  std::uint16_t port_ = 0;
  pid_t process_ = -1;
};

// What a program prints; the empty text when it fails.
std::string outputOf(const std::string& commandLine);

// Leads this process to a print server, in the form "host:port".
void usePrintServer(const std::string& place, const std::string& folder);

}  // namespace veltrin

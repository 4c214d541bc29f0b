// SPDX-License-Identifier: GPL-3.0-or-later
// Printers of the system under test, and what they put on paper.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "gmock/gmock.h"
#include "gtest/gtest.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_printers.h"
#include "tests/printing/cups_server.h"
#include "text/statement.h"

namespace veltrin {

class PrintingTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const std::string lack = CupsServer::lack(); !lack.empty()) GTEST_SKIP() << lack;
  }

  // Starts a print server with these printers.
  void serve(const std::vector<CupsServer::Queue>& queues, bool hasDefault = true) {
    server = std::make_unique<CupsServer>(queues, hasDefault);
    ASSERT_TRUE(server->isRunning()) << server->log();
  }

  // Prints a text on a printer as a job of its own.
  void print(const std::string& printer, const std::string& text,
             const PrinterProperties& properties = upright(12)) {
    const auto opened = printers.open(printer);
    opened->setProperties(properties);
    opened->Print(text);
    opened->EndDoc();
  }

  static PrinterProperties upright(double size) { return {"Times New Roman", 1, size, kPortrait}; }
  static PrinterProperties across(double size) { return {"Times New Roman", 1, size, kLandscape}; }

  // "line 1\r\nline 2\r\n" and so on.
  static std::string lines(int count) {
    std::string text;
    for (int line = 1; line <= count; ++line) text += "line " + std::to_string(line) + "\r\n";
    return text;
  }

  // The lines of text on a job's paper, without the blank ones and the blanks around; between
  // two sheets stands "---".
  static std::vector<std::string> wordsOn(const PaperJob& job) {
    std::istringstream text(outputOf("pdftotext -layout '" + job.paper + "' -"));
    std::vector<std::string> words;
    for (std::string line; std::getline(text, line);) {
      const bool isNextSheet = line.starts_with('\f');
      if (isNextSheet) {
        words.emplace_back("---");
        line.erase(0, 1);
      }
      const std::size_t start = line.find_first_not_of(' ');
      if (start != std::string::npos) words.push_back(line.substr(start));
    }
    return words;
  }

  // One fact that pdfinfo tells of a job's paper, such as "Pages".
  static std::string fact(const PaperJob& job, const std::string& name) {
    std::istringstream facts(outputOf("pdfinfo '" + job.paper + "'"));
    for (std::string line; std::getline(facts, line);) {
      if (!line.starts_with(name + ":")) continue;
      return line.substr(line.find_first_not_of(' ', name.size() + 1));
    }
    return {};
  }

  // The places of a job's words on their sheets: left and upper edge in points.
  struct Place {
    std::string word;
    double left = 0;
    double top = 0;
  };
  static std::vector<Place> placesOn(const PaperJob& job) {
    std::istringstream text(outputOf("pdftotext -bbox '" + job.paper + "' -"));
    std::vector<Place> places;
    for (std::string line; std::getline(text, line);) {
      const auto value = [&line](const std::string& name) {
        const std::size_t start = line.find(name + "=\"") + name.size() + 2;
        return std::stod(line.substr(start));
      };
      if (line.find("<word ") == std::string::npos) continue;
      const std::size_t word = line.find('>') + 1;
      places.push_back(
          {line.substr(word, line.find("</word>") - word), value("xMin"), value("yMin")});
    }
    return places;
  }

  // Keeps the paper of a job for people to look at, beside the photographs of the windows.
  static void keep(const PaperJob& job, const std::string& name) {
    std::filesystem::create_directories(PICTURE_FOLDER);
    std::filesystem::copy_file(job.paper, PICTURE_FOLDER "/paper-" + name + ".pdf",
                               std::filesystem::copy_options::overwrite_existing);
  }

  // How long something takes, in ms.
  template <class Action>
  static int millisecondsOf(Action action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                std::chrono::steady_clock::now() - start)
                                .count());
  }

  std::unique_ptr<CupsServer> server;
  QtEventLoop events;
  QtPrinters printers{events};
};

}  // namespace veltrin

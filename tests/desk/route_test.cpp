// SPDX-License-Identifier: GPL-3.0-or-later
// A person traces a route and analyses it in depth, in the lab. The tools are the real
// ones, each behind a script that keeps what it printed.
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

#include "desk/tool_run.h"

namespace veltrin::desk {
namespace {

std::string withoutReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

class RouteOnADesk : public ToolRun {
 protected:
  void openTool(const std::string& button, const std::string& window) {
    window_ = window;
    ASSERT_NO_FATAL_FAILURE(startWith(button, window));
    forgetRuns();  // of the first start
  }

  void choose(const std::string& current, const std::string& wanted) {
    desk_->click(desk_->find("the choice " + current, [&](const Element& element) {
      return element.window == window_ && element.role == "text" && element.text == current;
    }));
    desk_->press("ctrl+a");
    desk_->type(wanted);
  }

  // Saves, closes the message and returns the file's content.
  std::string save(const std::string& title) {
    click("Save");
    const std::string told = readMessage(title);
    const std::string lead = "File created is ";
    EXPECT_EQ(told.substr(0, lead.size()), lead);
    return told.size() > lead.size() ? contentOf(told.substr(lead.size())) : "";
  }

  std::string copy(const std::string& title) {
    click("Copy");
    EXPECT_EQ(readMessage(title).substr(0, 31), "Your information is now copied.");
    return desk_->clipboard();
  }

  // Between the tests of the InDepth window, when its help is back.
  bool isIdle() { return isShown(window_, "Help"); }

  // The link to hop 7 loses 13 of 100, one or two of any ten; hop 9 answers all but every
  // 29th; nothing else is lost.
  static void expectLossOfTheScenario(const std::string& text) {
    std::smatch link;
    ASSERT_TRUE(
        std::regex_search(text, link, std::regex("\r\n {31} *([12])/  10 = *[12]0%   \\|\r\n  7 ")))
        << text;
    for (int hop = 1; hop <= 15; ++hop) {
      const std::string all = hop < 7 ? "0" : "[0-9]";
      const std::string own = hop == 9 ? "[01]" : "0";
      std::string row = hop < 10 ? "\r\n  " : "\r\n ";
      row.append(std::to_string(hop)).append(" +[0-9<]+ms +").append(all);
      row.append("/  10 = +[0-9]+% +").append(own).append("/  10 =");
      const std::regex line(row);
      EXPECT_TRUE(std::regex_search(text, line)) << "hop " << hop << " of\n" << text;
    }
  }
};

TEST_F(RouteOnADesk, TraceRouteShowsWhatTheToolsPrintAndSavesIt) {
  ASSERT_NO_FATAL_FAILURE(openTool("Trace Route", "Trace Route Test"));
  desk_->photograph("trace-idle");
  desk_->click(desk_->find("the menu", [&](const Element& element) {
    return element.window == window_ && element.name == "Destinations";
  }));
  desk_->click(
      desk_->find("Clear All", [](const Element& element) { return element.name == "Clear All"; }));
  desk_->click(desk_->named(window_, "Destination 1"));
  desk_->type("target.example");
  click("Start");
  desk_->photograph("trace-running");
  ASSERT_TRUE(eventually(kLongRun, [&] { return !textOf(1).empty(); }));
  ASSERT_NO_FATAL_FAILURE(awaitEnabled("Start"));

  choose("1", "2");
  click("Start");
  EXPECT_EQ(readMessage("Trace Routes", "No"), "Would you like to clear the existing Data?");
  ASSERT_TRUE(eventually(kLongRun, [&] { return !textOf(5).empty(); }));
  ASSERT_NO_FATAL_FAILURE(awaitEnabled("Start"));
  desk_->photograph("trace-complete");

  const std::string begin = "Performing Trace Route - Pass ";
  const std::string end = "******* Test is Complete ********* ";
  const std::string expected =
      "1 passes will be run" + textOf(0) + begin + "1 to target.example\r\n" + textOf(1) + end +
      "\r\n2 passes will be run" + textOf(2) + begin + "1 to target.example\r\n" + textOf(3) +
      textOf(4) + begin + "2 to target.example\r\n" + textOf(5) + end;
  for (const int run : {0, 2, 4}) EXPECT_EQ(commandOf(run), "ping target.example");
  for (const int run : {1, 3, 5}) EXPECT_EQ(commandOf(run), "tracert target.example");
  EXPECT_NE(textOf(5).find("  3     *        *        *     Request timed out.\r\n"),
            std::string::npos)
      << textOf(5);
  EXPECT_NE(textOf(5).find("target.example [203.0.113.80] \r\n"), std::string::npos) << textOf(5);

  EXPECT_EQ(save("Trace Routes"), expected);
  EXPECT_EQ(withoutReturns(copy("Trace Route")), withoutReturns(expected));
  click("Exit");
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  EXPECT_NE(settings().find("[Trace]\r\nTrace1=target.example\r\nTrace2=\r\n"), std::string::npos)
      << settings();
}

TEST_F(RouteOnADesk, ADestinationThatIsNoFileNameIsNotSavedAndLeavesItsFolderAlone) {
  ASSERT_NO_FATAL_FAILURE(openTool("Trace Route", "Trace Route Test"));
  desk_->doubleClick(desk_->named(window_, "Destination 1"));
  desk_->type("../../x");
  click("Save");
  readMessage("Trace Routes");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(data_)) {
    EXPECT_NE(entry.path().extension(), ".txt") << entry.path();
  }
}

TEST_F(RouteOnADesk, InDepthAnalysisTellsTheLossOfTheScenario) {
  ASSERT_NO_FATAL_FAILURE(openTool("InDepth Test", "InDepth Internet Analysis"));
  desk_->photograph("indepth-idle");
  click("Info");
  EXPECT_TRUE(eventually(milliseconds(20000), [&] {
    return desk_->named(window_, "Output of the tools")
               .text.rfind("This provides information about network latency", 0) == 0;
  }));
  const std::string described = desk_->named(window_, "Output of the tools").text;

  const Element priority = desk_->placed(desk_->named(window_, "Test Connectivity to each Hop"));
  outputOf({"xdotool", "mousemove", "--sync", std::to_string(priority.left + 20),
            std::to_string(priority.top + priority.height / 2)});
  EXPECT_TRUE(eventually(milliseconds(20000), [&] {
    return desk_->named(window_, "Help").text.rfind("Attaches a layer-2 priority tag", 0) == 0;
  }));
  desk_->photograph("indepth-hover");

  desk_->doubleClick(desk_->named(window_, "Destination"));
  desk_->type("target.example");
  choose("100", "10");
  choose("25", "50");
  const std::vector<std::string> boxes = {
      "Do Not Resolve Address", "Test for RSVP Path",
      "Test if RSVP Aware",     "Test Connectivity to each Hop, Layer 2 priority",
      "Force Using IP v4",      "Force Using IP v6"};
  for (const std::string& box : boxes) desk_->click(desk_->named(window_, box));
  click("Test It");
  desk_->photograph("indepth-running");
  ASSERT_TRUE(eventually(kLongRun, [&] {
    return commandOf(1) == "pathping -q 10 -p 50 -n -P -R -T -4 -6 target.example" &&
           isShown(window_, "Copy");
  })) << commandOf(1);
  ASSERT_TRUE(eventually(milliseconds(30000), [&] { return isIdle(); }));

  desk_->click(desk_->named(window_, "Force Using IP v6"));
  desk_->click(desk_->named(window_, "Test if RSVP Aware"));
  desk_->click(desk_->named(window_, "Test for RSVP Path"));
  desk_->click(desk_->named(window_, "Test Connectivity to each Hop"));
  click("Test It");
  ASSERT_TRUE(eventually(kLongRun, [&] {
    return textOf(3).find("Trace complete.") != std::string::npos && isIdle();
  }));
  desk_->photograph("indepth-complete");
  EXPECT_EQ(commandOf(3), "pathping -q 10 -p 50 -n -4 target.example");
  EXPECT_FALSE(isShown(window_, "Info"));
  expectLossOfTheScenario(textOf(3));

  const std::string saved = save("InDepth Internet Analysis");
  const std::regex whole("Test Started at [^\r\n]*\r\n");
  const std::string shown = std::regex_replace(saved, whole, "Test Started\r\n");
  EXPECT_EQ(withoutReturns(shown),
            withoutReturns(described + "Test Started\r\n" + textOf(0) + textOf(1) +
                           "Test Started\r\n" + textOf(2) + textOf(3)));
  EXPECT_EQ(withoutReturns(copy("InDepth Internet Analysis")), withoutReturns(saved));
  click("Close");
  EXPECT_EQ(program_->waitFor(milliseconds(30000)), 0);
  EXPECT_NE(settings().find("Source=target.example\r\nQueries=10\r\nPeriod=50\r\n"),
            std::string::npos)
      << settings();
}

}  // namespace
}  // namespace veltrin::desk

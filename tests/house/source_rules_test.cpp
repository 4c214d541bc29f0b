// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/house/source_rules.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

namespace veltrin {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// --- The rules themselves, on sources that do not exist ---

std::string includeOf(const std::string& name) { return "#include \"" + name + "\"\n"; }

TEST(IncludesOf, FindsBothFormsInOrder) {
  EXPECT_THAT(
      includesOf("#pragma once\n#include <string>\n\n  # include \"text/strings.h\"  // x\n"),
      ElementsAre("string", "text/strings.h"));
}

TEST(IncludesOf, PassesOverWordsThatOnlyLookAlike) {
  EXPECT_THAT(includesOf("// #include <string>\n#define include <string>\n#include NAME\n#\n"),
              IsEmpty());
}

TEST(IsQtHeader, KnowsClassesModulesOldNamesAndMadeHeaders) {
  for (const char* name :
       {"QString", "Qt", "QtGlobal", "QtCore/QObject", "qglobal.h", "ui_pingtester.h", "moc_x.cpp"})
    EXPECT_TRUE(isQtHeader(name)) << name;
}

TEST(IsQtHeader, LeavesOthersAlone) {
  for (const char* name : {"string", "Q", "queue", "forms/form.h", "platform/qt/qt_desktop.h"})
    EXPECT_FALSE(isQtHeader(name)) << name;
}

TEST(HouseOf, TakesTheInnermostHouse) {
  EXPECT_EQ(houseOf("src/platform/linux/linux_clock.h"), "platform/linux");
  EXPECT_EQ(houseOf("platform/clock.h"), "platform");
  EXPECT_EQ(houseOf("lab/scenario.h"), "lab");
}

TEST(HouseOf, IsEmptyForWhatHasNoRule) {
  EXPECT_EQ(houseOf("src/main.cpp"), "");
  EXPECT_EQ(houseOf("pingpong/x.h"), "");
  EXPECT_EQ(houseOf("ping"), "");
}

TEST(Findings, NameAQtHeaderBelowTheView) {
  EXPECT_THAT(findingsIn("src/frame/program.cpp", "#include <QString>\n"),
              ElementsAre("src/frame/program.cpp includes the Qt header QString"));
  EXPECT_THAT(findingsIn("console/ping.cpp", "#include <QtCore/QObject>\n"),
              ElementsAre("console/ping.cpp includes the Qt header QtCore/QObject"));
}

TEST(Findings, LetQtStandWhereItIsAtHome) {
  for (const char* path : {"src/view/binder.cpp", "src/platform/qt/qt_desktop.h", "src/main.cpp",
                           "tests/view/binder_test.cpp", "tests/printing/main.cpp"})
    EXPECT_THAT(findingsIn(path, "#include <QWidget>\n"), IsEmpty()) << path;
}

TEST(Findings, NameEveryIncludeThatGoesUpward) {
  EXPECT_THAT(
      findingsIn("src/text/strings.cpp", includeOf("text/strings.h") + includeOf("forms/form.h")),
      ElementsAre("src/text/strings.cpp may not include forms/form.h"));
  EXPECT_THAT(
      findingsIn("src/forms/form.h", includeOf("text/loose.h") + includeOf("platform/clock.h")),
      ElementsAre("src/forms/form.h may not include platform/clock.h"));
  EXPECT_THAT(findingsIn("src/platform/clock.h", includeOf("platform/linux/linux_clock.h")),
              ElementsAre("src/platform/clock.h may not include platform/linux/linux_clock.h"));
  EXPECT_THAT(findingsIn("src/frame/program.h", includeOf("ping/pingtester.h")),
              ElementsAre("src/frame/program.h may not include ping/pingtester.h"));
  EXPECT_THAT(findingsIn("src/ping/pingtester.cpp", includeOf("view/binder.h")),
              ElementsAre("src/ping/pingtester.cpp may not include view/binder.h"));
}

TEST(Findings, KeepTheTwoSystemsApart) {
  EXPECT_THAT(findingsIn("src/platform/linux/a.cpp", includeOf("platform/windows/code_page.h")),
              ElementsAre("src/platform/linux/a.cpp may not include platform/windows/code_page.h"));
}

TEST(Findings, KeepTheViewOutOfThePlatform) {
  EXPECT_THAT(findingsIn("src/platform/qt/a.cpp", includeOf("view/binder.h")),
              ElementsAre("src/platform/qt/a.cpp may not include view/binder.h"));
}

TEST(Findings, KeepTheProgramsWindowsOutOfThePlatform) {
  EXPECT_THAT(findingsIn("src/platform/qt/a.cpp", includeOf("frame/program.h")),
              ElementsAre("src/platform/qt/a.cpp may not include frame/program.h"));
}

TEST(Findings, LetThePlatformOfQtStandOnThoseOfTheSystems) {
  EXPECT_THAT(
      findingsIn("src/platform/qt/a.cpp", includeOf("platform/linux/linux_clock.h") +
                                              includeOf("platform/windows/code_page.h") +
                                              includeOf("platform/portable/profile_file.h") +
                                              includeOf("forms/form.h")),
      IsEmpty());
}

TEST(Findings, LetTheViewStandOnThePlatformOfQt) {
  EXPECT_THAT(findingsIn("src/view/a.cpp", includeOf("platform/qt/qt_text.h")), IsEmpty());
}

TEST(Findings, AllowWhatLiesBelow) {
  EXPECT_THAT(findingsIn("src/ping/pingtester.cpp",
                         includeOf("text/strings.h") + includeOf("forms/timer.h") +
                             includeOf("platform/clock.h") + includeOf("frame/program.h")),
              IsEmpty());
}

TEST(Findings, LetTheConsoleToolsAndTheLabUseTheTextRulesOnly) {
  EXPECT_THAT(findingsIn("console/ping.cpp", includeOf("text/numbers.h")), IsEmpty());
  EXPECT_THAT(findingsIn("console/ping.cpp", includeOf("platform/clock.h")),
              ElementsAre("console/ping.cpp may not include platform/clock.h"));
  EXPECT_THAT(findingsIn("lab/scenario.cpp", includeOf("console/icmp.h")),
              ElementsAre("lab/scenario.cpp may not include console/icmp.h"));
}

TEST(Findings, LetTheFactsOfAMachineStandOnTheTextRulesAlone) {
  EXPECT_THAT(findingsIn("machine/smbios.cpp", includeOf("text/numbers.h")), IsEmpty());
  EXPECT_THAT(findingsIn("machine/smbios.cpp", includeOf("platform/wmi.h")),
              ElementsAre("machine/smbios.cpp may not include platform/wmi.h"));
  EXPECT_THAT(findingsIn("console/ping.cpp", includeOf("machine/address.h")), IsEmpty());
  EXPECT_THAT(findingsIn("src/platform/linux/a.cpp", includeOf("machine/smbios.h")), IsEmpty());
  EXPECT_THAT(findingsIn("src/sysinfo/a.cpp", includeOf("machine/smbios.h")),
              ElementsAre("src/sysinfo/a.cpp may not include machine/smbios.h"));
}

TEST(Findings, LetAFileHave500Lines) {
  EXPECT_THAT(findingsIn("src/text/long.cpp", std::string(500, '\n')), IsEmpty());
}

TEST(Findings, NameAFileOf501Lines) {
  EXPECT_THAT(findingsIn("src/text/long.cpp", std::string(501, '\n')),
              ElementsAre("src/text/long.cpp has 501 lines, more than 500"));
}

TEST(Findings, CountALastLineWithoutABreak) {
  EXPECT_THAT(findingsIn("src/text/long.cpp", std::string(500, '\n') + "x"),
              ElementsAre("src/text/long.cpp has 501 lines, more than 500"));
}

// --- No shell, no marked-up text ---

TEST(ShellIn, FindsEachWayToAShell) {
  EXPECT_EQ(shellIn("  system(command.c_str());\n"), "system");
  EXPECT_EQ(shellIn("const int end = std::system (\"ls\");\n"), "system");
  EXPECT_EQ(shellIn("FILE* tool = ::popen(line, \"r\");\n"), "popen");
  EXPECT_EQ(shellIn("_wpopen(line, L\"r\");\n"), "_wpopen");
  EXPECT_EQ(shellIn("wordexp(text, &words, 0);\n"), "wordexp");
  EXPECT_EQ(shellIn("process.start(\"sh\", {\"-c\", line});\n"), "sh");
  EXPECT_EQ(shellIn("execl(\"/bin/bash\", line);\n"), "bash");
  EXPECT_EQ(shellIn("run(\"C:\\\\x\\\\cmd.exe /c \" + line);\n"), "cmd.exe");
  EXPECT_EQ(shellIn("run(\"cmd /c dir\");\n"), "cmd");
  EXPECT_EQ(shellIn("run(environment.variable(\"ComSpec\"));\n"), "ComSpec");
}

TEST(ShellIn, LeavesOthersAlone) {
  for (const char* text :
       {"// system(\"ls\") would start a shell\n", "system->platform().events;\n",
        "const auto system = makeDesktopSystem(program);\n", "int fileSystem(int block);\n",
        "// what a file system (proc(5)) tells\n", "names.push_back(\"shell\");\n",
        "{38, \"CMD\"},\n"}) {
    EXPECT_EQ(shellIn(text), "") << text;
  }
}

TEST(MarkupIn, FindsWhatReadsATextAsMarkedUp) {
  EXPECT_EQ(markupIn("view.setHtml(text);\n"), "setHtml");
  EXPECT_EQ(markupIn("label.setTextFormat(Qt::RichText);\n"), "RichText");
  EXPECT_EQ(markupIn("auto* page = new QTextEdit(this);\n"), "QTextEdit");
}

TEST(MarkupIn, LeavesOthersAlone) {
  EXPECT_EQ(markupIn("label.setTextFormat(Qt::PlainText);  // never RichText\n"), "");
  EXPECT_EQ(markupIn("auto* page = new QPlainTextEdit(this);\n"), "");
}

TEST(Findings, TellOfAShellAndOfMarkupInWhatIsShippedAlone) {
  EXPECT_THAT(findingsIn("console/ping.cpp", "std::system(line);\n"),
              ElementsAre("console/ping.cpp may not start a shell: system"));
  EXPECT_THAT(findingsIn("src/view/x.cpp", "view.setHtml(text);\n"),
              ElementsAre("src/view/x.cpp may not show marked-up text: setHtml"));
  EXPECT_THAT(findingsIn("bench/x.cpp", "std::system(line);\n"), IsEmpty());
}

// --- The project's own sources ---

struct Source {
  std::string path;  // relative to the project's folder
  std::string text;
};

std::vector<Source> sourcesIn(const std::string& folder) {
  const std::filesystem::path root = VELTRIN_SOURCE_FOLDER;
  std::vector<Source> sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
    const std::string ending = entry.path().extension().string();
    if (!entry.is_regular_file() || (ending != ".cpp" && ending != ".h")) continue;
    std::ostringstream text;
    text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
    sources.push_back({entry.path().lexically_relative(root).generic_string(), text.str()});
  }
  return sources;
}

std::vector<std::string> allFindingsIn(const std::string& folder) {
  std::vector<std::string> all;
  for (const Source& source : sourcesIn(folder)) {
    const std::vector<std::string> findings = findingsIn(source.path, source.text);
    all.insert(all.end(), findings.begin(), findings.end());
  }
  std::sort(all.begin(), all.end());
  return all;
}

TEST(Project, IsFoundByThisTest) {
  std::vector<std::string> paths;
  for (const Source& source : sourcesIn("src")) paths.push_back(source.path);
  EXPECT_THAT(paths, Contains("src/text/strings.h"));
}

class ProjectFolder : public ::testing::TestWithParam<const char*> {};

TEST_P(ProjectFolder, KeepsTheRules) { EXPECT_THAT(allFindingsIn(GetParam()), IsEmpty()); }

INSTANTIATE_TEST_SUITE_P(House, ProjectFolder,
                         ::testing::Values("src", "machine", "console", "lab", "tools", "tests",
                                           "bench"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace veltrin

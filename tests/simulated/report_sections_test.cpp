// SPDX-License-Identifier: GPL-3.0-or-later
// The sections of the report, each with what the service may answer for it.
#include <algorithm>

#include "simulated/report_section_case.h"

namespace veltrin {
namespace {

class ReportSection : public CatalogueRun, public testing::WithParamInterface<SectionCase> {
 protected:
  const SectionCase& section() const { return GetParam(); }

  // All that is known of one object.
  ReportText allLines() const {
    ReportText lines;
    for (const PropertyLine& line : section().lines) lines.push_back(line.line);
    return lines;
  }

  // The report with these lines of objects.
  ReportText reportOf(const ReportText& objects) const {
    const ReportText whole = joinedLines({section().above, objects, section().below});
    if (section().place == Place::BeforeGaps) return before(whole);
    return section().place == Place::BetweenGaps ? between(whole) : behind(whole);
  }

  // The report that is printed when the service answers with these objects.
  ReportText reportAbout(const std::vector<WmiObject>& objects) {
    answer(section().query, objects);
    tick({section().box});
    program.shared<ReportValues>().Status.text.clear();
    program.shared<ReportValues>().VideoProcessors = {};
    return press();
  }
};

TEST_P(ReportSection, PrintsTheLinesOfAnObject) {
  EXPECT_EQ(reportAbout({{section().properties}}), reportOf(allLines()));
}

TEST_P(ReportSection, AsksOnce) {
  reportAbout({{section().properties}});
  EXPECT_EQ(
      std::count(simulation.wmi.queries.begin(), simulation.wmi.queries.end(), section().query), 1);
}

TEST_P(ReportSection, IsItsHeadingAloneWithoutObjects) { EXPECT_EQ(reportAbout({}), reportOf({})); }

TEST_P(ReportSection, IsItsHeadingAloneWhenNothingAnswers) {
  simulation.wmi.answers.clear();
  tick({section().box});
  EXPECT_EQ(press(), reportOf({}));
}

TEST_P(ReportSection, EndsWhereTheAnswerBreaksOff) {
  simulation.wmi.breaks[section().query] = 1;
  EXPECT_EQ(reportAbout({{section().properties}, {section().properties}}), reportOf(allLines()));
}

TEST_P(ReportSection, APropertyThatIsNullDropsOutOfItsLines) {
  for (const auto& [name, value] : section().properties) {
    WmiObject object{section().properties};
    object.properties[name] = WmiValue();
    ReportText lines;
    for (const PropertyLine& line : section().lines) {
      lines.push_back(line.line);
      const auto withNull = line.withNull.find(name);
      if (withNull != line.withNull.end()) lines.back().text = withNull->second;
    }
    if (name == "SystemStartupOptions") lines.resize(lines.size() - 2);
    if (name == "AdminPasswordStatus") lines[7].text = "    AdminPassword: ";
    EXPECT_EQ(reportAbout({object}), reportOf(lines)) << name;
  }
}

TEST_P(ReportSection, APropertyThatCannotBeReadDropsItsLines) {
  for (const auto& [name, value] : section().properties) {
    WmiObject object{section().properties};
    object.properties.erase(name);
    ReportText lines;
    for (const PropertyLine& line : section().lines) {
      if (!line.withNull.contains(name)) lines.push_back(line.line);
    }
    if (name == "SystemStartupOptions") lines.resize(lines.size() - 2);
    if (name == "AdminPasswordStatus") lines[6].text = "    AdminPassword: ";
    EXPECT_EQ(reportAbout({object}), reportOf(lines)) << name;
  }
}

std::string nameOfCase(const testing::TestParamInfo<SectionCase>& section) {
  return section.param.name;
}

INSTANTIATE_TEST_SUITE_P(Hardware, ReportSection, testing::ValuesIn(hardwareSections()),
                         nameOfCase);
INSTANTIATE_TEST_SUITE_P(Software, ReportSection, testing::ValuesIn(softwareSections()),
                         nameOfCase);

}  // namespace
}  // namespace veltrin

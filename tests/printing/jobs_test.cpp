// SPDX-License-Identifier: GPL-3.0-or-later
// What the printers of the system put on paper.
#include "tests/printing/printing_test.h"

namespace veltrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class JobsTest : public PrintingTest {};

TEST_F(JobsTest, AJobHasTheNameOfTheProgramAndTheLinesInTheirOrder) {
  serve({{"Plain"}});
  print("Plain", "first\r\n\r\nsecond\r\n");
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(jobs[0].title, "Veltrin");
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("first", "second", "---"));
}

TEST_F(JobsTest, WhatIsPrintedUntilTheEndIsOneJob) {
  serve({{"Plain"}});
  const auto printer = printers.open("Plain");
  printer->setProperties(upright(12));
  printer->Print("one\r\n");
  printer->Print("two");
  printer->Print("three\r\n");
  printer->EndDoc();
  printer->Print("four\r\n");
  printer->EndDoc();
  const auto jobs = server->paper(2);
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("one", "two", "three", "---"));
  EXPECT_THAT(wordsOn(jobs[1]), ElementsAre("four", "---"));
}

TEST_F(JobsTest, NothingPrintedAndNothingEndedMakeNoJob) {
  serve({{"Plain"}});
  printers.open("Plain")->EndDoc();
  printers.open("Plain")->Print("never ended\r\n");
  print("Plain", "the only one\r\n");
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(jobs[0].number, 1);
  EXPECT_EQ(server->waitingJobs(), 0);
}

TEST_F(JobsTest, AnEmptySheetIsAJobOfOneSheet) {
  serve({{"Plain"}});
  print("Plain", "\r\n\r\n\r\n\r\n");
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(fact(jobs[0], "Pages"), "1");
  EXPECT_THAT(wordsOn(jobs[0]), ElementsAre("---"));
}

TEST_F(JobsTest, LinesStandAtThePitchOfTheFontFromTheUpperEdgeOn) {
  serve({{"Plain"}});
  print("Plain", "\r\n\r\n\r\n\r\nfifth\r\nsixth\r\n", upright(10));
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  const auto places = placesOn(jobs[0]);
  ASSERT_EQ(places.size(), 2U);
  EXPECT_NEAR(places[0].top, 4 * 11.5, 1);
  EXPECT_NEAR(places[1].top - places[0].top, 11.5, 0.05);
}

// Of Times New Roman a blank is a quarter of the size wide, so five are 15 points.
TEST_F(JobsTest, BlanksAtTheStartOfALineAreKept) {
  serve({{"Plain"}});
  print("Plain", "edge\r\n     margin\r\n", upright(12));
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  const auto places = placesOn(jobs[0]);
  ASSERT_EQ(places.size(), 2U);
  EXPECT_NEAR(places[0].left, 12, 0.1);
  EXPECT_NEAR(places[1].left, 12 + 15, 0.1);
}

TEST_F(JobsTest, ALineThatIsTooLongIsFoldedBetweenWords) {
  serve({{"Plain"}});
  std::string line;
  for (int word = 0; word < 60; ++word) line += "word ";
  print("Plain", line + "\r\nnext\r\n", upright(16));
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  const auto places = placesOn(jobs[0]);
  ASSERT_EQ(places.size(), 61U);
  EXPECT_NEAR(places[59].top - places[0].top, 3 * 16 * 1.15, 0.1);
  EXPECT_NEAR(places[60].top - places[0].top, 4 * 16 * 1.15, 0.1);
}

TEST_F(JobsTest, AWordThatIsTooLongIsFoldedToo) {
  serve({{"Plain"}});
  print("Plain", std::string(200, 'm') + "\r\n", upright(12));
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  std::string letters;
  for (const std::string& word : wordsOn(jobs[0])) {
    if (word != "---") letters += word;
  }
  EXPECT_EQ(letters, std::string(200, 'm'));
}

// Twelve points: 61 rows of 13.8 points fill a sheet of 842.
TEST_F(JobsTest, ATextThatIsTooLongGoesOnWithAnotherSheetOfTheSameJob) {
  serve({{"Plain"}});
  print("Plain", lines(62), upright(12));
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(fact(jobs[0], "Pages"), "2");
  const auto words = wordsOn(jobs[0]);
  ASSERT_EQ(words.size(), 64U);
  EXPECT_EQ(words[60], "line 61");
  EXPECT_EQ(words[61], "---");
  EXPECT_EQ(words[62], "line 62");
}

TEST_F(JobsTest, LettersOfOtherScriptsReachThePaper) {
  serve({{"Plain"}});
  print("Plain", "Gr\u00fc\u00dfe \u03a9\u03bc\u03ad\u03b3\u03b1 \u041c\u0438\u0440\r\n");
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_THAT(
      wordsOn(jobs[0]),
      ElementsAre("Gr\u00fc\u00dfe \u03a9\u03bc\u03ad\u03b3\u03b1 \u041c\u0438\u0440", "---"));
}

TEST_F(JobsTest, TheLettersAreTextAndNoPicture) {
  serve({{"Plain"}});
  print("Plain", "letters\r\n");
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_THAT(outputOf("pdffonts '" + jobs[0].paper + "'"), HasSubstr("CID TrueType"));
  EXPECT_THAT(outputOf("pdfimages -list '" + jobs[0].paper + "' | tail -n +3"), IsEmpty());
}

TEST_F(JobsTest, TheSheetIsThePrintersOwn) {
  serve({{"Plain", "Letter"}});
  print("Plain", "upright\r\n");
  print("Plain", "across\r\n", across(12));
  const auto jobs = server->paper(2);
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_EQ(fact(jobs[0], "Page size"), "612 x 792 pts (letter)");
  EXPECT_EQ(fact(jobs[1], "Page size"), "792 x 612 pts (letter)");
}

TEST_F(JobsTest, ThePrinterMakesTheCopies) {
  serve({{"Plain"}});
  PrinterProperties twice = upright(12);
  twice.Copies = 2;
  print("Plain", "twice\r\n", twice);
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  EXPECT_EQ(jobs[0].copies, "2");
  EXPECT_EQ(fact(jobs[0], "Pages"), "1");
}

// Whoever makes the copies, the filter or the printer, there are two.
TEST_F(JobsTest, TheSystemsFilterLeavesPaperAcrossAsItIs) {
  serve({{"Filtered", "A4", true}});
  PrinterProperties twice = across(16);
  twice.Copies = 2;
  print("Filtered", lines(32), twice);
  const auto jobs = server->paper(1);
  ASSERT_EQ(jobs.size(), 1U);
  keep(jobs[0], "filtered");
  EXPECT_EQ(std::stoi(jobs[0].copies) * std::stoi(fact(jobs[0], "Pages")), 2) << jobs[0].options;
  const auto words = wordsOn(jobs[0]);
  ASSERT_GE(words.size(), 33U);
  EXPECT_EQ(words[0], "line 1");
  EXPECT_EQ(words[31], "line 32");
  EXPECT_EQ(words[32], "---");
}

TEST_F(JobsTest, WhatNoPrinterCanDoIsRefused) {
  serve({{"Plain"}});
  const auto printer = printers.open("Plain");
  PrinterProperties properties = upright(12);
  properties.Copies = 0;
  EXPECT_THROW(printer->setProperties(properties), StatementFailed);
  EXPECT_THROW(printer->setProperties(upright(0)), StatementFailed);
  EXPECT_THROW(printer->setProperties(upright(2161)), StatementFailed);
  properties = upright(12);
  properties.Orientation = 3;
  EXPECT_THROW(printer->setProperties(properties), StatementFailed);
}

}  // namespace
}  // namespace veltrin

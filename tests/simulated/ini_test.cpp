// SPDX-License-Identifier: GPL-3.0-or-later
// One value of the settings file at a time, and the two routines that all windows use.
#include <gtest/gtest.h>
#include <string>

#include "frame/INIReadWrite.h"
#include "frame/cINI.h"
#include "support/simulation.h"

namespace veltrin {
namespace {

const std::string kFile = "C:\\Program Files\\Veltrin\\Files\\Veltrin.dat";

class Ini : public ::testing::Test {
 protected:
  Ini() {
    ini.Path = kFile;
    ini.Section = "Settings";
    ini.Key = "Rated Speed";
  }

  std::string& file() { return profiles.contents[kFile]; }

  SimulatedProfiles profiles;
  cINI ini{profiles};
};

TEST_F(Ini, KeepsAValueUnderItsSectionAndKey) {
  ini.setValue("1,500");
  EXPECT_EQ(file(), "[Settings]\r\nRated Speed=1,500\r\n");
  EXPECT_EQ(ini.Value(), "1,500");
}

TEST_F(Ini, ReadsAnAbsentKeyAsTheEmptyText) { EXPECT_EQ(ini.Value(), ""); }

TEST_F(Ini, ReadsAnAbsentKeyAsTheDefaultWhenThereIsOne) {
  ini.Default = "250";
  EXPECT_EQ(ini.Value(), "250");
}

TEST_F(Ini, ReadsAnEmptyValueAsEmptyAlsoWithADefault) {
  file() = "[Settings]\r\nRated Speed=\r\n";
  ini.Default = "250";
  EXPECT_EQ(ini.Value(), "");
}

TEST_F(Ini, FindsSectionAndKeyInAnyCase) {
  file() = "[SETTINGS]\r\nrated speed=800\r\n";
  EXPECT_EQ(ini.Value(), "800");
}

TEST_F(Ini, ReplacesAnExistingValueInItsPlace) {
  file() = "[Settings]\r\nRated Speed=800\r\nVersion=1.03\r\n";
  ini.setValue("900");
  EXPECT_EQ(file(), "[Settings]\r\nRated Speed=900\r\nVersion=1.03\r\n");
}

TEST_F(Ini, AddsANewKeyBehindTheOthersOfItsSection) {
  file() = "[Settings]\r\nVersion=1.03\r\n[Ping]\r\nPasses=5\r\n";
  ini.setValue("900");
  EXPECT_EQ(file(), "[Settings]\r\nVersion=1.03\r\nRated Speed=900\r\n[Ping]\r\nPasses=5\r\n");
}

TEST_F(Ini, StoresAValueWithoutItsNulCharacters) {
  ini.setValue(std::string("\0one\0\0two\0", 10));
  EXPECT_EQ(ini.Value(), "onetwo");
}

TEST_F(Ini, StoresAValueOfOnlyNulCharactersAsEmpty) {
  ini.setValue(std::string(3, '\0'));
  EXPECT_EQ(file(), "[Settings]\r\nRated Speed=\r\n");
}

TEST_F(Ini, ReadsAValueOf1023CharactersWhole) {
  ini.setValue(std::string(1023, 'x'));
  EXPECT_EQ(ini.Value(), std::string(1023, 'x'));
}

TEST_F(Ini, CutsAValueOf2000CharactersAt1023) {
  ini.setValue(std::string(2000, 'x'));
  EXPECT_EQ(ini.Value(), std::string(1023, 'x'));
}

// So many times the same text.
std::string times(int count, const std::string& text) {
  std::string all;
  for (; count > 0; --count) all += text;
  return all;
}

TEST_F(Ini, CutsAValueOf2000CharactersOfTwoBytesAt1023WholeOnes) {
  ini.setValue(times(2000, "\u00E9"));
  EXPECT_EQ(ini.Value(), times(1023, "\u00E9"));
}

TEST_F(Ini, ReadsAValueOf1023CharactersOfFourBytesWhole) {
  ini.setValue(times(1023, "\U0001F600"));
  EXPECT_EQ(ini.Value(), times(1023, "\U0001F600"));
}

TEST_F(Ini, DeleteValueEmptiesTheValueAndKeepsItsLine) {
  file() = "[Settings]\r\nRated Speed=800\r\nVersion=1.03\r\n";
  ini.DeleteValue();
  EXPECT_EQ(ini.Value(), "");
  EXPECT_EQ(file(), "[Settings]\r\nRated Speed=\r\nVersion=1.03\r\n");
}

TEST_F(Ini, DeleteSectionDropsTheSectionAlone) {
  file() = "[Settings]\r\nRated Speed=800\r\nVersion=1.03\r\n[Ping]\r\nPasses=5\r\n";
  ini.DeleteSection();
  EXPECT_EQ(ini.Value(), "");
  EXPECT_EQ(file(), "[Ping]\r\nPasses=5\r\n");
}

TEST_F(Ini, INISectionNamesTheKeysEachWithANulBehindIt) {
  file() = "[Settings]\r\nRated Speed=800\r\nVersion=1.03\r\n[Ping]\r\nPasses=5\r\n";
  EXPECT_EQ(ini.INISection(), std::string("Rated Speed\0Version\0", 20));
}

TEST_F(Ini, INISectionHoldsAtMost255Characters) {
  for (int key = 0; key < 40; ++key) {
    ini.Key = "A key of some length " + std::to_string(key);
    ini.setValue("1");
  }
  EXPECT_LE(ini.INISection().size(), 255U);
  EXPECT_EQ(ini.INISection().rfind(std::string("A key of some length 0\0A key of", 31), 0), 0U);
}

TEST_F(Ini, INISectionIsCutBehindAWholeCharacter) {
  ini.Key = times(300, "\u20AC");
  ini.setValue("1");
  EXPECT_EQ(ini.INISection(), times(253, "\u20AC"));
}

TEST_F(Ini, SettingINISectionDropsTheSectionWhateverTheText) {
  file() = "[Settings]\r\nRated Speed=800\r\n[Ping]\r\nPasses=5\r\n";
  ini.setINISection("Version=1.03");
  EXPECT_EQ(file(), "[Ping]\r\nPasses=5\r\n");
}

TEST_F(Ini, LastReturnCodeIsOneAfterAWrite) {
  ini.setValue("800");
  EXPECT_EQ(ini.LastReturnCode, 1);
}

TEST_F(Ini, LastReturnCodeIsZeroAfterALostWriteAndNothingElseTellsOfIt) {
  ini.setValue("800");
  profiles.refuseWriting = true;
  ini.setValue("900");
  EXPECT_EQ(ini.LastReturnCode, 0);
  EXPECT_EQ(ini.Value(), "800");
}

// There has to be something to delete: what leaves a file as it is cannot be lost.
TEST_F(Ini, EveryKindOfWriteSetsLastReturnCode) {
  ini.setValue("800");
  profiles.refuseWriting = true;
  ini.LastReturnCode = 1;
  ini.DeleteValue();
  EXPECT_EQ(ini.LastReturnCode, 0);
  ini.LastReturnCode = 1;
  ini.DeleteSection();
  EXPECT_EQ(ini.LastReturnCode, 0);
  ini.LastReturnCode = 1;
  ini.setINISection("text");
  EXPECT_EQ(ini.LastReturnCode, 0);
}

// --- The two routines ---

class IniReadWrite : public ::testing::Test {
 protected:
  std::string& file() { return profiles.contents[kFile]; }

  SimulatedProfiles profiles;
  INIReadWrite settings{profiles};
};

TEST_F(IniReadWrite, ReadsBackWhatWasWritten) {
  settings.write(kFile, "Trace", "Trace1", "near.example");
  EXPECT_EQ(settings.read(kFile, "Trace", "Trace1").text(), "near.example");
}

TEST_F(IniReadWrite, WritesNumbersAsTheirDigits) {
  settings.write(kFile, "Settings", "Lang", 4);
  EXPECT_EQ(file(), "[Settings]\r\nLang=4\r\n");
}

TEST_F(IniReadWrite, WritesAnUnsetValueAsTheEmptyText) {
  settings.write(kFile, "Settings", "Lang", Loose());
  EXPECT_EQ(file(), "[Settings]\r\nLang=\r\n");
}

TEST_F(IniReadWrite, ReadsAMissingFileAsAbsentKeys) {
  EXPECT_EQ(settings.read(kFile, "Trace", "Trace1").text(), "");
}

TEST_F(IniReadWrite, KeepsFilesSectionsAndKeysApart) {
  settings.write(kFile, "Trace", "Use", "one");
  settings.write(kFile, "Stability", "Use", "two");
  settings.write("C:\\other.dat", "Trace", "Use", "three");
  EXPECT_EQ(settings.read(kFile, "Trace", "Use").text(), "one");
  EXPECT_EQ(settings.read(kFile, "Stability", "Use").text(), "two");
  EXPECT_EQ(settings.read("C:\\other.dat", "Trace", "Use").text(), "three");
}

TEST_F(IniReadWrite, LeavesWhereItLookedInTheOneObjectOfTheProgram) {
  const cINI* before = &settings.ini();
  settings.write(kFile, "Trace", "Trace1", "near.example");
  settings.read("C:\\other.dat", "InDepth", "Period");
  EXPECT_EQ(&settings.ini(), before);
  EXPECT_EQ(settings.ini().Path, "C:\\other.dat");
  EXPECT_EQ(settings.ini().Section, "InDepth");
  EXPECT_EQ(settings.ini().Key, "Period");
}

TEST_F(IniReadWrite, ALaterReadDoesNotChangeAValueReadBefore) {
  file() = "[Trace]\r\nTrace1=one\r\nTrace2=two\r\n";
  const Loose first = settings.read(kFile, "Trace", "Trace1");
  settings.read(kFile, "Trace", "Trace2");
  EXPECT_EQ(first.text(), "one");
}

TEST_F(IniReadWrite, SaysNothingOfALostWrite) {
  profiles.refuseWriting = true;
  EXPECT_NO_THROW(settings.write(kFile, "Trace", "Trace1", "near.example"));
  EXPECT_EQ(settings.read(kFile, "Trace", "Trace1").text(), "");
}

}  // namespace
}  // namespace veltrin

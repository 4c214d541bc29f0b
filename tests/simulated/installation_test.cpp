// SPDX-License-Identifier: GPL-3.0-or-later
// The settings that the installation brings along.
#include "frame/installation.h"

#include <gtest/gtest.h>
#include <string>

#include "support/simulated_store.h"

namespace veltrin {
namespace {

class InstallationFile : public ::testing::Test {
 protected:
  Installation read(const std::string& lines) {
    profiles.contents[files.programFolder() + "\\installation.ini"] = "[Installation]\r\n" + lines;
    return readInstallation(profiles, files);
  }

  SimulatedFiles files;
  SimulatedProfiles profiles;
};

TEST_F(InstallationFile, GivesEachOfItsSettings) {
  const Installation installation = read(
      "ProbeHost=probe.example\r\nUpdateServer=update.example\r\n"
      "HelpPageUrl=https://help.example/\r\nHomePageUrl=https://home.example/\r\n");
  EXPECT_EQ(installation.ProbeHost, "probe.example");
  EXPECT_EQ(installation.UpdateServer, "update.example");
  EXPECT_EQ(installation.HelpPageUrl, "https://help.example/");
  EXPECT_EQ(installation.HomePageUrl, "https://home.example/");
}

TEST_F(InstallationFile, ThatIsMissingGivesTheBuiltInValues) {
  const Installation installation = readInstallation(profiles, files);
  EXPECT_EQ(installation.ProbeHost, "www.wikipedia.org");
  EXPECT_EQ(installation.UpdateServer, "");
  EXPECT_EQ(installation.HelpPageUrl, "file:///C:/Program%20Files/Veltrin/help/index.html");
  EXPECT_EQ(installation.HomePageUrl, "file:///C:/Program%20Files/Veltrin/help/home.html");
}

TEST_F(InstallationFile, NamesSixFilesForTheDownloadTest) {
  const Installation installation = read(
      "DownloadTestUrl1=https://one.example/\r\nDownloadTestUrl2=https://two.example/\r\n"
      "DownloadTestUrl3=https://three.example/\r\nDownloadTestUrl4=https://four.example/\r\n"
      "DownloadTestUrl5=https://five.example/\r\nDownloadTestUrl6=https://six.example/\r\n");
  EXPECT_EQ(installation.DownloadTestUrl,
            (std::array<std::string, 6>{"https://one.example/", "https://two.example/",
                                        "https://three.example/", "https://four.example/",
                                        "https://five.example/", "https://six.example/"}));
}

TEST_F(InstallationFile, NamesNoFileForTheDownloadTestByItself) {
  EXPECT_EQ(read("").DownloadTestUrl, (std::array<std::string, 6>{}));
}

TEST_F(InstallationFile, APageBelowTheProgramFolderBecomesAnAddressOfPlainLetters) {
  EXPECT_EQ(read("HelpPageUrl=\\h\xC3\xBClp\\a-b_c.~d#1%.html").HelpPageUrl,
            "file:///C:/Program%20Files/Veltrin/h%C3%BClp/a-b_c.~d%231%25.html");
}

TEST_F(InstallationFile, ASettingOf1023CharactersIsWholeAndALongerOneCutToThem) {
  EXPECT_EQ(read("ProbeHost=" + std::string(1023, 'x')).ProbeHost, std::string(1023, 'x'));
  EXPECT_EQ(read("ProbeHost=" + std::string(1024, 'x')).ProbeHost, std::string(1023, 'x'));
}

}  // namespace
}  // namespace veltrin

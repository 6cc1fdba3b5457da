#include <zqcore/core/BuildInfo.h>
#include <zqcore/core/Config.h>
#include <zqcore/core/VersionInfo.h>

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace zq = Velmora::Tessara::ZQ::Core;

TEST(Config, AnswersByTrimmedCaseInsensitiveName) {
  EXPECT_TRUE(zq::Config::IsWith(" hdf5 "));
  EXPECT_TRUE(zq::Config::IsWith("Mpi"));
  EXPECT_TRUE(zq::Config::IsWith(L"\tMPI\n"));
  EXPECT_FALSE(zq::Config::IsWith("relayport"));
  EXPECT_FALSE(zq::Config::IsWith("xerces"));
  EXPECT_FALSE(zq::Config::IsWith("no-such-feature"));
  EXPECT_FALSE(zq::Config::IsWith(static_cast<char const *>(nullptr)));
  EXPECT_EQ(zq::Config::IsWith("drxunits"), zq::Config::IsWithDRXUnits());
  EXPECT_STREQ(zq::Config::VELMORA_RELEASE(), "22.2");
}

TEST(VersionInfo, PacksMajorMinorMicro) {
  EXPECT_EQ(zq::VersionInfo::GetVersion(), 66816);
  EXPECT_EQ(zq::VersionInfo::GetVersion(), (zq::VersionInfo::GetMajorVersion() << 16) |
                                               (zq::VersionInfo::GetMinorVersion() << 8) |
                                               zq::VersionInfo::GetMicroVersion());
  EXPECT_STREQ(zq::VersionInfo::GetVersionInfo(), "1.5.0");
  EXPECT_STREQ(zq::VersionInfo::GetVelmoraRelease(), zq::Config::VELMORA_RELEASE());
}

TEST(BuildInfo, StampsCompilerDateAndGitRevision) {
  EXPECT_TRUE(std::regex_match(zq::BuildInfo::GetBuildDate(), std::regex("[A-Z][a-z]{2} [ 0-9][0-9] [0-9]{4}")));
  EXPECT_TRUE(std::regex_match(zq::BuildInfo::GetBuildTime(), std::regex("[0-9]{2}:[0-9]{2}:[0-9]{2}")));
  EXPECT_STRNE(zq::BuildInfo::GetConfigurationName(), "");

  std::string const revision = zq::BuildInfo::GetGitRevision();
  std::string const id = zq::BuildInfo::GetBuildID();
  if (revision == "unknown") {
    EXPECT_EQ(id, "unknown");
    EXPECT_STREQ(zq::BuildInfo::GetGitBranch(), "unknown");
  } else {
    EXPECT_TRUE(std::regex_match(revision, std::regex("[0-9a-f]{40}"))) << revision;
    EXPECT_EQ(id, revision.substr(0, 6));
    EXPECT_STRNE(zq::BuildInfo::GetGitBranch(), "");
  }
}

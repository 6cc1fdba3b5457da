// Process id and environment look-ups.
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQOSUtil.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

using namespace Velmora::Tessara::ZQ::Core;

TEST(OSUtil, GetPIDIsThisProcess) { EXPECT_EQ(ZQOSUtil::GetPID(), static_cast<int>(getpid())); }

TEST(OSUtil, GetEnvTellsSetFromUnsetAndClearsTheValue) {
  setenv("ZQT_SET", "v\xC3\xA9", 1);
  setenv("ZQT_EMPTY", "", 1);
  unsetenv("ZQT_UNSET");
  ZQString value("stale");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, "ZQT_SET", value));
  EXPECT_EQ(value, "v\xC3\xA9");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, L"ZQT_SET", value));
  EXPECT_EQ(value, "v\xC3\xA9");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, "ZQT_EMPTY", value));
  EXPECT_TRUE(value.IsEmpty());
  value = "stale";
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, "ZQT_UNSET", value));
  EXPECT_TRUE(value.IsEmpty());
  value = "stale";
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, static_cast<char const *>(nullptr), value));
  EXPECT_TRUE(value.IsEmpty());
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, static_cast<wchar_t const *>(nullptr), value));
  unsetenv("ZQT_SET");
  unsetenv("ZQT_EMPTY");
}

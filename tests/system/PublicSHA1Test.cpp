// The public digest: file names in their three forms, streams, and independent copies.
#include <zqcore/public/SHA1.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include "SystemTestSupport.h"

#include <gtest/gtest.h>

#include <string>

using namespace Velmora::Tessara::ZQ::Core;

TEST(PublicSHA1, FileNamesInEveryFormAndStreamsGiveTheFileDigest) {
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(777, 17);
  std::string const name = dir / "file";
  zqtest::WriteFile(name, data);
  std::string const expected = zqtest::Sha1sumOf({name}).at(0);
  std::wstring wideName;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, name.c_str(), wideName));

  EXPECT_EQ(SHA1(name.c_str()).ToString().c_str(), expected);
  EXPECT_EQ(SHA1(String(name.c_str())).ToString().c_str(), expected);
  EXPECT_EQ(SHA1(wideName.c_str()).ToString().c_str(), expected);
  EXPECT_EQ(SHA1(data.data(), static_cast<long long>(data.size())).ToString().c_str(), expected);
  std::FILE *stream = std::fopen(name.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(SHA1(stream).ToString().c_str(), expected);
  std::fclose(stream);

  SHA1 const missing((dir / "missing").c_str());
  EXPECT_FALSE(missing.IsInitialized());
  EXPECT_STREQ(missing.ToString().c_str(), "0000000000000000000000000000000000000000");
}

TEST(PublicSHA1, CopiesAreIndependentAndStepsForward) {
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(200, 19);
  SHA1 source;
  source.Initialize();
  source.Update(data.data(), 128);
  SHA1 copy(source);
  SHA1 assigned;
  assigned = source;
  source.Update(data.data() + 128, 72);
  source.Finalize();
  copy.Finalize();
  EXPECT_STREQ(source.ToString().c_str(), SHA1(data.data(), 200).ToString().c_str());
  EXPECT_STREQ(copy.ToString().c_str(), SHA1(data.data(), 128).ToString().c_str());
  assigned.Finalize();
  char text[41];
  assigned.AsString(text);
  EXPECT_STREQ(text, copy.ToString().c_str());
  assigned.Reset();
  EXPECT_FALSE(assigned.IsInitialized());
}

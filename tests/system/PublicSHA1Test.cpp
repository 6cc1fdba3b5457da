// The public digest: file names in their three forms, streams, and independent copies.
#include <zqcore/public/SHA1.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include "SystemTestSupport.h"

#include <gtest/gtest.h>

using namespace Velmora::Tessara::ZQ::Core;

TEST(PublicSHA1, NamesStreamsBytesAndCopies) {
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(777, 17);
  std::string const name = dir / "file";
  zqtest::WriteFile(name, data);
  std::string const expected = zqtest::Sha1sumOf({name}).at(0);
  std::wstring wideName;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, name.c_str(), wideName));
  std::FILE *stream = std::fopen(name.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  for (SHA1 const &digest : {SHA1(name.c_str()), SHA1(String(name.c_str())), SHA1(wideName.c_str()), SHA1(stream),
                             SHA1(data.data(), static_cast<long long>(data.size()))}) {
    EXPECT_EQ(digest.ToString().c_str(), expected);
  }
  std::fclose(stream);
  EXPECT_FALSE(SHA1((dir / "missing").c_str()).IsInitialized());

  SHA1 source;
  source.Initialize();
  source.Update(data.data(), 128);
  SHA1 copy(source);
  source.Update(data.data() + 128, 649);
  source.Finalize();
  copy.Finalize();
  EXPECT_EQ(source.ToString().c_str(), expected);
  EXPECT_STREQ(copy.ToString().c_str(), SHA1(data.data(), 128).ToString().c_str());
}

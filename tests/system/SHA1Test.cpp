// SHA-1 digests against the sha1sum tool and a plain reference of the compression function,
// and the public digest.
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/public/SHA1.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/system/ZQSHA1.h>

#include "SystemTestSupport.h"
#include "system/detail/SHA1Blocks.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Bytes = std::vector<unsigned char>;
constexpr char const *ZeroText = "0000000000000000000000000000000000000000";

// The compression function as the standard writes it, round by round.
void ReferenceBlock(std::uint32_t *h, unsigned char const *block) {
  auto rotl = [](std::uint32_t x, int n) { return (x << n) | (x >> (32 - n)); };
  std::uint32_t w[80];
  for (int t = 0; t < 80; ++t) {
    w[t] = t < 16 ? std::uint32_t(block[4 * t]) << 24 | std::uint32_t(block[4 * t + 1]) << 16 |
                        std::uint32_t(block[4 * t + 2]) << 8 | std::uint32_t(block[4 * t + 3])
                  : rotl(w[t - 3] ^ w[t - 8] ^ w[t - 14] ^ w[t - 16], 1);
  }
  std::uint32_t a = h[0], b = h[1], c = h[2], d = h[3], e = h[4];
  for (int t = 0; t < 80; ++t) {
    std::uint32_t const f = t < 20 ? (b & c) | (~b & d) : t < 40 || t >= 60 ? b ^ c ^ d : (b & c) | (b & d) | (c & d);
    std::uint32_t const k = t < 20 ? 0x5A827999 : t < 40 ? 0x6ED9EBA1 : t < 60 ? 0x8F1BBCDC : 0xCA62C1D6;
    std::uint32_t const temp = rotl(a, 5) + f + e + k + w[t];
    e = d, d = c, c = rotl(b, 30), b = a, a = temp;
  }
  h[0] += a, h[1] += b, h[2] += c, h[3] += d, h[4] += e;
}

std::string Hex(std::uint32_t const *h) {
  char text[41];
  for (int i = 0; i < 5; ++i) {
    std::snprintf(text + 8 * i, 9, "%08x", h[i]);
  }
  return text;
}

// The digest of `message` from state `h`, its tail padded over `tailBlocks` blocks: 0x80,
// zeros, the bit length in the last eight bytes.
std::string PaddedDigest(std::array<std::uint32_t, 5> h, Bytes const &message, std::size_t tailBlocks) {
  std::size_t const whole = message.size() / 64 * 64;
  for (std::size_t i = 0; i < whole; i += 64) {
    ReferenceBlock(h.data(), message.data() + i);
  }
  Bytes tail(64 * tailBlocks);
  std::copy(message.begin() + static_cast<std::ptrdiff_t>(whole), message.end(), tail.begin());
  tail[message.size() - whole] = 0x80;
  for (std::size_t i = 0; i < 8; ++i) {
    tail[tail.size() - 1 - i] = static_cast<unsigned char>((std::uint64_t(message.size()) * 8) >> (8 * i));
  }
  for (std::size_t block = 0; block < tailBlocks; ++block) {
    ReferenceBlock(h.data(), tail.data() + 64 * block);
  }
  return Hex(h.data());
}

std::string DigestOf(Bytes const &bytes) {
  return ZQSHA1(bytes.data(), static_cast<long long>(bytes.size())).ToString(nullptr).c_str();
}

} // namespace

TEST(SHA1Digest, EveryLengthUpTo300MatchesSha1sumExceptThe55PendingPadding) {
  zqtest::ScratchDirectory dir;
  Bytes const data = zqtest::PseudoRandomBytes(300, 7);
  std::vector<std::string> names;
  for (int n = 0; n <= 300; ++n) {
    names.push_back(dir / std::to_string(n));
    zqtest::WriteFile(names.back(), Bytes(data.begin(), data.begin() + n));
  }
  std::vector<std::string> const expected = zqtest::Sha1sumOf(names);
  ASSERT_EQ(expected.size(), names.size());
  for (int n = 0; n <= 300; ++n) {
    Bytes const message(data.begin(), data.begin() + n);
    if (n % 64 == 55) {
      EXPECT_NE(DigestOf(message), expected[n]) << "length " << n;
      EXPECT_EQ(DigestOf(message),
                PaddedDigest({0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0}, message, 2))
          << "length " << n;
    } else {
      EXPECT_EQ(DigestOf(message), expected[n]) << "length " << n;
    }
  }
}

TEST(SHA1Digest, LargeBuffersAndFilesByEitherNameMatchSha1sum) {
  zqtest::ScratchDirectory dir;
  std::string const name = dir / "caf\xC3\xA9.bin";
  std::wstring wideName;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, name.c_str(), wideName));
  for (std::size_t const size : {std::size_t(1) << 20, (std::size_t(1) << 24) + 13, std::size_t(3000017)}) {
    Bytes const data = zqtest::PseudoRandomBytes(size, static_cast<unsigned>(size));
    zqtest::WriteFile(name, data);
    std::string const expected = zqtest::Sha1sumOf({name}).at(0);
    EXPECT_EQ(DigestOf(data), expected) << size;
    EXPECT_EQ(ZQSHA1(nullptr, name.c_str()).ToString(nullptr), expected.c_str()) << size;
    EXPECT_EQ(ZQSHA1(nullptr, wideName.c_str()).ToString(nullptr), expected.c_str()) << size;
  }
}

TEST(SHA1Digest, PortableAndExtensionBlockFunctionsAgreeWithTheReference) {
  Bytes const data = zqtest::PseudoRandomBytes(64 * 257, 3);
  std::uint32_t expected[5] = {1, 2, 3, 4, 5};
  for (std::size_t i = 0; i < data.size(); i += 64) {
    ReferenceBlock(expected, data.data() + i);
  }
  std::uint32_t portable[5] = {1, 2, 3, 4, 5};
  detail::SHA1BlocksPortable(portable, data.data(), 257);
  EXPECT_EQ(Hex(portable), Hex(expected));

  detail::SHA1BlocksFunction const extensions = detail::SHA1BlocksWithExtensions();
  if (extensions == nullptr) {
    GTEST_SKIP() << "this processor has no SHA extensions";
  }
  EXPECT_EQ(detail::SHA1Blocks(), extensions) << "the faster form is not the one chosen";
  std::uint32_t withExtensions[5] = {1, 2, 3, 4, 5};
  extensions(withExtensions, data.data(), 257);
  EXPECT_EQ(Hex(withExtensions), Hex(expected));
}

TEST(SHA1Digest, PiecewiseUpdatesCopiesAndResets) {
  Bytes const data = zqtest::PseudoRandomBytes(1000, 11);
  ZQSHA1 blockwise, bytewise;
  blockwise.Initialize();
  bytewise.Initialize();
  EXPECT_FALSE(blockwise.IsInitialized());
  blockwise.Update(data.data(), 128);
  ZQSHA1 copy(blockwise);
  blockwise.Update(data.data() + 128, 872);
  blockwise.Finalize();
  // Pieces that do not complete the pending block are collected until they do.
  for (unsigned char const byte : data) {
    bytewise.Update(&byte, 1);
  }
  bytewise.Finalize();
  copy.Finalize();
  EXPECT_EQ(blockwise.ToString(nullptr), DigestOf(data).c_str());
  EXPECT_EQ(bytewise.ToString(nullptr), DigestOf(data).c_str());
  EXPECT_EQ(copy.ToString(nullptr), DigestOf(Bytes(data.begin(), data.begin() + 128)).c_str());

  copy = copy;
  EXPECT_TRUE(copy.IsInitialized());
  copy.Reset();
  EXPECT_FALSE(copy.IsInitialized());
  EXPECT_EQ(copy.ToString(nullptr), ZeroText);
  ZQSHA1 const empty(static_cast<unsigned char const *>(nullptr), 0);
  char text[41];
  empty.AsString(text);
  EXPECT_STREQ(text, "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST(SHA1Digest, MissingFilesAndStreams) {
  ZQContext context;
  zqtest::ScratchDirectory dir;
  ZQSHA1 const missing(&context, (dir / "missing").c_str());
  EXPECT_FALSE(missing.IsInitialized());
  EXPECT_EQ(missing.ToString(nullptr), ZeroText);
  EXPECT_EQ(context.GetErrorStack().GetLastMsg(), std::strerror(ENOENT));

  // Streams are read from the descriptor offset.
  std::string const name = dir / "file";
  Bytes const data = zqtest::PseudoRandomBytes(3000, 13);
  zqtest::WriteFile(name, data);
  std::FILE *file = std::fopen(name.c_str(), "rb");
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(lseek(fileno(file), 1000, SEEK_SET), 1000);
  EXPECT_EQ(ZQSHA1(file).ToString(nullptr), DigestOf({data.begin() + 1000, data.end()}).c_str());
  std::fclose(file);

  // A stream opened for writing cannot be read: the constructor gives the padding of an
  // empty message run from an all-zero state, and Update leaves a reset object.
  file = std::fopen(name.c_str(), "ab");
  ASSERT_NE(file, nullptr);
  ZQSHA1 const failed(file);
  EXPECT_TRUE(failed.IsInitialized());
  EXPECT_EQ(failed.ToString(nullptr), PaddedDigest({}, {}, 1).c_str());
  ZQSHA1 updated(data.data(), 64);
  updated.Update(file);
  EXPECT_FALSE(updated.IsInitialized());
  std::fclose(file);
}

// The public digest: file names in their three forms, streams, and independent copies.
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

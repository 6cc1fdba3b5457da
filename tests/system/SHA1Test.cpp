// SHA-1 digests against the sha1sum tool and against a plain reference of the compression
// function, through both forms of the compression function and through files and streams.
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/system/ZQSHA1.h>

#include "SystemTestSupport.h"
#include "system/detail/SHA1Blocks.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// The compression function as the standard writes it, round by round, for comparison.
void ReferenceBlock(std::uint32_t *h, unsigned char const *block) {
  auto rotl = [](std::uint32_t x, int n) { return (x << n) | (x >> (32 - n)); };
  std::uint32_t w[80];
  for (int t = 0; t < 16; ++t) {
    w[t] = std::uint32_t(block[4 * t]) << 24 | std::uint32_t(block[4 * t + 1]) << 16 |
           std::uint32_t(block[4 * t + 2]) << 8 | std::uint32_t(block[4 * t + 3]);
  }
  for (int t = 16; t < 80; ++t) {
    w[t] = rotl(w[t - 3] ^ w[t - 8] ^ w[t - 14] ^ w[t - 16], 1);
  }
  std::uint32_t a = h[0], b = h[1], c = h[2], d = h[3], e = h[4];
  for (int t = 0; t < 80; ++t) {
    std::uint32_t f, k;
    if (t < 20) {
      f = (b & c) | (~b & d), k = 0x5A827999;
    } else if (t < 40) {
      f = b ^ c ^ d, k = 0x6ED9EBA1;
    } else if (t < 60) {
      f = (b & c) | (b & d) | (c & d), k = 0x8F1BBCDC;
    } else {
      f = b ^ c ^ d, k = 0xCA62C1D6;
    }
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

// The digest with the two-block padding that a message leaving 55 bytes pending gets:
// 0x80, zeros up to byte 119 of the two blocks, the bit length in bytes 120 to 127.
std::string TwoBlockPaddedDigest(std::vector<unsigned char> const &message) {
  std::uint32_t h[5] = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  std::size_t const whole = message.size() / 64 * 64;
  for (std::size_t i = 0; i < whole; i += 64) {
    ReferenceBlock(h, message.data() + i);
  }
  unsigned char tail[128] = {};
  std::memcpy(tail, message.data() + whole, message.size() - whole);
  tail[message.size() - whole] = 0x80;
  std::uint64_t const bits = std::uint64_t(message.size()) * 8;
  for (int i = 0; i < 8; ++i) {
    tail[127 - i] = static_cast<unsigned char>(bits >> (8 * i));
  }
  ReferenceBlock(h, tail);
  ReferenceBlock(h, tail + 64);
  return Hex(h);
}

std::string DigestOf(std::vector<unsigned char> const &bytes) {
  return ZQSHA1(bytes.data(), static_cast<long long>(bytes.size())).ToString(nullptr).c_str();
}

constexpr char const *ZeroText = "0000000000000000000000000000000000000000";

} // namespace

TEST(SHA1Digest, EveryLengthUpTo300MatchesSha1sumExceptThe55PendingPadding) {
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(300, 7);
  std::vector<std::string> names;
  for (int n = 0; n <= 300; ++n) {
    names.push_back(dir / std::to_string(n));
    zqtest::WriteFile(names.back(), std::vector<unsigned char>(data.begin(), data.begin() + n));
  }
  std::vector<std::string> const expected = zqtest::Sha1sumOf(names);
  ASSERT_EQ(expected.size(), names.size());
  for (int n = 0; n <= 300; ++n) {
    std::vector<unsigned char> const message(data.begin(), data.begin() + n);
    std::string const ours = DigestOf(message);
    if (n % 64 == 55) {
      EXPECT_NE(ours, expected[n]) << "length " << n;
      EXPECT_EQ(ours, TwoBlockPaddedDigest(message)) << "length " << n;
    } else {
      EXPECT_EQ(ours, expected[n]) << "length " << n;
    }
  }
}

TEST(SHA1Digest, LargeBuffersAndFilesMatchSha1sum) {
  zqtest::ScratchDirectory dir;
  for (std::size_t const size : {std::size_t(1) << 20, (std::size_t(1) << 24) + 13, std::size_t(3000017)}) {
    std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(size, static_cast<unsigned>(size));
    std::string const name = dir / "large";
    zqtest::WriteFile(name, data);
    std::string const expected = zqtest::Sha1sumOf({name}).at(0);
    EXPECT_EQ(DigestOf(data), expected) << size;
    EXPECT_EQ(ZQSHA1(nullptr, name.c_str()).ToString(nullptr), expected.c_str()) << size;
  }
}

TEST(SHA1Digest, KnownVectorsAndTheEmptyMessage) {
  EXPECT_EQ(ZQSHA1(reinterpret_cast<unsigned char const *>("abc"), 3).ToString(nullptr),
            "a9993e364706816aba3e25717850c26c9cd0d89d");
  ZQSHA1 const empty(static_cast<unsigned char const *>(nullptr), 0);
  EXPECT_EQ(empty.ToString(nullptr), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  EXPECT_TRUE(empty.IsInitialized());
  char text[41];
  std::memset(text, 'x', sizeof text);
  empty.AsString(text);
  EXPECT_STREQ(text, "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

// Both forms of the compression function against the reference, over many blocks at once.
TEST(SHA1Digest, PortableAndExtensionBlockFunctionsAgreeWithTheReference) {
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(64 * 257, 3);
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

TEST(SHA1Digest, SplitUpdatesGiveTheDigestOfTheWhole) {
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(1000, 11);
  std::string const whole = DigestOf(data);

  ZQSHA1 blockwise;
  blockwise.Initialize();
  blockwise.Update(data.data(), 128);
  blockwise.Update(data.data() + 128, 64);
  blockwise.Update(data.data() + 192, 808);
  blockwise.Finalize();
  EXPECT_EQ(blockwise.ToString(nullptr), whole.c_str());

  // Pieces that do not complete the pending block are collected until they do.
  ZQSHA1 bytewise;
  bytewise.Initialize();
  for (unsigned char const byte : data) {
    bytewise.Update(&byte, 1);
  }
  bytewise.Finalize();
  EXPECT_EQ(bytewise.ToString(nullptr), whole.c_str());
}

TEST(SHA1Digest, DefaultInitializedResetAndCopiedStates) {
  ZQSHA1 fresh;
  EXPECT_FALSE(fresh.IsInitialized());
  EXPECT_EQ(fresh.ToString(nullptr), ZeroText);
  fresh.Initialize();
  EXPECT_FALSE(fresh.IsInitialized());

  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(100, 5);
  ZQSHA1 source;
  source.Initialize();
  source.Update(data.data(), 64);
  ZQSHA1 copy(source);
  ZQSHA1 assigned;
  assigned = source;
  source.Update(data.data() + 64, 36);
  source.Finalize();
  EXPECT_EQ(source.ToString(nullptr), DigestOf(data).c_str());
  copy.Finalize();
  assigned.Finalize();
  std::string const firstBlock = DigestOf(std::vector<unsigned char>(data.begin(), data.begin() + 64));
  EXPECT_EQ(copy.ToString(nullptr), firstBlock.c_str());
  EXPECT_EQ(assigned.ToString(nullptr), firstBlock.c_str());

  assigned = assigned;
  EXPECT_EQ(assigned.ToString(nullptr), firstBlock.c_str());

  source.Reset();
  EXPECT_FALSE(source.IsInitialized());
  EXPECT_EQ(source.ToString(nullptr), ZeroText);
}

TEST(SHA1Digest, FilesByNarrowAndWideNameAndMissingFiles) {
  ZQContext context;
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(5000, 9);
  std::string const name = dir / "caf\xC3\xA9.bin";
  zqtest::WriteFile(name, data);
  std::string const expected = zqtest::Sha1sumOf({name}).at(0);
  EXPECT_EQ(ZQSHA1(&context, name.c_str()).ToString(nullptr), expected.c_str());
  std::wstring wideName;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, name.c_str(), wideName));
  EXPECT_EQ(ZQSHA1(&context, wideName.c_str()).ToString(nullptr), expected.c_str());

  std::string const emptyName = dir / "empty";
  zqtest::WriteFile(emptyName, {});
  ZQSHA1 const empty(&context, emptyName.c_str());
  EXPECT_TRUE(empty.IsInitialized());
  EXPECT_EQ(empty.ToString(nullptr), "da39a3ee5e6b4b0d3255bfef95601890afd80709");

  context.GetErrorStack().Clear();
  ZQSHA1 const missing(&context, (dir / "missing").c_str());
  EXPECT_FALSE(missing.IsInitialized());
  EXPECT_EQ(missing.ToString(nullptr), ZeroText);
  EXPECT_EQ(context.GetErrorStack().GetLastMsg(), std::strerror(ENOENT));
  ZQSHA1 const missingWithoutContext(nullptr, L"/nonexistent/dir/file");
  EXPECT_FALSE(missingWithoutContext.IsInitialized());
}

TEST(SHA1Digest, StreamsAreReadFromTheDescriptorOffsetAndReadErrorsAreNotHidden) {
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const data = zqtest::PseudoRandomBytes(3000, 13);
  std::string const name = dir / "stream";
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
  std::uint32_t zeroState[5] = {};
  unsigned char padding[64] = {0x80};
  ReferenceBlock(zeroState, padding);
  EXPECT_TRUE(failed.IsInitialized());
  EXPECT_EQ(failed.ToString(nullptr), Hex(zeroState).c_str());

  ZQSHA1 updated;
  updated.Initialize();
  updated.Update(data.data(), 64);
  updated.Update(file);
  EXPECT_FALSE(updated.IsInitialized());
  EXPECT_EQ(updated.ToString(nullptr), ZeroText);
  std::fclose(file);
}

// UTF-8 <-> wide conversion: replacement of ill-formed input, counted sources, reporting.
#include <zqcore/core/ZQContext.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

std::wstring ToWide(char const *utf8) {
  std::wstring out = L"stale";
  EXPECT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, utf8, out));
  return out;
}

std::string ToUTF8(std::wstring const &wide) {
  std::string out = "stale";
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, wide.c_str(), out));
  return out;
}

} // namespace

TEST(StringEncoding, NullSourceSucceedsAndUTF16FormsAreInert) {
  std::wstring wide = L"stale";
  std::string narrow = "stale";
  EXPECT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, nullptr, wide));
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, nullptr, 5, narrow));
  EXPECT_TRUE(wide.empty() && narrow.empty());
  EXPECT_EQ(ToWide(""), L"");
  // With a 32-bit wchar_t the UTF-16 pair only empties its output and accepts null alone.
  wide = L"stale";
  narrow = "stale";
  EXPECT_FALSE(ZQStringEncoding::UTF8ToUTF16(nullptr, "abc", wide));
  EXPECT_FALSE(ZQStringEncoding::UTF16ToUTF8(nullptr, L"abc", 3, narrow));
  EXPECT_TRUE(wide.empty() && narrow.empty());
  EXPECT_TRUE(ZQStringEncoding::UTF16ToUTF8(nullptr, nullptr, narrow));
}

TEST(StringEncoding, RoundTripsEverySequenceLengthAtEveryAlignment) {
  // é € 😀, then the first and last value of each sequence length.
  std::string const tail = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"
                           "\xF0\x90\x80\x80\xF4\x8F\xBF\xBFz";
  std::wstring const wideTail = L"\u00E9\u20AC\U0001F600\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFFz";
  for (std::size_t prefix = 0; prefix < 20; ++prefix) {
    std::string const utf8 = std::string(prefix, 'a') + tail + std::string(prefix, 'b');
    std::wstring const wide = std::wstring(prefix, L'a') + wideTail + std::wstring(prefix, L'b');
    EXPECT_EQ(ToWide(utf8.c_str()), wide) << "prefix " << prefix;
    EXPECT_EQ(ToUTF8(wide), utf8) << "prefix " << prefix;
  }
}

TEST(StringEncoding, EachMaximalIllFormedSubsequenceBecomesOneReplacementAtEveryPosition) {
  std::wstring const bad2(2, L'\uFFFD'), bad3(3, L'\uFFFD'), bad4(4, L'\uFFFD');
  // Overlong forms, encoded surrogates, values above U+10FFFF, bytes that never occur,
  // truncated sequences and stray continuation bytes; the highest scalar values pass.
  std::pair<char const *, std::wstring> const cases[] = {{"\xC0\x80", bad2},
                                                         {"\xC1\xBF", bad2},
                                                         {"\xE0\x9F\xBF", bad3},
                                                         {"\xED\xA0\x80", bad3},
                                                         {"\xF0\x8F\xBF\xBF", bad4},
                                                         {"\xF4\x90\x80\x80", bad4},
                                                         {"\xF8\x88\x80\x80", bad4},
                                                         {"\xF5\xFF", bad2},
                                                         {"\x80\xBF", bad2},
                                                         {"\xE2\x82", L"\uFFFD"},
                                                         {"\xF0\x9F\x98", L"\uFFFD"},
                                                         {"\xF1\x80\x80\xE1\x80\xC2", bad3},
                                                         {"\xC3\xC3\xA9", L"\uFFFD\u00E9"},
                                                         {"\xE2\x82\xAC\x80", L"\u20AC\uFFFD"},
                                                         {"\xF4\x8F\xBF\xBF\xEF\xBF\xBF", L"\U0010FFFF\uFFFF"}};
  std::string const valid = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"; // é € 😀
  std::wstring const validWide = L"\u00E9\u20AC\U0001F600";
  std::string const ascii(40, 'z');
  std::wstring const wideAscii(40, L'z');
  for (auto const &[bytes, expected] : cases) {
    for (std::size_t at = 0; at < 70; ++at) {
      std::string const padding(at, 'a');
      std::wstring const wide(padding.begin(), padding.end());
      EXPECT_EQ(ToWide((padding + valid + bytes + valid).c_str()), wide + validWide + expected + validWide) << at;
      EXPECT_EQ(ToWide((padding + bytes + ascii).c_str()), wide + expected + wideAscii) << at;
      EXPECT_EQ(ToWide((padding + bytes).c_str()), wide + expected) << at;
    }
  }
}

TEST(StringEncoding, WideValuesThatAreNoScalarValuesBecomeReplacements) {
  std::wstring const invalid = {L'a',
                                static_cast<wchar_t>(0xD800),
                                static_cast<wchar_t>(0xDFFF),
                                static_cast<wchar_t>(-1),
                                static_cast<wchar_t>(0x110000),
                                L'b'};
  EXPECT_EQ(ToUTF8(invalid), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
                             "b");
}

TEST(StringEncoding, CountedSourceIsCutAtItsFirstTerminator) {
  wchar_t const source[] = {L'a', L'\u00E9', L'\0', L'b', L'\0'};
  std::string out;
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, source, 4, out));
  EXPECT_EQ(out, "a\xC3\xA9");
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, L"abc", 2, out));
  EXPECT_EQ(out, "ab");
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, L"abc", -1, out));
  EXPECT_EQ(out, "abc");
}

TEST(StringEncoding, CountOfZeroOrBelowFailsAndReportsUnlessTheSourceIsEmpty) {
  ZQContext context;
  ZQErrorStack &stack = context.GetErrorStack();
  std::string out = "stale";
  EXPECT_TRUE(ZQStringEncoding::WideToUTF8(&context, L"", 0, out));
  EXPECT_EQ(stack.GetNMsg(), 0);

  out = "stale";
  EXPECT_FALSE(ZQStringEncoding::WideToUTF8(&context, L"abc", 0, out));
  EXPECT_TRUE(out.empty());
  EXPECT_FALSE(ZQStringEncoding::WideToUTF8(&context, L"abc", -2, out));
  ASSERT_EQ(stack.GetNMsg(), 2);
  EXPECT_STREQ(stack.GetLastMsg().c_str(), std::strerror(EINVAL));
}

// Untrusted input: random bytes through the conversions, the parsers and the expansion,
// and random valid text checked against the C runtime's own UTF-8 conversion.
#include <zqcore/strings/ZQLocale.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// Random bytes, rich in the bytes that the parsers and the expansion react to.
std::string RandomText(std::mt19937 &random) {
  static constexpr char kSpecial[] = "$%{}()0123456789.eE+-nafiNAFI \t";
  std::uniform_int_distribution<int> length(0, 40);
  std::uniform_int_distribution<int> kind(0, 2);
  std::uniform_int_distribution<int> anyByte(1, 255);
  std::uniform_int_distribution<std::size_t> special(0, sizeof kSpecial - 2);
  std::string text(static_cast<std::size_t>(length(random)), ' ');
  for (char &c : text) {
    c = kind(random) == 0 ? static_cast<char>(anyByte(random)) : kSpecial[special(random)];
  }
  return text;
}

bool IsScalarValue(wchar_t unit) {
  return unit >= 0 && unit <= 0x10FFFF && (unit < 0xD800 || unit > 0xDFFF);
}

} // namespace

TEST(RandomBytes, ConversionsGiveScalarValuesAndStableRoundTrips) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 5000; ++round) {
    std::string const text = RandomText(random);
    std::wstring wide;
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, text.c_str(), wide));
    for (wchar_t unit : wide) ASSERT_TRUE(IsScalarValue(unit));
    std::string back;
    ASSERT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, wide.c_str(), back));
    std::wstring again;
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, back.c_str(), again));
    ASSERT_EQ(again, wide);
  }
}

TEST(RandomBytes, ParsersReturnTheSentinelWheneverTheyFail) {
  std::mt19937 random(7);
  for (int round = 0; round < 5000; ++round) {
    ZQString const text(RandomText(random).c_str());
    bool failed = false;
    int const int32 = text.AsInt32(failed);
    EXPECT_TRUE(!failed || int32 == std::numeric_limits<int>::max());
    long long const int64 = text.AsInt64(failed);
    EXPECT_TRUE(!failed || int64 == std::numeric_limits<long long>::max());
    double const streamed = text.AsFloat64(failed, false);
    EXPECT_TRUE(!failed || streamed == std::numeric_limits<double>::max());
    double const scanned = text.AsFloat64(failed, true);
    EXPECT_TRUE(!failed || scanned == std::numeric_limits<double>::max());
  }
}

TEST(RandomBytes, ExpansionLeavesTextsWithoutVariablesAlone) {
  setenv("ZQT_R", "r", 1);
  std::mt19937 random(99);
  for (int round = 0; round < 5000; ++round) {
    std::string const text = RandomText(random);
    ZQString expanded(text.c_str());
    expanded.ExpandEnvironVars(true);
    if (text.find_first_of("$%") == std::string::npos) {
      EXPECT_EQ(expanded, text.c_str());
    }
  }
  // A long text of openers without an end costs no look-up per byte and position.
  ZQString openers(std::string(200000, '$').c_str());
  EXPECT_EQ(openers.ExpandEnvironVars(false).Size(), 200000);
  unsetenv("ZQT_R");
}

TEST(RandomBytes, ValidTextConvertsAsTheRuntimeConvertsIt) {
  ZQLocale guard(LC_CTYPE, "C.UTF-8");
  std::mt19937 random(3);
  std::uniform_int_distribution<int> plane(0, 3);
  for (int round = 0; round < 2000; ++round) {
    std::wstring wide;
    for (int i = 0; i < 30; ++i) {
      static constexpr wchar_t kTop[] = {0x7F, 0x7FF, 0xFFFF, 0x10FFFF};
      wchar_t unit = std::uniform_int_distribution<wchar_t>(1, kTop[plane(random)])(random);
      wide += IsScalarValue(unit) ? unit : L'x';
    }
    std::string expected(wide.size() * 4 + 1, '\0');
    expected.resize(std::wcstombs(expected.data(), wide.c_str(), expected.size()));
    std::string narrow;
    ASSERT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, wide.c_str(), narrow));
    ASSERT_EQ(narrow, expected);
    std::wstring back;
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, narrow.c_str(), back));
    ASSERT_EQ(back, wide);
  }
}

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
  std::string text(random() % 41, ' ');
  for (char &c : text) {
    c = random() % 3 == 0 ? static_cast<char>(1 + random() % 255) : kSpecial[random() % (sizeof kSpecial - 1)];
  }
  return text;
}

bool IsScalarValue(wchar_t unit) { return unit >= 0 && unit <= 0x10FFFF && (unit < 0xD800 || unit > 0xDFFF); }

} // namespace

TEST(RandomBytes, ConversionsParsersAndExpansionTakeAnyBytes) {
  std::mt19937 random(20240611);
  for (int round = 0; round < 5000; ++round) {
    std::string const text = RandomText(random);
    // Conversions give scalar values only, and a second round trip changes nothing.
    std::wstring wide, again;
    std::string back;
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, text.c_str(), wide));
    for (wchar_t unit : wide)
      ASSERT_TRUE(IsScalarValue(unit));
    ASSERT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, wide.c_str(), back));
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, back.c_str(), again));
    ASSERT_EQ(again, wide);

    // Parsers return their sentinel whenever they fail.
    ZQString subject(text.c_str());
    bool failed = false;
    auto const sentinelIfFailed = [&failed](auto value, auto sentinel) { EXPECT_TRUE(!failed || value == sentinel); };
    sentinelIfFailed(subject.AsInt32(failed), std::numeric_limits<int>::max());
    sentinelIfFailed(subject.AsInt64(failed), std::numeric_limits<long long>::max());
    sentinelIfFailed(subject.AsFloat64(failed, false), std::numeric_limits<double>::max());
    sentinelIfFailed(subject.AsFloat64(failed, true), std::numeric_limits<double>::max());

    // Expansion leaves texts without variables alone.
    subject.ExpandEnvironVars(true);
    if (text.find_first_of("$%") == std::string::npos) {
      EXPECT_EQ(subject, text.c_str());
    }
  }
  // A long text of openers without an end costs no look-up per byte and position.
  ZQString openers(std::string(200000, '$').c_str());
  EXPECT_EQ(openers.ExpandEnvironVars(false).Size(), 200000);
}

TEST(RandomBytes, ValidTextConvertsAsTheRuntimeConvertsIt) {
  ZQLocale guard(LC_CTYPE, "C.UTF-8");
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    std::wstring wide;
    for (int i = 0; i < 30; ++i) {
      // Every bit length of a scalar value equally often.
      unsigned const bits = 1 + random() % 21;
      auto const unit = static_cast<wchar_t>(random() % (1u << bits) % 0x110000);
      wide += unit != 0 && IsScalarValue(unit) ? unit : L'x';
    }
    std::string expected(wide.size() * 4 + 1, '\0');
    expected.resize(std::wcstombs(expected.data(), wide.c_str(), expected.size()));
    std::string narrow;
    std::wstring back;
    ASSERT_TRUE(ZQStringEncoding::WideToUTF8(nullptr, wide.c_str(), narrow));
    ASSERT_EQ(narrow, expected);
    ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, narrow.c_str(), back));
    ASSERT_EQ(back, wide);
  }
}

// ZQString parsers: booleans by size, integers with sentinels, floats with and without the scanner.
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// The value and the failure flag of one parse; the floating parsers also take `useScanner`.
template <typename T, typename... Scanner>
std::pair<T, bool> Parsed(T (ZQString::*parse)(bool &, Scanner...) const, char const *text, Scanner... useScanner) {
  bool failed = false;
  T const value = (ZQString(text).*parse)(failed, useScanner...);
  return {value, failed};
}

constexpr double kMax64 = std::numeric_limits<double>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();

} // namespace

TEST(StringBoolean, DecidesBySizeFirst) {
  for (char const *text : {"", "0", "no", "so", "nb", "hello", "FALSE", "  no  ", " 0 ", "\tFalse\n"}) {
    EXPECT_FALSE(ZQString(text).AsBoolean()) << '"' << text << '"';
  }
  for (char const *text : {"n", "f", "ok", "truex", "  No ", "nope", "yes", "1"}) {
    EXPECT_TRUE(ZQString(text).AsBoolean()) << '"' << text << '"';
  }
}

TEST(StringIntegers, IgnoreTrailingTextAndFailOutsideTheirType) {
  EXPECT_EQ(Parsed(&ZQString::AsInt32, "12abc"), std::make_pair(12, false));
  EXPECT_EQ(Parsed(&ZQString::AsInt16, "  -7"), std::make_pair(short(-7), false));
  EXPECT_EQ(Parsed(&ZQString::AsInt32, "abc"), std::make_pair(2147483647, true));
  EXPECT_EQ(Parsed(&ZQString::AsInt8, ""), std::make_pair<signed char>(127, true));
  // strtol reads 64 bits here; the 32-bit parser must still refuse what does not fit.
  EXPECT_EQ(Parsed(&ZQString::AsInt32, "2147483648"), std::make_pair(2147483647, true));
  EXPECT_EQ(Parsed(&ZQString::AsInt32, "-2147483648"), std::make_pair(-2147483647 - 1, false));
  EXPECT_EQ(Parsed(&ZQString::AsInt32, "99999999999999999999"), std::make_pair(2147483647, true));
  EXPECT_EQ(Parsed(&ZQString::AsInt8, "128"), std::make_pair<signed char>(127, true));
  EXPECT_EQ(Parsed(&ZQString::AsInt8, "127"), std::make_pair<signed char>(127, false));
  EXPECT_EQ(Parsed(&ZQString::AsInt16, "40000"), std::make_pair(short(32767), true));
  // The 64-bit forms use the scanner.
  EXPECT_EQ(Parsed(&ZQString::AsInt64, " -9223372036854775807x"), std::make_pair(-9223372036854775807LL, false));
  EXPECT_EQ(Parsed(&ZQString::AsSSize, "x1"), std::make_pair(9223372036854775807LL, true));
}

TEST(StringFloats, StreamParseIgnoresTrailingTextAndFailsOnIncompleteNumbers) {
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, "1.5abc", false), std::make_pair(1.5, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, " \t-.5e1,", false), std::make_pair(-5.0, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, "0x1p3", false), std::make_pair(0.0, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, "1e-999", false), std::make_pair(0.0, false));
  for (char const *text : {"", "1e", "1e+", ".", "-", "+inf", "e5", "1e999", "-1e999"}) {
    EXPECT_EQ(Parsed(&ZQString::AsFloat64, text, false), std::make_pair(kMax64, true)) << '"' << text << '"';
  }
}

TEST(StringFloats, NanAndInfinitiesAreRecognisedAfterAFailedParse) {
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, " -INF ", false), std::make_pair(-kInf, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat64, "inf", true), std::make_pair(kInf, false));
  bool failed = true;
  EXPECT_TRUE(std::isnan(ZQString("NaN").AsFloat32(failed, false)));
  EXPECT_FALSE(failed);
}

TEST(StringFloats, SinglePrecisionRoundsOnceAndFailsBeyondItsRange) {
  float const max = std::numeric_limits<float>::max();
  EXPECT_EQ(Parsed(&ZQString::AsFloat32, "0.1", false), std::make_pair(0.1f, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat32, "3.4028234e38", false), std::make_pair(max, false));
  EXPECT_EQ(Parsed(&ZQString::AsFloat32, "1e39", false), std::make_pair(max, true));
  EXPECT_EQ(Parsed(&ZQString::AsFloat32, "  2.5", true), std::make_pair(2.5f, false));
}

// The scoped locale guard, and number text that does not follow the current locale.
#include <zqcore/strings/ZQLocale.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

std::string Numeric() { return std::setlocale(LC_NUMERIC, nullptr); }

// A locale with a decimal comma, built for the tests where localedef is available.
constexpr char kCommaLocale[] = "de_DE.UTF-8";

} // namespace

TEST(Locale, GuardSetsTheCategoryForItsLifetimeAndRefusalsChangeNothing) {
  ASSERT_EQ(Numeric(), "C");
  {
    ZQLocale guard(LC_NUMERIC, "C.UTF-8");
    EXPECT_EQ(Numeric(), "C.UTF-8");
    ZQLocale unknownCategory(12345, "C");
    ZQLocale unknownLocale(LC_NUMERIC, "no_such_locale");
    EXPECT_EQ(Numeric(), "C.UTF-8");
  }
  EXPECT_EQ(Numeric(), "C");
  {
    ZQLocale everything;
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
}

TEST(Locale, EveryCopyRestoresOnceAndResetForgets) {
  ZQLocale original(LC_NUMERIC, "C.UTF-8");
  { ZQLocale copy(original); }
  EXPECT_EQ(Numeric(), "C");
  std::setlocale(LC_NUMERIC, "C.UTF-8");
  original = original;
  original.Restore();
  EXPECT_EQ(Numeric(), "C");
  std::setlocale(LC_NUMERIC, "C.UTF-8");
  original.Restore(); // a second restore does nothing
  EXPECT_EQ(Numeric(), "C.UTF-8");

  ZQLocale forgotten(LC_NUMERIC, "C");
  forgotten.Reset();
  forgotten.Restore();
  EXPECT_EQ(Numeric(), "C");
}

TEST(Locale, OwnNumberTextIgnoresTheCurrentLocaleButFormatsFollowIt) {
  ZQLocale guard(LC_NUMERIC, kCommaLocale);
  if (Numeric() != kCommaLocale) {
    GTEST_SKIP() << kCommaLocale << " is not available";
  }
  ZQString text;
  text.Add(1.5);
  text += ' ';
  text.Add(1.5, nullptr);
  EXPECT_STREQ(text.c_str(), "1.5 1,5");
  bool failed = true;
  EXPECT_EQ(ZQString("2.25").AsFloat64(failed, false), 2.25);
  EXPECT_EQ(ZQString("2,25").AsFloat64(failed, false), 2.0);
  EXPECT_EQ(ZQString("2,25").AsFloat64(failed, true), 2.25);
}

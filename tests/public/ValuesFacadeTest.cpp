// Public Color, UnitsConverter, Variant and StringUtil: independent copies, public types
// passed down to the inner objects, and results and texts brought back up.
#include <zqcore/core/Types.h>
#include <zqcore/geometry/ZQVector.h>
#include <zqcore/public/Color.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/ErrorStack.h>
#include <zqcore/public/Float64Array.h>
#include <zqcore/public/Int64Array.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/StringArray.h>
#include <zqcore/public/StringUtil.h>
#include <zqcore/public/UnitsConverter.h>
#include <zqcore/public/Variant.h>

#include <gtest/gtest.h>

using namespace Velmora::Tessara::ZQ::Core;

TEST(PublicColor, CopiesOwnTheirInnerColor) {
  Color a;
  Color b(a);
  EXPECT_NE(a.GetColor(), b.GetColor());
  EXPECT_TRUE(a.InitializeRGBA8(String("(1, 2, 3)"), nullptr).OK());
  EXPECT_FALSE(b.IsInitialized());
  b = a;
  EXPECT_EQ(b.Compare(a), 0);
  EXPECT_STREQ(b.ToString(nullptr).c_str(), "(1, 2, 3, 255)");
  a.Reset();
  EXPECT_TRUE(b.IsInitialized());
}

TEST(PublicColor, ParseFailuresReachThePublicErrorStack) {
  Context context;
  Color color;
  EXPECT_EQ(color.InitializeRGBA8(String("1, 2"), &context).GetStatusCode(),
            static_cast<long long>(Types::StatusCode_t::ColorInitializationError));
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(),
               "wrong number of values (=2) parsed, color can not be parsed.");
}

TEST(PublicUnitsConverter, ForwardsNamesAndTheContext) {
  Context context;
  UnitsConverter converter(&context);
  double factor = 0;
  double offset = 1;
  EXPECT_TRUE(converter.GetConversionData(String("[FT]"), String("in"), factor, offset).OK());
  EXPECT_EQ(factor, 0.3048 * 39.37007874015748);
  EXPECT_FALSE(converter.IsTimeUnit(String("m")));
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(),
               "sorry, unknown units encountered, query of conversion data from 'm' to 'sec' failed.");

  UnitsConverter copy(converter);
  EXPECT_FALSE(copy.IsTimeUnit("km"));
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 1);

  String units(" [Mm] ");
  UnitsConverter::StripBracketsInPlace(units);
  EXPECT_STREQ(units.c_str(), "Mm");
  EXPECT_STREQ(UnitsConverter::StripBrackets(L"[s]").c_str(), "s");
}

TEST(PublicVariant, TakesPublicArraysAndGivesBackIndependentCopies) {
  Float64Array lengths(2);
  lengths.Set(0, 1.5);
  lengths.Set(1, 2);
  Variant variant(lengths, String("m"));
  lengths.Set(0, 99);
  EXPECT_STREQ(variant.ToString(nullptr).c_str(), "(1.5, 2) m");

  EXPECT_TRUE(variant.ConvertToUnits(String("mm"), nullptr).OK());
  Float64Array back;
  String units;
  EXPECT_TRUE(variant.GetFloatingPointArray(back, units).OK());
  EXPECT_EQ(back.Size(), 2);
  EXPECT_EQ(back.Get(0), 1500);
  EXPECT_STREQ(units.c_str(), "m");

  Variant copy(variant);
  EXPECT_NE(copy.GetVariant(), variant.GetVariant());
  copy.Reset();
  EXPECT_TRUE(variant.IsInitialized());

  StringArray texts(1);
  texts.Set(0, String("7"));
  Int64Array integers;
  EXPECT_TRUE(Variant(texts).GetIntegerArray(integers).OK());
  EXPECT_EQ(integers.Get(0), 7);
}

TEST(PublicVariant, ScalarsColorsAndVectorsRoundTrip) {
  Context context;
  Variant length(String("25.4 mm"));
  EXPECT_TRUE(length.ConvertToUnits(String("in"), &context).OK());
  double inches = 0;
  EXPECT_TRUE(length.GetFloatingPoint(inches).OK());
  EXPECT_DOUBLE_EQ(inches, 1);
  EXPECT_EQ(length.SetUnits(String("cubit"), &context).GetStatusCode(),
            static_cast<long long>(Types::StatusCode_t::VariantBadUnitsError));
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 1);

  Color red;
  red.InitializeRGBA8(255, 0, 0, 255);
  Variant colored(red);
  Color back;
  EXPECT_TRUE(colored.GetColor(back).OK());
  EXPECT_EQ(back.Compare(red), 0);

  ZQVector<double, 3> translation;
  translation[1] = 4;
  Variant moved(translation, String("cm"));
  EXPECT_STREQ(moved.ToString(nullptr).c_str(), "(0, 4, 0) cm");
}

TEST(PublicStringUtil, ForwardsIndentAndTitles) {
  EXPECT_STREQ(StringUtil::GetIndent().c_str(), "    ");
  EXPECT_STREQ(StringUtil::ToTitleString(String("T"), String("n")).c_str(), "======== T 'n' ========");
  EXPECT_STREQ(StringUtil::ToTitleString(String("")).c_str(), "");
}

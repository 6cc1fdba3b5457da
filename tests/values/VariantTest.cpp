// ZQVariant: kinds, conversions on reading, units, comparison and text.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/geometry/ZQVector.h>
#include <zqcore/values/ZQColor.h>
#include <zqcore/values/ZQVariant.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Kind = Types::VariantType_t;
using S = Types::StatusCode_t;

long long Code(S status) { return static_cast<long long>(status); }

ZQVariant::StringArray Texts(std::initializer_list<char const *> texts) {
  ZQVariant::StringArray array;
  array.Resize(static_cast<long long>(texts.size()));
  long long i = 0;
  for (char const *text : texts) {
    array(i++) = ZQString(text);
  }
  return array;
}

ZQVariant Doubles(std::initializer_list<double> values, char const *units = "") {
  return ZQVariant(values.begin(), static_cast<long long>(values.size()), ZQString(units));
}

ZQVariant Integers(std::initializer_list<long long> values) {
  return ZQVariant(values.begin(), static_cast<long long>(values.size()));
}

ZQVariant Custom(void const *pointer) {
  ZQVariant variant;
  variant.SetCustomData(pointer);
  return variant;
}

ZQVariant Red() {
  ZQColor color;
  color.InitializeRGBA8(255, 0, 0, 255);
  return ZQVariant(color);
}

// A 2 x 2 array, in storage reserved for 3 x 3 when asked, so that rows leave gaps.
ZQVariant::FloatingPointArray Grid(std::initializer_list<double> values, bool withGaps = false) {
  ZQVariant::FloatingPointArray grid;
  if (withGaps) {
    grid.Reserve(3, 3);
  }
  grid.Resize(2, 2);
  long long i = 0;
  for (double value : values) {
    grid(i / 2, i % 2) = value;
    ++i;
  }
  return grid;
}

std::string Text(ZQVariant const &variant) { return variant.ToString(nullptr).c_str(); }

std::string Units(ZQVariant const &variant) {
  ZQString units;
  variant.GetUnits(units);
  return units.c_str();
}

int dummy = 0;

} // namespace

TEST(VariantKinds, EachKindReadsAsIntegerOrFailsWithItsStatus) {
  struct Case {
    char const *name;
    ZQVariant variant;
    long long status;
    long long value;
  };
  Case const cases[] = {
      {"undefined", ZQVariant(), Code(S::VariantNotInitializedError), LLONG_MAX},
      {"integer", ZQVariant(42LL), 0, 42},
      {"double 3.0", ZQVariant(3.0), 0, 3},
      {"double 3.5", ZQVariant(3.5), Code(S::VariantImplicitTypeConversionError), LLONG_MAX},
      {"double -3.5", ZQVariant(-3.5), 0, -3},
      {"double nan", ZQVariant(std::nan("")), Code(S::VariantImplicitTypeConversionError), LLONG_MAX},
      {"double 1e300", ZQVariant(1e300), Code(S::VariantImplicitTypeConversionError), LLONG_MAX},
      {"string", ZQVariant(ZQString("-17")), 0, -17},
      {"bad string", ZQVariant(ZQString("x")), Code(S::VariantImplicitTypeConversionError), LLONG_MAX},
      {"color", Red(), Code(S::VariantColorTypeConversionError), LLONG_MAX},
      {"one integer", Integers({9}), 0, 9},
      {"two integers", Integers({9, 8}), Code(S::VariantIntegerArrayTypeConversionError), LLONG_MAX},
      {"one double", Doubles({-2.0}), 0, -2},
      {"two doubles", Doubles({1, 2}), Code(S::VariantIntegerArrayTypeConversionError), LLONG_MAX},
      {"one text", ZQVariant(Texts({"12"})), 0, 12},
      {"one bad text", ZQVariant(Texts({"z"})), Code(S::VariantImplicitTypeConversionError), LLONG_MAX},
      {"two texts", ZQVariant(Texts({"1", "2"})), Code(S::VariantIntegerArrayTypeConversionError), LLONG_MAX},
      {"custom", Custom(&dummy), Code(S::VariantCustomTypeConversionError), LLONG_MAX},
  };
  for (Case const &c : cases) {
    long long value = 0;
    EXPECT_EQ(c.variant.GetInteger(value).GetStatusCode(), c.status) << c.name;
    EXPECT_EQ(value, c.value) << c.name;
  }
}

TEST(VariantKinds, EachKindReadsAsDoubleColorAndText) {
  struct Case {
    char const *name;
    ZQVariant variant;
    long long doubleStatus;
    double value;
    long long colorStatus;
    char const *text;
  };
  Case const cases[] = {
      {"undefined", ZQVariant(), Code(S::VariantNotInitializedError), DBL_MAX, Code(S::VariantNotInitializedError),
       "<not initialized>"},
      {"integer", ZQVariant(7LL, ZQString("mm")), 0, 7, Code(S::VariantIntegerTypeConversionError), "7 mm"},
      {"double", ZQVariant(0.1), 0, 0.1, Code(S::VariantFloatingPointTypeConversionError), "0.1"},
      {"string", ZQVariant(ZQString("2.5e1")), 0, 25, Code(S::ColorInitializationError), "2.5e1"},
      {"color text", ZQVariant(ZQString("(1,2,3)")), Code(S::VariantImplicitTypeConversionError), DBL_MAX, 0,
       "(1,2,3)"},
      {"color", Red(), Code(S::VariantColorTypeConversionError), DBL_MAX, 0, "(255, 0, 0, 255)"},
      {"integers", Integers({1, 2}), Code(S::VariantIntegerArrayTypeConversionError), DBL_MAX,
       Code(S::VariantIntegerArrayTypeConversionError), "(1, 2)"},
      {"one integer", Integers({5}), 0, 5, Code(S::VariantIntegerArrayTypeConversionError), "(5,)"},
      {"doubles", Doubles({1, 2}, "m"), Code(S::VariantIntegerArrayTypeConversionError), DBL_MAX,
       Code(S::VariantFloatingPointArrayTypeConversionError), "(1, 2) m"},
      {"texts", ZQVariant(Texts({"a", "b c"})), Code(S::VariantIntegerArrayTypeConversionError), DBL_MAX,
       Code(S::VariantStringArrayTypeConversionError), "(\"a\", \"b c\")"},
      {"one text", ZQVariant(Texts({"0.5"})), 0, 0.5, Code(S::VariantStringArrayTypeConversionError), "(\"0.5\",)"},
      {"custom", Custom(&dummy), Code(S::VariantCustomTypeConversionError), DBL_MAX,
       Code(S::VariantCustomTypeConversionError), "<custom data pointer>"},
  };
  for (Case const &c : cases) {
    double value = 0;
    ZQColor color;
    EXPECT_EQ(c.variant.GetFloatingPoint(value).GetStatusCode(), c.doubleStatus) << c.name;
    EXPECT_EQ(value, c.value) << c.name;
    EXPECT_EQ(c.variant.GetColor(color).GetStatusCode(), c.colorStatus) << c.name;
    EXPECT_EQ(Text(c.variant), c.text) << c.name;
  }
}

TEST(VariantKinds, FailedTextLeavesTheOutputEmpty) {
  ZQString text("stale");
  ZQString units("stale");
  EXPECT_EQ(Custom(&dummy).GetString(text, units).GetStatusCode(), Code(S::VariantCustomTypeConversionError));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_TRUE(units.IsEmpty());
  ZQVariant undefinedWithUnits;
  undefinedWithUnits.SetUnits(ZQString("m"), nullptr);
  text = "stale";
  EXPECT_EQ(undefinedWithUnits.GetString(text).GetStatusCode(), Code(S::VariantNotInitializedError));
  EXPECT_TRUE(text.IsEmpty());
}

TEST(VariantKinds, NarrowIntegersKeepTheNarrowedValueWhenTheyFail) {
  ZQVariant variant(300LL);
  signed char small = 0;
  EXPECT_EQ(variant.GetInteger(small).GetStatusCode(), Code(S::VariantImplicitTypeConversionError));
  EXPECT_EQ(small, 44);
  int medium = 0;
  EXPECT_TRUE(variant.GetInteger(medium).OK());
  EXPECT_EQ(medium, 300);
  variant.SetInteger(1LL << 40);
  EXPECT_EQ(variant.GetInteger(medium).GetStatusCode(), Code(S::VariantImplicitTypeConversionError));
}

TEST(VariantString, SplitsTrailingUnitsOnlyWithoutAnExplicitUnitsArgument) {
  ZQVariant variant(ZQString("  abc  "));
  EXPECT_EQ(Text(variant), "abc");
  EXPECT_FALSE(variant.HasUnits());

  EXPECT_TRUE(variant.SetString(ZQString("12\tmm")).OK());
  ZQString value;
  ZQString units;
  EXPECT_TRUE(variant.GetString(value, units).OK());
  EXPECT_STREQ(value.c_str(), "12");
  EXPECT_STREQ(units.c_str(), "mm");

  EXPECT_EQ(variant.SetString(ZQString("1 2")).GetStatusCode(), Code(S::VariantBadUnitsError));
  EXPECT_EQ(Text(variant), "1 2");

  EXPECT_TRUE(variant.SetString(ZQString("a b"), ZQString("")).OK());
  EXPECT_EQ(Text(variant), "a b");
}

TEST(VariantUnits, AreNormalisedCheckedAndKeptEvenWhenUnknown) {
  ZQContext context;
  ZQVariant variant(2.5, ZQString("m"));
  EXPECT_TRUE(variant.HasUnits());
  variant.SetFloatingPoint(2.5);
  EXPECT_FALSE(variant.HasUnits());

  EXPECT_TRUE(variant.SetUnits(ZQString(" [MM] "), &context).OK());
  EXPECT_EQ(Units(variant), "MM");
  EXPECT_EQ(variant.SetUnits(ZQString("furlong"), &context).GetStatusCode(), Code(S::VariantBadUnitsError));
  EXPECT_EQ(Units(variant), "furlong");
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(),
               "sorry, unknown units encountered, query of conversion data for 'furlong' failed.");

  ZQVariant constructed(1.0, ZQString("parsec"));
  EXPECT_EQ(Units(constructed), "parsec");
  EXPECT_EQ(constructed.SetFloatingPoint(1.0, ZQString("parsec")).GetStatusCode(), Code(S::VariantBadUnitsError));
}

TEST(VariantUnits, ConvertNumbersStringsAndArrays) {
  ZQVariant length(ZQString("12 mm"));
  double value = 0;
  EXPECT_TRUE(length.ConvertToUnits(ZQString("[m]"), nullptr).OK());
  EXPECT_EQ(length.GetType(), Kind::FloatingPoint);
  length.GetFloatingPoint(value);
  EXPECT_EQ(value, 12 * 0.001);
  EXPECT_EQ(Units(length), "m");

  ZQVariant count(3LL, ZQString("m"));
  EXPECT_TRUE(count.ConvertToUnits(ZQString("m"), nullptr).OK());
  EXPECT_EQ(count.GetType(), Kind::FloatingPoint);

  // Double arrays alone keep their old unit text on the converted numbers.
  ZQVariant doubles = Doubles({1, 2}, "m");
  EXPECT_TRUE(doubles.ConvertToUnits(ZQString("mm"), nullptr).OK());
  EXPECT_EQ(Text(doubles), "(1000, 2000) m");

  ZQVariant texts(Texts({"1", "2"}), ZQString("in"));
  EXPECT_TRUE(texts.ConvertToUnits(ZQString("m"), nullptr).OK());
  EXPECT_EQ(texts.GetType(), Kind::FloatingPointArray);
  EXPECT_EQ(Text(texts), "(0.0254, 0.0508) m");

  long long const raw[] = {1, 2};
  ZQVariant integers(raw, 2, ZQString("km"));
  EXPECT_TRUE(integers.ConvertToUnits(ZQString("m"), nullptr).OK());
  EXPECT_EQ(Text(integers), "(1000, 2000) m");
}

TEST(VariantUnits, ConversionRefusals) {
  ZQContext context;
  ZQVariant unitless(1.0);
  EXPECT_EQ(unitless.ConvertToUnits(ZQString("m"), &context).GetStatusCode(), Code(S::VariantUnitsConversionError));
  EXPECT_TRUE(context.GetErrorStack().IsEmpty());
  EXPECT_TRUE(unitless.ConvertToUnits(ZQString(" "), &context).OK());

  ZQVariant seconds(1.0, ZQString("sec"));
  EXPECT_EQ(seconds.ConvertToUnits(ZQString("m"), &context).GetStatusCode(), Code(S::VariantUnitsConversionError));
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(),
               "sorry, unknown units encountered, query of conversion data from 'sec' to 'm' failed.");
  EXPECT_EQ(Units(seconds), "sec");

  ZQVariant text(ZQString("abc"), ZQString("m"));
  EXPECT_EQ(text.ConvertToUnits(ZQString("mm"), nullptr).GetStatusCode(), Code(S::VariantImplicitTypeConversionError));
  EXPECT_EQ(Red().ConvertToUnits(ZQString("m"), nullptr).GetStatusCode(), Code(S::VariantColorTypeConversionError));
  EXPECT_EQ(ZQVariant().ConvertToUnits(ZQString("m"), nullptr).GetStatusCode(), Code(S::VariantNotInitializedError));
}

TEST(VariantArrays, ReadBackAsNewArraysOfTheSameShape) {
  ZQVariant::FloatingPointArray grid = Grid({1, 2, 3, 4.5});
  ZQVariant variant(grid);
  grid(0, 0) = 99;

  ZQVariant::FloatingPointArray copy;
  EXPECT_TRUE(variant.GetFloatingPointArray(copy).OK());
  EXPECT_EQ(copy.GetRank(), 2);
  EXPECT_EQ(copy(0, 0), 1);
  copy(0, 1) = -1;
  EXPECT_EQ(Text(variant), "(1, 2, 3, 4.5)");

  ZQVariant::IntegerArray integers;
  EXPECT_EQ(variant.GetIntegerArray(integers).GetStatusCode(), Code(S::VariantStringTypeConversionError));
  EXPECT_FALSE(integers.IsInitialized());

  ZQVariant::StringArray texts;
  EXPECT_TRUE(variant.GetStringArray(texts).OK());
  EXPECT_EQ(texts.GetRank(), 2);
  EXPECT_STREQ(texts(1, 1).c_str(), "4.5");

  long long size = 0;
  EXPECT_TRUE(variant.GetFloatingPointArraySize(size).OK());
  EXPECT_EQ(size, 4);
}

TEST(VariantArrays, CapacityGapsAreSkippedInEveryWalk) {
  ZQVariant variant(Grid({1, 2, 3, 4}, true), ZQString("m"));
  EXPECT_EQ(Text(variant), "(1, 2, 3, 4) m");

  ZQVariant::IntegerArray integers;
  EXPECT_TRUE(variant.GetIntegerArray(integers).OK());
  EXPECT_EQ(integers.GetSize(1), 2);
  EXPECT_EQ(integers(1, 0), 3);
  double buffer[4] = {};
  long long room = 4;
  EXPECT_TRUE(variant.GetFloatingPointArray(room, buffer).OK());
  EXPECT_EQ(buffer[2], 3);

  EXPECT_TRUE(variant.ConvertToUnits(ZQString("cm"), nullptr).OK());
  EXPECT_EQ(Text(variant), "(100, 200, 300, 400) m");
  EXPECT_EQ(variant.Compare(ZQVariant(Grid({100, 200, 300, 400}), ZQString("m"))), 0);
}

TEST(VariantArrays, BufferAndVectorFormsRespectTheRoom) {
  ZQVariant variant = Integers({4, 5});
  long long buffer[3] = {0, 0, 0};
  long long room = 1;
  EXPECT_EQ(variant.GetIntegerArray(room, buffer).GetStatusCode(), Code(S::ArrayTooSmallError));
  EXPECT_EQ(room, 1);
  room = 3;
  EXPECT_TRUE(variant.GetIntegerArray(room, buffer).OK());
  EXPECT_EQ(room, 2);
  EXPECT_EQ(buffer[1], 5);

  ZQVector<double, 3> vector;
  vector[2] = 7;
  EXPECT_TRUE(variant.GetFloatingPointArray(vector).OK());
  EXPECT_EQ(vector[0], 4);
  EXPECT_EQ(vector[2], 0);
  EXPECT_EQ(Doubles({1, 2, 3, 4}).GetFloatingPointArray(vector).GetStatusCode(), Code(S::ArrayTooSmallError));

  ZQVector<double, 3> translation;
  translation[2] = 3;
  ZQVariant moved(translation, ZQString("mm"));
  ZQString units;
  ZQVector<double, 3> back;
  EXPECT_TRUE(moved.GetFloatingPointArray(back, units).OK());
  EXPECT_EQ(back[2], 3);
  EXPECT_STREQ(units.c_str(), "mm");
}

TEST(VariantArrays, ScalarsAndTextsConvertElementWise) {
  ZQVariant::IntegerArray integers;
  EXPECT_TRUE(ZQVariant(6.0).GetIntegerArray(integers).OK());
  EXPECT_EQ(integers.Size(), 1);
  EXPECT_EQ(ZQVariant(ZQString("6")).GetIntegerArray(integers).GetStatusCode(),
            Code(S::VariantStringTypeConversionError));
  ZQVariant::FloatingPointArray doubles;
  EXPECT_EQ(ZQVariant(ZQString("6")).GetFloatingPointArray(doubles).GetStatusCode(),
            Code(S::VariantStringTypeConversionError));
  EXPECT_EQ(ZQVariant(Texts({"1", "x"})).GetFloatingPointArray(doubles).GetStatusCode(),
            Code(S::VariantStringArrayTypeConversionError));

  ZQVariant parsed;
  EXPECT_TRUE(parsed.SetIntegerArray(Texts({"3", "-4"}), ZQString("sec")).OK());
  EXPECT_EQ(Text(parsed), "(3, -4) sec");
  EXPECT_EQ(parsed.SetFloatingPointArray(Texts({"3", "four"}), ZQString("")).GetStatusCode(),
            Code(S::VariantImplicitTypeConversionError));
  EXPECT_EQ(Text(parsed), "(3, -4) sec");

  ZQVariant::StringArray texts;
  EXPECT_TRUE(ZQVariant(2LL, ZQString("mm")).GetStringArray(texts).OK());
  EXPECT_STREQ(texts(0).c_str(), "2 mm");
}

TEST(VariantParsing, FailedParsesLeaveTheOldValue) {
  ZQVariant variant(5LL, ZQString("m"));
  EXPECT_EQ(variant.SetInteger(ZQString("five"), ZQString("sec")).GetStatusCode(),
            Code(S::VariantImplicitTypeConversionError));
  EXPECT_EQ(Text(variant), "5 m");
  EXPECT_TRUE(variant.SetFloatingPoint(ZQString("2.5"), ZQString("sec")).OK());
  EXPECT_EQ(Text(variant), "2.5 sec");
  EXPECT_EQ(variant.SetColor(ZQString("1,2")).GetStatusCode(), Code(S::ColorInitializationError));
  EXPECT_EQ(Text(variant), "2.5 sec");
  EXPECT_TRUE(variant.SetColor(ZQString("(0, 128, 255)")).OK());
  EXPECT_EQ(Text(variant), "(0, 128, 255, 255)");
}

TEST(VariantCompare, OrdersByKindThenValueThenUnits) {
  EXPECT_EQ(ZQVariant(1LL).Compare(ZQVariant(0.5)), -1);
  EXPECT_EQ(ZQVariant(0.5).Compare(ZQVariant(1LL)), 1);
  EXPECT_EQ(ZQVariant(2.0).Compare(ZQVariant(3.0)), -1);
  EXPECT_EQ(ZQVariant(std::nan("")).Compare(ZQVariant(std::nan(""))), 1);
  EXPECT_EQ(ZQVariant(1.0, ZQString("m")).Compare(ZQVariant(1.0, ZQString("mm"))), -1);
  EXPECT_EQ(ZQVariant(1.0, ZQString("m")).Compare(ZQVariant(1.0, ZQString("m"))), 0);
  EXPECT_EQ(Integers({1, 2}).Compare(Integers({1, 2, 0})), -1);
  EXPECT_EQ(Integers({1, 3}).Compare(Integers({1, 2})), 1);
  EXPECT_EQ(ZQVariant(Texts({"a"})).Compare(ZQVariant(Texts({"b"}))), -1);
  int other = 0;
  EXPECT_EQ(Custom(&dummy).Compare(Custom(&dummy)), 0);
  EXPECT_NE(Custom(&dummy).Compare(Custom(&other)), 0);
  ZQVariant self(4LL);
  EXPECT_EQ(self.Compare(self), 0);
}

TEST(VariantLifecycle, CopiesAreDeepExceptForCustomPointers) {
  ZQVariant source = Doubles({1, 2}, "m");
  ZQVariant copy(source);
  EXPECT_TRUE(copy.ConvertToUnits(ZQString("mm"), nullptr).OK());
  EXPECT_EQ(Text(source), "(1, 2) m");

  ZQVariant assigned(ZQString("x"));
  assigned = source;
  EXPECT_EQ(assigned.Compare(source), 0);
  assigned = assigned;
  EXPECT_EQ(Text(assigned), "(1, 2) m");

  ZQVariant custom = Custom(&dummy);
  ZQVariant customCopy(custom);
  void *pointer = nullptr;
  EXPECT_TRUE(customCopy.GetCustomData(pointer).OK());
  EXPECT_EQ(pointer, &dummy);
  EXPECT_EQ(source.GetCustomData(pointer).GetStatusCode(), Code(S::VariantImplicitTypeConversionError));

  ZQVariant withUnits(1.0, ZQString("m"));
  withUnits.SetCustomData(&dummy);
  EXPECT_FALSE(withUnits.HasUnits());

  source.Reset();
  EXPECT_FALSE(source.IsInitialized());
  EXPECT_FALSE(source.HasUnits());
}

TEST(VariantLifecycle, EmptinessDependsOnKindSizeAndUnits) {
  ZQVariant variant;
  EXPECT_TRUE(variant.IsEmpty());
  variant.SetUnits(ZQString("m"), nullptr);
  EXPECT_FALSE(variant.IsEmpty());
  EXPECT_FALSE(variant.IsInitialized());
  EXPECT_TRUE(ZQVariant(ZQString("")).IsEmpty());
  EXPECT_FALSE(ZQVariant(0LL).IsEmpty());
  EXPECT_TRUE(ZQVariant(static_cast<double const *>(nullptr), 3).IsEmpty());
  EXPECT_FALSE(Doubles({0}).IsEmpty());
}

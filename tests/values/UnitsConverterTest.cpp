// ZQUnitsConverter: every unit name against reference values, the path through the base
// unit, name normalisation, the pointer wrappers and the refusals with their messages.
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/values/ZQUnitsConverter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using S = Types::StatusCode_t;

long long Code(S status) { return static_cast<long long>(status); }

struct Unit {
  std::vector<char const *> names;
  double size; // in metres, seconds or radians
};

// Reference sizes from the unit definitions, independent of the converter's table.
std::vector<Unit> const kLengths = {
    {{"m", "meter", "meters"}, 1},
    {{"dm", "decimeter", "decimeters"}, 0.1},
    {{"cm", "centimeter", "centimeters"}, 0.01},
    {{"mm", "millimeter", "millimeters"}, 0.001},
    {{"um", "micrometer", "micrometers"}, 1e-6},
    {{"nm", "nanometer", "nanometers"}, 1e-9},
    {{"km", "kilometer", "kilometers"}, 1000},
    {{"in", "inch", "inches"}, 0.0254},
    {{"mil", "mils", "thou", "thousandth", "thousandths"}, 0.0254e-3},
    {{"ft", "foot", "feet"}, 12 * 0.0254},
    {{"yd", "yard", "yards"}, 36 * 0.0254},
    {{"mile", "miles"}, 63360 * 0.0254},
};

std::vector<Unit> const kTimes = {
    {{"hour", "hr", "hours"}, 3600},
    {{"minute", "min", "minutes"}, 60},
    {{"second", "sec", "seconds"}, 1},
    {{"millisecond", "millisec", "milliseconds"}, 0.001},
};

double Factor(ZQUnitsConverter &converter, char const *from, char const *to, long long *status = nullptr) {
  double factor = -1;
  double offset = -1;
  ZQResult const result = converter.GetConversionData(ZQString(from), ZQString(to), factor, offset);
  EXPECT_EQ(offset, 0) << from << " -> " << to;
  if (status != nullptr) {
    *status = result.GetStatusCode();
  }
  return factor;
}

/// Every name of every unit of a group against every other, within a relative 1e-10 of
/// the reference ratio; names of one unit give 1 only when they are the same name.
void ExpectGroupConverts(std::vector<Unit> const &group) {
  ZQUnitsConverter converter;
  for (Unit const &from : group) {
    for (Unit const &to : group) {
      for (char const *fromName : from.names) {
        for (char const *toName : to.names) {
          long long status = -1;
          double const factor = Factor(converter, fromName, toName, &status);
          EXPECT_EQ(status, 0) << fromName << " -> " << toName;
          EXPECT_NEAR(factor, from.size / to.size, 1e-10 * from.size / to.size) << fromName << " -> " << toName;
        }
      }
    }
  }
}

} // namespace

TEST(UnitsTable, EveryNameConvertsToEveryOtherOfItsGroup) {
  ExpectGroupConverts(kLengths);
  ExpectGroupConverts(kTimes);
}

// The table's own rounded constants, multiplied through the base unit without reducing:
// two names of one unit give 1 only when they normalise to the same name.
TEST(UnitsTable, FactorsAreExactProductsThroughTheBaseUnit) {
  ZQUnitsConverter converter;
  EXPECT_EQ(Factor(converter, "in", "m"), 0.0254);
  EXPECT_EQ(Factor(converter, "m", "in"), 39.37007874015748);
  EXPECT_EQ(Factor(converter, "mile", "m"), 1609.344);
  EXPECT_EQ(Factor(converter, "m", "miles"), 0.0006213711922373339);
  EXPECT_EQ(Factor(converter, "M", "MM"), 1000);
  EXPECT_EQ(Factor(converter, "sec", "hour"), 0.000277777777777);
  EXPECT_EQ(Factor(converter, " [ft] ", "in"), 0.3048 * 39.37007874015748);
  EXPECT_EQ(Factor(converter, "yd", "ft"), 0.9144 * 3.280839895013123);
  EXPECT_EQ(Factor(converter, "hour", "hr"), 3600 * 0.000277777777777);
  EXPECT_EQ(Factor(converter, "hour", "minutes"), 3600 * 0.01666666666666);
  EXPECT_EQ(Factor(converter, "HOUR", "[hour]"), 1);
}

TEST(UnitsTable, AnglesConvertOnlyBetweenDegreesAndRadians) {
  ZQUnitsConverter converter;
  double const pi = std::acos(-1.0);
  for (char const *degrees : {"deg", "degree", "degrees"}) {
    for (char const *radians : {"rad", "radian", "radians"}) {
      EXPECT_EQ(Factor(converter, degrees, radians), pi / 180) << degrees;
      EXPECT_EQ(Factor(converter, radians, degrees), 57.29577951308232) << radians;
    }
  }
  EXPECT_EQ(Factor(converter, "deg", "deg"), 1);
  long long status = 0;
  EXPECT_EQ(Factor(converter, "deg", "m", &status), 1);
  EXPECT_EQ(status, Code(S::UnitsConverterGetConversionDataError));
  EXPECT_FALSE(converter.IsLengthUnit("rad"));
  EXPECT_FALSE(converter.IsTimeUnit("deg"));
}

TEST(UnitsRefusals, PushTheNormalisedNamesAndLeaveTheDefaults) {
  struct Case {
    char const *from;
    char const *to;
    char const *message;
  };
  Case const cases[] = {
      {"Foo", " [FOO] ", "sorry, unknown units encountered, query of conversion data for 'foo' failed."},
      {"[ m ]", "m", "sorry, unknown units encountered, query of conversion data from ' m ' to 'm' failed."},
      {"SEC", "m", "sorry, unknown units encountered, query of conversion data from 'sec' to 'm' failed."},
      {"mi", "m", "sorry, unknown units encountered, query of conversion data from 'mi' to 'm' failed."},
      {"m", "", "sorry, unknown units encountered, query of conversion data from 'm' to '' failed."},
      {"", "", "sorry, unknown units encountered, query of conversion data for '' failed."},
  };
  for (Case const &c : cases) {
    ZQContext context;
    ZQUnitsConverter converter(&context);
    long long status = 0;
    EXPECT_EQ(Factor(converter, c.from, c.to, &status), 1) << c.from;
    EXPECT_EQ(status, Code(S::UnitsConverterGetConversionDataError)) << c.from;
    EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(), c.message);
  }
}

TEST(UnitsWrappers, PointerFormsStripTwiceAndNarrowToFloat) {
  ZQUnitsConverter converter;
  double factor = 0;
  double offset = 0;
  EXPECT_TRUE(converter.GetConversionData("[[m]]", "mm", factor, offset).OK());
  EXPECT_EQ(factor, 1000);
  EXPECT_FALSE(converter.GetConversionData(ZQString("[[m]]"), ZQString("mm"), factor, offset).OK());
  EXPECT_TRUE(converter.GetConversionData(L" [In] ", L"m", factor, offset).OK());
  EXPECT_EQ(factor, 0.0254);
  float narrow = 0;
  float narrowOffset = 5;
  EXPECT_TRUE(converter.GetConversionData("in", "m", narrow, narrowOffset).OK());
  EXPECT_EQ(narrow, 0.0254f);
  EXPECT_EQ(narrowOffset, 0);
  EXPECT_TRUE(converter.GetConversionData(L"ft", L"ft", narrow, narrowOffset).OK());
  EXPECT_EQ(narrow, 1);
  EXPECT_FALSE(converter.GetConversionData(static_cast<char const *>(nullptr), "m", factor, offset).OK());
}

TEST(UnitsGroups, LengthAndTimeTestsKeepTheirSideEffect) {
  ZQContext context;
  ZQUnitsConverter converter(&context);
  EXPECT_TRUE(converter.IsTimeUnit("min"));
  EXPECT_TRUE(converter.IsTimeUnit(ZQString("[Milliseconds]")));
  EXPECT_FALSE(converter.IsTimeUnit(L"mil"));
  EXPECT_FALSE(converter.IsLengthUnit("min"));
  EXPECT_TRUE(converter.IsLengthUnit(L"thou"));
  EXPECT_TRUE(converter.IsLengthUnit(ZQString("mil")));
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(),
               "sorry, unknown units encountered, query of conversion data from 'min' to 'm' failed.");
}

TEST(UnitsBrackets, StripOnePairAndKeepCaseAndInnerBlanks) {
  struct Case {
    char const *text;
    char const *stripped;
  };
  for (Case c : {Case{" [MM] ", "MM"}, Case{"[ m ]", " m "}, Case{"[[m]]", "[m]"}, Case{"[m", "[m"}, Case{"m]", "m]"},
                 Case{"[]", ""}, Case{"]", "]"}, Case{"\t", ""}}) {
    ZQString text(c.text);
    ZQUnitsConverter::StripBracketsInPlace(text);
    EXPECT_STREQ(text.c_str(), c.stripped) << c.text;
    EXPECT_STREQ(ZQUnitsConverter::StripBrackets(c.text).c_str(), c.stripped) << c.text;
  }
  EXPECT_STREQ(ZQUnitsConverter::StripBrackets(L"[\u00b5m]").c_str(), "\xc2\xb5m");
}

TEST(UnitsSystem, OnlySIIsAccepted) {
  ZQContext context;
  ZQUnitsConverter converter(&context);
  ZQString name;
  EXPECT_TRUE(converter.GetPreferredUnitSystem(name).OK());
  EXPECT_STREQ(name.c_str(), "SI");
  EXPECT_TRUE(converter.SetPreferredUnitSystem("SI").OK());
  EXPECT_TRUE(converter.SetPreferredUnitSystem(L"SI").OK());
  EXPECT_TRUE(context.GetErrorStack().IsEmpty());
  for (ZQResult status : {converter.SetPreferredUnitSystem(ZQString("si")), converter.SetPreferredUnitSystem(L"US"),
                          converter.SetPreferredUnitSystem(static_cast<char const *>(nullptr))}) {
    EXPECT_EQ(status.GetStatusCode(), Code(S::UnitsConverterSetPreferredUnitSystemError));
  }
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 3);
  EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(), "sorry, without DRXUnits only 'SI' is supported as "
                                                             "preferred unit system, setting of preferred unit "
                                                             "system failed.");
}

TEST(UnitsLifecycle, CopyTakesTheContextAssignmentKeepsItsOwn) {
  ZQContext first;
  ZQContext second;
  ZQUnitsConverter original(&first);
  ZQUnitsConverter copy(original);
  ZQUnitsConverter assigned(&second);
  assigned = original;
  copy.IsLengthUnit("x");
  assigned.IsLengthUnit("y");
  EXPECT_EQ(first.GetErrorStack().GetNMsg(), 1);
  EXPECT_EQ(second.GetErrorStack().GetNMsg(), 1);
  EXPECT_TRUE(original.IsInitialized());
  EXPECT_TRUE(original.Initialize().OK());
}

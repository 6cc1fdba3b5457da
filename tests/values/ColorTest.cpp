// ZQColor: channel forms, range checks, the text parser and its messages.
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/values/ZQColor.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using S = Types::StatusCode_t;

long long Code(S status) { return static_cast<long long>(status); }

std::array<int, 4> Channels16(ZQColor const &color) {
  std::array<int, 4> c{};
  color.GetRGBA16(c[0], c[1], c[2], c[3]);
  return c;
}

std::array<int, 4> Channels8(ZQColor const &color) {
  unsigned char r, g, b, a;
  color.GetRGBA8(r, g, b, a);
  return {r, g, b, a};
}

char const *const kNoConversion = "no conversion from string to 32-bit integer value was performed, array of 32-bit "
                                  "integer values can not be parsed.";

} // namespace

TEST(ColorChannels, EightBitValuesAreTheHighByteOfTheStoredChannel) {
  ZQColor color;
  EXPECT_TRUE(color.InitializeRGBA8(255, 255, 255, 255).OK());
  EXPECT_EQ(Channels16(color), (std::array<int, 4>{65280, 65280, 65280, 65280}));
  EXPECT_TRUE(color.InitializeRGBA(1, 1, 1, 1).OK());
  EXPECT_EQ(Channels16(color), (std::array<int, 4>{65535, 65535, 65535, 65535}));
  EXPECT_EQ(Channels8(color), (std::array<int, 4>{255, 255, 255, 255}));
  EXPECT_TRUE(color.InitializeRGBA16(0x12FF, 0x3401, 0x5680, 0x7800).OK());
  EXPECT_EQ(Channels8(color), (std::array<int, 4>{0x12, 0x34, 0x56, 0x78}));
}

TEST(ColorChannels, FloatsRoundHalfAwayFromZero) {
  struct Case {
    float value;
    int stored;
  };
  for (Case c : {Case{0.5f, 32768}, Case{0.0f, 0}, Case{1.0f / 65535.0f, 1}, Case{0.25f, 16384}}) {
    ZQColor color;
    EXPECT_TRUE(color.InitializeRGBA(c.value, 0, 0, 1).OK());
    EXPECT_EQ(Channels16(color)[0], c.stored) << c.value;
  }
}

TEST(ColorChannels, PackedWordIsAlphaRedGreenBlue) {
  ZQColor color;
  EXPECT_TRUE(color.InitializeRGBA8(0x80112233u).OK());
  EXPECT_EQ(Channels8(color), (std::array<int, 4>{0x11, 0x22, 0x33, 0x80}));
  unsigned int packed = 0;
  color.GetRGBA8(packed);
  EXPECT_EQ(packed, 0x80112233u);
  color.SetRGBA16(0x1FFFF, 0, 0, 0);
  EXPECT_EQ(Channels16(color)[0], 0xFFFF);
}

TEST(ColorChannels, OutOfRangeChannelsFailAndKeepTheColor) {
  struct Case {
    char const *name;
    ZQResult (*initialize)(ZQColor &);
  };
  Case const cases[] = {
      {"float above 1", [](ZQColor &c) { return c.InitializeRGBA(1.5f, 0, 0, 0); }},
      {"float alpha below 0", [](ZQColor &c) { return c.InitializeRGBA(0, 0, 0, -0.1f); }},
      {"float nan", [](ZQColor &c) { return c.InitializeRGBA(0, std::nanf(""), 0, 0); }},
      {"8-bit 256", [](ZQColor &c) { return c.InitializeRGBA8(256, 0, 0, 0); }},
      {"8-bit negative alpha", [](ZQColor &c) { return c.InitializeRGBA8(0, 0, 0, -1); }},
      {"16-bit 65536", [](ZQColor &c) { return c.InitializeRGBA16(0, 0, 65536, 0); }},
  };
  for (Case const &c : cases) {
    ZQColor color;
    color.InitializeRGBA8(1, 2, 3, 4);
    EXPECT_EQ(c.initialize(color).GetStatusCode(), Code(S::ColorChannelValueOutOfRange)) << c.name;
    EXPECT_EQ(Channels8(color), (std::array<int, 4>{1, 2, 3, 4})) << c.name;
  }
}

TEST(ColorState, ZeroWordIsNotInitializedAndCompareWeighsAlphaFirst) {
  ZQColor color;
  EXPECT_FALSE(color.IsInitialized());
  EXPECT_TRUE(color.InitializeRGBA(0, 0, 0, 0).OK());
  EXPECT_FALSE(color.IsInitialized());
  color.SetRGBA8(0, 0, 1, 0);
  EXPECT_TRUE(color.IsInitialized());

  ZQColor opaqueBlack;
  opaqueBlack.InitializeRGBA8(0, 0, 0, 1);
  ZQColor transparentWhite;
  transparentWhite.InitializeRGBA8(255, 255, 255, 0);
  EXPECT_EQ(opaqueBlack.Compare(transparentWhite), 1);
  EXPECT_EQ(transparentWhite.Compare(opaqueBlack), -1);
  EXPECT_EQ(opaqueBlack.Compare(opaqueBlack), 0);
  EXPECT_STREQ(opaqueBlack.ToString(nullptr).c_str(), "(0, 0, 0, 1)");
  opaqueBlack.Reset();
  EXPECT_FALSE(opaqueBlack.IsInitialized());
}

TEST(ColorText, AcceptsEveryListForm) {
  struct Case {
    char const *text;
    std::array<int, 4> rgba;
  };
  Case const cases[] = {
      {"255, 0, 0", {255, 0, 0, 255}}, {"(255, 0, 0)", {255, 0, 0, 255}},
      {"255 0 0", {255, 0, 0, 255}},   {"  (1,2,3,4)", {1, 2, 3, 4}},
      {"1,2,3,4,5", {1, 2, 3, 4}},     {"1,2,3,", {1, 2, 3, 255}},
      {"[1] {2} (3)", {1, 2, 3, 255}}, {"\t10 ,20,\n30 , 40 ", {10, 20, 30, 40}},
      {"+7,0,0,0", {7, 0, 0, 0}},
  };
  for (Case const &c : cases) {
    ZQContext context;
    ZQColor color;
    EXPECT_TRUE(color.InitializeRGBA8(ZQString(c.text), &context).OK()) << c.text;
    EXPECT_EQ(Channels8(color), c.rgba) << c.text;
    EXPECT_TRUE(context.GetErrorStack().IsEmpty()) << c.text;
  }
  ZQColor red;
  red.InitializeRGBA8(ZQString("(255, 0, 0)"), nullptr);
  EXPECT_EQ(Channels16(red)[3], 65280);
  EXPECT_STREQ(red.ToString("ignored").c_str(), "(255, 0, 0, 255)");
}

// A parse failure gives ColorInitializationError and one message; a parsed channel out of
// range gives ColorChannelValueOutOfRange and none.
TEST(ColorText, RefusalsGiveTheirStatusAndMessageAndKeepTheColor) {
  std::string const overflow = "overflow occurred during conversion from string to 32-bit integer value, array of "
                               "32-bit integer values can not be parsed.";
  struct Case {
    char const *text;
    std::string message;
  };
  Case const cases[] = {
      {"", kNoConversion},
      {"()", kNoConversion},
      {"red", kNoConversion},
      {"1,,2,3", kNoConversion},
      {"1;2;3", kNoConversion},
      {"1, 2", "wrong number of values (=2) parsed, color can not be parsed."},
      {"2147483648,0,0", overflow},
      {"99999999999999999999999,0,0", overflow},
      {"-2147483649,0,0", "underflow occurred during conversion from string to 32-bit integer value, array of 32-bit "
                          "integer values can not be parsed."},
      {"256,0,0", ""},
      {"2147483647,0,0", ""},
  };
  for (Case const &c : cases) {
    ZQContext context;
    ZQColor color;
    color.InitializeRGBA8(9, 9, 9, 9);
    long long const status = Code(c.message.empty() ? S::ColorChannelValueOutOfRange : S::ColorInitializationError);
    EXPECT_EQ(color.InitializeRGBA8(ZQString(c.text), &context).GetStatusCode(), status) << c.text;
    EXPECT_EQ(Channels8(color), (std::array<int, 4>{9, 9, 9, 9})) << c.text;
    EXPECT_EQ(context.GetErrorStack().GetNMsg(), c.message.empty() ? 0 : 1) << c.text;
    if (!c.message.empty()) {
      EXPECT_EQ(context.GetErrorStack().GetLastMsg().c_str(), c.message) << c.text;
    }
    EXPECT_EQ(color.InitializeRGBA8(ZQString(c.text), nullptr).GetStatusCode(), status) << c.text;
  }
}

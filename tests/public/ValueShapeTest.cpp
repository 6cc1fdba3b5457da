#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using Velmora::Tessara::ZQ::Core::Result;
using Velmora::Tessara::ZQ::Core::String;
using Velmora::Tessara::ZQ::Core::ZQResult;

TEST(PublicResult, StartsUndefinedAndResetKeepsTheInnerObject) {
  Result result;
  EXPECT_EQ(result.GetStatusCode(), -1);
  EXPECT_FALSE(result.OK());
  EXPECT_TRUE(Result(0).OK());

  result.SetStatusCode(33);
  EXPECT_STREQ(result.ToString().c_str(), "Result(Status=33)");
  ZQResult *inner = result.GetResult();
  result.Reset();
  EXPECT_EQ(result.GetStatusCode(), -1);
  EXPECT_EQ(result.GetResult(), inner);
}

TEST(PublicResult, CopiesAreIndependent) {
  Result source(5);
  Result copy(source);
  Result assigned;
  assigned = source;
  copy.SetStatusCode(7);
  assigned.SetStatusCode(0);
  EXPECT_EQ(source.GetStatusCode(), 5);
  EXPECT_NE(copy.GetResult(), source.GetResult());

  Result &alias = source;
  source = alias;
  EXPECT_EQ(source.GetStatusCode(), 5);

  ZQResult inner(12);
  Result wrapped(inner);
  inner.SetStatusCode(0);
  EXPECT_EQ(wrapped.GetStatusCode(), 12);
}

TEST(PublicString, CopiesAreIndependent) {
  String source("abc");
  String copy(source);
  String assigned;
  assigned = source;
  copy += "d";
  assigned.Upper();
  EXPECT_STREQ(source.c_str(), "abc");
  EXPECT_STREQ(copy.c_str(), "abcd");
  EXPECT_STREQ(assigned.c_str(), "ABC");
  EXPECT_NE(copy.GetString(), source.GetString());

  String moved(std::move(copy));
  EXPECT_STREQ(moved.c_str(), "abcd");
  copy = "usable";
  EXPECT_STREQ(copy.c_str(), "usable");
}

TEST(PublicString, ConstructsFromEveryTextForm) {
  EXPECT_STREQ(String(L"h\u00e9").c_str(), "h\xc3\xa9");
  EXPECT_EQ(String(L"h\u00e9").AsTEXT(), std::wstring(L"h\u00e9"));
  EXPECT_EQ(String('\0').Size(), 1);
  EXPECT_TRUE(String(static_cast<char const *>(nullptr)).IsEmpty());

  String counted("a\0b", 3);
  EXPECT_EQ(counted.Size(), 3);
  EXPECT_TRUE(counted.Contains('b'));

  String const text("abcdef");
  EXPECT_STREQ(String(text, 3).c_str(), "abc");
  EXPECT_STREQ(String(text, 100).c_str(), "abcdef");
  EXPECT_TRUE(String(text, -1).IsEmpty());
}

TEST(PublicString, DerivedStringsKeepEveryByte) {
  String const text("a\0bc", 4);
  String tail = text.Substring(1, 4);
  EXPECT_EQ(tail.Size(), 3);
  EXPECT_EQ(tail[1], 'b');
  EXPECT_EQ(text.ToString().Size(), 4);
  EXPECT_STREQ(String("prefix-a").CommonPrefix(String("prefix-b")).c_str(), "prefix-");
}

TEST(PublicString, ForwardsSearchEditingAndParsing) {
  String text("  a-b-a  ");
  EXPECT_EQ(&text.Strip(), &text);
  EXPECT_STREQ(text.c_str(), "a-b-a");
  EXPECT_EQ(text.Find("b"), 2);
  EXPECT_EQ(text.ReverseFind('a'), 4);
  EXPECT_EQ(text.Count(String("a")), 2);
  EXPECT_STREQ(text.Replace(String("-"), String("+")).c_str(), "a+b+a");
  EXPECT_EQ(String("a").Compare(String("b")), -1);
  EXPECT_TRUE(String("a") < "b");

  String number;
  number.Add(42, nullptr);
  EXPECT_STREQ(number.c_str(), "42");
  bool failed = true;
  EXPECT_EQ(String("12abc").AsInt32(failed), 12);
  EXPECT_FALSE(failed);
  EXPECT_EQ(String("x").AsInt64(failed), 9223372036854775807LL);
  EXPECT_TRUE(failed);
}

} // namespace

// ZQStringUtil: case-blind comparison, bounded copy, regular expressions from shell
// patterns and prefix lists, title lines and the printing of maps and sets.
#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringUtil.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

long long Status(Types::StatusCode_t code) { return static_cast<long long>(code); }

std::string Shell(char const *pattern) {
  return ZQStringUtil::ShellPatternToRegularExpression(ZQString(pattern)).c_str();
}

bool ShellMatches(char const *pattern, char const *text) {
  return std::regex_match(text, std::regex(Shell(pattern), std::regex::ECMAScript));
}

bool PrefixMatches(char const *list, char const *text) {
  return std::regex_search(text, std::regex(ZQStringUtil::PrefixListToRegularExpression(list, ':').c_str()));
}

} // namespace

TEST(StringUtilCompare, IgnoresCaseAndOrdersNullAndShorterFirst) {
  struct Case {
    char const *a;
    char const *b;
    int expected;
  };
  for (Case c : {Case{nullptr, nullptr, 0}, Case{nullptr, "", -1}, Case{"", nullptr, 1}, Case{"abc", "ABC", 0},
                 Case{"ab", "abc", -1}, Case{"abc", "AB", 1}, Case{"abd", "ABC", 1}, Case{"a", "Z", -1},
                 Case{"zzzzzz", "a", 1}}) {
    EXPECT_EQ(ZQStringUtil::strcasecmp(c.a, c.b), c.expected) << (c.a ? c.a : "null") << " / " << (c.b ? c.b : "null");
  }
  EXPECT_EQ(ZQStringUtil::strncasecmp("abx", "ABY", 2), 0);
  EXPECT_EQ(ZQStringUtil::strncasecmp("abx", "ABY", 3), -1);
  EXPECT_EQ(ZQStringUtil::strncasecmp("ab", "abc", 3), -1);
  EXPECT_EQ(ZQStringUtil::strncasecmp("x", "y", 0), 0);
  EXPECT_EQ(ZQStringUtil::strncasecmp(nullptr, "y", 0), -1);
}

TEST(StringUtilNewline, RecognisesOnlyLineFeedAndCarriageReturnLineFeedAtTheStart) {
  long long length = 99;
  EXPECT_TRUE(ZQStringUtil::IsNewline("\nx", length));
  EXPECT_EQ(length, 1);
  EXPECT_TRUE(ZQStringUtil::IsNewline(L"\r\nx", length));
  EXPECT_EQ(length, 2);
  for (char const *text : {"\r", "\rx", "", "x\n"}) {
    length = 99;
    EXPECT_FALSE(ZQStringUtil::IsNewline(text, length));
    EXPECT_EQ(length, 0);
  }
  EXPECT_FALSE(ZQStringUtil::IsNewline(static_cast<wchar_t const *>(nullptr), length));
}

TEST(StringUtilCopy, TruncatesButAlwaysTerminatesAndWritesOnlyWhatIsNeeded) {
  char buffer[8];
  std::fill(buffer, buffer + 8, '#');
  long long size = 8;
  EXPECT_EQ(ZQStringUtil::Copy(nullptr, "abc", size, buffer).GetStatusCode(), 0);
  EXPECT_EQ(std::string(buffer, 5), std::string("abc\0#", 5));

  size = 3;
  EXPECT_EQ(ZQStringUtil::Copy(nullptr, "abcdef", size, buffer).GetStatusCode(),
            Status(Types::StatusCode_t::StringTruncationError));
  EXPECT_STREQ(buffer, "ab");
  EXPECT_EQ(size, 3);

  std::fill(buffer, buffer + 8, '#');
  size = 0;
  EXPECT_EQ(ZQStringUtil::Copy(nullptr, "", size, buffer).GetStatusCode(),
            Status(Types::StatusCode_t::StringTruncationError));
  EXPECT_EQ(buffer[0], '#');

  size = 4;
  EXPECT_EQ(ZQStringUtil::Copy(nullptr, nullptr, size, buffer).GetStatusCode(), 0);
  EXPECT_EQ(buffer[0], '\0');
}

TEST(StringUtilShellPattern, TranslatesWildcardsClassesAndLiterals) {
  EXPECT_EQ(Shell("*.txt"), ".*\\.txt$");
  EXPECT_EQ(Shell("a?c"), "a.c$");
  EXPECT_EQ(Shell("[!ab]"), "[^ab]$");
  EXPECT_EQ(Shell("[^a]"), "[\\^a]$");
  EXPECT_EQ(Shell("[]"), "\\[\\]$");
  EXPECT_EQ(Shell("a[b"), "a\\[b$");
  EXPECT_EQ(Shell("[]a]"), "[]a]$");
  EXPECT_EQ(Shell("[a\\b]"), "[a\\\\b]$");
  EXPECT_EQ(Shell(""), "$");
}

// The expressions compile and match what the shell would, regex metacharacters literally.
TEST(StringUtilShellPattern, ExpressionsMatchWhatTheShellWould) {
  EXPECT_TRUE(ShellMatches("data_??.h5", "data_01.h5"));
  EXPECT_FALSE(ShellMatches("data_??.h5", "data_1.h5"));
  EXPECT_TRUE(ShellMatches("run[0-9].log", "run7.log"));
  EXPECT_FALSE(ShellMatches("run[!0-9].log", "run7.log"));
  EXPECT_TRUE(ShellMatches("(x)+{y} $z^|w.", "(x)+{y} $z^|w."));
  EXPECT_TRUE(ShellMatches("caf\xc3\xa9*", "caf\xc3\xa9 au lait"));
}

TEST(StringUtilPrefixList, BuildsAnAnchoredAlternationThatFindsEachPrefix) {
  EXPECT_STREQ(ZQStringUtil::PrefixListToRegularExpression("ab:c", ':').c_str(), "^ab|^c");
  EXPECT_STREQ(ZQStringUtil::PrefixListToRegularExpression("::a.b::", ':').c_str(), "^a\\.b");
  EXPECT_STREQ(ZQStringUtil::PrefixListToRegularExpression("", ':').c_str(), "");
  EXPECT_TRUE(PrefixMatches("/tmp/:/var/", "/var/log"));
  EXPECT_TRUE(PrefixMatches("/tmp/:/var/", "/tmp/x"));
  EXPECT_FALSE(PrefixMatches("/tmp/:/var/", "/home/tmp/"));
  EXPECT_FALSE(PrefixMatches("a.b", "axb"));
}

TEST(StringUtilEscape, BackslashesEveryByteButLettersAndDigits) {
  EXPECT_STREQ(ZQStringUtil::EscapeNonAlphaNumCharacters("aZ09_ .").c_str(), "aZ09\\_\\ \\.");
  EXPECT_STREQ(ZQStringUtil::EscapeNonAlphaNumCharacters("\xc3\xa9").c_str(), "\\\xc3\\\xa9");
}

TEST(StringUtilTitle, LeavesOutEmptyParts) {
  EXPECT_STREQ(ZQStringUtil::ToTitleString("T").c_str(), "======== T ========");
  EXPECT_STREQ(ZQStringUtil::ToTitleString("T", "n").c_str(), "======== T 'n' ========");
  EXPECT_STREQ(ZQStringUtil::ToTitleString("", "x").c_str(), "======== 'x' ========");
  EXPECT_STREQ(ZQStringUtil::ToTitleString("", "").c_str(), "");
  EXPECT_STREQ(ZQStringUtil::GetIndent().c_str(), "    ");
}

TEST(StringUtilContainers, PadKeysToTheLongestAndPrefixEveryLine) {
  ZQMapObjectTypes<ZQString, ZQString> texts;
  texts[ZQString("a")] = ZQString("x");
  texts[ZQString("long")] = ZQString("y");
  EXPECT_STREQ(ZQStringUtil::ToString(texts, "> ").c_str(), "> 'a'   : 'x'\n> 'long': 'y'\n");

  ZQMapNativeValueType<ZQString, long long> numbers;
  numbers[ZQString("big")] = 9000000000LL;
  numbers[ZQString("n")] = -1;
  EXPECT_STREQ(ZQStringUtil::ToString(numbers, nullptr).c_str(), "'big': '9000000000'\n'n'  : '-1'\n");

  ZQMapNativeValueType<ZQString, int> ints;
  ints[ZQString("k")] = 7;
  EXPECT_STREQ(ZQStringUtil::ToString(ints, "").c_str(), "'k': '7'\n");

  ZQSetObjectType<ZQString> names;
  names.insert(ZQString("b"));
  names.insert(ZQString("a"));
  EXPECT_STREQ(ZQStringUtil::ToString(names, "- ").c_str(), "- 'a'\n- 'b'\n");
  EXPECT_STREQ(ZQStringUtil::ToString(ZQSetObjectType<ZQString>(), "- ").c_str(), "");
}

TEST(StringUtilContainers, PrintNestedSetsAndMaps) {
  ZQMapObjectTypes<ZQString, ZQSetNativeType<int>> sets;
  sets[ZQString("ab")].insert(3);
  sets[ZQString("ab")].insert(1);
  sets[ZQString("e")];
  EXPECT_STREQ(ZQStringUtil::ToString(sets, "").c_str(), "'ab': (1 3)\n'e' : ()\n");

  ZQMapObjectTypes<ZQString, ZQSetNativeType<long long>> wide;
  wide[ZQString("w")].insert(1LL << 40);
  EXPECT_STREQ(ZQStringUtil::ToString(wide, "").c_str(), "'w': (1099511627776)\n");

  ZQMapObjectTypes<ZQString, ZQMapNativeKeyType<long long, ZQString>> nested;
  nested[ZQString("outer")][2] = ZQString("two");
  nested[ZQString("outer")][-1] = ZQString("minus");
  EXPECT_STREQ(ZQStringUtil::ToString(nested, "# ").c_str(), "# 'outer':\n#     -1: 'minus'\n#     2: 'two'\n");
}

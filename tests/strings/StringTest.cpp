// ZQString: construction, access, search, modification, formatting and environment expansion.
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

std::string Bytes(ZQString const &text) { return std::string(text.c_str(), static_cast<std::size_t>(text.Size())); }

ZQString Expanded(char const *text, bool specials = false) { return ZQString(text).ExpandEnvironVars(specials); }

} // namespace

TEST(StringConstruction, NullPointersGiveEmptyStringsAndAppendNothing) {
  EXPECT_TRUE(ZQString(static_cast<char const *>(nullptr)).IsEmpty());
  EXPECT_TRUE(ZQString(static_cast<wchar_t const *>(nullptr)).IsEmpty());
  EXPECT_TRUE(ZQString(static_cast<char const *>(nullptr), 4).IsEmpty());
  ZQString text("abc");
  text += static_cast<char const *>(nullptr);
  EXPECT_EQ(text, "abc");
  text = static_cast<wchar_t const *>(nullptr);
  EXPECT_FALSE(text.IsInitialized());
}

TEST(StringConstruction, CountedBytesKeepEmbeddedZeros) {
  ZQString const text("a\0b", 3);
  EXPECT_EQ(text.Size(), 3);
  EXPECT_EQ(text.Find(ZQString("\0b", 2)), 1);
  EXPECT_TRUE(ZQString("abc", 0).IsEmpty());
  EXPECT_EQ(ZQString('\0').Size(), 1);
}

TEST(StringConstruction, WideInputIsTranscoded) {
  EXPECT_EQ(ZQString(L'\u00E9'), "\xC3\xA9");
  EXPECT_TRUE(ZQString(L'\0').IsEmpty());
  EXPECT_EQ(ZQString(L"abc", 2), "ab");
  ZQString text(L"x\u20AC");
  text += L'!';
  text += L"\U0001F600";
  EXPECT_EQ(text, "x\xE2\x82\xAC!\xF0\x9F\x98\x80");
  EXPECT_EQ(text.AsTEXT(), L"x\u20AC!\U0001F600");
}

TEST(StringAppend, AppendingAStringToItselfDoublesIt) {
  ZQString text("ab");
  text += text;
  EXPECT_EQ(text, "abab");
  text.Add(text, nullptr);
  EXPECT_EQ(text, "abababab");
}

TEST(StringAccess, NegativeIndexesCountFromTheEnd) {
  ZQString text("abc");
  EXPECT_EQ(text[-1], 'c');
  EXPECT_EQ(text.at(-3), 'a');
  EXPECT_FALSE(text.IsValidIndex(-3));
  EXPECT_TRUE(text.IsValidIndex(-2));
  EXPECT_FALSE(text.IsValidIndex(3));
  text.Resize(5);
  EXPECT_EQ(Bytes(text), std::string("abc\0\0", 5));
  EXPECT_THROW(text.Resize(-1), std::length_error);
  EXPECT_THROW(text.Reserve(-1), std::length_error);
}

TEST(StringCompare, BytesCompareUnsignedAndNullIsUnequalToAll) {
  EXPECT_TRUE(ZQString("\xC3") > "z");
  EXPECT_TRUE(ZQString("ab") < ZQString("abc"));
  EXPECT_EQ(ZQString("b").Compare(ZQString("a")), 1);
  EXPECT_EQ(ZQString("a").Compare(ZQString("ab")), -1);
  EXPECT_EQ(ZQString("").Compare(ZQString()), 0);
  char const *null = nullptr;
  ZQString const empty;
  EXPECT_FALSE(empty == null);
  EXPECT_FALSE(empty <= null);
  EXPECT_FALSE(empty >= null);
  EXPECT_TRUE(empty != null);
}

TEST(StringHash, ShiftsEachSignExtendedByteByEightMore) {
  EXPECT_EQ(ZQString().Hash(), 0ULL);
  EXPECT_EQ(ZQString("\x01\x02").Hash(), 0x0201ULL);
  EXPECT_EQ(ZQString("\x80").Hash(), 0xFFFFFFFFFFFFFF80ULL);
  EXPECT_EQ(ZQString("aaaaaaaaa").Hash(), 0x6161616161616100ULL); // the ninth byte wraps to 0
}

TEST(StringSearch, FindsFirstAndLastCountsWithoutOverlapAndEmptyStringHasNoEnds) {
  ZQString const text("abcabc");
  EXPECT_EQ(text.Find("bc"), 1);
  EXPECT_EQ(text.ReverseFind(ZQString("bc")), 4);
  EXPECT_EQ(text.Find(""), 0);
  EXPECT_EQ(text.ReverseFind(""), 6);
  EXPECT_EQ(text.Find(static_cast<char const *>(nullptr)), -1);
  EXPECT_EQ(text.Find("abcabcx"), -1);
  EXPECT_EQ(ZQString("aaaaa").Count("aa"), 2);
  EXPECT_EQ(ZQString("aaa").Count(""), 0);
  // An empty string neither starts nor ends with anything, yet contains the empty text.
  EXPECT_FALSE(ZQString().StartsWith(""));
  EXPECT_FALSE(ZQString().EndsWith(ZQString()));
  EXPECT_FALSE(ZQString().Contains('a'));
  EXPECT_TRUE(ZQString().Contains(""));
  EXPECT_TRUE(ZQString("ab").StartsWith(""));
  EXPECT_FALSE(ZQString("ab").StartsWith("abc"));
}

TEST(StringClassify, ScansEveryByteAndIsFalseWhenEmpty) {
  EXPECT_TRUE(ZQString(" \t").IsBlank());
  EXPECT_FALSE(ZQString(" \n").IsBlank());
  EXPECT_FALSE(ZQString().IsSpace());
  EXPECT_TRUE(ZQString("ab-1").IsLower());
  EXPECT_FALSE(ZQString("12").IsLower());
}

TEST(StringModify, MapsCaseAndReverses) {
  EXPECT_EQ(ZQString("hELLO wORLD").Capitalize(), "Hello world");
  EXPECT_EQ(ZQString("aB1").SwapCase(), "Ab1");
  EXPECT_EQ(ZQString("abc").Reverse(), "cba");
  EXPECT_TRUE(ZQString().Reverse().IsEmpty());
  EXPECT_EQ(ZQString("a.b.c").Replace('.', '/'), "a/b/c");
}

TEST(StringReplace, ReplacesEveryOccurrenceAndRemovesForNull) {
  EXPECT_EQ(ZQString("a-b-c").Replace("-", "--"), "a--b--c");
  EXPECT_EQ(ZQString("aaaa").Replace("aa", "b"), "bb");
  EXPECT_EQ(ZQString("a-b-c").Replace("-", nullptr), "abc");
  EXPECT_EQ(ZQString("abc").Replace("", "x"), "abc");
  EXPECT_EQ(ZQString("abc").Replace(nullptr, "x"), "abc");
  ZQString text("abc");
  text.Replace(text, ZQString("<") += text);
  EXPECT_EQ(text, "<abc");
}

TEST(StringStrip, RemovesWhitespaceOrOneWholeOccurrence) {
  EXPECT_EQ(ZQString(" \t a b \n").Strip(), "a b");
  EXPECT_EQ(ZQString("aab").LeftStrip("a"), "ab");
  EXPECT_EQ(ZQString(" ab").LeftStrip(""), " ab");
  EXPECT_EQ(ZQString(" ab").LeftStrip(ZQString()), "ab");
  EXPECT_EQ(ZQString("xyaxy").Strip(ZQString("xy")), "a");
  EXPECT_EQ(ZQString("abb").RightStrip("b"), "ab");
}

TEST(StringPath, NormalizeCollapsesOnlyBackslashSlash) {
  EXPECT_EQ(ZQString("a\\//b\\\\/c/./d").NormalizePath(), "a\\b\\\\c/./d");
  EXPECT_EQ(ZQString("/").NormalizePath(), "/");
}

TEST(StringDerive, SubstringClampsAndCommonSuffixComparesEqualIndexesTerminatorsIncluded) {
  ZQString const text("abcdef");
  EXPECT_EQ(text.Substring(-5, 2), "ab");
  EXPECT_EQ(text.Substring(2, 100), "cdef");
  EXPECT_TRUE(text.Substring(3, 3).IsEmpty());
  EXPECT_EQ(ZQString("abcd").CommonPrefix(ZQString("abxy")), "ab");
  EXPECT_EQ(Bytes(ZQString("xbc").CommonSuffix(ZQString("ybc"))), std::string("bc\0", 3));
  EXPECT_EQ(Bytes(ZQString("abc").CommonSuffix(ZQString("xyz"))), std::string(1, '\0'));
  EXPECT_TRUE(ZQString("abc").CommonSuffix(ZQString("bc")).IsEmpty());
}

TEST(StringFormat, AddUsesTheTypeDefaultsOrTheGivenFormat) {
  ZQString text;
  text.Add(static_cast<signed char>(-5), nullptr);
  text.Add(static_cast<short>(300), nullptr);
  text.Add(7, "<%03d>");
  text.Add(1LL << 40, nullptr);
  text.Add(0.1f, nullptr);
  text.Add(' ', nullptr);
  text.Add(2.0 / 3.0, nullptr);
  text.Add('x', "[%c]");
  text.Add(static_cast<char const *>(nullptr), "%s");
  text.Add("t", "(%s)");
  EXPECT_EQ(text, "-5300<007>10995116277760.1 0.6666666666666666[x](t)");
}

TEST(StringFormat, LadderGivesEveryLengthWhole) {
  // Each width is the first that needs the next rung: 64 for a number, 256 for either, 4096 for the heap.
  for (int width : {64, 256, 4096}) {
    ZQString text("p"), padded;
    text.Add(7, ("%0" + std::to_string(width) + "d").c_str());
    EXPECT_EQ(Bytes(text), "p" + std::string(width - 1, '0') + "7");
    padded.Add("abc", ("%-" + std::to_string(width) + "s").c_str());
    EXPECT_EQ(Bytes(padded), "abc" + std::string(width - 3, ' '));
  }
}

TEST(StringFormat, OwnFloatTextIsWhatAClassicStreamWrites) {
  auto const streamed = [](auto value, int precision) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(precision);
    stream << value;
    return stream.str();
  };
  for (double value : {1.5, 0.1, -0.0, 1e-310, 123456789012345678.0, 1e16, 1e15, 5e-324, 3.141592653589793,
                       std::numeric_limits<double>::infinity()}) {
    ZQString text, single;
    text.Add(value);
    single.Add(static_cast<float>(value));
    EXPECT_EQ(Bytes(text), streamed(value, 16));
    EXPECT_EQ(Bytes(single), streamed(static_cast<float>(value), 8));
  }
}

TEST(StringEnviron, ExpandsEachFormAndLeavesWhatItCannotExpandAsWritten) {
  setenv("ZQT_V", "val", 1);
  setenv("ZQT_EMPTY", "", 1);
  unsetenv("ZQT_VDIR");
  // Without delimiters the first defined prefix of a name wins; with them only the whole name.
  EXPECT_EQ(Expanded("$ZQT_V ${ZQT_V} $(ZQT_V) $%ZQT_V% %ZQT_V%. $ZQT_VDIR ${ZQT_VDIR}"),
            "val val val val val. valDIR ${ZQT_VDIR}");
  for (char const *text : {"%ZQT_V", "$", "${ZQT_UNDEFINED}", "${ZQT_V", "${ZQT V}", "$ZQT_EMPTY", "100%"}) {
    EXPECT_EQ(Expanded(text, true), text);
  }
}

TEST(StringEnviron, SpecialsReplaceTheirTokensButNotBareNames) {
  unsetenv("USER");
  setenv("USERNAME", "u", 1);
  unsetenv("HOST");
  setenv("HOSTNAME", "h", 1);
  setenv("ZQ_TMPDIR", "/zq", 1);
  std::string const expected = "u/h/" + std::to_string(getpid()) + "//zq/$HOST";
  EXPECT_EQ(Bytes(Expanded("${USER}/%HOST%/$(PID)/%{ZQ_TMPDIR}/$HOST", true)), expected);
  EXPECT_EQ(Expanded("${USER}", false), "${USER}");
}

TEST(StringEnviron, SpecialsSweepUntilNothingIsReplaced) {
  unsetenv("HOSTNAME");
  unsetenv("COMPUTERNAME");
  setenv("HOST", "{HOST}", 1);
  // Each sweep joins one more "$" to the value and so spells the token anew: ten sweeps.
  EXPECT_EQ(Expanded("$$$$$$$$$$${HOST}", true), "{HOST}");
  unsetenv("HOST");
}

TEST(StringEnviron, SpecialsThatNeverSettleStopBeforeTheRepeatingSweep) {
  unsetenv("USER");
  unsetenv("HOSTNAME");
  unsetenv("COMPUTERNAME");
  // Two values naming each other: a sweep brings back the text of the sweep before.
  setenv("USERNAME", "${HOST}", 1);
  setenv("HOST", "${USER}", 1);
  EXPECT_EQ(Expanded("${USER}", true), "${USER}");
  EXPECT_EQ(Expanded("${HOST}", true), "${USER}");
  // A value holding its own token many times would multiply the text without end.
  setenv("USERNAME", "${USER}${USER}${USER}${USER}${USER}${USER}${USER}x", 1);
  ZQString const multiplied = Expanded("${USER}", true);
  EXPECT_TRUE(multiplied.StartsWith("${USER}${USER}"));
  EXPECT_LT(multiplied.Size(), 1 << 20);
  // Once per sweep, it stops at the bound all the same, having kept the last whole sweep.
  setenv("USERNAME", "x${USER}", 1);
  std::string const grown = Bytes(Expanded("${USER}", true));
  EXPECT_EQ(grown.find_first_not_of('x'), grown.size() - 7);
  EXPECT_GT(grown.size(), 64u);
  EXPECT_LT(grown.size(), 1u << 20);
  unsetenv("USERNAME");
  unsetenv("HOST");
}

// Progress scaling, alignment and time texts, processors, timers, floating-point controls,
// process id and environment look-ups.
#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Math.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQOSUtil.h>
#include <zqcore/system/ZQSysUtil.h>
#include <zqcore/system/ZQTimer.h>
#include <zqcore/system/ZQUtil.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <regex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// The text matches `pattern` whole.
bool HasShape(ZQString const &text, char const *pattern) { return std::regex_match(text.c_str(), std::regex(pattern)); }

void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

} // namespace

// Counts scale between the bounds and truncate toward zero; a total of zero counts as a
// fraction of one hundred. A product beyond 32 bits has no truncated value: it gives the
// lowest int, and the sum with `from` wraps, as the processor's own arithmetic does.
TEST(Progress, CountsAndPercentagesScaleBetweenTheBounds) {
  struct Case {
    long long count, total;
    int from, to;
    bool clamp;
    int expected;
  };
  for (Case const &c : std::vector<Case>{{5, 10, 0, 100, false, 50},
                                         {20, 10, 0, 100, false, 200},
                                         {20, 10, 0, 100, true, 100},
                                         {-5, 10, 0, 100, false, -50},
                                         {-5, 10, 0, 100, true, 0},
                                         {1, 3, 10, 20, false, 13},
                                         {5, 10, 100, 0, true, 50},
                                         {15, 10, 100, 0, true, 0},
                                         {5, 0, 0, 100, false, 10000},
                                         {0, 0, 0, 100, false, 10000},
                                         {5, 0, 0, 100, true, 100},
                                         {5, 0, 100, 0, true, 0},
                                         {5, 0, INT_MIN, INT_MAX, false, 0},
                                         {5, 0, 0, INT_MAX, false, INT_MIN}}) {
    EXPECT_EQ(ZQUtil::CountToProgress(c.count, c.total, c.from, c.to, c.clamp), c.expected)
        << c.count << "/" << c.total << " in " << c.from << ".." << c.to;
  }
  EXPECT_EQ(ZQUtil::PercentageToProgress(0.999, 0, 100, false), 99);
  EXPECT_EQ(ZQUtil::PercentageToProgress(-0.999, 0, 100, false), -99);
  EXPECT_EQ(ZQUtil::PercentageToProgress(0.5, 0, 100, false), 50);
  EXPECT_EQ(ZQUtil::PercentageToProgress(50.0, 0, 100, true), 100);
  EXPECT_EQ(ZQUtil::PercentageToProgress(std::nan(""), 0, 100, true), 0);
}

TEST(MemoryAlignment, NamesTheLargestAlignmentOrTheOffset) {
  alignas(64) static char block[128];
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", nullptr, true), "NULL pointer");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", block, false), "x: 64-byte aligned");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", block + 32, false), "x: 32-byte aligned");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", block + 48, false), "x: 16-byte aligned");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", block + 24, false), "x: 8-byte aligned");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("x", block + 1, false), "x: NOT even 8-byte aligned, offset = 1 byte");
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString(L"w\u00e4", block + 70, false),
            "w\xC3\xA4: NOT even 8-byte aligned, offset = 6 bytes");
  char expected[64];
  std::snprintf(expected, sizeof expected, "a: 0x%llx (64-byte aligned)",
                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(block + 64)));
  EXPECT_EQ(ZQSysUtil::MemoryAlignmentToString("a", block + 64, true), expected);
}

TEST(Machine, ProcessorsAreCountedAndLocalTimeTextsHaveTheirShapes) {
  long long nCPUs = 0;
  EXPECT_EQ(ZQSysUtil::GetNCPUs(nCPUs).GetStatusCode(), 0);
  EXPECT_GE(nCPUs, 1);
  ZQString text("old content");
  ZQSysUtil::GetTime(text);
  EXPECT_TRUE(HasShape(text, R"(\d\d:\d\d:\d\d)")) << text.c_str();
  ZQSysUtil::GetYear(text);
  EXPECT_TRUE(HasShape(text, R"(\d{4})")) << text.c_str();
  ZQString const year = text;
  ZQSysUtil::GetDateAndTime(text);
  EXPECT_TRUE(HasShape(text, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)")) << text.c_str();
  EXPECT_TRUE(text.StartsWith(year));
  ZQSysUtil::GetCalendarDateAndTime(text);
  EXPECT_TRUE(HasShape(text, R"([A-Za-z]{3} [A-Za-z]{3} [ \d]\d \d\d:\d\d:\d\d \d{4})")) << text.c_str();
}

TEST(Timers, ElapsedTimeRisesAndStartsAgainOnReset) {
  ZQTimer timer;
  Sleep(30);
  double const first = timer.GetElapsedTimeInSeconds(false);
  double const second = timer.GetElapsedTimeInSeconds(true);
  double const afterReset = timer.GetElapsedTimeInSeconds(false);
  EXPECT_GE(first, 0.03);
  EXPECT_GE(second, first);
  EXPECT_LT(afterReset, second);
  // A copy keeps the start of its source; the source may then start again on its own.
  ZQTimer copy(timer);
  Sleep(30);
  timer.Reset();
  EXPECT_GE(copy.GetElapsedTimeInSeconds(false), 0.03);
  copy = timer;
  EXPECT_LT(copy.GetElapsedTimeInSeconds(false), 0.03 + timer.GetElapsedTimeInSeconds(false));
}

#if defined(__x86_64__) || defined(__i386__)
TEST(FloatingPointControls, NameTheFlagsOfTheCurrentState) {
  unsigned const saved = _mm_getcsr();
  String text("old");
  // Every exception masked; flush to zero, divide-by-zero unmasked, toward zero; denormals
  // as zero, which is named as a flush too, and down; only the round-up bit.
  for (auto const &[csr, expected] : std::vector<std::pair<unsigned, char const *>>{
           {0x1F80u, "_EM_INVALID|_EM_DENORMAL|_EM_ZERODIVIDE|_EM_OVERFLOW|_EM_UNDERFLOW|_EM_INEXACT"},
           {(0x1F80u & ~0x200u) | 0x8000u | 0x6000u, "_DN_FLUSH|_EM_INVALID|_EM_DENORMAL|_EM_OVERFLOW|_EM_UNDERFLOW|_"
                                                     "EM_INEXACT|_MCW_RC|_RC_CHOP|_RC_UP|_RC_DOWN"},
           {0x1F80u | 0x40u | 0x2000u, "_DN_FLUSH|_EM_INVALID|_EM_DENORMAL|_EM_ZERODIVIDE|_EM_OVERFLOW|_EM_UNDERFLOW|"
                                       "_EM_INEXACT|_MCW_RC|_RC_CHOP|_RC_DOWN"},
           {0x4000u, "_MCW_RC|_RC_CHOP|_RC_UP"}}) {
    _mm_setcsr(csr);
    Math::GetFloatingPointControls(text);
    _mm_setcsr(saved);
    EXPECT_EQ(text, expected) << std::hex << csr;
  }
}
#endif

TEST(OSUtil, GetPIDIsThisProcess) { EXPECT_EQ(ZQOSUtil::GetPID(), static_cast<int>(getpid())); }

TEST(OSUtil, GetEnvTellsSetFromUnsetAndClearsTheValue) {
  setenv("ZQT_SET", "v\xC3\xA9", 1);
  setenv("ZQT_EMPTY", "", 1);
  unsetenv("ZQT_UNSET");
  ZQString value("stale");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, "ZQT_SET", value));
  EXPECT_EQ(value, "v\xC3\xA9");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, L"ZQT_SET", value));
  EXPECT_EQ(value, "v\xC3\xA9");
  EXPECT_TRUE(ZQOSUtil::GetEnv(nullptr, "ZQT_EMPTY", value));
  EXPECT_TRUE(value.IsEmpty());
  value = "stale";
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, "ZQT_UNSET", value));
  EXPECT_TRUE(value.IsEmpty());
  value = "stale";
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, static_cast<char const *>(nullptr), value));
  EXPECT_TRUE(value.IsEmpty());
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, static_cast<wchar_t const *>(nullptr), value));
  unsetenv("ZQT_SET");
  unsetenv("ZQT_EMPTY");
}

// Progress scaling, alignment text, local time texts, the processor count, timers and
// the floating-point control text.
#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Math.h>
#include <zqcore/public/String.h>
#include <zqcore/public/Timer.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQOSUtil.h>
#include <zqcore/system/ZQSysUtil.h>
#include <zqcore/system/ZQTimer.h>
#include <zqcore/system/ZQUtil.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <regex>
#include <string>
#include <thread>
#include <unistd.h>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

using namespace Velmora::Tessara::ZQ::Core;

namespace {

bool Matches(ZQString const &text, char const *pattern) { return std::regex_match(text.c_str(), std::regex(pattern)); }

void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

} // namespace

TEST(Progress, CountsScaleBetweenTheBoundsAndTruncateTowardZero) {
  EXPECT_EQ(ZQUtil::CountToProgress(5, 10, 0, 100, false), 50);
  EXPECT_EQ(ZQUtil::CountToProgress(20, 10, 0, 100, false), 200);
  EXPECT_EQ(ZQUtil::CountToProgress(20, 10, 0, 100, true), 100);
  EXPECT_EQ(ZQUtil::CountToProgress(-5, 10, 0, 100, false), -50);
  EXPECT_EQ(ZQUtil::CountToProgress(-5, 10, 0, 100, true), 0);
  EXPECT_EQ(ZQUtil::CountToProgress(1, 3, 10, 20, false), 13);
  // Counting down: from above to.
  EXPECT_EQ(ZQUtil::CountToProgress(5, 10, 100, 0, true), 50);
  EXPECT_EQ(ZQUtil::CountToProgress(15, 10, 100, 0, true), 0);
  EXPECT_EQ(ZQUtil::PercentageToProgress(0.999, 0, 100, false), 99);
  EXPECT_EQ(ZQUtil::PercentageToProgress(-0.999, 0, 100, false), -99);
  EXPECT_EQ(ZQUtil::PercentageToProgress(0.5, 0, 100, false), 50);
  EXPECT_EQ(ZQUtil::PercentageToProgress(50.0, 0, 100, true), 100);
}

TEST(Progress, ATotalOfZeroCountsAsAFractionOfOneHundred) {
  EXPECT_EQ(ZQUtil::CountToProgress(5, 0, 0, 100, false), 10000);
  EXPECT_EQ(ZQUtil::CountToProgress(0, 0, 0, 100, false), 10000);
  EXPECT_EQ(ZQUtil::CountToProgress(5, 0, 0, 100, true), 100);
  EXPECT_EQ(ZQUtil::CountToProgress(5, 0, 100, 0, true), 0);
  // A product beyond 32 bits has no truncated value: it gives the lowest int, and the sum
  // with `from` wraps, as the processor's own arithmetic does.
  EXPECT_EQ(ZQUtil::CountToProgress(5, 0, INT_MIN, INT_MAX, false), 0);
  EXPECT_EQ(ZQUtil::CountToProgress(5, 0, 0, INT_MAX, false), INT_MIN);
  EXPECT_EQ(ZQUtil::PercentageToProgress(std::nan(""), 0, 100, true), 0);
}

TEST(Progress, IncrementsAndDecrementsByOne) {
  int i = 0;
  long long n = (1LL << 40);
  ZQUtil::IncrementByOne(i);
  ZQUtil::IncrementByOne(n);
  EXPECT_EQ(i, 1);
  EXPECT_EQ(n, (1LL << 40) + 1);
  ZQUtil::DecrementByOne(i);
  ZQUtil::DecrementByOne(i);
  ZQUtil::DecrementByOne(n);
  EXPECT_EQ(i, -1);
  EXPECT_EQ(n, 1LL << 40);
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

TEST(LocalTime, TextsHaveTheirFixedShapes) {
  ZQString text("old content");
  ZQSysUtil::GetTime(text);
  EXPECT_TRUE(Matches(text, "[0-2][0-9]:[0-5][0-9]:[0-6][0-9]")) << text.c_str();
  ZQSysUtil::GetYear(text);
  EXPECT_TRUE(Matches(text, "2[0-9]{3}")) << text.c_str();
  ZQString const year = text;
  ZQSysUtil::GetDateAndTime(text);
  EXPECT_TRUE(Matches(text, "2[0-9]{3}-[01][0-9]-[0-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-6][0-9]")) << text.c_str();
  ZQSysUtil::GetCalendarDateAndTime(text);
  EXPECT_TRUE(Matches(text, "[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} 2[0-9]{3}")) << text.c_str();
}

TEST(Processors, CountIsWhatTheSystemHasOnline) {
  long long n = -5;
  ZQResult const result = ZQSysUtil::GetNCPUs(n);
  EXPECT_EQ(result.GetStatusCode(), 0);
  EXPECT_EQ(n, sysconf(_SC_NPROCESSORS_ONLN));
  EXPECT_GE(n, 1);
}

TEST(Environment, ANullNameIsNeverSet) {
  ZQString value("stale");
  EXPECT_FALSE(ZQOSUtil::GetEnv(nullptr, static_cast<char const *>(nullptr), value));
  EXPECT_TRUE(value.IsEmpty());
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

TEST(Timers, PublicTimersAreIndependentCopies) {
  Timer timer;
  Sleep(30);
  Timer copy(timer);
  copy.Reset();
  EXPECT_GE(timer.GetElapsedTimeInSeconds(false), 0.03);
  EXPECT_NE(copy.GetTimer(), timer.GetTimer());
  Timer fromInner(*timer.GetTimer());
  EXPECT_GE(fromInner.GetElapsedTimeInSeconds(false), 0.03);
}

#if defined(__x86_64__) || defined(__i386__)
TEST(FloatingPointControls, NameTheFlagsOfTheCurrentState) {
  unsigned const saved = _mm_getcsr();
  String text("old");
  Math::GetFloatingPointControls(text);
  EXPECT_EQ(text, "_EM_INVALID|_EM_DENORMAL|_EM_ZERODIVIDE|_EM_OVERFLOW|_EM_UNDERFLOW|_EM_INEXACT");
  // Flush to zero, divide-by-zero unmasked, rounding toward zero.
  _mm_setcsr((0x1F80u & ~0x200u) | 0x8000u | 0x6000u);
  Math::GetFloatingPointControls(text);
  std::string const towardZero = text.c_str();
  _mm_setcsr(0x1F80u | 0x40u | 0x2000u);
  Math::GetFloatingPointControls(text);
  std::string const down = text.c_str();
  _mm_setcsr(0x4000u);
  Math::GetFloatingPointControls(text);
  std::string const up = text.c_str();
  _mm_setcsr(saved);
  EXPECT_EQ(towardZero, "_DN_FLUSH|_EM_INVALID|_EM_DENORMAL|_EM_OVERFLOW|_EM_UNDERFLOW|_EM_INEXACT|_MCW_RC|_RC_CHOP|"
                        "_RC_UP|_RC_DOWN");
  EXPECT_EQ(down, "_DN_FLUSH|_EM_INVALID|_EM_DENORMAL|_EM_ZERODIVIDE|_EM_OVERFLOW|_EM_UNDERFLOW|_EM_INEXACT|_MCW_RC|"
                  "_RC_CHOP|_RC_DOWN");
  EXPECT_EQ(up, "_MCW_RC|_RC_CHOP|_RC_UP");
}
#endif

#include <zqcore/system/ZQTimer.h>

#include <ctime>

namespace Velmora::Tessara::ZQ::Core {

namespace {

long long NowInNanoseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

} // namespace

ZQTimer::ZQTimer() : start(NowInNanoseconds()) {}

ZQTimer::ZQTimer(ZQTimer const &other) : start(other.start) {}

ZQTimer &ZQTimer::operator=(ZQTimer const &other) {
  Copy(other);
  return *this;
}

ZQTimer::~ZQTimer() = default;

void ZQTimer::Reset() { start = NowInNanoseconds(); }

double ZQTimer::GetElapsedTimeInSeconds(bool reset) {
  long long const now = NowInNanoseconds();
  long long const elapsed = now - start;
  if (reset) {
    start = NowInNanoseconds();
  }
  return static_cast<double>(elapsed) / 1e9;
}

void ZQTimer::Copy(ZQTimer const &other) {
  if (this != &other) {
    start = other.start;
  }
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/public/Timer.h>
#include <zqcore/system/ZQTimer.h>

namespace Velmora::Tessara::ZQ::Core {

Timer::Timer() : timer(new ZQTimer()) {}

Timer::Timer(ZQTimer const &other) : timer(new ZQTimer(other)) {}

Timer::Timer(Timer const &other) : timer(new ZQTimer()) { Copy(other); }

Timer &Timer::operator=(Timer const &other) {
  Copy(other);
  return *this;
}

Timer::~Timer() {
  delete timer;
  timer = nullptr;
}

void Timer::Copy(Timer const &other) {
  if (timer != other.timer) {
    *timer = *other.timer;
  }
}

void Timer::Reset() { timer->Reset(); }
double Timer::GetElapsedTimeInSeconds(bool reset) { return timer->GetElapsedTimeInSeconds(reset); }
ZQTimer *Timer::GetTimer() { return timer; }
ZQTimer const *Timer::GetTimer() const { return timer; }

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/system/ZQUtil.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// A truncating conversion that has no value for NaN or a product outside 32 bits gives
// the lowest int, as the processor's own truncating conversion does, instead of
// undefined behaviour.
int TruncateToInt32(double value) {
  double const truncated = std::trunc(value);
  if (!(truncated >= static_cast<double>(INT_MIN) && truncated <= static_cast<double>(INT_MAX))) {
    return INT_MIN;
  }
  return static_cast<int>(truncated);
}

// 32-bit addition that wraps rather than overflowing.
int WrappingAdd(int a, int b) {
  return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

} // namespace

void ZQUtil::IncrementByOne(int &value) { ++value; }

void ZQUtil::IncrementByOne(long long &value) { ++value; }

void ZQUtil::DecrementByOne(int &value) { --value; }

void ZQUtil::DecrementByOne(long long &value) { --value; }

int ZQUtil::CountToProgress(long long count, long long total, int from, int to, bool clamp) {
  double const fraction = total == 0 ? 100.0 : static_cast<double>(count) / static_cast<double>(total);
  return PercentageToProgress(fraction, from, to, clamp);
}

int ZQUtil::PercentageToProgress(double fraction, int from, int to, bool clamp) {
  double const span = static_cast<double>(static_cast<long long>(to) - from);
  int const value = WrappingAdd(TruncateToInt32(span * fraction), from);
  return clamp ? std::clamp(value, std::min(from, to), std::max(from, to)) : value;
}

} // namespace Velmora::Tessara::ZQ::Core

// ZQVector: a fixed number of values held side by side, as transforms and variants use them.
#pragma once

namespace Velmora::Tessara::ZQ::Core {

/// N values of type T in memory order; the default constructor zeroes every element.
/// Carries no arithmetic: it is the storage that transforms and variants pass around.
template <typename T, int N> class ZQVector {
public:
  static constexpr int Size = N;

  ZQVector() : values{} {}

  T &operator[](int i) { return values[i]; }
  T const &operator[](int i) const { return values[i]; }

  T *GetData() { return values; }
  T const *GetData() const { return values; }

private:
  T values[N];
};

} // namespace Velmora::Tessara::ZQ::Core

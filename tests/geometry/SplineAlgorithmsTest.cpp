// Knot spans and basis functions against exact values and the basis identities, and the
// binomial table of the rational algorithms.
#include <zqcore/geometry/ZQSplineAlgorithms.h>

#include "SplineReferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Algorithms = ZQSplineAlgorithms<double, long long>;
using Ders = double[32][32];
constexpr double kUnused = -777.0;
// Degrees 3, 2 and 31 of the reference file, whose basis functions it also holds.
char const *const kBasisCurves[] = {"Cubic", "Unclamped", "HighDegree"};

// Exact values are met to 1e-12, relative to the largest value of the row.
void ExpectRowNear(double const *got, double const *expected, long long count, double u) {
  double scale = 1.0;
  for (long long j = 0; j < count; ++j) {
    scale = std::max(scale, std::fabs(expected[j]));
  }
  for (long long j = 0; j < count; ++j) {
    EXPECT_NEAR(got[j], expected[j], 1e-12 * scale) << "u = " << u << ", function " << j;
  }
}

bool ByMagnitude(double a, double b) { return std::fabs(a) < std::fabs(b); }

TEST(KnotSpan, NaNEndsAtTheFirstMidpoint) {
  Algorithms algorithms;
  double const nan = std::numeric_limits<double>::quiet_NaN();
  // (p + high) / 2 with high = knotCount - 1 - p; the other spans are checked with the values.
  double const *cubic = splineref::One("knots", "Cubic", 12).data();
  EXPECT_EQ(algorithms.FindKnotSpan(12, 3, cubic, nan), 5);
  EXPECT_EQ(algorithms.FindKnotSpan(65, 31, splineref::One("knots", "HighDegree", 65).data(), nan), 32);
  EXPECT_EQ(algorithms.FindKnotSpan(12, 3, cubic, 0.4999), 4);
}

// At knots of every multiplicity, at both ends and outside the range, degrees 2, 3 and 31.
TEST(BasisFunctions, SpansValuesAndDerivativesMatchExactValues) {
  Algorithms algorithms;
  for (char const *name : kBasisCurves) {
    splineref::Curve const c = splineref::GetCurve(name);
    long long const order = std::min(c.degree, 2LL), count = c.degree + 1;
    // Each row: u, the span, then rows 0 to order of the derivatives.
    for (splineref::Row const &reference : splineref::Rows("basis", name, 2 + (order + 1) * count)) {
      double const u = reference[0];
      long long const span = algorithms.FindKnotSpan(c.KnotCount(), c.degree, c.knots.data(), u);
      ASSERT_EQ(span, static_cast<long long>(reference[1])) << name << ", u = " << u;
      double values[32];
      algorithms.BasisFunctions(span, u, c.degree, c.knots.data(), values);
      ExpectRowNear(values, &reference[2], count, u);
      Ders ders;
      std::fill(&ders[0][0], &ders[0][0] + 32 * 32, kUnused);
      algorithms.BasisFunctionDerivatives(span, u, c.degree, order, c.knots.data(), ders);
      for (long long k = 0; k <= order; ++k) {
        ExpectRowNear(ders[k], &reference[2 + k * count], count, u);
      }
      EXPECT_EQ(ders[order + 1][0], kUnused) << "a row above the order was written";
    }
  }
}

// Inside the knot range the values sum to one and each derivative row, up to order 3, to zero.
TEST(BasisFunctions, PartitionOfUnityAndDerivativeRowsSumToZero) {
  Algorithms algorithms;
  for (char const *name : kBasisCurves) {
    splineref::Curve const c = splineref::GetCurve(name);
    double const first = c.knots[c.degree];
    double const last = c.knots[c.KnotCount() - 1 - c.degree];
    long long const order = std::min(c.degree, 3LL);
    for (int step = 0; step <= 200; ++step) {
      double const u = first + (last - first) * step / 200.0;
      long long const span = algorithms.FindKnotSpan(c.KnotCount(), c.degree, c.knots.data(), u);
      Ders ders;
      algorithms.BasisFunctionDerivatives(span, u, c.degree, order, c.knots.data(), ders);
      algorithms.BasisFunctions(span, u, c.degree, c.knots.data(), ders[0]);
      for (long long k = 0; k <= order; ++k) {
        double const sum = std::accumulate(ders[k], ders[k] + c.degree + 1, 0.0);
        double const scale = std::fabs(*std::max_element(ders[k], ders[k] + c.degree + 1, ByMagnitude));
        EXPECT_NEAR(sum, k == 0 ? 1.0 : 0.0, 1e-12 * std::max(1.0, scale)) << c.degree << ", u = " << u;
      }
      EXPECT_GE(*std::min_element(ders[0], ders[0] + c.degree + 1), 0.0);
    }
  }
}

// End multiplicity p + 2 leaves a last span of zero length: the value recurrence skips the
// empty differences and gives zeros, the derivative recurrence divides by them.
TEST(BasisFunctions, ZeroLengthSpanIsFiniteOnlyForValues) {
  double const knots[] = {0, 0, 0, 0, 1, 1, 1, 1, 1};
  Algorithms algorithms;
  long long const span = algorithms.FindKnotSpan(9, 3, knots, 1.0);
  ASSERT_EQ(knots[span], knots[span + 1]);
  double values[4];
  algorithms.BasisFunctions(span, 1.0, 3, knots, values);
  EXPECT_TRUE(std::all_of(values, values + 4, [](double v) { return v == 0.0; }));
  Ders ders;
  algorithms.BasisFunctionDerivatives(span, 1.0, 3, 1, knots, ders);
  EXPECT_TRUE(std::any_of(ders[0], ders[0] + 4, [](double d) { return !std::isfinite(d); }));
}

class BinomialProbe : public ZQNURBSAlgorithms<double, long long, 3> {
public:
  double Fixed(int i, int j) const { return Bin[i][j]; }
  long long GrownOrder() const { return binomialOrder; }
  ZQArrayNativeType<double, long long> const &Grown() const { return binomials; }
};

double TrueBinomial(int n, int k) {
  double value = 1.0;
  for (int t = 1; t <= k; ++t) {
    value = value * (n - k + t) / t;
  }
  return std::round(value);
}

// The products are not reduced, so the 64-bit integers wrap from row 21 on; evaluation
// reads rows 0 to 2 only, and the wrong rows are kept as they are.
TEST(Binomials, ExactToRowTwentyThenWrappedAndGrownOnRequest) {
  BinomialProbe probe;
  int wrong = 0;
  for (int i = 0; i < 32; ++i) {
    for (int j = 0; j < 32; ++j) {
      double const expected = j <= i ? TrueBinomial(i, j) : 0.0;
      EXPECT_TRUE(i > 20 || probe.Fixed(i, j) == expected) << i << " choose " << j;
      wrong += probe.Fixed(i, j) != expected ? 1 : 0;
    }
  }
  EXPECT_EQ(probe.Fixed(21, 19), 58.0);
  EXPECT_EQ(wrong, 113);
  EXPECT_EQ(probe.Grown().GetRank(), 0);

  // The growable table: built by a larger order only, and copied with the object.
  probe.InitializeBinomials(6);
  probe.InitializeBinomials(4);
  ASSERT_EQ(probe.GrownOrder(), 6);
  EXPECT_EQ(probe.Grown()(5, 2), 10.0);
  EXPECT_EQ(probe.Grown()(2, 5), 0.0);
  BinomialProbe copy;
  copy.CopyBinomials(probe);
  EXPECT_EQ(copy.Grown()(5, 3), 10.0);
  EXPECT_NE(copy.Grown().GetData(), probe.Grown().GetData());
}

} // namespace

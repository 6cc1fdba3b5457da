// Knot spans and basis functions, checked against exact values and the basis identities.
#include <zqcore/geometry/ZQSplineAlgorithms.h>

#include "SplineReferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Algorithms = ZQSplineAlgorithms<double, long long>;
using Ders = double[32][32];

constexpr double kUnused = -777.0;

std::vector<double> const kCubicKnots = {0, 0, 0, 0, 0.25, 0.5, 0.5, 0.75, 1, 1, 1, 1};
std::vector<double> const kUnclampedKnots = {0, 1, 2, 3, 4, 5, 6, 7};

std::vector<double> HighDegreeKnots() {
  std::vector<double> knots(32, 0.0);
  knots.push_back(0.5);
  knots.insert(knots.end(), 32, 1.0);
  return knots;
}

long long Count(std::vector<double> const &knots) { return static_cast<long long>(knots.size()); }

// Exact values are met to 1e-12, relative to the size of the row's largest value.
void ExpectRowNear(double const *got, double const *expected, long long count, char const *what, double u) {
  double scale = 1.0;
  for (long long j = 0; j < count; ++j) {
    scale = std::max(scale, std::fabs(expected[j]));
  }
  for (long long j = 0; j < count; ++j) {
    EXPECT_NEAR(got[j], expected[j], 1e-12 * scale) << what << " at u = " << u << ", function " << j;
  }
}

template <size_t Size>
void ExpectBasisMatches(std::vector<double> const &knots, long long degree,
                        splineref::BasisReference const (&references)[Size]) {
  Algorithms algorithms;
  long long const order = std::min(degree, 2LL);
  for (auto const &reference : references) {
    long long const span = algorithms.FindKnotSpan(Count(knots), degree, knots.data(), reference.u);
    ASSERT_EQ(span, reference.span) << "u = " << reference.u;

    double values[32];
    algorithms.BasisFunctions(span, reference.u, degree, knots.data(), values);
    ExpectRowNear(values, reference.ders[0], degree + 1, "value", reference.u);

    Ders ders;
    std::fill(&ders[0][0], &ders[0][0] + 32 * 32, kUnused);
    algorithms.BasisFunctionDerivatives(span, reference.u, degree, order, knots.data(), ders);
    for (long long k = 0; k <= order; ++k) {
      ExpectRowNear(ders[k], reference.ders[k], degree + 1, k == 0 ? "value" : "derivative", reference.u);
    }
    EXPECT_EQ(ders[order + 1][0], kUnused) << "a row above the order was written";
  }
}

// ---- Knot span search ------------------------------------------------------------------

TEST(KnotSpan, HalfOpenSpansWithEndRules) {
  Algorithms algorithms;
  double const *U = kCubicKnots.data();
  long long const count = Count(kCubicKnots);
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.0), 3); // U[p]
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.1), 3);
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.25), 4); // a simple knot starts its span
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.4999), 4);
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.5), 6); // the last span starting at a double knot
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 0.75), 7);
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 1.0), 7);  // the last knot belongs to span n
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, -5.0), 3); // outside: the end spans
  EXPECT_EQ(algorithms.FindKnotSpan(count, 3, U, 5.0), 7);
  EXPECT_EQ(algorithms.FindKnotSpan(Count(kUnclampedKnots), 2, kUnclampedKnots.data(), 3.5), 3);
  EXPECT_EQ(algorithms.FindKnotSpan(Count(kUnclampedKnots), 2, kUnclampedKnots.data(), 0.5), 2);
}

TEST(KnotSpan, NaNEndsAtTheFirstMidpoint) {
  Algorithms algorithms;
  double const nan = std::numeric_limits<double>::quiet_NaN();
  // (p + high) / 2 with high = knotCount - 1 - p.
  EXPECT_EQ(algorithms.FindKnotSpan(Count(kCubicKnots), 3, kCubicKnots.data(), nan), 5);
  std::vector<double> const knots = HighDegreeKnots();
  EXPECT_EQ(algorithms.FindKnotSpan(Count(knots), 31, knots.data(), nan), 32);
}

// ---- Basis functions against exact values -----------------------------------------------

TEST(BasisFunctions, MatchExactValuesAtKnotsEndsAndOutside) {
  ExpectBasisMatches(kCubicKnots, 3, splineref::kCubicBasis);
  ExpectBasisMatches(kUnclampedKnots, 2, splineref::kUnclampedBasis);
  ExpectBasisMatches(HighDegreeKnots(), 31, splineref::kHighDegreeBasis);
}

TEST(BasisFunctions, DegreeZeroIsOneWithoutRecurrence) {
  Algorithms algorithms;
  std::vector<double> const knots = {0, 1, 2, 3};
  double values[2] = {kUnused, kUnused};
  algorithms.BasisFunctions(1, 1.5, 0, knots.data(), values);
  EXPECT_EQ(values[0], 1.0);
  EXPECT_EQ(values[1], kUnused);
}

// Inside the knot range the values sum to one and every derivative row to zero; a full
// order of derivatives includes the last, constant one.
TEST(BasisFunctions, PartitionOfUnityAndDerivativeRowsSumToZero) {
  struct Case {
    std::vector<double> knots;
    long long degree;
  };
  std::vector<Case> const cases = {{kCubicKnots, 3}, {kUnclampedKnots, 2}, {HighDegreeKnots(), 31}};
  Algorithms algorithms;
  for (Case const &c : cases) {
    double const first = c.knots[c.degree];
    double const last = c.knots[c.knots.size() - 1 - c.degree];
    long long const order = std::min(c.degree, 3LL);
    for (int step = 0; step <= 200; ++step) {
      double const u = first + (last - first) * step / 200.0;
      long long const span = algorithms.FindKnotSpan(Count(c.knots), c.degree, c.knots.data(), u);
      double values[32];
      algorithms.BasisFunctions(span, u, c.degree, c.knots.data(), values);
      Ders ders;
      algorithms.BasisFunctionDerivatives(span, u, c.degree, order, c.knots.data(), ders);
      double sum = 0.0;
      for (long long j = 0; j <= c.degree; ++j) {
        sum += values[j];
        EXPECT_GE(values[j], 0.0);
      }
      EXPECT_NEAR(sum, 1.0, 1e-13) << "degree " << c.degree << ", u = " << u;
      for (long long k = 1; k <= order; ++k) {
        double rowSum = 0.0;
        double scale = 1.0;
        for (long long j = 0; j <= c.degree; ++j) {
          rowSum += ders[k][j];
          scale = std::max(scale, std::fabs(ders[k][j]));
        }
        EXPECT_NEAR(rowSum, 0.0, 1e-12 * scale) << "degree " << c.degree << ", order " << k << ", u = " << u;
      }
    }
  }
}

// End multiplicity p + 2 leaves a last span of zero length: the value recurrence skips the
// empty differences and stays finite, the derivative recurrence divides by them.
TEST(BasisFunctions, ZeroLengthSpanIsFiniteOnlyForValues) {
  std::vector<double> const knots = {0, 0, 0, 0, 1, 1, 1, 1, 1};
  Algorithms algorithms;
  long long const span = algorithms.FindKnotSpan(Count(knots), 3, knots.data(), 1.0);
  ASSERT_EQ(span, 4);
  ASSERT_EQ(knots[span], knots[span + 1]);
  double values[4];
  algorithms.BasisFunctions(span, 1.0, 3, knots.data(), values);
  for (double value : values) {
    EXPECT_EQ(value, 0.0);
  }
  Ders ders;
  algorithms.BasisFunctionDerivatives(span, 1.0, 3, 1, knots.data(), ders);
  EXPECT_TRUE(std::any_of(std::begin(ders[0]), std::begin(ders[0]) + 4, [](double d) { return !std::isfinite(d); }));
}

// ---- Binomial table of the rational algorithms ------------------------------------------

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
TEST(Binomials, FixedTableExactToRowTwentyThenWrapped) {
  BinomialProbe probe;
  for (int i = 0; i <= 20; ++i) {
    for (int j = 0; j < 32; ++j) {
      EXPECT_EQ(probe.Fixed(i, j), j <= i ? TrueBinomial(i, j) : 0.0) << i << " choose " << j;
    }
  }
  EXPECT_EQ(probe.Fixed(21, 19), 58.0);
  int wrong = 0;
  for (int i = 21; i < 32; ++i) {
    for (int j = 0; j <= i; ++j) {
      wrong += probe.Fixed(i, j) != TrueBinomial(i, j) ? 1 : 0;
    }
  }
  EXPECT_EQ(wrong, 113);
  EXPECT_EQ(probe.GrownOrder(), 0);
  EXPECT_EQ(probe.Grown().GetRank(), 0);
}

TEST(Binomials, GrowableTableOnlyGrowsAndTravelsWithTheCopy) {
  BinomialProbe probe;
  probe.InitializeBinomials(6);
  ASSERT_EQ(probe.GrownOrder(), 6);
  ASSERT_EQ(probe.Grown().GetSize(0), 6);
  ASSERT_EQ(probe.Grown().GetSize(1), 6);
  EXPECT_EQ(probe.Grown()(5, 2), 10.0);
  EXPECT_EQ(probe.Grown()(2, 5), 0.0);
  probe.InitializeBinomials(4);
  EXPECT_EQ(probe.GrownOrder(), 6);
  EXPECT_EQ(probe.Grown().GetSize(0), 6);

  BinomialProbe copy;
  copy.CopyBinomials(probe);
  EXPECT_EQ(copy.GrownOrder(), 6);
  EXPECT_EQ(copy.Grown()(5, 3), 10.0);
  EXPECT_NE(copy.Grown().GetData(), probe.Grown().GetData());
}

} // namespace

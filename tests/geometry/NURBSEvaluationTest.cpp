// Curve and surface evaluation: exact values for every path, which outputs are written,
// the exact zeros above a degree, and what a copy carries.
#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include "SplineReferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

constexpr double kUntouched = -999.5;

struct Point {
  double xyz[3] = {kUntouched, kUntouched, kUntouched};
  double *out() { return xyz; }
  bool Untouched() const { return xyz[0] == kUntouched && xyz[1] == kUntouched && xyz[2] == kUntouched; }
};

// The same geometry as make_spline_references.py, written out as the library takes it.
struct Curve {
  std::vector<double> knots;
  long long degree;
  std::vector<double> points; // 3 or 4 (homogeneous) values per point
  bool rational;
  long long KnotCount() const { return static_cast<long long>(knots.size()); }
};

std::vector<double> Weighted(std::vector<double> const &xyz, std::vector<double> const &weights) {
  std::vector<double> homogeneous;
  for (size_t i = 0; i < weights.size(); ++i) {
    for (int c = 0; c < 3; ++c) {
      homogeneous.push_back(xyz[3 * i + c] * weights[i]);
    }
    homogeneous.push_back(weights[i]);
  }
  return homogeneous;
}

std::vector<double> const kCubicKnots = {0, 0, 0, 0, 0.25, 0.5, 0.5, 0.75, 1, 1, 1, 1};
std::vector<double> const kCubicPoints = {0, 0, 0, 1, 2, 0, 2, 3, 1, 4, 3, -1, 5, 1, 2, 6, -1, 0, 8, 0, 1, 9, 2, 3};
std::vector<double> const kCubicWeights = {1, 0.5, 2, 1.5, 1, 0.75, 2.5, 1};
std::vector<double> const kLinearPoints = {0, 0, 0, 2, 1, 0, 3, 3, 1};

std::vector<double> HighDegreeKnots() {
  std::vector<double> knots(32, 0.0);
  knots.push_back(0.5);
  knots.insert(knots.end(), 32, 1.0);
  return knots;
}

std::vector<double> HighDegreePoints() {
  std::vector<double> points;
  for (int i = 0; i < 33; ++i) {
    points.insert(points.end(), {double((i * 7) % 5 - 2), double((i * 3) % 7 - 3), double((i * i) % 4)});
  }
  return points;
}

std::vector<double> HighDegreeWeights() {
  std::vector<double> weights;
  for (int i = 0; i < 33; ++i) {
    weights.push_back(1 + (i % 3) * 0.5);
  }
  return weights;
}

void ExpectPointNear(double const *got, double const *expected, double scale, std::string const &what) {
  for (int c = 0; c < 3; ++c) {
    EXPECT_NEAR(got[c], expected[c], 1e-12 * scale) << what << ", component " << c;
  }
}

double Scale(double const (*rows)[3], int count) {
  double scale = 1.0;
  for (int k = 0; k < count; ++k) {
    for (int c = 0; c < 3; ++c) {
      scale = std::max(scale, std::fabs(rows[k][c]));
    }
  }
  return scale;
}

// Every path of the curve against the exact values: the point alone, the first
// derivative alone, and all three.
template <size_t Size>
void ExpectCurveMatches(Curve const &curve, splineref::CurveReference const (&references)[Size]) {
  ZQNURBSCurveEvaluation evaluation;
  for (auto const &reference : references) {
    std::string const at = "degree " + std::to_string(curve.degree) + (curve.rational ? " rational" : "") +
                           " at u = " + std::to_string(reference.u);
    double const scale = Scale(reference.derivatives, 3);
    Point value;
    evaluation.Evaluate(curve.KnotCount(), curve.degree, curve.knots.data(), curve.points.data(), curve.rational,
                        reference.u, value.out(), nullptr, nullptr);
    ExpectPointNear(value.xyz, reference.derivatives[0], scale, "value path, " + at);

    Point first;
    evaluation.Evaluate(curve.KnotCount(), curve.degree, curve.knots.data(), curve.points.data(), curve.rational,
                        reference.u, nullptr, first.out(), nullptr);
    ExpectPointNear(first.xyz, reference.derivatives[1], scale, "first derivative alone, " + at);

    Point all[3];
    evaluation.Evaluate(curve.KnotCount(), curve.degree, curve.knots.data(), curve.points.data(), curve.rational,
                        reference.u, all[0].out(), all[1].out(), all[2].out());
    for (int k = 0; k < 3; ++k) {
      ExpectPointNear(all[k].xyz, reference.derivatives[k], scale, "derivative " + std::to_string(k) + ", " + at);
    }
  }
}

// ---- Curves against exact values --------------------------------------------------------

TEST(CurveEvaluation, PolynomialMatchesExactValues) {
  ExpectCurveMatches({kCubicKnots, 3, kCubicPoints, false}, splineref::kCubicCurve);
  ExpectCurveMatches({{0, 1, 2, 3, 4, 5, 6, 7}, 2, {0, 0, 0, 1, 1, 0, 3, -1, 2, 4, 2, 1, 6, 0, 0}, false},
                     splineref::kUnclampedCurve);
  ExpectCurveMatches({{0, 1, 2, 3}, 0, {1, 2, 3, 4, 5, 6, 7, 8, 9}, false}, splineref::kConstantCurve);
  ExpectCurveMatches({HighDegreeKnots(), 31, HighDegreePoints(), false}, splineref::kHighDegreeCurve);
}

TEST(CurveEvaluation, RationalMatchesExactValues) {
  ExpectCurveMatches({kCubicKnots, 3, Weighted(kCubicPoints, kCubicWeights), true}, splineref::kCubicRationalCurve);
  // Degree 1 with weights: the homogeneous second derivative is zero, the true one is not.
  ExpectCurveMatches({{0, 0, 1, 2, 2}, 1, Weighted(kLinearPoints, {1, 3, 0.5}), true}, splineref::kLinearRationalCurve);
  ExpectCurveMatches({HighDegreeKnots(), 31, Weighted(HighDegreePoints(), HighDegreeWeights()), true},
                     splineref::kHighDegreeRationalCurve);
}

TEST(CurveEvaluation, DerivativesAboveTheDegreeAreExactZeros) {
  ZQNURBSCurveEvaluation evaluation;
  std::vector<double> const linearKnots = {0, 0, 1, 2, 2};
  Point point, first, second;
  evaluation.Evaluate(5, 1, linearKnots.data(), kLinearPoints.data(), false, 0.3, point.out(), first.out(),
                      second.out());
  EXPECT_EQ(second.xyz[0], 0.0);
  EXPECT_EQ(second.xyz[1], 0.0);
  EXPECT_EQ(second.xyz[2], 0.0);
  EXPECT_NE(first.xyz[0], 0.0);

  std::vector<double> const stepKnots = {0, 1, 2, 3};
  std::vector<double> const stepPoints = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  evaluation.Evaluate(4, 0, stepKnots.data(), stepPoints.data(), false, 1.5, point.out(), first.out(), nullptr);
  EXPECT_EQ(point.xyz[0], 4.0);
  EXPECT_EQ(point.xyz[2], 6.0);
  EXPECT_EQ(first.xyz[0], 0.0);
  EXPECT_EQ(first.xyz[1], 0.0);
  EXPECT_EQ(first.xyz[2], 0.0);
}

// ---- Which outputs are written ----------------------------------------------------------

TEST(CurveEvaluation, OnlyRequestedOutputsAreWritten) {
  ZQNURBSCurveEvaluation evaluation;
  std::vector<double> const points = Weighted(kCubicPoints, kCubicWeights);
  for (bool rational : {false, true}) {
    double const *net = rational ? points.data() : kCubicPoints.data();
    Point point, first, second;
    evaluation.Evaluate(12, 3, kCubicKnots.data(), net, rational, 0.3, nullptr, first.out(), nullptr);
    EXPECT_TRUE(point.Untouched());
    EXPECT_FALSE(first.Untouched());
    Point skipped;
    evaluation.Evaluate(12, 3, kCubicKnots.data(), net, rational, 0.3, nullptr, skipped.out(), second.out());
    // Asking for the second derivative gives order 2 and still leaves out the first.
    evaluation.Evaluate(12, 3, kCubicKnots.data(), net, rational, 0.3, point.out(), nullptr, second.out());
    EXPECT_TRUE(std::isfinite(second.xyz[0]));
    EXPECT_FALSE(point.Untouched());
    Point untouched;
    evaluation.Evaluate(12, 3, kCubicKnots.data(), net, rational, 0.3, nullptr, nullptr, nullptr);
    evaluation.Evaluate(12, 3, kCubicKnots.data(), net, rational, 0.3, nullptr, nullptr, second.out());
    EXPECT_TRUE(untouched.Untouched());
  }
}

TEST(CurveEvaluation, ZeroLengthLastSpanIsFiniteOnlyOnTheValuePath) {
  ZQNURBSCurveEvaluation evaluation;
  std::vector<double> const knots = {0, 0, 0, 0, 1, 1, 1, 1, 1};
  std::vector<double> const points = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5};
  Point point;
  evaluation.Evaluate(9, 3, knots.data(), points.data(), false, 1.0, point.out(), nullptr, nullptr);
  EXPECT_EQ(point.xyz[0], 0.0);
  EXPECT_EQ(point.xyz[1], 0.0);
  Point first;
  evaluation.Evaluate(9, 3, knots.data(), points.data(), false, 1.0, point.out(), first.out(), nullptr);
  EXPECT_FALSE(std::isfinite(point.xyz[0]));
}

TEST(CurveEvaluation, IdentityTagIsNotCopiedButBinomialsAre) {
  ZQNURBSCurveEvaluation tagged(42);
  EXPECT_EQ(tagged.GetID(), 42);
  EXPECT_EQ(ZQNURBSCurveEvaluation().GetID(), 0);
  ZQNURBSCurveEvaluation copy(tagged);
  EXPECT_EQ(copy.GetID(), 0);
  ZQNURBSCurveEvaluation target(7);
  target = tagged;
  EXPECT_EQ(target.GetID(), 7);
  target.Reset();
  EXPECT_EQ(target.GetID(), 7);

  // A copy evaluates rationally (which reads the binomial table) as the original does.
  std::vector<double> const points = Weighted(kCubicPoints, kCubicWeights);
  Point a[3], b[3];
  tagged.Evaluate(12, 3, kCubicKnots.data(), points.data(), true, 0.6, a[0].out(), a[1].out(), a[2].out());
  copy.Evaluate(12, 3, kCubicKnots.data(), points.data(), true, 0.6, b[0].out(), b[1].out(), b[2].out());
  for (int k = 0; k < 3; ++k) {
    for (int c = 0; c < 3; ++c) {
      EXPECT_EQ(a[k].xyz[c], b[k].xyz[c]);
    }
  }
}

// ---- Surfaces ---------------------------------------------------------------------------

struct Surface {
  std::vector<double> knotsU = {0, 0, 0, 0, 0.5, 1, 1, 1, 1};
  std::vector<double> knotsV = {0, 0, 0, 0.4, 1, 1, 1};
  std::vector<double> net;
  bool rational = false;

  explicit Surface(bool weighted) : rational(weighted) {
    for (int a = 0; a < 5; ++a) {
      for (int b = 0; b < 4; ++b) {
        double const w = weighted ? 1 + ((a + 2 * b) % 4) * 0.25 : 1.0;
        net.insert(net.end(), {a * w, b * w, ((a * 3 + b * 5) % 7) * 0.25 * w});
        if (weighted) {
          net.push_back(w);
        }
      }
    }
  }

  void Evaluate(ZQNURBSSurfaceEvaluation &evaluation, double const *uv, Point *outputs, bool wanted[6]) const {
    auto pick = [&](int i) { return wanted[i] ? outputs[i].out() : nullptr; };
    evaluation.Evaluate(9, 3, knotsU.data(), 7, 2, knotsV.data(), net.data(), rational, uv, pick(0), pick(1), pick(2),
                        pick(3), pick(4), pick(5));
  }
};

template <size_t Size>
void ExpectSurfaceMatches(Surface const &surface, splineref::SurfaceReference const (&references)[Size]) {
  ZQNURBSSurfaceEvaluation evaluation;
  for (auto const &reference : references) {
    std::string const at = std::string(surface.rational ? "rational" : "polynomial") + " at (" +
                           std::to_string(reference.uv[0]) + ", " + std::to_string(reference.uv[1]) + ")";
    double const scale = Scale(reference.outputs, 6);
    Point outputs[6];
    bool all[6] = {true, true, true, true, true, true};
    surface.Evaluate(evaluation, reference.uv, outputs, all);
    for (int i = 0; i < 6; ++i) {
      ExpectPointNear(outputs[i].xyz, reference.outputs[i], scale, "output " + std::to_string(i) + ", " + at);
    }
    Point value[6];
    bool pointOnly[6] = {true, false, false, false, false, false};
    surface.Evaluate(evaluation, reference.uv, value, pointOnly);
    ExpectPointNear(value[0].xyz, reference.outputs[0], scale, "value path, " + at);
    Point first[6];
    bool firstOnly[6] = {false, true, true, false, false, false};
    surface.Evaluate(evaluation, reference.uv, first, firstOnly);
    ExpectPointNear(first[1].xyz, reference.outputs[1], scale, "du at order 1, " + at);
    ExpectPointNear(first[2].xyz, reference.outputs[2], scale, "dv at order 1, " + at);
  }
}

TEST(SurfaceEvaluation, MatchesExactValuesInBothDirections) {
  ExpectSurfaceMatches(Surface(false), splineref::kSurface);
  ExpectSurfaceMatches(Surface(true), splineref::kRationalSurface);
}

TEST(SurfaceEvaluation, OnlyRequestedOutputsAreWritten) {
  ZQNURBSSurfaceEvaluation evaluation;
  double const uv[2] = {0.3, 0.7};
  for (bool rational : {false, true}) {
    Surface const surface(rational);
    Point outputs[6];
    bool mixedOnly[6] = {false, false, false, false, true, false};
    surface.Evaluate(evaluation, uv, outputs, mixedOnly);
    for (int i = 0; i < 6; ++i) {
      EXPECT_EQ(outputs[i].Untouched(), i != 4) << "output " << i;
    }
    Point none[6];
    bool nothing[6] = {};
    surface.Evaluate(evaluation, uv, none, nothing);
    EXPECT_TRUE(none[0].Untouched());
  }
}

TEST(SurfaceEvaluation, BilinearHasZeroPureSecondDerivativesButATwist) {
  std::vector<double> const knots = {0, 0, 1, 1};
  std::vector<double> const net = {0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 1}; // z = u v
  double const uv[2] = {0.25, 0.5};
  Point outputs[6];
  ZQNURBSSurfaceEvaluation evaluation;
  evaluation.Evaluate(4, 1, knots.data(), 4, 1, knots.data(), net.data(), false, uv, outputs[0].out(), outputs[1].out(),
                      outputs[2].out(), outputs[3].out(), outputs[4].out(), outputs[5].out());
  EXPECT_DOUBLE_EQ(outputs[0].xyz[2], 0.125);
  for (int c = 0; c < 3; ++c) {
    EXPECT_EQ(outputs[3].xyz[c], 0.0);
    EXPECT_EQ(outputs[5].xyz[c], 0.0);
  }
  EXPECT_DOUBLE_EQ(outputs[4].xyz[2], 1.0);
}

TEST(SurfaceEvaluation, IdentityTagIsNotCopied) {
  ZQNURBSSurfaceEvaluation tagged(5);
  ZQNURBSSurfaceEvaluation copy(tagged);
  EXPECT_EQ(tagged.GetID(), 5);
  EXPECT_EQ(copy.GetID(), 0);
  ZQNURBSSurfaceEvaluation target(9);
  target = tagged;
  EXPECT_EQ(target.GetID(), 9);

  Surface const surface(true);
  double const uv[2] = {0.6, 0.2};
  Point a[6], b[6];
  bool all[6] = {true, true, true, true, true, true};
  surface.Evaluate(tagged, uv, a, all);
  surface.Evaluate(target, uv, b, all);
  for (int i = 0; i < 6; ++i) {
    for (int c = 0; c < 3; ++c) {
      EXPECT_EQ(a[i].xyz[c], b[i].xyz[c]);
    }
  }
}

} // namespace

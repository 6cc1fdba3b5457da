// Curve and surface evaluation: exact values on every path, which outputs are written,
// exact zeros above a degree, zero-length spans, and what a copy carries.
#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include "SplineReferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

constexpr double kUntouched = -999.5;

struct Point {
  double xyz[3] = {kUntouched, kUntouched, kUntouched};
  bool Untouched() const { return xyz[0] == kUntouched && xyz[1] == kUntouched && xyz[2] == kUntouched; }
  bool Zero() const { return xyz[0] == 0.0 && xyz[1] == 0.0 && xyz[2] == 0.0; }
};

bool Same(Point const *a, Point const *b, int count) {
  for (int i = 0; i < count; ++i) {
    if (!std::equal(a[i].xyz, a[i].xyz + 3, b[i].xyz)) {
      return false;
    }
  }
  return true;
}

// Exact values are met to 1e-12, relative to the largest value of all the outputs.
void ExpectPointNear(Point const &got, double const *expected, double const *all, int count, std::string const &what) {
  double scale = 1.0;
  for (int i = 0; i < 3 * count; ++i) {
    scale = std::max(scale, std::fabs(all[i]));
  }
  for (int c = 0; c < 3; ++c) {
    EXPECT_NEAR(got.xyz[c], expected[c], 1e-12 * scale) << what << ", component " << c;
  }
}

// Degrees 0, 1, 2, 3 and 31, clamped and not, rational and not: the point alone, the first
// derivative alone, and all three.
TEST(CurveEvaluation, EveryPathMatchesExactValues) {
  ZQNURBSCurveEvaluation evaluation;
  for (char const *name :
       {"Cubic", "CubicRational", "Unclamped", "LinearRational", "Constant", "HighDegree", "HighDegreeRational"}) {
    splineref::Curve const c = splineref::GetCurve(name);
    for (splineref::Row const &r : c.values) {
      std::string const at = std::string(name) + " at u = " + std::to_string(r[0]);
      double const *expected = &r[1]; // the point, then its two derivatives
      auto evaluate = [&](Point *p, Point *d1, Point *d2) {
        evaluation.Evaluate(c.KnotCount(), c.degree, c.knots.data(), c.points.data(), c.rational, r[0],
                            p ? p->xyz : nullptr, d1 ? d1->xyz : nullptr, d2 ? d2->xyz : nullptr);
      };
      Point value, first, all[3];
      evaluate(&value, nullptr, nullptr);
      ExpectPointNear(value, expected, expected, 3, "value path, " + at);
      evaluate(nullptr, &first, nullptr);
      ExpectPointNear(first, expected + 3, expected, 3, "first derivative alone, " + at);
      evaluate(&all[0], &all[1], &all[2]);
      for (int k = 0; k < 3; ++k) {
        ExpectPointNear(all[k], expected + 3 * k, expected, 3, "order " + std::to_string(k) + ", " + at);
      }
    }
  }
}

TEST(CurveEvaluation, PolynomialDerivativesAboveTheDegreeAreExactZeros) {
  ZQNURBSCurveEvaluation evaluation;
  double const *points = splineref::GetCurve("Constant").points.data();
  Point point, first, second;
  evaluation.Evaluate(5, 1, splineref::GetCurve("LinearRational").knots.data(), points, false, 0.3, point.xyz,
                      first.xyz, second.xyz);
  EXPECT_TRUE(second.Zero());
  EXPECT_FALSE(first.Zero());
  evaluation.Evaluate(4, 0, splineref::GetCurve("Constant").knots.data(), points, false, 1.5, point.xyz, first.xyz,
                      nullptr);
  EXPECT_TRUE(first.Zero());
  EXPECT_EQ(point.xyz[0], 4.0);
}

TEST(CurveEvaluation, OnlyRequestedOutputsAreWritten) {
  ZQNURBSCurveEvaluation evaluation;
  for (bool rational : {false, true}) {
    splineref::Curve const cubic = splineref::GetCurve(rational ? "CubicRational" : "Cubic");
    double const *knots = cubic.knots.data(), *net = cubic.points.data();
    Point point, first, second;
    evaluation.Evaluate(12, 3, knots, net, rational, 0.3, nullptr, nullptr, nullptr);
    evaluation.Evaluate(12, 3, knots, net, rational, 0.3, nullptr, nullptr, second.xyz);
    EXPECT_TRUE(point.Untouched() && first.Untouched());
    EXPECT_FALSE(second.Untouched());
    evaluation.Evaluate(12, 3, knots, net, rational, 0.3, point.xyz, nullptr, second.xyz);
    EXPECT_TRUE(first.Untouched());
    EXPECT_FALSE(point.Untouched());
  }
}

// End multiplicity p + 2: the value path gives finite zeros, a derivative path divides by
// the empty span and spoils the point too.
TEST(CurveEvaluation, ZeroLengthLastSpanIsFiniteOnlyOnTheValuePath) {
  ZQNURBSCurveEvaluation evaluation;
  double const knots[] = {0, 0, 0, 0, 1, 1, 1, 1, 1};
  double const *points = splineref::GetCurve("Cubic").points.data();
  Point point, first;
  evaluation.Evaluate(9, 3, knots, points, false, 1.0, point.xyz, nullptr, nullptr);
  EXPECT_TRUE(point.Zero());
  evaluation.Evaluate(9, 3, knots, points, false, 1.0, point.xyz, first.xyz, nullptr);
  EXPECT_FALSE(std::isfinite(point.xyz[0]));
}

void EvaluateSurface(ZQNURBSSurfaceEvaluation &evaluation, bool rational, double const *uv, Point *outputs,
                     unsigned wanted) {
  auto pick = [&](int i) { return (wanted >> i & 1U) != 0 ? outputs[i].xyz : nullptr; };
  double const *net = splineref::One("net", rational ? "Rational" : "Polynomial", rational ? 80 : 60).data();
  evaluation.Evaluate(9, 3, splineref::One("knots", "SurfaceU", 9).data(), 7, 2,
                      splineref::One("knots", "SurfaceV", 7).data(), net, rational, uv, pick(0), pick(1), pick(2),
                      pick(3), pick(4), pick(5));
}

// A bicubic by biquadratic net with different knot vectors in the two directions: all six
// outputs, the value path, and order 1 alone.
TEST(SurfaceEvaluation, EveryPathMatchesExactValues) {
  ZQNURBSSurfaceEvaluation evaluation;
  for (bool rational : {false, true}) {
    // Each row: u, v, then the point, du, dv, duu, duv and dvv.
    for (splineref::Row const &r : splineref::Rows("surface", rational ? "Rational" : "Polynomial", 20)) {
      std::string const at = std::string(rational ? "rational" : "polynomial") + " at (" + std::to_string(r[0]) + ", " +
                             std::to_string(r[1]) + ")";
      double const *outputs = &r[2];
      Point all[6], value[6], first[6];
      EvaluateSurface(evaluation, rational, r.data(), all, 0x3FU);
      EvaluateSurface(evaluation, rational, r.data(), value, 0x1U);
      EvaluateSurface(evaluation, rational, r.data(), first, 0x6U);
      for (int i = 0; i < 6; ++i) {
        ExpectPointNear(all[i], outputs + 3 * i, outputs, 6, "output " + std::to_string(i) + ", " + at);
      }
      ExpectPointNear(value[0], outputs, outputs, 6, "value path, " + at);
      ExpectPointNear(first[1], outputs + 3, outputs, 6, "du at order 1, " + at);
      ExpectPointNear(first[2], outputs + 6, outputs, 6, "dv at order 1, " + at);
      EXPECT_TRUE(first[0].Untouched() && first[3].Untouched() && value[1].Untouched());
    }
  }
}

TEST(SurfaceEvaluation, BilinearHasZeroPureSecondDerivativesButATwist) {
  double const knots[] = {0, 0, 1, 1};
  double const net[] = {0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 1, 1}; // z = u v
  double const uv[2] = {0.25, 0.5};
  Point o[6];
  ZQNURBSSurfaceEvaluation evaluation;
  evaluation.Evaluate(4, 1, knots, 4, 1, knots, net, false, uv, o[0].xyz, o[1].xyz, o[2].xyz, o[3].xyz, o[4].xyz,
                      o[5].xyz);
  EXPECT_DOUBLE_EQ(o[0].xyz[2], 0.125);
  EXPECT_TRUE(o[3].Zero() && o[5].Zero());
  EXPECT_DOUBLE_EQ(o[4].xyz[2], 1.0);
  Point twist[6]; // any second derivative asks for order 2 and writes only itself
  evaluation.Evaluate(4, 1, knots, 4, 1, knots, net, false, uv, nullptr, nullptr, nullptr, nullptr, twist[4].xyz,
                      nullptr);
  EXPECT_EQ(twist[4].xyz[2], 1.0);
  EXPECT_TRUE(twist[0].Untouched() && twist[1].Untouched() && twist[3].Untouched());
}

// A copy starts with tag 0, assignment keeps the target's tag, and both evaluate rationally
// (which reads the copied binomial table) exactly as the original.
TEST(Evaluation, CopiesKeepTheirOwnTagAndEvaluateAlike) {
  ZQNURBSCurveEvaluation curve(42), target(7);
  ZQNURBSCurveEvaluation copy(curve);
  target = curve;
  target.Reset();
  ZQNURBSSurfaceEvaluation surface(5), surfaceTarget(9);
  ZQNURBSSurfaceEvaluation surfaceCopy(surface);
  surfaceTarget = surface;
  EXPECT_EQ(ZQNURBSCurveEvaluation().GetID(), 0);
  EXPECT_EQ(curve.GetID(), 42);
  EXPECT_EQ(copy.GetID() + surfaceCopy.GetID(), 0);
  EXPECT_EQ(target.GetID(), 7);
  EXPECT_EQ(surfaceTarget.GetID(), 9);
  Point a[6], b[6];
  splineref::Curve const c = splineref::GetCurve("CubicRational");
  curve.Evaluate(12, 3, c.knots.data(), c.points.data(), true, 0.6, a[0].xyz, a[1].xyz, a[2].xyz);
  copy.Evaluate(12, 3, c.knots.data(), c.points.data(), true, 0.6, b[0].xyz, b[1].xyz, b[2].xyz);
  EXPECT_TRUE(Same(a, b, 3));
  double const uv[2] = {0.6, 0.2};
  EvaluateSurface(surface, true, uv, a, 0x3FU);
  EvaluateSurface(surfaceTarget, true, uv, b, 0x3FU);
  EXPECT_TRUE(Same(a, b, 6));
}

} // namespace

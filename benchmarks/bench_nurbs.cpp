// Curve and surface evaluation with second derivatives, ours beside OpenCASCADE's
// Geom_BSplineCurve::D2 and Geom_BSplineSurface::D2 on the same geometry and parameters,
// once in rising parameter order and once shuffled. Both are checked to agree to 1e-9
// before anything is timed.
#include "RatioReporter.h"

#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColStd_Array2OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <gp_Pnt.hxx>
#include <gp_Vec.hxx>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

namespace zq = Velmora::Tessara::ZQ::Core;

namespace {

constexpr int kDegree = 3;
constexpr int kCurvePoints = 64;
constexpr int kNetSide = 24;
constexpr int kParameters = 1 << 14;

// A clamped knot vector with `points` - degree - 1 equal interior spans on [0, 1], written
// out in full (ours) and as distinct knots with multiplicities (OpenCASCADE's).
struct Knots {
  explicit Knots(int points) : occDistinct(1, points - kDegree + 1), occMultiplicities(1, points - kDegree + 1) {
    int const spans = points - kDegree;
    for (int i = 0; i <= spans; ++i) {
      int const multiplicity = (i == 0 || i == spans) ? kDegree + 1 : 1;
      occDistinct(i + 1) = double(i) / spans;
      occMultiplicities(i + 1) = multiplicity;
      full.insert(full.end(), multiplicity, double(i) / spans);
    }
  }
  long long Count() const { return static_cast<long long>(full.size()); }

  std::vector<double> full;
  TColStd_Array1OfReal occDistinct;
  TColStd_Array1OfInteger occMultiplicities;
};

// A wavy control point, deterministic in its indices.
gp_Pnt Pole(int a, int b) { return gp_Pnt(a + 0.3 * std::sin(1.7 * b), b + 0.2 * std::cos(a), std::sin(0.5 * a + b)); }
double Weight(int a, int b) { return 1.0 + 0.5 * std::sin(0.9 * a + 0.4 * b) * std::sin(0.9 * a + 0.4 * b); }

struct CurveCase {
  explicit CurveCase(bool weighted) : knots(kCurvePoints), rational(weighted) {
    TColgp_Array1OfPnt poles(1, kCurvePoints);
    TColStd_Array1OfReal weights(1, kCurvePoints);
    for (int i = 0; i < kCurvePoints; ++i) {
      gp_Pnt const p = Pole(i, 0);
      double const w = weighted ? Weight(i, 0) : 1.0;
      poles(i + 1) = p;
      weights(i + 1) = w;
      points.insert(points.end(), {p.X() * w, p.Y() * w, p.Z() * w});
      if (weighted) {
        points.push_back(w);
      }
    }
    if (weighted) {
      occ = new Geom_BSplineCurve(poles, weights, knots.occDistinct, knots.occMultiplicities, kDegree);
    } else {
      occ = new Geom_BSplineCurve(poles, knots.occDistinct, knots.occMultiplicities, kDegree);
    }
  }
  void Ours(zq::ZQNURBSCurveEvaluation &evaluation, double u, double *out) const {
    evaluation.Evaluate(knots.Count(), kDegree, knots.full.data(), points.data(), rational, u, out, out + 3, out + 6);
  }
  void Theirs(double u, double *out) const {
    gp_Pnt p;
    gp_Vec d1, d2;
    occ->D2(u, p, d1, d2);
    double const values[9] = {p.X(), p.Y(), p.Z(), d1.X(), d1.Y(), d1.Z(), d2.X(), d2.Y(), d2.Z()};
    std::copy(values, values + 9, out);
  }

  Knots knots;
  bool rational;
  std::vector<double> points;
  Handle(Geom_BSplineCurve) occ;
};

struct SurfaceCase {
  SurfaceCase() : knots(kNetSide) {
    TColgp_Array2OfPnt poles(1, kNetSide, 1, kNetSide);
    for (int a = 0; a < kNetSide; ++a) {
      for (int b = 0; b < kNetSide; ++b) {
        gp_Pnt const p = Pole(a, b);
        poles(a + 1, b + 1) = p;
        points.insert(points.end(), {p.X(), p.Y(), p.Z()});
      }
    }
    occ = new Geom_BSplineSurface(poles, knots.occDistinct, knots.occDistinct, knots.occMultiplicities,
                                  knots.occMultiplicities, kDegree, kDegree);
  }
  void Ours(zq::ZQNURBSSurfaceEvaluation &evaluation, double const *uv, double *out) const {
    evaluation.Evaluate(knots.Count(), kDegree, knots.full.data(), knots.Count(), kDegree, knots.full.data(),
                        points.data(), false, uv, out, out + 3, out + 6, out + 9, out + 12, out + 15);
  }
  void Theirs(double const *uv, double *out) const {
    gp_Pnt p;
    gp_Vec du, dv, duu, dvv, duv;
    occ->D2(uv[0], uv[1], p, du, dv, duu, dvv, duv);
    gp_XYZ const values[6] = {p.XYZ(), du.XYZ(), dv.XYZ(), duu.XYZ(), duv.XYZ(), dvv.XYZ()};
    for (int i = 0; i < 6; ++i) {
      out[3 * i] = values[i].X();
      out[3 * i + 1] = values[i].Y();
      out[3 * i + 2] = values[i].Z();
    }
  }

  Knots knots;
  std::vector<double> points;
  Handle(Geom_BSplineSurface) occ;
};

// Parameters on [0, 1] in rising order, or the same values shuffled with a fixed seed.
std::vector<double> Parameters(int count, bool shuffled, unsigned seed) {
  std::vector<double> values(count);
  for (int i = 0; i < count; ++i) {
    values[i] = (i + 0.5) / count;
  }
  if (shuffled) {
    std::shuffle(values.begin(), values.end(), std::mt19937(seed));
  }
  return values;
}

// Pairs (u, v): rows of v for rising u, or shuffled pairs.
std::vector<double> ParameterPairs(bool shuffled) {
  int const side = 128;
  std::vector<double> const line = Parameters(side, false, 0);
  std::vector<double> pairs;
  for (double u : line) {
    for (double v : line) {
      pairs.insert(pairs.end(), {u, v});
    }
  }
  if (shuffled) {
    std::vector<int> order(side * side);
    for (int i = 0; i < side * side; ++i) {
      order[i] = i;
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    std::vector<double> mixed;
    for (int i : order) {
      mixed.insert(mixed.end(), {pairs[2 * i], pairs[2 * i + 1]});
    }
    pairs.swap(mixed);
  }
  return pairs;
}

CurveCase const &Cubic() {
  static CurveCase const cubic(false);
  return cubic;
}
CurveCase const &RationalCubic() {
  static CurveCase const rational(true);
  return rational;
}
SurfaceCase const &Bicubic() {
  static SurfaceCase const surface;
  return surface;
}

// Largest difference relative to the larger magnitude of each value (at least 1).
double Disagreement(double const *ours, double const *theirs, int count) {
  double worst = 0.0;
  for (int i = 0; i < count; ++i) {
    double const scale = std::max({1.0, std::fabs(ours[i]), std::fabs(theirs[i])});
    worst = std::max(worst, std::fabs(ours[i] - theirs[i]) / scale);
  }
  return worst;
}

bool CheckAgreement() {
  double worst = 0.0;
  double ours[18];
  double theirs[18];
  zq::ZQNURBSCurveEvaluation curve;
  for (CurveCase const *c : {&Cubic(), &RationalCubic()}) {
    for (double u : Parameters(kParameters, false, 0)) {
      c->Ours(curve, u, ours);
      c->Theirs(u, theirs);
      worst = std::max(worst, Disagreement(ours, theirs, 9));
    }
  }
  zq::ZQNURBSSurfaceEvaluation surface;
  std::vector<double> const pairs = ParameterPairs(false);
  for (size_t i = 0; i < pairs.size(); i += 2) {
    Bicubic().Ours(surface, &pairs[i], ours);
    Bicubic().Theirs(&pairs[i], theirs);
    worst = std::max(worst, Disagreement(ours, theirs, 18));
  }
  std::printf("largest relative difference to OpenCASCADE: %.3g\n", worst);
  return worst <= 1e-9;
}

void CurveRun(benchmark::State &state, CurveCase const &c, bool shuffled, bool ours) {
  std::vector<double> const parameters = Parameters(kParameters, shuffled, 11);
  zq::ZQNURBSCurveEvaluation evaluation;
  double out[9];
  for (auto _ : state) {
    for (double u : parameters) {
      ours ? c.Ours(evaluation, u, out) : c.Theirs(u, out);
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * kParameters);
}

void SurfaceRun(benchmark::State &state, bool shuffled, bool ours) {
  std::vector<double> const pairs = ParameterPairs(shuffled);
  zq::ZQNURBSSurfaceEvaluation evaluation;
  double out[18];
  for (auto _ : state) {
    for (size_t i = 0; i < pairs.size(); i += 2) {
      ours ? Bicubic().Ours(evaluation, &pairs[i], out) : Bicubic().Theirs(&pairs[i], out);
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long long>(pairs.size() / 2));
}

// clang-format off
BENCHMARK_CAPTURE(CurveRun, curve_d2_in_order/zq, Cubic(), false, true);
BENCHMARK_CAPTURE(CurveRun, curve_d2_in_order/occ, Cubic(), false, false);
BENCHMARK_CAPTURE(CurveRun, curve_d2_shuffled/zq, Cubic(), true, true);
BENCHMARK_CAPTURE(CurveRun, curve_d2_shuffled/occ, Cubic(), true, false);
BENCHMARK_CAPTURE(CurveRun, rational_d2_in_order/zq, RationalCubic(), false, true);
BENCHMARK_CAPTURE(CurveRun, rational_d2_in_order/occ, RationalCubic(), false, false);
BENCHMARK_CAPTURE(CurveRun, rational_d2_shuffled/zq, RationalCubic(), true, true);
BENCHMARK_CAPTURE(CurveRun, rational_d2_shuffled/occ, RationalCubic(), true, false);
BENCHMARK_CAPTURE(SurfaceRun, surface_d2_in_order/zq, false, true);
BENCHMARK_CAPTURE(SurfaceRun, surface_d2_in_order/occ, false, false);
BENCHMARK_CAPTURE(SurfaceRun, surface_d2_shuffled/zq, true, true);
BENCHMARK_CAPTURE(SurfaceRun, surface_d2_shuffled/occ, true, false);
// clang-format on

} // namespace

int main(int argc, char **argv) {
  if (!CheckAgreement()) {
    std::fprintf(stderr, "bench_nurbs: the two evaluations disagree beyond 1e-9; nothing timed\n");
    return 1;
  }
  return zqbench::RunWithRatios(argc, argv);
}

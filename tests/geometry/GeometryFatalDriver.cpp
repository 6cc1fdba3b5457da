// Spline evaluation beyond the largest degree ends the process, whatever was asked for.
#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include "FatalDriver.h"

#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// A clamped knot vector and enough control points for the given degree, so that a missing
// check would evaluate normally and return.
struct Geometry {
  explicit Geometry(long long degree) : knots(2 * (degree + 1), 0.0), points(4 * (degree + 1), 1.0) {
    std::fill(knots.begin() + degree + 1, knots.end(), 1.0);
  }
  std::vector<double> knots;
  std::vector<double> points;
};

void EvaluateCurve(long long degree, bool withOutputs) {
  Geometry const curve(degree > 32 ? 3 : degree);
  double point[3];
  ZQNURBSCurveEvaluation evaluation;
  evaluation.Evaluate(static_cast<long long>(curve.knots.size()), degree, curve.knots.data(), curve.points.data(),
                      false, 0.5, withOutputs ? point : nullptr, nullptr, nullptr);
}

void EvaluateSurface(long long degreeU, long long degreeV) {
  Geometry const u(degreeU);
  Geometry const v(degreeV);
  std::vector<double> const net(3 * (degreeU + 1) * (degreeV + 1), 1.0);
  double const uv[2] = {0.5, 0.5};
  double point[3];
  ZQNURBSSurfaceEvaluation evaluation;
  evaluation.Evaluate(static_cast<long long>(u.knots.size()), degreeU, u.knots.data(),
                      static_cast<long long>(v.knots.size()), degreeV, v.knots.data(), net.data(), false, uv, point,
                      nullptr, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      {"curve_degree_32", [] { EvaluateCurve(32, true); }},
      {"curve_degree_32_without_outputs", [] { EvaluateCurve(32, false); }},
      // Truncated to 32 bits this would be degree 1.
      {"curve_degree_beyond_32_bits", [] { EvaluateCurve((1LL << 32) + 1, true); }},
      {"surface_degree_v_32", [] { EvaluateSurface(31, 32); }},
      {"surface_degree_u_32", [] { EvaluateSurface(32, 1); }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}

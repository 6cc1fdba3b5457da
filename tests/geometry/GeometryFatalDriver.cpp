// Spline evaluation beyond the largest degree ends the process, whatever was asked for.
#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include "FatalDriver.h"

#include <vector>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// A clamped knot vector of the given degree with points to match, so that an evaluation
// without the check would run normally and return.
std::vector<double> Knots(long long degree) {
  std::vector<double> knots(2 * (degree + 1), 0.0);
  std::fill(knots.begin() + degree + 1, knots.end(), 1.0);
  return knots;
}

void EvaluateCurve(long long degree, bool withPoint) {
  std::vector<double> const knots = Knots(degree > 32 ? 1 : degree);
  std::vector<double> const points(knots.size() * 3, 1.0);
  double point[3];
  ZQNURBSCurveEvaluation().Evaluate(static_cast<long long>(knots.size()), degree, knots.data(), points.data(), false,
                                    0.5, withPoint ? point : nullptr, nullptr, nullptr);
}

void EvaluateSurface(long long degreeU, long long degreeV) {
  std::vector<double> const u = Knots(degreeU), v = Knots(degreeV);
  std::vector<double> const net(u.size() * v.size() * 3, 1.0);
  double const uv[2] = {0.5, 0.5};
  double point[3];
  ZQNURBSSurfaceEvaluation().Evaluate(static_cast<long long>(u.size()), degreeU, u.data(),
                                      static_cast<long long>(v.size()), degreeV, v.data(), net.data(), false, uv, point,
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

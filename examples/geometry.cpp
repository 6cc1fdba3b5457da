// Geometry: a NURBS surface evaluated on a grid of parameters divided over the ranks, each
// point moved by a transform, and a checksum of the points per rank.
#include "HostExample.h"

#include <cstdio>
#include <vector>

namespace HostExample {

namespace {

constexpr int kGridSide = 64;
constexpr int kNetSide = 5;

// A bicubic rational patch over a 5 x 5 net (heights and weights vary with the indices),
// as the evaluator takes it: homogeneous points, first parameter slow.
std::vector<double> WeightedNet() {
  std::vector<double> net;
  for (int a = 0; a < kNetSide; ++a) {
    for (int b = 0; b < kNetSide; ++b) {
      double const w = 1.0 + 0.25 * ((a + b) % 3);
      double const height = 0.5 * ((a * b) % 4) - 0.5;
      net.insert(net.end(), {a * w, b * w, height * w, w});
    }
  }
  return net;
}

// Rows [first, last) of the grid for this rank: as even a share as the rows allow.
void RowsOfRank(int rank, int nProcs, int &first, int &last) {
  first = kGridSide * rank / nProcs;
  last = kGridSide * (rank + 1) / nProcs;
}

} // namespace

void EvaluateSurfaceOnRanks(zq::ZQContext &context, int rank, int nProcs) {
  double const knots[] = {0, 0, 0, 0, 0.5, 1, 1, 1, 1};
  long long const knotCount = sizeof(knots) / sizeof(knots[0]);
  std::vector<double> const net = WeightedNet();

  // A quarter turn about the vertical line through (2, 2, 0), given in degrees.
  zq::ZQTransform turn;
  zq::ZQTransform::Vector3 origin, axis;
  origin[0] = origin[1] = 2.0;
  axis[2] = 1.0;
  zq::ZQResult const defined =
      turn.InitializeRotationAroundAxis(origin, axis, zq::ZQVariant(90.0, zq::ZQString("deg")), &context);
  zq::ZQTransform::Matrix4x4 m;
  if (!defined.OK() || !turn.GetTransformMatrix(m, &context).OK()) {
    std::printf("[rank %d] the transform could not be defined: %s\n", rank,
                context.GetErrorStack().GetLastMsg().c_str());
    return;
  }
  if (rank == 0) {
    std::printf("%s", turn.ToString("[rank 0] transform: ").c_str());
  }

  int first = 0, last = 0;
  RowsOfRank(rank, nProcs, first, last);
  zq::ZQNURBSSurfaceEvaluation surface(rank);
  double checksum = 0.0;
  for (int i = first; i < last; ++i) {
    for (int j = 0; j < kGridSide; ++j) {
      double const uv[2] = {i / double(kGridSide - 1), j / double(kGridSide - 1)};
      double p[3];
      surface.Evaluate(knotCount, 3, knots, knotCount, 3, knots, net.data(), true, uv, p, nullptr, nullptr, nullptr,
                       nullptr, nullptr);
      for (int r = 0; r < 3; ++r) {
        checksum += m(r, 0) * p[0] + m(r, 1) * p[1] + m(r, 2) * p[2] + m(r, 3);
      }
    }
  }
  std::printf("[rank %d] surface rows %d to %d of %d: %d points, checksum %.12g\n", rank, first, last - 1, kGridSide,
              (last - first) * kGridSide, checksum);
}

} // namespace HostExample

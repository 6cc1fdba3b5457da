// A consumer that uses the library without MPI: strings and arrays need no running job.
#include <zqcore/ZQCore.h>

#include <cstdio>

namespace zq = Velmora::Tessara::ZQ::Core;

int main() {
  zq::ZQString text("ZQCore ");
  text += zq::VersionInfo::GetVersionInfo();
  zq::ZQArrayNativeType<double, long long> values;
  values.Resize(3);
  values(2) = 2.5;
  std::printf("%s serial, %lld values, last %g\n", text.c_str(), values.Size(), values(2));
  // Spline templates instantiate in the consumer; the curve evaluation comes from the library.
  double const knots[] = {0, 0, 1, 1};
  double const line[] = {0, 0, 0, 2, 4, 6};
  double point[3];
  zq::ZQSplineAlgorithms<double, long long> splines;
  zq::ZQNURBSCurveEvaluation curve;
  curve.Evaluate(4, 1, knots, line, false, 0.5, point, nullptr, nullptr);
  std::printf("span %lld, midpoint %g %g %g\n", splines.FindKnotSpan(4, 1, knots, 0.5), point[0], point[1], point[2]);
  return 0;
}

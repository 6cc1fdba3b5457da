#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>

#include "geometry/detail/SplineEvaluation.h"

namespace Velmora::Tessara::ZQ::Core {

ZQNURBSCurveEvaluation::ZQNURBSCurveEvaluation() : ZQNURBSCurveEvaluation(0) {}

ZQNURBSCurveEvaluation::ZQNURBSCurveEvaluation(long long tag) : id(tag), CK{} {}

ZQNURBSCurveEvaluation::ZQNURBSCurveEvaluation(ZQNURBSCurveEvaluation const &other) : ZQNURBSCurveEvaluation(0) {
  Copy(other);
}

ZQNURBSCurveEvaluation &ZQNURBSCurveEvaluation::operator=(ZQNURBSCurveEvaluation const &other) {
  Copy(other);
  return *this;
}

ZQNURBSCurveEvaluation::~ZQNURBSCurveEvaluation() = default;

long long ZQNURBSCurveEvaluation::GetID() const { return id; }

void ZQNURBSCurveEvaluation::Reset() {}

void ZQNURBSCurveEvaluation::Copy(ZQNURBSCurveEvaluation const &other) {
  if (&other != this) {
    nurbs.CopyBinomials(other.nurbs);
  }
}

void ZQNURBSCurveEvaluation::Evaluate(long long knotCount, long long degree, double const *knots,
                                      double const *controlPoints, bool rational, double u, double *point,
                                      double *firstDerivative, double *secondDerivative) {
  detail::RequireSplineDegree(degree);
  long long const order = secondDerivative != nullptr ? 2 : firstDerivative != nullptr ? 1 : 0;
  if (order == 0) {
    if (point == nullptr) {
      return;
    }
    if (rational) {
      nurbs.CurvePoint(knotCount, degree, knots, controlPoints, u, point);
    } else {
      bspline.CurvePoint(knotCount, degree, knots, controlPoints, u, point);
    }
    return;
  }
  if (rational) {
    nurbs.CurveDerivatives(knotCount, degree, knots, controlPoints, u, order, CK);
  } else {
    bspline.CurveDerivatives(knotCount, degree, knots, controlPoints, u, order, CK);
  }
  detail::CopyPointIfWanted(CK[0], point);
  detail::CopyPointIfWanted(CK[1], firstDerivative);
  detail::CopyPointIfWanted(CK[2], secondDerivative);
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>

#include "geometry/detail/SplineEvaluation.h"

namespace Velmora::Tessara::ZQ::Core {

ZQNURBSSurfaceEvaluation::ZQNURBSSurfaceEvaluation() : ZQNURBSSurfaceEvaluation(0) {}

ZQNURBSSurfaceEvaluation::ZQNURBSSurfaceEvaluation(long long tag) : id(tag), SKL{} {}

ZQNURBSSurfaceEvaluation::ZQNURBSSurfaceEvaluation(ZQNURBSSurfaceEvaluation const &other)
    : ZQNURBSSurfaceEvaluation(0) {
  Copy(other);
}

ZQNURBSSurfaceEvaluation &ZQNURBSSurfaceEvaluation::operator=(ZQNURBSSurfaceEvaluation const &other) {
  Copy(other);
  return *this;
}

ZQNURBSSurfaceEvaluation::~ZQNURBSSurfaceEvaluation() = default;

long long ZQNURBSSurfaceEvaluation::GetID() const { return id; }

void ZQNURBSSurfaceEvaluation::Reset() {}

void ZQNURBSSurfaceEvaluation::Copy(ZQNURBSSurfaceEvaluation const &other) {
  if (&other != this) {
    nurbs.CopyBinomials(other.nurbs);
  }
}

void ZQNURBSSurfaceEvaluation::Evaluate(long long knotCountU, long long degreeU, double const *knotsU,
                                        long long knotCountV, long long degreeV, double const *knotsV,
                                        double const *controlPoints, bool rational, double const *uv, double *point,
                                        double *du, double *dv, double *duu, double *duv, double *dvv) {
  detail::RequireSplineDegree(degreeU > degreeV ? degreeU : degreeV);
  bool const secondOrder = duu != nullptr || duv != nullptr || dvv != nullptr;
  long long const order = secondOrder ? 2 : (du != nullptr || dv != nullptr) ? 1 : 0;
  if (order == 0) {
    if (point == nullptr) {
      return;
    }
    if (rational) {
      nurbs.SurfacePoint(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, uv[0], uv[1], point);
    } else {
      bspline.SurfacePoint(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, uv[0], uv[1],
                           point);
    }
    return;
  }
  if (rational) {
    nurbs.SurfaceDerivatives(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, uv[0], uv[1],
                             order, SKL);
  } else {
    bspline.SurfaceDerivatives(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, uv[0], uv[1],
                               order, SKL);
  }
  detail::CopyPointIfWanted(SKL[0][0], point);
  detail::CopyPointIfWanted(SKL[1][0], du);
  detail::CopyPointIfWanted(SKL[0][1], dv);
  detail::CopyPointIfWanted(SKL[2][0], duu);
  detail::CopyPointIfWanted(SKL[1][1], duv);
  detail::CopyPointIfWanted(SKL[0][2], dvv);
}

} // namespace Velmora::Tessara::ZQ::Core

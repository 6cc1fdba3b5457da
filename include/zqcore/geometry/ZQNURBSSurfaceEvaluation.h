// ZQNURBSSurfaceEvaluation: a point and the partial derivatives of a spline surface.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/geometry/ZQSplineAlgorithms.h>

namespace Velmora::Tessara::ZQ::Core {

/// Evaluates polynomial or rational tensor-product surfaces in three dimensions at one
/// parameter pair, with first and second partial derivatives. As for curves, the surface
/// comes with every call, the object is reusable work space, and an evaluation allocates
/// nothing. One object serves one thread at a time.
class ZQCORE_EXPORT ZQNURBSSurfaceEvaluation {
public:
  ZQNURBSSurfaceEvaluation();
  /// `id` is the caller's tag, given back by GetID and otherwise unused.
  ZQNURBSSurfaceEvaluation(long long id);
  /// The new object's tag is 0, not the source's.
  ZQNURBSSurfaceEvaluation(ZQNURBSSurfaceEvaluation const &other);
  /// Keeps this object's tag.
  ZQNURBSSurfaceEvaluation &operator=(ZQNURBSSurfaceEvaluation const &other);
  virtual ~ZQNURBSSurfaceEvaluation();

  long long GetID() const;
  /// Nothing is kept between evaluations, so there is nothing to reset.
  void Reset();

  /// Evaluates at uv[0], uv[1] the surface whose net holds point (a, b) at a * numV + b,
  /// numV = knotCountV - degreeV - 1: x, y, z each, or x*w, y*w, z*w, w when `rational`.
  /// Each output is null or receives x, y, z. Any of duu, duv, dvv asks for order 2 and
  /// computes all three, du or dv order 1, `point` alone the cheaper value path. The larger
  /// degree above 31 writes the fatal banner and ends the process; nothing else is checked.
  void Evaluate(long long knotCountU, long long degreeU, double const *knotsU, long long knotCountV, long long degreeV,
                double const *knotsV, double const *controlPoints, bool rational, double const *uv, double *point,
                double *du, double *dv, double *duu, double *duv, double *dvv);

protected:
  /// Takes over the binomial state of the rational work space; no tag and no scratch.
  void Copy(ZQNURBSSurfaceEvaluation const &other);

private:
  static constexpr int MaxOrder = ZQSplineAlgorithms<double, long long>::MaxOrder;

  long long id;
  /// SKL[k][l]: the derivative of order k in u and l in v of the last evaluation.
  double SKL[MaxOrder][MaxOrder][3];
  ZQBSplineAlgorithms<double, long long, 3> bspline;
  ZQNURBSAlgorithms<double, long long, 3> nurbs;
};

} // namespace Velmora::Tessara::ZQ::Core

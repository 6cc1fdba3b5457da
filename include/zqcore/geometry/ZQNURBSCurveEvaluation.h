// ZQNURBSCurveEvaluation: a point and up to two derivatives of a spline curve at one parameter.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/geometry/ZQSplineAlgorithms.h>

namespace Velmora::Tessara::ZQ::Core {

/// Evaluates polynomial or rational curves in three dimensions. The curve comes with every
/// call; the object holds only work space, so one object is kept and reused, and an
/// evaluation allocates nothing. One object serves one thread at a time.
class ZQCORE_EXPORT ZQNURBSCurveEvaluation {
public:
  ZQNURBSCurveEvaluation();
  /// `id` is the caller's tag, given back by GetID and otherwise unused.
  ZQNURBSCurveEvaluation(long long id);
  /// The new object's tag is 0, not the source's.
  ZQNURBSCurveEvaluation(ZQNURBSCurveEvaluation const &other);
  /// Keeps this object's tag.
  ZQNURBSCurveEvaluation &operator=(ZQNURBSCurveEvaluation const &other);
  virtual ~ZQNURBSCurveEvaluation();

  long long GetID() const;
  /// Nothing is kept between evaluations, so there is nothing to reset.
  void Reset();

  /// Evaluates at u the curve of `knotCount` knots, degree p and knotCount - p - 1 control
  /// points: x, y, z each, or x*w, y*w, z*w, w when `rational`. Each output is null or
  /// receives x, y, z; the non-null ones decide the work (second derivative requested:
  /// order 2; else first: order 1; else the point alone, on a cheaper path). A degree above
  /// 31 writes the fatal banner and ends the process. Nothing else is checked: a
  /// parameter outside the knots extrapolates the end span, a zero weight sum gives
  /// infinities or NaN.
  void Evaluate(long long knotCount, long long degree, double const *knots, double const *controlPoints, bool rational,
                double u, double *point, double *firstDerivative, double *secondDerivative);

protected:
  /// Takes over the binomial state of the rational work space; no tag and no scratch.
  void Copy(ZQNURBSCurveEvaluation const &other);

private:
  long long id;
  /// CK[k]: the k-th derivative of the last evaluation, as x, y, z.
  double CK[ZQSplineAlgorithms<double, long long>::MaxOrder][3];
  ZQBSplineAlgorithms<double, long long, 3> bspline;
  ZQNURBSAlgorithms<double, long long, 3> nurbs;
};

} // namespace Velmora::Tessara::ZQ::Core

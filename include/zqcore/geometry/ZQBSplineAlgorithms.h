// ZQBSplineAlgorithms: points and derivatives of polynomial spline curves and surfaces.
#pragma once

#include <zqcore/geometry/ZQSplineAlgorithms.h>

namespace Velmora::Tessara::ZQ::Core {

/// Polynomial curves and surfaces with Dim coordinates per control point. The basis tables
/// are fields, so an evaluation allocates nothing; the knots and the control points come
/// with every call and are not kept.
template <typename Real, typename Int, int Dim>
class ZQCORE_EXPORT ZQBSplineAlgorithms : public ZQSplineAlgorithms<Real, Int> {
  using Base = ZQSplineAlgorithms<Real, Int>;

public:
  static constexpr int MaxOrder = Base::MaxOrder;

  ZQBSplineAlgorithms() : N{}, ders{}, Nu{}, Nv{}, dersU{}, dersV{}, temp{} {}
  ~ZQBSplineAlgorithms() override = default;

  /// The curve point at u, from the knotCount - degree - 1 control points.
  void CurvePoint(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Real *point) {
    this->template CurveValueSum<Dim>(knotCount, degree, knots, controlPoints, u, N, point);
  }

  /// CK[k] for k = 0..order: the point and its derivatives at u; those above the degree
  /// are exact zeros.
  void CurveDerivatives(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Int order,
                        Real CK[][Dim]) {
    this->template CurveDerivativeSums<Dim>(knotCount, degree, knots, controlPoints, u, order, ders, CK);
  }

  /// The surface point at (u, v); the net holds point (a, b) at a * numV + b.
  void SurfacePoint(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV, Real const *knotsV,
                    Real const *controlPoints, Real u, Real v, Real *point) {
    this->template SurfaceValueSum<Dim>(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, u, v,
                                        Nu, Nv, point);
  }

  /// SKL[k][l]: the derivative of order k in u and l in v, for k + l <= order; the other
  /// entries of the order's square are zero.
  void SurfaceDerivatives(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV,
                          Real const *knotsV, Real const *controlPoints, Real u, Real v, Int order,
                          Real SKL[][MaxOrder][Dim]) {
    this->template SurfaceDerivativeSums<Dim>(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints,
                                              u, v, order, dersU, dersV, temp, SKL);
  }

protected:
  Real N[MaxOrder];
  Real ders[MaxOrder][MaxOrder];
  Real Nu[MaxOrder];
  Real Nv[MaxOrder];
  Real dersU[MaxOrder][MaxOrder];
  Real dersV[MaxOrder][MaxOrder];
  /// Sums over the first parameter, one per column of the net.
  Real temp[MaxOrder][Dim];
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQNURBSAlgorithms: points and derivatives of rational spline curves and surfaces.
#pragma once

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/geometry/ZQSplineAlgorithms.h>

namespace Velmora::Tessara::ZQ::Core {

/// Rational curves and surfaces. A control point arrives in homogeneous form, Dim
/// coordinates already multiplied by the weight and then the weight; nothing here
/// multiplies by a weight. Derivatives come from the homogeneous ones by the quotient
/// rule, with binomial coefficients from a fixed table built at construction.
template <typename Real, typename Int, int Dim>
class ZQCORE_EXPORT ZQNURBSAlgorithms : public ZQSplineAlgorithms<Real, Int> {
  using Base = ZQSplineAlgorithms<Real, Int>;
  static constexpr int W = Dim + 1;

public:
  static constexpr int MaxOrder = Base::MaxOrder;

  ZQNURBSAlgorithms()
      : binomialOrder(0), N{}, ders{}, Nu{}, Nv{}, dersU{}, dersV{}, temp{}, Aders{}, AdersSurface{}, Bin{} {
    InitializeBinomials(0);
  }
  ~ZQNURBSAlgorithms() override = default;

  /// Order 0 builds the fixed table Bin of rows 0..31. A larger order than any before
  /// rebuilds the growable table `binomials` as order x order; a smaller one does nothing.
  /// Each entry is the product formula in wrapping 64-bit integers, not reduced along the
  /// way: exact up to row 20, wrong beyond it (Bin[21][19] holds 58). Evaluation reads
  /// rows 0 to 2 only.
  void InitializeBinomials(Int order) {
    if (order == 0) {
      for (int i = 0; i < MaxOrder; ++i) {
        for (int j = 0; j < MaxOrder; ++j) {
          Bin[i][j] = j <= i ? WrappedBinomial(i, j) : Real(0);
        }
      }
      return;
    }
    if (order <= binomialOrder) {
      return;
    }
    binomialOrder = order;
    binomials.Resize(order, order);
    for (Int i = 0; i < order; ++i) {
      for (Int j = 0; j < order; ++j) {
        binomials(i, j) = j <= i ? WrappedBinomial(i, j) : Real(0);
      }
    }
  }

  /// Takes over the binomial state (the fixed table, the order and a copy of the growable
  /// table) and nothing of the scratch.
  void CopyBinomials(ZQNURBSAlgorithms const &other) {
    if (&other == this) {
      return;
    }
    for (int i = 0; i < MaxOrder; ++i) {
      for (int j = 0; j < MaxOrder; ++j) {
        Bin[i][j] = other.Bin[i][j];
      }
    }
    binomialOrder = other.binomialOrder;
    binomials = other.binomials;
  }

  /// The curve point at u: the homogeneous sum divided by its weight.
  void CurvePoint(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Real *point) {
    Real weighted[W];
    this->template CurveValueSum<W>(knotCount, degree, knots, controlPoints, u, N, weighted);
    for (int c = 0; c < Dim; ++c) {
      point[c] = weighted[c] / weighted[Dim];
    }
  }

  /// CK[k] for k = 0..order. The quotient rule runs to `order` even above the degree: a
  /// rational curve of degree 1 has a true second derivative.
  void CurveDerivatives(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Int order,
                        Real CK[][Dim]) {
    this->template CurveDerivativeSums<W>(knotCount, degree, knots, controlPoints, u, order, ders, Aders);
    Base::template ClearRows<Dim>(CK, order);
    for (Int k = 0; k <= order; ++k) {
      Real v[Dim];
      TakePoint(Aders[k], v);
      for (Int i = 1; i <= k; ++i) {
        Base::template AddScaled<Dim>(-(Bin[k][i] * Aders[i][Dim]), CK[k - i], v);
      }
      DivideInto(v, Aders[0][Dim], CK[k]);
    }
  }

  /// The surface point at (u, v): the homogeneous sum divided by its weight.
  void SurfacePoint(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV, Real const *knotsV,
                    Real const *controlPoints, Real u, Real v, Real *point) {
    Real weighted[W];
    this->template SurfaceValueSum<W>(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, u, v, Nu,
                                      Nv, weighted);
    for (int c = 0; c < Dim; ++c) {
      point[c] = weighted[c] / weighted[Dim];
    }
  }

  /// SKL[k][l] for k + l <= order, by the quotient rule over both parameters; the other
  /// entries of the order's square are zero.
  void SurfaceDerivatives(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV,
                          Real const *knotsV, Real const *controlPoints, Real u, Real v, Int order,
                          Real SKL[][MaxOrder][Dim]) {
    this->template SurfaceDerivativeSums<W>(knotCountU, degreeU, knotsU, knotCountV, degreeV, knotsV, controlPoints, u,
                                            v, order, dersU, dersV, temp, AdersSurface);
    for (Int k = 0; k <= order; ++k) {
      Base::template ClearRows<Dim>(SKL[k], order);
    }
    for (Int k = 0; k <= order; ++k) {
      for (Int l = 0; l <= order - k; ++l) {
        Real value[Dim];
        TakePoint(AdersSurface[k][l], value);
        for (Int j = 1; j <= l; ++j) {
          Base::template AddScaled<Dim>(-(Bin[l][j] * AdersSurface[0][j][Dim]), SKL[k][l - j], value);
        }
        for (Int i = 1; i <= k; ++i) {
          Base::template AddScaled<Dim>(-(Bin[k][i] * AdersSurface[i][0][Dim]), SKL[k - i][l], value);
          Real mixed[Dim] = {};
          for (Int j = 1; j <= l; ++j) {
            Base::template AddScaled<Dim>(Bin[l][j] * AdersSurface[i][j][Dim], SKL[k - i][l - j], mixed);
          }
          Base::template AddScaled<Dim>(-Bin[k][i], mixed, value);
        }
        DivideInto(value, AdersSurface[0][0][Dim], SKL[k][l]);
      }
    }
  }

protected:
  Int binomialOrder;
  Real N[MaxOrder];
  Real ders[MaxOrder][MaxOrder];
  Real Nu[MaxOrder];
  Real Nv[MaxOrder];
  Real dersU[MaxOrder][MaxOrder];
  Real dersV[MaxOrder][MaxOrder];
  /// Homogeneous sums over the first parameter, one per column of the net.
  Real temp[MaxOrder][W];
  /// Homogeneous curve derivatives; component Dim is the weight function's.
  Real Aders[MaxOrder][W];
  /// Homogeneous surface derivatives by order in u, then order in v.
  Real AdersSurface[MaxOrder][MaxOrder][W];
  Real Bin[MaxOrder][MaxOrder];
  ZQArrayNativeType<Real, Int> binomials;

private:
  /// (i - j + 1) ... i divided by 1 ... j, both products wrapping in 64 bits, the division
  /// truncating.
  static Real WrappedBinomial(long long i, long long j) {
    unsigned long long numerator = 1;
    unsigned long long denominator = 1;
    for (long long t = 1; t <= j; ++t) {
      numerator *= static_cast<unsigned long long>(i - j + t);
      denominator *= static_cast<unsigned long long>(t);
    }
    return static_cast<Real>(static_cast<long long>(numerator) / static_cast<long long>(denominator));
  }

  static void TakePoint(Real const *weighted, Real *point) {
    for (int c = 0; c < Dim; ++c) {
      point[c] = weighted[c];
    }
  }
  static void DivideInto(Real const *value, Real weight, Real *out) {
    for (int c = 0; c < Dim; ++c) {
      out[c] = value[c] / weight;
    }
  }
};

} // namespace Velmora::Tessara::ZQ::Core

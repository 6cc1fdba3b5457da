// ZQSplineAlgorithms: knot span search and B-spline basis functions with their derivatives.
#pragma once

#include <zqcore/ZQCoreExport.h>

#include <type_traits>

namespace Velmora::Tessara::ZQ::Core {

/// The numerical core shared by polynomial and rational spline evaluation. Every table is a
/// fixed array sized for the largest order (32, degree 31), so no operation allocates; the
/// object is large and meant to be built once and reused. Nothing is checked: degree
/// bounds are the callers' concern, and a knot vector is taken as non-decreasing.
template <typename Real, typename Int> class ZQCORE_EXPORT ZQSplineAlgorithms {
public:
  /// Largest order (degree + 1) that the fixed tables hold.
  static constexpr int MaxOrder = 32;

  ZQSplineAlgorithms() : left{}, right{}, ndu{}, a{} {}
  virtual ~ZQSplineAlgorithms() = default;

  /// Span i with knots[i] <= u < knots[i + 1], within degree .. knotCount - degree - 2.
  /// A parameter at or beyond the last usable knot gets the last span, one at or before
  /// knots[degree] the first; a parameter outside the range is not clamped. A NaN fails
  /// every comparison and ends at the first midpoint of the search.
  Int FindKnotSpan(Int knotCount, Int degree, Real const *knots, Real u) {
    Int high = knotCount - 1 - degree;
    if (u >= knots[high]) {
      return high - 1;
    }
    if (knots[degree] >= u) {
      return degree;
    }
    Int low = degree;
    Int mid = (low + high) / 2;
    for (;;) {
      if (knots[mid] > u) {
        high = mid;
      } else if (u >= knots[mid + 1]) {
        low = mid;
      } else {
        return mid;
      }
      mid = (low + high) / 2;
    }
  }

  /// The degree + 1 basis functions that are non-zero on `span`, evaluated at u, into N.
  /// A zero knot difference contributes nothing, so repeated knots inside the support
  /// keep the values finite.
  void BasisFunctions(Int span, Real u, Int degree, Real const *knots, Real *N) {
    WithConstant<1, 2, 3>(degree, [&](auto p) { BasisFunctionsOfDegree(span, u, p, knots, N); });
  }

  /// ders[k][j]: the k-th derivative of the j-th non-zero basis function on `span`, for
  /// k = 0..order (order <= degree); rows above `order` are left as they are. Unlike
  /// BasisFunctions there is no guard: a zero knot difference in the support divides by
  /// zero and the infinity or NaN reaches the result.
  void BasisFunctionDerivatives(Int span, Real u, Int degree, Int order, Real const *knots, Real ders[][MaxOrder]) {
    WithConstant<1, 2, 3>(degree, [&](auto p) {
      WithConstant<1, 2>(order, [&](auto n) { BasisFunctionDerivativesOfDegree(span, u, p, n, knots, ders); });
    });
  }

protected:
  /// The value sum of a curve: out = sum of basis[j] * P[span - degree + j], j rising, over
  /// C components (3 for points, 4 for weighted points).
  template <int C>
  void CurveValueSum(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Real *basis,
                     Real *out) {
    Int const span = FindKnotSpan(knotCount, degree, knots, u);
    BasisFunctions(span, u, degree, knots, basis);
    CombinePoints<C>(basis, degree, controlPoints + (span - degree) * C, out);
  }

  /// out[k] for k = 0..order: the k-th derivative of the C-component sum. Orders above the
  /// degree stay exact zeros.
  template <int C>
  void CurveDerivativeSums(Int knotCount, Int degree, Real const *knots, Real const *controlPoints, Real u, Int order,
                           Real ders[][MaxOrder], Real out[][C]) {
    ClearRows<C>(out, order);
    Int const span = FindKnotSpan(knotCount, degree, knots, u);
    Int const computed = order < degree ? order : degree;
    BasisFunctionDerivatives(span, u, degree, computed, knots, ders);
    WithConstant<1, 2, 3>(degree, [&](auto p) {
      for (Int k = 0; k <= computed; ++k) {
        CombinePoints<C>(ders[k], p, controlPoints + (span - p) * C, out[k]);
      }
    });
  }

  /// The value sum of a tensor-product net (first parameter slow): for each column s the
  /// sum over the first parameter, then weighted by the second parameter's basis.
  template <int C>
  void SurfaceValueSum(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV, Real const *knotsV,
                       Real const *controlPoints, Real u, Real v, Real *basisU, Real *basisV, Real *out) {
    Int const spanU = FindKnotSpan(knotCountU, degreeU, knotsU, u);
    BasisFunctions(spanU, u, degreeU, knotsU, basisU);
    Int const spanV = FindKnotSpan(knotCountV, degreeV, knotsV, v);
    BasisFunctions(spanV, v, degreeV, knotsV, basisV);
    Int const rowStride = (knotCountV - degreeV - 1) * C;
    Real const *corner = controlPoints + (spanU - degreeU) * rowStride + (spanV - degreeV) * C;
    Real sum[C] = {};
    for (Int s = 0; s <= degreeV; ++s) {
      Real column[C] = {};
      for (Int r = 0; r <= degreeU; ++r) {
        AddScaled<C>(basisU[r], corner + r * rowStride + s * C, column);
      }
      AddScaled<C>(basisV[s], column, sum);
    }
    Store<C>(sum, out);
  }

  /// out[k][l] for k, l = 0..order with k + l <= order: mixed derivatives of the
  /// C-component sum, the rest of that square cleared. Each order in the first parameter
  /// sums every column once (into `temp`), then each order in the second sums the columns.
  template <int C>
  void SurfaceDerivativeSums(Int knotCountU, Int degreeU, Real const *knotsU, Int knotCountV, Int degreeV,
                             Real const *knotsV, Real const *controlPoints, Real u, Real v, Int order,
                             Real dersU[][MaxOrder], Real dersV[][MaxOrder], Real temp[][C], Real out[][MaxOrder][C]) {
    Int const orderU = order < degreeU ? order : degreeU;
    Int const orderV = order < degreeV ? order : degreeV;
    for (Int k = 0; k <= order; ++k) {
      ClearRows<C>(out[k], order);
    }
    Int const spanU = FindKnotSpan(knotCountU, degreeU, knotsU, u);
    BasisFunctionDerivatives(spanU, u, degreeU, orderU, knotsU, dersU);
    Int const spanV = FindKnotSpan(knotCountV, degreeV, knotsV, v);
    BasisFunctionDerivatives(spanV, v, degreeV, orderV, knotsV, dersV);
    Int const rowStride = (knotCountV - degreeV - 1) * C;
    Real const *corner = controlPoints + (spanU - degreeU) * rowStride + (spanV - degreeV) * C;
    for (Int k = 0; k <= orderU; ++k) {
      for (Int s = 0; s <= degreeV; ++s) {
        Real column[C] = {};
        for (Int r = 0; r <= degreeU; ++r) {
          AddScaled<C>(dersU[k][r], corner + r * rowStride + s * C, column);
        }
        Store<C>(column, temp[s]);
      }
      Int const orderL = order - k < orderV ? order - k : orderV;
      for (Int l = 0; l <= orderL; ++l) {
        CombinePoints<C>(dersV[l], degreeV, temp[0], out[k][l]);
      }
    }
  }

  /// Rows 0..last of a C-component table set to zero.
  template <int C> static void ClearRows(Real rows[][C], Int last) {
    for (Int k = 0; k <= last; ++k) {
      for (int c = 0; c < C; ++c) {
        rows[k][c] = Real(0);
      }
    }
  }

  /// out += factor * point, over C components.
  template <int C> static void AddScaled(Real factor, Real const *point, Real *out) {
    for (int c = 0; c < C; ++c) {
      out[c] += factor * point[c];
    }
  }

  /// out = sum of weights[j] * points[j], j = 0..last rising, points C components apart.
  /// The sum is kept in registers: `out` may lie in the same object as the inputs.
  template <int C, typename Last>
  static void CombinePoints(Real const *weights, Last last, Real const *points, Real *out) {
    Real sum[C] = {};
    for (Int j = 0; j <= last; ++j) {
      AddScaled<C>(weights[j], points + j * C, sum);
    }
    Store<C>(sum, out);
  }

  template <int C> static void Store(Real const *values, Real *out) {
    for (int c = 0; c < C; ++c) {
      out[c] = values[c];
    }
  }

  Real left[MaxOrder];
  Real right[MaxOrder];
  /// ndu[r][j] with r <= j: basis value of function r at degree j; ndu[j][r] with r < j:
  /// the knot difference that divides it.
  Real ndu[MaxOrder][MaxOrder];
  /// Two alternating rows of derivative coefficients.
  Real a[2][MaxOrder];

private:
  /// Runs `work` with `value` as a compile-time constant when it is one of `Constants`, so
  /// that the loops it bounds unroll, and as a run-time value otherwise. The arithmetic is
  /// the same either way.
  template <Int... Constants, typename Work> static void WithConstant(Int value, Work &&work) {
    bool const matched = ((value == Constants ? (work(std::integral_constant<Int, Constants>()), true) : false) || ...);
    if (!matched) {
      work(value);
    }
  }

  template <typename Degree> void BasisFunctionsOfDegree(Int span, Real u, Degree degree, Real const *knots, Real *N) {
    N[0] = Real(1);
    for (Int j = 1; j <= degree; ++j) {
      left[j] = u - knots[span + 1 - j];
      right[j] = knots[span + j] - u;
      Real saved = Real(0);
      for (Int r = 0; r < j; ++r) {
        Real const d = right[r + 1] + left[j - r];
        Real const temp = d == Real(0) ? Real(0) : N[r] / d;
        N[r] = saved + right[r + 1] * temp;
        saved = left[j - r] * temp;
      }
      N[j] = saved;
    }
  }

  template <typename Degree, typename Order>
  void BasisFunctionDerivativesOfDegree(Int span, Real u, Degree degree, Order order, Real const *knots,
                                        Real ders[][MaxOrder]) {
    FillBasisTable(span, u, degree, knots);
    for (Int j = 0; j <= degree; ++j) {
      ders[0][j] = ndu[j][degree];
    }
    for (Int r = 0; r <= degree; ++r) {
      DerivativesOfOneFunction(r, degree, order, ders);
    }
    Int factor = degree;
    for (Int k = 1; k <= order; ++k) {
      for (Int j = 0; j <= degree; ++j) {
        ders[k][j] *= static_cast<Real>(factor);
      }
      factor *= degree - k;
    }
  }

  template <typename Degree> void FillBasisTable(Int span, Real u, Degree degree, Real const *knots) {
    ndu[0][0] = Real(1);
    for (Int j = 1; j <= degree; ++j) {
      left[j] = u - knots[span + 1 - j];
      right[j] = knots[span + j] - u;
      Real saved = Real(0);
      for (Int r = 0; r < j; ++r) {
        ndu[j][r] = right[r + 1] + left[j - r];
        Real const temp = ndu[r][j - 1] / ndu[j][r];
        ndu[r][j] = saved + right[r + 1] * temp;
        saved = left[j - r] * temp;
      }
      ndu[j][j] = saved;
    }
  }

  /// Derivatives 1..order of basis function r, before the factor degree! / (degree - k)!.
  template <typename Degree, typename Order>
  void DerivativesOfOneFunction(Int r, Degree degree, Order order, Real ders[][MaxOrder]) {
    Int s1 = 0;
    Int s2 = 1;
    a[0][0] = Real(1);
    for (Int k = 1; k <= order; ++k) {
      Real d = Real(0);
      Int const rk = r - k;
      Int const pk = degree - k;
      if (r >= k) {
        a[s2][0] = a[s1][0] / ndu[pk + 1][rk];
        d = a[s2][0] * ndu[rk][pk];
      }
      Int const j1 = rk >= -1 ? 1 : -rk;
      Int const j2 = r - 1 <= pk ? k - 1 : degree - r;
      for (Int j = j1; j <= j2; ++j) {
        a[s2][j] = (a[s1][j] - a[s1][j - 1]) / ndu[pk + 1][rk + j];
        d += a[s2][j] * ndu[rk + j][pk];
      }
      if (r <= pk) {
        a[s2][k] = -a[s1][k - 1] / ndu[pk + 1][r];
        d += a[s2][k] * ndu[r][pk];
      }
      ders[k][r] = d;
      Int const swap = s1;
      s1 = s2;
      s2 = swap;
    }
  }
};

} // namespace Velmora::Tessara::ZQ::Core

// The two families built on this core come with it, so that one include gives all three.
#include <zqcore/geometry/ZQBSplineAlgorithms.h>
#include <zqcore/geometry/ZQNURBSAlgorithms.h>

#!/usr/bin/env python3
"""Writes spline_references.txt: exact values of basis functions, curves and surfaces.

Every number is computed in exact rational arithmetic (fractions.Fraction) from the
recursive definition of the B-spline basis and its derivative formula, not from the
triangular tables that the library uses, and is rounded to the nearest double only at the
end. Inputs are doubles taken exactly. Polynomial pieces are defined by their span, so a
parameter outside the knot range gives the extrapolated end piece. Run it from this
directory and commit the output, which the tests read at run time:
    python3 make_spline_references.py > spline_references.txt
"""
import contextlib
import io
from fractions import Fraction as F
from functools import lru_cache


def span_of(knots, p, u):
    high = len(knots) - 1 - p
    if u >= knots[high]:
        return high - 1
    if u <= knots[p]:
        return p
    return max(i for i in range(p, high) if knots[i] <= u)


def basis_derivative(knots, span, u):
    """D^k N_{i,p}(u) on the polynomial piece of `span`."""
    U = [F(x) for x in knots]

    @lru_cache(maxsize=None)
    def d(i, p, k):
        if p == 0:
            return F(int(i == span and k == 0))
        if k == 0:
            a = (u - U[i]) / (U[i + p] - U[i]) * d(i, p - 1, 0) if U[i + p] != U[i] else F(0)
            b = (U[i + p + 1] - u) / (U[i + p + 1] - U[i + 1]) * d(i + 1, p - 1, 0) if U[i + p + 1] != U[i + 1] else F(0)
            return a + b
        a = d(i, p - 1, k - 1) / (U[i + p] - U[i]) if U[i + p] != U[i] else F(0)
        b = d(i + 1, p - 1, k - 1) / (U[i + p + 1] - U[i + 1]) if U[i + p + 1] != U[i + 1] else F(0)
        return p * (a - b)

    return d


def homogeneous_curve(knots, p, points, u, k):
    """k-th derivative of the sum over every control point (each a tuple of any size)."""
    u = F(u)
    d = basis_derivative(knots, span_of(knots, p, u), u)
    return [sum(d(i, p, k) * F(P[c]) for i, P in enumerate(points)) for c in range(len(points[0]))]


def rational_derivatives(A):
    """A[k]: homogeneous derivatives (x w, y w, z w, w) up to 2; the quotient rule."""
    w = [a[3] for a in A]
    C0 = [A[0][c] / w[0] for c in range(3)]
    C1 = [(A[1][c] - w[1] * C0[c]) / w[0] for c in range(3)]
    C2 = [(A[2][c] - 2 * w[1] * C1[c] - w[2] * C0[c]) / w[0] for c in range(3)]
    return [C0, C1, C2]


def text(values):
    return " ".join(repr(float(v)) for v in values)


def emit_basis(name, knots, p, params):
    for u in params:
        s = span_of(knots, p, F(u))
        d = basis_derivative(knots, s, F(u))
        rows = [text(d(s - p + j, p, k) for j in range(p + 1)) for k in range(min(p, 2) + 1)]
        print(f"basis {name} {repr(u)} {s} {' '.join(rows)}")


def emit_curve(name, knots, p, points, params, rational):
    for u in params:
        if rational:
            C = rational_derivatives([homogeneous_curve(knots, p, points, u, k) for k in range(3)])
        else:
            C = [homogeneous_curve(knots, p, points, u, k) for k in range(3)]
        print(f"value {name} {repr(u)} {' '.join(text(c) for c in C)}")


def surface_derivative(ku, p, kv, q, net, u, v, k, l):
    u, v = F(u), F(v)
    du = basis_derivative(ku, span_of(ku, p, u), u)
    dv = basis_derivative(kv, span_of(kv, q, v), v)
    size = len(net[0][0])
    return [sum(du(a, p, k) * dv(b, q, l) * F(net[a][b][c]) for a in range(len(net)) for b in range(len(net[0])))
            for c in range(size)]


def emit_surface(name, ku, p, kv, q, net, params, rational):
    for u, v in params:
        S = {(k, l): surface_derivative(ku, p, kv, q, net, u, v, k, l) for k in range(3) for l in range(3 - k)}
        if rational:
            w = {key: value[3] for key, value in S.items()}
            A = S
            S = {}
            S[0, 0] = [A[0, 0][c] / w[0, 0] for c in range(3)]
            for key in [(1, 0), (0, 1)]:
                S[key] = [(A[key][c] - w[key] * S[0, 0][c]) / w[0, 0] for c in range(3)]
            for key, one in [((2, 0), (1, 0)), ((0, 2), (0, 1))]:
                S[key] = [(A[key][c] - 2 * w[one] * S[one][c] - w[key] * S[0, 0][c]) / w[0, 0] for c in range(3)]
            S[1, 1] = [(A[1, 1][c] - w[1, 1] * S[0, 0][c] - w[1, 0] * S[0, 1][c] - w[0, 1] * S[1, 0][c]) / w[0, 0]
                       for c in range(3)]
        order = [(0, 0), (1, 0), (0, 1), (2, 0), (1, 1), (0, 2)]
        print(f"surface {name} {repr(u)} {repr(v)} {' '.join(text(S[key]) for key in order)}")


def weighted(points, weights):
    return [tuple(F(x) * F(w) for x in P) + (F(w),) for P, w in zip(points, weights)]


CUBIC_KNOTS = [0, 0, 0, 0, 0.25, 0.5, 0.5, 0.75, 1, 1, 1, 1]
CUBIC_POINTS = [(0, 0, 0), (1, 2, 0), (2, 3, 1), (4, 3, -1), (5, 1, 2), (6, -1, 0), (8, 0, 1), (9, 2, 3)]
CUBIC_WEIGHTS = [1, 0.5, 2, 1.5, 1, 0.75, 2.5, 1]
CUBIC_PARAMS = [0.0, 0.1, 0.25, 0.3, 0.5, 0.6, 0.75, 0.9, 1.0, -0.25, 1.25]
UNCLAMPED_KNOTS = [0, 1, 2, 3, 4, 5, 6, 7]
UNCLAMPED_POINTS = [(0, 0, 0), (1, 1, 0), (3, -1, 2), (4, 2, 1), (6, 0, 0)]
UNCLAMPED_PARAMS = [2.0, 2.5, 3.0, 4.75, 5.0, 1.5, 5.5]
LINEAR_KNOTS = [0, 0, 1, 2, 2]
LINEAR_POINTS = [(0, 0, 0), (2, 1, 0), (3, 3, 1)]
LINEAR_WEIGHTS = [1, 3, 0.5]
LINEAR_PARAMS = [0.0, 0.5, 1.0, 1.5, 2.0]
CONSTANT_KNOTS = [0, 1, 2, 3]
CONSTANT_POINTS = [(1, 2, 3), (4, 5, 6), (7, 8, 9)]
CONSTANT_PARAMS = [0.0, 0.5, 1.0, 2.5, 3.0]
HIGH_KNOTS = [0] * 32 + [0.5] + [1] * 32
HIGH_POINTS = [((i * 7) % 5 - 2, (i * 3) % 7 - 3, (i * i) % 4) for i in range(33)]
HIGH_WEIGHTS = [1 + (i % 3) * 0.5 for i in range(33)]
HIGH_PARAMS = [0.0, 0.2, 0.5, 0.7, 1.0]
SURFACE_KNOTS_U = [0, 0, 0, 0, 0.5, 1, 1, 1, 1]
SURFACE_KNOTS_V = [0, 0, 0, 0.4, 1, 1, 1]
SURFACE_NET = [[(a, b, ((a * 3 + b * 5) % 7) * 0.25) for b in range(4)] for a in range(5)]
SURFACE_WEIGHTS = [[1 + ((a + 2 * b) % 4) * 0.25 for b in range(4)] for a in range(5)]
SURFACE_PARAMS = [(0.0, 0.0), (0.3, 0.7), (0.5, 0.4), (1.0, 1.0), (0.75, 0.1), (-0.2, 1.3)]


def flat(points):
    return text(x for P in points for x in P)


CURVES = [  # name, knots, degree, points, weights (None: polynomial), parameters
    ("Cubic", CUBIC_KNOTS, 3, CUBIC_POINTS, None, CUBIC_PARAMS),
    ("CubicRational", CUBIC_KNOTS, 3, CUBIC_POINTS, CUBIC_WEIGHTS, CUBIC_PARAMS),
    ("Unclamped", UNCLAMPED_KNOTS, 2, UNCLAMPED_POINTS, None, UNCLAMPED_PARAMS),
    ("LinearRational", LINEAR_KNOTS, 1, LINEAR_POINTS, LINEAR_WEIGHTS, LINEAR_PARAMS),
    ("Constant", CONSTANT_KNOTS, 0, CONSTANT_POINTS, None, CONSTANT_PARAMS),
    ("HighDegree", HIGH_KNOTS, 31, HIGH_POINTS, None, HIGH_PARAMS),
    ("HighDegreeRational", HIGH_KNOTS, 31, HIGH_POINTS, HIGH_WEIGHTS, HIGH_PARAMS),
]
BASES = [("Cubic", CUBIC_KNOTS, 3, CUBIC_PARAMS), ("Unclamped", UNCLAMPED_KNOTS, 2, UNCLAMPED_PARAMS),
         ("HighDegree", HIGH_KNOTS, 31, HIGH_PARAMS)]

HEADER = """\
# Generated by make_spline_references.py: exact rational arithmetic, rounded to double once at
# the end and printed so that every number reads back exactly. Do not edit; change the script.
# Every line is a kind, a name and numbers; the last line is "end" and the number of the others.
#   knots <curve>      the knot vector
#   curve <curve>      the degree, then 1 if the control points are homogeneous (x w, y w, z w, w)
#   points <curve>     the control points, one after the other
#   basis <curve>      u, the span, then rows 0 to min(degree, 2) of the derivatives of the
#                      degree + 1 functions of the span
#   value <curve>      u, then the point and its first and second derivatives
#   knots SurfaceU, knots SurfaceV, net <surface>: a bicubic by biquadratic net of 5 x 4 points,
#                      v fastest
#   surface <surface>  u, v, then the point, du, dv, duu, duv and dvv"""


def main():
    for name, knots, p, points, weights, params in CURVES:
        control = weighted(points, weights) if weights else points
        print(f"knots {name} {text(knots)}")
        print(f"curve {name} {p} {int(weights is not None)}")
        print(f"points {name} {flat(control)}")
        emit_curve(name, knots, p, control, params, weights is not None)
    for name, knots, p, params in BASES:
        emit_basis(name, knots, p, params)
    print(f"knots SurfaceU {text(SURFACE_KNOTS_U)}")
    print(f"knots SurfaceV {text(SURFACE_KNOTS_V)}")
    wnet = [weighted(row, ws) for row, ws in zip(SURFACE_NET, SURFACE_WEIGHTS)]
    print(f"net Polynomial {flat(P for row in SURFACE_NET for P in row)}")
    print(f"net Rational {flat(P for row in wnet for P in row)}")
    emit_surface("Polynomial", SURFACE_KNOTS_U, 3, SURFACE_KNOTS_V, 2, SURFACE_NET, SURFACE_PARAMS, False)
    emit_surface("Rational", SURFACE_KNOTS_U, 3, SURFACE_KNOTS_V, 2, wnet, SURFACE_PARAMS, True)


if __name__ == "__main__":
    rows = io.StringIO()
    with contextlib.redirect_stdout(rows):
        main()
    print(HEADER)
    print(rows.getvalue(), end="")
    print(f"end {rows.getvalue().count(chr(10))}")

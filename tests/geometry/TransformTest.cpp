// Transforms: each kind's matrix and getters, angles and deltas with units, composition
// order, the length-unit paths, comparison, printing and the public facade.
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/geometry/ZQTransform.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/Transform.h>
#include <zqcore/public/Variant.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Type = Types::TransformType_t;
using Status = Types::StatusCode_t;
using Matrix = ZQTransform::Matrix4x4;
using Vector3 = ZQTransform::Vector3;

constexpr double kPi = 3.14159265358979323846;
long long const kMismatch = static_cast<long long>(Status::TransformTypeMismatchError);
long long const kBadUnit = static_cast<long long>(Status::TransformBadLengthUnitError);
long long const kNotInitialized = static_cast<long long>(Status::TransformNotInitializedError);
long long const kConversion = static_cast<long long>(Status::VariantUnitsConversionError);

Vector3 Vec(double x, double y, double z) {
  Vector3 v;
  v[0] = x, v[1] = y, v[2] = z;
  return v;
}
ZQVariant With(double value, char const *unit) { return ZQVariant(value, ZQString(unit)); }

Matrix MatrixOf(ZQTransform &transform) {
  Matrix m;
  EXPECT_EQ(transform.GetTransformMatrix(m, nullptr).GetStatusCode(), 0);
  return m;
}

// The point (x, y, z, 1) under m, as a column vector.
Vector3 Apply(Matrix const &m, Vector3 const &p) {
  Vector3 out;
  for (int r = 0; r < 3; ++r) {
    out[r] = m(r, 0) * p[0] + m(r, 1) * p[1] + m(r, 2) * p[2] + m(r, 3);
  }
  return out;
}

// The product written out independently: (a b)(r, c) = sum over k of a(r, k) b(k, c).
Matrix Times(Matrix const &a, Matrix const &b) {
  Matrix m;
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 4; ++c) {
      for (int k = 0; k < 4; ++k) {
        m(r, c) += a(r, k) * b(k, c);
      }
    }
  }
  return m;
}

double Distance(double const *a, double const *b, int count) {
  double worst = 0;
  for (int i = 0; i < count; ++i) {
    worst = std::max(worst, std::fabs(a[i] - b[i]));
  }
  return worst;
}

void ExpectValues(double const *got, std::initializer_list<double> expected) {
  int i = 0;
  for (double value : expected) {
    EXPECT_DOUBLE_EQ(got[i], value) << "element " << i;
    ++i;
  }
}

bool AllZero(double const *values) {
  return std::all_of(values, values + 16, [](double v) { return v == 0.0; });
}

ZQTransform Rotation(double a, double b, double c) {
  ZQTransform transform;
  EXPECT_EQ(transform.InitializeRotation(ZQVariant(a), ZQVariant(b), ZQVariant(c), nullptr).GetStatusCode(), 0);
  return transform;
}

ZQTransform MixedTranslation() {
  ZQTransform transform;
  EXPECT_EQ(transform.InitializeTranslation(With(1.0, "m"), With(100.0, "cm"), ZQVariant(3.0), nullptr).GetStatusCode(),
            0);
  return transform;
}

TEST(TransformKinds, UndefinedHasNoMatrix) {
  ZQTransform transform;
  double out[16] = {5};
  EXPECT_EQ(transform.GetTransformMatrix(out, nullptr).GetStatusCode(), kNotInitialized);
  EXPECT_TRUE(AllZero(out));
  out[3] = 5;
  EXPECT_EQ(transform.GetTransformMatrix(out, ZQString("mm"), nullptr).GetStatusCode(), kNotInitialized);
  EXPECT_TRUE(AllZero(out));
  EXPECT_EQ(transform.ConvertToLengthUnit(ZQString("mm"), nullptr).GetStatusCode(), kNotInitialized);
  EXPECT_FALSE(transform.IsInitialized() || transform.IsIdentityTransform(1.0));
  EXPECT_STREQ(transform.ToString("# ").c_str(), "# <not initialized>\n");
}

TEST(TransformKinds, NumericKindsBuildTheirMatrixAndReadBack) {
  ZQTransform transform;
  ZQTransform::Matrix3x3 block;
  for (int i = 0; i < 9; ++i) {
    block[i] = i + 1;
  }
  transform.InitializeMatrix3x3(block, nullptr);
  ExpectValues(MatrixOf(transform).GetData(), {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1});
  transform.InitializeVector3(Vec(1, 2, 3), nullptr);
  ExpectValues(MatrixOf(transform).GetData() + 10, {1, 0, 1, 2, 3, 1});
  transform.InitializeUniformScaling(0.5, nullptr);
  ExpectValues(MatrixOf(transform).GetData(), {0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 0.5, 0, 0, 0, 0, 1});
}

TEST(TransformKinds, GetterOfAnotherKindIsAMismatchAndWritesNothing) {
  ZQTransform transform;
  transform.InitializeVector3(Vec(1, 2, 3), nullptr);
  ZQVariant x(7.0), y, z;
  double sixteen[16] = {9};
  EXPECT_EQ(transform.GetTranslation(x, y, z).GetStatusCode(), kMismatch);
  EXPECT_EQ(transform.GetMatrix4x4(sixteen).GetStatusCode(), kMismatch);
  EXPECT_EQ(transform.GetUniformScaling(sixteen[1]).GetStatusCode(), kMismatch);
  EXPECT_EQ(x.Compare(ZQVariant(7.0)), 0);
  EXPECT_EQ(sixteen[0], 9);
  EXPECT_EQ(sixteen[1], 0);
  ZQTransform rotation = Rotation(0.1, 0.2, 0.3); // its matrix only through GetTransformMatrix
  EXPECT_EQ(rotation.GetMatrix4x4(sixteen).GetStatusCode(), kMismatch);
  EXPECT_EQ(rotation.GetRotationAroundAxis(sixteen, sixteen, x).GetStatusCode(), kMismatch);
}

// Three angles compose as Rx Ry Rz (z acts first); built here from single-axis rotations
// in both orders, only one of which may match.
TEST(TransformRotation, ThreeAnglesComposeXAfterYAfterZ) {
  ZQTransform rx = Rotation(0.3, 0, 0), ry = Rotation(0, -0.7, 0), rz = Rotation(0, 0, 1.1);
  ZQTransform all = Rotation(0.3, -0.7, 1.1);
  Matrix const xyz = Times(Times(MatrixOf(rx), MatrixOf(ry)), MatrixOf(rz));
  Matrix const zyx = Times(Times(MatrixOf(rz), MatrixOf(ry)), MatrixOf(rx));
  EXPECT_LT(Distance(MatrixOf(all).GetData(), xyz.GetData(), 16), 1e-15);
  EXPECT_GT(Distance(MatrixOf(all).GetData(), zyx.GetData(), 16), 0.1);
  ZQTransform quarter = Rotation(0, 0, kPi / 2); // right-handed: x goes to y
  EXPECT_NEAR(Apply(MatrixOf(quarter), Vec(1, 0, 0))[1], 1.0, 1e-15);
}

TEST(TransformRotation, IdentityNeedsAPositiveStrictTolerance) {
  ZQTransform zero = Rotation(0, 0, 0), small = Rotation(1e-6, 0, 0), broken;
  EXPECT_TRUE(zero.IsIdentityTransform(1e-12) && zero.IsIdentityTransform(-1e-12));
  EXPECT_FALSE(zero.IsIdentityTransform(0.0));
  EXPECT_FALSE(small.IsIdentityTransform(1e-9));
  EXPECT_TRUE(small.IsIdentityTransform(1e-5));
  Matrix m = MatrixOf(zero);
  m[7] = std::numeric_limits<double>::quiet_NaN();
  broken.InitializeMatrix4x4(m, nullptr);
  EXPECT_FALSE(broken.IsIdentityTransform(1.0));
}

TEST(TransformRotation, AnglesWithUnitsAreConvertedAndKeptAsGiven) {
  ZQTransform radians = Rotation(1.5707963, 0, 0), degrees;
  degrees.InitializeRotation(With(90.0, "deg"), ZQVariant(), ZQVariant(0.0), nullptr);
  EXPECT_LT(Distance(MatrixOf(degrees).GetData(), MatrixOf(radians).GetData(), 16), 1e-7);
  ZQVariant x, y, z;
  ASSERT_EQ(degrees.GetRotation(x, y, z).GetStatusCode(), 0);
  EXPECT_EQ(x.Compare(With(90.0, "deg")), 0);
  EXPECT_FALSE(y.IsInitialized());

  // A length for an angle, or a text that is no number: the failure is the result, the
  // type is set and the matrix stays zero.
  ZQTransform bad;
  EXPECT_EQ(bad.InitializeRotation(ZQVariant(0.0), With(2.0, "m"), ZQVariant(0.0), nullptr).GetStatusCode(),
            kConversion);
  EXPECT_TRUE(AllZero(MatrixOf(bad).GetData()));
  EXPECT_EQ(bad.InitializeRotation(ZQVariant(0.0), ZQVariant(0.0), ZQVariant(ZQString("abc")), nullptr).GetStatusCode(),
            static_cast<long long>(Status::VariantImplicitTypeConversionError));
  EXPECT_EQ(bad.GetType(), Type::Rotation);
  EXPECT_EQ(bad.InitializeRotationAroundAxis(Vec(0, 0, 1), With(1.0, "mm"), nullptr).GetStatusCode(), kConversion);
  EXPECT_EQ(bad.GetType(), Type::RotationAroundAxis);
  EXPECT_TRUE(AllZero(MatrixOf(bad).GetData()));
}

TEST(TransformRotation, AxisIsNormalisedForTheMatrixAndStoredAsGiven) {
  ZQTransform transform;
  transform.InitializeRotationAroundAxis(Vec(0, 0, 2), ZQVariant(kPi / 2), nullptr);
  Vector3 const y = Apply(MatrixOf(transform), Vec(1, 0, 0));
  EXPECT_LT(Distance(y.GetData(), Vec(0, 1, 0).GetData(), 3), 1e-15);
  double origin[3] = {9, 9, 9}, direction[3];
  ZQVariant angle;
  ASSERT_EQ(transform.GetRotationAroundAxis(origin, direction, angle).GetStatusCode(), 0);
  ExpectValues(direction, {0, 0, 2});
  ExpectValues(origin, {0, 0, 0});
  // A half turn gives m(2,2) = 2 z z - 1: 1 for a unit axis, more for one a hair longer,
  // which is used without dividing when within 1e-15 of unit length.
  transform.InitializeRotationAroundAxis(Vec(0, 0, 1 + 0x1p-52), ZQVariant(kPi), nullptr);
  EXPECT_GT(MatrixOf(transform)(2, 2), 1.0);
  transform.InitializeRotationAroundAxis(Vec(0, 0, 1 + 0x1p-45), ZQVariant(kPi), nullptr);
  EXPECT_EQ(MatrixOf(transform)(2, 2), 1.0);

  // Through (1, 2, 0): a half turn maps (0, 0, 5) to (2, 4, 5) and fixes the axis.
  transform.InitializeRotationAroundAxis(Vec(1, 2, 0), Vec(0, 0, 1), With(180.0, "deg"), nullptr);
  EXPECT_LT(Distance(Apply(MatrixOf(transform), Vec(0, 0, 5)).GetData(), Vec(2, 4, 5).GetData(), 3), 1e-14);
  EXPECT_LT(Distance(Apply(MatrixOf(transform), Vec(1, 2, -3)).GetData(), Vec(1, 2, -3).GetData(), 3), 1e-14);
}

TEST(TransformRotation, ZeroAxisReportsOnTheStackButSucceedsWithAZeroMatrix) {
  ZQContext context;
  for (bool withOrigin : {false, true}) {
    long long const before = context.GetErrorStack().GetNMsg();
    ZQTransform transform;
    ZQResult const result =
        withOrigin ? transform.InitializeRotationAroundAxis(Vec(1, 1, 1), Vec(0, 0, 0), ZQVariant(1.0), &context)
                   : transform.InitializeRotationAroundAxis(Vec(0, 0, 0), ZQVariant(1.0), &context);
    EXPECT_EQ(result.GetStatusCode(), 0);
    EXPECT_TRUE(AllZero(MatrixOf(transform).GetData()));
    EXPECT_EQ(context.GetErrorStack().GetNMsg(), before + 1);
    EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(), "normalization of rotation axis failed, norm == 0!");
  }
}

TEST(TransformTranslation, DeltasMeetInTheFirstUnitAndPlainNumbersAreNotScaled) {
  ZQTransform transform = MixedTranslation();
  EXPECT_TRUE(transform.HasLengthUnit());
  ExpectValues(MatrixOf(transform).GetData() + 12, {1, 1, 3, 1});
  Matrix mm;
  ASSERT_EQ(transform.GetTransformMatrix(mm, ZQString("mm"), nullptr).GetStatusCode(), 0);
  ExpectValues(mm.GetData() + 12, {1000, 1000, 3, 1});
  ASSERT_EQ(transform.GetTransformMatrix(mm, ZQString(), nullptr).GetStatusCode(), 0); // no unit: as stored
  ExpectValues(mm.GetData() + 12, {1, 1, 3, 1});
  ZQTransform plain;
  plain.InitializeTranslation(ZQVariant(1.0), ZQVariant(2.0), ZQVariant(), nullptr);
  EXPECT_FALSE(plain.HasLengthUnit());
  ExpectValues(MatrixOf(plain).GetData() + 12, {1, 2, 0});

  EXPECT_EQ(plain.InitializeTranslation(ZQVariant(1.0), With(2.0, "s"), ZQVariant(3.0), nullptr).GetStatusCode(),
            kBadUnit);
  EXPECT_TRUE(AllZero(MatrixOf(plain).GetData()));
}

// The unit is checked for every type, and a failed check hands out zeros; other types than
// translations keep their matrix.
TEST(TransformTranslation, LengthUnitsForOtherKinds) {
  ZQTransform scaling;
  scaling.InitializeScaling(Vec(2, 3, 4), nullptr);
  double out[16];
  EXPECT_EQ(scaling.GetTransformMatrix(out, ZQString("s"), nullptr).GetStatusCode(), kBadUnit);
  EXPECT_TRUE(AllZero(out));
  ASSERT_EQ(scaling.GetTransformMatrix(out, ZQString("mm"), nullptr).GetStatusCode(), 0);
  ExpectValues(out, {2, 0, 0, 0, 0, 3});
  EXPECT_EQ(scaling.ConvertToLengthUnit(ZQString("mm"), nullptr).GetStatusCode(), 0);
  EXPECT_EQ(scaling.ConvertToLengthUnit(ZQString("deg"), nullptr).GetStatusCode(), kBadUnit);
}

TEST(TransformTranslation, ConvertingStopsAtThePlainNumberAndLeavesTheMatrix) {
  ZQTransform transform = MixedTranslation();
  EXPECT_EQ(transform.ConvertToLengthUnit(ZQString("mm"), nullptr).GetStatusCode(), kConversion);
  ZQVariant x, y, z;
  ASSERT_EQ(transform.GetTranslation(x, y, z).GetStatusCode(), 0);
  EXPECT_EQ(x.Compare(With(1000.0, "mm")), 0);
  EXPECT_EQ(y.Compare(With(1000.0, "mm")), 0);
  EXPECT_EQ(z.Compare(ZQVariant(3.0)), 0);
  EXPECT_DOUBLE_EQ(MatrixOf(transform)[12], 1.0);
}

TEST(TransformCompare, TypeThenMatrixThenDefinition) {
  ZQTransform scaling, vector, nearer, metres, millimetres, a, b;
  scaling.InitializeScaling(Vec(1, 1, 1), nullptr);
  vector.InitializeVector3(Vec(-100, 0, 0), nullptr);
  nearer.InitializeVector3(Vec(-100, 0, 1), nullptr);
  EXPECT_EQ(scaling.Compare(vector), 1); // Scaling is type 4, Vector3 type 3
  EXPECT_EQ(vector.Compare(scaling), -1);
  EXPECT_EQ(vector.Compare(vector), 0);
  EXPECT_EQ(vector.Compare(nearer), -1);
  metres.InitializeTranslation(With(0.0, "m"), ZQVariant(), ZQVariant(), nullptr);
  millimetres.InitializeTranslation(With(0.0, "mm"), ZQVariant(), ZQVariant(), nullptr);
  EXPECT_EQ(metres.Compare(millimetres), -1);
  Matrix withNaN;
  withNaN[3] = std::numeric_limits<double>::quiet_NaN();
  a.InitializeMatrix4x4(withNaN, nullptr);
  b.InitializeMatrix4x4(withNaN, nullptr);
  EXPECT_EQ(a.Compare(b), 1);
  EXPECT_EQ(b.Compare(a), 1);
  ZQTransform copy(metres);
  metres.ConvertToLengthUnit(ZQString("mm"), nullptr);
  EXPECT_EQ(copy.Compare(metres), -1);
}

TEST(TransformText, LinesPerKindWithSubnormalsAsZero) {
  ZQTransform scaling, axis;
  scaling.InitializeScaling(Vec(2.5, 1e-310, -3), nullptr);
  EXPECT_STREQ(scaling.ToString("> ").c_str(), "> Type = Scaling\n> ScaleFactors = (2.5, 0, -3)\n");
  axis.InitializeRotationAroundAxis(Vec(1, 0, 0), Vec(0, 0, 2), With(90.0, "deg"), nullptr);
  EXPECT_STREQ(axis.ToString("").c_str(),
               "Type = RotationAroundAxis\nAxisOrigin = (1, 0, 0)\nAxisDirection = (0, 0, 2)\nAngle = 90 deg\n");
  EXPECT_STREQ(MixedTranslation().ToString("").c_str(),
               "Type = Translation\nDeltaX = 1 m\nDeltaY = 100 cm\nDeltaZ = 3\n");
}

TEST(PublicTransform, ForwardsPlainArraysAndOwnsItsInnerObject) {
  Transform transform;
  double const block[9] = {0, 1, 0, -1, 0, 0, 0, 0, 1};
  double m[16], factor = 7;
  EXPECT_TRUE(transform.InitializeMatrix3x3(block, nullptr).OK());
  EXPECT_TRUE(transform.GetTransformMatrix(m, nullptr).OK());
  ExpectValues(m, {0, 1, 0, 0, -1, 0});
  EXPECT_EQ(transform.GetUniformScaling(factor).GetStatusCode(), kMismatch);
  Transform translation;
  EXPECT_TRUE(translation.InitializeTranslation(Variant(2.0, String("m")), Variant(), Variant(), nullptr).OK());
  EXPECT_TRUE(translation.GetTransformMatrix(m, String("cm"), nullptr).OK());
  EXPECT_DOUBLE_EQ(m[12], 200.0);

  ZQTransform inner;
  inner.InitializeUniformScaling(3.0, nullptr);
  Transform fromInner(inner);
  Transform copy(fromInner);
  inner.Reset();
  fromInner.Reset();
  EXPECT_NE(copy.GetTransform(), fromInner.GetTransform());
  EXPECT_TRUE(copy.GetUniformScaling(factor).OK());
  EXPECT_EQ(factor, 3.0);
}

} // namespace

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

#include <cmath>
#include <limits>
#include <string>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

using Type = Types::TransformType_t;
using Status = Types::StatusCode_t;
using Matrix = ZQTransform::Matrix4x4;
using Vector3 = ZQTransform::Vector3;

constexpr double kPi = 3.14159265358979323846;

long long StatusOf(ZQResult const &result) { return result.GetStatusCode(); }
long long Code(Status status) { return static_cast<long long>(status); }

Vector3 Vec(double x, double y, double z) {
  Vector3 v;
  v[0] = x;
  v[1] = y;
  v[2] = z;
  return v;
}

ZQVariant Length(double value, char const *unit) { return ZQVariant(value, ZQString(unit)); }

Matrix MatrixOf(ZQTransform &transform) {
  Matrix m;
  EXPECT_EQ(StatusOf(transform.GetTransformMatrix(m, nullptr)), 0);
  return m;
}

// The product written out independently of the library: (a b)(r, c) = sum_k a(r, k) b(k, c).
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

// The point (x, y, z, 1) under m, as column vector.
Vector3 Apply(Matrix const &m, Vector3 const &p) {
  Vector3 out;
  for (int r = 0; r < 3; ++r) {
    out[r] = m(r, 0) * p[0] + m(r, 1) * p[1] + m(r, 2) * p[2] + m(r, 3);
  }
  return out;
}

void ExpectMatrixNear(Matrix const &got, Matrix const &expected, double tolerance) {
  for (int i = 0; i < 16; ++i) {
    EXPECT_NEAR(got[i], expected[i], tolerance) << "element " << i;
  }
}

void ExpectAllZero(double const *values, int count) {
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(values[i], 0.0) << "element " << i;
  }
}

ZQTransform RotationOf(ZQVariant const &x, ZQVariant const &y, ZQVariant const &z) {
  ZQTransform transform;
  EXPECT_EQ(StatusOf(transform.InitializeRotation(x, y, z, nullptr)), 0);
  return transform;
}

// ---- Kinds defined by numbers -----------------------------------------------------------

TEST(TransformKinds, UndefinedHasNoMatrix) {
  ZQTransform transform;
  EXPECT_FALSE(transform.IsInitialized());
  double out[16];
  std::fill(out, out + 16, 5.0);
  EXPECT_EQ(StatusOf(transform.GetTransformMatrix(out, nullptr)), Code(Status::TransformNotInitializedError));
  ExpectAllZero(out, 16);
  std::fill(out, out + 16, 5.0);
  EXPECT_EQ(StatusOf(transform.GetTransformMatrix(out, ZQString("mm"), nullptr)),
            Code(Status::TransformNotInitializedError));
  ExpectAllZero(out, 16);
  EXPECT_EQ(StatusOf(transform.ConvertToLengthUnit(ZQString("mm"), nullptr)),
            Code(Status::TransformNotInitializedError));
  EXPECT_FALSE(transform.IsIdentityTransform(1.0));
  EXPECT_EQ(std::string(transform.ToString("# ").c_str()), "# <not initialized>\n");
}

TEST(TransformKinds, MatricesVectorsAndScalingsBuildTheirMatrixAndReadBack) {
  ZQTransform transform;
  ZQTransform::Matrix3x3 block;
  for (int i = 0; i < 9; ++i) {
    block[i] = i + 1;
  }
  ASSERT_EQ(StatusOf(transform.InitializeMatrix3x3(block, nullptr)), 0);
  Matrix const m3 = MatrixOf(transform);
  double const expected3[16] = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1};
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(m3[i], expected3[i]) << "element " << i;
  }
  ZQTransform::Matrix3x3 back;
  ASSERT_EQ(StatusOf(transform.GetMatrix3x3(back)), 0);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(back[i], block[i]);
  }

  ASSERT_EQ(StatusOf(transform.InitializeVector3(Vec(1, 2, 3), nullptr)), 0);
  EXPECT_EQ(transform.GetType(), Type::Vector3);
  Vector3 const moved = Apply(MatrixOf(transform), Vec(10, 20, 30));
  EXPECT_EQ(moved[0], 11);
  EXPECT_EQ(moved[2], 33);
  double vector[3];
  ASSERT_EQ(StatusOf(transform.GetVector3(vector)), 0);
  EXPECT_EQ(vector[1], 2);

  ASSERT_EQ(StatusOf(transform.InitializeScaling(Vec(2, 3, 4), nullptr)), 0);
  Vector3 const scaled = Apply(MatrixOf(transform), Vec(1, 1, 1));
  EXPECT_EQ(scaled[0], 2);
  EXPECT_EQ(scaled[2], 4);
  Vector3 factors;
  ASSERT_EQ(StatusOf(transform.GetScaling(factors)), 0);
  EXPECT_EQ(factors[1], 3);

  ASSERT_EQ(StatusOf(transform.InitializeUniformScaling(0.5, nullptr)), 0);
  double factor = 0;
  ASSERT_EQ(StatusOf(transform.GetUniformScaling(factor)), 0);
  EXPECT_EQ(factor, 0.5);
  EXPECT_EQ(MatrixOf(transform)[15], 1.0);
}

TEST(TransformKinds, GetterOfAnotherKindIsAMismatchAndWritesNothing) {
  ZQTransform transform;
  ASSERT_EQ(StatusOf(transform.InitializeVector3(Vec(1, 2, 3), nullptr)), 0);
  ZQVariant x(7.0), y, z;
  EXPECT_EQ(StatusOf(transform.GetTranslation(x, y, z)), Code(Status::TransformTypeMismatchError));
  EXPECT_EQ(x.Compare(ZQVariant(7.0)), 0);
  double sixteen[16] = {9};
  EXPECT_EQ(StatusOf(transform.GetMatrix4x4(sixteen)), Code(Status::TransformTypeMismatchError));
  EXPECT_EQ(sixteen[0], 9);
  double factor = 9;
  EXPECT_EQ(StatusOf(transform.GetUniformScaling(factor)), Code(Status::TransformTypeMismatchError));
  EXPECT_EQ(factor, 9);

  ZQTransform rotation = RotationOf(ZQVariant(0.1), ZQVariant(0.2), ZQVariant(0.3));
  EXPECT_EQ(StatusOf(rotation.GetMatrix4x4(sixteen)), Code(Status::TransformTypeMismatchError));
  Vector3 origin, direction;
  ZQVariant angle;
  EXPECT_EQ(StatusOf(rotation.GetRotationAroundAxis(origin, direction, angle)),
            Code(Status::TransformTypeMismatchError));
}

// ---- Rotations --------------------------------------------------------------------------

// Three angles compose as Rx Ry Rz: z acts first. Built here from single-axis rotations in
// both orders, only one of which may match.
TEST(TransformRotation, ThreeAnglesComposeXAfterYAfterZ) {
  double const a = 0.3, b = -0.7, c = 1.1;
  ZQTransform rx = RotationOf(ZQVariant(a), ZQVariant(0.0), ZQVariant(0.0));
  ZQTransform ry = RotationOf(ZQVariant(0.0), ZQVariant(b), ZQVariant(0.0));
  ZQTransform rz = RotationOf(ZQVariant(0.0), ZQVariant(0.0), ZQVariant(c));
  ZQTransform all = RotationOf(ZQVariant(a), ZQVariant(b), ZQVariant(c));
  Matrix const xyz = Times(Times(MatrixOf(rx), MatrixOf(ry)), MatrixOf(rz));
  Matrix const zyx = Times(Times(MatrixOf(rz), MatrixOf(ry)), MatrixOf(rx));
  ExpectMatrixNear(MatrixOf(all), xyz, 1e-15);
  double difference = 0;
  for (int i = 0; i < 16; ++i) {
    difference = std::max(difference, std::fabs(MatrixOf(all)[i] - zyx[i]));
  }
  EXPECT_GT(difference, 0.1);

  // Each single rotation is right-handed: a quarter turn about z takes x to y.
  ZQTransform quarter = RotationOf(ZQVariant(0.0), ZQVariant(0.0), ZQVariant(kPi / 2));
  Vector3 const turned = Apply(MatrixOf(quarter), Vec(1, 0, 0));
  EXPECT_NEAR(turned[1], 1.0, 1e-15);
}

TEST(TransformRotation, IdentityNeedsAPositiveTolerance) {
  ZQTransform zero = RotationOf(ZQVariant(0.0), ZQVariant(0.0), ZQVariant(0.0));
  EXPECT_TRUE(zero.IsIdentityTransform(1e-12));
  EXPECT_TRUE(zero.IsIdentityTransform(-1e-12));
  EXPECT_FALSE(zero.IsIdentityTransform(0.0));
  ZQTransform small = RotationOf(ZQVariant(1e-6), ZQVariant(0.0), ZQVariant(0.0));
  EXPECT_FALSE(small.IsIdentityTransform(1e-9));
  EXPECT_TRUE(small.IsIdentityTransform(1e-5));
  ZQTransform broken;
  Matrix m;
  m[0] = m[5] = m[10] = m[15] = 1.0;
  m[7] = std::numeric_limits<double>::quiet_NaN();
  broken.InitializeMatrix4x4(m, nullptr);
  EXPECT_FALSE(broken.IsIdentityTransform(1.0));
}

TEST(TransformRotation, AnglesInDegreesAreConvertedAndKeptAsGiven) {
  ZQTransform radians = RotationOf(ZQVariant(1.5707963), ZQVariant(0.0), ZQVariant(0.0));
  ZQTransform degrees = RotationOf(Length(90.0, "deg"), ZQVariant(0.0), ZQVariant(0.0));
  ExpectMatrixNear(MatrixOf(degrees), MatrixOf(radians), 1e-7);
  ZQVariant x, y, z;
  ASSERT_EQ(StatusOf(degrees.GetRotation(x, y, z)), 0);
  EXPECT_EQ(x.Compare(Length(90.0, "deg")), 0);
}

TEST(TransformRotation, BadAnglesFailAndLeaveAZeroMatrix) {
  ZQTransform transform;
  EXPECT_EQ(StatusOf(transform.InitializeRotation(ZQVariant(0.0), Length(2.0, "m"), ZQVariant(0.0), nullptr)),
            Code(Status::VariantUnitsConversionError));
  EXPECT_EQ(transform.GetType(), Type::Rotation);
  ExpectAllZero(MatrixOf(transform).GetData(), 16);

  EXPECT_EQ(StatusOf(transform.InitializeRotation(ZQVariant(0.0), ZQVariant(0.0), ZQVariant(ZQString("abc")), nullptr)),
            Code(Status::VariantImplicitTypeConversionError));
  ExpectAllZero(MatrixOf(transform).GetData(), 16);

  EXPECT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(0, 0, 1), Length(1.0, "mm"), nullptr)),
            Code(Status::VariantUnitsConversionError));
  EXPECT_EQ(transform.GetType(), Type::RotationAroundAxis);
  ExpectAllZero(MatrixOf(transform).GetData(), 16);
}

TEST(TransformRotation, AxisIsNormalisedForTheMatrixAndStoredAsGiven) {
  ZQTransform transform;
  ASSERT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(0, 0, 2), ZQVariant(kPi / 2), nullptr)), 0);
  Vector3 const y = Apply(MatrixOf(transform), Vec(1, 0, 0));
  EXPECT_NEAR(y[0], 0.0, 1e-15);
  EXPECT_NEAR(y[1], 1.0, 1e-15);
  double origin[3] = {9, 9, 9}, direction[3];
  ZQVariant angle;
  ASSERT_EQ(StatusOf(transform.GetRotationAroundAxis(origin, direction, angle)), 0);
  EXPECT_EQ(direction[2], 2.0);
  EXPECT_EQ(origin[0], 0.0);

  // A half turn gives m(2,2) = 2 z z - 1: exactly 1 for a unit axis, above it for an axis a
  // hair longer, which is used without dividing when within 1e-15 of unit length.
  ASSERT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(0, 0, 1 + 0x1p-52), ZQVariant(kPi), nullptr)), 0);
  EXPECT_GT(MatrixOf(transform)(2, 2), 1.0);
  ASSERT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(0, 0, 1 + 0x1p-45), ZQVariant(kPi), nullptr)), 0);
  EXPECT_EQ(MatrixOf(transform)(2, 2), 1.0);
}

TEST(TransformRotation, AxisThroughAPointTurnsAroundThatLine) {
  ZQTransform transform;
  ASSERT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(1, 2, 0), Vec(0, 0, 1), Length(180.0, "deg"), nullptr)),
            0);
  Vector3 const image = Apply(MatrixOf(transform), Vec(0, 0, 5));
  EXPECT_NEAR(image[0], 2.0, 1e-14);
  EXPECT_NEAR(image[1], 4.0, 1e-14);
  EXPECT_NEAR(image[2], 5.0, 1e-14);
  Vector3 const onAxis = Apply(MatrixOf(transform), Vec(1, 2, -3));
  EXPECT_NEAR(onAxis[0], 1.0, 1e-14);
  EXPECT_NEAR(onAxis[1], 2.0, 1e-14);
}

TEST(TransformRotation, ZeroAxisReportsOnTheStackButSucceedsWithAZeroMatrix) {
  ZQContext context;
  for (bool withOrigin : {false, true}) {
    long long const before = context.GetErrorStack().GetNMsg();
    ZQTransform transform;
    ZQResult const result =
        withOrigin ? transform.InitializeRotationAroundAxis(Vec(1, 1, 1), Vec(0, 0, 0), ZQVariant(1.0), &context)
                   : transform.InitializeRotationAroundAxis(Vec(0, 0, 0), ZQVariant(1.0), &context);
    EXPECT_EQ(StatusOf(result), 0);
    EXPECT_EQ(transform.GetType(), Type::RotationAroundAxis);
    ExpectAllZero(MatrixOf(transform).GetData(), 16);
    EXPECT_EQ(context.GetErrorStack().GetNMsg(), before + 1);
    EXPECT_STREQ(context.GetErrorStack().GetLastMsg().c_str(), "normalization of rotation axis failed, norm == 0!");
  }
  ZQTransform transform; // without a context the call still works
  EXPECT_EQ(StatusOf(transform.InitializeRotationAroundAxis(Vec(0, 0, 0), ZQVariant(1.0), nullptr)), 0);
}

// ---- Translations and length units ------------------------------------------------------

ZQTransform MixedTranslation() {
  ZQTransform transform;
  EXPECT_EQ(StatusOf(transform.InitializeTranslation(Length(1.0, "m"), Length(100.0, "cm"), ZQVariant(3.0), nullptr)),
            0);
  return transform;
}

TEST(TransformTranslation, DeltasMeetInTheFirstUnitAndPlainNumbersStayAsTheyAre) {
  ZQTransform transform = MixedTranslation();
  EXPECT_TRUE(transform.HasLengthUnit());
  Matrix const m = MatrixOf(transform);
  EXPECT_DOUBLE_EQ(m[12], 1.0);
  EXPECT_DOUBLE_EQ(m[13], 1.0);
  EXPECT_DOUBLE_EQ(m[14], 3.0);
  Matrix mm;
  ASSERT_EQ(StatusOf(transform.GetTransformMatrix(mm, ZQString("mm"), nullptr)), 0);
  EXPECT_DOUBLE_EQ(mm[12], 1000.0);
  EXPECT_DOUBLE_EQ(mm[13], 1000.0);
  EXPECT_DOUBLE_EQ(mm[14], 3.0);
  EXPECT_EQ(mm[15], 1.0);
  ZQVariant x, y, z;
  ASSERT_EQ(StatusOf(transform.GetTranslation(x, y, z)), 0);
  EXPECT_EQ(y.Compare(Length(100.0, "cm")), 0);

  ZQTransform plain;
  ASSERT_EQ(StatusOf(plain.InitializeTranslation(ZQVariant(1.0), ZQVariant(2.0), ZQVariant(), nullptr)), 0);
  EXPECT_FALSE(plain.HasLengthUnit());
  EXPECT_EQ(MatrixOf(plain)[14], 0.0);
}

TEST(TransformTranslation, ATimeUnitIsNotALength) {
  ZQTransform transform;
  EXPECT_EQ(StatusOf(transform.InitializeTranslation(ZQVariant(1.0), Length(2.0, "s"), ZQVariant(3.0), nullptr)),
            Code(Status::TransformBadLengthUnitError));
  ExpectAllZero(MatrixOf(transform).GetData(), 16);

  // The unit is checked for every type, and a failed check hands out zeros.
  ZQTransform scaling;
  scaling.InitializeScaling(Vec(2, 3, 4), nullptr);
  double out[16];
  EXPECT_EQ(StatusOf(scaling.GetTransformMatrix(out, ZQString("s"), nullptr)),
            Code(Status::TransformBadLengthUnitError));
  ExpectAllZero(out, 16);
  ASSERT_EQ(StatusOf(scaling.GetTransformMatrix(out, ZQString("mm"), nullptr)), 0);
  EXPECT_EQ(out[0], 2.0);
  EXPECT_EQ(out[10], 4.0);
  // No unit at all: the stored matrix, whatever the kind.
  ZQTransform translation = MixedTranslation();
  ASSERT_EQ(StatusOf(translation.GetTransformMatrix(out, ZQString(), nullptr)), 0);
  EXPECT_DOUBLE_EQ(out[13], 1.0);
}

TEST(TransformTranslation, ConvertingStopsAtThePlainNumberAndLeavesTheMatrix) {
  ZQTransform transform = MixedTranslation();
  EXPECT_EQ(StatusOf(transform.ConvertToLengthUnit(ZQString("mm"), nullptr)),
            Code(Status::VariantUnitsConversionError));
  ZQVariant x, y, z;
  ASSERT_EQ(StatusOf(transform.GetTranslation(x, y, z)), 0);
  double value = 0;
  ZQString unit;
  ASSERT_EQ(StatusOf(x.GetFloatingPoint(value, unit)), 0);
  EXPECT_DOUBLE_EQ(value, 1000.0);
  EXPECT_STREQ(unit.c_str(), "mm");
  ASSERT_EQ(StatusOf(y.GetFloatingPoint(value, unit)), 0);
  EXPECT_DOUBLE_EQ(value, 1000.0);
  EXPECT_FALSE(z.HasUnits());
  EXPECT_DOUBLE_EQ(MatrixOf(transform)[12], 1.0);

  ZQTransform scaling;
  scaling.InitializeScaling(Vec(2, 3, 4), nullptr);
  EXPECT_EQ(StatusOf(scaling.ConvertToLengthUnit(ZQString("mm"), nullptr)), 0);
  EXPECT_EQ(StatusOf(scaling.ConvertToLengthUnit(ZQString("deg"), nullptr)), Code(Status::TransformBadLengthUnitError));
}

// ---- Comparison, copies and text --------------------------------------------------------

TEST(TransformCompare, TypeThenMatrixThenDefinition) {
  ZQTransform scaling, vector;
  scaling.InitializeScaling(Vec(1, 1, 1), nullptr);
  vector.InitializeVector3(Vec(-100, 0, 0), nullptr);
  EXPECT_EQ(scaling.Compare(vector), 1); // Scaling is type 4, Vector3 type 3
  EXPECT_EQ(vector.Compare(scaling), -1);
  EXPECT_EQ(vector.Compare(vector), 0);

  ZQTransform nearer;
  nearer.InitializeVector3(Vec(-100, 0, 1), nullptr);
  EXPECT_EQ(vector.Compare(nearer), -1);
  EXPECT_EQ(nearer.Compare(vector), 1);

  ZQTransform metres, millimetres;
  metres.InitializeTranslation(Length(0.0, "m"), ZQVariant(), ZQVariant(), nullptr);
  millimetres.InitializeTranslation(Length(0.0, "mm"), ZQVariant(), ZQVariant(), nullptr);
  EXPECT_EQ(metres.Compare(millimetres), -1);
  EXPECT_EQ(millimetres.Compare(metres), 1);

  Matrix withNaN;
  withNaN[3] = std::numeric_limits<double>::quiet_NaN();
  ZQTransform a, b;
  a.InitializeMatrix4x4(withNaN, nullptr);
  b.InitializeMatrix4x4(withNaN, nullptr);
  EXPECT_EQ(a.Compare(b), 1);
  EXPECT_EQ(b.Compare(a), 1);
}

TEST(TransformCompare, CopiesAreIndependentAndEqual) {
  ZQTransform original = MixedTranslation();
  ZQTransform copy(original);
  EXPECT_EQ(copy.Compare(original), 0);
  original.ConvertToLengthUnit(ZQString("mm"), nullptr);
  EXPECT_NE(copy.Compare(original), 0);
  copy = original;
  EXPECT_EQ(copy.Compare(original), 0);
  copy.Reset();
  EXPECT_FALSE(copy.IsInitialized());
  EXPECT_TRUE(original.IsInitialized());
}

TEST(TransformText, LinesPerKindWithSubnormalsAsZero) {
  ZQTransform scaling;
  scaling.InitializeScaling(Vec(2.5, 1e-310, -3), nullptr);
  EXPECT_EQ(std::string(scaling.ToString("> ").c_str()), "> Type = Scaling\n> ScaleFactors = (2.5, 0, -3)\n");
  ZQTransform axis;
  axis.InitializeRotationAroundAxis(Vec(1, 0, 0), Vec(0, 0, 2), Length(90.0, "deg"), nullptr);
  EXPECT_EQ(std::string(axis.ToString("").c_str()),
            "Type = RotationAroundAxis\nAxisOrigin = (1, 0, 0)\nAxisDirection = (0, 0, 2)\nAngle = 90 deg\n");
  ZQTransform translation = MixedTranslation();
  EXPECT_EQ(std::string(translation.ToString("").c_str()),
            "Type = Translation\nDeltaX = 1 m\nDeltaY = 100 cm\nDeltaZ = 3\n");
}

// ---- Public facade ----------------------------------------------------------------------

TEST(PublicTransform, ForwardsWithPlainArraysAndNullContext) {
  Transform transform;
  EXPECT_FALSE(transform.IsInitialized());
  double const block[9] = {0, 1, 0, -1, 0, 0, 0, 0, 1};
  EXPECT_TRUE(transform.InitializeMatrix3x3(block, nullptr).OK());
  EXPECT_EQ(transform.GetType(), Type::Matrix3x3);
  double m[16];
  EXPECT_TRUE(transform.GetTransformMatrix(m, nullptr).OK());
  EXPECT_EQ(m[1], 1.0);
  EXPECT_EQ(m[4], -1.0);
  double factor = 7;
  EXPECT_EQ(transform.GetUniformScaling(factor).GetStatusCode(), Code(Status::TransformTypeMismatchError));

  double const shift[3] = {4, 5, 6};
  EXPECT_TRUE(transform.InitializeVector3(shift, nullptr).OK());
  double back[3];
  EXPECT_TRUE(transform.GetVector3(back).OK());
  EXPECT_EQ(back[2], 6.0);
  EXPECT_FALSE(transform.IsIdentityTransform(1e-3));

  Transform translation;
  EXPECT_TRUE(translation.InitializeTranslation(Variant(2.0, String("m")), Variant(), Variant(), nullptr).OK());
  EXPECT_TRUE(translation.GetTransformMatrix(m, String("cm"), nullptr).OK());
  EXPECT_DOUBLE_EQ(m[12], 200.0);
}

TEST(PublicTransform, CopiesOwnTheirInnerObject) {
  ZQTransform inner;
  inner.InitializeUniformScaling(3.0, nullptr);
  Transform fromInner(inner);
  EXPECT_NE(fromInner.GetTransform(), &inner);
  inner.Reset();
  double factor = 0;
  EXPECT_TRUE(fromInner.GetUniformScaling(factor).OK());
  EXPECT_EQ(factor, 3.0);

  Transform copy(fromInner);
  EXPECT_NE(copy.GetTransform(), fromInner.GetTransform());
  fromInner.Reset();
  EXPECT_TRUE(copy.IsInitialized());
  Transform const &view = copy;
  EXPECT_EQ(view.GetTransform()->Compare(*copy.GetTransform()), 0);
}

} // namespace

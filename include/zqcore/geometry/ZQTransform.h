// ZQTransform: one geometric transform, kept as defined beside the matrix that applies it.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/geometry/ZQMatrix.h>
#include <zqcore/geometry/ZQVector.h>
#include <zqcore/values/ZQVariant.h>

namespace Velmora::Tessara::ZQ::Core {

/// A transform defined as a 4x4 or 3x3 matrix, a vector, a scaling, a rotation around an
/// axis, a rotation by three angles, or a translation whose deltas may carry length units.
/// The definition comes back through the getter of its kind; the 4x4 matrix (by columns,
/// m[4c + r], for column vectors) through GetTransformMatrix, for a translation also in a
/// length unit of the caller's choice. Angles without units are radians. It neither
/// transforms points nor combines transforms: the caller applies the matrix.
/// A failed definition leaves the new type with a zero matrix. Getters of another kind
/// return TransformTypeMismatchError and leave their outputs alone.
class ZQCORE_EXPORT ZQTransform {
public:
  using Matrix4x4 = ZQMatrix<double, 4, 4, 16>;
  using Matrix3x3 = ZQMatrix<double, 3, 3, 9>;
  using Vector3 = ZQVector<double, 3>;

  ZQTransform();
  ZQTransform(ZQTransform const &other);
  ZQTransform &operator=(ZQTransform const &other);
  virtual ~ZQTransform();

  ZQResult InitializeMatrix4x4(Matrix4x4 const &matrix, ZQContext *context);
  /// The nine values by columns of three become the upper-left block.
  ZQResult InitializeMatrix3x3(Matrix3x3 const &matrix, ZQContext *context);
  /// A translation by plain numbers.
  ZQResult InitializeVector3(Vector3 const &vector, ZQContext *context);
  ZQResult InitializeScaling(Vector3 const &factors, ZQContext *context);
  ZQResult InitializeUniformScaling(double factor, ZQContext *context);
  /// The right-handed rotation by `angle` around the line through `origin` along
  /// `direction`, which is normalised for the matrix and stored as given. A zero
  /// direction pushes a message, keeps status 0 and leaves the matrix zero.
  ZQResult InitializeRotationAroundAxis(Vector3 const &origin, Vector3 const &direction, ZQVariant const &angle,
                                        ZQContext *context);
  ZQResult InitializeRotationAroundAxis(Vector3 const &direction, ZQVariant const &angle, ZQContext *context);
  /// Rx(angleX) Ry(angleY) Rz(angleZ): on a column vector z acts first, x last.
  ZQResult InitializeRotation(ZQVariant const &angleX, ZQVariant const &angleY, ZQVariant const &angleZ,
                              ZQContext *context);
  /// The matrix holds the deltas in the first unit found among X, Y, Z; a plain number
  /// counts as being in it already. The stored deltas keep their own units.
  ZQResult InitializeTranslation(ZQVariant const &deltaX, ZQVariant const &deltaY, ZQVariant const &deltaZ,
                                 ZQContext *context);

  ZQResult GetMatrix4x4(double *const matrix);
  ZQResult GetMatrix4x4(Matrix4x4 &matrix);
  ZQResult GetMatrix3x3(double *const matrix);
  ZQResult GetMatrix3x3(Matrix3x3 &matrix);
  ZQResult GetVector3(double *const vector);
  ZQResult GetVector3(Vector3 &vector);
  ZQResult GetScaling(double *const factors);
  ZQResult GetScaling(Vector3 &factors);
  ZQResult GetUniformScaling(double &factor);
  ZQResult GetRotationAroundAxis(double *const origin, double *const direction, ZQVariant &angle);
  ZQResult GetRotationAroundAxis(Vector3 &origin, Vector3 &direction, ZQVariant &angle);
  ZQResult GetRotation(ZQVariant &angleX, ZQVariant &angleY, ZQVariant &angleZ);
  ZQResult GetTranslation(ZQVariant &deltaX, ZQVariant &deltaY, ZQVariant &deltaZ);

  /// The stored matrix, or sixteen zeros and TransformNotInitializedError.
  ZQResult GetTransformMatrix(double *const matrix, ZQContext *context);
  ZQResult GetTransformMatrix(Matrix4x4 &matrix, ZQContext *context);
  /// As above; a translation's deltas with units are converted to `lengthUnit` (plain
  /// numbers are not scaled). Other types give the stored matrix. A unit that is not a
  /// length gives TransformBadLengthUnitError for every type; an uninitialised string
  /// asks for no unit.
  ZQResult GetTransformMatrix(double *const matrix, ZQString const &lengthUnit, ZQContext *context);
  ZQResult GetTransformMatrix(Matrix4x4 &matrix, ZQString const &lengthUnit, ZQContext *context);
  /// Converts a translation's stored deltas in place, X, Y, Z, up to the first failure
  /// (a plain number fails). The matrix keeps the numbers of the definition.
  ZQResult ConvertToLengthUnit(ZQString const &lengthUnit, ZQContext *context);

  Types::TransformType_t GetType();
  /// A translation with at least one delta that has units.
  bool HasLengthUnit() const;
  /// Every element within |tolerance| of the identity, by strict comparison: a tolerance
  /// of 0 is never met.
  bool IsIdentityTransform(double tolerance) const;
  bool IsInitialized() const;
  void Reset();
  /// By type, then the matrix from m[0] on (a NaN compares greater), then the stored
  /// definition: -1, 0 or 1.
  int Compare(ZQTransform const &other) const;
  /// The type and the definition, one "name = value" line each, every line starting with
  /// `prefix`.
  ZQString ToString(char const *prefix);

private:
  void Copy(ZQTransform const &other);
  /// Reset, then the new type: the first step of every definition.
  void Begin(Types::TransformType_t newType);
  /// The matrix of any initialised type, or TransformNotInitializedError.
  ZQResult CopyMatrixTo(double *const out) const;
  /// Mismatch unless the type is `expected`.
  ZQResult Expect(Types::TransformType_t expected) const;
  /// The three stored values, when the type is `expected`.
  ZQResult GetThreeValues(Types::TransformType_t expected, ZQVariant &first, ZQVariant &second, ZQVariant &third) const;
  ZQResult RotateAroundAxis(Vector3 const *origin, Vector3 const &direction, ZQVariant const &angle,
                            ZQContext *context);

  Types::TransformType_t type;
  Matrix4x4 matrix;
  Vector3 axisOrigin;
  Vector3 axisDirection;
  ZQVariant value1;
  ZQVariant value2;
  ZQVariant value3;
};

} // namespace Velmora::Tessara::ZQ::Core

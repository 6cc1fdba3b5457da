#include <zqcore/geometry/ZQTransform.h>

#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/values/ZQUnitsConverter.h>

#include "core/detail/Fatal.h"

#include <cmath>

namespace Velmora::Tessara::ZQ::Core {

namespace {

using Type = Types::TransformType_t;
using Status = Types::StatusCode_t;
using Matrix4x4 = ZQTransform::Matrix4x4;
using Vector3 = ZQTransform::Vector3;

ZQResult StatusOf(Status code) { return ZQResult(static_cast<long long>(code)); }
ZQResult Success() { return StatusOf(Status::Success); }

Matrix4x4 Identity() {
  Matrix4x4 m;
  m[0] = m[5] = m[10] = m[15] = 1.0;
  return m;
}

Matrix4x4 Translation(double x, double y, double z) {
  Matrix4x4 m = Identity();
  m[12] = x;
  m[13] = y;
  m[14] = z;
  return m;
}

/// (a b): element m[4j + i] is the sum over rising k of a[4k + i] b[4j + k], from 0.
Matrix4x4 Product(Matrix4x4 const &a, Matrix4x4 const &b) {
  Matrix4x4 m;
  for (int j = 0; j < 4; ++j) {
    for (int i = 0; i < 4; ++i) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k) {
        sum += a[4 * k + i] * b[4 * j + k];
      }
      m[4 * j + i] = sum;
    }
  }
  return m;
}

/// Sets the upper-left 3x3 block row by row; the rest of the matrix is the identity's.
Matrix4x4 WithRotationBlock(double const (&rows)[3][3]) {
  Matrix4x4 m = Identity();
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) {
      m(r, c) = rows[r][c];
    }
  }
  return m;
}

/// An angle in radians: a copy is converted to "rad" when it has units, and an
/// uninitialised angle is 0. The first failure is the result.
ZQResult AngleInRadians(ZQVariant const &angle, double &radians, ZQContext *context) {
  radians = 0.0;
  ZQVariant copy(angle);
  if (copy.HasUnits()) {
    ZQResult const converted = copy.ConvertToUnits(ZQString("rad"), context);
    if (!converted.OK()) {
      return converted;
    }
  }
  return copy.IsInitialized() ? copy.GetFloatingPoint(radians) : Success();
}

/// The right-handed rotation by `angle` around `direction` through the coordinate origin.
/// A zero direction gives up with a message and leaves `out` zero; a direction within
/// 1e-15 of unit length is used as it is.
void AxisRotation(Vector3 const &direction, double angle, ZQContext *context, Matrix4x4 &out) {
  out = Matrix4x4();
  double x = direction[0];
  double y = direction[1];
  double z = direction[2];
  double const norm = std::sqrt(x * x + y * y + z * z);
  if (!(std::fabs(1.0 - norm) < 1e-15)) {
    if (norm == 0.0) {
      if (context != nullptr) {
        context->GetErrorStack().Push("normalization of rotation axis failed, norm == 0!");
      }
      return;
    }
    x /= norm;
    y /= norm;
    z /= norm;
  }
  double const s = std::sin(angle);
  double const c = std::cos(angle);
  double const u = 1.0 - c;
  double const rows[3][3] = {{x * x * u + c, x * y * u - z * s, x * z * u + y * s},
                             {x * y * u + z * s, y * y * u + c, y * z * u - x * s},
                             {x * z * u - y * s, y * z * u + x * s, z * z * u + c}};
  out = WithRotationBlock(rows);
}

/// TransformBadLengthUnitError unless the converter for `context` takes `unit` as a length.
ZQResult CheckLengthUnit(ZQString const &unit, ZQContext *context) {
  ZQUnitsConverter converter(context);
  ZQResult const started = converter.Initialize();
  if (started.OK() && !converter.IsLengthUnit(unit)) {
    return StatusOf(Status::TransformBadLengthUnitError);
  }
  return started;
}

/// Converts each delta with units to `unit`, then reads each initialised one, X, Y, Z,
/// while the result stays OK; deltas left unread are 0.
ZQResult ReadDeltas(ZQVariant (&deltas)[3], ZQString const &unit, ZQContext *context, double (&numbers)[3],
                    ZQResult result) {
  for (ZQVariant &delta : deltas) {
    if (result.OK() && delta.HasUnits()) {
      result = delta.ConvertToUnits(unit, context);
    }
  }
  for (int i = 0; i < 3; ++i) {
    numbers[i] = 0.0;
    if (result.OK() && deltas[i].IsInitialized()) {
      result = deltas[i].GetFloatingPoint(numbers[i]);
    }
  }
  return result;
}

/// -1 at the first value where the other's is greater, 1 at any other difference
/// (a NaN on either side included), else 0.
int CompareValues(double const *mine, double const *theirs, int count) {
  for (int i = 0; i < count; ++i) {
    if (mine[i] != theirs[i]) {
      return theirs[i] > mine[i] ? -1 : 1;
    }
  }
  return 0;
}

/// Magnitudes below the smallest normal double print as 0.
void AddCleaned(ZQString &text, double value) {
  bool const tiny = std::isfinite(value) && std::fabs(value) < 2.2250738585072014e-308;
  text.Add(tiny ? 0.0 : value);
}

/// "(v0, v1, ...)" of the values at the given positions of `values`.
ZQString Tuple(double const *values, std::initializer_list<int> positions) {
  ZQString text("(");
  char const *separator = "";
  for (int position : positions) {
    text += separator;
    AddCleaned(text, values[position]);
    separator = ", ";
  }
  text += ")";
  return text;
}

void AddLine(ZQString &text, char const *prefix, char const *name, ZQString const &value) {
  text += prefix;
  text += name;
  text += value;
  text += ZQString::GetNewline();
}

} // namespace

ZQTransform::ZQTransform() : type(Type::Undefined) {}

ZQTransform::ZQTransform(ZQTransform const &other) : ZQTransform() { Copy(other); }

ZQTransform &ZQTransform::operator=(ZQTransform const &other) {
  Copy(other);
  return *this;
}

ZQTransform::~ZQTransform() = default;

void ZQTransform::Copy(ZQTransform const &other) {
  if (&other == this) {
    return;
  }
  type = other.type;
  matrix = other.matrix;
  axisOrigin = other.axisOrigin;
  axisDirection = other.axisDirection;
  value1 = other.value1;
  value2 = other.value2;
  value3 = other.value3;
}

void ZQTransform::Reset() {
  type = Type::Undefined;
  matrix = Matrix4x4();
  axisOrigin = Vector3();
  axisDirection = Vector3();
  value1.Reset();
  value2.Reset();
  value3.Reset();
}

void ZQTransform::Begin(Type newType) {
  Reset();
  type = newType;
}

// ---- Definitions --------------------------------------------------------------------

ZQResult ZQTransform::InitializeMatrix4x4(Matrix4x4 const &given, ZQContext *) {
  Begin(Type::Matrix4x4);
  matrix = given;
  return Success();
}

ZQResult ZQTransform::InitializeMatrix3x3(Matrix3x3 const &given, ZQContext *) {
  Begin(Type::Matrix3x3);
  for (int c = 0; c < 3; ++c) {
    for (int r = 0; r < 3; ++r) {
      matrix(r, c) = given(r, c);
    }
  }
  matrix[15] = 1.0;
  return Success();
}

ZQResult ZQTransform::InitializeVector3(Vector3 const &vector, ZQContext *) {
  Begin(Type::Vector3);
  matrix = Translation(vector[0], vector[1], vector[2]);
  return Success();
}

ZQResult ZQTransform::InitializeScaling(Vector3 const &factors, ZQContext *) {
  Begin(Type::Scaling);
  matrix[0] = factors[0];
  matrix[5] = factors[1];
  matrix[10] = factors[2];
  matrix[15] = 1.0;
  return Success();
}

ZQResult ZQTransform::InitializeUniformScaling(double factor, ZQContext *) {
  Begin(Type::UniformScaling);
  matrix[0] = matrix[5] = matrix[10] = factor;
  matrix[15] = 1.0;
  return Success();
}

ZQResult ZQTransform::InitializeRotationAroundAxis(Vector3 const &origin, Vector3 const &direction,
                                                   ZQVariant const &angle, ZQContext *context) {
  return RotateAroundAxis(&origin, direction, angle, context);
}

ZQResult ZQTransform::InitializeRotationAroundAxis(Vector3 const &direction, ZQVariant const &angle,
                                                   ZQContext *context) {
  return RotateAroundAxis(nullptr, direction, angle, context);
}

ZQResult ZQTransform::RotateAroundAxis(Vector3 const *origin, Vector3 const &direction, ZQVariant const &angle,
                                       ZQContext *context) {
  Begin(Type::RotationAroundAxis);
  if (origin != nullptr) {
    axisOrigin = *origin;
  }
  axisDirection = direction;
  value1 = angle;
  double radians = 0.0;
  ZQResult const result = AngleInRadians(angle, radians, context);
  if (!result.OK()) {
    return result;
  }
  if (origin == nullptr) {
    AxisRotation(direction, radians, context, matrix);
    return result;
  }
  // Move the origin to the coordinate origin, rotate, and move it back.
  Vector3 const &o = *origin;
  Matrix4x4 rotation;
  AxisRotation(direction, radians, context, rotation);
  matrix = Product(Product(Translation(o[0], o[1], o[2]), rotation), Translation(-o[0], -o[1], -o[2]));
  return result;
}

ZQResult ZQTransform::InitializeRotation(ZQVariant const &angleX, ZQVariant const &angleY, ZQVariant const &angleZ,
                                         ZQContext *context) {
  Begin(Type::Rotation);
  value1 = angleX;
  value2 = angleY;
  value3 = angleZ;
  double angles[3] = {0.0, 0.0, 0.0};
  ZQVariant const *given[3] = {&angleX, &angleY, &angleZ};
  for (int i = 0; i < 3; ++i) {
    ZQResult const result = AngleInRadians(*given[i], angles[i], context);
    if (!result.OK()) {
      return result;
    }
  }
  double const sa = std::sin(angles[0]), ca = std::cos(angles[0]);
  double const sb = std::sin(angles[1]), cb = std::cos(angles[1]);
  double const sc = std::sin(angles[2]), cc = std::cos(angles[2]);
  double const rows[3][3] = {{cb * cc, -cb * sc, sb},
                             {sa * sb * cc + ca * sc, ca * cc - sa * sb * sc, -sa * cb},
                             {sa * sc - ca * sb * cc, ca * sb * sc + sa * cc, ca * cb}};
  matrix = WithRotationBlock(rows);
  return Success();
}

ZQResult ZQTransform::InitializeTranslation(ZQVariant const &deltaX, ZQVariant const &deltaY, ZQVariant const &deltaZ,
                                            ZQContext *context) {
  Begin(Type::Translation);
  value1 = deltaX;
  value2 = deltaY;
  value3 = deltaZ;
  ZQVariant copies[3] = {deltaX, deltaY, deltaZ};
  ZQResult result = Success();
  ZQString unit;
  for (ZQVariant const &delta : copies) {
    if (delta.HasUnits()) {
      result = delta.GetUnits(unit);
      if (result.OK()) {
        result = CheckLengthUnit(unit, context);
      }
      break;
    }
  }
  double numbers[3];
  result = ReadDeltas(copies, unit, context, numbers, result);
  if (result.OK()) {
    matrix = Translation(numbers[0], numbers[1], numbers[2]);
  }
  return result;
}

// ---- Getters of the definition --------------------------------------------------------

ZQResult ZQTransform::Expect(Type expected) const {
  return type == expected ? Success() : StatusOf(Status::TransformTypeMismatchError);
}

namespace {

/// Copies the values at `positions` of `from` to `to` in order, when `result` is OK.
ZQResult CopyIfOK(ZQResult const &result, double const *from, std::initializer_list<int> positions, double *to) {
  if (result.OK()) {
    for (int position : positions) {
      *to++ = from[position];
    }
  }
  return result;
}

} // namespace

ZQResult ZQTransform::GetMatrix4x4(double *const out) {
  return CopyIfOK(Expect(Type::Matrix4x4), matrix.GetData(), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15},
                  out);
}
ZQResult ZQTransform::GetMatrix4x4(Matrix4x4 &out) { return GetMatrix4x4(out.GetData()); }

ZQResult ZQTransform::GetMatrix3x3(double *const out) {
  return CopyIfOK(Expect(Type::Matrix3x3), matrix.GetData(), {0, 1, 2, 4, 5, 6, 8, 9, 10}, out);
}
ZQResult ZQTransform::GetMatrix3x3(Matrix3x3 &out) { return GetMatrix3x3(out.GetData()); }

ZQResult ZQTransform::GetVector3(double *const out) {
  return CopyIfOK(Expect(Type::Vector3), matrix.GetData(), {12, 13, 14}, out);
}
ZQResult ZQTransform::GetVector3(Vector3 &out) { return GetVector3(out.GetData()); }

ZQResult ZQTransform::GetScaling(double *const out) {
  return CopyIfOK(Expect(Type::Scaling), matrix.GetData(), {0, 5, 10}, out);
}
ZQResult ZQTransform::GetScaling(Vector3 &out) { return GetScaling(out.GetData()); }

ZQResult ZQTransform::GetUniformScaling(double &factor) {
  return CopyIfOK(Expect(Type::UniformScaling), matrix.GetData(), {0}, &factor);
}

ZQResult ZQTransform::GetRotationAroundAxis(double *const origin, double *const direction, ZQVariant &angle) {
  ZQResult const result = Expect(Type::RotationAroundAxis);
  CopyIfOK(result, axisOrigin.GetData(), {0, 1, 2}, origin);
  CopyIfOK(result, axisDirection.GetData(), {0, 1, 2}, direction);
  if (result.OK()) {
    angle = value1;
  }
  return result;
}
ZQResult ZQTransform::GetRotationAroundAxis(Vector3 &origin, Vector3 &direction, ZQVariant &angle) {
  return GetRotationAroundAxis(origin.GetData(), direction.GetData(), angle);
}

ZQResult ZQTransform::GetRotation(ZQVariant &angleX, ZQVariant &angleY, ZQVariant &angleZ) {
  return GetThreeValues(Type::Rotation, angleX, angleY, angleZ);
}

ZQResult ZQTransform::GetTranslation(ZQVariant &deltaX, ZQVariant &deltaY, ZQVariant &deltaZ) {
  return GetThreeValues(Type::Translation, deltaX, deltaY, deltaZ);
}

ZQResult ZQTransform::GetThreeValues(Types::TransformType_t expected, ZQVariant &first, ZQVariant &second,
                                     ZQVariant &third) const {
  ZQResult const result = Expect(expected);
  if (result.OK()) {
    first = value1;
    second = value2;
    third = value3;
  }
  return result;
}

// ---- The matrix -----------------------------------------------------------------------

ZQResult ZQTransform::CopyMatrixTo(double *const out) const {
  for (int i = 0; i < 16; ++i) {
    out[i] = 0.0;
  }
  if (type == Type::Undefined) {
    return StatusOf(Status::TransformNotInitializedError);
  }
  for (int i = 0; i < 16; ++i) {
    out[i] = matrix[i];
  }
  return Success();
}

ZQResult ZQTransform::GetTransformMatrix(double *const out, ZQContext *) { return CopyMatrixTo(out); }

ZQResult ZQTransform::GetTransformMatrix(Matrix4x4 &out, ZQContext *context) {
  return GetTransformMatrix(out.GetData(), context);
}

ZQResult ZQTransform::GetTransformMatrix(double *const out, ZQString const &lengthUnit, ZQContext *context) {
  ZQResult result = CopyMatrixTo(out);
  if (!result.OK() || !lengthUnit.IsInitialized()) {
    return result;
  }
  for (int i = 0; i < 16; ++i) {
    out[i] = 0.0;
  }
  result = CheckLengthUnit(lengthUnit, context);
  if (!result.OK()) {
    return result;
  }
  if (type != Type::Translation) {
    return CopyMatrixTo(out);
  }
  ZQVariant copies[3] = {value1, value2, value3};
  double numbers[3];
  result = ReadDeltas(copies, lengthUnit, context, numbers, result);
  if (result.OK()) {
    Matrix4x4 const translation = Translation(numbers[0], numbers[1], numbers[2]);
    for (int i = 0; i < 16; ++i) {
      out[i] = translation[i];
    }
  }
  return result;
}

ZQResult ZQTransform::GetTransformMatrix(Matrix4x4 &out, ZQString const &lengthUnit, ZQContext *context) {
  return GetTransformMatrix(out.GetData(), lengthUnit, context);
}

ZQResult ZQTransform::ConvertToLengthUnit(ZQString const &lengthUnit, ZQContext *context) {
  if (type == Type::Undefined) {
    return StatusOf(Status::TransformNotInitializedError);
  }
  if (!lengthUnit.IsInitialized()) {
    return Success();
  }
  ZQResult result = CheckLengthUnit(lengthUnit, context);
  if (type != Type::Translation) {
    return result;
  }
  // A plain number goes into the conversion too, and its failure counts.
  for (ZQVariant *delta : {&value1, &value2, &value3}) {
    if (result.OK() && delta->IsInitialized()) {
      result = delta->ConvertToUnits(lengthUnit, context);
    }
  }
  return result;
}

// ---- Queries --------------------------------------------------------------------------

Types::TransformType_t ZQTransform::GetType() { return type; }

bool ZQTransform::IsInitialized() const { return type != Type::Undefined; }

bool ZQTransform::HasLengthUnit() const {
  return type == Type::Translation && (value1.HasUnits() || value2.HasUnits() || value3.HasUnits());
}

bool ZQTransform::IsIdentityTransform(double tolerance) const {
  double m[16];
  if (!CopyMatrixTo(m).OK()) {
    return false;
  }
  double const t = std::fabs(tolerance);
  for (int i = 0; i < 16; ++i) {
    double const expected = i % 5 == 0 ? 1.0 : 0.0;
    if (!(t > std::fabs(expected - m[i]))) {
      return false;
    }
  }
  return true;
}

int ZQTransform::Compare(ZQTransform const &other) const {
  if (&other == this) {
    return 0;
  }
  if (type != other.type) {
    return type < other.type ? -1 : 1;
  }
  int order = CompareValues(matrix.GetData(), other.matrix.GetData(), 16);
  if (order != 0) {
    return order;
  }
  switch (type) {
  case Type::RotationAroundAxis:
    order = CompareValues(axisOrigin.GetData(), other.axisOrigin.GetData(), 3);
    if (order == 0) {
      order = CompareValues(axisDirection.GetData(), other.axisDirection.GetData(), 3);
    }
    return order != 0 ? order : value1.Compare(other.value1);
  case Type::Rotation:
  case Type::Translation:
    order = value1.Compare(other.value1);
    if (order == 0) {
      order = value2.Compare(other.value2);
    }
    return order != 0 ? order : value3.Compare(other.value3);
  default:
    return 0;
  }
}

ZQString ZQTransform::ToString(char const *prefix) {
  ZQString text;
  text.Reserve(1024);
  if (type == Type::Undefined) {
    AddLine(text, prefix, "", ZQString("<not initialized>"));
    return text;
  }
  if (type < Type::Matrix4x4 || type > Type::Translation) {
    detail::FatalError();
  }
  AddLine(text, prefix, "Type = ", ZQString(Types::TransformTypeToString(type)));
  double const *m = matrix.GetData();
  switch (type) {
  case Type::Translation:
  case Type::Rotation: {
    bool const translation = type == Type::Translation;
    AddLine(text, prefix, translation ? "DeltaX = " : "AngleX = ", value1.ToString(nullptr));
    AddLine(text, prefix, translation ? "DeltaY = " : "AngleY = ", value2.ToString(nullptr));
    AddLine(text, prefix, translation ? "DeltaZ = " : "AngleZ = ", value3.ToString(nullptr));
    break;
  }
  case Type::RotationAroundAxis:
    AddLine(text, prefix, "AxisOrigin = ", Tuple(axisOrigin.GetData(), {0, 1, 2}));
    AddLine(text, prefix, "AxisDirection = ", Tuple(axisDirection.GetData(), {0, 1, 2}));
    AddLine(text, prefix, "Angle = ", value1.ToString(nullptr));
    break;
  case Type::UniformScaling: {
    ZQString factor;
    AddCleaned(factor, m[0]);
    AddLine(text, prefix, "ScaleFactor = ", factor);
    break;
  }
  case Type::Scaling:
    AddLine(text, prefix, "ScaleFactors = ", Tuple(m, {0, 5, 10}));
    break;
  case Type::Vector3:
    AddLine(text, prefix, "Vector3 = ", Tuple(m, {12, 13, 14}));
    break;
  case Type::Matrix3x3:
    AddLine(text, prefix, "Matrix3x3 = ", Tuple(m, {0, 1, 2, 4, 5, 6, 8, 9, 10}));
    break;
  case Type::Matrix4x4:
    AddLine(text, prefix, "Matrix4x4 = ", Tuple(m, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    break;
  default:
    break;
  }
  return text;
}

} // namespace Velmora::Tessara::ZQ::Core

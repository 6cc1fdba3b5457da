// Transform: the public face of ZQTransform.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

class Variant;

/// A geometric transform that owns its inner ZQTransform; see ZQTransform for each
/// operation. Vectors and matrices are plain arrays of 3, 9 or 16 doubles in the inner
/// memory order (matrices by columns). A null Context is accepted. Copies are independent.
class ZQCORE_EXPORT Transform {
public:
  Transform();
  /// A copy of `transform`.
  Transform(ZQTransform const &transform);
  Transform(Transform const &other);
  Transform &operator=(Transform const &other);
  virtual ~Transform();

  Result InitializeMatrix4x4(double const *const matrix, Context *context);
  Result InitializeMatrix3x3(double const *const matrix, Context *context);
  Result InitializeVector3(double const *const vector, Context *context);
  Result InitializeScaling(double const *const factors, Context *context);
  Result InitializeUniformScaling(double factor, Context *context);
  Result InitializeRotationAroundAxis(double const *const origin, double const *const direction, Variant const &angle,
                                      Context *context);
  Result InitializeRotationAroundAxis(double const *const direction, Variant const &angle, Context *context);
  Result InitializeRotation(Variant const &angleX, Variant const &angleY, Variant const &angleZ, Context *context);
  Result InitializeTranslation(Variant const &deltaX, Variant const &deltaY, Variant const &deltaZ, Context *context);

  Result GetMatrix4x4(double *const matrix);
  Result GetMatrix3x3(double *const matrix);
  Result GetVector3(double *const vector);
  Result GetScaling(double *const factors);
  Result GetUniformScaling(double &factor);
  Result GetRotationAroundAxis(double *const origin, double *const direction, Variant &angle);
  Result GetRotation(Variant &angleX, Variant &angleY, Variant &angleZ);
  Result GetTranslation(Variant &deltaX, Variant &deltaY, Variant &deltaZ);

  Result GetTransformMatrix(double *const matrix, Context *context);
  Result GetTransformMatrix(double *const matrix, String const &lengthUnit, Context *context);
  Result ConvertToLengthUnit(String const &lengthUnit, Context *context);

  Types::TransformType_t GetType();
  bool HasLengthUnit() const;
  bool IsIdentityTransform(double tolerance) const;
  bool IsInitialized() const;
  void Reset();

  /// The inner object, owned by this one.
  ZQTransform *GetTransform();
  ZQTransform const *GetTransform() const;

private:
  void Copy(Transform const &other);

  ZQTransform *transform;
};

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/core/ZQResult.h>
#include <zqcore/geometry/ZQTransform.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/Transform.h>
#include <zqcore/public/Variant.h>

#include "public/detail/InnerOf.h"

namespace Velmora::Tessara::ZQ::Core {

namespace {

/// The plain array of Count values as the inner vector or matrix, in the same order.
template <typename Inner, int Count> Inner FromArray(double const *const values) {
  Inner inner;
  for (int i = 0; i < Count; ++i) {
    inner[i] = values[i];
  }
  return inner;
}

ZQVariant const &Inner(Variant const &value) { return *value.GetVariant(); }
ZQVariant &Inner(Variant &value) { return *value.GetVariant(); }

} // namespace

Transform::Transform() : transform(new ZQTransform()) {}

Transform::Transform(ZQTransform const &other) : transform(new ZQTransform(other)) {}

Transform::Transform(Transform const &other) : transform(new ZQTransform()) { Copy(other); }

Transform &Transform::operator=(Transform const &other) {
  Copy(other);
  return *this;
}

Transform::~Transform() {
  delete transform;
  transform = nullptr;
}

void Transform::Copy(Transform const &other) {
  if (transform != other.transform) {
    *transform = *other.transform;
  }
}

Result Transform::InitializeMatrix4x4(double const *const matrix, Context *context) {
  return transform->InitializeMatrix4x4(FromArray<ZQTransform::Matrix4x4, 16>(matrix), detail::InnerOf(context));
}
Result Transform::InitializeMatrix3x3(double const *const matrix, Context *context) {
  return transform->InitializeMatrix3x3(FromArray<ZQTransform::Matrix3x3, 9>(matrix), detail::InnerOf(context));
}
Result Transform::InitializeVector3(double const *const vector, Context *context) {
  return transform->InitializeVector3(FromArray<ZQTransform::Vector3, 3>(vector), detail::InnerOf(context));
}
Result Transform::InitializeScaling(double const *const factors, Context *context) {
  return transform->InitializeScaling(FromArray<ZQTransform::Vector3, 3>(factors), detail::InnerOf(context));
}
Result Transform::InitializeUniformScaling(double factor, Context *context) {
  return transform->InitializeUniformScaling(factor, detail::InnerOf(context));
}
Result Transform::InitializeRotationAroundAxis(double const *const origin, double const *const direction,
                                               Variant const &angle, Context *context) {
  return transform->InitializeRotationAroundAxis(FromArray<ZQTransform::Vector3, 3>(origin),
                                                 FromArray<ZQTransform::Vector3, 3>(direction), Inner(angle),
                                                 detail::InnerOf(context));
}
Result Transform::InitializeRotationAroundAxis(double const *const direction, Variant const &angle, Context *context) {
  return transform->InitializeRotationAroundAxis(FromArray<ZQTransform::Vector3, 3>(direction), Inner(angle),
                                                 detail::InnerOf(context));
}
Result Transform::InitializeRotation(Variant const &angleX, Variant const &angleY, Variant const &angleZ,
                                     Context *context) {
  return transform->InitializeRotation(Inner(angleX), Inner(angleY), Inner(angleZ), detail::InnerOf(context));
}
Result Transform::InitializeTranslation(Variant const &deltaX, Variant const &deltaY, Variant const &deltaZ,
                                        Context *context) {
  return transform->InitializeTranslation(Inner(deltaX), Inner(deltaY), Inner(deltaZ), detail::InnerOf(context));
}

Result Transform::GetMatrix4x4(double *const matrix) { return transform->GetMatrix4x4(matrix); }
Result Transform::GetMatrix3x3(double *const matrix) { return transform->GetMatrix3x3(matrix); }
Result Transform::GetVector3(double *const vector) { return transform->GetVector3(vector); }
Result Transform::GetScaling(double *const factors) { return transform->GetScaling(factors); }
Result Transform::GetUniformScaling(double &factor) { return transform->GetUniformScaling(factor); }
Result Transform::GetRotationAroundAxis(double *const origin, double *const direction, Variant &angle) {
  return transform->GetRotationAroundAxis(origin, direction, Inner(angle));
}
Result Transform::GetRotation(Variant &angleX, Variant &angleY, Variant &angleZ) {
  return transform->GetRotation(Inner(angleX), Inner(angleY), Inner(angleZ));
}
Result Transform::GetTranslation(Variant &deltaX, Variant &deltaY, Variant &deltaZ) {
  return transform->GetTranslation(Inner(deltaX), Inner(deltaY), Inner(deltaZ));
}

Result Transform::GetTransformMatrix(double *const matrix, Context *context) {
  return transform->GetTransformMatrix(matrix, detail::InnerOf(context));
}
Result Transform::GetTransformMatrix(double *const matrix, String const &lengthUnit, Context *context) {
  return transform->GetTransformMatrix(matrix, detail::InnerOf(lengthUnit), detail::InnerOf(context));
}
Result Transform::ConvertToLengthUnit(String const &lengthUnit, Context *context) {
  return transform->ConvertToLengthUnit(detail::InnerOf(lengthUnit), detail::InnerOf(context));
}

Types::TransformType_t Transform::GetType() { return transform->GetType(); }
bool Transform::HasLengthUnit() const { return transform->HasLengthUnit(); }
bool Transform::IsIdentityTransform(double tolerance) const { return transform->IsIdentityTransform(tolerance); }
bool Transform::IsInitialized() const { return transform->IsInitialized(); }
void Transform::Reset() { transform->Reset(); }

ZQTransform *Transform::GetTransform() { return transform; }
ZQTransform const *Transform::GetTransform() const { return transform; }

} // namespace Velmora::Tessara::ZQ::Core

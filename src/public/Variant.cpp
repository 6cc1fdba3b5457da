#include <zqcore/core/ZQResult.h>
#include <zqcore/geometry/ZQVector.h>
#include <zqcore/public/Color.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/Variant.h>
#include <zqcore/values/ZQColor.h>
#include <zqcore/values/ZQVariant.h>

#include "public/detail/FacadeAccess.h"
#include "public/detail/InnerOf.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;
using Vector3 = ZQVector<double, 3>;

Variant::Variant() : variant(new ZQVariant()) {}
Variant::Variant(long long value) : variant(new ZQVariant(value)) {}
Variant::Variant(long long value, String const &units) : variant(new ZQVariant(value, InnerOf(units))) {}
Variant::Variant(double value) : variant(new ZQVariant(value)) {}
Variant::Variant(double value, String const &units) : variant(new ZQVariant(value, InnerOf(units))) {}
Variant::Variant(String const &text) : variant(new ZQVariant(InnerOf(text))) {}
Variant::Variant(String const &text, String const &units) : variant(new ZQVariant(InnerOf(text), InnerOf(units))) {}
Variant::Variant(Color const &color) : variant(new ZQVariant(*color.GetColor())) {}
Variant::Variant(long long const *values, long long count) : variant(new ZQVariant(values, count)) {}
Variant::Variant(long long const *values, long long count, String const &units)
    : variant(new ZQVariant(values, count, InnerOf(units))) {}
Variant::Variant(double const *values, long long count) : variant(new ZQVariant(values, count)) {}
Variant::Variant(double const *values, long long count, String const &units)
    : variant(new ZQVariant(values, count, InnerOf(units))) {}
Variant::Variant(Vector3 const &vector) : variant(new ZQVariant(vector)) {}
Variant::Variant(Vector3 const &vector, String const &units) : variant(new ZQVariant(vector, InnerOf(units))) {}
Variant::Variant(Int64Array const &array) : variant(new ZQVariant(InnerOf(array))) {}
Variant::Variant(Int64Array const &array, String const &units)
    : variant(new ZQVariant(InnerOf(array), InnerOf(units))) {}
Variant::Variant(Float64Array const &array) : variant(new ZQVariant(InnerOf(array))) {}
Variant::Variant(Float64Array const &array, String const &units)
    : variant(new ZQVariant(InnerOf(array), InnerOf(units))) {}
Variant::Variant(StringArray const &array) : variant(new ZQVariant(InnerOf(array))) {}
Variant::Variant(StringArray const &array, String const &units)
    : variant(new ZQVariant(InnerOf(array), InnerOf(units))) {}
Variant::Variant(ZQVariant const &other) : variant(new ZQVariant(other)) {}
Variant::Variant(Variant const &other) : variant(new ZQVariant()) { Copy(other); }

Variant &Variant::operator=(Variant const &other) {
  Copy(other);
  return *this;
}

Variant::~Variant() {
  delete variant;
  variant = nullptr;
}

void Variant::Copy(Variant const &other) {
  if (variant != other.variant) {
    *variant = *other.variant;
  }
}

void Variant::Reset() { variant->Reset(); }
Types::VariantType_t Variant::GetType() const { return variant->GetType(); }
bool Variant::IsInitialized() const { return variant->IsInitialized(); }
bool Variant::IsEmpty() const { return variant->IsEmpty(); }
bool Variant::HasUnits() const { return variant->HasUnits(); }
Result Variant::GetUnits(String &units) const { return variant->GetUnits(InnerOf(units)); }
Result Variant::SetUnits(String const &units, Context *context) {
  return variant->SetUnits(InnerOf(units), InnerOf(context));
}
Result Variant::ConvertToUnits(String const &units, Context *context) {
  return variant->ConvertToUnits(InnerOf(units), InnerOf(context));
}
int Variant::Compare(Variant const &other) const { return variant->Compare(*other.variant); }
String Variant::ToString(char const *format) const { return detail::ToPublic(variant->ToString(format)); }

Result Variant::SetInteger(long long value) { return variant->SetInteger(value); }
Result Variant::SetInteger(long long value, String const &units) { return variant->SetInteger(value, InnerOf(units)); }
Result Variant::SetInteger(String const &text, String const &units) {
  return variant->SetInteger(InnerOf(text), InnerOf(units));
}
Result Variant::SetFloatingPoint(double value) { return variant->SetFloatingPoint(value); }
Result Variant::SetFloatingPoint(double value, String const &units) {
  return variant->SetFloatingPoint(value, InnerOf(units));
}
Result Variant::SetFloatingPoint(String const &text, String const &units) {
  return variant->SetFloatingPoint(InnerOf(text), InnerOf(units));
}
Result Variant::SetString(String const &text) { return variant->SetString(InnerOf(text)); }
Result Variant::SetString(String const &text, String const &units) {
  return variant->SetString(InnerOf(text), InnerOf(units));
}
Result Variant::SetColor(Color const &color) { return variant->SetColor(*color.GetColor()); }
Result Variant::SetColor(String const &text) { return variant->SetColor(InnerOf(text)); }
Result Variant::SetIntegerArray(long long const *values, long long count) {
  return variant->SetIntegerArray(values, count);
}
Result Variant::SetIntegerArray(long long const *values, long long count, String const &units) {
  return variant->SetIntegerArray(values, count, InnerOf(units));
}
Result Variant::SetIntegerArray(Int64Array const &array) { return variant->SetIntegerArray(InnerOf(array)); }
Result Variant::SetIntegerArray(Int64Array const &array, String const &units) {
  return variant->SetIntegerArray(InnerOf(array), InnerOf(units));
}
Result Variant::SetIntegerArray(StringArray const &texts, String const &units) {
  return variant->SetIntegerArray(InnerOf(texts), InnerOf(units));
}
Result Variant::SetFloatingPointArray(double const *values, long long count) {
  return variant->SetFloatingPointArray(values, count);
}
Result Variant::SetFloatingPointArray(double const *values, long long count, String const &units) {
  return variant->SetFloatingPointArray(values, count, InnerOf(units));
}
Result Variant::SetFloatingPointArray(Float64Array const &array) {
  return variant->SetFloatingPointArray(InnerOf(array));
}
Result Variant::SetFloatingPointArray(Float64Array const &array, String const &units) {
  return variant->SetFloatingPointArray(InnerOf(array), InnerOf(units));
}
Result Variant::SetFloatingPointArray(Vector3 const &vector) { return variant->SetFloatingPointArray(vector); }
Result Variant::SetFloatingPointArray(Vector3 const &vector, String const &units) {
  return variant->SetFloatingPointArray(vector, InnerOf(units));
}
Result Variant::SetFloatingPointArray(StringArray const &texts, String const &units) {
  return variant->SetFloatingPointArray(InnerOf(texts), InnerOf(units));
}
Result Variant::SetStringArray(StringArray const &array) { return variant->SetStringArray(InnerOf(array)); }
Result Variant::SetStringArray(StringArray const &array, String const &units) {
  return variant->SetStringArray(InnerOf(array), InnerOf(units));
}
Result Variant::SetCustomData(void const *data) { return variant->SetCustomData(data); }

Result Variant::GetInteger(signed char &value) const { return variant->GetInteger(value); }
Result Variant::GetInteger(signed char &value, String &units) const {
  return variant->GetInteger(value, InnerOf(units));
}
Result Variant::GetInteger(int &value) const { return variant->GetInteger(value); }
Result Variant::GetInteger(int &value, String &units) const { return variant->GetInteger(value, InnerOf(units)); }
Result Variant::GetInteger(long long &value) const { return variant->GetInteger(value); }
Result Variant::GetInteger(long long &value, String &units) const { return variant->GetInteger(value, InnerOf(units)); }
Result Variant::GetFloatingPoint(double &value) const { return variant->GetFloatingPoint(value); }
Result Variant::GetFloatingPoint(double &value, String &units) const {
  return variant->GetFloatingPoint(value, InnerOf(units));
}
Result Variant::GetString(String &text) const { return variant->GetString(InnerOf(text)); }
Result Variant::GetString(String &text, String &units) const {
  return variant->GetString(InnerOf(text), InnerOf(units));
}
Result Variant::GetColor(Color &color) const { return variant->GetColor(*color.GetColor()); }
Result Variant::GetIntegerArray(Int64Array &array) const { return variant->GetIntegerArray(InnerOf(array)); }
Result Variant::GetIntegerArray(Int64Array &array, String &units) const {
  return variant->GetIntegerArray(InnerOf(array), InnerOf(units));
}
Result Variant::GetIntegerArray(long long &count, long long *buffer) const {
  return variant->GetIntegerArray(count, buffer);
}
Result Variant::GetIntegerArray(long long &count, long long *buffer, String &units) const {
  return variant->GetIntegerArray(count, buffer, InnerOf(units));
}
Result Variant::GetFloatingPointArray(Float64Array &array) const {
  return variant->GetFloatingPointArray(InnerOf(array));
}
Result Variant::GetFloatingPointArray(Float64Array &array, String &units) const {
  return variant->GetFloatingPointArray(InnerOf(array), InnerOf(units));
}
Result Variant::GetFloatingPointArray(Vector3 &vector) const { return variant->GetFloatingPointArray(vector); }
Result Variant::GetFloatingPointArray(Vector3 &vector, String &units) const {
  return variant->GetFloatingPointArray(vector, InnerOf(units));
}
Result Variant::GetFloatingPointArray(long long &count, double *buffer) const {
  return variant->GetFloatingPointArray(count, buffer);
}
Result Variant::GetFloatingPointArray(long long &count, double *buffer, String &units) const {
  return variant->GetFloatingPointArray(count, buffer, InnerOf(units));
}
Result Variant::GetStringArray(StringArray &array) const { return variant->GetStringArray(InnerOf(array)); }
Result Variant::GetStringArray(StringArray &array, String &units) const {
  return variant->GetStringArray(InnerOf(array), InnerOf(units));
}
Result Variant::GetCustomData(void *&data) const { return variant->GetCustomData(data); }
Result Variant::GetIntegerArraySize(long long &size) const { return variant->GetIntegerArraySize(size); }
Result Variant::GetFloatingPointArraySize(long long &size) const { return variant->GetFloatingPointArraySize(size); }

ZQVariant *Variant::GetVariant() { return variant; }
ZQVariant const *Variant::GetVariant() const { return variant; }

} // namespace Velmora::Tessara::ZQ::Core

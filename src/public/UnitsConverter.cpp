#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/UnitsConverter.h>
#include <zqcore/values/ZQUnitsConverter.h>

#include "public/detail/FacadeAccess.h"
#include "public/detail/InnerOf.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;

UnitsConverter::UnitsConverter() : converter(new ZQUnitsConverter()) {}

UnitsConverter::UnitsConverter(Context *context) : converter(new ZQUnitsConverter(InnerOf(context))) {}

// Like every value class, a copy is a default inner object assigned from the other's;
// since inner assignment keeps the target's context, a public copy starts without one.
UnitsConverter::UnitsConverter(UnitsConverter const &other) : converter(new ZQUnitsConverter()) { Copy(other); }

UnitsConverter &UnitsConverter::operator=(UnitsConverter const &other) {
  Copy(other);
  return *this;
}

UnitsConverter::~UnitsConverter() {
  delete converter;
  converter = nullptr;
}

void UnitsConverter::Copy(UnitsConverter const &other) {
  if (converter != other.converter) {
    *converter = *other.converter;
  }
}

Result UnitsConverter::SetContext(Context *context) { return converter->SetContext(InnerOf(context)); }
Result UnitsConverter::Initialize() { return converter->Initialize(); }
bool UnitsConverter::IsInitialized() const { return converter->IsInitialized(); }
void UnitsConverter::Reset() { converter->Reset(); }

Result UnitsConverter::GetConversionData(String const &from, String const &to, double &factor, double &offset) {
  return converter->GetConversionData(InnerOf(from), InnerOf(to), factor, offset);
}
Result UnitsConverter::GetConversionData(char const *from, char const *to, double &factor, double &offset) {
  return converter->GetConversionData(from, to, factor, offset);
}
Result UnitsConverter::GetConversionData(char const *from, char const *to, float &factor, float &offset) {
  return converter->GetConversionData(from, to, factor, offset);
}
Result UnitsConverter::GetConversionData(wchar_t const *from, wchar_t const *to, double &factor, double &offset) {
  return converter->GetConversionData(from, to, factor, offset);
}
Result UnitsConverter::GetConversionData(wchar_t const *from, wchar_t const *to, float &factor, float &offset) {
  return converter->GetConversionData(from, to, factor, offset);
}

bool UnitsConverter::IsLengthUnit(String const &units) { return converter->IsLengthUnit(InnerOf(units)); }
bool UnitsConverter::IsLengthUnit(char const *units) { return converter->IsLengthUnit(units); }
bool UnitsConverter::IsLengthUnit(wchar_t const *units) { return converter->IsLengthUnit(units); }
bool UnitsConverter::IsTimeUnit(String const &units) { return converter->IsTimeUnit(InnerOf(units)); }
bool UnitsConverter::IsTimeUnit(char const *units) { return converter->IsTimeUnit(units); }
bool UnitsConverter::IsTimeUnit(wchar_t const *units) { return converter->IsTimeUnit(units); }

String UnitsConverter::StripBrackets(String const &units) {
  return detail::ToPublic(ZQUnitsConverter::StripBrackets(InnerOf(units)));
}
String UnitsConverter::StripBrackets(char const *units) {
  return detail::ToPublic(ZQUnitsConverter::StripBrackets(units));
}
String UnitsConverter::StripBrackets(wchar_t const *units) {
  return detail::ToPublic(ZQUnitsConverter::StripBrackets(units));
}
void UnitsConverter::StripBracketsInPlace(String &units) { ZQUnitsConverter::StripBracketsInPlace(InnerOf(units)); }

Result UnitsConverter::GetPreferredUnitSystem(String &name) { return converter->GetPreferredUnitSystem(InnerOf(name)); }
Result UnitsConverter::SetPreferredUnitSystem(String const &name) {
  return converter->SetPreferredUnitSystem(InnerOf(name));
}
Result UnitsConverter::SetPreferredUnitSystem(char const *name) { return converter->SetPreferredUnitSystem(name); }
Result UnitsConverter::SetPreferredUnitSystem(wchar_t const *name) { return converter->SetPreferredUnitSystem(name); }

} // namespace Velmora::Tessara::ZQ::Core

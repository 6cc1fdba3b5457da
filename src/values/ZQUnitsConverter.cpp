#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/values/ZQUnitsConverter.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Velmora::Tessara::ZQ::Core {

namespace {

/// Degrees and radians form two groups that convert only into each other.
enum class Group { Length, Time, Degree, Radian };

struct Unit {
  Group group;
  /// The size of the unit in its group's base unit, and the reverse; for the angle groups,
  /// the factor to the other angle unit and 1.
  double toBase;
  double fromBase;
};

struct NamedUnit {
  char const *name;
  Unit unit;
};

// The two columns are kept as the decimal values of the table, not computed from each
// other: the short time constants make "hour" to "hr" 0.9999999999972, not 1.
constexpr NamedUnit kUnits[] = {
    {"m", {Group::Length, 1, 1}},
    {"meter", {Group::Length, 1, 1}},
    {"meters", {Group::Length, 1, 1}},
    {"dm", {Group::Length, 0.1, 10}},
    {"decimeter", {Group::Length, 0.1, 10}},
    {"decimeters", {Group::Length, 0.1, 10}},
    {"cm", {Group::Length, 0.01, 100}},
    {"centimeter", {Group::Length, 0.01, 100}},
    {"centimeters", {Group::Length, 0.01, 100}},
    {"mm", {Group::Length, 0.001, 1000}},
    {"millimeter", {Group::Length, 0.001, 1000}},
    {"millimeters", {Group::Length, 0.001, 1000}},
    {"um", {Group::Length, 1e-06, 1000000}},
    {"micrometer", {Group::Length, 1e-06, 1000000}},
    {"micrometers", {Group::Length, 1e-06, 1000000}},
    {"nm", {Group::Length, 1e-09, 1000000000}},
    {"nanometer", {Group::Length, 1e-09, 1000000000}},
    {"nanometers", {Group::Length, 1e-09, 1000000000}},
    {"km", {Group::Length, 1000, 0.001}},
    {"kilometer", {Group::Length, 1000, 0.001}},
    {"kilometers", {Group::Length, 1000, 0.001}},
    {"in", {Group::Length, 0.0254, 39.37007874015748}},
    {"inch", {Group::Length, 0.0254, 39.37007874015748}},
    {"inches", {Group::Length, 0.0254, 39.37007874015748}},
    {"mil", {Group::Length, 2.54e-05, 39370.07874015748}},
    {"mils", {Group::Length, 2.54e-05, 39370.07874015748}},
    {"thou", {Group::Length, 2.54e-05, 39370.07874015748}},
    {"thousandth", {Group::Length, 2.54e-05, 39370.07874015748}},
    {"thousandths", {Group::Length, 2.54e-05, 39370.07874015748}},
    {"ft", {Group::Length, 0.3048, 3.280839895013123}},
    {"foot", {Group::Length, 0.3048, 3.280839895013123}},
    {"feet", {Group::Length, 0.3048, 3.280839895013123}},
    {"yd", {Group::Length, 0.9144, 1.0936132983377078}},
    {"yard", {Group::Length, 0.9144, 1.0936132983377078}},
    {"yards", {Group::Length, 0.9144, 1.0936132983377078}},
    {"mile", {Group::Length, 1609.344, 0.0006213711922373339}},
    {"miles", {Group::Length, 1609.344, 0.0006213711922373339}},
    {"hour", {Group::Time, 3600, 0.000277777777777}},
    {"hr", {Group::Time, 3600, 0.000277777777777}},
    {"hours", {Group::Time, 3600, 0.000277777777777}},
    {"minute", {Group::Time, 60, 0.01666666666666}},
    {"min", {Group::Time, 60, 0.01666666666666}},
    {"minutes", {Group::Time, 60, 0.01666666666666}},
    {"second", {Group::Time, 1, 1}},
    {"sec", {Group::Time, 1, 1}},
    {"seconds", {Group::Time, 1, 1}},
    {"millisecond", {Group::Time, 0.001, 1000}},
    {"millisec", {Group::Time, 0.001, 1000}},
    {"milliseconds", {Group::Time, 0.001, 1000}},
    {"deg", {Group::Degree, 0.017453292519943295, 1}},
    {"degree", {Group::Degree, 0.017453292519943295, 1}},
    {"degrees", {Group::Degree, 0.017453292519943295, 1}},
    {"rad", {Group::Radian, 57.29577951308232, 1}},
    {"radian", {Group::Radian, 57.29577951308232, 1}},
    {"radians", {Group::Radian, 57.29577951308232, 1}},
};

/// The unit of a normalised name, or null: one hash lookup per name.
Unit const *FindUnit(ZQString const &name) {
  static std::unordered_map<std::string_view, Unit> const table = [] {
    std::unordered_map<std::string_view, Unit> units;
    for (NamedUnit const &entry : kUnits) {
      units.emplace(entry.name, entry.unit);
    }
    return units;
  }();
  auto const found = table.find(std::string_view(name.c_str(), static_cast<std::size_t>(name.Size())));
  return found != table.end() ? &found->second : nullptr;
}

bool Convertible(Group from, Group to) {
  switch (from) {
  case Group::Degree:
    return to == Group::Radian;
  case Group::Radian:
    return to == Group::Degree;
  default:
    return from == to;
  }
}

/// The six whitespace bytes of the C locale.
bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The bytes [begin, end) of `units` that remain once whitespace is trimmed from both
/// ends and then one enclosing pair of brackets is removed.
void BracketlessRange(ZQString const &units, long long &begin, long long &end) {
  char const *text = units.c_str();
  begin = 0;
  end = units.Size();
  while (begin < end && IsBlank(text[begin])) {
    ++begin;
  }
  while (end > begin && IsBlank(text[end - 1])) {
    --end;
  }
  if (end - begin >= 2 && text[begin] == '[' && text[end - 1] == ']') {
    ++begin;
    --end;
  }
}

/// The name as the table knows it: unbracketed and in lower case.
ZQString Normalised(ZQString const &units) {
  long long begin = 0;
  long long end = 0;
  BracketlessRange(units, begin, end);
  ZQString name(units.c_str() + begin, end - begin);
  name.Lower();
  return name;
}

ZQString Joined(std::initializer_list<char const *> parts) {
  ZQString text;
  for (char const *part : parts) {
    text += part;
  }
  return text;
}

ZQResult StatusOf(Types::StatusCode_t code) { return ZQResult(static_cast<long long>(code)); }

char const *const kPreferredSystemMessage =
    "sorry, without DRXUnits only 'SI' is supported as preferred unit system, setting of preferred unit system failed.";

} // namespace

ZQUnitsConverter::ZQUnitsConverter() : context(nullptr), implementation(nullptr) {}

ZQUnitsConverter::ZQUnitsConverter(ZQContext *owner) : context(owner), implementation(nullptr) {}

ZQUnitsConverter::ZQUnitsConverter(ZQUnitsConverter const &other) : context(other.context), implementation(nullptr) {}

ZQUnitsConverter &ZQUnitsConverter::operator=(ZQUnitsConverter const &other) {
  Copy(other);
  return *this;
}

ZQUnitsConverter::~ZQUnitsConverter() = default;

// Without an external unit system there is nothing to copy or reset: the context is the
// target's own.
void ZQUnitsConverter::Copy(ZQUnitsConverter const & /*other*/) {}

void ZQUnitsConverter::Reset() {}

ZQResult ZQUnitsConverter::SetContext(ZQContext *newContext) {
  context = newContext;
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQUnitsConverter::Initialize() { return StatusOf(Types::StatusCode_t::Success); }

bool ZQUnitsConverter::IsInitialized() const { return true; }

void ZQUnitsConverter::Push(ZQString const &message) const {
  if (context != nullptr) {
    context->GetErrorStack().Push(message.c_str());
  }
}

ZQResult ZQUnitsConverter::GetConversionData(ZQString const &from, ZQString const &to, double &factor, double &offset) {
  factor = 1;
  offset = 0;
  ZQString const fromName = Normalised(from);
  ZQString const toName = Normalised(to);
  Unit const *fromUnit = FindUnit(fromName);
  if (fromName == toName) {
    if (fromUnit != nullptr) {
      return StatusOf(Types::StatusCode_t::Success);
    }
    Push(Joined({"sorry, unknown units encountered, query of conversion data for '", fromName.c_str(), "' failed."}));
    return StatusOf(Types::StatusCode_t::UnitsConverterGetConversionDataError);
  }
  Unit const *toUnit = FindUnit(toName);
  if (fromUnit == nullptr || toUnit == nullptr || !Convertible(fromUnit->group, toUnit->group)) {
    Push(Joined({"sorry, unknown units encountered, query of conversion data from '", fromName.c_str(), "' to '",
                 toName.c_str(), "' failed."}));
    return StatusOf(Types::StatusCode_t::UnitsConverterGetConversionDataError);
  }
  factor = fromUnit->toBase * toUnit->fromBase;
  return StatusOf(Types::StatusCode_t::Success);
}

template <typename Name, typename Real>
ZQResult ZQUnitsConverter::ConvertNames(Name const *from, Name const *to, Real &factor, Real &offset) {
  factor = 1;
  offset = 0;
  double localFactor = 1;
  double localOffset = 0;
  ZQResult const status = GetConversionData(StripBrackets(from), StripBrackets(to), localFactor, localOffset);
  if (localFactor != 1) {
    factor = static_cast<Real>(localFactor);
  }
  if (localOffset != 0) {
    offset = static_cast<Real>(localOffset);
  }
  return status;
}

ZQResult ZQUnitsConverter::GetConversionData(char const *from, char const *to, double &factor, double &offset) {
  return ConvertNames(from, to, factor, offset);
}

ZQResult ZQUnitsConverter::GetConversionData(char const *from, char const *to, float &factor, float &offset) {
  return ConvertNames(from, to, factor, offset);
}

ZQResult ZQUnitsConverter::GetConversionData(wchar_t const *from, wchar_t const *to, double &factor, double &offset) {
  return ConvertNames(from, to, factor, offset);
}

ZQResult ZQUnitsConverter::GetConversionData(wchar_t const *from, wchar_t const *to, float &factor, float &offset) {
  return ConvertNames(from, to, factor, offset);
}

bool ZQUnitsConverter::IsLengthUnit(ZQString const &units) {
  double factor, offset;
  return GetConversionData(units, ZQString("m"), factor, offset).OK();
}

bool ZQUnitsConverter::IsLengthUnit(char const *units) {
  double factor, offset;
  return GetConversionData(units, "m", factor, offset).OK();
}

bool ZQUnitsConverter::IsLengthUnit(wchar_t const *units) {
  double factor, offset;
  return GetConversionData(units, L"m", factor, offset).OK();
}

bool ZQUnitsConverter::IsTimeUnit(ZQString const &units) {
  double factor, offset;
  return GetConversionData(units, ZQString("sec"), factor, offset).OK();
}

bool ZQUnitsConverter::IsTimeUnit(char const *units) {
  double factor, offset;
  return GetConversionData(units, "sec", factor, offset).OK();
}

bool ZQUnitsConverter::IsTimeUnit(wchar_t const *units) {
  double factor, offset;
  return GetConversionData(units, L"sec", factor, offset).OK();
}

void ZQUnitsConverter::StripBracketsInPlace(ZQString &units) {
  long long begin = 0;
  long long end = 0;
  BracketlessRange(units, begin, end);
  units = units.Substring(begin, end);
}

ZQString ZQUnitsConverter::StripBrackets(ZQString const &units) {
  ZQString stripped(units);
  StripBracketsInPlace(stripped);
  return stripped;
}

ZQString ZQUnitsConverter::StripBrackets(char const *units) { return StripBrackets(ZQString(units)); }

ZQString ZQUnitsConverter::StripBrackets(wchar_t const *units) { return StripBrackets(ZQString(units)); }

ZQResult ZQUnitsConverter::GetPreferredUnitSystem(ZQString &name) {
  name = "SI";
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQUnitsConverter::SetPreferredUnitSystem(ZQString const &name) {
  if (name == "SI") {
    return StatusOf(Types::StatusCode_t::Success);
  }
  Push(ZQString(kPreferredSystemMessage));
  return StatusOf(Types::StatusCode_t::UnitsConverterSetPreferredUnitSystemError);
}

ZQResult ZQUnitsConverter::SetPreferredUnitSystem(char const *name) {
  if (name == nullptr) {
    Push(ZQString(kPreferredSystemMessage));
    return StatusOf(Types::StatusCode_t::UnitsConverterSetPreferredUnitSystemError);
  }
  return SetPreferredUnitSystem(ZQString(name));
}

ZQResult ZQUnitsConverter::SetPreferredUnitSystem(wchar_t const *name) {
  if (name == nullptr) {
    return SetPreferredUnitSystem(static_cast<char const *>(nullptr));
  }
  std::string narrow;
  if (!ZQStringEncoding::WideToUTF8(context, name, narrow)) {
    Push(ZQString("conversion of preferred unit system name to UTF-8 string failed!"));
    return StatusOf(Types::StatusCode_t::UnitsConverterSetPreferredUnitSystemError);
  }
  return SetPreferredUnitSystem(narrow.c_str());
}

} // namespace Velmora::Tessara::ZQ::Core

// UnitsConverter: the public face of ZQUnitsConverter.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Factor and offset between units of length, time and angle; see ZQUnitsConverter.
/// Owns its inner converter. Copies and assignments keep their own context (none for a copy).
class ZQCORE_EXPORT UnitsConverter {
public:
  UnitsConverter();
  /// Messages go to `context`, which may be null.
  UnitsConverter(Context *context);
  UnitsConverter(UnitsConverter const &other);
  UnitsConverter &operator=(UnitsConverter const &other);
  virtual ~UnitsConverter();

  Result SetContext(Context *context);
  Result Initialize();
  bool IsInitialized() const;
  void Reset();

  Result GetConversionData(String const &from, String const &to, double &factor, double &offset);
  Result GetConversionData(char const *from, char const *to, double &factor, double &offset);
  Result GetConversionData(char const *from, char const *to, float &factor, float &offset);
  Result GetConversionData(wchar_t const *from, wchar_t const *to, double &factor, double &offset);
  Result GetConversionData(wchar_t const *from, wchar_t const *to, float &factor, float &offset);

  bool IsLengthUnit(String const &units);
  bool IsLengthUnit(char const *units);
  bool IsLengthUnit(wchar_t const *units);
  bool IsTimeUnit(String const &units);
  bool IsTimeUnit(char const *units);
  bool IsTimeUnit(wchar_t const *units);

  static String StripBrackets(String const &units);
  static String StripBrackets(char const *units);
  static String StripBrackets(wchar_t const *units);
  static void StripBracketsInPlace(String &units);

  Result GetPreferredUnitSystem(String &name);
  Result SetPreferredUnitSystem(String const &name);
  Result SetPreferredUnitSystem(char const *name);
  Result SetPreferredUnitSystem(wchar_t const *name);

private:
  void Copy(UnitsConverter const &other);

  ZQUnitsConverter *converter;
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQUnitsConverter: factor and offset between two units of length, time or angle.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Knows a fixed table of length units (base: metre), time units (base: second) and the
/// two angle units. Names are matched after trimming, removing one pair of enclosing
/// brackets and lowering the case, so "MM" and "[mm]" are both the millimetre. A value in
/// `from` becomes value * factor + offset in `to`; the table has no offsets. Conversions
/// go through the base unit, using the table's separate to-base and from-base columns.
/// The only unit system is "SI". Failures push their text on the context's error stack.
class ZQCORE_EXPORT ZQUnitsConverter {
public:
  ZQUnitsConverter();
  explicit ZQUnitsConverter(ZQContext *context);
  /// Takes the other's context.
  ZQUnitsConverter(ZQUnitsConverter const &other);
  /// Keeps this converter's own context: there is no other state to copy.
  ZQUnitsConverter &operator=(ZQUnitsConverter const &other);
  virtual ~ZQUnitsConverter();

  ZQResult SetContext(ZQContext *context);
  /// Nothing to set up: status 0.
  ZQResult Initialize();
  bool IsInitialized() const;
  void Reset();

  /// factor 1 and offset 0 on entry, and left so on failure
  /// (UnitsConverterGetConversionDataError).
  ZQResult GetConversionData(ZQString const &from, ZQString const &to, double &factor, double &offset);
  /// These strip brackets before the main form does it again, so "[[m]]" is a metre here.
  ZQResult GetConversionData(char const *from, char const *to, double &factor, double &offset);
  ZQResult GetConversionData(char const *from, char const *to, float &factor, float &offset);
  ZQResult GetConversionData(wchar_t const *from, wchar_t const *to, double &factor, double &offset);
  ZQResult GetConversionData(wchar_t const *from, wchar_t const *to, float &factor, float &offset);

  /// A conversion to metre (to second) succeeds; a failed test leaves its message behind.
  bool IsLengthUnit(ZQString const &units);
  bool IsLengthUnit(char const *units);
  bool IsLengthUnit(wchar_t const *units);
  bool IsTimeUnit(ZQString const &units);
  bool IsTimeUnit(char const *units);
  bool IsTimeUnit(wchar_t const *units);

  /// Trims whitespace, then removes one leading "[" and one trailing "]" when both are
  /// there; blanks inside the brackets stay and the case is kept.
  static ZQString StripBrackets(ZQString const &units);
  static ZQString StripBrackets(char const *units);
  static ZQString StripBrackets(wchar_t const *units);
  static void StripBracketsInPlace(ZQString &units);

  /// "SI".
  ZQResult GetPreferredUnitSystem(ZQString &name);
  /// Only exactly "SI" succeeds; anything else gives UnitsConverterSetPreferredUnitSystemError.
  ZQResult SetPreferredUnitSystem(ZQString const &name);
  ZQResult SetPreferredUnitSystem(char const *name);
  ZQResult SetPreferredUnitSystem(wchar_t const *name);

private:
  void Copy(ZQUnitsConverter const &other);
  void Push(ZQString const &message) const;
  template <typename Name, typename Real>
  ZQResult ConvertNames(Name const *from, Name const *to, Real &factor, Real &offset);

  ZQContext *context;
  void *implementation;
};

} // namespace Velmora::Tessara::ZQ::Core

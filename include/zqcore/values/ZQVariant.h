// ZQVariant: one value of one of nine kinds, with an optional physical unit.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

/// Holds an integer, a double, a string, a color, an array of integers, doubles or
/// strings (ranks 1 to 3), or a caller-owned pointer, each with an optional unit that
/// ZQUnitsConverter knows. Values convert on reading under strict rules, and numbers
/// convert to other units. Copies are deep except for the custom pointer, which is
/// shared. Failures are statuses; only the units operations push messages, and only on
/// the context they are given. Scalar getters leave 9223372036854775807 or DBL_MAX in the
/// output on failure; array getters leave the output as it was.
class ZQCORE_EXPORT ZQVariant {
public:
  using IntegerArray = ZQArrayNativeType<long long, long long>;
  using FloatingPointArray = ZQArrayNativeType<double, long long>;
  using StringArray = ZQArrayObjectType<ZQString, long long>;
  using Vector3 = ZQVector<double, 3>;

  /// Each constructor calls its setter and drops the status, so a bad unit is stored
  /// without complaint.
  ZQVariant();
  ZQVariant(long long value);
  ZQVariant(long long value, ZQString const &units);
  ZQVariant(double value);
  ZQVariant(double value, ZQString const &units);
  /// Splits "12 mm" into the value "12" and the units "mm"; see SetString.
  ZQVariant(ZQString const &text);
  ZQVariant(ZQString const &text, ZQString const &units);
  ZQVariant(ZQColor const &color);
  ZQVariant(long long const *values, long long count);
  ZQVariant(long long const *values, long long count, ZQString const &units);
  ZQVariant(double const *values, long long count);
  ZQVariant(double const *values, long long count, ZQString const &units);
  ZQVariant(Vector3 const &vector);
  ZQVariant(Vector3 const &vector, ZQString const &units);
  ZQVariant(IntegerArray const &array);
  ZQVariant(IntegerArray const &array, ZQString const &units);
  ZQVariant(FloatingPointArray const &array);
  ZQVariant(FloatingPointArray const &array, ZQString const &units);
  ZQVariant(StringArray const &array);
  ZQVariant(StringArray const &array, ZQString const &units);
  ZQVariant(ZQVariant const &other);
  ZQVariant &operator=(ZQVariant const &other);
  virtual ~ZQVariant();

  /// Releases the value (never a custom object) and empties the units.
  void Reset();
  Types::VariantType_t GetType() const;
  bool IsInitialized() const;
  /// False with units; else true for Undefined and for a string or array of size 0.
  bool IsEmpty() const;
  bool HasUnits() const;
  ZQResult GetUnits(ZQString &units) const;
  /// Stores the text trimmed and without enclosing brackets, case kept. An unknown unit
  /// gives VariantBadUnitsError and stays stored.
  ZQResult SetUnits(ZQString const &units, ZQContext *context);
  /// Numbers and numeric strings become FloatingPoint, integer and string arrays
  /// FloatingPointArray, all with the target units. A FloatingPointArray is converted in
  /// place and keeps its old units text. Units missing on one side give
  /// VariantUnitsConversionError with no message; on both sides nothing happens.
  ZQResult ConvertToUnits(ZQString const &units, ZQContext *context);
  /// By kind first, then value (arrays: rank, sizes, elements), then units: -1, 0 or 1.
  int Compare(ZQVariant const &other) const;
  /// GetString with the units behind a blank, or "<not initialized>",
  /// "<custom data pointer>", "<not available as string>". `format` is not used.
  ZQString ToString(char const *format) const;

  /// A setter without units empties them; one with units stores the value and then
  /// returns the status of SetUnits (no context).
  ZQResult SetInteger(long long value);
  ZQResult SetInteger(long long value, ZQString const &units);
  /// Parses the text; on failure VariantImplicitTypeConversionError and no change.
  ZQResult SetInteger(ZQString const &text, ZQString const &units);
  ZQResult SetFloatingPoint(double value);
  ZQResult SetFloatingPoint(double value, ZQString const &units);
  /// Parses the text independently of the locale; failure as SetInteger.
  ZQResult SetFloatingPoint(ZQString const &text, ZQString const &units);
  /// Trims the text and splits it at the first whitespace: the rest becomes the units.
  ZQResult SetString(ZQString const &text);
  /// Stores the text as it stands.
  ZQResult SetString(ZQString const &text, ZQString const &units);
  ZQResult SetColor(ZQColor const &color);
  /// Parses the text as ZQColor does and takes over its failure.
  ZQResult SetColor(ZQString const &text);
  /// A null pointer gives an empty array.
  ZQResult SetIntegerArray(long long const *values, long long count);
  ZQResult SetIntegerArray(long long const *values, long long count, ZQString const &units);
  ZQResult SetIntegerArray(IntegerArray const &array);
  ZQResult SetIntegerArray(IntegerArray const &array, ZQString const &units);
  /// Parses each text into an array of the same shape; the first failure gives
  /// VariantImplicitTypeConversionError and no change.
  ZQResult SetIntegerArray(StringArray const &texts, ZQString const &units);
  ZQResult SetFloatingPointArray(double const *values, long long count);
  ZQResult SetFloatingPointArray(double const *values, long long count, ZQString const &units);
  ZQResult SetFloatingPointArray(FloatingPointArray const &array);
  ZQResult SetFloatingPointArray(FloatingPointArray const &array, ZQString const &units);
  ZQResult SetFloatingPointArray(Vector3 const &vector);
  ZQResult SetFloatingPointArray(Vector3 const &vector, ZQString const &units);
  ZQResult SetFloatingPointArray(StringArray const &texts, ZQString const &units);
  ZQResult SetStringArray(StringArray const &array);
  ZQResult SetStringArray(StringArray const &array, ZQString const &units);
  /// The caller keeps the object; the variant only holds the pointer.
  ZQResult SetCustomData(void const *data);

  /// The forms with a trailing `units` also deliver the units (and GetString then leaves
  /// them out of the text).
  ZQResult GetInteger(signed char &value) const;
  ZQResult GetInteger(signed char &value, ZQString &units) const;
  ZQResult GetInteger(int &value) const;
  ZQResult GetInteger(int &value, ZQString &units) const;
  ZQResult GetInteger(long long &value) const;
  ZQResult GetInteger(long long &value, ZQString &units) const;
  ZQResult GetFloatingPoint(double &value) const;
  ZQResult GetFloatingPoint(double &value, ZQString &units) const;
  ZQResult GetString(ZQString &text) const;
  ZQResult GetString(ZQString &text, ZQString &units) const;
  ZQResult GetColor(ZQColor &color) const;
  /// Array getters give a new, unshared array.
  ZQResult GetIntegerArray(IntegerArray &array) const;
  ZQResult GetIntegerArray(IntegerArray &array, ZQString &units) const;
  /// `count` is the room in `buffer` on entry and the number of elements on exit; too
  /// little room gives ArrayTooSmallError with `count` unchanged.
  ZQResult GetIntegerArray(long long &count, long long *buffer) const;
  ZQResult GetIntegerArray(long long &count, long long *buffer, ZQString &units) const;
  ZQResult GetFloatingPointArray(FloatingPointArray &array) const;
  ZQResult GetFloatingPointArray(FloatingPointArray &array, ZQString &units) const;
  /// Zeroes the vector, then fills it from at most three elements.
  ZQResult GetFloatingPointArray(Vector3 &vector) const;
  ZQResult GetFloatingPointArray(Vector3 &vector, ZQString &units) const;
  ZQResult GetFloatingPointArray(long long &count, double *buffer) const;
  ZQResult GetFloatingPointArray(long long &count, double *buffer, ZQString &units) const;
  ZQResult GetStringArray(StringArray &array) const;
  ZQResult GetStringArray(StringArray &array, ZQString &units) const;
  ZQResult GetCustomData(void *&data) const;
  ZQResult GetIntegerArraySize(long long &size) const;
  ZQResult GetFloatingPointArraySize(long long &size) const;

private:
  void Copy(ZQVariant const &other);
  /// Releases the value and returns to Undefined, keeping the units.
  void ResetData();
  /// Stores a copy of `value` as kind `kind`, in place when the kind stays.
  template <typename T> void CopyData(Types::VariantType_t kind, T const &value);
  template <typename T> T &Data() const { return *static_cast<T *>(data); }
  ZQResult WithUnits(ZQResult status, ZQString &units) const;
  ZQResult Stored(ZQString const &units);
  ZQResult Unitless();
  ZQResult RenderString(ZQString &text) const;
  ZQResult ArraySize(long long &size) const;

  Types::VariantType_t type;
  void *data;
  ZQString units;
};

} // namespace Velmora::Tessara::ZQ::Core

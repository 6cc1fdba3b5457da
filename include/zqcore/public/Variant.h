// Variant: the public face of ZQVariant.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// One value of one of nine kinds with optional units, owning its inner ZQVariant; see
/// ZQVariant for the conversion rules. Copies are independent, except that a custom
/// pointer is shared.
class ZQCORE_EXPORT Variant {
public:
  Variant();
  Variant(long long value);
  Variant(long long value, String const &units);
  Variant(double value);
  Variant(double value, String const &units);
  Variant(String const &text);
  Variant(String const &text, String const &units);
  Variant(Color const &color);
  Variant(long long const *values, long long count);
  Variant(long long const *values, long long count, String const &units);
  Variant(double const *values, long long count);
  Variant(double const *values, long long count, String const &units);
  Variant(ZQVector<double, 3> const &vector);
  Variant(ZQVector<double, 3> const &vector, String const &units);
  Variant(Int64Array const &array);
  Variant(Int64Array const &array, String const &units);
  Variant(Float64Array const &array);
  Variant(Float64Array const &array, String const &units);
  Variant(StringArray const &array);
  Variant(StringArray const &array, String const &units);
  /// A copy of `variant`.
  Variant(ZQVariant const &variant);
  Variant(Variant const &other);
  Variant &operator=(Variant const &other);
  virtual ~Variant();

  void Reset();
  Types::VariantType_t GetType() const;
  bool IsInitialized() const;
  bool IsEmpty() const;
  bool HasUnits() const;
  Result GetUnits(String &units) const;
  Result SetUnits(String const &units, Context *context);
  Result ConvertToUnits(String const &units, Context *context);
  int Compare(Variant const &other) const;
  String ToString(char const *format) const;

  Result SetInteger(long long value);
  Result SetInteger(long long value, String const &units);
  Result SetInteger(String const &text, String const &units);
  Result SetFloatingPoint(double value);
  Result SetFloatingPoint(double value, String const &units);
  Result SetFloatingPoint(String const &text, String const &units);
  Result SetString(String const &text);
  Result SetString(String const &text, String const &units);
  Result SetColor(Color const &color);
  Result SetColor(String const &text);
  Result SetIntegerArray(long long const *values, long long count);
  Result SetIntegerArray(long long const *values, long long count, String const &units);
  Result SetIntegerArray(Int64Array const &array);
  Result SetIntegerArray(Int64Array const &array, String const &units);
  Result SetIntegerArray(StringArray const &texts, String const &units);
  Result SetFloatingPointArray(double const *values, long long count);
  Result SetFloatingPointArray(double const *values, long long count, String const &units);
  Result SetFloatingPointArray(Float64Array const &array);
  Result SetFloatingPointArray(Float64Array const &array, String const &units);
  Result SetFloatingPointArray(ZQVector<double, 3> const &vector);
  Result SetFloatingPointArray(ZQVector<double, 3> const &vector, String const &units);
  Result SetFloatingPointArray(StringArray const &texts, String const &units);
  Result SetStringArray(StringArray const &array);
  Result SetStringArray(StringArray const &array, String const &units);
  Result SetCustomData(void const *data);

  Result GetInteger(signed char &value) const;
  Result GetInteger(signed char &value, String &units) const;
  Result GetInteger(int &value) const;
  Result GetInteger(int &value, String &units) const;
  Result GetInteger(long long &value) const;
  Result GetInteger(long long &value, String &units) const;
  Result GetFloatingPoint(double &value) const;
  Result GetFloatingPoint(double &value, String &units) const;
  Result GetString(String &text) const;
  Result GetString(String &text, String &units) const;
  Result GetColor(Color &color) const;
  Result GetIntegerArray(Int64Array &array) const;
  Result GetIntegerArray(Int64Array &array, String &units) const;
  Result GetIntegerArray(long long &count, long long *buffer) const;
  Result GetIntegerArray(long long &count, long long *buffer, String &units) const;
  Result GetFloatingPointArray(Float64Array &array) const;
  Result GetFloatingPointArray(Float64Array &array, String &units) const;
  Result GetFloatingPointArray(ZQVector<double, 3> &vector) const;
  Result GetFloatingPointArray(ZQVector<double, 3> &vector, String &units) const;
  Result GetFloatingPointArray(long long &count, double *buffer) const;
  Result GetFloatingPointArray(long long &count, double *buffer, String &units) const;
  Result GetStringArray(StringArray &array) const;
  Result GetStringArray(StringArray &array, String &units) const;
  Result GetCustomData(void *&data) const;
  Result GetIntegerArraySize(long long &size) const;
  Result GetFloatingPointArraySize(long long &size) const;

  /// The inner object, owned by this one.
  ZQVariant *GetVariant();
  ZQVariant const *GetVariant() const;

private:
  void Copy(Variant const &other);

  ZQVariant *variant;
};

} // namespace Velmora::Tessara::ZQ::Core

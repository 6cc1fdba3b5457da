#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/geometry/ZQVector.h>
#include <zqcore/values/ZQColor.h>
#include <zqcore/values/ZQUnitsConverter.h>
#include <zqcore/values/ZQVariant.h>

#include "core/detail/Fatal.h"
#include "strings/detail/ArrayText.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>

namespace Velmora::Tessara::ZQ::Core {

namespace {

using Kind = Types::VariantType_t;
using Status = Types::StatusCode_t;
using IntegerArray = ZQVariant::IntegerArray;
using FloatingPointArray = ZQVariant::FloatingPointArray;
using StringArray = ZQVariant::StringArray;

constexpr long long kIntegerFailure = LLONG_MAX;
constexpr double kFloatingPointFailure = DBL_MAX;

ZQResult StatusOf(Status code) { return ZQResult(static_cast<long long>(code)); }

ZQResult Success() { return StatusOf(Status::Success); }

/// A double is an integer when its signed fractional part is at most the machine epsilon,
/// so -1.5 passes (as -1) while 1.5 does not; the value truncates towards zero.
bool DoubleToInteger(double value, long long &result) {
  double whole = 0;
  double const fraction = std::modf(value, &whole);
  // The range test also refuses NaN and the infinities, which no integer holds.
  if (fraction > DBL_EPSILON || !(whole >= -9223372036854775808.0 && whole < 9223372036854775808.0)) {
    return false;
  }
  result = static_cast<long long>(whole);
  return true;
}

bool ParseInteger(ZQString const &text, long long &result) {
  bool failed = false;
  result = text.AsInt64(failed);
  return !failed;
}

bool ParseFloatingPoint(ZQString const &text, double &result) {
  bool failed = false;
  result = text.AsFloat64(failed, false);
  return !failed;
}

/// Applies `convert` to the used elements of `source` in iterator order, writing them into
/// `target`, which takes the source's sizes; stops at the first failure. The target is
/// freshly sized, so it has no capacity gaps and its flat order is the iterator's order.
template <typename From, typename ToArray, typename Convert>
bool ConvertElements(ZQArray<From, long long> const &source, ToArray &target, Convert convert) {
  target.ResizeLike(source, false);
  auto *out = target.GetData();
  for (ZQArrayForwardIterator<From const, long long> it(source); it.IsValid(); ++it, ++out) {
    if (!convert(*it, *out)) {
      return false;
    }
  }
  return true;
}

bool Widen(long long const &value, double &result) {
  result = static_cast<double>(value);
  return true;
}

/// Calls `visit` on every used element of `array`, by position, so that it may change them.
template <typename T, typename Visit> void ForEachElement(ZQArray<T, long long> &array, Visit visit) {
  long long const rank = array.GetRank();
  long long const n0 = array.GetSize(0);
  long long const n1 = rank > 1 ? array.GetSize(1) : 1;
  long long const n2 = rank > 2 ? array.GetSize(2) : 1;
  for (long long i = 0; i < n0; ++i) {
    for (long long j = 0; j < n1; ++j) {
      for (long long k = 0; k < n2; ++k) {
        visit(rank == 1 ? array(i) : (rank == 2 ? array(i, j) : array(i, j, k)));
      }
    }
  }
}

/// The first used element of an array that holds exactly one.
template <typename T> bool SingleElement(ZQArray<T, long long> const &array, T const *&element) {
  if (array.Size() != 1) {
    return false;
  }
  element = array.GetData();
  return true;
}

int CompareNumbers(long long a, long long b) { return a < b ? -1 : (a > b ? 1 : 0); }

/// Greater is whatever is neither less nor equal, so NaN against anything is 1.
int CompareNumbers(double a, double b) { return a < b ? -1 : (a == b ? 0 : 1); }

int CompareNumbers(ZQString const &a, ZQString const &b) { return a.Compare(b); }

template <typename T> int CompareArrays(ZQArray<T, long long> const &a, ZQArray<T, long long> const &b) {
  int order = CompareNumbers(static_cast<long long>(a.GetRank()), static_cast<long long>(b.GetRank()));
  for (long long d = 0; order == 0 && d < a.GetRank(); ++d) {
    order = CompareNumbers(static_cast<long long>(a.GetSize(d)), static_cast<long long>(b.GetSize(d)));
  }
  ZQArrayForwardIterator<T const, long long> left(a);
  ZQArrayForwardIterator<T const, long long> right(b);
  for (; order == 0 && left.IsValid() && right.IsValid(); ++left, ++right) {
    order = CompareNumbers(*left, *right);
  }
  return order;
}

/// "(1, 2)", and "(5,)" for a single element.
template <typename T> void AppendNumberArray(ZQArrayNativeType<T, long long> const &array, ZQString &text) {
  text += '(';
  detail::AppendArrayText(array, text, nullptr, ',');
  if (array.Size() == 1) {
    text += ',';
  }
  text += ')';
}

void AppendStringArray(StringArray const &array, ZQString &text) {
  text += '(';
  bool first = true;
  for (ZQArrayForwardIterator<ZQString const, long long> it(array); it.IsValid(); ++it) {
    if (!first) {
      text += ", ";
    }
    text += '"';
    text += *it;
    text += '"';
    first = false;
  }
  if (array.Size() == 1) {
    text += ',';
  }
  text += ')';
}

bool RenderInteger(long long const &value, ZQString &text) {
  text.Add(value, nullptr);
  return true;
}

bool RenderFloatingPoint(double const &value, ZQString &text) {
  text.Add(value);
  return true;
}

bool CopyText(ZQString const &value, ZQString &text) {
  text = value;
  return true;
}

void FillArray(IntegerArray &array, long long const *values, long long count) {
  array.Resize(values != nullptr && count > 0 ? count : 0);
  if (array.Size() > 0) {
    std::memcpy(array.GetData(), values, static_cast<std::size_t>(count) * sizeof(long long));
  }
}

void FillArray(FloatingPointArray &array, double const *values, long long count) {
  array.Resize(values != nullptr && count > 0 ? count : 0);
  if (array.Size() > 0) {
    std::memcpy(array.GetData(), values, static_cast<std::size_t>(count) * sizeof(double));
  }
}

/// Copies the elements of `array` into `buffer` of `count` places, in iterator order.
// The status of a kind that neither numeric array getter converts; success for the kinds
// they do convert.
ZQResult NumberArrayRefusal(Kind kind) {
  switch (kind) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::String:
    return StatusOf(Status::VariantStringTypeConversionError);
  case Kind::Color:
    return StatusOf(Status::VariantColorTypeConversionError);
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    return Success();
  }
}

template <typename T> ZQResult CopyToBuffer(ZQArrayNativeType<T, long long> const &array, long long &count, T *buffer) {
  if (count < array.Size()) {
    return StatusOf(Status::ArrayTooSmallError);
  }
  long long n = 0;
  for (ZQArrayForwardIterator<T const, long long> it(array); it.IsValid(); ++it) {
    buffer[n++] = *it;
  }
  count = n;
  return Success();
}

} // namespace

// Construction: every constructor runs its setter and ignores the status.

ZQVariant::ZQVariant() : type(Kind::Undefined), data(nullptr) {}
ZQVariant::ZQVariant(long long value) : ZQVariant() { SetInteger(value); }
ZQVariant::ZQVariant(long long value, ZQString const &newUnits) : ZQVariant() { SetInteger(value, newUnits); }
ZQVariant::ZQVariant(double value) : ZQVariant() { SetFloatingPoint(value); }
ZQVariant::ZQVariant(double value, ZQString const &newUnits) : ZQVariant() { SetFloatingPoint(value, newUnits); }
ZQVariant::ZQVariant(ZQString const &text) : ZQVariant() { SetString(text); }
ZQVariant::ZQVariant(ZQString const &text, ZQString const &newUnits) : ZQVariant() { SetString(text, newUnits); }
ZQVariant::ZQVariant(ZQColor const &color) : ZQVariant() { SetColor(color); }
ZQVariant::ZQVariant(long long const *values, long long count) : ZQVariant() { SetIntegerArray(values, count); }
ZQVariant::ZQVariant(long long const *values, long long count, ZQString const &newUnits) : ZQVariant() {
  SetIntegerArray(values, count, newUnits);
}
ZQVariant::ZQVariant(double const *values, long long count) : ZQVariant() { SetFloatingPointArray(values, count); }
ZQVariant::ZQVariant(double const *values, long long count, ZQString const &newUnits) : ZQVariant() {
  SetFloatingPointArray(values, count, newUnits);
}
ZQVariant::ZQVariant(Vector3 const &vector) : ZQVariant() { SetFloatingPointArray(vector); }
ZQVariant::ZQVariant(Vector3 const &vector, ZQString const &newUnits) : ZQVariant() {
  SetFloatingPointArray(vector, newUnits);
}
ZQVariant::ZQVariant(IntegerArray const &array) : ZQVariant() { SetIntegerArray(array); }
ZQVariant::ZQVariant(IntegerArray const &array, ZQString const &newUnits) : ZQVariant() {
  SetIntegerArray(array, newUnits);
}
ZQVariant::ZQVariant(FloatingPointArray const &array) : ZQVariant() { SetFloatingPointArray(array); }
ZQVariant::ZQVariant(FloatingPointArray const &array, ZQString const &newUnits) : ZQVariant() {
  SetFloatingPointArray(array, newUnits);
}
ZQVariant::ZQVariant(StringArray const &array) : ZQVariant() { SetStringArray(array); }
ZQVariant::ZQVariant(StringArray const &array, ZQString const &newUnits) : ZQVariant() {
  SetStringArray(array, newUnits);
}
ZQVariant::ZQVariant(ZQVariant const &other) : ZQVariant() { Copy(other); }

ZQVariant &ZQVariant::operator=(ZQVariant const &other) {
  Copy(other);
  return *this;
}

ZQVariant::~ZQVariant() { ResetData(); }

void ZQVariant::Copy(ZQVariant const &other) {
  if (this == &other) {
    return;
  }
  switch (other.type) {
  case Kind::Undefined:
    ResetData();
    break;
  case Kind::Integer:
    CopyData(other.type, other.Data<long long>());
    break;
  case Kind::FloatingPoint:
    CopyData(other.type, other.Data<double>());
    break;
  case Kind::String:
    CopyData(other.type, other.Data<ZQString>());
    break;
  case Kind::Color:
    CopyData(other.type, other.Data<ZQColor>());
    break;
  case Kind::IntegerArray:
    CopyData(other.type, other.Data<IntegerArray>());
    break;
  case Kind::FloatingPointArray:
    CopyData(other.type, other.Data<FloatingPointArray>());
    break;
  case Kind::StringArray:
    CopyData(other.type, other.Data<StringArray>());
    break;
  case Kind::Custom:
    SetCustomData(other.data);
    break;
  default:
    detail::FatalError();
  }
  units = other.units;
}

template <typename T> void ZQVariant::CopyData(Kind kind, T const &value) {
  if (type != kind) {
    ResetData();
  }
  if (data != nullptr) {
    Data<T>() = value;
  } else {
    data = new T(value);
  }
  type = kind;
}

void ZQVariant::ResetData() {
  switch (type) {
  case Kind::Undefined:
  case Kind::Custom:
    break;
  case Kind::Integer:
    delete &Data<long long>();
    break;
  case Kind::FloatingPoint:
    delete &Data<double>();
    break;
  case Kind::String:
    delete &Data<ZQString>();
    break;
  case Kind::Color:
    delete &Data<ZQColor>();
    break;
  case Kind::IntegerArray:
    delete &Data<IntegerArray>();
    break;
  case Kind::FloatingPointArray:
    delete &Data<FloatingPointArray>();
    break;
  case Kind::StringArray:
    delete &Data<StringArray>();
    break;
  default:
    detail::FatalError();
  }
  data = nullptr;
  type = Kind::Undefined;
}

void ZQVariant::Reset() {
  ResetData();
  units.Clear();
}

Types::VariantType_t ZQVariant::GetType() const { return type; }

bool ZQVariant::IsInitialized() const { return type != Kind::Undefined; }

bool ZQVariant::IsEmpty() const {
  if (HasUnits()) {
    return false;
  }
  switch (type) {
  case Kind::Undefined:
    return true;
  case Kind::String:
    return Data<ZQString>().IsEmpty();
  case Kind::IntegerArray:
    return Data<IntegerArray>().IsEmpty();
  case Kind::FloatingPointArray:
    return Data<FloatingPointArray>().IsEmpty();
  case Kind::StringArray:
    return Data<StringArray>().IsEmpty();
  default:
    return false;
  }
}

bool ZQVariant::HasUnits() const { return !units.IsEmpty(); }

ZQResult ZQVariant::GetUnits(ZQString &out) const {
  out = units;
  return Success();
}

ZQResult ZQVariant::SetUnits(ZQString const &text, ZQContext *context) {
  units = text;
  ZQUnitsConverter::StripBracketsInPlace(units);
  if (units.IsEmpty()) {
    return Success();
  }
  ZQUnitsConverter converter(context);
  converter.Initialize();
  double factor = 1;
  double offset = 0;
  if (!converter.GetConversionData(units, units, factor, offset).OK()) {
    return StatusOf(Status::VariantBadUnitsError);
  }
  return Success();
}

ZQResult ZQVariant::Stored(ZQString const &newUnits) { return SetUnits(newUnits, nullptr); }

ZQResult ZQVariant::Unitless() {
  units.Clear();
  return Success();
}

// Setters.

ZQResult ZQVariant::SetInteger(long long value) {
  CopyData(Kind::Integer, value);
  return Unitless();
}

ZQResult ZQVariant::SetInteger(long long value, ZQString const &newUnits) {
  CopyData(Kind::Integer, value);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetInteger(ZQString const &text, ZQString const &newUnits) {
  long long value = 0;
  if (!ParseInteger(text, value)) {
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
  return SetInteger(value, newUnits);
}

ZQResult ZQVariant::SetFloatingPoint(double value) {
  CopyData(Kind::FloatingPoint, value);
  return Unitless();
}

ZQResult ZQVariant::SetFloatingPoint(double value, ZQString const &newUnits) {
  CopyData(Kind::FloatingPoint, value);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetFloatingPoint(ZQString const &text, ZQString const &newUnits) {
  double value = 0;
  if (!ParseFloatingPoint(text, value)) {
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
  return SetFloatingPoint(value, newUnits);
}

ZQResult ZQVariant::SetString(ZQString const &text) {
  ZQString value(text);
  value.Strip();
  long long split = -1;
  for (char blank : {' ', '\t', '\n', '\v', '\f', '\r'}) {
    long long const at = value.Find(blank);
    if (at >= 0 && (split < 0 || at < split)) {
      split = at;
    }
  }
  if (split < 0) {
    CopyData(Kind::String, value);
    return Unitless();
  }
  CopyData(Kind::String, value.Substring(0, split));
  return Stored(value.Substring(split + 1, value.Size()));
}

ZQResult ZQVariant::SetString(ZQString const &text, ZQString const &newUnits) {
  CopyData(Kind::String, text);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetColor(ZQColor const &color) {
  CopyData(Kind::Color, color);
  return Unitless();
}

ZQResult ZQVariant::SetColor(ZQString const &text) {
  ZQColor color;
  ZQResult const status = color.InitializeRGBA8(text, nullptr);
  if (!status.OK()) {
    return status;
  }
  return SetColor(color);
}

ZQResult ZQVariant::SetIntegerArray(long long const *values, long long count) {
  IntegerArray array;
  FillArray(array, values, count);
  return SetIntegerArray(array);
}

ZQResult ZQVariant::SetIntegerArray(long long const *values, long long count, ZQString const &newUnits) {
  IntegerArray array;
  FillArray(array, values, count);
  return SetIntegerArray(array, newUnits);
}

ZQResult ZQVariant::SetIntegerArray(IntegerArray const &array) {
  CopyData(Kind::IntegerArray, array);
  return Unitless();
}

ZQResult ZQVariant::SetIntegerArray(IntegerArray const &array, ZQString const &newUnits) {
  CopyData(Kind::IntegerArray, array);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetIntegerArray(StringArray const &texts, ZQString const &newUnits) {
  IntegerArray array;
  if (!ConvertElements(texts, array, ParseInteger)) {
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
  return SetIntegerArray(array, newUnits);
}

ZQResult ZQVariant::SetFloatingPointArray(double const *values, long long count) {
  FloatingPointArray array;
  FillArray(array, values, count);
  return SetFloatingPointArray(array);
}

ZQResult ZQVariant::SetFloatingPointArray(double const *values, long long count, ZQString const &newUnits) {
  FloatingPointArray array;
  FillArray(array, values, count);
  return SetFloatingPointArray(array, newUnits);
}

ZQResult ZQVariant::SetFloatingPointArray(FloatingPointArray const &array) {
  CopyData(Kind::FloatingPointArray, array);
  return Unitless();
}

ZQResult ZQVariant::SetFloatingPointArray(FloatingPointArray const &array, ZQString const &newUnits) {
  CopyData(Kind::FloatingPointArray, array);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetFloatingPointArray(Vector3 const &vector) { return SetFloatingPointArray(vector.GetData(), 3); }

ZQResult ZQVariant::SetFloatingPointArray(Vector3 const &vector, ZQString const &newUnits) {
  return SetFloatingPointArray(vector.GetData(), 3, newUnits);
}

ZQResult ZQVariant::SetFloatingPointArray(StringArray const &texts, ZQString const &newUnits) {
  FloatingPointArray array;
  if (!ConvertElements(texts, array, ParseFloatingPoint)) {
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
  return SetFloatingPointArray(array, newUnits);
}

ZQResult ZQVariant::SetStringArray(StringArray const &array) {
  CopyData(Kind::StringArray, array);
  return Unitless();
}

ZQResult ZQVariant::SetStringArray(StringArray const &array, ZQString const &newUnits) {
  CopyData(Kind::StringArray, array);
  return Stored(newUnits);
}

ZQResult ZQVariant::SetCustomData(void const *custom) {
  ResetData();
  data = const_cast<void *>(custom);
  type = Kind::Custom;
  return Unitless();
}

// Getters.

ZQResult ZQVariant::WithUnits(ZQResult status, ZQString &out) const {
  GetUnits(out);
  return status;
}

ZQResult ZQVariant::GetInteger(long long &value) const {
  value = kIntegerFailure;
  long long const *single = nullptr;
  double const *singleDouble = nullptr;
  ZQString const *singleText = nullptr;
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
    value = Data<long long>();
    return Success();
  case Kind::FloatingPoint:
    return DoubleToInteger(Data<double>(), value) ? Success() : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::String:
    return ParseInteger(Data<ZQString>(), value) ? Success() : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::Color:
    return StatusOf(Status::VariantColorTypeConversionError);
  case Kind::IntegerArray:
    if (!SingleElement(Data<IntegerArray>(), single)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    value = *single;
    return Success();
  case Kind::FloatingPointArray:
    if (!SingleElement(Data<FloatingPointArray>(), singleDouble)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    return DoubleToInteger(*singleDouble, value) ? Success() : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::StringArray:
    if (!SingleElement(Data<StringArray>(), singleText)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    return ParseInteger(*singleText, value) ? Success() : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
}

/// The 64-bit value narrowed into `value`; a value that does not survive the narrowing
/// fails, and the output keeps what the narrowing made of it.
template <typename Narrow> static ZQResult NarrowInteger(ZQVariant const &variant, Narrow &value) {
  long long wide = 0;
  ZQResult const status = variant.GetInteger(wide);
  value = static_cast<Narrow>(wide);
  if (status.OK() && static_cast<long long>(value) != wide) {
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
  return status;
}

ZQResult ZQVariant::GetInteger(signed char &value) const { return NarrowInteger(*this, value); }
ZQResult ZQVariant::GetInteger(int &value) const { return NarrowInteger(*this, value); }
ZQResult ZQVariant::GetInteger(signed char &value, ZQString &out) const { return WithUnits(GetInteger(value), out); }
ZQResult ZQVariant::GetInteger(int &value, ZQString &out) const { return WithUnits(GetInteger(value), out); }
ZQResult ZQVariant::GetInteger(long long &value, ZQString &out) const { return WithUnits(GetInteger(value), out); }

ZQResult ZQVariant::GetFloatingPoint(double &value) const {
  value = kFloatingPointFailure;
  long long const *single = nullptr;
  double const *singleDouble = nullptr;
  ZQString const *singleText = nullptr;
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
    value = static_cast<double>(Data<long long>());
    return Success();
  case Kind::FloatingPoint:
    value = Data<double>();
    return Success();
  case Kind::String:
    return ParseFloatingPoint(Data<ZQString>(), value) ? Success()
                                                       : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::Color:
    return StatusOf(Status::VariantColorTypeConversionError);
  case Kind::IntegerArray:
    if (!SingleElement(Data<IntegerArray>(), single)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    value = static_cast<double>(*single);
    return Success();
  case Kind::FloatingPointArray:
    if (!SingleElement(Data<FloatingPointArray>(), singleDouble)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    value = *singleDouble;
    return Success();
  case Kind::StringArray:
    if (!SingleElement(Data<StringArray>(), singleText)) {
      return StatusOf(Status::VariantIntegerArrayTypeConversionError);
    }
    return ParseFloatingPoint(*singleText, value) ? Success() : StatusOf(Status::VariantImplicitTypeConversionError);
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
}

ZQResult ZQVariant::GetFloatingPoint(double &value, ZQString &out) const {
  return WithUnits(GetFloatingPoint(value), out);
}

ZQResult ZQVariant::RenderString(ZQString &text) const {
  text.Clear();
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
    text.Add(Data<long long>(), nullptr);
    return Success();
  case Kind::FloatingPoint:
    text.Add(Data<double>());
    return Success();
  case Kind::String:
    text = Data<ZQString>();
    return Success();
  case Kind::Color:
    text = Data<ZQColor>().ToString(nullptr);
    return Success();
  case Kind::IntegerArray:
    AppendNumberArray(Data<IntegerArray>(), text);
    return Success();
  case Kind::FloatingPointArray:
    AppendNumberArray(Data<FloatingPointArray>(), text);
    return Success();
  case Kind::StringArray:
    AppendStringArray(Data<StringArray>(), text);
    return Success();
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
}

ZQResult ZQVariant::GetString(ZQString &text) const {
  ZQResult const status = RenderString(text);
  if (status.OK() && HasUnits()) {
    text += ' ';
    text += units;
  }
  return status;
}

ZQResult ZQVariant::GetString(ZQString &text, ZQString &out) const { return WithUnits(RenderString(text), out); }

ZQResult ZQVariant::GetColor(ZQColor &color) const {
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
    return StatusOf(Status::VariantIntegerTypeConversionError);
  case Kind::FloatingPoint:
    return StatusOf(Status::VariantFloatingPointTypeConversionError);
  case Kind::String:
    return color.InitializeRGBA8(Data<ZQString>(), nullptr);
  case Kind::Color:
    color = Data<ZQColor>();
    return Success();
  case Kind::IntegerArray:
    return StatusOf(Status::VariantIntegerArrayTypeConversionError);
  case Kind::FloatingPointArray:
    return StatusOf(Status::VariantFloatingPointArrayTypeConversionError);
  case Kind::StringArray:
    return StatusOf(Status::VariantStringArrayTypeConversionError);
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
}

ZQResult ZQVariant::GetIntegerArray(IntegerArray &array) const {
  IntegerArray result;
  long long value = 0;
  ZQResult const refusal = NumberArrayRefusal(type);
  if (!refusal.OK()) {
    return refusal;
  }
  switch (type) {
  case Kind::Integer:
    FillArray(result, &Data<long long>(), 1);
    break;
  case Kind::FloatingPoint:
    if (!DoubleToInteger(Data<double>(), value)) {
      return StatusOf(Status::VariantImplicitTypeConversionError);
    }
    FillArray(result, &value, 1);
    break;
  case Kind::IntegerArray:
    result = Data<IntegerArray>();
    break;
  case Kind::FloatingPointArray:
    if (!ConvertElements(Data<FloatingPointArray>(), result, DoubleToInteger)) {
      return StatusOf(Status::VariantStringTypeConversionError);
    }
    break;
  case Kind::StringArray:
    if (!ConvertElements(Data<StringArray>(), result, ParseInteger)) {
      return StatusOf(Status::VariantStringTypeConversionError);
    }
    break;
  default:
    detail::FatalError();
  }
  array = result;
  return Success();
}

ZQResult ZQVariant::GetIntegerArray(IntegerArray &array, ZQString &out) const {
  return WithUnits(GetIntegerArray(array), out);
}

ZQResult ZQVariant::GetIntegerArray(long long &count, long long *buffer) const {
  IntegerArray array;
  ZQResult const status = GetIntegerArray(array);
  return status.OK() ? CopyToBuffer(array, count, buffer) : status;
}

ZQResult ZQVariant::GetIntegerArray(long long &count, long long *buffer, ZQString &out) const {
  return WithUnits(GetIntegerArray(count, buffer), out);
}

ZQResult ZQVariant::GetFloatingPointArray(FloatingPointArray &array) const {
  FloatingPointArray result;
  double value = 0;
  ZQResult const refusal = NumberArrayRefusal(type);
  if (!refusal.OK()) {
    return refusal;
  }
  switch (type) {
  case Kind::Integer:
  case Kind::FloatingPoint:
    GetFloatingPoint(value);
    FillArray(result, &value, 1);
    break;
  case Kind::IntegerArray:
    ConvertElements(Data<IntegerArray>(), result, Widen);
    break;
  case Kind::FloatingPointArray:
    result = Data<FloatingPointArray>();
    break;
  case Kind::StringArray:
    if (!ConvertElements(Data<StringArray>(), result, ParseFloatingPoint)) {
      return StatusOf(Status::VariantStringArrayTypeConversionError);
    }
    break;
  default:
    detail::FatalError();
  }
  array = result;
  return Success();
}

ZQResult ZQVariant::GetFloatingPointArray(FloatingPointArray &array, ZQString &out) const {
  return WithUnits(GetFloatingPointArray(array), out);
}

ZQResult ZQVariant::GetFloatingPointArray(Vector3 &vector) const {
  vector = Vector3();
  long long room = 3;
  return GetFloatingPointArray(room, vector.GetData());
}

ZQResult ZQVariant::GetFloatingPointArray(Vector3 &vector, ZQString &out) const {
  return WithUnits(GetFloatingPointArray(vector), out);
}

ZQResult ZQVariant::GetFloatingPointArray(long long &count, double *buffer) const {
  FloatingPointArray array;
  ZQResult const status = GetFloatingPointArray(array);
  return status.OK() ? CopyToBuffer(array, count, buffer) : status;
}

ZQResult ZQVariant::GetFloatingPointArray(long long &count, double *buffer, ZQString &out) const {
  return WithUnits(GetFloatingPointArray(count, buffer), out);
}

ZQResult ZQVariant::GetStringArray(StringArray &array) const {
  StringArray result;
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
  case Kind::FloatingPoint:
  case Kind::String:
  case Kind::Color:
    result.Resize(1);
    GetString(result(0));
    break;
  case Kind::IntegerArray:
    ConvertElements(Data<IntegerArray>(), result, RenderInteger);
    break;
  case Kind::FloatingPointArray:
    ConvertElements(Data<FloatingPointArray>(), result, RenderFloatingPoint);
    break;
  case Kind::StringArray:
    ConvertElements(Data<StringArray>(), result, CopyText);
    break;
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
  array = result;
  return Success();
}

ZQResult ZQVariant::GetStringArray(StringArray &array, ZQString &out) const {
  return WithUnits(GetStringArray(array), out);
}

ZQResult ZQVariant::GetCustomData(void *&custom) const {
  switch (type) {
  case Kind::Custom:
    custom = data;
    return Success();
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  default:
    return StatusOf(Status::VariantImplicitTypeConversionError);
  }
}

ZQResult ZQVariant::ArraySize(long long &size) const {
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Integer:
  case Kind::FloatingPoint:
    size = 1;
    return Success();
  case Kind::String:
    return StatusOf(Status::VariantStringTypeConversionError);
  case Kind::Color:
    return StatusOf(Status::VariantColorTypeConversionError);
  case Kind::IntegerArray:
    size = Data<IntegerArray>().Size();
    return Success();
  case Kind::FloatingPointArray:
    size = Data<FloatingPointArray>().Size();
    return Success();
  case Kind::StringArray:
    size = Data<StringArray>().Size();
    return Success();
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    detail::FatalError();
  }
}

ZQResult ZQVariant::GetIntegerArraySize(long long &size) const { return ArraySize(size); }

ZQResult ZQVariant::GetFloatingPointArraySize(long long &size) const { return ArraySize(size); }

// Units, comparison and text.

ZQResult ZQVariant::ConvertToUnits(ZQString const &targetUnits, ZQContext *context) {
  switch (type) {
  case Kind::Undefined:
    return StatusOf(Status::VariantNotInitializedError);
  case Kind::Color:
    return StatusOf(Status::VariantColorTypeConversionError);
  case Kind::Custom:
    return StatusOf(Status::VariantCustomTypeConversionError);
  default:
    break;
  }
  ZQString target(targetUnits);
  ZQUnitsConverter::StripBracketsInPlace(target);
  if (units.IsEmpty() || target.IsEmpty()) {
    return units.IsEmpty() == target.IsEmpty() ? Success() : StatusOf(Status::VariantUnitsConversionError);
  }
  ZQUnitsConverter converter(context);
  converter.Initialize();
  double factor = 1;
  double offset = 0;
  if (!converter.GetConversionData(units, target, factor, offset).OK()) {
    return StatusOf(Status::VariantUnitsConversionError);
  }
  auto const convert = [factor, offset](double &value) { value = value * factor + offset; };
  if (type == Kind::FloatingPointArray) {
    // Converted where it stands; the units text is left as it was.
    ForEachElement(Data<FloatingPointArray>(), convert);
    return Success();
  }
  if (type == Kind::IntegerArray || type == Kind::StringArray) {
    FloatingPointArray array;
    ZQResult const status = GetFloatingPointArray(array);
    if (!status.OK()) {
      return status;
    }
    ForEachElement(array, convert);
    return SetFloatingPointArray(array, target);
  }
  double value = 0;
  ZQResult const status = GetFloatingPoint(value);
  if (!status.OK()) {
    return status;
  }
  convert(value);
  return SetFloatingPoint(value, target);
}

int ZQVariant::Compare(ZQVariant const &other) const {
  if (this == &other) {
    return 0;
  }
  if (type != other.type) {
    return type < other.type ? -1 : 1;
  }
  int order = 0;
  switch (type) {
  case Kind::Undefined:
    break;
  case Kind::Integer:
    order = CompareNumbers(Data<long long>(), other.Data<long long>());
    break;
  case Kind::FloatingPoint:
    order = CompareNumbers(Data<double>(), other.Data<double>());
    break;
  case Kind::String:
    order = Data<ZQString>().Compare(other.Data<ZQString>());
    break;
  case Kind::Color:
    order = Data<ZQColor>().Compare(other.Data<ZQColor>());
    break;
  case Kind::IntegerArray:
    order = CompareArrays(Data<IntegerArray>(), other.Data<IntegerArray>());
    break;
  case Kind::FloatingPointArray:
    order = CompareArrays(Data<FloatingPointArray>(), other.Data<FloatingPointArray>());
    break;
  case Kind::StringArray:
    order = CompareArrays(Data<StringArray>(), other.Data<StringArray>());
    break;
  case Kind::Custom:
    order = std::less<void *>()(data, other.data) ? -1 : (data == other.data ? 0 : 1);
    break;
  default:
    detail::FatalError();
  }
  return order != 0 ? order : units.Compare(other.units);
}

ZQString ZQVariant::ToString(char const * /*format*/) const {
  ZQString text;
  text.Reserve(1024);
  if (type == Kind::Undefined) {
    text = "<not initialized>";
  } else if (type == Kind::Custom) {
    text = "<custom data pointer>";
  } else if (!GetString(text).OK()) {
    text = "<not available as string>";
  }
  return text;
}

} // namespace Velmora::Tessara::ZQ::Core

// The inner objects behind public arguments, for the forwarders of the value classes.
#pragma once

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/Float64Array.h>
#include <zqcore/public/Int64Array.h>
#include <zqcore/public/String.h>
#include <zqcore/public/StringArray.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core::detail {

inline ZQString const &InnerOf(String const &text) { return *text.GetString(); }
inline ZQString &InnerOf(String &text) { return *text.GetString(); }

/// A null context stays null.
inline ZQContext *InnerOf(Context *context) { return context != nullptr ? context->GetContext() : nullptr; }

inline ZQArrayNativeType<long long, long long> const &InnerOf(Int64Array const &array) {
  return *static_cast<ZQArrayNativeType<long long, long long> const *>(array.GetArray());
}
inline ZQArrayNativeType<long long, long long> &InnerOf(Int64Array &array) {
  return *static_cast<ZQArrayNativeType<long long, long long> *>(array.GetArray());
}
inline ZQArrayNativeType<double, long long> const &InnerOf(Float64Array const &array) {
  return *static_cast<ZQArrayNativeType<double, long long> const *>(array.GetArray());
}
inline ZQArrayNativeType<double, long long> &InnerOf(Float64Array &array) {
  return *static_cast<ZQArrayNativeType<double, long long> *>(array.GetArray());
}
inline ZQArrayObjectType<ZQString, long long> const &InnerOf(StringArray const &array) {
  return *static_cast<ZQArrayObjectType<ZQString, long long> const *>(array.GetArray());
}
inline ZQArrayObjectType<ZQString, long long> &InnerOf(StringArray &array) {
  return *static_cast<ZQArrayObjectType<ZQString, long long> *>(array.GetArray());
}

} // namespace Velmora::Tessara::ZQ::Core::detail

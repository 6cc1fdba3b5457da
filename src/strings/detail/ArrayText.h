// The text of a numeric array, element after element, as the variant prints its arrays.
#pragma once

#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/strings/ZQString.h>

#include <cctype>

namespace Velmora::Tessara::ZQ::Core::detail {

inline void AppendElement(ZQString &target, long long value, char const *format) { target.Add(value, format); }

/// A null format means the locale-independent 16-digit form.
inline void AppendElement(ZQString &target, double value, char const *format) {
  if (format != nullptr) {
    target.Add(value, format);
  } else {
    target.Add(value);
  }
}

/// Appends the used elements of `array` (capacity gaps skipped) with `separator` between
/// them; a separator that is neither 0 nor whitespace is followed by a blank, so ',' gives
/// "1, 2". An empty array appends nothing.
template <typename T>
void AppendArrayText(ZQArrayNativeType<T, long long> const &array, ZQString &target, char const *format,
                     char separator) {
  bool const blankAfterSeparator = separator != 0 && std::isspace(static_cast<unsigned char>(separator)) == 0;
  bool first = true;
  for (ZQArrayForwardIterator<T const, long long> it(array); it.IsValid(); ++it) {
    if (!first) {
      target += separator;
      if (blankAfterSeparator) {
        target += ' ';
      }
    }
    AppendElement(target, *it, format);
    first = false;
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail

// Wide text that must be told apart when it cannot be transcoded (names, prefixes, labels).
#pragma once

#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core::detail {

/// `wide` as UTF-8 in `out`; false, with `out` untouched, if it cannot be transcoded.
/// A null text is the empty text.
inline bool WideToZQString(wchar_t const *wide, ZQString &out) {
  std::string bytes;
  if (!ZQStringEncoding::WideToUTF8(nullptr, wide, bytes)) {
    return false;
  }
  out = ZQString(bytes.data(), static_cast<long long>(bytes.size()));
  return true;
}

} // namespace Velmora::Tessara::ZQ::Core::detail

// ZQStringEncoding: the one conversion between UTF-8 narrow strings and wide strings.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core {

/// Static, stateless conversions; safe on any thread. Every function empties its output
/// first, so a failure leaves it empty, and a null source succeeds with an empty output.
/// Ill-formed input is no failure: each maximal ill-formed subsequence of UTF-8, and each
/// wide value that is a surrogate, negative or above U+10FFFF, becomes one U+FFFD.
/// A failure returns false and, with a non-null context, pushes a message on its error
/// stack; with a null context it tells nobody. Counts are those of a 32-bit converter.
class ZQCORE_EXPORT ZQStringEncoding {
public:
  ZQStringEncoding() = default;
  ZQStringEncoding(ZQStringEncoding const &) = default;
  /// Copy and move assignment exist and do nothing: the class has no data.
  ZQStringEncoding &operator=(ZQStringEncoding const &) = default;
  ZQStringEncoding &operator=(ZQStringEncoding &&) = default;

  /// Terminated UTF-8 to the wide form of this platform (UTF-32 here).
  static bool UTF8ToWide(ZQContext *context, char const *source, std::wstring &out);
  /// Terminated wide text to UTF-8.
  static bool WideToUTF8(ZQContext *context, wchar_t const *source, std::string &out);
  /// Counted wide text to UTF-8; see the counted UTF32ToUTF8 for the rules on `length`.
  static bool WideToUTF8(ZQContext *context, wchar_t const *source, long long length, std::string &out);

  /// Inert where wchar_t holds UTF-32: empties `out`, true exactly for a null source.
  static bool UTF8ToUTF16(ZQContext *context, char const *source, std::wstring &out);
  /// Inert where wchar_t holds UTF-32: empties `out`, true exactly for a null source.
  static bool UTF16ToUTF8(ZQContext *context, wchar_t const *source, std::string &out);
  /// Inert where wchar_t holds UTF-32: empties `out`, true exactly for a null source.
  static bool UTF16ToUTF8(ZQContext *context, wchar_t const *source, long long length, std::string &out);

  /// Terminated UTF-8 to UTF-32. Fails only when the result would exceed a 32-bit count
  /// (reported as the text of errno EOVERFLOW).
  static bool UTF8ToUTF32(ZQContext *context, char const *source, std::wstring &out);
  /// Terminated UTF-32 to UTF-8. Fails as UTF8ToUTF32 does.
  static bool UTF32ToUTF8(ZQContext *context, wchar_t const *source, std::string &out);
  /// Counted UTF-32 to UTF-8, cut at the first terminator within the count. A length that
  /// does not fit 32 bits is fatal; -1 means "up to the terminator"; 0 or another negative
  /// length fails unless the first unit is the terminator. Failures report errno EINVAL.
  static bool UTF32ToUTF8(ZQContext *context, wchar_t const *source, long long length, std::string &out);
};

} // namespace Velmora::Tessara::ZQ::Core

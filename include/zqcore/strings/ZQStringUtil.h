// ZQStringUtil: text functions that belong to no single string.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static functions only: case-blind comparison, a bounded copy into a caller's buffer,
/// shell patterns and prefix lists turned into ECMAScript regular expressions (shell
/// patterns for a whole-text match, prefix lists for a search), title lines and the
/// printing of maps and sets. None of them keeps state.
class ZQCORE_EXPORT ZQStringUtil {
public:
  ZQStringUtil() = default;
  ZQStringUtil(ZQStringUtil const &) = default;
  ZQStringUtil &operator=(ZQStringUtil const &) { return *this; }
  ZQStringUtil &operator=(ZQStringUtil &&) noexcept { return *this; }

  /// Four blanks.
  static ZQString GetIndent();

  /// -1, 0 or 1 by the lowered bytes; a null text sorts before any other, two nulls are equal.
  static int strcasecmp(char const *a, char const *b);
  /// As strcasecmp over at most `n` byte pairs; a count of 0 gives 0.
  static int strncasecmp(char const *a, char const *b, unsigned long long n);

  /// True when the text starts with "\n" (length 1) or "\r\n" (length 2); else length 0.
  static bool IsNewline(char const *text, long long &length);
  static bool IsNewline(wchar_t const *text, long long &length);

  /// Copies the terminated `source` into `target` of `size` bytes, truncating and always
  /// terminating what was copied. StringTruncationError when the terminator did not fit;
  /// only the bytes needed are written. `context` is not used.
  static ZQResult Copy(ZQContext *context, char const *source, long long &size, char *target);

  /// `*` any text, `?` any byte, `[...]` a class (`[!...]` negated); every other byte
  /// literal. The result ends with `$` and has no `^`: match it against the whole text.
  static ZQString ShellPatternToRegularExpression(ZQString const &pattern);
  /// "ab:c" with ':' gives "^ab|^c": search with it to test for any of the prefixes.
  /// Empty items vanish; an empty list gives an empty expression.
  static ZQString PrefixListToRegularExpression(ZQString const &list, char separator);
  /// A backslash before every byte that is not an ASCII letter or digit.
  static ZQString EscapeNonAlphaNumCharacters(ZQString const &text);

  /// "======== title 'name' ========", each part left out when empty; both empty give "".
  static ZQString ToTitleString(ZQString const &title);
  static ZQString ToTitleString(ZQString const &title, ZQString const &name);

  /// One entry per line, each line led by `prefix` (null counts as empty) and ended with
  /// "\n"; keys in single quote marks, padded to the longest. An empty container gives "".
  static ZQString ToString(ZQSetObjectType<ZQString> const &set, char const *prefix);
  static ZQString ToString(ZQMapObjectTypes<ZQString, ZQString> const &map, char const *prefix);
  static ZQString ToString(ZQMapNativeValueType<ZQString, int> const &map, char const *prefix);
  static ZQString ToString(ZQMapNativeValueType<ZQString, long long> const &map, char const *prefix);
  static ZQString ToString(ZQMapObjectTypes<ZQString, ZQSetNativeType<int>> const &map, char const *prefix);
  static ZQString ToString(ZQMapObjectTypes<ZQString, ZQSetNativeType<long long>> const &map, char const *prefix);
  /// A head line "'key':" per outer key, then "    <inner key>: '<value>'" per inner entry.
  static ZQString ToString(ZQMapObjectTypes<ZQString, ZQMapNativeKeyType<long long, ZQString>> const &map,
                           char const *prefix);
};

} // namespace Velmora::Tessara::ZQ::Core

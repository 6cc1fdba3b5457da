#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringUtil.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <type_traits>

namespace Velmora::Tessara::ZQ::Core {

namespace {

int Sign(int difference) { return difference < 0 ? -1 : (difference > 0 ? 1 : 0); }

int LoweredDifference(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) - std::tolower(static_cast<unsigned char>(b));
}

/// The walk of strcasecmp over at most `limit` pairs, after the pointer tests.
int CompareCaseBlind(char const *a, char const *b, unsigned long long limit) {
  for (unsigned long long i = 0; i < limit; ++i) {
    if (a[i] == '\0') {
      return b[i] == '\0' ? 0 : -1;
    }
    if (b[i] == '\0') {
      return 1;
    }
    int const difference = LoweredDifference(a[i], b[i]);
    if (difference != 0) {
      return Sign(difference);
    }
  }
  return 0;
}

/// The outcome of the pointer tests shared by both comparisons, or 2 when both texts exist.
int ComparePointers(char const *a, char const *b) {
  if (a == b) {
    return 0;
  }
  if (a == nullptr) {
    return -1;
  }
  return b == nullptr ? 1 : 2;
}

template <typename Char> bool StartsWithNewline(Char const *text, long long &length) {
  length = 0;
  if (text == nullptr) {
    return false;
  }
  if (text[0] == Char('\n')) {
    length = 1;
  } else if (text[0] == Char('\r') && text[1] == Char('\n')) {
    length = 2;
  }
  return length > 0;
}

bool IsAlphaNumeric(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

void AppendEscaped(ZQString &target, char c) {
  if (!IsAlphaNumeric(c)) {
    target += '\\';
  }
  target += c;
}

/// Position of the `]` that closes a class opened at `open`, or -1. A leading `!` and then
/// a leading `]` belong to the class.
long long ClassEnd(ZQString const &pattern, long long open) {
  long long const size = pattern.Size();
  long long i = open + 1;
  if (i < size && pattern[i] == '!') {
    ++i;
  }
  if (i < size && pattern[i] == ']') {
    ++i;
  }
  for (; i < size; ++i) {
    if (pattern[i] == ']') {
      return i;
    }
  }
  return -1;
}

void AppendClass(ZQString &target, ZQString const &pattern, long long open, long long close) {
  target += '[';
  for (long long i = open + 1; i < close; ++i) {
    char const c = pattern[i];
    if (i == open + 1 && c == '!') {
      target += '^';
      continue;
    }
    if (i == open + 1 && c == '^') {
      target += '\\';
    }
    target += c;
    if (c == '\\') {
      target += '\\';
    }
  }
  target += ']';
}

void AppendAlternative(ZQString &result, ZQString &item) {
  if (!item.IsEmpty()) {
    if (!result.IsEmpty()) {
      result += '|';
    }
    result += '^';
    result += item;
  }
  item.Clear();
}

ZQString Quoted(ZQString const &text) {
  ZQString quoted;
  quoted.Reserve(text.Size() + 2);
  quoted += '\'';
  quoted += text;
  quoted += '\'';
  return quoted;
}

// The value parts of the keyed lines, one per kind of mapped value.
void AppendValue(ZQString &line, ZQString const &value) { line += Quoted(value); }

/// "%d" or "%lld", the default formats of the two integer widths.
template <typename N> void AppendNumber(ZQString &line, N value) { line.Add(value, nullptr); }

template <typename N, typename = std::enable_if_t<std::is_integral_v<N>>> void AppendValue(ZQString &line, N value) {
  line += '\'';
  AppendNumber(line, value);
  line += '\'';
}

template <typename N> void AppendValue(ZQString &line, ZQSetNativeType<N> const &set) {
  line += '(';
  bool first = true;
  for (N value : set) {
    if (!first) {
      line += ' ';
    }
    AppendNumber(line, value);
    first = false;
  }
  line += ')';
}

/// Lines "<prefix>'<key>'<padding>: <value>", keys padded to the longest quoted key.
template <typename Map> ZQString KeyedLines(Map const &map, char const *prefix) {
  ZQString result;
  if (map.empty()) {
    return result;
  }
  ZQString const lead(prefix);
  long long width = 0;
  for (auto const &entry : map) {
    width = std::max(width, entry.first.Size() + 2);
  }
  result.Reserve(static_cast<long long>(map.size()) * (lead.Size() + width + 16));
  for (auto const &entry : map) {
    ZQString const key = Quoted(entry.first);
    result += lead;
    result += key;
    for (long long pad = key.Size(); pad < width; ++pad) {
      result += ' ';
    }
    result += ": ";
    AppendValue(result, entry.second);
    result += ZQString::GetNewline();
  }
  return result;
}

} // namespace

ZQString ZQStringUtil::GetIndent() { return ZQString(ZQString::GetIndent()); }

int ZQStringUtil::strcasecmp(char const *a, char const *b) {
  int const pointers = ComparePointers(a, b);
  return pointers != 2 ? pointers : CompareCaseBlind(a, b, ~0ULL);
}

int ZQStringUtil::strncasecmp(char const *a, char const *b, unsigned long long n) {
  int const pointers = ComparePointers(a, b);
  return pointers != 2 ? pointers : CompareCaseBlind(a, b, n);
}

bool ZQStringUtil::IsNewline(char const *text, long long &length) { return StartsWithNewline(text, length); }

bool ZQStringUtil::IsNewline(wchar_t const *text, long long &length) { return StartsWithNewline(text, length); }

ZQResult ZQStringUtil::Copy(ZQContext * /*context*/, char const *source, long long &size, char *target) {
  if (size > 0) {
    target[0] = '\0';
  }
  long long const need = source != nullptr ? static_cast<long long>(std::strlen(source)) + 1 : 0;
  long long const copied = std::max(0LL, std::min(need, size));
  if (copied > 0) {
    std::memcpy(target, source, static_cast<std::size_t>(copied));
    target[copied - 1] = '\0';
  }
  auto const status = copied < need ? Types::StatusCode_t::StringTruncationError : Types::StatusCode_t::Success;
  return ZQResult(static_cast<long long>(status));
}

ZQString ZQStringUtil::EscapeNonAlphaNumCharacters(ZQString const &text) {
  ZQString result;
  result.Reserve(2 * text.Size());
  for (long long i = 0; i < text.Size(); ++i) {
    AppendEscaped(result, text[i]);
  }
  return result;
}

ZQString ZQStringUtil::ShellPatternToRegularExpression(ZQString const &pattern) {
  ZQString result;
  result.Reserve(4 * pattern.Size());
  for (long long i = 0; i < pattern.Size(); ++i) {
    char const c = pattern[i];
    if (c == '*') {
      result += ".*";
    } else if (c == '?') {
      result += '.';
    } else if (c != '[') {
      AppendEscaped(result, c);
    } else if (long long const close = ClassEnd(pattern, i); close < 0) {
      result += "\\[";
    } else {
      AppendClass(result, pattern, i, close);
      i = close;
    }
  }
  result += '$';
  return result;
}

ZQString ZQStringUtil::PrefixListToRegularExpression(ZQString const &list, char separator) {
  ZQString result;
  ZQString item;
  result.Reserve(4 * list.Size());
  item.Reserve(4 * list.Size());
  for (long long i = 0; i < list.Size(); ++i) {
    if (list[i] == separator) {
      AppendAlternative(result, item);
    } else {
      AppendEscaped(item, list[i]);
    }
  }
  AppendAlternative(result, item);
  return result;
}

ZQString ZQStringUtil::ToTitleString(ZQString const &title) { return ToTitleString(title, ZQString()); }

ZQString ZQStringUtil::ToTitleString(ZQString const &title, ZQString const &name) {
  ZQString result;
  if (title.IsEmpty() && name.IsEmpty()) {
    return result;
  }
  result += "========";
  if (!title.IsEmpty()) {
    result += ' ';
    result += title;
  }
  if (!name.IsEmpty()) {
    result += ' ';
    result += Quoted(name);
  }
  result += " ========";
  return result;
}

ZQString ZQStringUtil::ToString(ZQSetObjectType<ZQString> const &set, char const *prefix) {
  ZQString result;
  ZQString const lead(prefix);
  result.Reserve(static_cast<long long>(set.size()) * (lead.Size() + 16));
  for (ZQString const &element : set) {
    result += lead;
    result += Quoted(element);
    result += ZQString::GetNewline();
  }
  return result;
}

ZQString ZQStringUtil::ToString(ZQMapObjectTypes<ZQString, ZQString> const &map, char const *prefix) {
  return KeyedLines(map, prefix);
}

ZQString ZQStringUtil::ToString(ZQMapNativeValueType<ZQString, int> const &map, char const *prefix) {
  return KeyedLines(map, prefix);
}

ZQString ZQStringUtil::ToString(ZQMapNativeValueType<ZQString, long long> const &map, char const *prefix) {
  return KeyedLines(map, prefix);
}

ZQString ZQStringUtil::ToString(ZQMapObjectTypes<ZQString, ZQSetNativeType<int>> const &map, char const *prefix) {
  return KeyedLines(map, prefix);
}

ZQString ZQStringUtil::ToString(ZQMapObjectTypes<ZQString, ZQSetNativeType<long long>> const &map, char const *prefix) {
  return KeyedLines(map, prefix);
}

ZQString ZQStringUtil::ToString(ZQMapObjectTypes<ZQString, ZQMapNativeKeyType<long long, ZQString>> const &map,
                                char const *prefix) {
  ZQString result;
  ZQString const lead(prefix);
  result.Reserve(static_cast<long long>(map.size()) * (lead.Size() + 32));
  for (auto const &outer : map) {
    result += lead;
    result += Quoted(outer.first);
    result += ':';
    result += ZQString::GetNewline();
    for (auto const &inner : outer.second) {
      result += lead;
      result += ZQString::GetIndent();
      result.Add(inner.first, "%lld");
      result += ':';
      result.Add(inner.second, " '%s'");
      result += ZQString::GetNewline();
    }
  }
  return result;
}

} // namespace Velmora::Tessara::ZQ::Core

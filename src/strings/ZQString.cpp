// ZQString: UTF-8 text handled byte by byte, with parsing, searching and environment expansion.
#include <zqcore/strings/ZQString.h>

#include <zqcore/core/ZQExports.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/system/ZQOSUtil.h>

#include "core/detail/Fatal.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <unistd.h>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Velmora::Tessara::ZQ::Core {

namespace {

using Bytes = std::string_view;
constexpr std::size_t npos = std::string::npos;

bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

char LowerByte(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// True when `text`, lowered byte by byte, equals `lowerWord`.
bool EqualsLowered(Bytes text, Bytes lowerWord) {
  return text.size() == lowerWord.size() &&
         std::equal(text.begin(), text.end(), lowerWord.begin(), [](char a, char b) { return LowerByte(a) == b; });
}

// `text` without the whitespace at both ends.
Bytes Trimmed(Bytes text) {
  while (!text.empty() && IsSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

long long Position(std::size_t at) { return at == npos ? -1 : static_cast<long long>(at); }

// First occurrence of `pattern` at or behind `from`, or npos.
std::size_t FindBytes(std::string const &text, Bytes pattern, std::size_t from) {
  if (from > text.size())
    return npos;
  void const *found = memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
  return found == nullptr ? npos : static_cast<std::size_t>(static_cast<char const *>(found) - text.data());
}

bool StartsWithBytes(std::string const &text, Bytes pattern) {
  return !text.empty() && Bytes(text).substr(0, pattern.size()) == pattern;
}

bool EndsWithBytes(std::string const &text, Bytes pattern) {
  return !text.empty() && pattern.size() <= text.size() && Bytes(text).substr(text.size() - pattern.size()) == pattern;
}

// Visits the starts of the non-overlapping occurrences of `pattern`, from the left. An
// empty pattern has none: it would match at the same place for ever. Many short gaps make
// the plain search cheaper here than memmem, whose set-up is paid per call.
template <typename Visit> void ForEachOccurrence(std::string const &text, Bytes pattern, Visit visit) {
  if (pattern.empty())
    return;
  for (std::size_t at = text.find(pattern.data(), 0, pattern.size()); at != npos;
       at = text.find(pattern.data(), at + pattern.size(), pattern.size())) {
    visit(at);
  }
}

long long CountOccurrences(std::string const &text, Bytes pattern) {
  long long count = 0;
  ForEachOccurrence(text, pattern, [&](std::size_t) { ++count; });
  return count;
}

// Replaces every occurrence of `from` by `to` in one new string sized up front; either
// view may point into `text`, which stays untouched until the swap.
long long ReplaceAll(std::string &text, Bytes from, Bytes to) {
  std::vector<std::size_t> matches;
  ForEachOccurrence(text, from, [&](std::size_t at) { matches.push_back(at); });
  if (matches.empty())
    return 0;
  std::string result;
  result.reserve(text.size() - matches.size() * from.size() + matches.size() * to.size());
  std::size_t start = 0;
  for (std::size_t at : matches) {
    result.append(text, start, at - start);
    result.append(to);
    start = at + from.size();
  }
  result.append(text, start, npos);
  text.swap(result);
  return static_cast<long long>(matches.size());
}

void StripSpaceLeft(std::string &text) {
  text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), IsSpace));
}

void StripSpaceRight(std::string &text) {
  text.erase(std::find_if_not(text.rbegin(), text.rend(), IsSpace).base(), text.end());
}

void StripTextLeft(std::string &text, Bytes pattern) {
  if (StartsWithBytes(text, pattern))
    text.erase(0, pattern.size());
}

void StripTextRight(std::string &text, Bytes pattern) {
  if (EndsWithBytes(text, pattern))
    text.resize(text.size() - pattern.size());
}

template <typename Test> bool EveryByte(std::string const &text, Test test) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [&](char c) { return test(static_cast<unsigned char>(c)) != 0; });
}

// At least one letter, and every letter passes `inCase`.
template <typename Test> bool LettersAllIn(std::string const &text, Test inCase) {
  bool anyLetter = false;
  for (char c : text) {
    auto const byte = static_cast<unsigned char>(c);
    if (std::isalpha(byte) == 0)
      continue;
    if (inCase(byte) == 0)
      return false;
    anyLetter = true;
  }
  return anyLetter;
}

template <typename Map> void MapBytes(std::string &text, Map map) {
  for (char &c : text)
    c = static_cast<char>(map(static_cast<unsigned char>(c)));
}

// Sizes for the narrow string underneath; beyond its limit it raises its length error.
std::size_t CheckedSize(std::string const &text, long long n) {
  if (n < 0 || static_cast<unsigned long long>(n) > text.max_size()) {
    throw std::length_error("string too long");
  }
  return static_cast<std::size_t>(n);
}

// ---- Formatting ladder ----

constexpr int kNumberBufferSize = 64;
constexpr int kTextBufferSize = 256;
constexpr int kMediumBufferSize = 4096;

template <typename Value>
void AppendFormattedInto(std::string &text, char *buffer, std::size_t size, int expected, char const *format,
                         Value value) {
  int const length = std::snprintf(buffer, size, format, value);
  if (length < 0 || length > expected)
    ZQ_AbortWithErrno(-1);
  text.append(buffer, static_cast<std::size_t>(length));
}

// Formats `value` on the stack when it fits, growing to 256 and 4096 bytes and only then
// to the heap; the first formatting tells the length. A formatter error ends the process.
template <typename Value> void AppendFormatted(std::string &text, int firstSize, char const *format, Value value) {
  char small[kTextBufferSize];
  int const length = std::snprintf(small, static_cast<std::size_t>(firstSize), format, value);
  if (length < 0)
    ZQ_AbortWithErrno(-1);
  if (length < firstSize) {
    text.append(small, static_cast<std::size_t>(length));
  } else if (length < kTextBufferSize) {
    AppendFormattedInto(text, small, sizeof small, length, format, value);
  } else if (length < kMediumBufferSize) {
    char medium[kMediumBufferSize];
    AppendFormattedInto(text, medium, sizeof medium, length, format, value);
  } else {
    auto const size = static_cast<std::size_t>(length) + 1;
    std::unique_ptr<char[]> large(new char[size]);
    AppendFormattedInto(text, large.get(), size, length, format, value);
  }
}

// What a stream with the classic locale writes for `value` at `precision` in its default
// notation: printf's "%.<precision>g" in the "C" locale, whatever the current locale.
void AppendClassicGeneral(std::string &text, double value, int precision) {
  char buffer[64];
  auto const result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, precision);
  text.append(buffer, result.ptr);
}

// ---- Parsers ----

template <typename Int> Int ParseWithStrtol(std::string const &text, bool &failed) {
  failed = false;
  if (!text.empty()) {
    char const *begin = text.c_str();
    char *end = nullptr;
    errno = 0;
    long const value = std::strtol(begin, &end, 10);
    bool const rangeError = errno == ERANGE && (value == LONG_MIN || value == LONG_MAX);
    bool const otherError = errno != 0 && value == 0;
    bool const nothingRead = end == begin && value == 0;
    // strtol reads 64 bits here, so the type's own range decides for 32 bits as well.
    bool const outOfType = value < std::numeric_limits<Int>::min() || value > std::numeric_limits<Int>::max();
    if (!rangeError && !otherError && !nothingRead && !outOfType)
      return static_cast<Int>(value);
  }
  failed = true;
  return std::numeric_limits<Int>::max();
}

bool ScanReal(char const *text, float &value) { return std::sscanf(text, "%f", &value) == 1; }
bool ScanReal(char const *text, double &value) { return std::sscanf(text, "%lf", &value) == 1; }

bool IsClassicSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDecimalDigit(char c) { return c >= '0' && c <= '9'; }

template <typename Real> bool ExtractWithClassicStream(std::string const &text, Real &value) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  stream >> value;
  return !stream.fail();
}

// The extraction of a classic-locale stream without building one: after leading blanks
// it takes a sign, digits with at most one point, and an exponent once a digit was seen;
// the number is good when the mantissa has a digit and a started exponent has one too.
// Values that do not convert plainly (out of range) are left to the stream itself.
template <typename Real> bool ExtractClassic(std::string const &text, Real &value) {
  char const *p = text.data();
  char const *const end = p + text.size();
  while (p < end && IsClassicSpace(*p))
    ++p;
  char const *const start = p;
  if (p < end && (*p == '+' || *p == '-'))
    ++p;
  bool mantissaDigit = false;
  bool point = false;
  for (; p < end; ++p) {
    if (IsDecimalDigit(*p)) {
      mantissaDigit = true;
    } else if (*p == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (!mantissaDigit)
    return false;
  if (p < end && (*p == 'e' || *p == 'E')) {
    ++p;
    if (p < end && (*p == '+' || *p == '-'))
      ++p;
    char const *const exponent = p;
    while (p < end && IsDecimalDigit(*p))
      ++p;
    if (p == exponent)
      return false;
  }
  auto const result = std::from_chars(*start == '+' ? start + 1 : start, p, value);
  if (result.ec == std::errc() && result.ptr == p)
    return true;
  return ExtractWithClassicStream(text, value);
}

// "nan", "inf" and "-inf" in any case, with blanks around them.
template <typename Real> bool ParseSpecialReal(std::string const &text, Real &value) {
  Bytes const word = Trimmed(text);
  if (EqualsLowered(word, "nan")) {
    value = std::numeric_limits<Real>::quiet_NaN();
  } else if (EqualsLowered(word, "inf")) {
    value = std::numeric_limits<Real>::infinity();
  } else if (word.size() == 4 && word.front() == '-' && EqualsLowered(word.substr(1), "inf")) {
    value = -std::numeric_limits<Real>::infinity();
  } else {
    return false;
  }
  return true;
}

template <typename Real> Real ParseReal(std::string const &text, bool &failed, bool useScanner) {
  failed = false;
  Real value = 0;
  if (!text.empty()) {
    bool const parsed = useScanner ? ScanReal(text.c_str(), value) : ExtractClassic(text, value);
    if (parsed || ParseSpecialReal(text, value))
      return value;
  }
  failed = true;
  return std::numeric_limits<Real>::max();
}

// ---- Environment expansion ----

char ClosingDelimiter(char open) {
  switch (open) {
  case '{':
    return '}';
  case '(':
    return ')';
  case '%':
    return '%';
  default:
    return '\0';
  }
}

// Finds the variables of a text one at a time. Besides the look-up it tracks the
// environment entries that begin with the name read so far: a name that begins none can
// grow into no defined one, so the walk ends there instead of running to the end of the text.
class VariableScanner {
public:
  /// Position behind the variable that begins at `at`, its value in `Value()`; npos if none.
  std::size_t VariableEnd(std::string const &text, std::size_t at) {
    std::size_t begin = text[at] == '$' ? at + 1 : at;
    char const close = begin < text.size() ? ClosingDelimiter(text[begin]) : '\0';
    if (close != '\0')
      ++begin;
    StartName();
    for (std::size_t q = begin; q < text.size(); ++q) {
      char const c = text[q];
      if (c == close || IsSpace(c) || !ExtendName(c))
        return npos;
      if (!IsNameDefined())
        continue;
      if (close == '\0')
        return q + 1;
      if (q + 1 < text.size() && text[q + 1] == close)
        return q + 2;
    }
    return npos;
  }

  ZQString const &Value() const { return value; }

private:
  void StartName() {
    name.clear();
    candidates.clear();
    for (char **entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
      candidates.push_back(*entry);
    }
  }

  bool ExtendName(char c) {
    std::size_t const at = name.size();
    auto const mismatch = [&](char const *entry) { return c == '\0' || entry[at] != c; };
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(), mismatch), candidates.end());
    name += c;
    return !candidates.empty();
  }

  // An empty value counts as undefined.
  bool IsNameDefined() { return ZQOSUtil::GetEnv(nullptr, name.c_str(), value) && !value.IsEmpty(); }

  std::string name;
  std::vector<char const *> candidates;
  ZQString value;
};

void ExpandEnvironment(std::string &text) {
  std::string expanded;
  expanded.reserve(2 * text.size());
  VariableScanner scanner;
  bool anyExpansion = false;
  std::size_t p = 0;
  while (p < text.size()) {
    std::size_t const mark = std::min(text.find_first_of("$%", p), text.size());
    expanded.append(text, p, mark - p);
    p = mark;
    if (p == text.size())
      break;
    std::size_t const end = scanner.VariableEnd(text, p);
    if (end == npos) {
      expanded += text[p++];
      continue;
    }
    expanded.append(scanner.Value().c_str(), static_cast<std::size_t>(scanner.Value().Size()));
    anyExpansion = true;
    p = end;
  }
  if (anyExpansion)
    text.swap(expanded);
}

struct SpecialSlot {
  std::string value;
  std::vector<char const *> names;
};

std::string FirstSetValue(std::initializer_list<char const *> names) {
  ZQString value;
  for (char const *name : names) {
    if (ZQOSUtil::GetEnv(nullptr, name, value) && !value.IsEmpty())
      break;
  }
  return value.c_str();
}

std::vector<SpecialSlot> SpecialSlots() {
  std::string libraryDirectory = FirstSetValue({"ZQ_TMPDIR"});
  if (libraryDirectory.empty())
    libraryDirectory = FirstSetValue({"TEMP", "TMP", "TMPDIR"});
  if (libraryDirectory.empty())
    libraryDirectory = "/tmp";
  return {{FirstSetValue({"USERNAME", "USER"}), {"USERNAME", "USER"}},
          {FirstSetValue({"HOSTNAME", "COMPUTERNAME", "HOST"}), {"HOSTNAME", "COMPUTERNAME", "HOST"}},
          {std::to_string(ZQOSUtil::GetPID()), {"PID"}},
          {FirstSetValue({"TEMP"}), {"TEMP", "TMP", "TMPDIR"}},
          {FirstSetValue({"TMP"}), {"TMP", "TEMP", "TMPDIR"}},
          {FirstSetValue({"TMPDIR"}), {"TMPDIR", "TEMP", "TMP"}},
          {libraryDirectory, {"ZQ_TMPDIR"}}};
}

enum class SweepOutcome { NothingReplaced, Replaced, Overgrown };

// One pass over every token of every slot that has a value. It stops early, with the text
// half swept, once the text is longer than `bound`: a value that holds its own token can
// multiply the text within one pass.
SweepOutcome SweepSpecialTokens(std::string &text, std::vector<SpecialSlot> const &slots, std::size_t bound) {
  static constexpr char kStarts[] = {'$', '%'};
  static constexpr char const *kPairs[] = {"{}", "()", "%%"};
  bool replaced = false;
  std::string token;
  for (SpecialSlot const &slot : slots) {
    if (slot.value.empty())
      continue;
    for (char const *name : slot.names) {
      for (char start : kStarts) {
        for (char const *pair : kPairs) {
          token.assign(1, start);
          if (pair[0] != start)
            token += pair[0];
          token += name;
          token += pair[1];
          replaced = ReplaceAll(text, token, slot.value) > 0 || replaced;
          if (text.size() > bound)
            return SweepOutcome::Overgrown;
        }
      }
    }
  }
  return replaced ? SweepOutcome::Replaced : SweepOutcome::NothingReplaced;
}

// The longest text that expanding specials may produce. A chain of values that ends
// spells each of them out a bounded number of times; only a value that holds its own
// token, directly or through another value, keeps growing past this.
std::size_t SpecialGrowthBound(std::string const &text, std::vector<SpecialSlot> const &slots) {
  std::size_t spelled = text.size();
  for (SpecialSlot const &slot : slots)
    spelled += slot.value.size();
  return 64 * spelled;
}

// Sweeps until a sweep replaces nothing. A sweep that brings back a text already seen (two
// values naming each other) or that grows the text past the bound would repeat for ever;
// the text then stays as it was before that sweep.
void ExpandSpecials(std::string &text) {
  std::vector<SpecialSlot> const slots = SpecialSlots();
  std::size_t const bound = SpecialGrowthBound(text, slots);
  std::hash<std::string> const hashOf;
  std::unordered_set<std::size_t> seen{hashOf(text)};
  std::string swept = text;
  while (SweepSpecialTokens(swept, slots, bound) == SweepOutcome::Replaced && seen.insert(hashOf(swept)).second)
    text = swept;
}

} // namespace

// ---- Construction and assignment ----

ZQString::ZQString() = default;

ZQString::ZQString(char c) : text(1, c) {}

ZQString::ZQString(wchar_t c) { *this = c; }

ZQString::ZQString(char const *other) : text(other != nullptr ? other : "") {}

ZQString::ZQString(char const *bytes, long long size) {
  if (bytes != nullptr && size > 0)
    text.assign(bytes, static_cast<std::size_t>(size));
}

ZQString::ZQString(wchar_t const *wide) { ZQStringEncoding::WideToUTF8(nullptr, wide, text); }

ZQString::ZQString(wchar_t const *wide, long long size) { ZQStringEncoding::WideToUTF8(nullptr, wide, size, text); }

ZQString::ZQString(ZQString const &other) : text(other.text) {}

ZQString::ZQString(ZQString &&other) noexcept : text(std::move(other.text)) {}

ZQString::~ZQString() = default;

ZQString &ZQString::operator=(char c) {
  text.assign(1, c);
  return *this;
}

ZQString &ZQString::operator=(wchar_t c) {
  wchar_t const source[] = {c, L'\0'};
  ZQStringEncoding::WideToUTF8(nullptr, source, text);
  return *this;
}

ZQString &ZQString::operator=(char const *other) {
  text.assign(other != nullptr ? other : "");
  return *this;
}

ZQString &ZQString::operator=(wchar_t const *wide) {
  ZQStringEncoding::WideToUTF8(nullptr, wide, text);
  return *this;
}

ZQString &ZQString::operator=(ZQString const &other) {
  Copy(other);
  return *this;
}

ZQString &ZQString::operator=(ZQString &&other) noexcept {
  text = std::move(other.text);
  return *this;
}

void ZQString::Copy(ZQString const &other) {
  if (this != &other)
    text = other.text;
}

// ---- Appending ----

ZQString &ZQString::operator+=(char c) {
  text += c;
  return *this;
}

ZQString &ZQString::operator+=(char const *other) {
  if (other != nullptr)
    text += other;
  return *this;
}

ZQString &ZQString::operator+=(wchar_t c) { return *this += ZQString(c); }

ZQString &ZQString::operator+=(wchar_t const *wide) { return *this += ZQString(wide); }

ZQString &ZQString::operator+=(ZQString const &other) {
  text += other.text;
  return *this;
}

void ZQString::Add(char value, char const *format) {
  if (format == nullptr) {
    text += value;
  } else {
    AppendFormatted(text, kNumberBufferSize, format, value);
  }
}

void ZQString::Add(signed char value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetInt8Format(), value);
}

void ZQString::Add(short value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetInt16Format(), value);
}

void ZQString::Add(int value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetInt32Format(), value);
}

void ZQString::Add(long long value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetInt64Format(), value);
}

void ZQString::Add(float value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetFloat32Format(), static_cast<double>(value));
}

void ZQString::Add(double value, char const *format) {
  AppendFormatted(text, kNumberBufferSize, format != nullptr ? format : GetFloat64Format(), value);
}

void ZQString::Add(char const *value, char const *format) {
  if (value == nullptr)
    return;
  if (format == nullptr) {
    text += value;
  } else {
    AppendFormatted(text, kTextBufferSize, format, value);
  }
}

void ZQString::Add(ZQString const &value, char const *format) { Add(value.c_str(), format); }

void ZQString::Add(float value) { AppendClassicGeneral(text, static_cast<double>(value), 8); }

void ZQString::Add(double value) { AppendClassicGeneral(text, value, 16); }

char const *ZQString::GetNewline() { return "\n"; }
char const *ZQString::GetIndent() { return "    "; }
char const *ZQString::GetInt8Format() { return "%hhd"; }
char const *ZQString::GetInt16Format() { return "%hd"; }
char const *ZQString::GetInt32Format() { return "%d"; }
char const *ZQString::GetInt64Format() { return "%lld"; }
char const *ZQString::GetFloat32Format() { return "%.8g"; }
char const *ZQString::GetFloat64Format() { return "%.16g"; }

// ---- Access and size ----

char const *ZQString::c_str() const { return text.c_str(); }

long long ZQString::Size() const { return static_cast<long long>(text.size()); }

bool ZQString::IsEmpty() const { return text.empty(); }

bool ZQString::IsInitialized() const { return !text.empty(); }

bool ZQString::IsValidIndex(long long i) const { return -Size() < i && i < Size(); }

char &ZQString::operator[](long long i) { return text[static_cast<std::size_t>(i < 0 ? i + Size() : i)]; }

char const &ZQString::operator[](long long i) const { return text[static_cast<std::size_t>(i < 0 ? i + Size() : i)]; }

char ZQString::at(long long i) const { return (*this)[i]; }

void ZQString::Clear() { text.clear(); }

void ZQString::Reset() { Clear(); }

void ZQString::Resize(long long n) { text.resize(CheckedSize(text, n)); }

void ZQString::Reserve(long long n) { text.reserve(CheckedSize(text, n)); }

ZQString ZQString::ToString() const { return *this; }

std::wstring ZQString::AsTEXT() const {
  std::wstring wide;
  ZQStringEncoding::UTF8ToWide(nullptr, text.c_str(), wide);
  return wide;
}

unsigned long long ZQString::Hash() const {
  unsigned long long hash = 0;
  unsigned shift = 0;
  for (char c : text) {
    auto const extended = static_cast<unsigned long long>(static_cast<long long>(static_cast<signed char>(c)));
    hash ^= extended << (shift % 64u);
    shift += 8;
  }
  return hash;
}

// ---- Comparison ----

bool ZQString::operator==(ZQString const &other) const { return text == other.text; }
bool ZQString::operator!=(ZQString const &other) const { return text != other.text; }
bool ZQString::operator<(ZQString const &other) const { return text < other.text; }
bool ZQString::operator<=(ZQString const &other) const { return text <= other.text; }
bool ZQString::operator>(ZQString const &other) const { return text > other.text; }
bool ZQString::operator>=(ZQString const &other) const { return text >= other.text; }
bool ZQString::operator==(char const *other) const { return other != nullptr && text.compare(other) == 0; }
bool ZQString::operator!=(char const *other) const { return other == nullptr || text.compare(other) != 0; }
bool ZQString::operator<(char const *other) const { return other != nullptr && text.compare(other) < 0; }
bool ZQString::operator<=(char const *other) const { return other != nullptr && text.compare(other) <= 0; }
bool ZQString::operator>(char const *other) const { return other != nullptr && text.compare(other) > 0; }
bool ZQString::operator>=(char const *other) const { return other != nullptr && text.compare(other) >= 0; }

int ZQString::Compare(ZQString const &other) const {
  int const order = text.compare(other.text);
  return (order > 0) - (order < 0);
}

// ---- Search ----

bool ZQString::Contains(char c) const { return Find(c) != -1; }
bool ZQString::Contains(char const *pattern) const { return Find(pattern) != -1; }
bool ZQString::Contains(ZQString const &pattern) const { return Find(pattern) != -1; }

long long ZQString::Find(char c) const { return Position(text.find(c)); }

long long ZQString::Find(char const *pattern) const {
  return pattern == nullptr ? -1 : Position(FindBytes(text, pattern, 0));
}

long long ZQString::Find(ZQString const &pattern) const { return Position(FindBytes(text, pattern.text, 0)); }

long long ZQString::ReverseFind(char c) const { return Position(text.rfind(c)); }

long long ZQString::ReverseFind(char const *pattern) const {
  return pattern == nullptr ? -1 : Position(text.rfind(pattern));
}

long long ZQString::ReverseFind(ZQString const &pattern) const { return Position(text.rfind(pattern.text)); }

long long ZQString::Count(char c) const { return static_cast<long long>(std::count(text.begin(), text.end(), c)); }

long long ZQString::Count(char const *pattern) const {
  return pattern == nullptr ? 0 : CountOccurrences(text, pattern);
}

long long ZQString::Count(ZQString const &pattern) const { return CountOccurrences(text, pattern.text); }

bool ZQString::StartsWith(char c) const { return !text.empty() && text.front() == c; }

bool ZQString::StartsWith(char const *pattern) const { return pattern != nullptr && StartsWithBytes(text, pattern); }

bool ZQString::StartsWith(ZQString const &pattern) const { return StartsWithBytes(text, pattern.text); }

bool ZQString::EndsWith(char c) const { return !text.empty() && text.back() == c; }

bool ZQString::EndsWith(char const *pattern) const { return pattern != nullptr && EndsWithBytes(text, pattern); }

bool ZQString::EndsWith(ZQString const &pattern) const { return EndsWithBytes(text, pattern.text); }

// ---- Classification ----

bool ZQString::IsAlphaNumeric() const {
  return EveryByte(text, [](unsigned char c) { return std::isalnum(c); });
}
bool ZQString::IsAlphabetic() const {
  return EveryByte(text, [](unsigned char c) { return std::isalpha(c); });
}
bool ZQString::IsDigit() const {
  return EveryByte(text, [](unsigned char c) { return std::isdigit(c); });
}
bool ZQString::IsSpace() const {
  return EveryByte(text, [](unsigned char c) { return std::isspace(c); });
}
bool ZQString::IsBlank() const {
  return EveryByte(text, [](unsigned char c) { return c == ' ' || c == '\t'; });
}
bool ZQString::IsLower() const {
  return LettersAllIn(text, [](unsigned char c) { return std::islower(c); });
}
bool ZQString::IsUpper() const {
  return LettersAllIn(text, [](unsigned char c) { return std::isupper(c); });
}

// ---- Modification ----

ZQString &ZQString::Lower() {
  MapBytes(text, [](unsigned char c) { return std::tolower(c); });
  return *this;
}

ZQString &ZQString::Upper() {
  MapBytes(text, [](unsigned char c) { return std::toupper(c); });
  return *this;
}

ZQString &ZQString::Capitalize() {
  Lower();
  if (!text.empty())
    text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  return *this;
}

ZQString &ZQString::SwapCase() {
  MapBytes(text, [](unsigned char c) {
    return std::isupper(c) != 0 ? std::tolower(c) : std::islower(c) != 0 ? std::toupper(c) : c;
  });
  return *this;
}

ZQString &ZQString::Reverse() {
  std::reverse(text.begin(), text.end());
  return *this;
}

ZQString &ZQString::Replace(char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return *this;
}

ZQString &ZQString::Replace(char const *from, char const *to) {
  if (from != nullptr)
    ReplaceAll(text, from, to != nullptr ? Bytes(to) : Bytes());
  return *this;
}

ZQString &ZQString::Replace(ZQString const &from, ZQString const &to) {
  ReplaceAll(text, from.text, to.text);
  return *this;
}

ZQString &ZQString::LeftStrip(char const *pattern) {
  if (pattern == nullptr) {
    StripSpaceLeft(text);
  } else {
    StripTextLeft(text, pattern);
  }
  return *this;
}

ZQString &ZQString::LeftStrip(ZQString const &pattern) {
  if (pattern.IsEmpty()) {
    StripSpaceLeft(text);
  } else {
    StripTextLeft(text, pattern.text);
  }
  return *this;
}

ZQString &ZQString::RightStrip(char const *pattern) {
  if (pattern == nullptr) {
    StripSpaceRight(text);
  } else {
    StripTextRight(text, pattern);
  }
  return *this;
}

ZQString &ZQString::RightStrip(ZQString const &pattern) {
  if (pattern.IsEmpty()) {
    StripSpaceRight(text);
  } else {
    StripTextRight(text, pattern.text);
  }
  return *this;
}

ZQString &ZQString::Strip(char const *pattern) { return LeftStrip(pattern).RightStrip(pattern); }

ZQString &ZQString::Strip(ZQString const &pattern) { return LeftStrip(pattern).RightStrip(pattern); }

ZQString &ZQString::NormalizePath() {
  if (text.size() < 2)
    return *this;
  // Dropping each slash that lands behind a backslash is what repeated replacement of
  // backslash-slash by backslash comes to, in one pass.
  std::size_t kept = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '/' && kept > 0 && text[kept - 1] == '\\')
      continue;
    text[kept++] = text[i];
  }
  text.resize(kept);
  return *this;
}

ZQString &ZQString::ExpandEnvironVars(bool expandSpecials) {
  if (text.empty())
    return *this;
  ExpandEnvironment(text);
  if (expandSpecials)
    ExpandSpecials(text);
  return *this;
}

// ---- Derivation ----

ZQString ZQString::Substring(long long start, long long end) const {
  long long const from = std::clamp(start, 0LL, Size());
  long long const to = std::clamp(end, 0LL, Size());
  return to > from ? ZQString(text.data() + from, to - from) : ZQString();
}

ZQString ZQString::CommonPrefix(ZQString const &other) const {
  std::size_t const n = std::min(text.size(), other.text.size());
  auto const ends = std::mismatch(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(n), other.text.begin());
  return ZQString(text.data(), ends.first - text.begin());
}

ZQString ZQString::CommonSuffix(ZQString const &other) const {
  // Same indexes in both, from the smaller size down, the terminators included.
  std::size_t const n = std::min(text.size(), other.text.size());
  char const *mine = text.c_str();
  char const *theirs = other.text.c_str();
  std::size_t first = n + 1;
  while (first > 0 && mine[first - 1] == theirs[first - 1])
    --first;
  return ZQString(mine + first, static_cast<long long>(n + 1 - first));
}

// ---- Parsing ----

bool ZQString::AsBoolean() const {
  switch (text.size()) {
  case 0:
    return false;
  case 1:
    return text[0] != '0';
  case 2:
    return LowerByte(text[0]) != 'n' && LowerByte(text[1]) != 'o';
  case 5:
    for (std::size_t i = 0; i < 5; ++i) {
      if (LowerByte(text[i]) == "false"[i])
        return false;
    }
    return true;
  default: {
    Bytes const word = Trimmed(text);
    return !(word.empty() || EqualsLowered(word, "0") || EqualsLowered(word, "no") || EqualsLowered(word, "false"));
  }
  }
}

signed char ZQString::AsInt8() const {
  bool failed = false;
  return AsInt8(failed);
}

signed char ZQString::AsInt8(bool &failed) const { return ParseWithStrtol<signed char>(text, failed); }

short ZQString::AsInt16() const {
  bool failed = false;
  return AsInt16(failed);
}

short ZQString::AsInt16(bool &failed) const { return ParseWithStrtol<short>(text, failed); }

int ZQString::AsInt32() const {
  bool failed = false;
  return AsInt32(failed);
}

int ZQString::AsInt32(bool &failed) const { return ParseWithStrtol<int>(text, failed); }

long long ZQString::AsInt64() const {
  bool failed = false;
  return AsInt64(failed);
}

long long ZQString::AsInt64(bool &failed) const {
  failed = false;
  long long value = 0;
  if (!text.empty() && std::sscanf(text.c_str(), "%lld", &value) == 1)
    return value;
  failed = true;
  return std::numeric_limits<long long>::max();
}

long long ZQString::AsSSize() const { return AsInt64(); }

long long ZQString::AsSSize(bool &failed) const { return AsInt64(failed); }

float ZQString::AsFloat32(bool useScanner) const {
  bool failed = false;
  return AsFloat32(failed, useScanner);
}

float ZQString::AsFloat32(bool &failed, bool useScanner) const { return ParseReal<float>(text, failed, useScanner); }

double ZQString::AsFloat64(bool useScanner) const {
  bool failed = false;
  return AsFloat64(failed, useScanner);
}

double ZQString::AsFloat64(bool &failed, bool useScanner) const { return ParseReal<double>(text, failed, useScanner); }

void ZQString::Pack(ZQMPT &) const { detail::FatalError(); }

void ZQString::Unpack(ZQMPT &) {
  text.clear();
  detail::FatalError();
}

} // namespace Velmora::Tessara::ZQ::Core

// ZQString: the library's text type, UTF-8 bytes in a narrow string.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core {

/// UTF-8 text. Every operation works on bytes; sizes and indexes are signed 64-bit and
/// "not found" is -1. Wide input is transcoded silently: a failed conversion gives an
/// empty string. Local to the calling thread; no operation reports on an error stack.
class ZQCORE_EXPORT ZQString {
public:
  ZQString();
  ZQString(char c);
  ZQString(wchar_t c);
  ZQString(char const *text);
  /// Copies exactly `size` bytes, embedded zeros included; `size` below 1 gives "".
  ZQString(char const *text, long long size);
  ZQString(wchar_t const *text);
  ZQString(wchar_t const *text, long long size);
  ZQString(ZQString const &other);
  ZQString(ZQString &&other) noexcept;
  virtual ~ZQString();

  ZQString &operator=(char c);
  ZQString &operator=(wchar_t c);
  ZQString &operator=(char const *text);
  ZQString &operator=(wchar_t const *text);
  ZQString &operator=(ZQString const &other);
  ZQString &operator=(ZQString &&other) noexcept;

  ZQString &operator+=(char c);
  ZQString &operator+=(char const *text);
  ZQString &operator+=(wchar_t c);
  ZQString &operator+=(wchar_t const *text);
  ZQString &operator+=(ZQString const &other);

  /// Formatted append: `format` receives the value as its only argument; a null format
  /// uses the type's default format (see the Get...Format accessors).
  void Add(char value, char const *format);
  void Add(signed char value, char const *format);
  void Add(short value, char const *format);
  void Add(int value, char const *format);
  void Add(long long value, char const *format);
  void Add(float value, char const *format);
  void Add(double value, char const *format);
  void Add(char const *text, char const *format);
  void Add(ZQString const &text, char const *format);
  /// Locale-independent append with 8 (float) or 16 (double) significant digits.
  void Add(float value);
  void Add(double value);

  static char const *GetNewline();
  static char const *GetIndent();
  static char const *GetInt8Format();
  static char const *GetInt16Format();
  static char const *GetInt32Format();
  static char const *GetInt64Format();
  static char const *GetFloat32Format();
  static char const *GetFloat64Format();

  char const *c_str() const;
  long long Size() const;
  bool IsEmpty() const;
  bool IsInitialized() const;
  /// True when -Size() < i < Size().
  bool IsValidIndex(long long i) const;
  /// A negative index counts from the end; no range check.
  char &operator[](long long i);
  char const &operator[](long long i) const;
  char at(long long i) const;
  void Clear();
  void Reset();
  void Resize(long long n);
  void Reserve(long long n);
  ZQString ToString() const;
  std::wstring AsTEXT() const;
  unsigned long long Hash() const;

  /// Byte-wise unsigned comparison; a null pointer compares unequal to everything.
  bool operator==(ZQString const &other) const;
  bool operator!=(ZQString const &other) const;
  bool operator<(ZQString const &other) const;
  bool operator<=(ZQString const &other) const;
  bool operator>(ZQString const &other) const;
  bool operator>=(ZQString const &other) const;
  bool operator==(char const *text) const;
  bool operator!=(char const *text) const;
  bool operator<(char const *text) const;
  bool operator<=(char const *text) const;
  bool operator>(char const *text) const;
  bool operator>=(char const *text) const;
  /// -1, 0 or 1.
  int Compare(ZQString const &other) const;

  bool Contains(char c) const;
  bool Contains(char const *text) const;
  bool Contains(ZQString const &text) const;
  long long Find(char c) const;
  long long Find(char const *text) const;
  long long Find(ZQString const &text) const;
  long long ReverseFind(char c) const;
  long long ReverseFind(char const *text) const;
  long long ReverseFind(ZQString const &text) const;
  /// Non-overlapping occurrences, searched from the left. The pattern must not be empty.
  long long Count(char c) const;
  long long Count(char const *text) const;
  long long Count(ZQString const &text) const;
  bool StartsWith(char c) const;
  bool StartsWith(char const *text) const;
  bool StartsWith(ZQString const &text) const;
  bool EndsWith(char c) const;
  bool EndsWith(char const *text) const;
  bool EndsWith(ZQString const &text) const;

  bool IsAlphaNumeric() const;
  bool IsAlphabetic() const;
  bool IsDigit() const;
  bool IsSpace() const;
  bool IsBlank() const;
  bool IsLower() const;
  bool IsUpper() const;

  ZQString &Lower();
  ZQString &Upper();
  ZQString &Capitalize();
  ZQString &SwapCase();
  ZQString &Reverse();
  ZQString &Replace(char from, char to);
  /// Replaces every non-overlapping occurrence; a null `to` removes them. `from` must not be empty.
  ZQString &Replace(char const *from, char const *to);
  ZQString &Replace(ZQString const &from, ZQString const &to);
  /// Null (or an empty ZQString) strips whitespace; a text is removed once if present.
  ZQString &LeftStrip(char const *text = nullptr);
  ZQString &LeftStrip(ZQString const &text);
  ZQString &RightStrip(char const *text = nullptr);
  ZQString &RightStrip(ZQString const &text);
  ZQString &Strip(char const *text = nullptr);
  ZQString &Strip(ZQString const &text);
  /// Collapses every backslash-slash pair into a single backslash.
  ZQString &NormalizePath();
  /// Expands $NAME, ${NAME}, $(NAME), $%NAME% and %NAME% from the environment; with
  /// `expandSpecials`, also user, host, process id and temporary-directory names.
  ZQString &ExpandEnvironVars(bool expandSpecials);

  /// Bytes [start, end), both clamped to [0, Size()].
  ZQString Substring(long long start, long long end) const;
  ZQString CommonPrefix(ZQString const &other) const;
  /// Compares bytes at equal indexes from the smaller size down (terminators included),
  /// not aligned at the ends: strings of different sizes give "".
  ZQString CommonSuffix(ZQString const &other) const;

  bool AsBoolean() const;
  /// Parsers: on failure `failed` is set and the type's largest value is returned.
  signed char AsInt8() const;
  signed char AsInt8(bool &failed) const;
  short AsInt16() const;
  short AsInt16(bool &failed) const;
  int AsInt32() const;
  int AsInt32(bool &failed) const;
  long long AsInt64() const;
  long long AsInt64(bool &failed) const;
  long long AsSSize() const;
  long long AsSSize(bool &failed) const;
  /// With `useScanner` false the parse ignores the current C locale.
  float AsFloat32(bool useScanner) const;
  float AsFloat32(bool &failed, bool useScanner) const;
  double AsFloat64(bool useScanner) const;
  double AsFloat64(bool &failed, bool useScanner) const;

  /// Strings cannot travel by message: both write the fatal banner and end the job.
  [[noreturn]] void Pack(ZQMPT &mpt) const;
  [[noreturn]] void Unpack(ZQMPT &mpt);

private:
  void Copy(ZQString const &other);

  std::string text;
};

} // namespace Velmora::Tessara::ZQ::Core

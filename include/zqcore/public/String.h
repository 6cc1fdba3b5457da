// String: the public face of ZQString.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <string>

namespace Velmora::Tessara::ZQ::Core {

/// UTF-8 text; every operation forwards to the owned ZQString and works on bytes. Sizes
/// and indexes are signed 64-bit, "not found" is -1, and a null pointer argument counts
/// as an empty text. Wide input that fails to transcode gives an empty string.
class ZQCORE_EXPORT String {
public:
  /// Empty.
  String();
  /// The one byte, also when it is 0.
  String(char c);
  /// The one wide character, transcoded; 0 gives an empty string.
  String(wchar_t c);
  /// Copies up to the terminator.
  String(char const *text);
  /// Copies exactly `size` bytes, embedded zeros included; `size` below 1 gives "".
  String(char const *text, long long size);
  /// Transcodes up to the terminator.
  String(wchar_t const *text);
  /// Transcodes `size` wide characters, cut at an embedded terminator.
  String(wchar_t const *text, long long size);
  /// The first `size` bytes of `text`, at most all of them; `size` below 1 gives "".
  String(String const &text, long long size);
  /// Independent copies: the two never share an inner object.
  String(String const &other);
  /// Takes over `other`'s bytes; `other` stays usable.
  String(String &&other);
  virtual ~String();

  /// Replace the content, converting as the matching constructor does.
  String &operator=(char c);
  String &operator=(wchar_t c);
  String &operator=(char const *text);
  String &operator=(wchar_t const *text);
  String &operator=(String const &other);
  String &operator=(String &&other) noexcept;

  /// Append; a null text changes nothing, and a string may be appended to itself.
  String &operator+=(char c);
  String &operator+=(char const *text);
  String &operator+=(wchar_t c);
  String &operator+=(wchar_t const *text);
  String &operator+=(String const &other);

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
  void Add(String const &text, char const *format);
  /// Locale-independent append with 8 (float) or 16 (double) significant digits.
  void Add(float value);
  void Add(double value);

  /// "\n" on every platform, four blanks, and the default number formats.
  static char const *GetNewline();
  static char const *GetIndent();
  static char const *GetInt8Format();
  static char const *GetInt16Format();
  static char const *GetInt32Format();
  static char const *GetInt64Format();
  static char const *GetFloat32Format();
  static char const *GetFloat64Format();

  /// The terminated text, valid until the next change.
  char const *c_str() const;
  /// Number of bytes.
  long long Size() const;
  /// Size 0; IsInitialized is its opposite.
  bool IsEmpty() const;
  bool IsInitialized() const;
  /// True when -Size() < i < Size().
  bool IsValidIndex(long long i) const;
  /// The byte at `i`; a negative index counts from the end. No range check.
  char &operator[](long long i);
  char const &operator[](long long i) const;
  char at(long long i) const;
  /// Size 0, capacity kept; the two are one operation.
  void Clear();
  void Reset();
  /// Sets the size, new bytes 0; sets the capacity, size unchanged.
  void Resize(long long n);
  void Reserve(long long n);
  /// A copy.
  String ToString() const;
  /// The text as a wide string; empty if it fails to transcode.
  std::wstring AsTEXT() const;
  /// Sign-extended bytes folded by exclusive-or at growing shifts; "" hashes to 0.
  unsigned long long Hash() const;

  /// Byte-wise unsigned comparison; a null pointer compares unequal to everything.
  bool operator==(String const &other) const;
  bool operator!=(String const &other) const;
  bool operator<(String const &other) const;
  bool operator<=(String const &other) const;
  bool operator>(String const &other) const;
  bool operator>=(String const &other) const;
  bool operator==(char const *text) const;
  bool operator!=(char const *text) const;
  bool operator<(char const *text) const;
  bool operator<=(char const *text) const;
  bool operator>(char const *text) const;
  bool operator>=(char const *text) const;
  /// -1, 0 or 1.
  int Compare(String const &other) const;

  /// Byte searches; Find and ReverseFind give the position or -1.
  bool Contains(char c) const;
  bool Contains(char const *text) const;
  bool Contains(String const &text) const;
  long long Find(char c) const;
  long long Find(char const *text) const;
  long long Find(String const &text) const;
  long long ReverseFind(char c) const;
  long long ReverseFind(char const *text) const;
  long long ReverseFind(String const &text) const;
  /// Non-overlapping occurrences, searched from the left. The pattern must not be empty.
  long long Count(char c) const;
  long long Count(char const *text) const;
  long long Count(String const &text) const;
  /// False on an empty string, whatever the pattern.
  bool StartsWith(char c) const;
  bool StartsWith(char const *text) const;
  bool StartsWith(String const &text) const;
  bool EndsWith(char c) const;
  bool EndsWith(char const *text) const;
  bool EndsWith(String const &text) const;

  /// Every byte passes the C runtime's test; false on an empty string. IsLower and
  /// IsUpper look at alphabetic bytes only and need at least one.
  bool IsAlphaNumeric() const;
  bool IsAlphabetic() const;
  bool IsDigit() const;
  bool IsSpace() const;
  bool IsBlank() const;
  bool IsLower() const;
  bool IsUpper() const;

  /// In-place changes of case and order; each returns this string.
  String &Lower();
  String &Upper();
  String &Capitalize();
  String &SwapCase();
  String &Reverse();
  /// Replaces every such byte.
  String &Replace(char from, char to);
  /// Replaces every non-overlapping occurrence; a null `to` removes them. `from` must not be empty.
  String &Replace(char const *from, char const *to);
  String &Replace(String const &from, String const &to);
  /// Null (or an empty String) strips whitespace; a text is removed once if present.
  String &LeftStrip(char const *text = nullptr);
  String &LeftStrip(String const &text);
  String &RightStrip(char const *text = nullptr);
  String &RightStrip(String const &text);
  String &Strip(char const *text = nullptr);
  String &Strip(String const &text);
  /// Collapses every backslash-slash pair into a single backslash.
  String &NormalizePath();
  /// Expands $NAME, ${NAME}, $(NAME), $%NAME% and %NAME% from the environment; with
  /// `expandSpecials`, also user, host, process id and temporary-directory names.
  String &ExpandEnvironVars(bool expandSpecials);

  /// Bytes [start, end), both clamped to [0, Size()].
  String Substring(long long start, long long end) const;
  String CommonPrefix(String const &other) const;
  /// Compares bytes at equal indexes from the smaller size down (terminators included),
  /// not aligned at the ends: strings of different sizes give "".
  String CommonSuffix(String const &other) const;

  /// Loose truth value of the text: "", "0", "no", "false" and the like are false.
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
  [[noreturn]] void Pack(MPT &mpt) const;
  [[noreturn]] void Unpack(MPT &mpt);

  /// The inner object, owned by this one.
  ZQString *GetString();
  ZQString const *GetString() const;

private:
  void Copy(String const &other);

  ZQString *string;
};

} // namespace Velmora::Tessara::ZQ::Core

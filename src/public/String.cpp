#include <zqcore/public/MPT.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>

#include "public/detail/FacadeAccess.h"

#include <utility>

namespace Velmora::Tessara::ZQ::Core {

using detail::ToPublic;

String::String() : string(new ZQString()) {}
String::String(char c) : string(new ZQString(c)) {}
String::String(wchar_t c) : string(new ZQString(c)) {}
String::String(char const *text) : string(new ZQString(text)) {}
String::String(char const *text, long long size) : string(new ZQString(text, size)) {}
String::String(wchar_t const *text) : string(new ZQString(text)) {}
String::String(wchar_t const *text, long long size) : string(new ZQString(text, size)) {}
// Substring clamps the size to the bytes that exist.
String::String(String const &text, long long size) : string(new ZQString(text.string->Substring(0, size))) {}
String::String(String const &other) : string(new ZQString()) { Copy(other); }
String::String(String &&other) : string(new ZQString(std::move(*other.string))) {}

String::~String() {
  delete string;
  string = nullptr;
}

void String::Copy(String const &other) {
  if (string != other.string) {
    *string = *other.string;
  }
}

String &String::operator=(char c) {
  *string = c;
  return *this;
}
String &String::operator=(wchar_t c) {
  *string = c;
  return *this;
}
String &String::operator=(char const *text) {
  *string = text;
  return *this;
}
String &String::operator=(wchar_t const *text) {
  *string = text;
  return *this;
}
String &String::operator=(String const &other) {
  Copy(other);
  return *this;
}
String &String::operator=(String &&other) noexcept {
  *string = std::move(*other.string);
  return *this;
}

String &String::operator+=(char c) {
  *string += c;
  return *this;
}
String &String::operator+=(char const *text) {
  *string += text;
  return *this;
}
String &String::operator+=(wchar_t c) {
  *string += c;
  return *this;
}
String &String::operator+=(wchar_t const *text) {
  *string += text;
  return *this;
}
String &String::operator+=(String const &other) {
  *string += *other.string;
  return *this;
}

void String::Add(char value, char const *format) { string->Add(value, format); }
void String::Add(signed char value, char const *format) { string->Add(value, format); }
void String::Add(short value, char const *format) { string->Add(value, format); }
void String::Add(int value, char const *format) { string->Add(value, format); }
void String::Add(long long value, char const *format) { string->Add(value, format); }
void String::Add(float value, char const *format) { string->Add(value, format); }
void String::Add(double value, char const *format) { string->Add(value, format); }
void String::Add(char const *text, char const *format) { string->Add(text, format); }
void String::Add(String const &text, char const *format) { string->Add(*text.string, format); }
void String::Add(float value) { string->Add(value); }
void String::Add(double value) { string->Add(value); }

char const *String::GetNewline() { return ZQString::GetNewline(); }
char const *String::GetIndent() { return ZQString::GetIndent(); }
char const *String::GetInt8Format() { return ZQString::GetInt8Format(); }
char const *String::GetInt16Format() { return ZQString::GetInt16Format(); }
char const *String::GetInt32Format() { return ZQString::GetInt32Format(); }
char const *String::GetInt64Format() { return ZQString::GetInt64Format(); }
char const *String::GetFloat32Format() { return ZQString::GetFloat32Format(); }
char const *String::GetFloat64Format() { return ZQString::GetFloat64Format(); }

char const *String::c_str() const { return string->c_str(); }
long long String::Size() const { return string->Size(); }
bool String::IsEmpty() const { return string->IsEmpty(); }
bool String::IsInitialized() const { return string->IsInitialized(); }
bool String::IsValidIndex(long long i) const { return string->IsValidIndex(i); }
char &String::operator[](long long i) { return (*string)[i]; }
char const &String::operator[](long long i) const { return (*string)[i]; }
char String::at(long long i) const { return string->at(i); }
void String::Clear() { string->Clear(); }
void String::Reset() { string->Reset(); }
void String::Resize(long long n) { string->Resize(n); }
void String::Reserve(long long n) { string->Reserve(n); }
String String::ToString() const { return ToPublic(string->ToString()); }
std::wstring String::AsTEXT() const { return string->AsTEXT(); }
unsigned long long String::Hash() const { return string->Hash(); }

bool String::operator==(String const &other) const { return *string == *other.string; }
bool String::operator!=(String const &other) const { return *string != *other.string; }
bool String::operator<(String const &other) const { return *string < *other.string; }
bool String::operator<=(String const &other) const { return *string <= *other.string; }
bool String::operator>(String const &other) const { return *string > *other.string; }
bool String::operator>=(String const &other) const { return *string >= *other.string; }
bool String::operator==(char const *text) const { return *string == text; }
bool String::operator!=(char const *text) const { return *string != text; }
bool String::operator<(char const *text) const { return *string < text; }
bool String::operator<=(char const *text) const { return *string <= text; }
bool String::operator>(char const *text) const { return *string > text; }
bool String::operator>=(char const *text) const { return *string >= text; }
int String::Compare(String const &other) const { return string->Compare(*other.string); }

bool String::Contains(char c) const { return string->Contains(c); }
bool String::Contains(char const *text) const { return string->Contains(text); }
bool String::Contains(String const &text) const { return string->Contains(*text.string); }
long long String::Find(char c) const { return string->Find(c); }
long long String::Find(char const *text) const { return string->Find(text); }
long long String::Find(String const &text) const { return string->Find(*text.string); }
long long String::ReverseFind(char c) const { return string->ReverseFind(c); }
long long String::ReverseFind(char const *text) const { return string->ReverseFind(text); }
long long String::ReverseFind(String const &text) const { return string->ReverseFind(*text.string); }
long long String::Count(char c) const { return string->Count(c); }
long long String::Count(char const *text) const { return string->Count(text); }
long long String::Count(String const &text) const { return string->Count(*text.string); }
bool String::StartsWith(char c) const { return string->StartsWith(c); }
bool String::StartsWith(char const *text) const { return string->StartsWith(text); }
bool String::StartsWith(String const &text) const { return string->StartsWith(*text.string); }
bool String::EndsWith(char c) const { return string->EndsWith(c); }
bool String::EndsWith(char const *text) const { return string->EndsWith(text); }
bool String::EndsWith(String const &text) const { return string->EndsWith(*text.string); }

bool String::IsAlphaNumeric() const { return string->IsAlphaNumeric(); }
bool String::IsAlphabetic() const { return string->IsAlphabetic(); }
bool String::IsDigit() const { return string->IsDigit(); }
bool String::IsSpace() const { return string->IsSpace(); }
bool String::IsBlank() const { return string->IsBlank(); }
bool String::IsLower() const { return string->IsLower(); }
bool String::IsUpper() const { return string->IsUpper(); }

String &String::Lower() {
  string->Lower();
  return *this;
}
String &String::Upper() {
  string->Upper();
  return *this;
}
String &String::Capitalize() {
  string->Capitalize();
  return *this;
}
String &String::SwapCase() {
  string->SwapCase();
  return *this;
}
String &String::Reverse() {
  string->Reverse();
  return *this;
}
String &String::Replace(char from, char to) {
  string->Replace(from, to);
  return *this;
}
String &String::Replace(char const *from, char const *to) {
  string->Replace(from, to);
  return *this;
}
String &String::Replace(String const &from, String const &to) {
  string->Replace(*from.string, *to.string);
  return *this;
}
String &String::LeftStrip(char const *text) {
  string->LeftStrip(text);
  return *this;
}
String &String::LeftStrip(String const &text) {
  string->LeftStrip(*text.string);
  return *this;
}
String &String::RightStrip(char const *text) {
  string->RightStrip(text);
  return *this;
}
String &String::RightStrip(String const &text) {
  string->RightStrip(*text.string);
  return *this;
}
String &String::Strip(char const *text) {
  string->Strip(text);
  return *this;
}
String &String::Strip(String const &text) {
  string->Strip(*text.string);
  return *this;
}
String &String::NormalizePath() {
  string->NormalizePath();
  return *this;
}
String &String::ExpandEnvironVars(bool expandSpecials) {
  string->ExpandEnvironVars(expandSpecials);
  return *this;
}

String String::Substring(long long start, long long end) const { return ToPublic(string->Substring(start, end)); }
String String::CommonPrefix(String const &other) const { return ToPublic(string->CommonPrefix(*other.string)); }
String String::CommonSuffix(String const &other) const { return ToPublic(string->CommonSuffix(*other.string)); }

bool String::AsBoolean() const { return string->AsBoolean(); }
signed char String::AsInt8() const { return string->AsInt8(); }
signed char String::AsInt8(bool &failed) const { return string->AsInt8(failed); }
short String::AsInt16() const { return string->AsInt16(); }
short String::AsInt16(bool &failed) const { return string->AsInt16(failed); }
int String::AsInt32() const { return string->AsInt32(); }
int String::AsInt32(bool &failed) const { return string->AsInt32(failed); }
long long String::AsInt64() const { return string->AsInt64(); }
long long String::AsInt64(bool &failed) const { return string->AsInt64(failed); }
long long String::AsSSize() const { return string->AsSSize(); }
long long String::AsSSize(bool &failed) const { return string->AsSSize(failed); }
float String::AsFloat32(bool useScanner) const { return string->AsFloat32(useScanner); }
float String::AsFloat32(bool &failed, bool useScanner) const { return string->AsFloat32(failed, useScanner); }
double String::AsFloat64(bool useScanner) const { return string->AsFloat64(useScanner); }
double String::AsFloat64(bool &failed, bool useScanner) const { return string->AsFloat64(failed, useScanner); }

void String::Pack(MPT &mpt) const { string->Pack(*detail::FacadeAccess::Inner(mpt)); }
void String::Unpack(MPT &mpt) { string->Unpack(*detail::FacadeAccess::Inner(mpt)); }

ZQString *String::GetString() { return string; }
ZQString const *String::GetString() const { return string; }

} // namespace Velmora::Tessara::ZQ::Core

// UTF-8 <-> wide conversion in two passes (size, then convert), with the converter's contract.
#include <zqcore/strings/ZQStringEncoding.h>

#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>

#include "core/detail/Fatal.h"
#include "strings/detail/UTF8Codec.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <cwchar>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// The converter counts in 32 bits, terminator included, like the counted length does.
bool FitsConverterCount(std::size_t units) { return units < static_cast<std::size_t>(INT_MAX); }

// Sets errno as the platform converter would, and pushes its text when there is a context.
bool Refuse(ZQContext *context, int error, void (ZQErrorStack::*report)()) {
  errno = error;
  if (context != nullptr) {
    (context->GetErrorStack().*report)();
  }
  return false;
}

bool RefuseTerminated(ZQContext *context) { return Refuse(context, EOVERFLOW, &ZQErrorStack::SetMsgFromLastError); }

bool RefuseCounted(ZQContext *context) { return Refuse(context, EINVAL, &ZQErrorStack::SetMsgFromErrno); }

// Both passes over `units` wide units; false when the result is too long to count.
bool WideUnitsToUTF8(wchar_t const *source, std::size_t units, std::string &out) {
  std::size_t const bytes = detail::EncodedUTF8Size(source, units);
  if (!FitsConverterCount(bytes))
    return false;
  out.resize(bytes);
  detail::EncodeUTF8(source, units, out.data(), bytes);
  return true;
}

} // namespace

bool ZQStringEncoding::UTF8ToWide(ZQContext *context, char const *source, std::wstring &out) {
  return UTF8ToUTF32(context, source, out);
}

bool ZQStringEncoding::WideToUTF8(ZQContext *context, wchar_t const *source, std::string &out) {
  return UTF32ToUTF8(context, source, out);
}

bool ZQStringEncoding::WideToUTF8(ZQContext *context, wchar_t const *source, long long length, std::string &out) {
  return UTF32ToUTF8(context, source, length, out);
}

bool ZQStringEncoding::UTF8ToUTF16(ZQContext *, char const *source, std::wstring &out) {
  out.clear();
  return source == nullptr;
}

bool ZQStringEncoding::UTF16ToUTF8(ZQContext *, wchar_t const *source, std::string &out) {
  out.clear();
  return source == nullptr;
}

bool ZQStringEncoding::UTF16ToUTF8(ZQContext *, wchar_t const *source, long long, std::string &out) {
  out.clear();
  return source == nullptr;
}

bool ZQStringEncoding::UTF8ToUTF32(ZQContext *context, char const *source, std::wstring &out) {
  out.clear();
  if (source == nullptr)
    return true;
  auto const *bytes = reinterpret_cast<unsigned char const *>(source);
  std::size_t const size = std::strlen(source);
  detail::UTF8Census const census = detail::CensusUTF8(bytes, size);
  if (!FitsConverterCount(census.units))
    return RefuseTerminated(context);
  out.resize(census.units);
  detail::DecodeUTF8(bytes, size, census, out.data());
  return true;
}

bool ZQStringEncoding::UTF32ToUTF8(ZQContext *context, wchar_t const *source, std::string &out) {
  out.clear();
  if (source == nullptr)
    return true;
  return WideUnitsToUTF8(source, std::wcslen(source), out) || RefuseTerminated(context);
}

bool ZQStringEncoding::UTF32ToUTF8(ZQContext *context, wchar_t const *source, long long length, std::string &out) {
  out.clear();
  if (source == nullptr)
    return true;
  int const count = detail::NarrowToInt32(length);
  std::size_t units = 0;
  if (count == -1) {
    units = std::wcslen(source);
  } else if (count <= 0) {
    return source[0] == L'\0' || RefuseCounted(context);
  } else {
    // What follows an embedded terminator would be cut from the result anyway.
    wchar_t const *end = std::wmemchr(source, L'\0', static_cast<std::size_t>(count));
    units = end != nullptr ? static_cast<std::size_t>(end - source) : static_cast<std::size_t>(count);
  }
  return WideUnitsToUTF8(source, units, out) || RefuseCounted(context);
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/core/Types.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQSysUtil.h>

#include "strings/detail/WideText.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr long long kTextReserve = 32;

// Empties `text`, then breaks the current time into local time. A failure leaves its
// message in `text` and zeroed parts, which the caller formats all the same.
std::tm LocalNow(ZQString &text) {
  text.Clear();
  text.Reserve(kTextReserve);
  std::time_t const now = std::time(nullptr);
  std::tm parts{};
  if (localtime_r(&now, &parts) == nullptr) {
    text += "Invalid argument to _localtime_s. Error Code: ";
    text.Add(errno, "%d");
  }
  return parts;
}

template <typename... Values> void AppendFormatted(ZQString &text, char const *format, Values... values) {
  char buffer[64];
  int const length = std::snprintf(buffer, sizeof buffer, format, values...);
  if (length > 0) {
    text += buffer;
  }
}

ZQString AlignmentText(std::uintptr_t address) {
  for (unsigned bytes : {64u, 32u, 16u, 8u}) {
    if (address % bytes == 0) {
      ZQString text;
      text.Add(static_cast<int>(bytes), "%d");
      text += "-byte aligned";
      return text;
    }
  }
  int const offset = static_cast<int>(address % 8);
  ZQString text("NOT even 8-byte aligned, offset = ");
  text.Add(offset, "%d");
  text += offset == 1 ? " byte" : " bytes";
  return text;
}

} // namespace

void ZQSysUtil::GetTime(ZQString &text) {
  std::tm const parts = LocalNow(text);
  AppendFormatted(text, "%02d:%02d:%02d", parts.tm_hour, parts.tm_min, parts.tm_sec);
}

void ZQSysUtil::GetYear(ZQString &text) {
  std::tm const parts = LocalNow(text);
  AppendFormatted(text, "%d", parts.tm_year + 1900);
}

void ZQSysUtil::GetDateAndTime(ZQString &text) {
  std::tm const parts = LocalNow(text);
  AppendFormatted(text, "%04d-%02d-%02d %02d:%02d:%02d", parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                  parts.tm_hour, parts.tm_min, parts.tm_sec);
}

void ZQSysUtil::GetCalendarDateAndTime(ZQString &text) {
  text.Clear();
  text.Reserve(kTextReserve);
  std::time_t const now = std::time(nullptr);
  char buffer[64];
  if (ctime_r(&now, buffer) != nullptr) {
    text = buffer;
  } else {
    text = "Invalid Arguments for _wctime_s. Error Code: ";
    text.Add(errno, "%d");
  }
  text.Strip();
}

ZQResult ZQSysUtil::GetNCPUs(long long &n) {
  n = 0;
  long const online = sysconf(_SC_NPROCESSORS_ONLN);
  if (online < 1) {
    return ZQResult(static_cast<long long>(Types::StatusCode_t::GetNCPUsError));
  }
  n = online;
  return ZQResult(0);
}

ZQString ZQSysUtil::MemoryAlignmentToString(char const *label, void const *p, bool showAddress) {
  if (p == nullptr) {
    return ZQString("NULL pointer");
  }
  auto const address = reinterpret_cast<std::uintptr_t>(p);
  char addressText[256];
  if (std::snprintf(addressText, sizeof addressText, "0x%llx", static_cast<unsigned long long>(address)) < 0) {
    return ZQString("ERROR in MemoryAlignmentToString() in _snprintf_s!");
  }
  ZQString text(label);
  text += ": ";
  if (showAddress) {
    text += addressText;
    text += " (";
  }
  text += AlignmentText(address);
  if (showAddress) {
    text += ")";
  }
  return text;
}

ZQString ZQSysUtil::MemoryAlignmentToString(wchar_t const *label, void const *p, bool showAddress) {
  ZQString narrow;
  if (!detail::WideToZQString(label, narrow)) {
    return ZQString("ERROR in MemoryAlignmentToString() in wide-to-UTF8 conversion");
  }
  return MemoryAlignmentToString(narrow.c_str(), p, showAddress);
}

} // namespace Velmora::Tessara::ZQ::Core

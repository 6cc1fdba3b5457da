// ZQSysUtil: the local date and time, the processor count and the alignment of memory.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Static queries without shared state. The text functions empty their argument first
/// and report a failure in the text itself, in front of what could still be formatted.
class ZQCORE_EXPORT ZQSysUtil {
public:
  /// Local time, "HH:MM:SS".
  static void GetTime(ZQString &text);
  /// Local year in decimal.
  static void GetYear(ZQString &text);
  /// Local "YYYY-MM-DD HH:MM:SS".
  static void GetDateAndTime(ZQString &text);
  /// The calendar form, such as "Mon Nov  3 09:05:01 2026", without surrounding blanks.
  static void GetCalendarDateAndTime(ZQString &text);
  /// Processors online; GetNCPUsError, with `n` at 0, if the system gives fewer than one.
  static ZQResult GetNCPUs(long long &n);
  /// "label: 16-byte aligned", with "0x<address> (" ... ")" around the alignment when
  /// asked; "NULL pointer" alone for a null `p`.
  static ZQString MemoryAlignmentToString(char const *label, void const *p, bool showAddress);
  static ZQString MemoryAlignmentToString(wchar_t const *label, void const *p, bool showAddress);
};

} // namespace Velmora::Tessara::ZQ::Core

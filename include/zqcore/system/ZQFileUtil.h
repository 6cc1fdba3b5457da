// ZQFileUtil: path text, file sizes and contents, opening, removal and directories.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQResult.h>

#include <cstdio>

namespace Velmora::Tessara::ZQ::Core {

/// Static functions without state. Names are UTF-8 (`char const *`) or wide; a wide name
/// reaches the system as its UTF-8 form. The context may be null. A failing system call
/// pushes the text of its errno on the context's stack; a trailing `report` of false
/// silences pushes and nothing else. The path text functions touch no file and report
/// nothing.
class ZQCORE_EXPORT ZQFileUtil {
public:
  /// Starts with "/" or with two backslashes; a drive-letter path is not absolute.
  static bool IsAbsolutePath(ZQContext *context, ZQString const &path);
  /// Every backslash followed by a slash becomes one backslash, until none is left;
  /// nothing else changes.
  static ZQString NormalizePath(ZQContext *context, ZQString const &path);
  /// Splits at the last "/" or "\": the text before and the text after it. Without a
  /// separator the directory is empty and the file name is the path.
  static void SplitPath(ZQContext *context, ZQString const &path, ZQString &directory, ZQString &filename);
  /// `first` + "/" + `second`; no "/" when `first` ends in a separator, `second` alone
  /// when `first` is empty.
  static ZQString JoinPath(ZQContext *context, ZQString const &first, ZQString const &second);
  /// From the last "." of the whole path (directories included) to the end; "" if none.
  static ZQString GetExtension(ZQContext *context, ZQString const &path);
  /// The file name of SplitPath up to its last ".".
  static ZQString GetFilenameWithoutExtension(ZQContext *context, ZQString const &path);
  /// Removes trailing ";" unless the text is nothing but ";"; returns true.
  static bool StripPathSeparator(ZQContext *context, ZQString &text);
  /// False for a null or empty name. Otherwise only the last character decides: false
  /// when it is one of \ / : ? * " > < |, true when not.
  static bool IsValidFilename(ZQContext *context, char const *name);
  static bool IsValidFilename(ZQContext *context, wchar_t const *name);

  /// Whether the file or directory can be found; false for a null name. Reports nothing.
  static bool IsExistent(ZQContext *context, char const *name);
  static bool IsExistent(ZQContext *context, wchar_t const *name);
  /// The size of a file in bytes (0 on failure).
  static bool GetSize(ZQContext *context, char const *name, long long &size, bool report);
  static bool GetSize(ZQContext *context, wchar_t const *name, long long &size, bool report);
  /// The size of an open stream, by seeking to its end and telling; the stream stays at
  /// its end.
  static bool GetSize(ZQContext *context, std::FILE *file, long long &size, bool report);
  /// fopen of the name in `mode`; the sharing flag has no effect on this platform. A failure
  /// gives null and is always reported to a context. The caller closes the stream.
  static std::FILE *OpenFile(ZQContext *context, char const *name, char const *mode, int shareFlag);
  static std::FILE *OpenFile(ZQContext *context, wchar_t const *name, wchar_t const *mode, int shareFlag);
  /// Reads up to `size` bytes from the start of the file into `buffer`; `size` becomes the
  /// number read, so a short file is no error. A request of 4 GiB or more ends the job.
  static bool Read(ZQContext *context, char const *name, long long &size, unsigned char *buffer, bool report);
  static bool Read(ZQContext *context, wchar_t const *name, long long &size, unsigned char *buffer, bool report);
  /// The same from the stream's descriptor at its current offset, bypassing the stream's
  /// buffer; on a read error `size` is unchanged.
  static bool Read(ZQContext *context, std::FILE *file, long long &size, unsigned char *buffer, bool report);
  /// Removes a file. A null narrow name is a reported failure, a null wide name success;
  /// a narrow name's failed removal is reported whatever `report` says.
  static bool Remove(ZQContext *context, char const *name, bool report);
  static bool Remove(ZQContext *context, wchar_t const *name, bool report);
  /// Creates a directory, with `recursive` its missing parents first. Status 0, or
  /// CreateDirectoryError (also for a directory that exists already); nothing is pushed.
  static ZQResult MakeDir(ZQContext *context, ZQString const &path, bool recursive);
  /// The absolute form of a path: a relative one is prefixed with the working directory
  /// and "/", an absolute one is kept. The file need not exist. A path that cannot be
  /// transcoded gives true with an empty result.
  static bool ConvertToFullPath(ZQContext *context, ZQString const &path, ZQString &result);
  /// This platform has no long and short forms: both are the full form.
  static bool ConvertToLongPath(ZQContext *context, ZQString const &path, ZQString &result);
  static bool ConvertToShortPath(ZQContext *context, ZQString const &path, ZQString &result);
};

} // namespace Velmora::Tessara::ZQ::Core

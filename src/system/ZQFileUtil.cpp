// Path text, file queries and file operations. Every operation has one core that takes the
// name in the form the system takes it (UTF-8); the narrow and wide entry points only
// check or convert the name and keep their own rules for null names.
#include <zqcore/system/ZQFileUtil.h>

#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include "core/detail/Fatal.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace Velmora::Tessara::ZQ::Core {

namespace {

// Messages are pushed only where there is a context and the caller asked for reports.
void Report(ZQContext *context, bool report, char const *message) {
  if (context != nullptr && report) {
    context->GetErrorStack().Push(message);
  }
}

// The text of errno of the call that just failed; the caller must not touch errno before.
void ReportErrno(ZQContext *context, bool report) {
  if (context != nullptr && report) {
    context->GetErrorStack().SetMsgFromErrno();
  }
}

// A narrow name reaches the system as it stands, but one that the wide path could not take
// fails here as well.
bool Transcodes(ZQContext *context, char const *name) {
  std::wstring wide;
  return ZQStringEncoding::UTF8ToWide(context, name, wide);
}

// The UTF-8 form in which a wide name reaches the system.
bool SystemName(ZQContext *context, wchar_t const *name, std::string &out) {
  return ZQStringEncoding::WideToUTF8(context, name, out);
}

ZQContext *ReportingContext(ZQContext *context, bool report) { return report ? context : nullptr; }

bool Exists(char const *name) { return access(name, F_OK) == 0; }

bool SizeOfFile(ZQContext *context, char const *name, long long &size, bool report) {
  std::FILE *file = std::fopen(name, "rb");
  if (file == nullptr) {
    ReportErrno(context, report);
    return false;
  }
  bool const ok = ZQFileUtil::GetSize(context, file, size, report);
  std::fclose(file);
  return ok;
}

// A null name or mode fails as the open call itself would, with EINVAL.
std::FILE *Open(ZQContext *context, char const *name, char const *mode) {
  std::FILE *file = nullptr;
  if (name == nullptr) {
    Report(context, true, "empty filename given, file can't be opened.");
    errno = EINVAL;
  } else if (mode == nullptr) {
    errno = EINVAL;
  } else {
    file = std::fopen(name, mode);
  }
  if (file == nullptr) {
    ReportErrno(context, true);
  }
  return file;
}

bool ReadFile(ZQContext *context, char const *name, long long &size, unsigned char *buffer, bool report) {
  std::FILE *file = std::fopen(name, "rb");
  if (file == nullptr) {
    ReportErrno(context, report);
    return false;
  }
  bool const ok = ZQFileUtil::Read(context, file, size, buffer, report);
  std::fclose(file);
  return ok;
}

bool RemoveFile(ZQContext *context, char const *name, bool report) {
  if (std::remove(name) == 0) {
    return true;
  }
  ReportErrno(context, report);
  return false;
}

// The verdict of the last character alone decides.
template <typename Char> bool IsValidName(Char const *name) {
  static constexpr Char Forbidden[] = {'\\', '/', ':', '?', '*', '"', '>', '<', '|'};
  if (name == nullptr || name[0] == 0) {
    return false;
  }
  bool valid = false;
  for (; *name != 0; ++name) {
    valid = std::find(std::begin(Forbidden), std::end(Forbidden), *name) == std::end(Forbidden);
  }
  return valid;
}

bool FullPath(ZQContext *context, ZQString const &path, ZQString &result) {
  result.Clear();
  if (!Transcodes(context, path.c_str())) {
    return true;
  }
  if (path.IsEmpty()) {
    return false;
  }
  if (path.StartsWith('/')) {
    result = path;
    return true;
  }
  std::string directory(PATH_MAX, '\0');
  while (getcwd(directory.data(), directory.size()) == nullptr) {
    if (errno != ERANGE) {
      return false;
    }
    directory.resize(directory.size() * 2);
  }
  result = directory.c_str();
  result += '/';
  result += path;
  return true;
}

} // namespace

bool ZQFileUtil::IsAbsolutePath(ZQContext *, ZQString const &path) {
  return path.StartsWith('/') || path.StartsWith("\\\\");
}

ZQString ZQFileUtil::NormalizePath(ZQContext *, ZQString const &path) {
  ZQString normalized(path);
  normalized.NormalizePath();
  return normalized;
}

void ZQFileUtil::SplitPath(ZQContext *, ZQString const &path, ZQString &directory, ZQString &filename) {
  directory.Clear();
  filename.Clear();
  long long const separator = std::max(path.ReverseFind('/'), path.ReverseFind('\\'));
  if (separator < 0) {
    filename = path;
    return;
  }
  directory = path.Substring(0, separator);
  filename = path.Substring(separator + 1, path.Size());
}

ZQString ZQFileUtil::JoinPath(ZQContext *, ZQString const &first, ZQString const &second) {
  if (first.IsEmpty()) {
    return second;
  }
  ZQString joined(first);
  if (!first.EndsWith('/') && !first.EndsWith('\\')) {
    joined += '/';
  }
  joined += second;
  return joined;
}

ZQString ZQFileUtil::GetExtension(ZQContext *, ZQString const &path) {
  long long const dot = path.ReverseFind('.');
  return dot < 0 ? ZQString() : path.Substring(dot, path.Size());
}

ZQString ZQFileUtil::GetFilenameWithoutExtension(ZQContext *context, ZQString const &path) {
  ZQString directory;
  ZQString filename;
  SplitPath(context, path, directory, filename);
  long long const dot = filename.ReverseFind('.');
  return dot < 0 ? filename : filename.Substring(0, dot);
}

bool ZQFileUtil::StripPathSeparator(ZQContext *, ZQString &text) {
  long long end = text.Size();
  while (end > 0 && text[end - 1] == ';') {
    --end;
  }
  if (end > 0) {
    text.Resize(end);
  }
  return true;
}

bool ZQFileUtil::IsValidFilename(ZQContext *, char const *name) { return IsValidName(name); }

bool ZQFileUtil::IsValidFilename(ZQContext *, wchar_t const *name) { return IsValidName(name); }

bool ZQFileUtil::IsExistent(ZQContext *, char const *name) {
  return name != nullptr && Transcodes(nullptr, name) && Exists(name);
}

bool ZQFileUtil::IsExistent(ZQContext *, wchar_t const *name) {
  std::string systemName;
  return name != nullptr && SystemName(nullptr, name, systemName) && Exists(systemName.c_str());
}

bool ZQFileUtil::GetSize(ZQContext *context, char const *name, long long &size, bool report) {
  size = 0;
  if (name == nullptr) {
    Report(context, report, "empty filename given, file size can not be determined.");
    return false;
  }
  return Transcodes(ReportingContext(context, report), name) && SizeOfFile(context, name, size, report);
}

bool ZQFileUtil::GetSize(ZQContext *context, wchar_t const *name, long long &size, bool report) {
  size = 0;
  if (name == nullptr) {
    Report(context, report, "empty filename given, file size can not be determined.");
    return false;
  }
  std::string systemName;
  return SystemName(ReportingContext(context, report), name, systemName) &&
         SizeOfFile(context, systemName.c_str(), size, report);
}

bool ZQFileUtil::GetSize(ZQContext *context, std::FILE *file, long long &size, bool report) {
  size = 0;
  if (file == nullptr) {
    Report(context, report, "uninitialized file pointer given, file size can not be determined.");
    return false;
  }
  if (fseeko(file, 0, SEEK_END) != 0) {
    ReportErrno(context, report);
    return false;
  }
  off_t const end = ftello(file);
  if (end < 0) {
    ReportErrno(context, report);
    return false;
  }
  size = static_cast<long long>(end);
  return true;
}

std::FILE *ZQFileUtil::OpenFile(ZQContext *context, char const *name, char const *mode, int) {
  if (name != nullptr && (!Transcodes(context, name) || !Transcodes(context, mode))) {
    return nullptr;
  }
  return Open(context, name, mode);
}

std::FILE *ZQFileUtil::OpenFile(ZQContext *context, wchar_t const *name, wchar_t const *mode, int) {
  if (name == nullptr) {
    return Open(context, nullptr, nullptr);
  }
  std::string systemName;
  std::string systemMode;
  if (!SystemName(context, name, systemName) || !SystemName(context, mode, systemMode)) {
    return nullptr;
  }
  return Open(context, systemName.c_str(), mode != nullptr ? systemMode.c_str() : nullptr);
}

bool ZQFileUtil::Read(ZQContext *context, char const *name, long long &size, unsigned char *buffer, bool report) {
  if (name == nullptr) {
    Report(context, report, "empty filename given, file content can not be read.");
    return false;
  }
  return ReadFile(context, name, size, buffer, report);
}

bool ZQFileUtil::Read(ZQContext *context, wchar_t const *name, long long &size, unsigned char *buffer, bool report) {
  if (name == nullptr) {
    Report(context, report, "empty filename given, file content can not be read.");
    return false;
  }
  std::string systemName;
  return SystemName(ReportingContext(context, report), name, systemName) &&
         ReadFile(context, systemName.c_str(), size, buffer, report);
}

bool ZQFileUtil::Read(ZQContext *context, std::FILE *file, long long &size, unsigned char *buffer, bool report) {
  if (file == nullptr) {
    Report(context, report, "uninitialized file pointer given, file content can not be read.");
    return false;
  }
  int const descriptor = fileno(file);
  long long remaining = size;
  long long done = 0;
  while (remaining != 0) {
    // Each request is a 32-bit count: a larger one ends the job rather than read less.
    if (remaining < 0 || remaining > static_cast<long long>(UINT_MAX)) {
      detail::FatalError();
    }
    ssize_t const n = read(descriptor, buffer + done, static_cast<unsigned int>(remaining));
    if (n < 0) {
      if (errno == EINTR) {
        continue;
      }
      ReportErrno(context, report);
      return false;
    }
    if (n == 0) {
      break;
    }
    done += n;
    remaining -= n;
  }
  size = done;
  return true;
}

bool ZQFileUtil::Remove(ZQContext *context, char const *name, bool report) {
  if (name == nullptr) {
    Report(context, report, "empty filename given, file can not be removed.");
    return false;
  }
  // Once the name is known good, a failed removal is always reported.
  return Transcodes(ReportingContext(context, report), name) && RemoveFile(context, name, true);
}

bool ZQFileUtil::Remove(ZQContext *context, wchar_t const *name, bool report) {
  if (name == nullptr) {
    return true;
  }
  std::string systemName;
  return SystemName(ReportingContext(context, report), name, systemName) &&
         RemoveFile(context, systemName.c_str(), report);
}

ZQResult ZQFileUtil::MakeDir(ZQContext *context, ZQString const &path, bool recursive) {
  ZQResult result(static_cast<long long>(Types::StatusCode_t::Success));
  if (recursive) {
    ZQString parent;
    ZQString name;
    SplitPath(context, path, parent, name);
    if (!parent.IsEmpty() && !IsExistent(context, parent.c_str())) {
      result = MakeDir(context, parent, true);
    }
  }
  if (!Transcodes(nullptr, path.c_str()) || mkdir(path.c_str(), 0777) != 0) {
    result.SetStatusCode(static_cast<long long>(Types::StatusCode_t::CreateDirectoryError));
  }
  return result;
}

bool ZQFileUtil::ConvertToFullPath(ZQContext *context, ZQString const &path, ZQString &result) {
  return FullPath(context, path, result);
}

bool ZQFileUtil::ConvertToLongPath(ZQContext *context, ZQString const &path, ZQString &result) {
  return FullPath(context, path, result);
}

bool ZQFileUtil::ConvertToShortPath(ZQContext *context, ZQString const &path, ZQString &result) {
  return FullPath(context, path, result);
}

} // namespace Velmora::Tessara::ZQ::Core

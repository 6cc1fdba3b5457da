// BuildInfo: when, from which revision and in which configuration the library was built.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Texts stamped in by the build. Outside a git checkout the git fields read "unknown".
class ZQCORE_EXPORT BuildInfo {
public:
  /// As the compiler's __DATE__, e.g. "May 13 2022".
  static char const *GetBuildDate();
  /// As the compiler's __TIME__, e.g. "09:02:07".
  static char const *GetBuildTime();
  /// The first six hexadecimal digits of the revision.
  static char const *GetBuildID();
  static char const *GetConfigurationName();
  /// "branch...upstream", or the branch alone when it tracks nothing.
  static char const *GetGitBranch();
  /// The full revision, 40 hexadecimal digits.
  static char const *GetGitRevision();
};

} // namespace Velmora::Tessara::ZQ::Core

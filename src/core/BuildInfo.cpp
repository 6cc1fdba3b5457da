#include <zqcore/core/BuildInfo.h>

#include "ZQBuildStamp.h"

namespace Velmora::Tessara::ZQ::Core {

char const *BuildInfo::GetBuildDate() { return __DATE__; }

char const *BuildInfo::GetBuildTime() { return __TIME__; }

char const *BuildInfo::GetBuildID() { return ZQ_GIT_BUILD_ID; }

char const *BuildInfo::GetConfigurationName() { return ZQ_BUILD_CONFIGURATION; }

char const *BuildInfo::GetGitBranch() { return ZQ_GIT_BRANCH; }

char const *BuildInfo::GetGitRevision() { return ZQ_GIT_REVISION; }

} // namespace Velmora::Tessara::ZQ::Core

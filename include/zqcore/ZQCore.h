// ZQCore: one header that declares the whole library.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/wmpi.h>

#include <zqcore/core/API.h>
#include <zqcore/core/BuildInfo.h>
#include <zqcore/core/Config.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/VersionInfo.h>
#include <zqcore/core/ZQAPI.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQExports.h>
#include <zqcore/core/ZQResult.h>

#include <zqcore/strings/ZQLocale.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/strings/ZQXercesString.h>

#include <zqcore/parallel/ZQMPT.h>

#include <zqcore/system/ZQOSUtil.h>

#include <zqcore/public/Context.h>
#include <zqcore/public/ErrorStack.h>
#include <zqcore/public/MPT.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>

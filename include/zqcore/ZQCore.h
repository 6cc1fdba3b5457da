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
#include <zqcore/strings/ZQStringUtil.h>
#include <zqcore/strings/ZQXercesString.h>

#include <zqcore/containers/ZQArray.h>
#include <zqcore/containers/ZQArrayBase.h>
#include <zqcore/containers/ZQArrayForwardIterator.h>
#include <zqcore/containers/ZQArrayIterator.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMap.h>
#include <zqcore/containers/ZQMapNativeKeyType.h>
#include <zqcore/containers/ZQMapNativeTypes.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSet.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/containers/ZQSetObjectType.h>

#include <zqcore/logging/ZQCreationFuncWithOneArg.h>
#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogHandler.h>
#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/logging/ZQRootLogger.h>

#include <zqcore/values/ZQColor.h>
#include <zqcore/values/ZQUnitsConverter.h>
#include <zqcore/values/ZQVariant.h>

#include <zqcore/geometry/ZQMatrix.h>
#include <zqcore/geometry/ZQNURBSCurveEvaluation.h>
#include <zqcore/geometry/ZQNURBSSurfaceEvaluation.h>
#include <zqcore/geometry/ZQSplineAlgorithms.h>
#include <zqcore/geometry/ZQTransform.h>
#include <zqcore/geometry/ZQVector.h>

#include <zqcore/parallel/ZQCommDataHandler.h>
#include <zqcore/parallel/ZQCommPatterns.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTArray.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/parallel/ZQMPTUtil.h>

#include <zqcore/hdf5/ZQHDF5DataBuffers.h>
#include <zqcore/hdf5/ZQHDF5DataCounts.h>
#include <zqcore/hdf5/ZQHDF5Util.h>

#include <zqcore/system/ZQFileUtil.h>
#include <zqcore/system/ZQOSUtil.h>
#include <zqcore/system/ZQSHA1.h>
#include <zqcore/system/ZQSysUtil.h>
#include <zqcore/system/ZQSystemMonitor.h>
#include <zqcore/system/ZQTimer.h>
#include <zqcore/system/ZQUtil.h>

#include <zqcore/public/Color.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/ErrorStack.h>
#include <zqcore/public/Float64Array.h>
#include <zqcore/public/Int64Array.h>
#include <zqcore/public/LogFileHandler.h>
#include <zqcore/public/Logger.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/LogHandler.h>
#include <zqcore/public/LogStreamHandler.h>
#include <zqcore/public/Math.h>
#include <zqcore/public/MPT.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/RootLogger.h>
#include <zqcore/public/SHA1.h>
#include <zqcore/public/String.h>
#include <zqcore/public/StringArray.h>
#include <zqcore/public/StringUtil.h>
#include <zqcore/public/SystemMonitor.h>
#include <zqcore/public/Timer.h>
#include <zqcore/public/Transform.h>
#include <zqcore/public/UnitsConverter.h>
#include <zqcore/public/Variant.h>

// Forward declarations of the library's classes, so that headers can name them without
// pulling in their definitions.
#pragma once

namespace Velmora::Tessara::ZQ::Core {

class ZQAPI;
class ZQColor;
class ZQCommDataHandler;
class ZQCommPatterns;
class ZQContext;
class ZQErrorStack;
class ZQFileUtil;
class ZQHDF5DataBuffers;
class ZQHDF5DataCounts;
class ZQHDF5Util;
class ZQLocale;
class ZQLogFileHandler;
class ZQLogger;
class ZQLogging;
class ZQLogHandler;
class ZQLogStreamHandler;
class ZQMPT;
class ZQMPTBuffer;
class ZQMPTUtil;
class ZQNURBSCurveEvaluation;
class ZQNURBSSurfaceEvaluation;
class ZQOSUtil;
class ZQResult;
class ZQRootLogger;
class ZQSHA1;
class ZQString;
class ZQStringEncoding;
class ZQStringUtil;
class ZQSystemMonitor;
class ZQSysUtil;
class ZQTimer;
class ZQTransform;
class ZQUnitsConverter;
class ZQUtil;
class ZQVariant;
class ZQXercesString;

template <typename R, typename A> class ZQCreationFuncWithOneArg;
template <typename I> class ZQArrayBase;
template <typename T, typename I> class ZQArray;
template <typename T, typename I> class ZQArrayNativeType;
template <typename T, typename I> class ZQArrayObjectType;
template <typename T, typename I> class ZQArrayIterator;
template <typename T, typename I> class ZQArrayForwardIterator;
template <typename T> class ZQSet;
template <typename T> class ZQSetObjectType;
template <typename T> class ZQSetNativeType;
template <typename K, typename V> class ZQMap;
template <typename K, typename V> class ZQMapObjectTypes;
template <typename K, typename V> class ZQMapNativeTypes;
template <typename K, typename V> class ZQMapNativeKeyType;
template <typename K, typename V> class ZQMapNativeValueType;
template <typename T> class ZQMPTArray;
template <typename T, int N> class ZQVector;
template <typename T, int Rows, int Cols, int Size> class ZQMatrix;

class API;
class BuildInfo;
class Color;
class Config;
class Context;
class ErrorStack;
class Float64Array;
class Int64Array;
class LogFileHandler;
class Logger;
class Logging;
class LogHandler;
class LogStreamHandler;
class Math;
class MPT;
class Result;
class RootLogger;
class SHA1;
class String;
class StringArray;
class StringUtil;
class SystemMonitor;
class Timer;
class Transform;
class Types;
class UnitsConverter;
class Variant;
class VersionInfo;

} // namespace Velmora::Tessara::ZQ::Core

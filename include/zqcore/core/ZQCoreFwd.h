// Forward declarations of the library's classes, so that headers can name them without
// pulling in their definitions.
#pragma once

namespace Velmora::Tessara::ZQ::Core {

class ZQAPI;
class ZQContext;
class ZQErrorStack;
class ZQLocale;
class ZQLogging;
class ZQMPT;
class ZQOSUtil;
class ZQResult;
class ZQString;
class ZQStringEncoding;
class ZQXercesString;

class API;
class BuildInfo;
class Config;
class Context;
class ErrorStack;
class MPT;
class Result;
class String;
class Types;
class VersionInfo;

} // namespace Velmora::Tessara::ZQ::Core

// ZQLogging: the registry of logger kinds and loggers that a context holds.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/logging/ZQCreationFuncWithOneArg.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

class ZQLogger;

/// Makes loggers by kind on first demand and fans every call out to all loggers it holds,
/// in the byte order of their names; there is no hierarchy of names. A fresh registry
/// knows the kinds "" (a root logger on standard output) and "Logger" (no handlers), and
/// holds the root logger under "" at level 20. Owns its loggers; reports to no error
/// stack, since the error stack logs through it. No locks; one thread of work.
class ZQCORE_EXPORT ZQLogging {
public:
  using CreationFunction = ZQLogger *(*)(ZQMPT *);

  ZQLogging();
  ZQLogging(ZQLogging const &) = delete;
  ZQLogging &operator=(ZQLogging const &) = delete;
  /// Destroys every logger, which closes their files.
  virtual ~ZQLogging();

  /// Sets the creator of a kind; loggers already made stay. False only for a wide name
  /// that cannot be transcoded.
  bool Register(ZQString const &kind, CreationFunction creator);
  bool Register(wchar_t const *kind, CreationFunction creator);
  bool Register(char const *kind, CreationFunction creator);
  /// The logger of that name, whatever its kind; made on first demand by the creator of
  /// `kind` (of the default kind if `kind` is unknown) with the registry's job. A creator
  /// that gives null leaves a null entry for good. Narrow nulls are empty names.
  ZQLogger *GetLogger(ZQString const &name, ZQString const &kind);
  ZQLogger *GetLogger(wchar_t const *name, wchar_t const *kind);
  ZQLogger *GetLogger(char const *name, char const *kind);
  /// Sets up the logger `name` of kind "Logger" writing to the file `name` (same name on
  /// every process) under the handler "LogFileHandler", then gives it `level` and
  /// `prefix`. False if `name` is null or the file is not open; level and prefix then stay.
  bool AddFileLogger(ZQString const &name, int level, ZQString const &prefix);
  bool AddFileLogger(wchar_t const *name, int level, wchar_t const *prefix);
  bool AddFileLogger(char const *name, int level, char const *prefix);
  /// Empty the set, then add the name (or the pointer) of each non-null logger; true.
  bool GetLoggerNames(ZQSetObjectType<ZQString> &names) const;
  bool GetLoggers(ZQSetNativeType<ZQLogger *> &loggers);
  void SetPrefix(ZQString const &prefix);
  void SetPrefix(wchar_t const *prefix);
  void SetPrefix(char const *prefix);
  /// Each logger logs at 10, 20, 30, 40 or 50 and applies its own threshold; rank -1
  /// means every process.
  void Debug(ZQString const &text, int rank = -1);
  void Debug(wchar_t const *text, int rank = -1);
  void Debug(char const *text, int rank = -1);
  void Info(ZQString const &text, int rank = -1);
  void Info(wchar_t const *text, int rank = -1);
  void Info(char const *text, int rank = -1);
  void Warning(ZQString const &text, int rank = -1);
  void Warning(wchar_t const *text, int rank = -1);
  void Warning(char const *text, int rank = -1);
  void Error(ZQString const &text, int rank = -1);
  void Error(wchar_t const *text, int rank = -1);
  void Error(char const *text, int rank = -1);
  void Critical(ZQString const &text, int rank = -1);
  void Critical(wchar_t const *text, int rank = -1);
  void Critical(char const *text, int rank = -1);
  void Log(int level, ZQString const &text, int rank = -1);
  void Log(int level, wchar_t const *text, int rank = -1);
  void Log(int level, char const *text, int rank = -1);
  /// The same as Log.
  void operator()(int level, ZQString const &text, int rank = -1);
  void operator()(int level, wchar_t const *text, int rank = -1);
  void operator()(int level, char const *text, int rank = -1);
  /// At least one logger is on (false with none); IsOff is its opposite.
  bool IsOn() const;
  bool IsOff() const;
  void On();
  void Off();
  void Flush();
  /// Stores the job for loggers made later, and hands both arguments to each logger.
  void SetMPT(ZQMPT *mpt, bool setDefaultPrefix);

private:
  using CreatorMap = ZQMapObjectTypes<ZQString, ZQCreationFuncWithOneArg<ZQLogger *, ZQMPT *>>;
  using LoggerMap = ZQMapNativeValueType<ZQString, ZQLogger *>;

  template <typename Call> void ForEachLogger(Call call);
  template <typename Prefix> bool AttachFileLogger(ZQString const &name, int level, Prefix prefix);
  void Reset();

  CreatorMap creators;
  LoggerMap loggers;
  ZQString defaultName;
  ZQMPT *mpt;
};

} // namespace Velmora::Tessara::ZQ::Core

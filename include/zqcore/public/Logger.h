// Logger: the public face of ZQLogger.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// A logger with a switch, a threshold and named handlers. Its own constructor makes no
/// inner logger: it is there for RootLogger, and a Logger built directly has none, so
/// that calling it is not valid. Destroying it destroys the inner logger.
class ZQCORE_EXPORT Logger {
public:
  explicit Logger(int level = 0, MPT *mpt = nullptr);
  Logger(Logger const &) = delete;
  Logger &operator=(Logger const &) = delete;
  virtual ~Logger();

  virtual void SetLevel(int level);
  virtual int GetLevel() const;
  virtual bool IsEnabledFor(int level) const;
  /// Takes the handler over and destroys the public object: `handler` is gone after the
  /// call. Should a wide name fail to transcode, the inner handler goes with it.
  virtual void AddHandler(String const &name, LogHandler *handler);
  virtual void AddHandler(wchar_t const *name, LogHandler *handler);
  virtual void AddHandler(char const *name, LogHandler *handler);
  virtual void RemoveHandler(String const &name);
  virtual void RemoveHandler(wchar_t const *name);
  virtual void RemoveHandler(char const *name);
  virtual void SetPrefix(String const &prefix);
  virtual void SetPrefix(wchar_t const *prefix);
  virtual void SetPrefix(char const *prefix);
  virtual void Debug(String const &text, int rank = -1);
  virtual void Debug(wchar_t const *text, int rank = -1);
  virtual void Debug(char const *text, int rank = -1);
  virtual void Info(String const &text, int rank = -1);
  virtual void Info(wchar_t const *text, int rank = -1);
  virtual void Info(char const *text, int rank = -1);
  virtual void Warning(String const &text, int rank = -1);
  virtual void Warning(wchar_t const *text, int rank = -1);
  virtual void Warning(char const *text, int rank = -1);
  virtual void Error(String const &text, int rank = -1);
  virtual void Error(wchar_t const *text, int rank = -1);
  virtual void Error(char const *text, int rank = -1);
  virtual void Critical(String const &text, int rank = -1);
  virtual void Critical(wchar_t const *text, int rank = -1);
  virtual void Critical(char const *text, int rank = -1);
  virtual void Log(int level, String const &text, int rank = -1);
  virtual void Log(int level, wchar_t const *text, int rank = -1);
  virtual void Log(int level, char const *text, int rank = -1);
  virtual bool IsOn() const;
  virtual bool IsOff() const;
  virtual void On();
  virtual void Off();
  virtual void Flush();
  void SetMPT(MPT *mpt, bool setDefaultPrefix);

protected:
  ZQLogger *logger;
};

} // namespace Velmora::Tessara::ZQ::Core

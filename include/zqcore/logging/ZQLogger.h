// ZQLogger: a named channel with a switch, a level threshold and named handlers.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQMapNativeValueType.h>
#include <zqcore/containers/ZQSetNativeType.h>
#include <zqcore/containers/ZQSetObjectType.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

class ZQLogHandler;

/// Passes a message when it is on and the level reaches the threshold, then hands it to
/// every handler in the byte order of their names; the handlers choose the rank. Owns its
/// handlers. Each text operation comes as ZQString, wide and narrow text, and a wide name
/// that cannot be transcoded is not found. No locks; one thread of work.
class ZQCORE_EXPORT ZQLogger {
public:
  /// On, at threshold `level`, no handlers; `mpt` (not owned) goes to handlers on SetMPT.
  explicit ZQLogger(int level = 0, ZQMPT *mpt = nullptr);
  ZQLogger(ZQLogger const &) = delete;
  ZQLogger &operator=(ZQLogger const &) = delete;
  /// Destroys the handlers, which closes their files.
  virtual ~ZQLogger();

  /// A new logger at level 0 that the caller owns; the creator of the kind "Logger".
  static ZQLogger *Create();
  static ZQLogger *Create(ZQMPT *mpt);

  /// The threshold, without a range check.
  virtual void SetLevel(int level);
  virtual int GetLevel() const;
  /// On, and `level` at least the threshold.
  virtual bool IsEnabledFor(int level) const;
  /// Empty the set, then add the name (or the pointer) of each handler; true.
  virtual bool GetHandlerNames(ZQSetObjectType<ZQString> &names) const;
  virtual bool GetHandlers(ZQSetNativeType<ZQLogHandler *> &handlers);
  /// The handler of that name, still owned by the logger; null if none.
  virtual ZQLogHandler *GetHandler(ZQString const &name);
  virtual ZQLogHandler *GetHandler(wchar_t const *name);
  virtual ZQLogHandler *GetHandler(char const *name);
  /// Takes over `handler` and sets the caller's pointer to null; a handler of the same
  /// name is destroyed. Must not be given null. The handler's job and prefix stay.
  virtual void AddHandler(ZQString const &name, ZQLogHandler *&handler);
  virtual void AddHandler(wchar_t const *name, ZQLogHandler *&handler);
  virtual void AddHandler(char const *name, ZQLogHandler *&handler);
  /// Destroys the handler of that name; an unknown name is no error.
  virtual void RemoveHandler(ZQString const &name);
  virtual void RemoveHandler(wchar_t const *name);
  virtual void RemoveHandler(char const *name);
  /// Sets the prefix of each handler now held; the logger keeps none of its own.
  virtual void SetPrefix(ZQString const &prefix);
  virtual void SetPrefix(wchar_t const *prefix);
  virtual void SetPrefix(char const *prefix);
  /// Log at 10, 20, 30, 40 and 50; rank -1 means every process.
  virtual void Debug(ZQString const &text, int rank = -1);
  virtual void Debug(wchar_t const *text, int rank = -1);
  virtual void Debug(char const *text, int rank = -1);
  virtual void Info(ZQString const &text, int rank = -1);
  virtual void Info(wchar_t const *text, int rank = -1);
  virtual void Info(char const *text, int rank = -1);
  virtual void Warning(ZQString const &text, int rank = -1);
  virtual void Warning(wchar_t const *text, int rank = -1);
  virtual void Warning(char const *text, int rank = -1);
  virtual void Error(ZQString const &text, int rank = -1);
  virtual void Error(wchar_t const *text, int rank = -1);
  virtual void Error(char const *text, int rank = -1);
  virtual void Critical(ZQString const &text, int rank = -1);
  virtual void Critical(wchar_t const *text, int rank = -1);
  virtual void Critical(char const *text, int rank = -1);
  /// Every handler gets the text in the same form if IsEnabledFor(level).
  virtual void Log(int level, ZQString const &text, int rank = -1);
  virtual void Log(int level, wchar_t const *text, int rank = -1);
  virtual void Log(int level, char const *text, int rank = -1);
  /// The switch, independent of the threshold.
  virtual bool IsOn() const;
  virtual bool IsOff() const;
  virtual void On();
  virtual void Off();
  /// Flushes each handler, in name order.
  virtual void Flush();

  /// Stores the job and hands both arguments to ZQLogHandler::SetMPT of each handler.
  void SetMPT(ZQMPT *mpt, bool setDefaultPrefix);

protected:
  /// Destroys every handler; on, level 0; the job stays.
  void Reset();

private:
  using HandlerMap = ZQMapNativeValueType<ZQString, ZQLogHandler *>;

  bool on;
  int level;
  HandlerMap handlers;
  ZQMPT *mpt;
};

} // namespace Velmora::Tessara::ZQ::Core

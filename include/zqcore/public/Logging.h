// Logging: the public face of ZQLogging.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

namespace detail {
struct FacadeAccess;
}

/// The logging registry. Owns its inner registry when made by the default constructor,
/// and borrows it when handed out by a Context. Without an inner registry every member
/// does nothing, and AddFileLogger, IsOn and IsOff are all false.
class ZQCORE_EXPORT Logging {
public:
  /// An owned fresh registry: a root logger on standard output at level 20.
  Logging();
  Logging(Logging const &) = delete;
  Logging &operator=(Logging const &) = delete;
  /// Destroys the inner registry only if it is owned.
  virtual ~Logging();

  /// A logger `name` writing to the file `name` at `level` and above, with `prefix`.
  bool AddFileLogger(String const &name, int level, String const &prefix);
  bool AddFileLogger(wchar_t const *name, int level, wchar_t const *prefix);
  bool AddFileLogger(char const *name, int level, char const *prefix);
  void SetPrefix(String const &prefix);
  void SetPrefix(wchar_t const *prefix);
  void SetPrefix(char const *prefix);
  /// Every logger logs at 10, 20, 30, 40 or 50; rank -1 means every process.
  void Debug(String const &text, int rank = -1);
  void Debug(wchar_t const *text, int rank = -1);
  void Debug(char const *text, int rank = -1);
  void Info(String const &text, int rank = -1);
  void Info(wchar_t const *text, int rank = -1);
  void Info(char const *text, int rank = -1);
  void Warning(String const &text, int rank = -1);
  void Warning(wchar_t const *text, int rank = -1);
  void Warning(char const *text, int rank = -1);
  void Error(String const &text, int rank = -1);
  void Error(wchar_t const *text, int rank = -1);
  void Error(char const *text, int rank = -1);
  void Critical(String const &text, int rank = -1);
  void Critical(wchar_t const *text, int rank = -1);
  void Critical(char const *text, int rank = -1);
  void Log(int level, String const &text, int rank = -1);
  void Log(int level, wchar_t const *text, int rank = -1);
  void Log(int level, char const *text, int rank = -1);
  void operator()(int level, String const &text, int rank = -1);
  void operator()(int level, wchar_t const *text, int rank = -1);
  void operator()(int level, char const *text, int rank = -1);
  /// At least one logger is on; false without an inner registry, like IsOff.
  bool IsOn() const;
  bool IsOff() const;
  void On();
  void Off();
  void Flush();
  /// Binds the loggers to the job; with `setDefaultPrefix` each handler gets the rank label.
  void SetMPT(MPT *mpt, bool setDefaultPrefix);

private:
  friend class Context;
  friend struct detail::FacadeAccess;

  /// A wrapper that borrows the given object, which may be null.
  explicit Logging(ZQLogging *borrowed);

  ZQLogging *logging;
  bool owned;
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQErrorStack: the bounded list of failure messages that a context carries.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/strings/ZQString.h>

#include <list>

namespace Velmora::Tessara::ZQ::Core {

/// Messages, oldest first and newest last. At its bound a push drops exactly the oldest
/// message; a bound of 0 or less means no bound. Belongs to one thread; takes no lock.
class ZQCORE_EXPORT ZQErrorStack {
public:
  static constexpr long long DefaultMaxNMsg = 1024;

  ZQErrorStack();
  ZQErrorStack(ZQErrorStack const &other);
  ZQErrorStack &operator=(ZQErrorStack const &other);
  virtual ~ZQErrorStack();

  /// Pushes a copy of `message` as the newest (wide text is transcoded; a failure pushes "").
  void operator()(ZQString const &message);
  void operator()(char const *message);
  void operator()(wchar_t const *message);
  void Push(char const *message);
  void Push(wchar_t const *message);

  /// The newest message, "" when there is none; the stack is unchanged.
  ZQString GetLastMsg() const;
  /// Removes and returns the newest message, "" when there is none.
  ZQString Pop();
  /// Pushes the text of the current errno.
  void SetMsgFromErrno();
  /// Pushes the operating system's text for its last error (errno on this platform).
  void SetMsgFromLastError();

  bool GetAutoLogMsg() const;
  void SetAutoLogMsg(bool on);
  long long GetMaxNMsg() const;
  /// Sets the bound; messages already held are not trimmed.
  void SetMaxNMsg(long long maxNMsg);
  long long GetNMsg() const;
  bool IsEmpty() const;
  bool IsInitialized() const;
  /// The newest message exists and is not empty.
  bool IsLastMsgSet() const;
  /// At least one message is not empty.
  bool IsMsgSet() const;
  /// Where automatic logging goes; not owned.
  void SetLogging(ZQLogging *logging);
  /// Removes all messages; bound, flag and logging stay.
  void Clear();
  /// Back to the defaults: bound 1024, automatic logging off, empty, no logging.
  void Reset();

private:
  void Copy(ZQErrorStack const &other);
  void PushMessage(ZQString const &message);

  long long maxNMsg;
  bool autoLogMsg;
  std::list<ZQString> messages;
  ZQLogging *logging;
};

} // namespace Velmora::Tessara::ZQ::Core

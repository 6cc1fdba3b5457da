// ErrorStack: the public face of ZQErrorStack.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

namespace detail {
struct FacadeAccess;
}

/// Failure messages, oldest first and newest last. Owns its inner stack when made by
/// the default constructor, and borrows it when handed out by a Context. Every member
/// tolerates a missing inner stack: it does nothing and gives the neutral result.
class ZQCORE_EXPORT ErrorStack {
public:
  /// An owned, empty stack with bound 1024.
  ErrorStack();
  /// An owned stack with a copy of `other`'s messages, bound, flag and logging target.
  ErrorStack(ErrorStack const &other);
  /// Copies `other`'s content into this stack, borrowed or not.
  ErrorStack &operator=(ErrorStack const &other);
  /// Destroys the inner stack only if it is owned.
  virtual ~ErrorStack();

  /// Push a copy of the message as the newest; at the bound the oldest is dropped.
  /// Wide text is transcoded, and a failure pushes "".
  void operator()(String const &message);
  void operator()(char const *message);
  void operator()(wchar_t const *message);
  void Push(char const *message);
  void Push(wchar_t const *message);

  /// The newest message, "" when there is none; the stack is unchanged.
  String GetLastMsg() const;
  /// Removes and returns the newest message, "" when there is none.
  String Pop();
  /// Pushes the text of the current errno.
  void SetMsgFromErrno();
  /// Pushes the operating system's text for its last error.
  void SetMsgFromLastError();

  /// Whether a push is also logged; false without an inner stack.
  bool GetAutoLogMsg() const;
  void SetAutoLogMsg(bool on);
  /// The bound (0 or less: none); 0 without an inner stack. Setting it trims nothing.
  long long GetMaxNMsg() const;
  void SetMaxNMsg(long long maxNMsg);
  /// Number of messages; 0 without an inner stack.
  long long GetNMsg() const;
  /// No messages; true without an inner stack. IsInitialized is its opposite, but false
  /// without an inner stack.
  bool IsEmpty() const;
  bool IsInitialized() const;
  /// The newest message exists and is not empty.
  bool IsLastMsgSet() const;
  /// At least one message is not empty.
  bool IsMsgSet() const;
  /// Where automatic logging goes (not owned); null detaches it.
  void SetLogging(Logging *logging);
  /// Removes all messages; bound, flag and logging target stay.
  void Clear();
  /// Back to the defaults: bound 1024, automatic logging off, empty, no logging target.
  void Reset();

private:
  friend class Context;
  friend struct detail::FacadeAccess;

  /// A wrapper that borrows the given object, which may be null.
  explicit ErrorStack(ZQErrorStack *borrowed);
  void Copy(ErrorStack const &other);

  ZQErrorStack *errorStack;
  bool owned;
};

} // namespace Velmora::Tessara::ZQ::Core

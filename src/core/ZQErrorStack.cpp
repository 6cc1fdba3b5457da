#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/logging/ZQLogging.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Velmora::Tessara::ZQ::Core {

ZQErrorStack::ZQErrorStack() : maxNMsg(DefaultMaxNMsg), autoLogMsg(false), logging(nullptr) {}

ZQErrorStack::ZQErrorStack(ZQErrorStack const &other)
    : maxNMsg(other.maxNMsg), autoLogMsg(other.autoLogMsg), messages(other.messages), logging(other.logging) {}

ZQErrorStack &ZQErrorStack::operator=(ZQErrorStack const &other) {
  Copy(other);
  return *this;
}

ZQErrorStack::~ZQErrorStack() = default;

void ZQErrorStack::operator()(ZQString const &message) { PushMessage(message); }

void ZQErrorStack::operator()(char const *message) { PushMessage(ZQString(message)); }

void ZQErrorStack::operator()(wchar_t const *message) { PushMessage(ZQString(message)); }

void ZQErrorStack::Push(char const *message) { PushMessage(ZQString(message)); }

void ZQErrorStack::Push(wchar_t const *message) { PushMessage(ZQString(message)); }

ZQString ZQErrorStack::GetLastMsg() const { return messages.empty() ? ZQString() : messages.back(); }

ZQString ZQErrorStack::Pop() {
  if (messages.empty()) {
    return ZQString();
  }
  ZQString last(std::move(messages.back()));
  messages.pop_back();
  return last;
}

void ZQErrorStack::SetMsgFromErrno() {
  char buffer[1024];
  PushMessage(ZQString(strerror_r(errno, buffer, sizeof buffer)));
}

// The operating system's last error on this platform is errno.
void ZQErrorStack::SetMsgFromLastError() { SetMsgFromErrno(); }

bool ZQErrorStack::GetAutoLogMsg() const { return autoLogMsg; }

void ZQErrorStack::SetAutoLogMsg(bool on) { autoLogMsg = on; }

long long ZQErrorStack::GetMaxNMsg() const { return maxNMsg; }

void ZQErrorStack::SetMaxNMsg(long long newMaxNMsg) { maxNMsg = newMaxNMsg; }

long long ZQErrorStack::GetNMsg() const { return static_cast<long long>(messages.size()); }

bool ZQErrorStack::IsEmpty() const { return messages.empty(); }

bool ZQErrorStack::IsInitialized() const { return !messages.empty(); }

bool ZQErrorStack::IsLastMsgSet() const { return !messages.empty() && !messages.back().IsEmpty(); }

bool ZQErrorStack::IsMsgSet() const {
  return std::any_of(messages.begin(), messages.end(), [](ZQString const &m) { return !m.IsEmpty(); });
}

void ZQErrorStack::SetLogging(ZQLogging *newLogging) { logging = newLogging; }

void ZQErrorStack::Clear() { messages.clear(); }

void ZQErrorStack::Reset() {
  maxNMsg = DefaultMaxNMsg;
  autoLogMsg = false;
  messages.clear();
  logging = nullptr;
}

void ZQErrorStack::Copy(ZQErrorStack const &other) {
  if (this == &other) {
    return;
  }
  maxNMsg = other.maxNMsg;
  autoLogMsg = other.autoLogMsg;
  messages = other.messages;
  logging = other.logging;
}

void ZQErrorStack::PushMessage(ZQString const &message) {
  // At the bound exactly one oldest message goes, so a lowered bound is reached only by popping.
  if (maxNMsg >= 1 && GetNMsg() >= maxNMsg) {
    messages.pop_front();
  }
  messages.push_back(message);
  if (autoLogMsg && logging != nullptr) {
    logging->Error(message, -1);
  }
}

} // namespace Velmora::Tessara::ZQ::Core

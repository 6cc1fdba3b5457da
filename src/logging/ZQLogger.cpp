#include <zqcore/logging/ZQLogHandler.h>
#include <zqcore/logging/ZQLogger.h>

#include "strings/detail/WideText.h"

namespace Velmora::Tessara::ZQ::Core {

namespace {

// Handler names in any text form; a wide name that cannot be transcoded has no name.
bool ToName(ZQString const &name, ZQString &out) {
  out = name;
  return true;
}
bool ToName(char const *name, ZQString &out) {
  out = name;
  return true;
}
bool ToName(wchar_t const *name, ZQString &out) { return detail::WideToZQString(name, out); }

using HandlerMap = ZQMapNativeValueType<ZQString, ZQLogHandler *>;

template <typename Name> ZQLogHandler *FindHandler(HandlerMap &handlers, Name name) {
  ZQString key;
  if (!ToName(name, key)) {
    return nullptr;
  }
  auto const found = handlers.find(key);
  return found != handlers.end() ? found->second : nullptr;
}

// Ownership passes only once the name is known, so that a caller whose wide name cannot
// be transcoded keeps its handler.
template <typename Name> void InsertHandler(HandlerMap &handlers, Name name, ZQLogHandler *&handler) {
  ZQString key;
  if (!ToName(name, key)) {
    return;
  }
  ZQLogHandler *&slot = handlers[key];
  delete slot;
  slot = handler;
  handler = nullptr;
}

template <typename Name> void EraseHandler(HandlerMap &handlers, Name name) {
  ZQString key;
  if (!ToName(name, key)) {
    return;
  }
  auto const found = handlers.find(key);
  if (found != handlers.end()) {
    delete found->second;
    handlers.erase(found);
  }
}

template <typename Text> void SetHandlerPrefixes(HandlerMap &handlers, Text prefix) {
  for (auto const &entry : handlers) {
    if (entry.second != nullptr) {
      entry.second->SetPrefix(prefix);
    }
  }
}

template <typename Text> void EmitToHandlers(HandlerMap &handlers, Text text, int rank) {
  for (auto const &entry : handlers) {
    entry.second->Emit(text, rank);
  }
}

} // namespace

ZQLogger::ZQLogger(int initialLevel, ZQMPT *linkedMPT) : on(true), level(initialLevel), mpt(linkedMPT) {}

ZQLogger::~ZQLogger() { Reset(); }

ZQLogger *ZQLogger::Create() { return new ZQLogger(0, nullptr); }

ZQLogger *ZQLogger::Create(ZQMPT *linkedMPT) { return new ZQLogger(0, linkedMPT); }

void ZQLogger::SetLevel(int newLevel) { level = newLevel; }

int ZQLogger::GetLevel() const { return level; }

bool ZQLogger::IsEnabledFor(int messageLevel) const { return on && messageLevel >= level; }

bool ZQLogger::GetHandlerNames(ZQSetObjectType<ZQString> &names) const {
  names.clear();
  for (auto const &entry : handlers) {
    if (entry.second != nullptr) {
      names.insert(entry.first);
    }
  }
  return true;
}

bool ZQLogger::GetHandlers(ZQSetNativeType<ZQLogHandler *> &result) {
  result.clear();
  for (auto const &entry : handlers) {
    if (entry.second != nullptr) {
      result.insert(entry.second);
    }
  }
  return true;
}

ZQLogHandler *ZQLogger::GetHandler(ZQString const &name) { return FindHandler(handlers, name); }

ZQLogHandler *ZQLogger::GetHandler(wchar_t const *name) { return FindHandler(handlers, name); }

ZQLogHandler *ZQLogger::GetHandler(char const *name) { return FindHandler(handlers, name); }

void ZQLogger::AddHandler(ZQString const &name, ZQLogHandler *&handler) { InsertHandler(handlers, name, handler); }

void ZQLogger::AddHandler(wchar_t const *name, ZQLogHandler *&handler) { InsertHandler(handlers, name, handler); }

void ZQLogger::AddHandler(char const *name, ZQLogHandler *&handler) { InsertHandler(handlers, name, handler); }

void ZQLogger::RemoveHandler(ZQString const &name) { EraseHandler(handlers, name); }

void ZQLogger::RemoveHandler(wchar_t const *name) { EraseHandler(handlers, name); }

void ZQLogger::RemoveHandler(char const *name) { EraseHandler(handlers, name); }

void ZQLogger::SetPrefix(ZQString const &prefix) { SetHandlerPrefixes(handlers, prefix); }

void ZQLogger::SetPrefix(wchar_t const *prefix) { SetHandlerPrefixes(handlers, prefix); }

void ZQLogger::SetPrefix(char const *prefix) { SetHandlerPrefixes(handlers, prefix); }

void ZQLogger::Debug(ZQString const &text, int rank) { Log(10, text, rank); }

void ZQLogger::Debug(wchar_t const *text, int rank) { Log(10, text, rank); }

void ZQLogger::Debug(char const *text, int rank) { Log(10, text, rank); }

void ZQLogger::Info(ZQString const &text, int rank) { Log(20, text, rank); }

void ZQLogger::Info(wchar_t const *text, int rank) { Log(20, text, rank); }

void ZQLogger::Info(char const *text, int rank) { Log(20, text, rank); }

void ZQLogger::Warning(ZQString const &text, int rank) { Log(30, text, rank); }

void ZQLogger::Warning(wchar_t const *text, int rank) { Log(30, text, rank); }

void ZQLogger::Warning(char const *text, int rank) { Log(30, text, rank); }

void ZQLogger::Error(ZQString const &text, int rank) { Log(40, text, rank); }

void ZQLogger::Error(wchar_t const *text, int rank) { Log(40, text, rank); }

void ZQLogger::Error(char const *text, int rank) { Log(40, text, rank); }

void ZQLogger::Critical(ZQString const &text, int rank) { Log(50, text, rank); }

void ZQLogger::Critical(wchar_t const *text, int rank) { Log(50, text, rank); }

void ZQLogger::Critical(char const *text, int rank) { Log(50, text, rank); }

void ZQLogger::Log(int messageLevel, ZQString const &text, int rank) {
  if (IsEnabledFor(messageLevel)) {
    EmitToHandlers(handlers, text, rank);
  }
}

void ZQLogger::Log(int messageLevel, wchar_t const *text, int rank) {
  if (IsEnabledFor(messageLevel)) {
    EmitToHandlers(handlers, text, rank);
  }
}

void ZQLogger::Log(int messageLevel, char const *text, int rank) {
  if (IsEnabledFor(messageLevel)) {
    EmitToHandlers(handlers, text, rank);
  }
}

bool ZQLogger::IsOn() const { return on; }

bool ZQLogger::IsOff() const { return !on; }

void ZQLogger::On() { on = true; }

void ZQLogger::Off() { on = false; }

void ZQLogger::Flush() {
  for (auto const &entry : handlers) {
    entry.second->Flush();
  }
}

void ZQLogger::SetMPT(ZQMPT *newMPT, bool setDefaultPrefix) {
  mpt = newMPT;
  for (auto const &entry : handlers) {
    if (entry.second != nullptr) {
      entry.second->SetMPT(newMPT, setDefaultPrefix);
    }
  }
}

// Handlers go in name order, which is also the order in which their files close.
void ZQLogger::Reset() {
  for (auto &entry : handlers) {
    delete entry.second;
    entry.second = nullptr;
  }
  handlers.clear();
  on = true;
  level = 0;
}

} // namespace Velmora::Tessara::ZQ::Core

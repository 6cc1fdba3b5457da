#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/logging/ZQRootLogger.h>

#include "strings/detail/WideText.h"

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr char const *kLoggerKind = "Logger";
constexpr char const *kFileHandlerName = "LogFileHandler";
constexpr int kDefaultLevel = 20;

} // namespace

ZQLogging::ZQLogging() : mpt(nullptr) {
  Register(defaultName, static_cast<CreationFunction>(&ZQRootLogger::Create));
  Register(kLoggerKind, static_cast<CreationFunction>(&ZQLogger::Create));
  ZQLogger *root = GetLogger(defaultName, defaultName);
  root->SetLevel(kDefaultLevel);
}

ZQLogging::~ZQLogging() { Reset(); }

bool ZQLogging::Register(ZQString const &kind, CreationFunction creator) {
  creators[kind] = ZQCreationFuncWithOneArg<ZQLogger *, ZQMPT *>(creator);
  return true;
}

bool ZQLogging::Register(wchar_t const *kind, CreationFunction creator) {
  ZQString narrowKind;
  return detail::WideToZQString(kind, narrowKind) && Register(narrowKind, creator);
}

bool ZQLogging::Register(char const *kind, CreationFunction creator) { return Register(ZQString(kind), creator); }

// An unknown kind falls back on the default kind, whose creator is made empty if even that
// is gone, so the answer is a root logger or null, never a failure.
ZQLogger *ZQLogging::GetLogger(ZQString const &name, ZQString const &kind) {
  auto const existing = loggers.find(name);
  if (existing != loggers.end()) {
    return existing->second;
  }
  auto creator = creators.find(kind);
  if (creator == creators.end()) {
    creator = creators.emplace(defaultName, ZQCreationFuncWithOneArg<ZQLogger *, ZQMPT *>()).first;
  }
  ZQLogger *created = creator->second(mpt);
  loggers[name] = created;
  return created;
}

ZQLogger *ZQLogging::GetLogger(wchar_t const *name, wchar_t const *kind) {
  ZQString narrowName;
  ZQString narrowKind;
  if (!detail::WideToZQString(name, narrowName) || !detail::WideToZQString(kind, narrowKind)) {
    return nullptr;
  }
  return GetLogger(narrowName, narrowKind);
}

ZQLogger *ZQLogging::GetLogger(char const *name, char const *kind) { return GetLogger(ZQString(name), ZQString(kind)); }

// The file is opened once per name: a later call finds the handler and only changes level
// and prefix. A file that failed stays failed, and the logger keeps its level and prefix.
template <typename Prefix> bool ZQLogging::AttachFileLogger(ZQString const &name, int level, Prefix prefix) {
  ZQLogger *logger = GetLogger(name, ZQString(kLoggerKind));
  if (logger == nullptr) {
    return false;
  }
  if (logger->GetHandler(kFileHandlerName) == nullptr) {
    ZQLogHandler *file = ZQLogFileHandler::Create(name, nullptr);
    logger->AddHandler(kFileHandlerName, file);
  }
  auto const *file = dynamic_cast<ZQLogFileHandler const *>(logger->GetHandler(kFileHandlerName));
  if (file == nullptr || !file->IsOpen()) {
    return false;
  }
  logger->SetLevel(level);
  logger->SetPrefix(prefix);
  return true;
}

bool ZQLogging::AddFileLogger(ZQString const &name, int level, ZQString const &prefix) {
  return AddFileLogger(name.c_str(), level, prefix.c_str());
}

bool ZQLogging::AddFileLogger(wchar_t const *name, int level, wchar_t const *prefix) {
  ZQString narrowName;
  return name != nullptr && detail::WideToZQString(name, narrowName) && AttachFileLogger(narrowName, level, prefix);
}

bool ZQLogging::AddFileLogger(char const *name, int level, char const *prefix) {
  return name != nullptr && AttachFileLogger(ZQString(name), level, prefix);
}

bool ZQLogging::GetLoggerNames(ZQSetObjectType<ZQString> &names) const {
  names.clear();
  for (auto const &entry : loggers) {
    if (entry.second != nullptr) {
      names.insert(entry.first);
    }
  }
  return true;
}

bool ZQLogging::GetLoggers(ZQSetNativeType<ZQLogger *> &result) {
  result.clear();
  for (auto const &entry : loggers) {
    if (entry.second != nullptr) {
      result.insert(entry.second);
    }
  }
  return true;
}

template <typename Call> void ZQLogging::ForEachLogger(Call call) {
  for (auto const &entry : loggers) {
    if (entry.second != nullptr) {
      call(*entry.second);
    }
  }
}

void ZQLogging::SetPrefix(ZQString const &prefix) {
  ForEachLogger([&](ZQLogger &logger) { logger.SetPrefix(prefix); });
}

void ZQLogging::SetPrefix(wchar_t const *prefix) {
  ForEachLogger([&](ZQLogger &logger) { logger.SetPrefix(prefix); });
}

void ZQLogging::SetPrefix(char const *prefix) {
  ForEachLogger([&](ZQLogger &logger) { logger.SetPrefix(prefix); });
}

void ZQLogging::Debug(ZQString const &text, int rank) { Log(10, text, rank); }

void ZQLogging::Debug(wchar_t const *text, int rank) { Log(10, text, rank); }

void ZQLogging::Debug(char const *text, int rank) { Log(10, text, rank); }

void ZQLogging::Info(ZQString const &text, int rank) { Log(20, text, rank); }

void ZQLogging::Info(wchar_t const *text, int rank) { Log(20, text, rank); }

void ZQLogging::Info(char const *text, int rank) { Log(20, text, rank); }

void ZQLogging::Warning(ZQString const &text, int rank) { Log(30, text, rank); }

void ZQLogging::Warning(wchar_t const *text, int rank) { Log(30, text, rank); }

void ZQLogging::Warning(char const *text, int rank) { Log(30, text, rank); }

void ZQLogging::Error(ZQString const &text, int rank) { Log(40, text, rank); }

void ZQLogging::Error(wchar_t const *text, int rank) { Log(40, text, rank); }

void ZQLogging::Error(char const *text, int rank) { Log(40, text, rank); }

void ZQLogging::Critical(ZQString const &text, int rank) { Log(50, text, rank); }

void ZQLogging::Critical(wchar_t const *text, int rank) { Log(50, text, rank); }

void ZQLogging::Critical(char const *text, int rank) { Log(50, text, rank); }

void ZQLogging::Log(int level, ZQString const &text, int rank) {
  ForEachLogger([&](ZQLogger &logger) { logger.Log(level, text, rank); });
}

void ZQLogging::Log(int level, wchar_t const *text, int rank) {
  ForEachLogger([&](ZQLogger &logger) { logger.Log(level, text, rank); });
}

void ZQLogging::Log(int level, char const *text, int rank) {
  ForEachLogger([&](ZQLogger &logger) { logger.Log(level, text, rank); });
}

void ZQLogging::operator()(int level, ZQString const &text, int rank) { Log(level, text, rank); }

void ZQLogging::operator()(int level, wchar_t const *text, int rank) { Log(level, text, rank); }

void ZQLogging::operator()(int level, char const *text, int rank) { Log(level, text, rank); }

bool ZQLogging::IsOn() const {
  for (auto const &entry : loggers) {
    if (entry.second != nullptr && entry.second->IsOn()) {
      return true;
    }
  }
  return false;
}

bool ZQLogging::IsOff() const { return !IsOn(); }

void ZQLogging::On() {
  ForEachLogger([](ZQLogger &logger) { logger.On(); });
}

void ZQLogging::Off() {
  ForEachLogger([](ZQLogger &logger) { logger.Off(); });
}

void ZQLogging::Flush() {
  ForEachLogger([](ZQLogger &logger) { logger.Flush(); });
}

void ZQLogging::SetMPT(ZQMPT *newMPT, bool setDefaultPrefix) {
  mpt = newMPT;
  ForEachLogger([&](ZQLogger &logger) { logger.SetMPT(newMPT, setDefaultPrefix); });
}

// Loggers go in name order, and with them their handlers, which closes the files.
void ZQLogging::Reset() {
  ForEachLogger([](ZQLogger &logger) { delete &logger; });
  loggers.clear();
  defaultName.Clear();
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/logging/ZQRootLogger.h>
#include <zqcore/public/LogHandler.h>
#include <zqcore/public/RootLogger.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;

// The base constructor leaves the inner logger to RootLogger, which allocates one.
Logger::Logger(int, MPT *) : logger(nullptr) {}

Logger::~Logger() {
  delete logger;
  logger = nullptr;
}

void Logger::SetLevel(int level) { logger->SetLevel(level); }
int Logger::GetLevel() const { return logger->GetLevel(); }
bool Logger::IsEnabledFor(int level) const { return logger->IsEnabledFor(level); }

// The inner logger takes the inner handler and nulls the public object's pointer, unless
// the name fails to transcode; either way the public object goes, and with it whatever
// inner handler it still holds.
void Logger::AddHandler(String const &name, LogHandler *handler) {
  logger->AddHandler(*name.GetString(), handler->handler);
  delete handler;
}
void Logger::AddHandler(wchar_t const *name, LogHandler *handler) {
  logger->AddHandler(name, handler->handler);
  delete handler;
}
void Logger::AddHandler(char const *name, LogHandler *handler) {
  logger->AddHandler(name, handler->handler);
  delete handler;
}
void Logger::RemoveHandler(String const &name) { logger->RemoveHandler(*name.GetString()); }
void Logger::RemoveHandler(wchar_t const *name) { logger->RemoveHandler(name); }
void Logger::RemoveHandler(char const *name) { logger->RemoveHandler(name); }
void Logger::SetPrefix(String const &prefix) { logger->SetPrefix(*prefix.GetString()); }
void Logger::SetPrefix(wchar_t const *prefix) { logger->SetPrefix(prefix); }
void Logger::SetPrefix(char const *prefix) { logger->SetPrefix(prefix); }
void Logger::Debug(String const &text, int rank) { Log(10, text, rank); }
void Logger::Debug(wchar_t const *text, int rank) { Log(10, text, rank); }
void Logger::Debug(char const *text, int rank) { Log(10, text, rank); }
void Logger::Info(String const &text, int rank) { Log(20, text, rank); }
void Logger::Info(wchar_t const *text, int rank) { Log(20, text, rank); }
void Logger::Info(char const *text, int rank) { Log(20, text, rank); }
void Logger::Warning(String const &text, int rank) { Log(30, text, rank); }
void Logger::Warning(wchar_t const *text, int rank) { Log(30, text, rank); }
void Logger::Warning(char const *text, int rank) { Log(30, text, rank); }
void Logger::Error(String const &text, int rank) { Log(40, text, rank); }
void Logger::Error(wchar_t const *text, int rank) { Log(40, text, rank); }
void Logger::Error(char const *text, int rank) { Log(40, text, rank); }
void Logger::Critical(String const &text, int rank) { Log(50, text, rank); }
void Logger::Critical(wchar_t const *text, int rank) { Log(50, text, rank); }
void Logger::Critical(char const *text, int rank) { Log(50, text, rank); }
void Logger::Log(int level, String const &text, int rank) { logger->Log(level, *text.GetString(), rank); }
void Logger::Log(int level, wchar_t const *text, int rank) { logger->Log(level, text, rank); }
void Logger::Log(int level, char const *text, int rank) { logger->Log(level, text, rank); }
bool Logger::IsOn() const { return logger->IsOn(); }
bool Logger::IsOff() const { return logger->IsOff(); }
void Logger::On() { logger->On(); }
void Logger::Off() { logger->Off(); }
void Logger::Flush() { logger->Flush(); }
void Logger::SetMPT(MPT *mpt, bool setDefaultPrefix) { logger->SetMPT(InnerOf(mpt), setDefaultPrefix); }

RootLogger::RootLogger(int level, MPT *mpt) : Logger(level, mpt) { logger = new ZQRootLogger(level, InnerOf(mpt)); }

RootLogger::~RootLogger() = default;

Logger *RootLogger::Create() { return new RootLogger(0, nullptr); }

Logger *RootLogger::Create(MPT *mpt) { return new RootLogger(0, mpt); }

} // namespace Velmora::Tessara::ZQ::Core

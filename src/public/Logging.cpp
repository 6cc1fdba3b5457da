#include <zqcore/logging/ZQLogging.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;

Logging::Logging() : logging(new ZQLogging()), owned(true) {}

Logging::Logging(ZQLogging *borrowed) : logging(borrowed), owned(false) {}

Logging::~Logging() {
  if (owned) {
    delete logging;
  }
  logging = nullptr;
}

bool Logging::AddFileLogger(String const &name, int level, String const &prefix) {
  return logging != nullptr && logging->AddFileLogger(*name.GetString(), level, *prefix.GetString());
}
bool Logging::AddFileLogger(wchar_t const *name, int level, wchar_t const *prefix) {
  return logging != nullptr && logging->AddFileLogger(name, level, prefix);
}
bool Logging::AddFileLogger(char const *name, int level, char const *prefix) {
  return logging != nullptr && logging->AddFileLogger(name, level, prefix);
}
void Logging::SetPrefix(String const &prefix) {
  if (logging != nullptr) {
    logging->SetPrefix(*prefix.GetString());
  }
}
void Logging::SetPrefix(wchar_t const *prefix) {
  if (logging != nullptr) {
    logging->SetPrefix(prefix);
  }
}
void Logging::SetPrefix(char const *prefix) {
  if (logging != nullptr) {
    logging->SetPrefix(prefix);
  }
}
void Logging::Debug(String const &text, int rank) { Log(10, text, rank); }
void Logging::Debug(wchar_t const *text, int rank) { Log(10, text, rank); }
void Logging::Debug(char const *text, int rank) { Log(10, text, rank); }
void Logging::Info(String const &text, int rank) { Log(20, text, rank); }
void Logging::Info(wchar_t const *text, int rank) { Log(20, text, rank); }
void Logging::Info(char const *text, int rank) { Log(20, text, rank); }
void Logging::Warning(String const &text, int rank) { Log(30, text, rank); }
void Logging::Warning(wchar_t const *text, int rank) { Log(30, text, rank); }
void Logging::Warning(char const *text, int rank) { Log(30, text, rank); }
void Logging::Error(String const &text, int rank) { Log(40, text, rank); }
void Logging::Error(wchar_t const *text, int rank) { Log(40, text, rank); }
void Logging::Error(char const *text, int rank) { Log(40, text, rank); }
void Logging::Critical(String const &text, int rank) { Log(50, text, rank); }
void Logging::Critical(wchar_t const *text, int rank) { Log(50, text, rank); }
void Logging::Critical(char const *text, int rank) { Log(50, text, rank); }
void Logging::Log(int level, String const &text, int rank) {
  if (logging != nullptr) {
    logging->Log(level, *text.GetString(), rank);
  }
}
void Logging::Log(int level, wchar_t const *text, int rank) {
  if (logging != nullptr) {
    logging->Log(level, text, rank);
  }
}
void Logging::Log(int level, char const *text, int rank) {
  if (logging != nullptr) {
    logging->Log(level, text, rank);
  }
}
void Logging::operator()(int level, String const &text, int rank) { Log(level, text, rank); }
void Logging::operator()(int level, wchar_t const *text, int rank) { Log(level, text, rank); }
void Logging::operator()(int level, char const *text, int rank) { Log(level, text, rank); }
bool Logging::IsOn() const { return logging != nullptr && logging->IsOn(); }
// False without a registry, the same as IsOn: a missing registry is neither on nor off.
bool Logging::IsOff() const { return logging != nullptr && logging->IsOff(); }
void Logging::On() {
  if (logging != nullptr) {
    logging->On();
  }
}
void Logging::Off() {
  if (logging != nullptr) {
    logging->Off();
  }
}
void Logging::Flush() {
  if (logging != nullptr) {
    logging->Flush();
  }
}
void Logging::SetMPT(MPT *mpt, bool setDefaultPrefix) {
  if (logging != nullptr) {
    logging->SetMPT(InnerOf(mpt), setDefaultPrefix);
  }
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/public/LogFileHandler.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;
using detail::ToPublic;

namespace {

ZQLogStreamHandler *AsStreamHandler(ZQLogHandler *handler) { return static_cast<ZQLogStreamHandler *>(handler); }

ZQLogFileHandler *AsFileHandler(ZQLogHandler *handler) { return static_cast<ZQLogFileHandler *>(handler); }

} // namespace

// The base constructors leave the inner handler to the subclass that allocates one.
LogHandler::LogHandler(MPT *) : handler(nullptr) {}

LogHandler::~LogHandler() {
  delete handler;
  handler = nullptr;
}

bool LogHandler::IsActive(int rank) const { return handler->IsActive(rank); }
void LogHandler::SetPrefix(String const &prefix) { handler->SetPrefix(*prefix.GetString()); }
void LogHandler::SetPrefix(wchar_t const *prefix) { handler->SetPrefix(prefix); }
void LogHandler::SetPrefix(char const *prefix) { handler->SetPrefix(prefix); }
String LogHandler::GetPrefix() const { return ToPublic(ZQString(handler->GetPrefix())); }
String LogHandler::GetDefaultPrefix(MPT *mpt) { return ToPublic(handler->GetDefaultPrefix(InnerOf(mpt))); }
void LogHandler::Flush() { handler->Flush(); }
void LogHandler::Close() { handler->Close(); }
void LogHandler::Emit(String const &text, int rank) { handler->Emit(*text.GetString(), rank); }
void LogHandler::Emit(wchar_t const *text, int rank) { handler->Emit(text, rank); }
void LogHandler::Emit(char const *text, int rank) { handler->Emit(text, rank); }
void LogHandler::SetMPT(MPT *mpt, bool setDefaultPrefix) { handler->SetMPT(InnerOf(mpt), setDefaultPrefix); }

LogStreamHandler::LogStreamHandler(MPT *mpt) : LogHandler(mpt) {}

LogStreamHandler::~LogStreamHandler() = default;

void LogStreamHandler::SetStream(std::ostream *stream) { AsStreamHandler(handler)->SetStream(stream); }
std::ostream *LogStreamHandler::GetStream() const { return AsStreamHandler(handler)->GetStream(); }

LogFileHandler::LogFileHandler(String const &fileName, MPT *mpt) : LogStreamHandler(mpt) {
  handler = new ZQLogFileHandler(*fileName.GetString(), InnerOf(mpt));
}
LogFileHandler::LogFileHandler(wchar_t const *fileName, MPT *mpt) : LogStreamHandler(mpt) {
  handler = new ZQLogFileHandler(fileName, InnerOf(mpt));
}
LogFileHandler::LogFileHandler(char const *fileName, MPT *mpt) : LogStreamHandler(mpt) {
  handler = new ZQLogFileHandler(fileName, InnerOf(mpt));
}

LogFileHandler::~LogFileHandler() = default;

LogFileHandler *LogFileHandler::Create(String const &fileName, MPT *mpt) { return new LogFileHandler(fileName, mpt); }
LogFileHandler *LogFileHandler::Create(wchar_t const *fileName, MPT *mpt) { return new LogFileHandler(fileName, mpt); }
LogFileHandler *LogFileHandler::Create(char const *fileName, MPT *mpt) { return new LogFileHandler(fileName, mpt); }
bool LogFileHandler::IsOpen() const { return AsFileHandler(handler)->IsOpen(); }
bool LogFileHandler::Open(bool append) { return AsFileHandler(handler)->Open(append); }

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/parallel/ZQMPT.h>

#include <fstream>
#include <iostream>

namespace Velmora::Tessara::ZQ::Core {

namespace {

void ReportFileFailure(char const *what, ZQString const &fileName) {
  std::cerr << '\n' << "ERROR: " << what << " of log-file '" << fileName.c_str() << "' FAILED!" << '\n' << '\n';
  std::cerr.flush();
}

} // namespace

ZQLogFileHandler::ZQLogFileHandler(ZQString const &name, ZQMPT *job)
    : ZQLogStreamHandler(job), fileName(name), file(nullptr) {
  Open(true);
}

ZQLogFileHandler::ZQLogFileHandler(char const *name, ZQMPT *job) : ZQLogFileHandler(ZQString(name), job) {}

ZQLogFileHandler::ZQLogFileHandler(wchar_t const *name, ZQMPT *job) : ZQLogFileHandler(ZQString(name), job) {}

// Called directly rather than through the virtual slot: a subclass is gone by now.
ZQLogFileHandler::~ZQLogFileHandler() { ZQLogFileHandler::Close(); }

ZQLogFileHandler *ZQLogFileHandler::Create(ZQString const &name, ZQMPT *job) { return new ZQLogFileHandler(name, job); }

ZQLogFileHandler *ZQLogFileHandler::Create(char const *name, ZQMPT *job) { return new ZQLogFileHandler(name, job); }

ZQLogFileHandler *ZQLogFileHandler::Create(wchar_t const *name, ZQMPT *job) { return new ZQLogFileHandler(name, job); }

void ZQLogFileHandler::Close() {
  if (file == nullptr) {
    return;
  }
  try {
    file->close();
  } catch (...) {
    ReportFileFailure("closing", fileName);
  }
  SetStream(nullptr);
  delete file;
  file = nullptr;
}

bool ZQLogFileHandler::IsOpen() const { return file != nullptr && file->is_open(); }

// The suffix goes onto the stored name, so a second Open on a linked handler opens a name
// with two suffixes: a caller that wants the same file again makes a new handler.
bool ZQLogFileHandler::Open(bool append) {
  Close();
  fileName.ExpandEnvironVars(true).NormalizePath();
  if (GetMPT() != nullptr) {
    fileName += "_proc";
    fileName.Add(GetMPT()->ProcRank(), "%d");
  }
  // A failed stream is kept all the same: later text goes nowhere rather than to the screen.
  file = new std::ofstream(fileName.c_str(), append ? std::ios::app : std::ios::out | std::ios::trunc);
  SetStream(file);
  if (file->is_open()) {
    return true;
  }
  ReportFileFailure("opening", fileName);
  return false;
}

ZQString const &ZQLogFileHandler::GetFileName() const { return fileName; }

} // namespace Velmora::Tessara::ZQ::Core

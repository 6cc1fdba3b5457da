// LogFileHandler: the public face of ZQLogFileHandler.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/public/LogStreamHandler.h>

namespace Velmora::Tessara::ZQ::Core {

/// A handler on a file of its own, opened at once for appending; "_proc" and the rank
/// are appended to the name when linked to a job.
class ZQCORE_EXPORT LogFileHandler : public LogStreamHandler {
public:
  explicit LogFileHandler(String const &fileName, MPT *mpt = nullptr);
  explicit LogFileHandler(wchar_t const *fileName, MPT *mpt = nullptr);
  explicit LogFileHandler(char const *fileName, MPT *mpt = nullptr);
  ~LogFileHandler() override;

  /// A new handler that the caller owns.
  static LogFileHandler *Create(String const &fileName, MPT *mpt = nullptr);
  static LogFileHandler *Create(wchar_t const *fileName, MPT *mpt = nullptr);
  static LogFileHandler *Create(char const *fileName, MPT *mpt = nullptr);

  virtual bool IsOpen() const;
  virtual bool Open(bool append);
};

} // namespace Velmora::Tessara::ZQ::Core

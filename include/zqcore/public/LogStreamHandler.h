// LogStreamHandler: the public face of ZQLogStreamHandler.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/public/LogHandler.h>

#include <iosfwd>

namespace Velmora::Tessara::ZQ::Core {

/// A handler on a narrow output stream. Built directly it has no inner handler; the
/// constructor is there for LogFileHandler.
class ZQCORE_EXPORT LogStreamHandler : public LogHandler {
public:
  explicit LogStreamHandler(MPT *mpt = nullptr);
  ~LogStreamHandler() override;

  /// The stream is not owned; null means standard output.
  void SetStream(std::ostream *stream);
  std::ostream *GetStream() const;
};

} // namespace Velmora::Tessara::ZQ::Core

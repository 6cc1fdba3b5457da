// ZQLogFileHandler: log text to a file of its own, one per process when linked to a job.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/logging/ZQLogStreamHandler.h>

#include <iosfwd>

namespace Velmora::Tessara::ZQ::Core {

/// Owns a std::ofstream opened on the stored name, and writes to it as its stream. A file that cannot be opened is
/// reported on std::cerr and leaves a failed stream that drops text; after Close the
/// handler writes to standard output.
class ZQCORE_EXPORT ZQLogFileHandler : public ZQLogStreamHandler {
public:
  /// Stores the name and opens it at once, appending.
  explicit ZQLogFileHandler(ZQString const &fileName, ZQMPT *mpt = nullptr);
  explicit ZQLogFileHandler(char const *fileName, ZQMPT *mpt = nullptr);
  explicit ZQLogFileHandler(wchar_t const *fileName, ZQMPT *mpt = nullptr);
  /// Closes the file.
  ~ZQLogFileHandler() override;

  /// A new handler that the caller owns.
  static ZQLogFileHandler *Create(ZQString const &fileName, ZQMPT *mpt = nullptr);
  static ZQLogFileHandler *Create(char const *fileName, ZQMPT *mpt = nullptr);
  static ZQLogFileHandler *Create(wchar_t const *fileName, ZQMPT *mpt = nullptr);

  /// Closes and forgets the file stream; a close that throws is reported on std::cerr.
  void Close() override;
  virtual bool IsOpen() const;
  /// Closes, expands environment variables in the stored name and normalizes it, appends
  /// "_proc" and this rank when linked to a job (to the stored name, so a second Open
  /// adds a second suffix), then opens it appending or truncating.
  virtual bool Open(bool append);

  /// The stored name, as changed by Open.
  ZQString const &GetFileName() const;

private:
  ZQString fileName;
  std::ofstream *file;
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQLogStreamHandler: log text to a narrow output stream, standard output by default.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/logging/ZQLogHandler.h>

#include <iosfwd>

namespace Velmora::Tessara::ZQ::Core {

/// Writes each line with the prefix, replaces what the current locale cannot print by
/// "?", and flushes at every line end. The stream is not owned; null means std::cout.
class ZQCORE_EXPORT ZQLogStreamHandler : public ZQLogHandler {
public:
  explicit ZQLogStreamHandler(ZQMPT *mpt = nullptr);
  explicit ZQLogStreamHandler(std::ostream *stream, ZQMPT *mpt = nullptr);
  ~ZQLogStreamHandler() override;

  void Flush() override;
  /// Both reach the narrow form through its virtual slot.
  void Emit(ZQString const &text, int rank) override;
  void Emit(wchar_t const *text, int rank) override;
  /// A null or empty text writes the prefix and a line end alone.
  void Emit(char const *text, int rank) override;

  void SetStream(std::ostream *stream);
  /// The stream as stored: null stands for standard output.
  std::ostream *GetStream() const;

private:
  std::ostream &Target() const;
  void WritePrefix(std::ostream &out) const;

  std::ostream *stream;
};

} // namespace Velmora::Tessara::ZQ::Core

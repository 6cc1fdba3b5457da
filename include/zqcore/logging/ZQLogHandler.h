// ZQLogHandler: one destination of log text, with a prefix and an optional job link.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

/// Writes log text on one process or on all. Rank selection happens here, not in the
/// loggers: every process logs, and a handler linked to a job stays silent where the
/// message's rank is not its own. No locks; one thread of work.
class ZQCORE_EXPORT ZQLogHandler {
public:
  /// An empty prefix; `mpt` (not owned) is the job, null for a lone process.
  explicit ZQLogHandler(ZQMPT *mpt = nullptr);
  ZQLogHandler(ZQLogHandler const &) = delete;
  ZQLogHandler &operator=(ZQLogHandler const &) = delete;
  virtual ~ZQLogHandler();

  /// A negative rank is active everywhere, any rank without a job, else only this rank.
  virtual bool IsActive(int rank) const;
  /// "[name,rank]" or "[rank]" padded with blanks to a width that depends only on the
  /// job's size, so that the columns of a job line up; empty for a null `mpt`.
  virtual ZQString GetDefaultPrefix(ZQMPT *mpt);
  virtual void Flush();
  virtual void Close();
  /// Writes the text on this process if `IsActive(rank)`, the prefix before each line.
  virtual void Emit(ZQString const &text, int rank) = 0;
  virtual void Emit(wchar_t const *text, int rank) = 0;
  virtual void Emit(char const *text, int rank) = 0;

  /// Replaces the prefix; a wide text that cannot be transcoded leaves it as it was.
  void SetPrefix(ZQString const &prefix);
  void SetPrefix(char const *prefix);
  void SetPrefix(wchar_t const *prefix);
  ZQString const &GetPrefix() const;
  /// Links the job; with `setDefaultPrefix` the prefix becomes its default prefix.
  void SetMPT(ZQMPT *mpt, bool setDefaultPrefix);

protected:
  ZQMPT *GetMPT() const;

private:
  ZQString prefix;
  ZQMPT *mpt;
};

} // namespace Velmora::Tessara::ZQ::Core

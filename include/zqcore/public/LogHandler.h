// LogHandler: the public face of ZQLogHandler.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// The root of the public handlers. Its own constructor makes no inner handler: it is
/// there for the subclasses, and a handler built directly from it or from
/// LogStreamHandler has none, so that calling it is not valid. Destroying it destroys
/// the inner handler.
class ZQCORE_EXPORT LogHandler {
public:
  explicit LogHandler(MPT *mpt = nullptr);
  LogHandler(LogHandler const &) = delete;
  LogHandler &operator=(LogHandler const &) = delete;
  virtual ~LogHandler();

  virtual bool IsActive(int rank) const;
  virtual void SetPrefix(String const &prefix);
  virtual void SetPrefix(wchar_t const *prefix);
  virtual void SetPrefix(char const *prefix);
  virtual String GetPrefix() const;
  virtual String GetDefaultPrefix(MPT *mpt);
  virtual void Flush();
  virtual void Close();
  virtual void Emit(String const &text, int rank);
  virtual void Emit(wchar_t const *text, int rank);
  virtual void Emit(char const *text, int rank);
  virtual void SetMPT(MPT *mpt, bool setDefaultPrefix);

protected:
  ZQLogHandler *handler;

private:
  friend class Logger;
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQRootLogger: the logger that comes with a handler on standard output.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/logging/ZQLogger.h>

namespace Velmora::Tessara::ZQ::Core {

/// A ZQLogger with one ZQLogStreamHandler on standard output under the empty name, linked
/// to the same job and with an empty prefix.
class ZQCORE_EXPORT ZQRootLogger : public ZQLogger {
public:
  explicit ZQRootLogger(int level = 0, ZQMPT *mpt = nullptr);
  ~ZQRootLogger() override;

  /// A new root logger at level 0 that the caller owns; the creator of the default kind.
  static ZQLogger *Create();
  static ZQLogger *Create(ZQMPT *mpt);
};

} // namespace Velmora::Tessara::ZQ::Core

// ZQResult: the outcome of an operation as one signed 64-bit status.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// -1 when nothing was set, 0 the only success, any other value a failure
/// (normally a Types::StatusCode_t). A plain local value.
class ZQCORE_EXPORT ZQResult {
public:
  ZQResult(long long status = -1);
  ZQResult(ZQResult const &other);
  ZQResult &operator=(ZQResult const &other);

  /// True exactly when the status is 0.
  bool OK() const;
  void SetStatusCode(long long status);
  long long GetStatusCode() const;
  /// "Result(Status=<n>)"; the argument is ignored.
  ZQString ToString(char const *unused = nullptr) const;

private:
  void Copy(ZQResult const &other);

  long long status;
};

} // namespace Velmora::Tessara::ZQ::Core

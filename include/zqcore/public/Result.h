// Result: the public face of ZQResult.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// The outcome of an operation: -1 when nothing was set, 0 the only success, any other
/// value a failure. Owns its inner ZQResult; every member tolerates a missing one.
class ZQCORE_EXPORT Result {
public:
  /// Status -1: nothing set yet.
  Result();
  Result(long long status);
  /// A copy of `result`.
  Result(ZQResult const &result);
  /// Independent copies: the two never share an inner object.
  Result(Result const &other);
  Result &operator=(Result const &other);
  virtual ~Result();

  /// True exactly when the status is 0.
  bool OK() const;
  /// Stores any status, without a range check.
  void SetStatusCode(long long status);
  /// The status; -1 without an inner object.
  long long GetStatusCode() const;
  /// "Result(Status=<n>)"; the argument is ignored.
  String ToString(char const *unused = nullptr) const;
  /// Back to status -1, keeping the inner object.
  void Reset();
  /// The inner object, owned by this one.
  ZQResult *GetResult();

private:
  void Copy(Result const &other);

  ZQResult *result;
};

} // namespace Velmora::Tessara::ZQ::Core

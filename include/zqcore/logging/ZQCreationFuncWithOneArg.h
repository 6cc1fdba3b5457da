// ZQCreationFuncWithOneArg: a creation function of one argument, held by value.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Holds a function pointer, null by default; calling it gives the function's result,
/// or a value-initialized R (null for a pointer) when there is no function.
template <typename R, typename A> class ZQCreationFuncWithOneArg {
public:
  using Function = R (*)(A);

  ZQCreationFuncWithOneArg() : function(nullptr) {}
  explicit ZQCreationFuncWithOneArg(Function f) : function(f) {}
  ZQCreationFuncWithOneArg(ZQCreationFuncWithOneArg const &) = default;
  ZQCreationFuncWithOneArg &operator=(ZQCreationFuncWithOneArg const &) = default;
  virtual ~ZQCreationFuncWithOneArg() = default;

  R operator()(A argument) const { return function != nullptr ? function(argument) : R(); }
  Function GetFunction() const { return function; }

private:
  Function function;
};

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

Result::Result() : result(new ZQResult()) {}

Result::Result(long long status) : result(new ZQResult(status)) {}

Result::Result(ZQResult const &other) : result(new ZQResult(other)) {}

Result::Result(Result const &other) : result(new ZQResult()) { Copy(other); }

Result &Result::operator=(Result const &other) {
  Copy(other);
  return *this;
}

Result::~Result() {
  delete result;
  result = nullptr;
}

void Result::Copy(Result const &other) {
  if (result != nullptr && other.result != nullptr && result != other.result) {
    *result = *other.result;
  }
}

bool Result::OK() const { return result != nullptr && result->OK(); }

void Result::SetStatusCode(long long status) {
  if (result != nullptr) {
    result->SetStatusCode(status);
  }
}

long long Result::GetStatusCode() const { return result != nullptr ? result->GetStatusCode() : -1; }

String Result::ToString(char const *unused) const {
  return result != nullptr ? detail::ToPublic(result->ToString(unused)) : String();
}

void Result::Reset() { SetStatusCode(-1); }

ZQResult *Result::GetResult() { return result; }

} // namespace Velmora::Tessara::ZQ::Core

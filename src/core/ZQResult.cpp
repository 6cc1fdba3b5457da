#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

ZQResult::ZQResult(long long initialStatus) : status(initialStatus) {}

ZQResult::ZQResult(ZQResult const &other) : status(other.status) {}

ZQResult &ZQResult::operator=(ZQResult const &other) {
  Copy(other);
  return *this;
}

bool ZQResult::OK() const { return status == 0; }

void ZQResult::SetStatusCode(long long newStatus) { status = newStatus; }

long long ZQResult::GetStatusCode() const { return status; }

ZQString ZQResult::ToString(char const *) const {
  ZQString text;
  text.Reserve(128);
  text += "Result(Status=";
  text.Add(status, nullptr);
  text += ')';
  return text;
}

void ZQResult::Copy(ZQResult const &other) { status = other.status; }

} // namespace Velmora::Tessara::ZQ::Core

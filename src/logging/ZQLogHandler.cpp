#include <zqcore/logging/ZQLogHandler.h>
#include <zqcore/parallel/ZQMPT.h>

#include "strings/detail/WideText.h"

#include <algorithm>
#include <cstring>

namespace Velmora::Tessara::ZQ::Core {

namespace {

long long DecimalDigits(long long value) {
  long long digits = 1;
  for (; value >= 10 || value <= -10; value /= 10) {
    ++digits;
  }
  return digits;
}

} // namespace

ZQLogHandler::ZQLogHandler(ZQMPT *linkedMPT) : mpt(linkedMPT) {}

ZQLogHandler::~ZQLogHandler() = default;

bool ZQLogHandler::IsActive(int rank) const { return rank < 0 || mpt == nullptr || rank == mpt->ProcRank(); }

// The width depends on the job's size and name only, never on the rank, so that the
// lines of all processes start their text in the same column.
ZQString ZQLogHandler::GetDefaultPrefix(ZQMPT *job) {
  if (job == nullptr) {
    return ZQString();
  }
  char const *name = job->GetName() != nullptr ? job->GetName() : "";
  long long const nameLength = static_cast<long long>(std::strlen(name));
  long long const width = std::max(10LL, DecimalDigits(job->NProcs()) + 2 + (nameLength > 0 ? nameLength + 1 : 0));
  ZQString label;
  label.Reserve(width);
  label += '[';
  if (nameLength > 0) {
    label += name;
    label += ',';
  }
  label.Add(job->ProcRank(), "%d");
  label += ']';
  while (label.Size() < width) {
    label += ' ';
  }
  return label;
}

void ZQLogHandler::Flush() {}

void ZQLogHandler::Close() {}

void ZQLogHandler::SetPrefix(ZQString const &newPrefix) { prefix = newPrefix; }

void ZQLogHandler::SetPrefix(char const *newPrefix) { prefix = newPrefix; }

void ZQLogHandler::SetPrefix(wchar_t const *newPrefix) { detail::WideToZQString(newPrefix, prefix); }

ZQString const &ZQLogHandler::GetPrefix() const { return prefix; }

void ZQLogHandler::SetMPT(ZQMPT *newMPT, bool setDefaultPrefix) {
  mpt = newMPT;
  if (setDefaultPrefix) {
    prefix = GetDefaultPrefix(newMPT);
  }
}

ZQMPT *ZQLogHandler::GetMPT() const { return mpt; }

} // namespace Velmora::Tessara::ZQ::Core

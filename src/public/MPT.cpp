#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/public/MPT.h>

namespace Velmora::Tessara::ZQ::Core {

MPT::MPT() : mpt(new ZQMPT()), owned(true) {}

MPT::MPT(ZQMPT *borrowed) : mpt(borrowed), owned(false) {}

// Built as a copy of the inner object: a default one followed by assignment would
// duplicate the world communicator only to leave that duplicate allocated.
MPT::MPT(MPT const &other) : mpt(other.mpt != nullptr ? new ZQMPT(*other.mpt) : new ZQMPT()), owned(true) {}

MPT &MPT::operator=(MPT const &other) {
  Copy(other);
  return *this;
}

MPT::~MPT() {
  if (owned) {
    delete mpt;
  }
  mpt = nullptr;
}

void MPT::Copy(MPT const &other) {
  if (mpt != nullptr && other.mpt != nullptr && mpt != other.mpt) {
    *mpt = *other.mpt;
  }
}

int MPT::GetNProcs() const { return mpt != nullptr ? mpt->GetNProcs() : 1; }
int MPT::GetProcRank() const { return mpt != nullptr ? mpt->GetProcRank() : 0; }
char const *MPT::GetName() const { return mpt != nullptr ? mpt->GetName() : nullptr; }
bool MPT::HasPendingMessages() const { return mpt != nullptr && mpt->HasPendingMessages(); }
bool MPT::IsInitialized() const { return mpt != nullptr && mpt->IsInitialized(); }
void MPT::Reset() {
  if (mpt != nullptr) {
    mpt->Reset();
  }
}
void MPT::SetName(char const *name) {
  if (mpt != nullptr) {
    mpt->SetName(name);
  }
}

} // namespace Velmora::Tessara::ZQ::Core

// The library's start and stop. The gate's state is process-wide, so one test walks
// through the whole sequence in order.
#include <zqcore/core/API.h>
#include <zqcore/core/ZQAPI.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/public/Context.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

namespace zq = Velmora::Tessara::ZQ::Core;

TEST(LibraryLifecycle, UnlockInitializeAndFinalizeInAnyRepetition) {
  bool ok = zq::API::Finalize() && zq::ZQAPI::Finalize() && !zq::API::IsInitialized();
  ok = ok && zq::API::GetContext() == nullptr && zq::ZQAPI::GetContext() == nullptr;

  ok = ok && zq::API::Unlock(nullptr) && zq::API::Unlock("any key");
  zq::ZQContext *inner = zq::ZQAPI::GetContext();
  ok = ok && inner != nullptr && zq::API::GetContext() != nullptr && zq::API::GetContext()->GetContext() == inner &&
       zq::ZQContext::GetNProcs(inner) == zqtest::WorldSize();

  ok = ok && zq::API::Initialize(nullptr, nullptr) && zq::API::Initialize(nullptr, nullptr) &&
       zq::ZQAPI::Initialize(nullptr, nullptr) && zq::API::IsInitialized() && zq::ZQAPI::IsInitialized();
  ok = ok && zq::ZQAPI::GetContext() == inner;

  ok = ok && zq::API::Finalize() && !zq::API::IsInitialized();
  ok = ok && zq::API::GetContext() == nullptr && zq::ZQAPI::GetContext() == nullptr;
  ok = ok && zq::API::Finalize();

  // After a stop the library can be started again; the new context sees the whole job.
  ok = ok && zq::API::Initialize(nullptr, nullptr) && zq::API::Unlock(nullptr);
  ok = ok && zq::ZQContext::GetNProcs(zq::ZQAPI::GetContext()) == zqtest::WorldSize();
  ok = ok && zq::API::Finalize() && zq::ZQAPI::GetContext() == nullptr;
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

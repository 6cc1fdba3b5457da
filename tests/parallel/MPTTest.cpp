#include <zqcore/core/ZQContext.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using Velmora::Tessara::ZQ::Core::ZQContext;
using Velmora::Tessara::ZQ::Core::ZQMPT;

// Made from the world, from a given communicator, by copy or by assignment: each object
// holds a duplicate of its own, knows rank and size, and a copy starts without a name.
TEST(MPT, EachObjectDuplicatesItsCommunicatorAndCachesRankAndSize) {
  ZQMPT mpt;
  mpt.SetName("source");
  ZQMPT self(WMPI_COMM_SELF);
  ZQMPT world(WMPI_COMM_WORLD);
  ZQMPT copy(mpt);
  ZQMPT assigned;
  assigned.SetName("kept");
  assigned = assigned;
  bool ok = std::string(assigned.GetName()) == "kept";
  assigned = mpt;
  std::set<unsigned long long> const comms = {WMPI_COMM_WORLD,   WMPI_COMM_SELF,       WMPI_COMM_NULL,
                                              mpt.GetMPIComm(),  self.GetMPIComm(),    world.GetMPIComm(),
                                              copy.GetMPIComm(), assigned.GetMPIComm()};
  ok = ok && comms.size() == 8 && self.GetNProcs() == 1 && self.GetProcRank() == 0;
  for (ZQMPT const *each : {&mpt, &world, &copy, &assigned}) {
    ok = ok && each->IsInitialized() && each->GetNProcs() == zqtest::WorldSize() &&
         each->NProcs() == each->GetNProcs() && each->GetProcRank() == zqtest::WorldRank() &&
         each->ProcRank() == each->GetProcRank();
  }
  for (ZQMPT const *unnamed : {&world, &copy, &assigned}) {
    ok = ok && std::string(unnamed->GetName()).empty();
  }
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(MPT, MessagesStayOnTheirOwnCommunicator) {
  ZQMPT sender;
  ZQMPT bystander;
  int payload = 42;
  unsigned long long request = WMPI_REQUEST_NULL;
  int const self = sender.GetProcRank();
  bool ok = WMPI_Isend(&payload, 1, WMPI_INT, self, 7, sender.GetMPIComm(), &request) == 0;

  // Wait until the message is visible on its own communicator, then look elsewhere.
  while (ok && !sender.HasPendingMessages()) {
  }
  ok = ok && !bystander.HasPendingMessages();

  int received = 0;
  ok = ok && WMPI_Recv(&received, 1, WMPI_INT, self, 7, sender.GetMPIComm(), nullptr) == 0 && received == 42;
  ok = ok && WMPI_Wait(&request, nullptr) == 0 && !sender.HasPendingMessages();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

// The name is cut at 255 bytes; a reset, even twice, leaves a single process and the name.
TEST(MPT, NameHoldsUpTo255BytesAndResetLeavesASingleProcessWithIt) {
  ZQMPT mpt;
  std::string const longest(255, 'n');
  mpt.SetName(longest.c_str());
  bool ok = mpt.GetName() == longest;
  mpt.SetName(nullptr);
  ok = ok && std::string(mpt.GetName()).empty();
  mpt.SetName(std::string(300, 'x').c_str());
  mpt.Reset();
  mpt.Reset();
  ok = ok && !mpt.IsInitialized() && mpt.GetNProcs() == 1 && mpt.GetProcRank() == 0 &&
       std::string(mpt.GetName()) == std::string(255, 'x');
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(Context, StartsWithUnsetLevelsAndKnowsItsPlace) {
  ZQContext context;
  bool ok = context.GetVerbosityLevel() == -1 && context.GetDebugLevel() == -1 &&
            ZQContext::GetNProcs(&context) == zqtest::WorldSize() &&
            ZQContext::GetProcRank(&context) == zqtest::WorldRank() && ZQContext::GetNProcs(nullptr) == 1 &&
            ZQContext::GetProcRank(nullptr) == 0 && context.GetErrorStack().IsEmpty() &&
            context.GetMPT().IsInitialized();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

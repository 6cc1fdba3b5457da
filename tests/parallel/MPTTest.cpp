#include <zqcore/core/ZQContext.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <string>

using Velmora::Tessara::ZQ::Core::ZQContext;
using Velmora::Tessara::ZQ::Core::ZQMPT;

TEST(MPT, DuplicatesTheWorldAndCachesRankAndSize) {
  ZQMPT mpt;
  bool ok = mpt.IsInitialized() && mpt.GetMPIComm() != WMPI_COMM_WORLD && mpt.GetMPIComm() != WMPI_COMM_NULL &&
            mpt.GetNProcs() == zqtest::WorldSize() && mpt.NProcs() == mpt.GetNProcs() &&
            mpt.GetProcRank() == zqtest::WorldRank() && mpt.ProcRank() == mpt.GetProcRank() &&
            std::string(mpt.GetName()).empty();
  ZQMPT other;
  ok = ok && other.GetMPIComm() != mpt.GetMPIComm();
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
  ok = ok && WMPI_Wait(&request, nullptr) == 0 && request == WMPI_REQUEST_NULL;
  ok = ok && !sender.HasPendingMessages();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(MPT, ResetLeavesASingleProcessAndKeepsTheName) {
  ZQMPT mpt;
  mpt.SetName("solver");
  mpt.Reset();
  bool ok =
      !mpt.IsInitialized() && mpt.GetNProcs() == 1 && mpt.GetProcRank() == 0 && std::string(mpt.GetName()) == "solver";
  mpt.Reset();
  ok = ok && !mpt.IsInitialized();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(MPT, NameHoldsUpTo255Bytes) {
  ZQMPT mpt;
  std::string const longest(255, 'n');
  mpt.SetName(longest.c_str());
  bool ok = mpt.GetName() == longest;
  mpt.SetName(std::string(300, 'x').c_str());
  ok = ok && std::string(mpt.GetName()) == std::string(255, 'x');
  mpt.SetName(nullptr);
  ok = ok && std::string(mpt.GetName()).empty();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(MPT, CopyTakesAFreshCommunicatorAndAnEmptyName) {
  ZQMPT source;
  source.SetName("source");
  ZQMPT copy(source);
  bool ok = copy.IsInitialized() && copy.GetMPIComm() != source.GetMPIComm() && std::string(copy.GetName()).empty() &&
            copy.GetNProcs() == source.GetNProcs() && copy.GetProcRank() == source.GetProcRank();

  ZQMPT assigned;
  assigned.SetName("kept");
  assigned = assigned;
  ok = ok && std::string(assigned.GetName()) == "kept";
  assigned = source;
  ok = ok && std::string(assigned.GetName()).empty() && assigned.GetMPIComm() != source.GetMPIComm();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(MPT, CommunicatorConstructorDuplicatesTheGivenOne) {
  ZQMPT self(WMPI_COMM_SELF);
  bool ok = self.GetNProcs() == 1 && self.GetProcRank() == 0 && self.GetMPIComm() != WMPI_COMM_SELF;
  ZQMPT world(WMPI_COMM_WORLD);
  ok = ok && world.GetNProcs() == zqtest::WorldSize();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(Context, StartsWithUnsetLevelsAndKnowsItsPlace) {
  ZQContext context;
  bool ok = context.GetVerbosityLevel() == -1 && context.GetDebugLevel() == -1 &&
            ZQContext::GetNProcs(&context) == zqtest::WorldSize() &&
            ZQContext::GetProcRank(&context) == zqtest::WorldRank() && ZQContext::GetNProcs(nullptr) == 1 &&
            ZQContext::GetProcRank(nullptr) == 0;
  context.SetVerbosityLevel(3);
  context.SetDebugLevel(-7);
  ok = ok && context.GetVerbosityLevel() == 3 && context.GetDebugLevel() == -7 && context.GetErrorStack().IsEmpty() &&
       context.GetMPT().IsInitialized();
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

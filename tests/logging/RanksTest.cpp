// Logging on a job: rank selection, aligned default prefixes, per-process files, binding.
#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "LogTestSupport.h"
#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <unistd.h>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// The same name on every rank: rank 0's process id, shared by a broadcast.
std::string SharedTempPath(ZQMPT &job, char const *name) {
  int pid = getpid();
  WMPI_Bcast(&pid, 1, WMPI_INT, 0, job.GetMPIComm());
  return std::string(testing::TempDir()) + "zq_ranks_" + std::to_string(pid) + "_" + name;
}

std::string Padded(std::string label, std::size_t width) {
  label.resize(std::max(label.size(), width), ' ');
  return label;
}

} // namespace

TEST(LogRanks, OnlyTheChosenRankWritesAndEveryRankWritesForMinusOne) {
  ZQMPT job;
  int const rank = job.GetProcRank();
  int const last = job.GetNProcs() - 1;
  std::ostringstream out;
  ZQLogger logger;
  ZQLogHandler *handler = new ZQLogStreamHandler(&out, &job);
  logger.AddHandler("h", handler);
  logger.Info("everyone");
  logger.Info("last", last);
  logger.Info("nobody", last + 1);
  std::string const expected = rank == last ? "everyone\nlast\n" : "everyone\n";
  bool ok = out.str() == expected && logger.GetHandler("h")->IsActive(-1) && logger.GetHandler("h")->IsActive(rank) &&
            !logger.GetHandler("h")->IsActive(rank + 1);
  EXPECT_TRUE(zqtest::AllRanks(ok)) << out.str();
}

TEST(LogRanks, DefaultPrefixesHaveOneWidthAcrossTheJob) {
  ZQMPT job;
  std::string const rank = std::to_string(job.GetProcRank());
  ZQLogStreamHandler handler;
  bool ok = std::string(handler.GetDefaultPrefix(&job).c_str()) == Padded("[" + rank + "]", 10);
  job.SetName("world");
  ok = ok && std::string(handler.GetDefaultPrefix(&job).c_str()) == Padded("[world," + rank + "]", 10);
  // Past the floor, the width is the digits of the job's size (not of the rank) plus the
  // brackets, the name and the comma; at 12 ranks rank 3 gets a blank that rank 11 does not.
  job.SetName("a-long-job-name");
  std::size_t const digits = std::to_string(job.GetNProcs()).size();
  ok = ok &&
       std::string(handler.GetDefaultPrefix(&job).c_str()) == Padded("[a-long-job-name," + rank + "]", digits + 2 + 16);
  handler.SetMPT(&job, true);
  ok = ok && handler.GetPrefix() == handler.GetDefaultPrefix(&job);
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(LogRanks, EachProcessWritesAFileOfItsOwnAndAReopenAddsTheSuffixAgain) {
  ZQMPT job;
  std::string const base = SharedTempPath(job, "per_rank.log");
  std::string const own = base + "_proc" + std::to_string(job.GetProcRank());
  bool ok = true;
  {
    ZQLogFileHandler handler(base.c_str(), &job);
    ok = handler.IsOpen() && handler.GetFileName() == own.c_str();
    handler.SetMPT(&job, true);
    handler.Emit("from every rank", -1);
    handler.Emit("from rank 0", 0);
  }
  WMPI_Barrier(job.GetMPIComm());
  if (job.GetProcRank() == 0) {
    for (int r = 0; r < job.GetNProcs(); ++r) {
      std::string const prefix = Padded("[" + std::to_string(r) + "]", 10);
      std::string expected = prefix + "from every rank\n";
      if (r == 0) {
        expected += prefix + "from rank 0\n";
      }
      ok = ok && zqtest::ReadFile(base + "_proc" + std::to_string(r)) == expected;
    }
  }
  WMPI_Barrier(job.GetMPIComm());
  // A second Open of a linked handler adds the suffix again.
  std::string const twice = own + "_proc" + std::to_string(job.GetProcRank());
  ZQLogFileHandler again(base.c_str(), &job);
  ok = ok && again.Open(false) && again.GetFileName() == twice.c_str();
  again.Close();
  std::remove(own.c_str());
  std::remove(twice.c_str());
  EXPECT_TRUE(zqtest::AllRanks(ok));
}

TEST(LogRanks, ARegistrySelectsRanksOnlyOnceBoundToTheJob) {
  ZQMPT job;
  int const rank = job.GetProcRank();
  int const target = job.GetNProcs() > 2 ? 2 : job.GetNProcs() - 1;
  ZQLogging logging;
  std::string beforeBinding;
  std::string afterBinding;
  {
    zqtest::CapturedStream out(std::cout);
    logging.Error("x", target);
    beforeBinding = out.Text();
  }
  logging.SetMPT(&job, true);
  ZQString const prefix = logging.GetLogger("", "")->GetHandler("")->GetPrefix();
  ZQLogger *later = logging.GetLogger("later", "");
  {
    zqtest::CapturedStream out(std::cout);
    logging.Error("x", target);
    afterBinding = out.Text();
  }
  std::string const label = Padded("[" + std::to_string(rank) + "]", 10);
  bool ok = beforeBinding == "x\n" && prefix == label.c_str();
  // The root logger writes on the target rank alone, and so does the one made later, which
  // got the job but kept the empty prefix of its creator.
  ok = ok && later->GetHandler("")->GetPrefix().IsEmpty();
  ok = ok && afterBinding == (rank == target ? label + "x\nx\n" : "");
  // A handler added by hand keeps its own link and prefix.
  std::ostringstream own;
  ZQLogHandler *unlinked = new ZQLogStreamHandler(&own);
  unlinked->SetPrefix("own ");
  later->AddHandler("own", unlinked);
  {
    zqtest::CapturedStream out(std::cout);
    logging.Error("y", target);
  }
  ok = ok && own.str() == "own y\n";
  EXPECT_TRUE(zqtest::AllRanks(ok)) << beforeBinding << "|" << afterBinding;
}

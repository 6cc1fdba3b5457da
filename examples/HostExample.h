// The sections of the example host program, one capability each. Every section runs on
// every rank of the job; main() calls them in order.
#pragma once

#include <zqcore/ZQCore.h>

namespace HostExample {

namespace zq = Velmora::Tessara::ZQ::Core;

// Version, build and configuration tables (rank 0 prints them).
void PrintBuildTables();
// Pushes messages the way failing calls do and reads them back.
void ExerciseErrorStack(zq::ZQContext &context, int rank);
// A per-rank log file and a rank-0 console through the context's logging, an error that
// logs itself and a progress line.
void LogThroughTheContext(zq::ZQContext &context);
// Local time, processor count, floating-point controls and a timer (rank 0 prints).
void ShowClocksAndMachine(int rank);
// A packed record passed to the next rank around the ring.
void PassAroundTheRing(zq::ZQMPT &mpt);

} // namespace HostExample

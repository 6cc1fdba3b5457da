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
// A packed record passed to the next rank around the ring.
void PassAroundTheRing(zq::ZQMPT &mpt);
// Writes the rank's own output file, reads it back and prints its SHA-1 digest.
void DigestOwnOutput(zq::ZQContext &context, int rank);
// A system monitor that logs the rank's memory figures; its Log adds one line per rank.
zq::ZQSystemMonitor StartMonitor(zq::ZQContext &context, int rank);

} // namespace HostExample

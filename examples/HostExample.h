// The sections of the example host program, one capability each. Every section runs on
// every rank of the job; main() calls them in order.
#pragma once

#include <zqcore/ZQCore.h>

#include <string>

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
// A length, a color and a translation from "--length=", "--color=" and "--translation="
// (or defaults), converted and printed through variants.
void ShowValuesWithUnits(int argc, char **argv, zq::ZQContext &context, int rank);
// A total, the ranks' own counts and a set divided over the ranks.
void DivideTheWork(zq::ZQContext &context);
// One exchange through ZQCommPatterns with a data handler, printed in order of arrival.
void ExchangeWithAPattern(zq::ZQContext &context);
// A NURBS surface on a grid whose rows are divided over the ranks, each point turned by a
// transform; every rank prints a checksum of its points.
void EvaluateSurfaceOnRanks(zq::ZQContext &context, int rank, int nProcs);
// Stores the rank's results in an HDF5 file of its own, reads them back and checks them;
// gives the file's path, which the file-utilities section digests and removes.
std::string StoreAndReadBackHDF5(zq::ZQContext &context, int rank, int nProcs);
// Reads a file through the file utilities, prints its size and SHA-1 digest (of the file and
// of the bytes read), then removes it.
void DigestAndRemoveFile(zq::ZQContext &context, int rank, std::string const &path);
// A system monitor that logs the rank's memory figures through every logger of the
// context; its Log adds one line per rank.
zq::ZQSystemMonitor StartMonitor(zq::ZQContext &context, int rank);

} // namespace HostExample

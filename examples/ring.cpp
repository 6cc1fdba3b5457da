// Message buffers: a full exchange around the ring of ranks.
#include "HostExample.h"

#include <cstdio>
#include <string>

namespace HostExample {

// Each rank packs a record for the next rank (its rank, a text and three numbers) and
// unpacks the one that the previous rank sent: a full exchange, so the receiver needs no
// size in advance.
void PassAroundTheRing(zq::ZQMPT &mpt) {
  int const rank = mpt.GetProcRank();
  int const nProcs = mpt.GetNProcs();
  int const next = (rank + 1) % nProcs;
  int const previous = (rank + nProcs - 1) % nProcs;

  mpt.InitReceiveBuffer(previous, 0);
  mpt.NBReceiveBuffer(previous, false);

  std::string text = "greetings from rank " + std::to_string(rank);
  long long textSize = static_cast<long long>(text.size());
  double values[3] = {rank + 0.25, rank * 2.0, 100.0 - rank};
  int sender = rank;
  mpt.InitSendBuffer(next, 0);
  mpt.Pack(&sender, 1);
  mpt.Pack(&textSize, 1);
  mpt.Pack(text.data(), textSize);
  mpt.Pack(values, 3);
  mpt.NBSendBuffer(next, false);

  mpt.WaitReceiveBuffer(previous, false);
  int from = -1;
  long long receivedSize = 0;
  mpt.Unpack(&from, 1);
  mpt.Unpack(&receivedSize, 1);
  std::string received(static_cast<std::size_t>(receivedSize), '\0');
  mpt.Unpack(received.data(), receivedSize);
  double numbers[3] = {};
  mpt.Unpack(numbers, 3);
  mpt.WaitSendBuffer(next, false);

  std::printf("[rank %d] received from rank %d: \"%s\" and %g, %g, %g\n", rank, from, received.c_str(), numbers[0],
              numbers[1], numbers[2]);
}

} // namespace HostExample

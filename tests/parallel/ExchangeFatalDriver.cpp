// Process-ending cases of the non-blocking exchange, run one per process by ctest.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/wmpi.h>

#include "FatalDriver.h"

#include <set>

using Velmora::Tessara::ZQ::Core::ZQMPT;

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      // A probed set names ranks only: one past the last rank ends the job.
      {"nbprobe_member_equal_to_nprocs",
       [] {
         ZQMPT mpt;
         int peer = 0;
         long long size = 0;
         mpt.NBProbe(std::set<int>{0, mpt.GetNProcs()}, peer, size);
       }},
      // The count is narrowed before the layer is asked, so the small array is never read past.
      {"waitall_count_beyond_32_bits",
       [] {
         ZQMPT mpt;
         unsigned long long requests[2] = {WMPI_REQUEST_NULL, WMPI_REQUEST_NULL};
         WMPI_Status statuses[2];
         mpt.WaitAll(2147483648LL, requests, statuses);
       }},
      {"send_without_buffers", [] { ZQMPT().NBSendBuffer(0, false); }},
      {"wait_on_unselected_key",
       [] {
         ZQMPT mpt;
         mpt.InitSendBuffer(0, 8);
         mpt.SelectSendBuffer(1);
         mpt.WaitSendBuffer(1, false);
       }},
      {"receive_without_buffer_for_peer",
       [] {
         ZQMPT mpt;
         mpt.InitReceiveBuffer(0, 8);
         int peer = -1;
         mpt.WaitAnyReceiveBuffers(std::set<int>{0, 1}, true, peer);
       }},
      // More buffers in one wait than the scratch holds (two per process) end the job.
      {"wait_all_beyond_scratch",
       [] {
         ZQMPT mpt;
         mpt.InitSendBuffer(0, 8);
         mpt.InitSendBuffer(mpt.GetNProcs() + 5, 8);
         mpt.WaitAllSendBuffers(std::set<int>{0, mpt.GetNProcs() + 5}, false);
       }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}

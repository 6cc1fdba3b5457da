// Process-ending cases of typed messages and message buffers, run one per process by ctest.
#include <zqcore/parallel/ZQMPT.h>

#include "FatalDriver.h"

using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

// A fresh ZQMPT with send buffer 0 selected, handed to `then`.
std::function<void()> WithSendBuffer(void (*then)(ZQMPT &)) {
  return [then] {
    ZQMPT mpt;
    mpt.InitSendBuffer(0, 8);
    then(mpt);
  };
}

} // namespace

int main(int argc, char **argv) {
  static char bytes[16] = {};
  zqtest::FatalCases const cases = {
      // Raw bytes and unknown codes have no element width.
      {"pack_raw_bytes", WithSendBuffer([](ZQMPT &mpt) { mpt.Pack(bytes, 5, 19); })},
      {"size_of_raw_bytes", [] { ZQMPT::SizeOf(19); }},
      {"size_of_unknown_code", [] { ZQMPT::SizeOf(4); }},
      {"pack_untyped", WithSendBuffer([](ZQMPT &mpt) { mpt.Pack(static_cast<void *>(bytes), 5); })},
      {"pack_without_any_buffer", [] { ZQMPT().Pack(bytes, 1); }},
      // The buffer that packing went to before does not follow the selection to a missing key.
      {"pack_into_unselected_key", WithSendBuffer([](ZQMPT &mpt) {
         mpt.Pack(bytes, 1);
         mpt.SelectSendBuffer(1);
         mpt.Pack(bytes, 1);
       })},
      // The count is checked before the small buffer is touched.
      {"count_beyond_32_bits", [] { ZQMPT().Broadcast(bytes, 2147483648LL, 0); }},
      {"unpack_beyond_the_message", WithSendBuffer([](ZQMPT &mpt) {
         mpt.Pack(bytes, 4);
         mpt.CopySendToReceiveBuffer(0);
         mpt.Unpack(bytes, 5);
       })},
      // Buffers deleted under a selection that has already packed are gone.
      {"pack_after_buffers_reset", WithSendBuffer([](ZQMPT &mpt) {
         mpt.Pack(bytes, 1);
         mpt.ResetBuffers();
         mpt.Pack(bytes, 1);
       })},
      // A buffer that cannot be allocated ends the job like any other failure.
      {"init_send_buffer_beyond_memory", [] { ZQMPT().InitSendBuffer(0, 1LL << 40); }},
      {"init_receive_buffer_beyond_memory", [] { ZQMPT().InitReceiveBuffer(0, 1LL << 40); }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}

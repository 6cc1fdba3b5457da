// Process-ending cases of the system subsystem, run one per process by ctest.
#include <zqcore/system/ZQFileUtil.h>

#include "FatalDriver.h"

#include <cstdio>

using namespace Velmora::Tessara::ZQ::Core;

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      // A single read request of 4 GiB does not fit the 32-bit count of the low-level read.
      {"read_request_of_4_GiB",
       [] {
         std::FILE *file = std::fopen("/dev/zero", "rb");
         unsigned char byte = 0;
         long long size = 1LL << 32;
         ZQFileUtil::Read(nullptr, file, size, &byte, true);
       }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}

// Process-ending cases of the strings subsystem, run one per process by ctest.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include "FatalDriver.h"

#include <string>

using namespace Velmora::Tessara::ZQ::Core;

int main(int argc, char **argv) {
  zqtest::FatalCases const cases = {
      // Strings cannot travel by message.
      {"pack",
       [] {
         ZQMPT mpt;
         ZQString("text").Pack(mpt);
       }},
      {"unpack",
       [] {
         ZQMPT mpt;
         ZQString text("text");
         text.Unpack(mpt);
       }},
      // A counted length for the 32-bit converter that does not fit 32 bits.
      {"counted_length_beyond_32_bits",
       [] {
         std::string out;
         ZQStringEncoding::WideToUTF8(nullptr, L"text", 1LL << 32, out);
       }},
  };
  return zqtest::RunFatalCase(argc, argv, cases);
}

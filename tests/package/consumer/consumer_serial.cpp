// A consumer that uses the library without MPI: strings and arrays need no running job.
#include <zqcore/ZQCore.h>

#include <cstdio>

namespace zq = Velmora::Tessara::ZQ::Core;

int main() {
  zq::ZQString text("ZQCore ");
  text += zq::VersionInfo::GetVersionInfo();
  zq::ZQArrayNativeType<double, long long> values;
  values.Resize(3);
  values(2) = 2.5;
  std::printf("%s serial, %lld values, last %g\n", text.c_str(), values.Size(), values(2));
  return 0;
}

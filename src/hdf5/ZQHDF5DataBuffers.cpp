// Four typed arrays and four texts, sized from and measured into element counts.
#include <zqcore/hdf5/ZQHDF5DataBuffers.h>

#include <zqcore/hdf5/ZQHDF5DataCounts.h>

namespace Velmora::Tessara::ZQ::Core {

ZQHDF5DataBuffers::ZQHDF5DataBuffers() = default;

ZQHDF5DataBuffers::ZQHDF5DataBuffers(ZQHDF5DataBuffers const &other) { Copy(other); }

ZQHDF5DataBuffers &ZQHDF5DataBuffers::operator=(ZQHDF5DataBuffers const &other) {
  Copy(other);
  return *this;
}

ZQHDF5DataBuffers::~ZQHDF5DataBuffers() = default;

// The arrays' own assignment is a deep copy, so no block is shared afterwards.
void ZQHDF5DataBuffers::Copy(ZQHDF5DataBuffers const &other) {
  if (this == &other) {
    return;
  }
  text0 = other.text0;
  text1 = other.text1;
  text2 = other.text2;
  text3 = other.text3;
  intValues = other.intValues;
  int64Values = other.int64Values;
  floatValues = other.floatValues;
  doubleValues = other.doubleValues;
}

void ZQHDF5DataBuffers::Reset() {
  text0.Clear();
  text1.Clear();
  text2.Clear();
  text3.Clear();
  intValues.Reset();
  int64Values.Reset();
  floatValues.Reset();
  doubleValues.Reset();
}

void ZQHDF5DataBuffers::Resize(ZQHDF5DataCounts const &counts) {
  intValues.Resize(counts.intCount);
  int64Values.Resize(counts.int64Count);
  floatValues.Resize(counts.floatCount);
  doubleValues.Resize(counts.doubleCount);
}

void ZQHDF5DataBuffers::GetSizes(ZQHDF5DataCounts &counts) {
  counts.intCount = intValues.Size();
  counts.int64Count = int64Values.Size();
  counts.floatCount = floatValues.Size();
  counts.doubleCount = doubleValues.Size();
}

} // namespace Velmora::Tessara::ZQ::Core

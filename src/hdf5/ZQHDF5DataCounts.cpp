// Element counts of the four buffer arrays, with lexicographic order.
#include <zqcore/hdf5/ZQHDF5DataCounts.h>

namespace Velmora::Tessara::ZQ::Core {

ZQHDF5DataCounts::ZQHDF5DataCounts() : ZQHDF5DataCounts(0) {}

ZQHDF5DataCounts::ZQHDF5DataCounts(long long value)
    : intCount(value), int64Count(value), floatCount(value), doubleCount(value) {}

ZQHDF5DataCounts::ZQHDF5DataCounts(ZQHDF5DataCounts const &other) { Copy(other); }

ZQHDF5DataCounts &ZQHDF5DataCounts::operator=(ZQHDF5DataCounts const &other) {
  Copy(other);
  return *this;
}

ZQHDF5DataCounts::~ZQHDF5DataCounts() = default;

void ZQHDF5DataCounts::Copy(ZQHDF5DataCounts const &other) {
  intCount = other.intCount;
  int64Count = other.int64Count;
  floatCount = other.floatCount;
  doubleCount = other.doubleCount;
}

void ZQHDF5DataCounts::Reset() { *this = ZQHDF5DataCounts(0); }

ZQHDF5DataCounts &ZQHDF5DataCounts::operator+=(ZQHDF5DataCounts const &other) {
  intCount += other.intCount;
  int64Count += other.int64Count;
  floatCount += other.floatCount;
  doubleCount += other.doubleCount;
  return *this;
}

int ZQHDF5DataCounts::Compare(ZQHDF5DataCounts const &other) const {
  long long const mine[] = {intCount, int64Count, floatCount, doubleCount};
  long long const theirs[] = {other.intCount, other.int64Count, other.floatCount, other.doubleCount};
  for (int field = 0; field < 4; ++field) {
    if (mine[field] != theirs[field]) {
      return mine[field] < theirs[field] ? -1 : 1;
    }
  }
  return 0;
}

bool ZQHDF5DataCounts::operator==(ZQHDF5DataCounts const &other) const { return Compare(other) == 0; }
bool ZQHDF5DataCounts::operator!=(ZQHDF5DataCounts const &other) const { return Compare(other) != 0; }
bool ZQHDF5DataCounts::operator<(ZQHDF5DataCounts const &other) const { return Compare(other) < 0; }
bool ZQHDF5DataCounts::operator>(ZQHDF5DataCounts const &other) const { return Compare(other) > 0; }

} // namespace Velmora::Tessara::ZQ::Core

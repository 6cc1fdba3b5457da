// ZQHDF5DataCounts: the element counts of the four arrays of a ZQHDF5DataBuffers.
#pragma once

#include <zqcore/ZQCoreExport.h>

namespace Velmora::Tessara::ZQ::Core {

/// Four signed counts, compared like the letters of a word in field order (not by their
/// total). A plain record: no base, nothing virtual.
class ZQCORE_EXPORT ZQHDF5DataCounts {
public:
  /// All four 0.
  ZQHDF5DataCounts();
  /// All four `value`.
  explicit ZQHDF5DataCounts(long long value);
  ZQHDF5DataCounts(ZQHDF5DataCounts const &other);
  ZQHDF5DataCounts &operator=(ZQHDF5DataCounts const &other);
  ~ZQHDF5DataCounts();

  /// All four 0.
  void Reset();
  /// Adds field by field, negative counts included, without checks.
  ZQHDF5DataCounts &operator+=(ZQHDF5DataCounts const &other);
  bool operator==(ZQHDF5DataCounts const &other) const;
  bool operator!=(ZQHDF5DataCounts const &other) const;
  /// The first field that differs decides; equal records are neither less nor greater.
  bool operator<(ZQHDF5DataCounts const &other) const;
  bool operator>(ZQHDF5DataCounts const &other) const;

  long long intCount;
  long long int64Count;
  long long floatCount;
  long long doubleCount;

protected:
  void Copy(ZQHDF5DataCounts const &other);

private:
  /// -1, 0 or 1 as this record is below, equal to or above `other`.
  int Compare(ZQHDF5DataCounts const &other) const;
};

} // namespace Velmora::Tessara::ZQ::Core

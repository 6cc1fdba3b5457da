// ZQHDF5DataBuffers: four one-dimensional arrays of numbers and four texts, kept together.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/strings/ZQString.h>

namespace Velmora::Tessara::ZQ::Core {

/// Buffers sized from a ZQHDF5DataCounts and measured back into one. Copies are deep: no
/// two records share an array block. The texts are the user's own. No base, nothing virtual.
class ZQCORE_EXPORT ZQHDF5DataBuffers {
public:
  /// Four empty texts, four arrays of rank 0.
  ZQHDF5DataBuffers();
  ZQHDF5DataBuffers(ZQHDF5DataBuffers const &other);
  ZQHDF5DataBuffers &operator=(ZQHDF5DataBuffers const &other);
  ~ZQHDF5DataBuffers();

  /// Clears the texts and resets the arrays to rank 0.
  void Reset();
  /// Resizes each array to rank 1 and its count; the texts stay.
  void Resize(ZQHDF5DataCounts const &counts);
  /// Each array's number of used elements (0 at rank 0) into `counts`.
  void GetSizes(ZQHDF5DataCounts &counts);

  ZQString text0;
  ZQString text1;
  ZQString text2;
  ZQString text3;
  ZQArrayNativeType<int, long long> intValues;
  ZQArrayNativeType<long long, long long> int64Values;
  ZQArrayNativeType<float, long long> floatValues;
  ZQArrayNativeType<double, long long> doubleValues;

protected:
  void Copy(ZQHDF5DataBuffers const &other);
};

} // namespace Velmora::Tessara::ZQ::Core

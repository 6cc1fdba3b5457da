// ZQMPTBuffer: one message buffer of a ZQMPT, with the requests and statuses of its transfer.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>
#include <zqcore/parallel/ZQMPTArray.h>
#include <zqcore/wmpi.h>

namespace Velmora::Tessara::ZQ::Core {

/// The bytes of one message (values packed end to end, nothing else), the size that travels
/// ahead of them, the requests and statuses of the size and data messages, and the read
/// position. Copies share the bytes. Local; the object must keep its address while a
/// transfer is in flight.
class ZQCORE_EXPORT ZQMPTBuffer {
public:
  /// Empty, no requests, zero statuses.
  ZQMPTBuffer();
  /// Shares `other`'s bytes and takes its proxy and requests; both statuses become
  /// `other`'s size status, and the read position 0.
  ZQMPTBuffer(ZQMPTBuffer const &other);
  ZQMPTBuffer &operator=(ZQMPTBuffer const &other);
  virtual ~ZQMPTBuffer();

  /// Proxy 0, bytes released, requests -1, statuses and read position zero.
  void Reset();
  /// True when the bytes have an allocation.
  bool IsInitialized() const { return data.HasAllocation(); }

  ZQMPTArray<unsigned char> &GetData() { return data; }
  ZQMPTArray<unsigned char> const &GetData() const { return data; }

  /// Requests of the size and data messages; -1 when none is outstanding.
  unsigned long long &GetSizeRequest() { return sizeRequest; }
  unsigned long long const &GetSizeRequest() const { return sizeRequest; }
  unsigned long long &GetDataRequest() { return dataRequest; }
  unsigned long long const &GetDataRequest() const { return dataRequest; }
  unsigned long long *GetSizeRequestPtr() { return &sizeRequest; }
  unsigned long long *GetDataRequestPtr() { return &dataRequest; }

  /// Statuses of the size and data messages, kept whole.
  WMPI_Status &GetSizeStatus() { return sizeStatus; }
  WMPI_Status const &GetSizeStatus() const { return sizeStatus; }
  WMPI_Status &GetDataStatus() { return dataStatus; }
  WMPI_Status const &GetDataStatus() const { return dataStatus; }
  WMPI_Status *GetSizeStatusPtr() { return &sizeStatus; }
  WMPI_Status *GetDataStatusPtr() { return &dataStatus; }

  /// The size value as last stored or received.
  long long GetDataSizeProxy() const { return dataSizeProxy; }
  /// Stores the bytes' size in the proxy and gives its address, which stays valid as long
  /// as the buffer does.
  long long *GetDataSizeProxyPtr();

  /// Read position 0, then the bytes are resized to `size`.
  void PrepareUnpack(long long size);
  void SetUnpackPos(long long position) { unpackPos = position; }
  long long GetUnpackPos() const { return unpackPos; }

  /// Releases the bytes when their capacity exceeds `threshold`; nothing else changes.
  void AutoDataReset(long long threshold);

private:
  void Copy(ZQMPTBuffer const &other);

  long long dataSizeProxy = 0;
  ZQMPTArray<unsigned char> data;
  unsigned long long sizeRequest = WMPI_REQUEST_NULL;
  unsigned long long dataRequest = WMPI_REQUEST_NULL;
  WMPI_Status sizeStatus{};
  WMPI_Status dataStatus{};
  long long unpackPos = 0;
};

} // namespace Velmora::Tessara::ZQ::Core

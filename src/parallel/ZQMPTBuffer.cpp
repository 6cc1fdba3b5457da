// ZQMPTBuffer: reset, copying and the read-side bookkeeping of one message buffer.
#include <zqcore/parallel/ZQMPTBuffer.h>

namespace Velmora::Tessara::ZQ::Core {

ZQMPTBuffer::ZQMPTBuffer() = default;

ZQMPTBuffer::ZQMPTBuffer(ZQMPTBuffer const &other) { Copy(other); }

ZQMPTBuffer &ZQMPTBuffer::operator=(ZQMPTBuffer const &other) {
  Copy(other);
  return *this;
}

ZQMPTBuffer::~ZQMPTBuffer() { Reset(); }

void ZQMPTBuffer::Reset() {
  dataSizeProxy = 0;
  data.Reset();
  sizeRequest = WMPI_REQUEST_NULL;
  dataRequest = WMPI_REQUEST_NULL;
  sizeStatus = WMPI_Status{};
  dataStatus = WMPI_Status{};
  unpackPos = 0;
}

long long *ZQMPTBuffer::GetDataSizeProxyPtr() {
  dataSizeProxy = data.GetSize();
  return &dataSizeProxy;
}

void ZQMPTBuffer::PrepareUnpack(long long size) {
  unpackPos = 0;
  data.Resize(size);
}

void ZQMPTBuffer::AutoDataReset(long long threshold) {
  if (threshold < data.GetCapacity()) {
    data.Reset();
  }
}

void ZQMPTBuffer::Copy(ZQMPTBuffer const &other) {
  dataSizeProxy = other.dataSizeProxy;
  if (this != &other) {
    data = other.data;
  }
  sizeRequest = other.sizeRequest;
  dataRequest = other.dataRequest;
  sizeStatus = other.sizeStatus;
  // Both statuses come from the source's size status; its data status is never read.
  dataStatus = other.sizeStatus;
  unpackPos = 0;
}

} // namespace Velmora::Tessara::ZQ::Core

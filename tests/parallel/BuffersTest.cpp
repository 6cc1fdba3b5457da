// Message buffers: sizing and growth, keys by buffer mode, freeing by threshold, copies
// that share bytes, packing round trips and the broadcast of a buffer.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <vector>

using Velmora::Tessara::ZQ::Core::Types;
using Velmora::Tessara::ZQ::Core::ZQMPT;
using Velmora::Tessara::ZQ::Core::ZQMPTBuffer;

namespace {

// Capacity, size and growth of a buffer's bytes.
using Shape = std::array<long long, 3>;

Shape ShapeOf(ZQMPTBuffer const *buffer) {
  auto const &bytes = buffer->GetData();
  return {bytes.GetCapacity(), bytes.GetSize(), bytes.GetGrowth()};
}

} // namespace

TEST(MPTBuffers, InitialCapacityAndGrowthFollowTheHint) {
  ZQMPT mpt;
  std::vector<char> bytes(10001, 'b');
  mpt.Pack(bytes.data(), 0); // nothing to pack needs no buffer
  mpt.InitSendBuffer(1, 100);
  EXPECT_EQ((Shape{4096, 0, 2048}), ShapeOf(mpt.GetSendBuffer(1)));
  mpt.InitSendBuffer(2, 0);
  EXPECT_EQ((Shape{0, 0, 32768}), ShapeOf(mpt.GetSendBuffer(2)));
  mpt.Pack(bytes.data(), 8);
  EXPECT_EQ((Shape{32768, 8, 32768}), ShapeOf(mpt.GetSendBuffer(2)));
  mpt.InitSendBuffer(3, 10000);
  mpt.Pack(bytes.data(), 10000);
  EXPECT_EQ((Shape{10000, 10000, 5000}), ShapeOf(mpt.GetSendBuffer(3)));
  mpt.Pack(bytes.data(), 1);
  EXPECT_EQ((Shape{15000, 10001, 5000}), ShapeOf(mpt.GetSendBuffer(3)));
  mpt.InitReceiveBuffer(1, 100);
  EXPECT_EQ((Shape{4096, 100, 2048}), ShapeOf(mpt.GetReceiveBuffer(1)));
  EXPECT_EQ(4096 + 32768 + 15000 + 4096, mpt.GetTotalBufferSizes());
  EXPECT_EQ(nullptr, mpt.GetSendBuffer(7));
}

TEST(MPTBuffers, SingleModeKeysEveryPeerToZeroAndModeChangesResetAndCopiesDropTheMaps) {
  ZQMPT mpt;
  mpt.InitSendBuffer(0, 10);
  mpt.SetBufferMode(Types::BufferMode_t::PerProcess); // unchanged: keeps the buffer
  EXPECT_NE(nullptr, mpt.GetSendBuffer(0));
  ZQMPT copy(mpt);
  EXPECT_EQ(nullptr, copy.GetSendBuffer(0));
  mpt.SetBufferMode(Types::BufferMode_t::Single);
  EXPECT_EQ(nullptr, mpt.GetSendBuffer(0));
  int value = 9;
  mpt.InitSendBuffer(3, 10);
  mpt.Pack(&value, 1);
  EXPECT_EQ(4, mpt.GetSendBufferSize(0));
  mpt.InitReceiveBuffer(3, 0);
  mpt.SetBufferMode(Types::BufferMode_t::PerProcess);
  EXPECT_EQ(0, mpt.GetTotalBufferSizes());
  EXPECT_EQ(0, mpt.GetSelectedReceiveBuffer()); // selections stay
  mpt.InitSendBuffer(1, 1);
  mpt.InitReceiveBuffer(1, 1);
  mpt.Reset();
  EXPECT_EQ(0, mpt.GetTotalBufferSizes());
}

TEST(MPTBuffers, LastUnpackFreesBuffersAboveTheThreshold) {
  ZQMPT mpt;
  mpt.SetAutoBufferResetThreshold(1000);
  std::vector<char> bytes(1000, 'x');
  mpt.InitSendBuffer(0, 1000);
  mpt.Pack(bytes.data(), 1000);
  mpt.CopySendToReceiveBuffer(0);
  mpt.Unpack(bytes.data(), 999);
  EXPECT_TRUE(mpt.GetReceiveBuffer(0)->IsInitialized());
  mpt.Unpack(bytes.data(), 1);
  EXPECT_FALSE(mpt.GetReceiveBuffer(0)->IsInitialized());
  // A receive buffer of exactly the threshold keeps its memory.
  mpt.InitReceiveBuffer(0, 0);
  mpt.GetReceiveBuffer(0)->PrepareUnpack(1000);
  mpt.Unpack(bytes.data(), 1000);
  EXPECT_EQ(1000, mpt.GetReceiveBuffer(0)->GetData().GetCapacity());
}

TEST(MPTBuffers, CopiesShareBytesAndTakeTheSizeStatusTwice) {
  ZQMPTBuffer source;
  source.GetData().Resize(16);
  std::memset(source.GetData().GetData(), 7, 16);
  source.GetSizeStatus().MPI_TAG = 11;
  source.GetDataStatus().MPI_TAG = 22;
  source.GetDataRequest() = 5;
  source.SetUnpackPos(3);
  source.GetDataSizeProxyPtr(); // takes the size of the data
  ZQMPTBuffer copy(source);
  ZQMPTBuffer assigned;
  assigned = source;
  for (ZQMPTBuffer const *each : {&copy, &assigned}) {
    EXPECT_EQ(source.GetData().GetData(), each->GetData().GetData());
    EXPECT_EQ(16, each->GetDataSizeProxy());
    EXPECT_EQ(11, each->GetDataStatus().MPI_TAG);
    EXPECT_EQ(5u, each->GetDataRequest());
    EXPECT_EQ(0, each->GetUnpackPos());
  }
  source.Reset();
  EXPECT_EQ(7, copy.GetData().GetData()[15]); // the last sharer keeps the bytes alive
}

TEST(MPTBuffers, MixedRecordsRoundTripThroughTheOwnReceiveBuffer) {
  ZQMPT mpt;
  int const self = mpt.GetProcRank();
  mpt.InitSendBuffer(self, 0);
  for (int record = 0; record < 100; ++record) {
    double xyz[3] = {record + 0.25, -record * 1.0, 1e300};
    long long id = (1LL << 40) + record;
    wchar_t tag[2] = {L'r', static_cast<wchar_t>(0x1F600 + record)};
    short level = static_cast<short>(-record);
    mpt.Pack(&record, 1);
    mpt.Pack(xyz, 3);
    mpt.Pack(&id, 1);
    mpt.Pack(tag, 2);
    mpt.Pack(&level, 1);
  }
  long long const total = 100 * (4 + 24 + 8 + 2 * static_cast<long long>(sizeof(wchar_t)) + 2);
  mpt.CopySendToReceiveBuffer(self);
  EXPECT_EQ(total, mpt.GetSendBufferSize(self)); // the send side is untouched
  std::vector<long long> sizes(mpt.GetNProcs(), -1);
  mpt.GetReceiveBufferSizes(sizes.data());
  EXPECT_TRUE(sizes[self] == total && std::count(sizes.begin(), sizes.end(), 0) == mpt.GetNProcs() - 1);
  bool ok = true;
  for (int record = 0; record < 100; ++record) {
    int index = -1;
    double xyz[3] = {};
    long long id = 0;
    wchar_t tag[2] = {};
    short level = 0;
    mpt.Unpack(&index, 1);
    mpt.Unpack(xyz, 3);
    mpt.Unpack(&id, 1);
    mpt.Unpack(tag, 2);
    mpt.Unpack(&level, 1);
    ok = ok && index == record && xyz[0] == record + 0.25 && xyz[2] == 1e300 && id == (1LL << 40) + record &&
         tag[1] == static_cast<wchar_t>(0x1F600 + record) && level == -record;
  }
  EXPECT_TRUE(ok);
}

TEST(MPTBuffers, BroadcastBufferFillsEveryOtherReceiveBuffer) {
  ZQMPT mpt;
  int const root = mpt.GetNProcs() - 1;
  bool const isRoot = mpt.GetProcRank() == root;
  double values[3] = {1.5, 2.5, isRoot ? 3.5 : 0.0};
  if (isRoot) {
    mpt.InitSendBuffer(0, 64);
    mpt.Pack(values, 3);
  }
  mpt.BroadcastBuffer(root);
  bool ok = (mpt.GetReceiveBuffer(root) == nullptr) == isRoot;
  if (!isRoot) {
    ok = ok && mpt.GetReceiveBufferSize(root) == 24;
    mpt.Unpack(values, 3);
  }
  EXPECT_TRUE(zqtest::AllRanks(ok && values[2] == 3.5));
}

// Packing follows the selection however it moves: by Select, by Init, and by an exchange
// operation that puts a remembered selection back.
TEST(MPTBuffers, InterleavedPackingFollowsTheSelection) {
  ZQMPT mpt;
  int values[] = {11, 22, 33};
  mpt.InitSendBuffer(1, 16);
  mpt.Pack(&values[0], 1);
  mpt.InitSendBuffer(2, 16);
  mpt.Pack(&values[1], 1);
  mpt.SelectSendBuffer(1);
  mpt.NBSendBuffers(std::set<int>{-1}, true);
  mpt.Pack(&values[2], 1);
  mpt.CopySendToReceiveBuffer(1);
  int got[2] = {};
  mpt.Unpack(got, 2);
  EXPECT_EQ(mpt.GetSendBufferSize(2), 4);
  EXPECT_EQ((std::vector<int>{got[0], got[1]}), (std::vector<int>{11, 33}));
}

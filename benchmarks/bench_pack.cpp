// Packing and unpacking through a ZQMPT message buffer against memcpy of the same bytes
// into a plain buffer (and against the layer's packing call alone): a stream of small mixed
// records, and a bulk array.
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/parallel/ZQMPTBuffer.h>
#include <zqcore/wmpi.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>
#include <mpi.h>

#include <cstring>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQMPT;

namespace {

// One record: an id, a point, a global index and an 8-character label.
struct Record {
  int id;
  double xyz[3];
  long long index;
  char label[8];
};

constexpr long long kRecordBytes = 4 + 3 * 8 + 8 + 8;
constexpr int kRecords = 1000;
constexpr int kBulkDoubles = 1 << 14;

std::vector<Record> const &Records() {
  static std::vector<Record> const records = [] {
    std::vector<Record> built(kRecords);
    for (int i = 0; i < kRecords; ++i) {
      built[i] = Record{i, {i * 0.5, i * 1.5, -i * 2.0}, (1LL << 40) + i, {'n', 'o', 'd', 'e', '_', 'x', 'y', 'z'}};
    }
    return built;
  }();
  return records;
}

void PackRecords(ZQMPT &mpt, std::vector<Record> &records) {
  for (Record &record : records) {
    mpt.Pack(&record.id, 1);
    mpt.Pack(record.xyz, 3);
    mpt.Pack(&record.index, 1);
    mpt.Pack(record.label, 8);
  }
}

// The plain way: the same fields, the same order, memcpy into a byte vector.
unsigned char *CopyIn(unsigned char *at, void const *field, std::size_t bytes) {
  std::memcpy(at, field, bytes);
  return at + bytes;
}

unsigned char const *CopyOut(unsigned char const *at, void *field, std::size_t bytes) {
  std::memcpy(field, at, bytes);
  return at + bytes;
}

void PackRecordsOurs(benchmark::State &state) {
  ZQMPT mpt;
  std::vector<Record> records = Records();
  for (auto _ : state) {
    mpt.InitSendBuffer(0, kRecords * kRecordBytes);
    PackRecords(mpt, records);
    benchmark::DoNotOptimize(mpt.GetSendBufferSize(0));
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

void PackRecordsPlain(benchmark::State &state) {
  std::vector<Record> const records = Records();
  std::vector<unsigned char> buffer(kRecords * kRecordBytes);
  for (auto _ : state) {
    unsigned char *at = buffer.data();
    for (Record const &record : records) {
      at = CopyIn(at, &record.id, sizeof record.id);
      at = CopyIn(at, record.xyz, sizeof record.xyz);
      at = CopyIn(at, &record.index, sizeof record.index);
      at = CopyIn(at, record.label, sizeof record.label);
    }
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

void UnpackRecordsOurs(benchmark::State &state) {
  ZQMPT mpt;
  std::vector<Record> records = Records();
  mpt.InitSendBuffer(0, kRecords * kRecordBytes);
  PackRecords(mpt, records);
  mpt.CopySendToReceiveBuffer(0);
  for (auto _ : state) {
    mpt.GetReceiveBuffer(0)->SetUnpackPos(0);
    for (Record &record : records) {
      mpt.Unpack(&record.id, 1);
      mpt.Unpack(record.xyz, 3);
      mpt.Unpack(&record.index, 1);
      mpt.Unpack(record.label, 8);
    }
    benchmark::DoNotOptimize(records.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

void UnpackRecordsPlain(benchmark::State &state) {
  std::vector<Record> records = Records();
  std::vector<unsigned char> buffer(kRecords * kRecordBytes, 1);
  for (auto _ : state) {
    unsigned char const *at = buffer.data();
    for (Record &record : records) {
      at = CopyOut(at, &record.id, sizeof record.id);
      at = CopyOut(at, record.xyz, sizeof record.xyz);
      at = CopyOut(at, &record.index, sizeof record.index);
      at = CopyOut(at, record.label, sizeof record.label);
    }
    benchmark::DoNotOptimize(records.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

void PackBulkOurs(benchmark::State &state) {
  ZQMPT mpt;
  std::vector<double> values(kBulkDoubles, 0.25);
  for (auto _ : state) {
    mpt.InitSendBuffer(0, kBulkDoubles * 8);
    mpt.Pack(values.data(), kBulkDoubles);
    benchmark::DoNotOptimize(mpt.GetSendBufferSize(0));
  }
  state.SetBytesProcessed(state.iterations() * kBulkDoubles * 8);
}

void PackBulkPlain(benchmark::State &state) {
  std::vector<double> const values(kBulkDoubles, 0.25);
  std::vector<unsigned char> buffer(kBulkDoubles * 8);
  for (auto _ : state) {
    std::memcpy(buffer.data(), values.data(), buffer.size());
    benchmark::DoNotOptimize(buffer.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kBulkDoubles * 8);
}

// The layer's own packing call on a plain buffer: the floor under Pack, which adds the
// selected buffer, the room test, the narrowing checks and the status check.
void PackRecordsLayer(benchmark::State &state) {
  ZQMPT mpt;
  std::vector<Record> records = Records();
  std::vector<unsigned char> buffer(kRecords * kRecordBytes);
  int const capacity = static_cast<int>(buffer.size());
  unsigned long long const comm = mpt.GetMPIComm();
  for (auto _ : state) {
    int position = 0;
    for (Record &record : records) {
      WMPI_Pack(&record.id, 1, WMPI_INT, buffer.data(), capacity, &position, comm);
      WMPI_Pack(record.xyz, 3, WMPI_DOUBLE, buffer.data(), capacity, &position, comm);
      WMPI_Pack(&record.index, 1, WMPI_LONG_LONG, buffer.data(), capacity, &position, comm);
      WMPI_Pack(record.label, 8, WMPI_CHAR, buffer.data(), capacity, &position, comm);
    }
    benchmark::DoNotOptimize(position);
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

// The layer's own unpacking call on a plain buffer: the floor under Unpack.
void UnpackRecordsLayer(benchmark::State &state) {
  ZQMPT mpt;
  std::vector<Record> records = Records();
  std::vector<unsigned char> buffer(kRecords * kRecordBytes, 1);
  int const size = static_cast<int>(buffer.size());
  unsigned long long const comm = mpt.GetMPIComm();
  for (auto _ : state) {
    int position = 0;
    for (Record &record : records) {
      WMPI_Unpack(buffer.data(), size, &position, &record.id, 1, WMPI_INT, comm);
      WMPI_Unpack(buffer.data(), size, &position, record.xyz, 3, WMPI_DOUBLE, comm);
      WMPI_Unpack(buffer.data(), size, &position, &record.index, 1, WMPI_LONG_LONG, comm);
      WMPI_Unpack(buffer.data(), size, &position, record.label, 8, WMPI_CHAR, comm);
    }
    benchmark::DoNotOptimize(records.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * kRecords * kRecordBytes);
}

} // namespace

// The message-passing layer must be up before a ZQMPT exists; the host brings it up.
int main(int argc, char **argv) {
  MPI_Init(&argc, &argv);
  benchmark::RegisterBenchmark("PackRecords/zq", PackRecordsOurs);
  benchmark::RegisterBenchmark("PackRecords/memcpy", PackRecordsPlain);
  benchmark::RegisterBenchmark("PackRecords/layer", PackRecordsLayer);
  benchmark::RegisterBenchmark("UnpackRecords/zq", UnpackRecordsOurs);
  benchmark::RegisterBenchmark("UnpackRecords/memcpy", UnpackRecordsPlain);
  benchmark::RegisterBenchmark("UnpackRecords/layer", UnpackRecordsLayer);
  benchmark::RegisterBenchmark("PackBulk/zq", PackBulkOurs);
  benchmark::RegisterBenchmark("PackBulk/memcpy", PackBulkPlain);
  int const result = zqbench::RunWithRatios(argc, argv);
  MPI_Finalize();
  return result;
}

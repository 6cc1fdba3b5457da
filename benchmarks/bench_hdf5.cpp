// Writing and reading a 64 MiB one-dimensional double array through ZQHDF5Util and
// through the raw HDF5 C API with the same layout: contiguous, and chunked (8192) with
// deflate level 5. Each iteration creates or opens the file, moves the data and closes
// the file. Repetitions run in random interleaved order, so neither side always runs
// first; the ratio table takes the medians. Rates are per process CPU second (system
// time included), which a machine shared with other work disturbs less than wall time.
#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/hdf5/ZQHDF5Util.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>
#include <hdf5.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQArrayNativeType;
using Velmora::Tessara::ZQ::Core::ZQHDF5Util;

namespace {

constexpr long long kDoubles = 64LL * 1024 * 1024 / static_cast<long long>(sizeof(double));
constexpr hsize_t kChunk = 8192;
constexpr unsigned kDeflateLevel = 5;

/// Smooth values, so that deflate has something to work with, as real fields do.
ZQArrayNativeType<double, long long> const &Values() {
  static ZQArrayNativeType<double, long long> const values = [] {
    ZQArrayNativeType<double, long long> built;
    built.Resize(kDoubles);
    for (long long i = 0; i < kDoubles; ++i) {
      built(i) = std::sin(1.0e-4 * static_cast<double>(i));
    }
    return built;
  }();
  return values;
}

std::string FilePath(char const *name) {
  return (std::filesystem::temp_directory_path() / ("zq_bench_hdf5_" + std::to_string(getpid()) + "_" + name + ".h5"))
      .string();
}

/// The same file access as the library's files: closing ends every object of the file.
hid_t StrongCloseAccess() {
  hid_t const access = H5Pcreate(H5P_FILE_ACCESS);
  H5Pset_fclose_degree(access, H5F_CLOSE_STRONG);
  return access;
}

void Count(benchmark::State &state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kDoubles * static_cast<int64_t>(sizeof(double)));
}

bool WriteFileOurs(bool compressed) {
  std::string const path = FilePath(compressed ? "zq_deflate" : "zq");
  long long file = -1;
  bool ok = ZQHDF5Util::CreateHDF5File(nullptr, path.c_str(), file).OK();
  ok = ok && ZQHDF5Util::Write(nullptr, file, Values(), "values", compressed ? kDeflateLevel : 0, nullptr, false).OK();
  return ZQHDF5Util::CloseHDF5File(nullptr, file).OK() && ok;
}

bool WriteFileRaw(bool compressed) {
  std::string const path = FilePath(compressed ? "raw_deflate" : "raw");
  hsize_t const extent = static_cast<hsize_t>(kDoubles);
  hid_t const access = StrongCloseAccess();
  hid_t const file = H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, access);
  hid_t const space = H5Screate_simple(1, &extent, nullptr);
  hid_t const creation = H5Pcreate(H5P_DATASET_CREATE);
  if (compressed) {
    H5Pset_chunk(creation, 1, &kChunk);
    H5Pset_deflate(creation, kDeflateLevel);
  }
  hid_t const dataset = H5Dcreate2(file, "values", H5T_IEEE_F64LE, space, H5P_DEFAULT, creation, H5P_DEFAULT);
  herr_t const written = H5Dwrite(dataset, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, Values().GetData());
  H5Dclose(dataset);
  H5Pclose(creation);
  H5Sclose(space);
  H5Pclose(access);
  return H5Fclose(file) >= 0 && written >= 0;
}

template <bool (*WriteFile)(bool)> void WriteCase(benchmark::State &state, bool compressed) {
  for (auto _ : state) {
    if (!WriteFile(compressed)) {
      state.SkipWithError("write failed");
    }
  }
  Count(state);
}

void ReadOurs(benchmark::State &state, bool compressed) {
  std::string const path = FilePath(compressed ? "zq_deflate" : "zq");
  ZQArrayNativeType<double, long long> values;
  for (auto _ : state) {
    long long file = -1;
    bool ok = ZQHDF5Util::OpenHDF5File(nullptr, path.c_str(), file).OK();
    ok = ok && ZQHDF5Util::Read(nullptr, file, values, "values", true, false).OK();
    ok = ZQHDF5Util::CloseHDF5File(nullptr, file).OK() && ok;
    if (!ok || values.Size() != kDoubles) {
      state.SkipWithError("read failed");
    }
  }
  Count(state);
}

void ReadRaw(benchmark::State &state, bool compressed) {
  std::string const path = FilePath(compressed ? "raw_deflate" : "raw");
  std::vector<double> values;
  for (auto _ : state) {
    hid_t const file = H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    hid_t const dataset = H5Dopen2(file, "values", H5P_DEFAULT);
    hid_t const space = H5Dget_space(dataset);
    hsize_t extent = 0;
    H5Sget_simple_extent_dims(space, &extent, nullptr);
    values.resize(static_cast<size_t>(extent));
    herr_t const read = H5Dread(dataset, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
    H5Sclose(space);
    H5Dclose(dataset);
    H5Fclose(file);
    if (read < 0 || static_cast<long long>(extent) != kDoubles) {
      state.SkipWithError("read failed");
    }
  }
  Count(state);
}

} // namespace

int main(int argc, char **argv) {
  // Data and files exist before any timing starts: interleaved repetitions may run a
  // read before its write.
  Values();
  for (bool const compressed : {false, true}) {
    if (!WriteFileOurs(compressed) || !WriteFileRaw(compressed)) {
      return 1;
    }
  }
  for (bool const compressed : {false, true}) {
    std::string const layout = compressed ? "Deflate5" : "Contiguous";
    benchmark::RegisterBenchmark(("HDF5Write64MiB" + layout + "/zq").c_str(), [compressed](benchmark::State &state) {
      WriteCase<WriteFileOurs>(state, compressed);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("HDF5Write64MiB" + layout + "/raw").c_str(), [compressed](benchmark::State &state) {
      WriteCase<WriteFileRaw>(state, compressed);
    })->Unit(benchmark::kMillisecond);
  }
  for (bool const compressed : {false, true}) {
    std::string const layout = compressed ? "Deflate5" : "Contiguous";
    benchmark::RegisterBenchmark(("HDF5Read64MiB" + layout + "/zq").c_str(), [compressed](benchmark::State &state) {
      ReadOurs(state, compressed);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("HDF5Read64MiB" + layout + "/raw").c_str(), [compressed](benchmark::State &state) {
      ReadRaw(state, compressed);
    })->Unit(benchmark::kMillisecond);
  }
  std::vector<char *> args(argv, argv + argc);
  std::string repetitions = "--benchmark_repetitions=7";
  std::string interleaving = "--benchmark_enable_random_interleaving=true";
  args.insert(args.begin() + 1, {repetitions.data(), interleaving.data()});
  int count = static_cast<int>(args.size());
  int const status = zqbench::RunWithRatios(count, args.data());
  for (char const *name : {"zq", "raw", "zq_deflate", "raw_deflate"}) {
    std::filesystem::remove(FilePath(name));
  }
  return status;
}

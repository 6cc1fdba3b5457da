// Datasets: numeric and string arrays, capacities, chunks, hyperslabs and maps, also read raw.
#include "HDF5TestSupport.h"

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/strings/ZQString.h>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;
using Util = ZQHDF5Util;

namespace {

using Strings = ZQArrayObjectType<ZQString, long long>;
using StringMap = ZQMapObjectTypes<ZQString, ZQString>;
using HDF5Datasets = HDF5Test;

/// An array of the given extents whose element at flat position i is `start` + i.
template <typename T> ZQArrayNativeType<T, long long> Filled(std::vector<long long> const &extents, T start) {
  ZQArrayNativeType<T, long long> array;
  extents.size() == 1   ? array.Resize(extents[0])
  : extents.size() == 2 ? array.Resize(extents[0], extents[1])
                        : array.Resize(extents[0], extents[1], extents[2]);
  for (long long i = 0; i < array.Size(); ++i) {
    array.GetData()[i] = static_cast<T>(start + static_cast<T>(i));
  }
  return array;
}

template <typename T> void ExpectEveryRankRoundTrips(HDF5Datasets &test, hid_t fileType, hid_t memoryType, T start) {
  for (std::vector<long long> const &extents : {std::vector<long long>{7}, {4, 3}, {2, 3, 5}}) {
    std::string const name = "rank" + std::to_string(extents.size()) + "_" + std::to_string(fileType);
    auto const array = Filled<T>(extents, start);
    ASSERT_TRUE(Util::Write(&test.context, test.file, array, name.c_str(), 0, nullptr, false).OK()) << name;
    RawDataset const raw = Inspect(test.file, name.c_str(), fileType);
    EXPECT_EQ(raw.dims, std::vector<hsize_t>(extents.begin(), extents.end())) << name;
    EXPECT_TRUE(raw.typeMatches) << name;
    EXPECT_EQ(raw.layout, H5D_CONTIGUOUS) << name;
    EXPECT_EQ(RawRead<T>(test.file, name.c_str(), memoryType),
              std::vector<T>(array.GetData(), array.GetData() + array.Size()))
        << name;
    ZQArrayNativeType<T, long long> back;
    std::wstring const wideName(name.begin(), name.end());
    ASSERT_TRUE(Util::Read(&test.context, test.file, back, wideName.c_str(), true, false).OK()) << name;
    ASSERT_EQ(back.GetRank(), static_cast<long long>(extents.size()));
    EXPECT_EQ(back.GetSize(back.GetRank() - 1), extents.back());
    EXPECT_EQ(std::vector<T>(back.GetData(), back.GetData() + back.Size()),
              std::vector<T>(array.GetData(), array.GetData() + array.Size()));
  }
}

TEST_F(HDF5Datasets, EveryElementTypeAndRankRoundTripsAsAnOrdinaryDataset) {
  ExpectEveryRankRoundTrips<unsigned char>(*this, H5T_STD_U8LE, H5T_NATIVE_UCHAR, 200);
  ExpectEveryRankRoundTrips<int>(*this, H5T_STD_I32LE, H5T_NATIVE_INT, -2000000000);
  ExpectEveryRankRoundTrips<long long>(*this, H5T_STD_I64LE, H5T_NATIVE_LLONG, 1LL << 50);
  ExpectEveryRankRoundTrips<float>(*this, H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, -3.25f);
  ExpectEveryRankRoundTrips<double>(*this, H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, 1.0e-300);
  EXPECT_EQ(Messages(), 0);
}

TEST_F(HDF5Datasets, HyperslabsMoveBlocksInPlaceAndRefuseBlocksOutside) {
  auto const whole = Filled<int>({6, 5}, 0);
  ASSERT_TRUE(Util::Write(&context, file, whole, "grid", 0, nullptr, false).OK());
  long long dataset = -1;
  ASSERT_TRUE(Util::OpenDataset(&context, file, "grid", true, dataset).OK());
  ZQArrayNativeType<int, long long> block;
  block.Resize(2, 3);
  long long const offsets[] = {3, 1};
  ASSERT_TRUE(Util::ReadHyperslab(&context, dataset, block, offsets).OK());
  EXPECT_EQ(block(1, 2), whole(4, 3));
  ASSERT_TRUE(Util::WriteHyperslab(&context, dataset, block, nullptr).OK());
  std::vector<int> const raw = RawRead<int>(file, "grid", H5T_NATIVE_INT);
  EXPECT_EQ(raw[0], whole(3, 1));
  EXPECT_EQ(raw[5 + 2], whole(4, 3));
  EXPECT_EQ(raw[3], whole(0, 3));

  long long const beyond[] = {5, 0};
  EXPECT_EQ(Util::ReadHyperslab(&context, dataset, block, beyond).GetStatusCode(),
            Code(Status::HDF5ReadHyperslabError));
  EXPECT_TRUE(OneHDF5Message(context, 0));
  EXPECT_EQ(Util::WriteHyperslab(&context, dataset, block, beyond).GetStatusCode(),
            Code(Status::HDF5WriteHyperslabError));
  H5Dclose(static_cast<hid_t>(dataset));
  // An empty array succeeds without touching anything, even without a dataset.
  block.Resize(0, 3);
  EXPECT_TRUE(Util::ReadHyperslab(&context, -1, block, nullptr).OK());
}

TEST_F(HDF5Datasets, CapacitiesGoOutWholeWithShapeAttributesThatAreNotRestored) {
  ZQArrayNativeType<int, long long> array;
  array.Reserve(5, 4);
  array.Resize(3, 2);
  for (long long i = 0; i < 20; ++i) {
    array.GetData()[i] = static_cast<int>(i);
  }
  ASSERT_TRUE(Util::Write(&context, file, array, "cap", 0, nullptr, true).OK());
  EXPECT_EQ(Inspect(file, "cap").dims, (std::vector<hsize_t>{5, 4}));
  EXPECT_EQ(RawRead<int>(file, "cap", H5T_NATIVE_INT).back(), 19);
  hid_t const dataset = H5Dopen2(file, "cap", H5P_DEFAULT);
  EXPECT_EQ(RawInt64(dataset, "NumberOfDimensions"), 2);
  EXPECT_EQ(RawInt64(dataset, "Size_0") * 10 + RawInt64(dataset, "Size_1"), 32);
  EXPECT_EQ(RawInt64(dataset, "Capacity_0") * 10 + RawInt64(dataset, "Capacity_1"), 54);
  EXPECT_EQ(RawInt64(dataset, "Size_2"), -999);
  H5Dclose(dataset);

  ZQArrayNativeType<int, long long> back;
  ASSERT_TRUE(Util::Read(&context, file, back, "cap", true, false).OK());
  EXPECT_EQ(back.Size(), 20);
  // A recorded rank is refused, with the data in place.
  EXPECT_EQ(Util::Read(&context, file, back, "cap", true, true).GetStatusCode(),
            Code(Status::HDF5ArrayShapeFromAttributesError));
  EXPECT_EQ(Last(), "number of dimensions differs from number of capacities given!");
  EXPECT_EQ(Messages(), 2);
  EXPECT_EQ(back(4, 3), 19);
  // Without shape attributes the same read ends empty and successful.
  ASSERT_TRUE(Util::Write(&context, file, array, "plain", 0, nullptr, false).OK());
  ASSERT_TRUE(Util::Read(&context, file, back, "plain", true, true).OK());
  EXPECT_EQ(back.GetRank(), 0);
  long long handle = -1;
  ASSERT_TRUE(Util::OpenDataset(&context, file, "cap", false, handle).OK());
  ASSERT_TRUE(Util::GetDatasetShape(&context, handle, back).OK());
  EXPECT_EQ(back.GetSize(0) * 10 + back.GetSize(1), 54);
  H5Dclose(static_cast<hid_t>(handle));
}

TEST_F(HDF5Datasets, ChunksAndDeflateFollowTheLevelAndTheChunkExtents) {
  struct Case {
    std::vector<long long> extents;
    long long level;
    std::vector<long long> chunkDims;
    std::vector<hsize_t> chunk; // empty: contiguous
    unsigned deflate;
  };
  std::vector<Case> const cases = {
      {{100, 3}, 5, {}, {100, 3}, 5}, {{10000, 3}, 5, {}, {8192, 3}, 5},  {{50}, 12, {}, {50}, 9},
      {{50}, -1, {}, {}, 99},         {{40, 6}, 0, {0, 100}, {40, 6}, 0}, {{40, 6}, 3, {10, -1}, {10, 6}, 3}};
  for (size_t c = 0; c < cases.size(); ++c) {
    std::string const name = "case" + std::to_string(c);
    auto const array = Filled<double>(cases[c].extents, 0.5);
    long long const *chunkDims = cases[c].chunkDims.empty() ? nullptr : cases[c].chunkDims.data();
    ASSERT_TRUE(Util::Write(&context, file, array, name.c_str(), cases[c].level, chunkDims, false).OK()) << c;
    RawDataset const raw = Inspect(file, name.c_str(), H5T_IEEE_F64LE);
    EXPECT_EQ(raw.layout, cases[c].chunk.empty() ? H5D_CONTIGUOUS : H5D_CHUNKED) << c;
    EXPECT_EQ(raw.chunk, cases[c].chunk) << c;
    EXPECT_EQ(raw.deflate, cases[c].deflate) << c;
    EXPECT_EQ(RawRead<double>(file, name.c_str(), H5T_NATIVE_DOUBLE).back(), array.GetData()[array.Size() - 1]);
  }
}

TEST_F(HDF5Datasets, FailedWritesAndReadsGiveTheStatusOfTheFailingStep) {
  ZQArrayNativeType<double, long long> empty;
  EXPECT_EQ(Util::Write(&context, file, empty, "rank0", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  EXPECT_TRUE(OneHDF5Message(context, 0));
  auto array = Filled<double>({3}, 1.0);
  ASSERT_TRUE(Util::Write(&context, file, array, "once", 0, nullptr, false).OK());
  EXPECT_EQ(Util::Write(&context, file, array, L"once", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  bool exists = false;
  EXPECT_TRUE(Util::HasDataset(&context, file, "rank0", exists).OK() && !exists);
  EXPECT_TRUE(Util::HasDataset(&context, file, L"once", exists).OK() && exists);

  // Missing: empty unless it must exist.
  long long const before = Messages();
  EXPECT_TRUE(Util::Read(&context, file, array, "missing", false, false).OK());
  EXPECT_EQ(array.GetRank(), 0);
  EXPECT_EQ(Messages(), before);
  EXPECT_EQ(Util::Read(&context, file, array, "missing", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_TRUE(OneHDF5Message(context, before));
  long long dataset = 3;
  EXPECT_TRUE(Util::OpenDataset(&context, file, "missing", false, dataset).OK());
  EXPECT_LT(dataset, 0);
  EXPECT_EQ(Util::OpenDataset(&context, file, "missing", true, dataset).GetStatusCode(),
            Code(Status::HDF5OpenDatasetError));

  // Beyond three dimensions, for numbers and strings alike.
  hsize_t const dims[] = {1, 2, 1, 2};
  hid_t const space = H5Screate_simple(4, dims, nullptr);
  hid_t const type = H5Tcopy(H5T_C_S1);
  H5Tset_size(type, H5T_VARIABLE);
  H5Dclose(H5Dcreate2(file, "rank4", H5T_STD_I32LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  H5Dclose(H5Dcreate2(file, "text4", type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  H5Tclose(type);
  H5Sclose(space);
  EXPECT_EQ(Util::Read(&context, file, array, "rank4", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(Last(), "array rank > max. number of dimensions");
  Strings strings;
  EXPECT_EQ(Util::Read(&context, file, strings, "text4", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(Last(), "array rank > max. number of dimensions");
  EXPECT_EQ(Util::Read(&context, file, strings, "once", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(Last(), "wrong class of datatype given for string array");
}

TEST_F(HDF5Datasets, StringArraysAreVariableLengthUTF8WithEmptyUnusedSlots) {
  Strings strings;
  strings.Reserve(3, 3);
  strings.Resize(2, 2);
  strings(0, 0) = "a";
  strings(0, 1) = "";
  strings(1, 0) = "\xE2\x82\xAC uro";
  strings(1, 1) = "d";
  ASSERT_TRUE(Util::Write(&context, file, strings, L"packed", false).OK());
  ASSERT_TRUE(Util::Write(&context, file, strings, "cap", true).OK());
  RawDataset const raw = Inspect(file, "packed");
  EXPECT_TRUE(raw.typeMatches);
  EXPECT_EQ(raw.dims, (std::vector<hsize_t>{2, 2}));
  EXPECT_EQ(raw.layout, H5D_CONTIGUOUS);
  EXPECT_EQ(RawStrings(file, "packed"), (std::vector<std::string>{"a", "", "\xE2\x82\xAC uro", "d"}));
  EXPECT_EQ(RawStrings(file, "cap"), (std::vector<std::string>{"a", "", "", "\xE2\x82\xAC uro", "d", "", "", "", ""}));
  hid_t const dataset = H5Dopen2(file, "cap", H5P_DEFAULT);
  EXPECT_EQ(RawInt64(dataset, "Capacity_1") * 10 + RawInt64(dataset, "Size_1"), 32);
  H5Dclose(dataset);

  // Read back into an array with larger capacities: elements land by position.
  Strings back;
  back.Reserve(4, 8);
  ASSERT_TRUE(Util::Read(&context, file, back, "packed", true, false).OK());
  EXPECT_EQ(back.GetSize(0) * 10 + back.GetSize(1), 22);
  EXPECT_EQ(back(1, 0), "\xE2\x82\xAC uro");
  EXPECT_EQ(back(1, 1), "d");
  ASSERT_TRUE(Util::Read(&context, file, back, "cap", true, false).OK());
  EXPECT_EQ(back.Size(), 9);

  Strings empty;
  ASSERT_TRUE(Util::Write(&context, file, empty, "empty", false).OK());
  EXPECT_TRUE(Inspect(file, "empty").dims.empty());
  ASSERT_TRUE(Util::Read(&context, file, back, "empty", true, false).OK());
  EXPECT_EQ(back.GetRank(), 0);
}

TEST_F(HDF5Datasets, MapsAreRowsOfKeyAndValueAndRefuseOtherShapesAndRepeatedKeys) {
  StringMap map;
  map["zeta"] = "last";
  map["alpha"] = "\xC3\xA9t\xC3\xA9";
  map["mid"] = "";
  ASSERT_TRUE(Util::Write(&context, file, map, "map").OK());
  EXPECT_EQ(Inspect(file, "map").dims, (std::vector<hsize_t>{3, 2}));
  EXPECT_EQ(RawStrings(file, "map"),
            (std::vector<std::string>{"alpha", "\xC3\xA9t\xC3\xA9", "mid", "", "zeta", "last"}));
  StringMap back;
  back["stale"] = "gone";
  ASSERT_TRUE(Util::Read(&context, file, back, L"map", true).OK());
  EXPECT_EQ(back, map);
  ASSERT_TRUE(Util::Write(&context, file, StringMap(), "empty").OK());
  EXPECT_TRUE(Inspect(file, "empty").dims.empty());
  ASSERT_TRUE(Util::Read(&context, file, back, "empty", true).OK());
  EXPECT_TRUE(back.empty());
  EXPECT_TRUE(Util::Read(&context, file, back, "missing", false).OK());

  Strings rows;
  rows.Resize(3, 2);
  char const *cells[] = {"k1", "v1", "k2", "v2", "k1", "v3"};
  std::copy(cells, cells + 6, rows.GetData());
  ASSERT_TRUE(Util::Write(&context, file, rows, "repeated", false).OK());
  EXPECT_EQ(Util::Read(&context, file, back, "repeated", true).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(Last(), "error in data, key given more than once.");
  EXPECT_EQ(back.size(), 2u);
  EXPECT_EQ(back["k1"], "v1");
  Strings threeColumns;
  threeColumns.Resize(2, 3);
  ASSERT_TRUE(Util::Write(&context, file, threeColumns, "three", false).OK());
  EXPECT_EQ(Util::Read(&context, file, back, "three", true).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(Last(), "error in shape of array");
}

} // namespace

// Datasets: numeric arrays of every element type and rank, capacities and shape
// attributes, chunking and compression, hyperslabs, string arrays and string maps. Each
// persisted form is also read back with the raw HDF5 API.
#include "HDF5TestSupport.h"

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <hdf5.h>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

using Strings = ZQArrayObjectType<ZQString, long long>;
using StringMap = ZQMapObjectTypes<ZQString, ZQString>;

class HDF5Datasets : public ::testing::Test {
protected:
  void SetUp() override {
    path = ScratchPath(::testing::UnitTest::GetInstance()->current_test_info()->name());
    ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  }
  void TearDown() override { ZQHDF5Util::CloseHDF5File(&context, file); }

  std::string LastMessage() { return context.GetErrorStack().GetLastMsg().c_str(); }

  ZQContext context;
  std::string path;
  long long file = -1;
};

template <typename T> struct ElementCase;
template <> struct ElementCase<unsigned char> {
  static hid_t File() { return H5T_STD_U8LE; }
  static hid_t Memory() { return H5T_NATIVE_UCHAR; }
  static unsigned char Value(long long i) { return static_cast<unsigned char>(250 - i % 200); }
};
template <> struct ElementCase<int> {
  static hid_t File() { return H5T_STD_I32LE; }
  static hid_t Memory() { return H5T_NATIVE_INT; }
  static int Value(long long i) { return static_cast<int>(-1000000 * i - 7); }
};
template <> struct ElementCase<long long> {
  static hid_t File() { return H5T_STD_I64LE; }
  static hid_t Memory() { return H5T_NATIVE_LLONG; }
  static long long Value(long long i) { return (1LL << 40) * i - 3; }
};
template <> struct ElementCase<float> {
  static hid_t File() { return H5T_IEEE_F32LE; }
  static hid_t Memory() { return H5T_NATIVE_FLOAT; }
  static float Value(long long i) { return 0.25f * static_cast<float>(i) - 3.5f; }
};
template <> struct ElementCase<double> {
  static hid_t File() { return H5T_IEEE_F64LE; }
  static hid_t Memory() { return H5T_NATIVE_DOUBLE; }
  static double Value(long long i) { return 1.0 / (static_cast<double>(i) + 0.5); }
};

/// An array of the given extents (rank = their number) holding Value(flat index).
template <typename T> ZQArrayNativeType<T, long long> MakeArray(std::vector<long long> const &extents) {
  ZQArrayNativeType<T, long long> array;
  if (extents.size() == 1) {
    array.Resize(extents[0]);
  } else if (extents.size() == 2) {
    array.Resize(extents[0], extents[1]);
  } else {
    array.Resize(extents[0], extents[1], extents[2]);
  }
  for (long long i = 0; i < array.Size(); ++i) {
    array.GetData()[i] = ElementCase<T>::Value(i);
  }
  return array;
}

template <typename T> class HDF5NumericDatasets : public HDF5Datasets {};
using ElementTypes = ::testing::Types<unsigned char, int, long long, float, double>;
TYPED_TEST_SUITE(HDF5NumericDatasets, ElementTypes);

TYPED_TEST(HDF5NumericDatasets, EveryRankRoundTripsAndIsAnOrdinaryDatasetOfTheFileType) {
  using Case = ElementCase<TypeParam>;
  std::vector<std::vector<long long>> const shapes = {{7}, {4, 3}, {2, 3, 5}};
  for (auto const &extents : shapes) {
    SCOPED_TRACE(extents.size());
    std::string const name = "rank" + std::to_string(extents.size());
    auto const array = MakeArray<TypeParam>(extents);
    ASSERT_TRUE(ZQHDF5Util::Write(&this->context, this->file, array, name.c_str(), 0, nullptr, false).OK());

    RawDataset const raw = InspectDataset(this->file, name.c_str());
    EXPECT_EQ(raw.dims, std::vector<hsize_t>(extents.begin(), extents.end()));
    EXPECT_EQ(raw.layout, H5D_CONTIGUOUS);
    hid_t const dataset = H5Dopen2(this->file, name.c_str(), H5P_DEFAULT);
    hid_t const type = H5Dget_type(dataset);
    EXPECT_GT(H5Tequal(type, Case::File()), 0);
    H5Tclose(type);
    H5Dclose(dataset);
    std::vector<TypeParam> const values = RawValues<TypeParam>(this->file, name.c_str(), Case::Memory());
    ASSERT_EQ(static_cast<long long>(values.size()), array.Size());
    for (long long i = 0; i < array.Size(); ++i) {
      EXPECT_EQ(values[static_cast<size_t>(i)], array.GetData()[i]);
    }

    ZQArrayNativeType<TypeParam, long long> back;
    std::wstring const wideName(name.begin(), name.end());
    ASSERT_TRUE(ZQHDF5Util::Read(&this->context, this->file, back, wideName.c_str(), true, false).OK());
    ASSERT_EQ(back.GetRank(), static_cast<long long>(extents.size()));
    for (long long d = 0; d < back.GetRank(); ++d) {
      EXPECT_EQ(back.GetSize(d), extents[static_cast<size_t>(d)]);
    }
    for (long long i = 0; i < array.Size(); ++i) {
      EXPECT_EQ(back.GetData()[i], array.GetData()[i]);
    }
  }
  EXPECT_EQ(this->context.GetErrorStack().GetNMsg(), 0);
}

TYPED_TEST(HDF5NumericDatasets, HyperslabsWriteAndReadBlocksInPlace) {
  auto whole = MakeArray<TypeParam>({6, 5});
  ASSERT_TRUE(ZQHDF5Util::Write(&this->context, this->file, whole, "grid", 0, nullptr, false).OK());
  long long dataset = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenDataset(&this->context, this->file, "grid", true, dataset).OK());

  ZQArrayNativeType<TypeParam, long long> block;
  block.Resize(2, 3);
  long long const offsets[] = {3, 1};
  ASSERT_TRUE(ZQHDF5Util::ReadHyperslab(&this->context, dataset, block, offsets).OK());
  for (long long i = 0; i < 2; ++i) {
    for (long long j = 0; j < 3; ++j) {
      EXPECT_EQ(block(i, j), whole(3 + i, 1 + j));
    }
  }
  // Write the block back shifted to the origin, then read the whole grid.
  ASSERT_TRUE(ZQHDF5Util::WriteHyperslab(&this->context, dataset, block, nullptr).OK());
  H5Dclose(static_cast<hid_t>(dataset));
  ZQArrayNativeType<TypeParam, long long> back;
  ASSERT_TRUE(ZQHDF5Util::Read(&this->context, this->file, back, "grid", true, false).OK());
  for (long long i = 0; i < 6; ++i) {
    for (long long j = 0; j < 5; ++j) {
      TypeParam const expected = i < 2 && j < 3 ? whole(3 + i, 1 + j) : whole(i, j);
      EXPECT_EQ(back(i, j), expected) << i << "," << j;
    }
  }
}

TEST_F(HDF5Datasets, HyperslabsOutsideTheDatasetFailAndEmptyOnesTouchNothing) {
  auto whole = MakeArray<double>({10});
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, whole, "line", 0, nullptr, false).OK());
  long long dataset = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenDataset(&context, file, "line", true, dataset).OK());
  ZQArrayNativeType<double, long long> block;
  block.Resize(4);
  long long const beyond[] = {8};
  EXPECT_EQ(ZQHDF5Util::ReadHyperslab(&context, dataset, block, beyond).GetStatusCode(),
            Code(Status::HDF5ReadHyperslabError));
  EXPECT_TRUE(IsOneHDF5Message(context, 0));
  EXPECT_EQ(ZQHDF5Util::WriteHyperslab(&context, dataset, block, beyond).GetStatusCode(),
            Code(Status::HDF5WriteHyperslabError));
  long long const negative[] = {-1};
  EXPECT_EQ(ZQHDF5Util::ReadHyperslab(&context, dataset, block, negative).GetStatusCode(),
            Code(Status::HDF5ReadHyperslabError));
  H5Dclose(static_cast<hid_t>(dataset));

  ZQArrayNativeType<double, long long> empty;
  EXPECT_TRUE(ZQHDF5Util::ReadHyperslab(&context, -1, empty, nullptr).OK());
  empty.Resize(0);
  EXPECT_TRUE(ZQHDF5Util::WriteHyperslab(&context, -1, empty, nullptr).OK());
}

TEST_F(HDF5Datasets, CapacitiesGoOutWholeWithShapeAttributesThatAreNotRestored) {
  ZQArrayNativeType<int, long long> array;
  array.Reserve(5, 4);
  array.Resize(3, 2);
  for (long long i = 0; i < array.Capacity(); ++i) {
    array.GetData()[i] = static_cast<int>(i);
  }
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, array, "cap", 0, nullptr, true).OK());
  RawDataset const raw = InspectDataset(file, "cap");
  EXPECT_EQ(raw.dims, (std::vector<hsize_t>{5, 4}));
  std::vector<int> const values = RawValues<int>(file, "cap", H5T_NATIVE_INT);
  ASSERT_EQ(values.size(), 20u);
  EXPECT_EQ(values[19], 19);

  hid_t const dataset = H5Dopen2(file, "cap", H5P_DEFAULT);
  EXPECT_EQ(RawInt64Attribute(dataset, "NumberOfDimensions"), 2);
  EXPECT_EQ(RawInt64Attribute(dataset, "Size_0"), 3);
  EXPECT_EQ(RawInt64Attribute(dataset, "Size_1"), 2);
  EXPECT_EQ(RawInt64Attribute(dataset, "Capacity_0"), 5);
  EXPECT_EQ(RawInt64Attribute(dataset, "Capacity_1"), 4);
  EXPECT_EQ(RawInt64Attribute(dataset, "Size_2"), -999);
  hid_t const attribute = H5Aopen(dataset, "Size_0", H5P_DEFAULT);
  hid_t const type = H5Aget_type(attribute);
  EXPECT_GT(H5Tequal(type, H5T_STD_I64LE), 0);
  H5Tclose(type);
  H5Aclose(attribute);
  H5Dclose(dataset);

  // Read without the attributes: capacities come back as sizes.
  ZQArrayNativeType<int, long long> back;
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, "cap", true, false).OK());
  EXPECT_EQ(back.GetSize(0), 5);
  EXPECT_EQ(back.GetSize(1), 4);
  // With them: a recorded rank is refused, the data stays in the array.
  long long const before = context.GetErrorStack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, back, "cap", true, true).GetStatusCode(),
            Code(Status::HDF5ArrayShapeFromAttributesError));
  EXPECT_EQ(LastMessage(), "number of dimensions differs from number of capacities given!");
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), before + 2);
  EXPECT_EQ(back.Size(), 20);
  EXPECT_EQ(back(4, 3), 19);
  // A dataset without shape attributes, read with them, ends empty and successful.
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, array, "plain", 0, nullptr, false).OK());
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, "plain", true, true).OK());
  EXPECT_EQ(back.GetRank(), 0);
}

TEST_F(HDF5Datasets, ShapeAttributesOnAGroupAndTheDatasetShape) {
  ZQArrayNativeType<double, long long> shape;
  shape.Reserve(9);
  shape.Resize(4);
  long long group = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(&context, file, "g", group).OK());
  ASSERT_TRUE(ZQHDF5Util::ArrayShapeToAttributes(&context, shape, group).OK());
  EXPECT_EQ(RawInt64Attribute(group, "NumberOfDimensions"), 1);
  EXPECT_EQ(RawInt64Attribute(group, "Size_0"), 4);
  EXPECT_EQ(RawInt64Attribute(group, "Capacity_0"), 9);
  ZQArrayNativeType<double, long long> restored;
  EXPECT_EQ(ZQHDF5Util::ArrayShapeFromAttributes(&context, restored, group).GetStatusCode(),
            Code(Status::HDF5ArrayShapeFromAttributesError));
  EXPECT_EQ(ZQHDF5Util::ArrayShapeFromAttributes(&context, restored, file).GetStatusCode(), 0);
  ZQHDF5Util::CloseGroup(&context, group);

  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, MakeArray<float>({3, 4, 2}), "box", 0, nullptr, false).OK());
  long long dataset = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenDataset(&context, file, "box", false, dataset).OK());
  ZQArrayNativeType<int, long long> dims;
  ASSERT_TRUE(ZQHDF5Util::GetDatasetShape(&context, dataset, dims).OK());
  EXPECT_EQ(dims.GetRank(), 3);
  EXPECT_EQ(dims.GetSize(0), 3);
  EXPECT_EQ(dims.GetSize(2), 2);
  H5Dclose(static_cast<hid_t>(dataset));
  EXPECT_EQ(ZQHDF5Util::GetDatasetShape(&context, -1, dims).GetStatusCode(), Code(Status::HDF5SetAttributeError));
}

TEST_F(HDF5Datasets, ChunksAndDeflateFollowTheLevelAndTheChunkExtents) {
  struct Case {
    char const *name;
    std::vector<long long> extents;
    long long level;
    std::vector<long long> chunkDims; // empty: none given
    H5D_layout_t layout;
    std::vector<hsize_t> chunk;
    int deflate;
  };
  std::vector<Case> const cases = {
      {"small", {100, 3}, 5, {}, H5D_CHUNKED, {100, 3}, 5},
      {"tall", {10000, 3}, 5, {}, H5D_CHUNKED, {8192, 3}, 5},
      {"clamped", {50}, 12, {}, H5D_CHUNKED, {50}, 9},
      {"contiguous", {50}, -1, {}, H5D_CONTIGUOUS, {}, -1},
      {"given", {40, 6}, 0, {0, 100}, H5D_CHUNKED, {40, 6}, 0},
      {"partial", {40, 6}, 3, {10, 2}, H5D_CHUNKED, {10, 2}, 3},
  };
  for (Case const &c : cases) {
    SCOPED_TRACE(c.name);
    auto const array = MakeArray<double>(c.extents);
    long long const *chunkDims = c.chunkDims.empty() ? nullptr : c.chunkDims.data();
    ASSERT_TRUE(ZQHDF5Util::Write(&context, file, array, c.name, c.level, chunkDims, false).OK());
    RawDataset const raw = InspectDataset(file, c.name);
    EXPECT_EQ(raw.layout, c.layout);
    EXPECT_EQ(raw.chunk, c.chunk);
    EXPECT_EQ(raw.deflateLevel, c.deflate);
    ZQArrayNativeType<double, long long> back;
    ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, c.name, true, false).OK());
    ASSERT_EQ(back.Size(), array.Size());
    EXPECT_EQ(back.GetData()[array.Size() - 1], array.GetData()[array.Size() - 1]);
  }
}

TEST_F(HDF5Datasets, WritesThatCannotBeMadeFailWithTheStatusOfTheStepThatFailed) {
  ZQArrayNativeType<double, long long> empty;
  EXPECT_EQ(ZQHDF5Util::Write(&context, file, empty, "rank0", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  EXPECT_TRUE(IsOneHDF5Message(context, 0));
  empty.Resize(0, 3);
  EXPECT_EQ(ZQHDF5Util::Write(&context, file, empty, "zero", 5, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  auto const array = MakeArray<double>({3});
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, array, "once", 0, nullptr, false).OK());
  EXPECT_EQ(ZQHDF5Util::Write(&context, file, array, L"once", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  bool exists = false;
  EXPECT_TRUE(ZQHDF5Util::HasDataset(&context, file, "rank0", exists).OK());
  EXPECT_FALSE(exists);
  EXPECT_TRUE(ZQHDF5Util::HasDataset(&context, file, L"once", exists).OK());
  EXPECT_TRUE(exists);
}

TEST_F(HDF5Datasets, MissingDatasetsAreEmptyUnlessTheyMustExist) {
  auto array = MakeArray<long long>({3});
  EXPECT_TRUE(ZQHDF5Util::Read(&context, file, array, "missing", false, false).OK());
  EXPECT_EQ(array.GetRank(), 0);
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 0);
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, array, "missing", true, false).GetStatusCode(),
            Code(Status::HDF5ReadError));
  EXPECT_TRUE(IsOneHDF5Message(context, 0));
  long long dataset = 3;
  EXPECT_TRUE(ZQHDF5Util::OpenDataset(&context, file, "missing", false, dataset).OK());
  EXPECT_LT(dataset, 0);
  EXPECT_EQ(ZQHDF5Util::OpenDataset(&context, file, "missing", true, dataset).GetStatusCode(),
            Code(Status::HDF5OpenDatasetError));
  StringMap map;
  map["stale"] = "x";
  EXPECT_TRUE(ZQHDF5Util::Read(&context, file, map, "missing", false).OK());
  EXPECT_TRUE(map.empty());
  Strings strings;
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, strings, "missing", true, false).GetStatusCode(),
            Code(Status::HDF5ReadError));
}

TEST_F(HDF5Datasets, DatasetsBeyondThreeDimensionsAreRefused) {
  hsize_t const dims[] = {1, 2, 1, 2};
  hid_t const space = H5Screate_simple(4, dims, nullptr);
  hid_t const dataset = H5Dcreate2(file, "rank4", H5T_STD_I32LE, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
  hid_t const strings = H5Tcopy(H5T_C_S1);
  H5Tset_size(strings, H5T_VARIABLE);
  hid_t const textDataset = H5Dcreate2(file, "text4", strings, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
  H5Dclose(textDataset);
  H5Tclose(strings);
  H5Dclose(dataset);
  H5Sclose(space);

  ZQArrayNativeType<int, long long> array;
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, array, "rank4", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(LastMessage(), "array rank > max. number of dimensions");
  Strings texts;
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, texts, "text4", true, false).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(LastMessage(), "array rank > max. number of dimensions");
  long long handle = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenDataset(&context, file, "rank4", true, handle).OK());
  EXPECT_EQ(ZQHDF5Util::GetDatasetShape(&context, handle, array).GetStatusCode(), Code(Status::HDF5SetAttributeError));
  H5Dclose(static_cast<hid_t>(handle));
}

TEST_F(HDF5Datasets, StringArraysAreVariableLengthUTF8AndRoundTrip) {
  Strings strings;
  strings.Resize(2, 3);
  char const *texts[] = {"a", "", "\xE2\x82\xAC uro", "long text with spaces", "\xC3\xA9", "z"};
  for (long long i = 0; i < 6; ++i) {
    strings.GetData()[i] = texts[i];
  }
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, strings, L"texts", false).OK());
  RawDataset const raw = InspectDataset(file, "texts");
  EXPECT_EQ(raw.dims, (std::vector<hsize_t>{2, 3}));
  EXPECT_EQ(raw.typeClass, H5T_STRING);
  EXPECT_TRUE(raw.variableString);
  EXPECT_EQ(raw.charset, H5T_CSET_ASCII);
  EXPECT_EQ(raw.layout, H5D_CONTIGUOUS);
  EXPECT_EQ(RawStrings(file, "texts"), (std::vector<std::string>(texts, texts + 6)));

  Strings back;
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, "texts", true, false).OK());
  ASSERT_EQ(back.GetRank(), 2);
  EXPECT_EQ(back.GetSize(1), 3);
  for (long long i = 0; i < 6; ++i) {
    EXPECT_EQ(back.GetData()[i], texts[i]);
  }
  // A target with larger capacities is filled by position, not by flat index.
  Strings wide;
  wide.Reserve(4, 8);
  wide.Resize(1, 1);
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, wide, "texts", true, false).OK());
  EXPECT_EQ(wide(1, 0), "long text with spaces");
  EXPECT_EQ(wide(1, 2), "z");
}

TEST_F(HDF5Datasets, StringArraysWithCapacityFillUnusedSlotsWithEmptyTexts) {
  Strings strings;
  strings.Reserve(3, 3);
  strings.Resize(2, 2);
  strings(0, 0) = "a";
  strings(0, 1) = "b";
  strings(1, 0) = "c";
  strings(1, 1) = "d";
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, strings, "cap", true).OK());
  EXPECT_EQ(RawStrings(file, "cap"), (std::vector<std::string>{"a", "b", "", "c", "d", "", "", "", ""}));
  hid_t const dataset = H5Dopen2(file, "cap", H5P_DEFAULT);
  EXPECT_EQ(RawInt64Attribute(dataset, "Capacity_1"), 3);
  EXPECT_EQ(RawInt64Attribute(dataset, "Size_1"), 2);
  H5Dclose(dataset);
  // Without capacity the used elements go out packed.
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, strings, "packed", false).OK());
  EXPECT_EQ(RawStrings(file, "packed"), (std::vector<std::string>{"a", "b", "c", "d"}));
  Strings empty;
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, empty, "empty", false).OK());
  EXPECT_EQ(InspectDataset(file, "empty").spaceClass, H5S_NULL);
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, strings, "empty", true, false).OK());
  EXPECT_EQ(strings.GetRank(), 0);

  // Numbers are no strings.
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, MakeArray<int>({2}), "numbers", 0, nullptr, false).OK());
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, strings, "numbers", true, false).GetStatusCode(),
            Code(Status::HDF5ReadError));
  EXPECT_EQ(LastMessage(), "wrong class of datatype given for string array");
}

TEST_F(HDF5Datasets, MapsAreRowsOfKeyAndValueInMapOrder) {
  StringMap map;
  map["zeta"] = "last";
  map["alpha"] = "\xC3\xA9t\xC3\xA9";
  map["mid"] = "";
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, map, "map").OK());
  RawDataset const raw = InspectDataset(file, "map");
  EXPECT_EQ(raw.dims, (std::vector<hsize_t>{3, 2}));
  EXPECT_TRUE(raw.variableString);
  EXPECT_EQ(RawStrings(file, "map"),
            (std::vector<std::string>{"alpha", "\xC3\xA9t\xC3\xA9", "mid", "", "zeta", "last"}));
  hid_t const dataset = H5Dopen2(file, "map", H5P_DEFAULT);
  EXPECT_EQ(H5Aexists(dataset, "NumberOfDimensions"), 0);
  H5Dclose(dataset);

  StringMap back;
  back["stale"] = "gone";
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, L"map", true).OK());
  EXPECT_EQ(back, map);

  StringMap empty;
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, empty, "empty").OK());
  EXPECT_EQ(InspectDataset(file, "empty").spaceClass, H5S_NULL);
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, "empty", true).OK());
  EXPECT_TRUE(back.empty());
}

TEST_F(HDF5Datasets, MapsOfTheWrongShapeOrWithRepeatedKeysAreRefused) {
  Strings rows;
  rows.Resize(2, 3);
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, rows, "three", false).OK());
  StringMap map;
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, map, "three", true).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(LastMessage(), "error in shape of array");
  rows.Resize(4);
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, rows, "flat", false).OK());
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, map, "flat", true).GetStatusCode(), Code(Status::HDF5ReadError));

  Strings repeated;
  repeated.Resize(3, 2);
  repeated(0, 0) = "k1";
  repeated(0, 1) = "v1";
  repeated(1, 0) = "k2";
  repeated(1, 1) = "v2";
  repeated(2, 0) = "k1";
  repeated(2, 1) = "v3";
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, repeated, "repeated", false).OK());
  EXPECT_EQ(ZQHDF5Util::Read(&context, file, map, "repeated", true).GetStatusCode(), Code(Status::HDF5ReadError));
  EXPECT_EQ(LastMessage(), "error in data, key given more than once.");
  ASSERT_EQ(map.size(), 2u);
  EXPECT_EQ(map["k1"], "v1");
}

} // namespace

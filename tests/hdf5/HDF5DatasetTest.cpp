// Attributes and datasets: numbers, texts, string arrays, capacities, chunks, hyperslabs and
// maps, each also read raw.
#include "HDF5TestSupport.h"

#include <cstring>
#include <type_traits>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

using HDF5Datasets = HDF5Test;
using HDF5Attributes = HDF5Test;

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

// Raw form of a numeric attribute: a simple rank-1 dataspace of `count`, the file type.
void ExpectNumericForm(hid_t object, char const *name, hid_t fileType, hssize_t count) {
  hid_t const attribute = H5Aopen(object, name, H5P_DEFAULT);
  hid_t const space = H5Aget_space(attribute);
  hid_t const type = H5Aget_type(attribute);
  EXPECT_EQ(H5Sget_simple_extent_type(space), H5S_SIMPLE) << name;
  EXPECT_EQ(H5Sget_simple_extent_ndims(space), 1) << name;
  EXPECT_EQ(H5Sget_simple_extent_npoints(space), count) << name;
  EXPECT_GT(H5Tequal(type, fileType), 0) << name;
  H5Tclose(type);
  H5Sclose(space);
  H5Aclose(attribute);
}

// Datasets of ranks 1 to 3 counting up from `a`, and attributes of `a` and {a, b}, in the
// given file type; attributes have no form for bytes.
template <typename T> void ExpectRoundTrips(HDF5Test &test, hid_t fileType, hid_t memoryType, T a, T b) {
  ZQContext &context = test.context;
  for (std::vector<long long> const &extents : {std::vector<long long>{7}, {4, 3}, {2, 3, 5}}) {
    std::string const name = "rank" + std::to_string(extents.size()) + "_" + std::to_string(fileType);
    auto const array = Filled<T>(extents, a);
    std::vector<T> const values(array.GetData(), array.GetData() + array.Size());
    ASSERT_TRUE(Util::Write(&context, test.file, array, name.c_str(), 0, nullptr, false).OK()) << name;
    RawDataset const raw = Inspect(test.file, name.c_str(), fileType);
    EXPECT_EQ(raw.dims, std::vector<hsize_t>(extents.begin(), extents.end())) << name;
    EXPECT_TRUE(raw.typeMatches) << name;
    EXPECT_EQ(raw.layout, H5D_CONTIGUOUS) << name;
    EXPECT_EQ(RawRead<T>(test.file, name.c_str(), memoryType), values) << name;
    ZQArrayNativeType<T, long long> back;
    std::wstring const wideName(name.begin(), name.end());
    ASSERT_TRUE(Util::Read(&context, test.file, back, wideName.c_str(), true, false).OK()) << name;
    ASSERT_EQ(back.GetRank(), static_cast<long long>(extents.size()));
    EXPECT_EQ(back.GetSize(back.GetRank() - 1), extents.back());
    EXPECT_EQ(std::vector<T>(back.GetData(), back.GetData() + back.Size()), values);
  }
  if constexpr (!std::is_same_v<T, unsigned char>) {
    T const pair[] = {a, b};
    ASSERT_TRUE(Util::SetAttribute(&context, test.file, "one", a).OK());
    ASSERT_TRUE(Util::SetAttribute(&context, test.file, L"two", pair, 2).OK());
    ExpectNumericForm(test.file, "one", fileType, 1);
    ExpectNumericForm(test.file, "two", fileType, 2);
    T single{};
    T two[2] = {};
    ASSERT_TRUE(Util::GetAttribute(&context, test.file, L"one", single).OK());
    ASSERT_TRUE(Util::GetAttribute(&context, test.file, "two", two, 2).OK());
    EXPECT_EQ(single, a);
    EXPECT_EQ(two[1], b);
    EXPECT_EQ(test.Messages(), 0);
    // No partial reads in either direction, and no reading into nothing.
    EXPECT_EQ(Util::GetAttribute(&context, test.file, "two", single).GetStatusCode(),
              Code(Status::HDF5GetAttributeError));
    EXPECT_EQ(test.Last(), "size of attribute dataspace does not match expected size");
    EXPECT_FALSE(Util::GetAttribute(&context, test.file, "one", two, 2).OK());
    EXPECT_FALSE(Util::GetAttribute(&context, test.file, "two", static_cast<T *>(nullptr), 2).OK());
    EXPECT_EQ(test.Last(), "zero pointer given");
    context.GetErrorStack().Clear();
  }
}

TEST_F(HDF5Datasets, EveryNumericTypeRoundTripsAsDatasetsOfEveryRankAndAsRankOneAttributes) {
  ExpectRoundTrips<unsigned char>(*this, H5T_STD_U8LE, H5T_NATIVE_UCHAR, 200, 0);
  ExpectRoundTrips<int>(*this, H5T_STD_I32LE, H5T_NATIVE_INT, -2000000000, 17);
  ExpectRoundTrips<long long>(*this, H5T_STD_I64LE, H5T_NATIVE_LLONG, -(1LL << 62), 1LL << 40);
  ExpectRoundTrips<float>(*this, H5T_IEEE_F32LE, H5T_NATIVE_FLOAT, -3.25f, 1.0e-30f);
  ExpectRoundTrips<double>(*this, H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, 1.0e-300, -1.0e300);
  // Zero elements need no buffer; a negative count is refused.
  ASSERT_TRUE(Util::SetAttribute(&context, file, "none", static_cast<double const *>(nullptr), 0).OK());
  ExpectNumericForm(file, "none", H5T_IEEE_F64LE, 0);
  EXPECT_TRUE(Util::GetAttribute(&context, file, "none", static_cast<double *>(nullptr), 0).OK());
  EXPECT_FALSE(Util::SetAttribute(&context, file, "negative", static_cast<int const *>(nullptr), -1).OK());
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

TEST_F(HDF5Attributes, TextsAreScalarFixedStringsOfExactlyTheirUTF8Bytes) {
  char const *text = "Z\xC3\xBCrich \xE2\x82\xAC";
  ASSERT_TRUE(Util::SetAttribute(&context, file, "city", text).OK());
  hid_t const attribute = H5Aopen(file, "city", H5P_DEFAULT);
  hid_t const space = H5Aget_space(attribute);
  hid_t const type = H5Aget_type(attribute);
  EXPECT_EQ(H5Sget_simple_extent_type(space), H5S_SCALAR);
  EXPECT_EQ(H5Tis_variable_str(type), 0);
  EXPECT_EQ(H5Tget_size(type), std::strlen(text));
  std::string raw(std::strlen(text), '\0');
  H5Aread(attribute, type, raw.data());
  EXPECT_EQ(raw, text);
  H5Tclose(type);
  H5Sclose(space);
  H5Aclose(attribute);

  std::string narrow;
  ZQString string;
  std::wstring wide;
  ASSERT_TRUE(Util::GetAttribute(&context, file, "city", narrow).OK());
  ASSERT_TRUE(Util::GetAttribute(&context, file, L"city", string).OK());
  ASSERT_TRUE(Util::GetAttribute(&context, file, "city", wide).OK());
  EXPECT_EQ(narrow, text);
  EXPECT_EQ(string, text);
  EXPECT_EQ(wide, L"Z\u00FCrich \u20AC");
  // Every text form stores the same bytes.
  for (auto set : {+[](ZQContext *c, long long f) { return Util::SetAttribute(c, f, L"t", std::wstring(L"\u00E9")); },
                   +[](ZQContext *c, long long f) { return Util::SetAttribute(c, f, "t", ZQString("\xC3\xA9")); },
                   +[](ZQContext *c, long long f) { return Util::SetAttribute(c, f, "t", std::string("\xC3\xA9")); }}) {
    narrow.clear();
    ASSERT_TRUE(set(&context, file).OK());
    ASSERT_TRUE(Util::GetAttribute(&context, file, "t", narrow).OK());
    EXPECT_EQ(narrow, "\xC3\xA9");
  }
  // No empty text can be stored; the old value stays.
  long long const before = Messages();
  EXPECT_EQ(Util::SetAttribute(&context, file, "t", "").GetStatusCode(), Code(Status::HDF5SetAttributeError));
  EXPECT_TRUE(OneHDF5Message(context, before));
  ASSERT_TRUE(Util::GetAttribute(&context, file, "t", narrow).OK());
  EXPECT_EQ(narrow, "\xC3\xA9");
}

TEST_F(HDF5Attributes, TheShapeDecidesWhatReadsAndASetReplacesAnyType) {
  ASSERT_TRUE(Util::SetAttribute(&context, file, "v", 5).OK());
  std::string text;
  EXPECT_EQ(Util::GetAttribute(&context, file, "v", text).GetStatusCode(), Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(Last(), "rank != 0 for string attribute");
  ASSERT_TRUE(Util::SetAttribute(&context, file, "v", "now text").OK());
  int number = 0;
  EXPECT_EQ(Util::GetAttribute(&context, file, "v", number).GetStatusCode(), Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(Last(), "size of attribute dataspace does not match expected size");
  ASSERT_TRUE(Util::GetAttribute(&context, file, "v", text).OK());
  EXPECT_EQ(text, "now text");

  // Missing: absent to a question, a reported failure to a read.
  bool exists = true;
  EXPECT_TRUE(Util::HasAttribute(&context, file, "missing", exists).OK());
  EXPECT_FALSE(exists);
  EXPECT_TRUE(Util::HasAttribute(&context, -1, L"missing", exists).OK());
  long long const before = Messages();
  EXPECT_EQ(Util::GetAttribute(&context, file, "missing", number).GetStatusCode(), Code(Status::HDF5GetAttributeError));
  EXPECT_TRUE(OneHDF5Message(context, before));
}

} // namespace

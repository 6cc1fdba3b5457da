// Attributes: numbers and texts, their persisted form read back with the raw HDF5 API,
// and the checks of shape that guard every read.
#include "HDF5TestSupport.h"

#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <hdf5.h>

#include <cstring>
#include <limits>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

class HDF5Attributes : public ::testing::Test {
protected:
  void SetUp() override {
    path = ScratchPath(::testing::UnitTest::GetInstance()->current_test_info()->name());
    ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  }
  void TearDown() override { ZQHDF5Util::CloseHDF5File(&context, file); }

  long long Messages() { return context.GetErrorStack().GetNMsg(); }
  std::string LastMessage() { return context.GetErrorStack().GetLastMsg().c_str(); }

  ZQContext context;
  std::string path;
  long long file = -1;
};

// Raw form of a numeric attribute: rank 1, `count` elements, the file type given.
void ExpectNumericForm(hid_t object, char const *name, hid_t fileType, hsize_t count) {
  hid_t const attribute = H5Aopen(object, name, H5P_DEFAULT);
  ASSERT_GE(attribute, 0);
  hid_t const space = H5Aget_space(attribute);
  hid_t const type = H5Aget_type(attribute);
  EXPECT_EQ(H5Sget_simple_extent_type(space), H5S_SIMPLE);
  EXPECT_EQ(H5Sget_simple_extent_ndims(space), 1);
  hsize_t dims = 0;
  hsize_t maxDims = 0;
  H5Sget_simple_extent_dims(space, &dims, &maxDims);
  EXPECT_EQ(dims, count);
  EXPECT_EQ(maxDims, count);
  EXPECT_GT(H5Tequal(type, fileType), 0);
  H5Tclose(type);
  H5Sclose(space);
  H5Aclose(attribute);
}

template <typename T> struct AttributeCase;
template <> struct AttributeCase<int> {
  static hid_t File() { return H5T_STD_I32LE; }
  static int Value(int i) { return -2000000000 + i; }
};
template <> struct AttributeCase<long long> {
  static hid_t File() { return H5T_STD_I64LE; }
  static long long Value(int i) { return std::numeric_limits<long long>::min() + i; }
};
template <> struct AttributeCase<float> {
  static hid_t File() { return H5T_IEEE_F32LE; }
  static float Value(int i) { return 1.0e-30f * static_cast<float>(i + 3); }
};
template <> struct AttributeCase<double> {
  static hid_t File() { return H5T_IEEE_F64LE; }
  static double Value(int i) { return -1.0e300 / (i + 1); }
};

template <typename T> class HDF5NumericAttributes : public HDF5Attributes {};
using NumberTypes = ::testing::Types<int, long long, float, double>;
TYPED_TEST_SUITE(HDF5NumericAttributes, NumberTypes);

TYPED_TEST(HDF5NumericAttributes, RoundTripAsRankOneArraysOfTheFileType) {
  using Case = AttributeCase<TypeParam>;
  TypeParam const single = Case::Value(0);
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&this->context, this->file, "single", single).OK());
  TypeParam const values[] = {Case::Value(1), Case::Value(2), Case::Value(3)};
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&this->context, this->file, L"three", values, 3).OK());
  ExpectNumericForm(this->file, "single", Case::File(), 1);
  ExpectNumericForm(this->file, "three", Case::File(), 3);

  TypeParam back{};
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&this->context, this->file, L"single", back).OK());
  EXPECT_EQ(back, single);
  TypeParam three[3] = {};
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&this->context, this->file, "three", three, 3).OK());
  EXPECT_EQ(three[0], values[0]);
  EXPECT_EQ(three[2], values[2]);

  // Counts must match exactly, in both directions.
  long long const before = this->Messages();
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&this->context, this->file, "three", back).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(this->LastMessage(), "size of attribute dataspace does not match expected size");
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&this->context, this->file, "single", three, 3).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(this->Messages(), before + 2);
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&this->context, this->file, "three", static_cast<TypeParam *>(nullptr), 3)
                .GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(this->LastMessage(), "zero pointer given");
}

TEST_F(HDF5Attributes, ZeroElementsAreWrittenAndReadWithoutABuffer) {
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "none", static_cast<double const *>(nullptr), 0).OK());
  ExpectNumericForm(file, "none", H5T_IEEE_F64LE, 0);
  EXPECT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "none", static_cast<double *>(nullptr), 0).OK());
  EXPECT_EQ(ZQHDF5Util::SetAttribute(&context, file, "negative", static_cast<int const *>(nullptr), -1).GetStatusCode(),
            Code(Status::HDF5SetAttributeError));
  bool exists = true;
  ZQHDF5Util::HasAttribute(&context, file, "negative", exists);
  EXPECT_FALSE(exists);
}

TEST_F(HDF5Attributes, TextsAreScalarFixedStringsOfTheirUTF8Bytes) {
  char const *text = "Z\xC3\xBCrich \xE2\x82\xAC";
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "city", text).OK());
  hid_t const attribute = H5Aopen(file, "city", H5P_DEFAULT);
  hid_t const space = H5Aget_space(attribute);
  hid_t const type = H5Aget_type(attribute);
  EXPECT_EQ(H5Sget_simple_extent_type(space), H5S_SCALAR);
  EXPECT_EQ(H5Tget_class(type), H5T_STRING);
  EXPECT_EQ(H5Tis_variable_str(type), 0);
  EXPECT_EQ(H5Tget_size(type), std::strlen(text));
  std::string raw(std::strlen(text), '\0');
  H5Aread(attribute, type, raw.data());
  EXPECT_EQ(raw, text);
  H5Tclose(type);
  H5Sclose(space);
  H5Aclose(attribute);

  std::string narrow;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "city", narrow).OK());
  EXPECT_EQ(narrow, text);
  ZQString string;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, L"city", string).OK());
  EXPECT_EQ(string, text);
  std::wstring wide;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "city", wide).OK());
  EXPECT_EQ(wide, L"Z\u00FCrich \u20AC");

  // Every text form lands as the same bytes.
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, L"w", std::wstring(L"\u00E9t\u00E9")).OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "z", ZQString("\xC3\xA9t\xC3\xA9")).OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "s", std::string("x")).OK());
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "w", narrow).OK());
  EXPECT_EQ(narrow, "\xC3\xA9t\xC3\xA9");
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "z", narrow).OK());
  EXPECT_EQ(narrow, "\xC3\xA9t\xC3\xA9");
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "s", narrow).OK());
  EXPECT_EQ(narrow, "x");
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 0);
}

TEST_F(HDF5Attributes, AnEmptyTextIsRefusedAndLeavesTheOldValue) {
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "t", "old").OK());
  long long const before = Messages();
  EXPECT_EQ(ZQHDF5Util::SetAttribute(&context, file, "t", "").GetStatusCode(), Code(Status::HDF5SetAttributeError));
  EXPECT_TRUE(IsOneHDF5Message(context, before));
  EXPECT_EQ(ZQHDF5Util::SetAttribute(&context, file, "t", static_cast<char const *>(nullptr)).GetStatusCode(),
            Code(Status::HDF5SetAttributeError));
  std::string value;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "t", value).OK());
  EXPECT_EQ(value, "old");
}

TEST_F(HDF5Attributes, ASetReplacesWhateverTheNameHeld) {
  double const three[] = {1, 2, 3};
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "v", three, 3).OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "v", "now text").OK());
  std::string text;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "v", text).OK());
  EXPECT_EQ(text, "now text");
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "v", 42LL).OK());
  long long number = 0;
  ASSERT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "v", number).OK());
  EXPECT_EQ(number, 42);
}

TEST_F(HDF5Attributes, TheShapeDecidesAndNotTheTypeClass) {
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "text", "abc").OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "number", 5).OK());
  int number = 0;
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&context, file, "text", number).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(LastMessage(), "size of attribute dataspace does not match expected size");
  std::string text;
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&context, file, "number", text).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(LastMessage(), "rank != 0 for string attribute");

  // A scalar number written by another program has no elements for the number forms.
  hid_t const space = H5Screate(H5S_SCALAR);
  hid_t const attribute = H5Acreate2(file, "scalar", H5T_STD_I32LE, space, H5P_DEFAULT, H5P_DEFAULT);
  int const seven = 7;
  H5Awrite(attribute, H5T_NATIVE_INT, &seven);
  H5Aclose(attribute);
  H5Sclose(space);
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&context, file, "scalar", number).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_TRUE(ZQHDF5Util::GetAttribute(&context, file, "scalar", &number, 0).OK());
}

TEST_F(HDF5Attributes, MissingAttributesAreAbsentToAsksAndFailuresToReads) {
  bool exists = true;
  EXPECT_TRUE(ZQHDF5Util::HasAttribute(&context, file, "missing", exists).OK());
  EXPECT_FALSE(exists);
  EXPECT_TRUE(ZQHDF5Util::HasAttribute(&context, -1, L"missing", exists).OK());
  EXPECT_FALSE(exists);
  EXPECT_EQ(Messages(), 0);
  double value = 0;
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&context, file, "missing", value).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_TRUE(IsOneHDF5Message(context, 0));
  std::string text;
  EXPECT_EQ(ZQHDF5Util::GetAttribute(&context, file, "missing", text).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_TRUE(IsOneHDF5Message(context, 1));
}

} // namespace

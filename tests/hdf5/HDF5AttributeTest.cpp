// Attributes: numbers and texts, their raw persisted form, and the shape checks of reads.
#include "HDF5TestSupport.h"

#include <zqcore/strings/ZQString.h>

#include <cstring>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;
using Util = ZQHDF5Util;

namespace {

using HDF5Attributes = HDF5Test;

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

template <typename T> void ExpectNumbersRoundTrip(HDF5Attributes &test, hid_t fileType, T a, T b) {
  ZQContext &context = test.context;
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
  // No partial reads in either direction, and no reading into nothing.
  EXPECT_EQ(Util::GetAttribute(&context, test.file, "two", single).GetStatusCode(),
            Code(Status::HDF5GetAttributeError));
  EXPECT_EQ(test.Last(), "size of attribute dataspace does not match expected size");
  EXPECT_FALSE(Util::GetAttribute(&context, test.file, "one", two, 2).OK());
  EXPECT_FALSE(Util::GetAttribute(&context, test.file, "two", static_cast<T *>(nullptr), 2).OK());
  EXPECT_EQ(test.Last(), "zero pointer given");
}

TEST_F(HDF5Attributes, NumbersOfEveryTypeRoundTripAsRankOneArrays) {
  ExpectNumbersRoundTrip<int>(*this, H5T_STD_I32LE, -2000000000, 17);
  ExpectNumbersRoundTrip<long long>(*this, H5T_STD_I64LE, -(1LL << 62), 1LL << 40);
  ExpectNumbersRoundTrip<float>(*this, H5T_IEEE_F32LE, 1.0e-30f, -2.5f);
  ExpectNumbersRoundTrip<double>(*this, H5T_IEEE_F64LE, -1.0e300, 0.1);
  // Zero elements need no buffer; a negative count is refused.
  ASSERT_TRUE(Util::SetAttribute(&context, file, "none", static_cast<double const *>(nullptr), 0).OK());
  ExpectNumericForm(file, "none", H5T_IEEE_F64LE, 0);
  EXPECT_TRUE(Util::GetAttribute(&context, file, "none", static_cast<double *>(nullptr), 0).OK());
  EXPECT_FALSE(Util::SetAttribute(&context, file, "negative", static_cast<int const *>(nullptr), -1).OK());
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

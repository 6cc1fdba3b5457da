// Files from disk and memory images, groups, the report of HDF5's errors, damaged input
// that fails without a crash, and no HDF5 id left open.
#include "HDF5TestSupport.h"

#include <zqcore/strings/ZQStringEncoding.h>

#include <fstream>
#include <functional>
#include <iterator>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

using HDF5Files = HDF5Test;

TEST_F(HDF5Files, CreateEmptiesOpenOrCreateKeepsAndOpenIsReadOnly) {
  ASSERT_TRUE(Util::SetAttribute(&context, file, "kept", 7).OK());
  ASSERT_TRUE(Util::CloseHDF5File(&context, file).OK());
  std::wstring wide;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, path.c_str(), wide));
  bool exists = false;
  ASSERT_TRUE(Util::OpenOrCreateHDF5File(&context, wide.c_str(), file).OK());
  Util::HasAttribute(&context, file, "kept", exists);
  EXPECT_TRUE(exists);
  EXPECT_TRUE(Util::SetAttribute(&context, file, "added", 1.5).OK());
  ASSERT_TRUE(Util::CloseHDF5File(&context, file).OK());

  ASSERT_TRUE(Util::OpenHDF5File(&context, wide.c_str(), file).OK());
  ZQArrayNativeType<double, long long> values;
  values.Resize(4);
  long long before = Messages();
  EXPECT_EQ(Util::Write(&context, file, values, "v", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  EXPECT_TRUE(OneHDF5Message(context, before));
  EXPECT_EQ(Util::SetAttribute(&context, file, "a", 1).GetStatusCode(), Code(Status::HDF5SetAttributeError));
  ASSERT_TRUE(Util::CloseHDF5File(&context, file).OK());

  ASSERT_TRUE(Util::CreateHDF5File(&context, path.c_str(), file).OK());
  Util::HasAttribute(&context, file, "kept", exists);
  EXPECT_FALSE(exists);
}

TEST_F(HDF5Files, FailedOpensCreatesAndClosesGiveTheirStatusAndOneMessage) {
  std::string const missing = ::testing::TempDir() + "zq_no_such_dir/file.h5";
  long long other = 5;
  auto expectFailure = [&](ZQResult const &result, Status status) {
    EXPECT_EQ(result.GetStatusCode(), Code(status));
    EXPECT_TRUE(OneHDF5Message(context, Messages() - 1));
  };
  expectFailure(Util::OpenHDF5File(&context, missing.c_str(), other), Status::HDF5OpenFileError);
  EXPECT_LT(other, 0);
  expectFailure(Util::OpenOrCreateHDF5File(&context, missing.c_str(), other), Status::HDF5OpenOrCreateFileError);
  expectFailure(Util::CreateHDF5File(&context, missing.c_str(), other), Status::HDF5CreateFileError);
  expectFailure(Util::CloseHDF5File(&context, -1), Status::HDF5CloseFileError);
  expectFailure(Util::CloseGroup(&context, -1), Status::HDF5CloseGroupError);
  EXPECT_EQ(Messages(), 5);
  // With a null context the status is the same, and nothing is reported.
  EXPECT_EQ(Util::OpenHDF5File(nullptr, static_cast<char const *>(nullptr), other).GetStatusCode(),
            Code(Status::HDF5OpenFileError));
}

TEST_F(HDF5Files, GroupsAreFoundCreatedReopenedAndRemoved) {
  bool exists = true;
  EXPECT_TRUE(Util::HasGroup(&context, file, "mesh", exists).OK());
  EXPECT_FALSE(exists);
  long long group = -1;
  long long inner = -1;
  ASSERT_TRUE(Util::OpenOrCreateGroup(&context, file, L"mesh", group).OK());
  ASSERT_TRUE(Util::OpenOrCreateGroup(&context, group, "zones", inner).OK());
  EXPECT_TRUE(Util::CloseGroup(&context, inner).OK());
  EXPECT_TRUE(Util::CloseGroup(&context, group).OK());
  EXPECT_TRUE(Util::HasGroup(&context, file, L"mesh/zones", exists).OK() && exists);
  ASSERT_TRUE(Util::OpenOrCreateGroup(&context, file, "mesh", group).OK());
  EXPECT_TRUE(Util::HasGroup(&context, group, "zones", exists).OK() && exists);
  EXPECT_TRUE(Util::CloseGroup(&context, group).OK());
  EXPECT_EQ(Messages(), 0);

  EXPECT_TRUE(Util::RemoveGroup(&context, file, L"mesh").OK());
  EXPECT_TRUE(Util::HasGroup(&context, file, "mesh", exists).OK());
  EXPECT_FALSE(exists);
  // A missing group: removal fails by its status alone, opening reports.
  EXPECT_EQ(Util::RemoveGroup(&context, file, "mesh").GetStatusCode(), Code(Status::HDF5RemoveGroupError));
  EXPECT_EQ(Messages(), 0);
  EXPECT_EQ(Util::OpenGroup(&context, file, "mesh", group).GetStatusCode(), Code(Status::HDF5OpenGroupError));
  EXPECT_TRUE(OneHDF5Message(context, 0));

  // Closing a file of this layer closes what is still open in it.
  ASSERT_TRUE(Util::OpenOrCreateGroup(&context, file, "left_open", group).OK());
  ASSERT_TRUE(Util::CloseHDF5File(&context, file).OK());
  EXPECT_EQ(H5Iis_valid(group), 0);
  file = -1;
}

/// Fills the fixture's file with one of each persisted form and closes it.
class HDF5Sample : public HDF5Test {
public:
  void SetUp() override {
    HDF5Test::SetUp();
    ZQArrayNativeType<double, long long> values;
    values.Resize(300, 4);
    for (long long i = 0; i < values.Size(); ++i) {
      values.GetData()[i] = 0.5 * static_cast<double>(i);
    }
    Strings strings;
    strings.Resize(3);
    strings(2) = "text";
    StringMap map;
    map["unit"] = "m";
    long long group = -1;
    ASSERT_TRUE(Util::OpenOrCreateGroup(&context, file, "g", group).OK());
    ASSERT_TRUE(Util::Write(&context, group, values, "plain", 0, nullptr, false).OK());
    ASSERT_TRUE(Util::Write(&context, file, values, "packed", 6, nullptr, true).OK());
    ASSERT_TRUE(Util::Write(&context, file, strings, "strings", false).OK());
    ASSERT_TRUE(Util::Write(&context, file, map, "map").OK());
    ASSERT_TRUE(Util::SetAttribute(&context, file, "title", "sample").OK());
    ASSERT_TRUE(Util::CloseGroup(&context, group).OK());
    ASSERT_TRUE(Util::CloseHDF5File(&context, file).OK());
    file = -1;
    std::ifstream in(path, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }

  /// Reads the sample back (strings and map only `withStrings`); true when all reads work.
  bool ReadAll(long long from, bool withStrings = true) {
    ZQArrayNativeType<double, long long> values;
    Strings strings;
    StringMap map;
    std::string title;
    return Util::Read(&context, from, values, "g/plain", true, false).OK() &
           Util::Read(&context, from, values, "packed", true, false).OK() &
           Util::GetAttribute(&context, from, "title", title).OK() &
           (!withStrings || (Util::Read(&context, from, strings, "strings", true, false).OK() &
                             Util::Read(&context, from, map, "map", true).OK()));
  }

  std::vector<char> bytes;
};

TEST_F(HDF5Sample, AMemoryImageIsAReadOnlyViewAndBadArgumentsAreRefused) {
  std::vector<char> const original = bytes;
  long long opened = -1;
  ASSERT_TRUE(
      Util::CreateHDF5FileFromBuffer(&context, bytes.data(), static_cast<long long>(bytes.size()), opened).OK());
  EXPECT_TRUE(ReadAll(opened));
  std::string title;
  EXPECT_TRUE(Util::GetAttribute(&context, opened, "title", title).OK() && title == "sample") << title;
  EXPECT_FALSE(Util::SetAttribute(&context, opened, "x", 1).OK());
  ASSERT_TRUE(Util::CloseHDF5File(&context, opened).OK());
  EXPECT_EQ(bytes, original);
  EXPECT_FALSE(Util::CreateHDF5FileFromBuffer(&context, bytes.data(), -5, opened).OK());
  EXPECT_FALSE(Util::CreateHDF5FileFromBuffer(&context, nullptr, 100, opened).OK());
}

TEST_F(HDF5Sample, TruncatedFilesAndImagesFailAtEveryCutPoint) {
  long long opened = -1;
  std::string const cutPath = path + ".cut";
  for (size_t cut = 0; cut < bytes.size(); cut += cut < 64 ? 1 : bytes.size() / 97 + 1) {
    std::vector<char> image(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(cut));
    std::ofstream(cutPath, std::ios::binary | std::ios::trunc).write(image.data(), static_cast<std::streamsize>(cut));
    OpenIds const ids;
    for (bool const fromMemory : {false, true}) {
      long long const before = Messages();
      ZQResult const result =
          fromMemory ? Util::CreateHDF5FileFromBuffer(&context, image.data(), static_cast<long long>(cut), opened)
                     : Util::OpenHDF5File(&context, cutPath.c_str(), opened);
      if (result.OK()) {
        EXPECT_FALSE(ReadAll(opened)) << cut;
        Util::CloseHDF5File(&context, opened);
      } else {
        EXPECT_EQ(result.GetStatusCode(), Code(fromMemory ? Status::HDF5CreateFileError : Status::HDF5OpenFileError));
        EXPECT_TRUE(OneHDF5Message(context, before)) << cut;
      }
    }
    EXPECT_EQ(ids.StillOpen(), 0) << cut;
  }
}

// Damaged heap references of variable-length strings can bring HDF5 itself down while it
// converts them, so the damaged images are read for their numbers and attributes.
TEST_F(HDF5Sample, DamagedImagesNeverCrashAndLeaveNothingOpen) {
  for (size_t offset = 0; offset + 16 <= bytes.size(); offset += bytes.size() / 61 + 1) {
    std::vector<char> image = bytes;
    std::fill_n(image.begin() + static_cast<std::ptrdiff_t>(offset), 16, '\xff');
    OpenIds const ids;
    long long opened = -1;
    if (Util::CreateHDF5FileFromBuffer(&context, image.data(), static_cast<long long>(image.size()), opened).OK()) {
      ReadAll(opened, false);
      Util::CloseHDF5File(&context, opened);
    }
    EXPECT_EQ(ids.StillOpen(), 0) << offset;
  }
}

TEST_F(HDF5Sample, NoOperationLeavesAnIdOpenOnAnyPath) {
  ASSERT_TRUE(Util::OpenOrCreateHDF5File(&context, path.c_str(), file).OK());
  std::string const missing = path + ".missing/x.h5";
  ZQArrayNativeType<double, long long> values;
  ZQArrayNativeType<double, long long> block;
  block.Resize(2, 2);
  long long const inside[] = {1, 1};
  long long const outside[] = {1000, 0};
  double three[3] = {1, 2, 3};
  std::string text;
  Strings strings;
  StringMap map;
  bool exists = false;
  long long handle = -1;
  std::vector<std::function<void()>> const operations = {
      [&] { Util::CreateHDF5File(&context, (path + "2").c_str(), handle), Util::CloseHDF5File(&context, handle); },
      [&] { Util::OpenHDF5File(&context, missing.c_str(), handle); },
      [&] { Util::OpenOrCreateHDF5File(&context, missing.c_str(), handle); },
      [&] { Util::CreateHDF5FileFromBuffer(&context, three, sizeof three, handle); },
      [&] { Util::HasGroup(&context, file, "none", exists), Util::OpenGroup(&context, file, "none", handle); },
      [&] { Util::OpenOrCreateGroup(&context, file, "new", handle), Util::CloseGroup(&context, handle); },
      [&] { Util::RemoveGroup(&context, file, "new"), Util::RemoveGroup(&context, file, "new"); },
      [&] { Util::SetAttribute(&context, file, "n", three, 3), Util::GetAttribute(&context, file, "n", three, 3); },
      [&] { Util::GetAttribute(&context, file, "n", three[0]), Util::GetAttribute(&context, file, "n", text); },
      [&] { Util::GetAttribute(&context, file, "n", static_cast<double *>(nullptr), 3); },
      [&] { Util::SetAttribute(&context, file, "t", "x"), Util::SetAttribute(&context, file, "t", ""); },
      [&] { Util::GetAttribute(&context, file, "t", text), Util::GetAttribute(&context, file, "none", text); },
      [&] { Util::Read(&context, file, values, "packed", true, true); },
      [&] { Util::Read(&context, file, values, "strings", true, false); },
      [&] { Util::Write(&context, file, values, "copy", 4, nullptr, true); },
      [&] { Util::Write(&context, file, values, "copy", 4, nullptr, true); },
      [&] { Util::Write(&context, file, ZQArrayNativeType<double, long long>(), "empty", 0, nullptr, false); },
      [&] {
        Util::OpenDataset(&context, file, "packed", true, handle);
        Util::ReadHyperslab(&context, handle, block, inside), Util::WriteHyperslab(&context, handle, block, outside);
        Util::GetDatasetShape(&context, handle, values), Util::ArrayShapeFromAttributes(&context, values, handle);
        H5Dclose(static_cast<hid_t>(handle));
      },
      [&] { Util::CreateDataspace(&context, block, false, handle), H5Sclose(static_cast<hid_t>(handle)); },
      [&] { Util::HasDataset(&context, file, "packed", exists), Util::HasDataset(&context, file, "none", exists); },
      [&] {
        Util::Read(&context, file, strings, "strings", true, false), Util::Write(&context, file, strings, "s", 1);
      },
      [&] { Util::Write(&context, file, strings, "s", true), Util::Read(&context, file, strings, "packed", true, 0); },
      [&] { Util::Read(&context, file, map, "map", true), Util::Read(&context, file, map, "strings", true); },
      [&] { Util::Write(&context, file, map, "map2"), Util::Write(&context, file, map, "map2"); },
  };
  for (size_t i = 0; i < operations.size(); ++i) {
    OpenIds const ids;
    operations[i]();
    EXPECT_EQ(ids.StillOpen(), 0) << "operation " << i;
  }
  EXPECT_GT(Messages(), 10);
}

} // namespace

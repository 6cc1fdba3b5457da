// Files from disk and from memory images, groups, and the report of HDF5's errors.
#include "HDF5TestSupport.h"

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQStringEncoding.h>

#include <gtest/gtest.h>

#include <hdf5.h>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

class HDF5Files : public ::testing::Test {
protected:
  ZQContext context;
  ZQErrorStack &stack() { return context.GetErrorStack(); }
};

TEST_F(HDF5Files, CreateReplacesAnExistingFileAndOpenOrCreateKeepsIt) {
  std::string const path = ScratchPath("replace");
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "kept", 7).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());

  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateHDF5File(&context, path.c_str(), file).OK());
  bool exists = false;
  ZQHDF5Util::HasAttribute(&context, file, "kept", exists);
  EXPECT_TRUE(exists);
  // Opened for writing.
  EXPECT_TRUE(ZQHDF5Util::SetAttribute(&context, file, "added", 1.5).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());

  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  ZQHDF5Util::HasAttribute(&context, file, "kept", exists);
  EXPECT_FALSE(exists);
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  EXPECT_EQ(stack().GetNMsg(), 0);
}

TEST_F(HDF5Files, OpenOrCreateMakesAMissingFileAndWideNamesReachTheSameFile) {
  std::string const path = ScratchPath("wide_\xC3\xA9");
  long long file = -1;
  std::wstring wide;
  ASSERT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, path.c_str(), wide));
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateHDF5File(&context, wide.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  ASSERT_TRUE(ZQHDF5Util::OpenHDF5File(&context, path.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  ASSERT_TRUE(ZQHDF5Util::OpenHDF5File(&context, wide.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
}

TEST_F(HDF5Files, FailedOpensAndClosesGiveTheirStatusAndOneMessage) {
  std::string const missing = ::testing::TempDir() + "zq_no_such_dir/file.h5";
  long long file = 5;
  long long before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::OpenHDF5File(&context, missing.c_str(), file).GetStatusCode(), Code(Status::HDF5OpenFileError));
  EXPECT_LT(file, 0);
  EXPECT_TRUE(IsOneHDF5Message(context, before));

  before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::OpenOrCreateHDF5File(&context, missing.c_str(), file).GetStatusCode(),
            Code(Status::HDF5OpenOrCreateFileError));
  EXPECT_LT(file, 0);
  EXPECT_TRUE(IsOneHDF5Message(context, before));

  before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::CreateHDF5File(&context, missing.c_str(), file).GetStatusCode(),
            Code(Status::HDF5CreateFileError));
  EXPECT_TRUE(IsOneHDF5Message(context, before));

  before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::CloseHDF5File(&context, -1).GetStatusCode(), Code(Status::HDF5CloseFileError));
  EXPECT_TRUE(IsOneHDF5Message(context, before));
  before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::CloseGroup(&context, -1).GetStatusCode(), Code(Status::HDF5CloseGroupError));
  EXPECT_TRUE(IsOneHDF5Message(context, before));

  // A null context: same statuses, nothing to report to.
  EXPECT_EQ(ZQHDF5Util::OpenHDF5File(nullptr, missing.c_str(), file).GetStatusCode(), Code(Status::HDF5OpenFileError));
  EXPECT_EQ(ZQHDF5Util::OpenHDF5File(nullptr, static_cast<char const *>(nullptr), file).GetStatusCode(),
            Code(Status::HDF5OpenFileError));
}

TEST_F(HDF5Files, AReadOnlyFileRefusesWritesWithTheStatusOfTheWrite) {
  std::string const path = ScratchPath("readonly");
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  ASSERT_TRUE(ZQHDF5Util::OpenHDF5File(&context, path.c_str(), file).OK());

  ZQArrayNativeType<double, long long> values;
  values.Resize(4);
  long long before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::Write(&context, file, values, "v", 0, nullptr, false).GetStatusCode(),
            Code(Status::HDF5CreateDatasetError));
  EXPECT_TRUE(IsOneHDF5Message(context, before));
  EXPECT_EQ(ZQHDF5Util::SetAttribute(&context, file, "a", 1).GetStatusCode(), Code(Status::HDF5SetAttributeError));
  long long group = -1;
  EXPECT_EQ(ZQHDF5Util::OpenOrCreateGroup(&context, file, "g", group).GetStatusCode(),
            Code(Status::HDF5OpenOrCreateGroupError));
  EXPECT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
}

TEST_F(HDF5Files, AMemoryImageOpensReadOnlyAndGarbageIsRefused) {
  std::string const path = ScratchPath("image");
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  ZQArrayNativeType<int, long long> values;
  values.Resize(3);
  values(0) = 4;
  values(1) = 5;
  values(2) = 6;
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, values, "v", 0, nullptr, false).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());

  std::vector<char> image = FileBytes(path);
  std::vector<char> const original = image;
  ASSERT_TRUE(
      ZQHDF5Util::CreateHDF5FileFromBuffer(&context, image.data(), static_cast<long long>(image.size()), file).OK());
  ZQArrayNativeType<int, long long> back;
  ASSERT_TRUE(ZQHDF5Util::Read(&context, file, back, "v", true, false).OK());
  ASSERT_EQ(back.Size(), 3);
  EXPECT_EQ(back(2), 6);
  EXPECT_FALSE(ZQHDF5Util::SetAttribute(&context, file, "x", 1).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  EXPECT_EQ(image, original);

  std::vector<char> garbage(4096, '\x5a');
  long long before = stack().GetNMsg();
  EXPECT_EQ(ZQHDF5Util::CreateHDF5FileFromBuffer(&context, garbage.data(), 4096, file).GetStatusCode(),
            Code(Status::HDF5CreateFileError));
  EXPECT_LT(file, 0);
  EXPECT_TRUE(IsOneHDF5Message(context, before));
  for (long long size : {0LL, -5LL}) {
    EXPECT_EQ(ZQHDF5Util::CreateHDF5FileFromBuffer(&context, image.data(), size, file).GetStatusCode(),
              Code(Status::HDF5CreateFileError));
  }
  EXPECT_EQ(ZQHDF5Util::CreateHDF5FileFromBuffer(&context, nullptr, 100, file).GetStatusCode(),
            Code(Status::HDF5CreateFileError));
}

TEST_F(HDF5Files, AnOlderReleaseOfTheSameSeriesIsAccepted) {
  // The library asks for the release it was written against; HDF5 tolerates a newer one.
  EXPECT_EQ(H5check_version(1, 10, 5), 0);
}

TEST_F(HDF5Files, GroupsAreFoundOpenedCreatedAndRemoved) {
  std::string const path = ScratchPath("groups");
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  bool exists = true;
  EXPECT_TRUE(ZQHDF5Util::HasGroup(&context, file, "mesh", exists).OK());
  EXPECT_FALSE(exists);
  long long group = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(&context, file, L"mesh", group).OK());
  long long inner = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(&context, group, "zones", inner).OK());
  EXPECT_TRUE(ZQHDF5Util::CloseGroup(&context, inner).OK());
  EXPECT_TRUE(ZQHDF5Util::CloseGroup(&context, group).OK());
  EXPECT_TRUE(ZQHDF5Util::HasGroup(&context, file, L"mesh", exists).OK());
  EXPECT_TRUE(exists);
  EXPECT_TRUE(ZQHDF5Util::HasGroup(&context, file, "mesh/zones", exists).OK());
  EXPECT_TRUE(exists);
  // Opening again finds the same group rather than failing.
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(&context, file, "mesh", group).OK());
  EXPECT_TRUE(ZQHDF5Util::CloseGroup(&context, group).OK());
  ASSERT_TRUE(ZQHDF5Util::OpenGroup(&context, file, "mesh", group).OK());
  EXPECT_TRUE(ZQHDF5Util::CloseGroup(&context, group).OK());
  EXPECT_EQ(stack().GetNMsg(), 0);

  EXPECT_TRUE(ZQHDF5Util::RemoveGroup(&context, file, L"mesh").OK());
  EXPECT_TRUE(ZQHDF5Util::HasGroup(&context, file, "mesh", exists).OK());
  EXPECT_FALSE(exists);

  // A missing group: removal fails by its status alone, opening reports.
  EXPECT_EQ(ZQHDF5Util::RemoveGroup(&context, file, "mesh").GetStatusCode(), Code(Status::HDF5RemoveGroupError));
  EXPECT_EQ(stack().GetNMsg(), 0);
  EXPECT_EQ(ZQHDF5Util::OpenGroup(&context, file, "mesh", group).GetStatusCode(), Code(Status::HDF5OpenGroupError));
  EXPECT_LT(group, 0);
  EXPECT_TRUE(IsOneHDF5Message(context, 0));
  // A dataset is no group.
  ZQArrayNativeType<int, long long> values;
  values.Resize(1);
  values(0) = 1;
  ASSERT_TRUE(ZQHDF5Util::Write(&context, file, values, "data", 0, nullptr, false).OK());
  EXPECT_TRUE(ZQHDF5Util::HasGroup(&context, file, "data", exists).OK());
  EXPECT_FALSE(exists);
  EXPECT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
}

TEST_F(HDF5Files, ClosingAFileOfThisLayerClosesWhatIsStillOpenInIt) {
  std::string const path = ScratchPath("strong");
  long long file = -1;
  long long group = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(&context, path.c_str(), file).OK());
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(&context, file, "left_open", group).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  EXPECT_EQ(H5Iis_valid(group), 0);
  EXPECT_EQ(H5Iis_valid(file), 0);
}

} // namespace

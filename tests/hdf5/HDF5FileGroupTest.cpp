// Files from disk, groups, and the report of HDF5's errors.
#include "HDF5TestSupport.h"

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/strings/ZQStringEncoding.h>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;
using Util = ZQHDF5Util;

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

} // namespace

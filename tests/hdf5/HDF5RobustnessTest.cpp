// Bad input and clean-up: truncated and damaged files and memory images fail without a
// crash, and no operation leaves an HDF5 id open, whether it succeeds or fails.
#include "HDF5TestSupport.h"

#include <zqcore/containers/ZQArrayNativeType.h>
#include <zqcore/containers/ZQArrayObjectType.h>
#include <zqcore/containers/ZQMapObjectTypes.h>
#include <zqcore/hdf5/ZQHDF5Util.h>
#include <zqcore/strings/ZQString.h>

#include <gtest/gtest.h>

#include <hdf5.h>

#include <functional>
#include <set>

using namespace Velmora::Tessara::ZQ::Core;
using namespace zqtest;

namespace {

using Strings = ZQArrayObjectType<ZQString, long long>;
using StringMap = ZQMapObjectTypes<ZQString, ZQString>;

/// A file with one of each persisted form: numbers plain and compressed, strings, a map,
/// attributes, a group.
void WriteSampleFile(ZQContext *context, std::string const &path) {
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::CreateHDF5File(context, path.c_str(), file).OK());
  ZQArrayNativeType<double, long long> values;
  values.Resize(300, 4);
  for (long long i = 0; i < values.Size(); ++i) {
    values.GetData()[i] = 0.5 * static_cast<double>(i);
  }
  long long group = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenOrCreateGroup(context, file, "g", group).OK());
  ASSERT_TRUE(ZQHDF5Util::Write(context, group, values, "plain", 0, nullptr, false).OK());
  ASSERT_TRUE(ZQHDF5Util::Write(context, file, values, "packed", 6, nullptr, true).OK());
  Strings strings;
  strings.Resize(5);
  for (long long i = 0; i < 5; ++i) {
    strings(i) = ("text number " + std::to_string(i)).c_str();
  }
  ASSERT_TRUE(ZQHDF5Util::Write(context, file, strings, "strings", false).OK());
  StringMap map;
  map["unit"] = "m";
  map["solver"] = "implicit";
  ASSERT_TRUE(ZQHDF5Util::Write(context, file, map, "map").OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(context, file, "title", "sample").OK());
  ASSERT_TRUE(ZQHDF5Util::SetAttribute(context, group, "step", 12LL).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseGroup(context, group).OK());
  ASSERT_TRUE(ZQHDF5Util::CloseHDF5File(context, file).OK());
}

/// Reads the sample (its string and map datasets only with `withStrings`); true when
/// all reads succeed.
bool ReadSample(ZQContext *context, long long file, bool withStrings = true) {
  bool ok = true;
  ZQArrayNativeType<double, long long> values;
  ok &= ZQHDF5Util::Read(context, file, values, "g/plain", true, false).OK();
  ok &= ZQHDF5Util::Read(context, file, values, "packed", true, false).OK();
  if (withStrings) {
    Strings strings;
    ok &= ZQHDF5Util::Read(context, file, strings, "strings", true, false).OK();
    StringMap map;
    ok &= ZQHDF5Util::Read(context, file, map, "map", true).OK();
  }
  std::string title;
  ok &= ZQHDF5Util::GetAttribute(context, file, "title", title).OK();
  long long group = -1;
  if (ZQHDF5Util::OpenGroup(context, file, "g", group).OK()) {
    long long step = 0;
    ok &= ZQHDF5Util::GetAttribute(context, group, "step", step).OK();
    ok &= ZQHDF5Util::CloseGroup(context, group).OK();
  } else {
    ok = false;
  }
  return ok;
}

/// Cut points: every byte of the first 64, then a spread over the rest, and the last.
std::set<size_t> CutPoints(size_t size) {
  std::set<size_t> cuts;
  for (size_t cut = 0; cut < 64 && cut < size; ++cut) {
    cuts.insert(cut);
  }
  for (size_t cut = 64; cut < size; cut += size / 97 + 1) {
    cuts.insert(cut);
  }
  cuts.insert(size - 1);
  return cuts;
}

class HDF5BadInput : public ::testing::Test {
protected:
  void SetUp() override {
    path = ScratchPath(::testing::UnitTest::GetInstance()->current_test_info()->name());
    WriteSampleFile(&context, path);
    bytes = FileBytes(path);
    ASSERT_GT(bytes.size(), 1000u);
  }

  ZQContext context;
  std::string path;
  std::vector<char> bytes;
};

TEST_F(HDF5BadInput, TheIntactSampleReadsBackFromDiskAndFromMemory) {
  long long file = -1;
  ASSERT_TRUE(ZQHDF5Util::OpenHDF5File(&context, path.c_str(), file).OK());
  EXPECT_TRUE(ReadSample(&context, file));
  EXPECT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  ASSERT_TRUE(
      ZQHDF5Util::CreateHDF5FileFromBuffer(&context, bytes.data(), static_cast<long long>(bytes.size()), file).OK());
  EXPECT_TRUE(ReadSample(&context, file));
  EXPECT_TRUE(ZQHDF5Util::CloseHDF5File(&context, file).OK());
  EXPECT_EQ(context.GetErrorStack().GetNMsg(), 0);
}

TEST_F(HDF5BadInput, ATruncatedFileFailsAtEveryCutPoint) {
  std::string const cutPath = path + ".cut";
  for (size_t cut : CutPoints(bytes.size())) {
    SCOPED_TRACE(cut);
    WriteBytes(cutPath, bytes.data(), cut);
    OpenIds const ids;
    long long file = -1;
    ZQResult const opened = ZQHDF5Util::OpenHDF5File(&context, cutPath.c_str(), file);
    if (opened.OK()) {
      EXPECT_FALSE(ReadSample(&context, file));
      ZQHDF5Util::CloseHDF5File(&context, file);
    } else {
      EXPECT_EQ(opened.GetStatusCode(), Code(Status::HDF5OpenFileError));
    }
    EXPECT_EQ(ids.StillOpen(), 0);
  }
  std::remove(cutPath.c_str());
}

TEST_F(HDF5BadInput, ATruncatedMemoryImageFailsAtEveryCutPoint) {
  for (size_t cut : CutPoints(bytes.size())) {
    SCOPED_TRACE(cut);
    // The image lies alone in a block of exactly its size, so any read past it is caught.
    std::vector<char> image(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(cut));
    OpenIds const ids;
    long long file = -1;
    long long const before = context.GetErrorStack().GetNMsg();
    ZQResult const opened =
        ZQHDF5Util::CreateHDF5FileFromBuffer(&context, image.data(), static_cast<long long>(cut), file);
    if (opened.OK()) {
      EXPECT_FALSE(ReadSample(&context, file));
      ZQHDF5Util::CloseHDF5File(&context, file);
    } else {
      EXPECT_EQ(opened.GetStatusCode(), Code(Status::HDF5CreateFileError));
      EXPECT_TRUE(IsOneHDF5Message(context, before));
    }
    EXPECT_EQ(ids.StillOpen(), 0);
  }
}

// Damaged heap references of variable-length strings can bring HDF5 itself down while it
// converts them, so this damage test reads the numbers, groups and attributes.
TEST_F(HDF5BadInput, DamagedBytesNeverCrashAndLeaveNothingOpen) {
  for (size_t offset = 0; offset + 16 <= bytes.size(); offset += bytes.size() / 61 + 1) {
    SCOPED_TRACE(offset);
    std::vector<char> image = bytes;
    std::fill(image.begin() + static_cast<std::ptrdiff_t>(offset),
              image.begin() + static_cast<std::ptrdiff_t>(offset + 16), '\xff');
    OpenIds const ids;
    long long file = -1;
    if (ZQHDF5Util::CreateHDF5FileFromBuffer(nullptr, image.data(), static_cast<long long>(image.size()), file).OK()) {
      ReadSample(nullptr, file, false);
      ZQHDF5Util::CloseHDF5File(nullptr, file);
    }
    EXPECT_EQ(ids.StillOpen(), 0);
  }
}

class HDF5OpenIds : public ::testing::Test {
protected:
  void SetUp() override {
    path = ScratchPath(::testing::UnitTest::GetInstance()->current_test_info()->name());
    WriteSampleFile(&context, path);
    ASSERT_TRUE(ZQHDF5Util::OpenOrCreateHDF5File(&context, path.c_str(), file).OK());
  }
  void TearDown() override { ZQHDF5Util::CloseHDF5File(&context, file); }

  /// Runs each operation between two counts of open ids and expects them equal.
  void ExpectNothingLeftOpen(std::vector<std::pair<char const *, std::function<void()>>> const &operations) {
    for (auto const &[name, operation] : operations) {
      OpenIds const ids;
      operation();
      EXPECT_EQ(ids.StillOpen(), 0) << name;
    }
  }

  ZQContext context;
  std::string path;
  long long file = -1;
};

TEST_F(HDF5OpenIds, FilesAndGroupsCloseWhatTheyOpen) {
  std::string const other = ScratchPath("other_file");
  ExpectNothingLeftOpen({
      {"create and close",
       [&] {
         long long f = -1;
         ZQHDF5Util::CreateHDF5File(&context, other.c_str(), f);
         ZQHDF5Util::CloseHDF5File(&context, f);
       }},
      {"open-or-create and close",
       [&] {
         long long f = -1;
         ZQHDF5Util::OpenOrCreateHDF5File(&context, other.c_str(), f);
         ZQHDF5Util::CloseHDF5File(&context, f);
       }},
      {"failed opens",
       [&] {
         long long f = -1;
         std::string const missing = other + ".missing/x";
         ZQHDF5Util::OpenHDF5File(&context, missing.c_str(), f);
         ZQHDF5Util::OpenOrCreateHDF5File(&context, missing.c_str(), f);
         ZQHDF5Util::CreateHDF5File(&context, missing.c_str(), f);
         char garbage[512] = {1, 2, 3};
         ZQHDF5Util::CreateHDF5FileFromBuffer(&context, garbage, sizeof garbage, f);
       }},
      {"groups",
       [&] {
         bool exists = false;
         long long g = -1;
         ZQHDF5Util::HasGroup(&context, file, "g", exists);
         ZQHDF5Util::HasGroup(&context, file, "none", exists);
         ZQHDF5Util::OpenOrCreateGroup(&context, file, "new", g);
         ZQHDF5Util::CloseGroup(&context, g);
         ZQHDF5Util::OpenGroup(&context, file, "none", g);
         ZQHDF5Util::RemoveGroup(&context, file, "new");
         ZQHDF5Util::RemoveGroup(&context, file, "none");
       }},
  });
}

TEST_F(HDF5OpenIds, AttributesCloseWhatTheyOpenOnEveryPath) {
  ExpectNothingLeftOpen({
      {"numbers",
       [&] {
         double three[3] = {1, 2, 3};
         ZQHDF5Util::SetAttribute(&context, file, "n", three, 3);
         ZQHDF5Util::GetAttribute(&context, file, "n", three, 3);
         ZQHDF5Util::GetAttribute(&context, file, "n", three[0]);
         ZQHDF5Util::GetAttribute(&context, file, "n", static_cast<double *>(nullptr), 3);
         ZQHDF5Util::GetAttribute(&context, file, "missing", three[0]);
         ZQHDF5Util::SetAttribute(&context, -1, "n", 1);
       }},
      {"texts",
       [&] {
         std::string text;
         std::wstring wide;
         ZQHDF5Util::SetAttribute(&context, file, "t", "value");
         ZQHDF5Util::GetAttribute(&context, file, "t", text);
         ZQHDF5Util::GetAttribute(&context, file, "t", wide);
         ZQHDF5Util::SetAttribute(&context, file, "t", "");
         ZQHDF5Util::GetAttribute(&context, file, "n", text);
         ZQHDF5Util::GetAttribute(&context, file, "missing", text);
       }},
  });
}

TEST_F(HDF5OpenIds, DatasetsCloseWhatTheyOpenOnEveryPath) {
  ExpectNothingLeftOpen({
      {"numbers",
       [&] {
         ZQArrayNativeType<double, long long> values;
         ZQHDF5Util::Read(&context, file, values, "packed", true, false);
         ZQHDF5Util::Read(&context, file, values, "packed", true, true);
         ZQHDF5Util::Read(&context, file, values, "missing", true, false);
         ZQHDF5Util::Read(&context, file, values, "strings", true, false);
         ZQHDF5Util::Write(&context, file, values, "copy", 4, nullptr, true);
         ZQHDF5Util::Write(&context, file, values, "copy", 4, nullptr, true);
         ZQArrayNativeType<double, long long> empty;
         ZQHDF5Util::Write(&context, file, empty, "empty", 0, nullptr, false);
       }},
      {"hyperslabs",
       [&] {
         long long dataset = -1;
         ZQHDF5Util::OpenDataset(&context, file, "packed", true, dataset);
         ZQArrayNativeType<double, long long> block;
         block.Resize(2, 2);
         long long const inside[] = {1, 1};
         long long const outside[] = {1000, 0};
         ZQHDF5Util::ReadHyperslab(&context, dataset, block, inside);
         ZQHDF5Util::WriteHyperslab(&context, dataset, block, inside);
         ZQHDF5Util::ReadHyperslab(&context, dataset, block, outside);
         ZQHDF5Util::WriteHyperslab(&context, dataset, block, outside);
         ZQHDF5Util::ReadHyperslab(&context, -1, block, inside);
         H5Dclose(static_cast<hid_t>(dataset));
       }},
      {"strings and maps",
       [&] {
         Strings strings;
         StringMap map;
         ZQHDF5Util::Read(&context, file, strings, "strings", true, false);
         ZQHDF5Util::Write(&context, file, strings, "strings2", true);
         ZQHDF5Util::Write(&context, file, strings, "strings2", true);
         ZQHDF5Util::Read(&context, file, strings, "packed", true, false);
         ZQHDF5Util::Read(&context, file, map, "map", true);
         ZQHDF5Util::Read(&context, file, map, "strings", true);
         ZQHDF5Util::Write(&context, file, map, "map2");
         ZQHDF5Util::Write(&context, file, map, "map2");
       }},
      {"shapes and queries",
       [&] {
         bool exists = false;
         ZQHDF5Util::HasDataset(&context, file, "packed", exists);
         ZQHDF5Util::HasDataset(&context, file, "missing", exists);
         long long dataset = -1;
         ZQHDF5Util::OpenDataset(&context, file, "packed", true, dataset);
         ZQArrayNativeType<int, long long> shape;
         ZQHDF5Util::GetDatasetShape(&context, dataset, shape);
         ZQHDF5Util::ArrayShapeFromAttributes(&context, shape, dataset);
         H5Dclose(static_cast<hid_t>(dataset));
         long long space = -1;
         ZQHDF5Util::CreateDataspace(&context, shape, false, space);
         H5Sclose(static_cast<hid_t>(space));
       }},
  });
}

} // namespace

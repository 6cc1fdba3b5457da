// File utilities: path text, then files in a scratch directory (failures never by permission).
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/strings/ZQStringEncoding.h>
#include <zqcore/system/ZQFileUtil.h>

#include "SystemTestSupport.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

using namespace Velmora::Tessara::ZQ::Core;
namespace fs = std::filesystem;

namespace {

using Messages = std::vector<std::string>;
constexpr long long CreateDirectoryError = static_cast<long long>(Types::StatusCode_t::CreateDirectoryError);

std::wstring Wide(std::string const &utf8) {
  std::wstring wide;
  EXPECT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, utf8.c_str(), wide));
  return wide;
}

class FileUtilFiles : public ::testing::Test {
protected:
  void SetUp() override { zqtest::WriteFile(file, content); }

  // The messages on the stack, oldest first; the stack is emptied.
  Messages Drain() {
    Messages messages;
    while (!context.GetErrorStack().IsEmpty()) {
      messages.insert(messages.begin(), context.GetErrorStack().Pop().c_str());
    }
    return messages;
  }

  ZQContext context;
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> const content = zqtest::PseudoRandomBytes(1500, 21);
  // Wide names of the file reach the system as UTF-8.
  std::string const file = dir / "d\xC3\xA4ta.bin";
};

} // namespace

TEST(FileUtilPaths, SplitJoinExtensionsAndSeparators) {
  ZQString directory("stale"), name("stale");
  for (auto const &[path, dirPart, namePart] : std::vector<std::tuple<char const *, char const *, char const *>>{
           {"a/b\\c.txt", "a/b", "c.txt"}, {"a\\b/c", "a\\b", "c"}, {"c.txt", "", "c.txt"}, {"a/", "a", ""}}) {
    ZQFileUtil::SplitPath(nullptr, path, directory, name);
    EXPECT_EQ(directory, dirPart) << path;
    EXPECT_EQ(name, namePart) << path;
  }
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "", "b/"), "b/");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a", "b"), "a/b");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a\\", "b"), "a\\b");
  EXPECT_EQ(ZQFileUtil::GetExtension(nullptr, "a.b/c"), ".b/c");
  EXPECT_TRUE(ZQFileUtil::GetExtension(nullptr, "dir/name").IsEmpty());
  EXPECT_EQ(ZQFileUtil::GetFilenameWithoutExtension(nullptr, "dir.x/name"), "name");
  EXPECT_EQ(ZQFileUtil::GetFilenameWithoutExtension(nullptr, "d/x.tar.gz"), "x.tar");

  EXPECT_TRUE(ZQFileUtil::IsAbsolutePath(nullptr, "/x"));
  EXPECT_TRUE(ZQFileUtil::IsAbsolutePath(nullptr, "\\\\server\\share"));
  EXPECT_FALSE(ZQFileUtil::IsAbsolutePath(nullptr, "C:\\x"));
  EXPECT_EQ(ZQFileUtil::NormalizePath(nullptr, "a\\//b"), "a\\b");
  EXPECT_EQ(ZQFileUtil::NormalizePath(nullptr, "a//b/./c"), "a//b/./c");
  for (auto const &[before, after] :
       std::vector<std::pair<char const *, char const *>>{{"a;;", "a"}, {";;", ";;"}, {"", ""}, {"a;b;", "a;b"}}) {
    ZQString text(before);
    EXPECT_TRUE(ZQFileUtil::StripPathSeparator(nullptr, text));
    EXPECT_EQ(text, after) << before;
  }
}

TEST(FileUtilPaths, OnlyTheLastCharacterDecidesAValidFilename) {
  std::vector<std::pair<std::string, bool>> cases = {{"ab", true}, {"?a", true}, {"a/b", true}, {"", false}};
  for (char const last : std::string("?\\|<>\"*:")) {
    cases.emplace_back(std::string("x") + last, false);
  }
  for (auto const &[name, valid] : cases) {
    EXPECT_EQ(ZQFileUtil::IsValidFilename(nullptr, name.c_str()), valid) << name;
    EXPECT_EQ(ZQFileUtil::IsValidFilename(nullptr, Wide(name).c_str()), valid) << name;
  }
  EXPECT_FALSE(ZQFileUtil::IsValidFilename(nullptr, static_cast<char const *>(nullptr)));
  // Wide characters are compared whole: one whose low byte is "?" passes.
  EXPECT_TRUE(ZQFileUtil::IsValidFilename(nullptr, L"a\u013f"));
}

TEST_F(FileUtilFiles, ExistenceAndSizeByEitherNameAndStreamAndTheirFailures) {
  EXPECT_TRUE(ZQFileUtil::IsExistent(&context, Wide(file).c_str()));
  EXPECT_FALSE(ZQFileUtil::IsExistent(&context, (dir / "missing").c_str()));
  EXPECT_FALSE(ZQFileUtil::IsExistent(&context, static_cast<char const *>(nullptr)));
  long long size = -1;
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, Wide(file).c_str(), size, true));
  EXPECT_EQ(size, 1500);
  size = -1;
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, file.c_str(), size, true));
  EXPECT_EQ(size, 1500);
  std::FILE *stream = std::fopen(file.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, stream, size, true));
  EXPECT_EQ(std::ftell(stream), 1500);
  std::fclose(stream);
  EXPECT_TRUE(Drain().empty());

  // Failures report only when asked and with a context.
  std::string const missing = dir / "missing";
  EXPECT_FALSE(ZQFileUtil::GetSize(nullptr, missing.c_str(), size, true));
  EXPECT_EQ(size, 0);
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, missing.c_str(), size, false));
  EXPECT_TRUE(Drain().empty());

  EXPECT_FALSE(ZQFileUtil::GetSize(&context, Wide(missing).c_str(), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, static_cast<char const *>(nullptr), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, static_cast<std::FILE *>(nullptr), size, true));
  std::FILE *pipe = popen("true", "r");
  ASSERT_NE(pipe, nullptr);
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, pipe, size, true));
  pclose(pipe);
  EXPECT_EQ(Drain(),
            (Messages{std::strerror(ENOENT), "empty filename given, file size can not be determined.",
                      "uninitialized file pointer given, file size can not be determined.", std::strerror(ESPIPE)}));
}

TEST_F(FileUtilFiles, OpenFileAlwaysReportsToAContext) {
  std::FILE *stream = ZQFileUtil::OpenFile(&context, Wide(dir / "new").c_str(), L"w", 32);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  EXPECT_TRUE(fs::exists(dir / "new"));

  EXPECT_EQ(ZQFileUtil::OpenFile(&context, static_cast<char const *>(nullptr), "rb", 0), nullptr);
  EXPECT_EQ(Drain(), (Messages{"empty filename given, file can't be opened.", std::strerror(EINVAL)}));
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, (dir / "no/such").c_str(), "rb", 0), nullptr);
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, Wide(dir.Path().string()).c_str(), L"wb", 0), nullptr);
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, file.c_str(), nullptr, 0), nullptr);
  EXPECT_EQ(Drain(), (Messages{std::strerror(ENOENT), std::strerror(EISDIR), std::strerror(EINVAL)}));
}

TEST_F(FileUtilFiles, ReadTakesAtMostTheFileFromTheDescriptorOffsetAndFailuresKeepTheSize) {
  std::vector<unsigned char> buffer(4000, 0xEE);
  long long size = 4000;
  EXPECT_TRUE(ZQFileUtil::Read(&context, Wide(file).c_str(), size, buffer.data(), true));
  EXPECT_EQ(size, 1500);
  EXPECT_TRUE(std::equal(content.begin(), content.end(), buffer.begin()));
  EXPECT_EQ(buffer[1500], 0xEE);

  std::FILE *stream = std::fopen(file.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  ASSERT_EQ(lseek(fileno(stream), 1000, SEEK_SET), 1000);
  size = 4000;
  EXPECT_TRUE(ZQFileUtil::Read(&context, stream, size, buffer.data(), true));
  EXPECT_EQ(size, 500);
  EXPECT_TRUE(std::equal(content.begin() + 1000, content.end(), buffer.begin()));
  std::fclose(stream);
  EXPECT_TRUE(Drain().empty());

  // Failures keep the size and report the cause.
  size = 16;
  // A directory opens for reading but cannot be read.
  EXPECT_FALSE(ZQFileUtil::Read(&context, dir.Path().c_str(), size, buffer.data(), true));
  EXPECT_EQ(size, 16);
  EXPECT_FALSE(ZQFileUtil::Read(&context, (dir / "missing").c_str(), size, buffer.data(), true));
  EXPECT_FALSE(ZQFileUtil::Read(&context, static_cast<wchar_t const *>(nullptr), size, buffer.data(), true));
  EXPECT_FALSE(ZQFileUtil::Read(&context, static_cast<std::FILE *>(nullptr), size, buffer.data(), true));
  std::FILE *writeOnly = std::fopen(file.c_str(), "ab");
  ASSERT_NE(writeOnly, nullptr);
  EXPECT_FALSE(ZQFileUtil::Read(&context, writeOnly, size, buffer.data(), false));
  EXPECT_FALSE(ZQFileUtil::Read(&context, writeOnly, size, buffer.data(), true));
  std::fclose(writeOnly);
  EXPECT_EQ(
      Drain(),
      (Messages{std::strerror(EISDIR), std::strerror(ENOENT), "empty filename given, file content can not be read.",
                "uninitialized file pointer given, file content can not be read.", std::strerror(EBADF)}));
}

TEST_F(FileUtilFiles, RemoveTreatsNullAndReportingDifferentlyByNameForm) {
  EXPECT_TRUE(ZQFileUtil::Remove(&context, static_cast<wchar_t const *>(nullptr), true));
  EXPECT_FALSE(ZQFileUtil::Remove(&context, static_cast<char const *>(nullptr), false));
  EXPECT_TRUE(Drain().empty());
  EXPECT_FALSE(ZQFileUtil::Remove(&context, static_cast<char const *>(nullptr), true));
  EXPECT_EQ(Drain(), Messages{"empty filename given, file can not be removed."});

  std::string const missing = dir / "missing";
  EXPECT_FALSE(ZQFileUtil::Remove(&context, Wide(missing).c_str(), false));
  EXPECT_TRUE(Drain().empty());
  // A narrow name's failed removal is reported even when not asked for.
  EXPECT_FALSE(ZQFileUtil::Remove(&context, missing.c_str(), false));
  fs::create_directory(dir / "full");
  zqtest::WriteFile(dir / "full/inside", {1});
  EXPECT_FALSE(ZQFileUtil::Remove(&context, Wide(dir / "full").c_str(), true));
  EXPECT_EQ(Drain(), (Messages{std::strerror(ENOENT), std::strerror(ENOTEMPTY)}));
  EXPECT_TRUE(ZQFileUtil::Remove(&context, file.c_str(), false));
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(FileUtilFiles, MakeDirCreatesParentsAndFailsOnWhatExists) {
  std::string const nested = dir / "a/b/c";
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, nested.c_str(), false).GetStatusCode(), CreateDirectoryError);
  EXPECT_FALSE(fs::exists(dir / "a"));
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, nested.c_str(), true).GetStatusCode(), 0);
  EXPECT_TRUE(fs::is_directory(nested));
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, nested.c_str(), true).GetStatusCode(), CreateDirectoryError);
  // With a trailing separator the parents' steps create the directory and the last step
  // finds it there.
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, (dir / "x/y/").c_str(), true).GetStatusCode(), CreateDirectoryError);
  EXPECT_TRUE(fs::is_directory(dir / "x/y"));
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, (file + "/sub").c_str(), true).GetStatusCode(), CreateDirectoryError);
  EXPECT_TRUE(Drain().empty());
}

TEST(FileUtilConvert, RelativeNamesGetTheWorkingDirectoryAndAbsoluteOnesStay) {
  std::string const cwd = fs::current_path().string();
  ZQString result("stale");
  for (auto convert :
       {&ZQFileUtil::ConvertToFullPath, &ZQFileUtil::ConvertToLongPath, &ZQFileUtil::ConvertToShortPath}) {
    EXPECT_TRUE(convert(nullptr, "no/such/file", result));
    EXPECT_EQ(result, (cwd + "/no/such/file").c_str());
    EXPECT_TRUE(convert(nullptr, "/usr/lib/x", result));
    EXPECT_EQ(result, "/usr/lib/x");
    EXPECT_FALSE(convert(nullptr, "", result));
    EXPECT_TRUE(result.IsEmpty());
  }
}

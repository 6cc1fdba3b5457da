// File utilities: path text without files, then queries and operations on real files and
// directories in a scratch directory. Failures are provoked by missing files, directories
// in place of files and streams of the wrong direction, never by permissions.
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

constexpr long long CreateDirectoryError = static_cast<long long>(Types::StatusCode_t::CreateDirectoryError);

std::wstring Wide(std::string const &utf8) {
  std::wstring wide;
  EXPECT_TRUE(ZQStringEncoding::UTF8ToWide(nullptr, utf8.c_str(), wide));
  return wide;
}

// The messages on the stack, oldest first; the stack is emptied.
std::vector<std::string> Drain(ZQContext &context) {
  std::vector<std::string> messages;
  while (!context.GetErrorStack().IsEmpty()) {
    messages.insert(messages.begin(), context.GetErrorStack().Pop().c_str());
  }
  return messages;
}

using Messages = std::vector<std::string>;

class FileUtilFiles : public ::testing::Test {
protected:
  void SetUp() override {
    content = zqtest::PseudoRandomBytes(1500, 21);
    file = dir / "data.bin";
    zqtest::WriteFile(file, content);
  }

  ZQContext context;
  zqtest::ScratchDirectory dir;
  std::vector<unsigned char> content;
  std::string file;
};

} // namespace

TEST(FileUtilPaths, SplitJoinAndExtensions) {
  ZQString directory("stale"), name("stale");
  ZQFileUtil::SplitPath(nullptr, "a/b\\c.txt", directory, name);
  EXPECT_EQ(directory, "a/b");
  EXPECT_EQ(name, "c.txt");
  ZQFileUtil::SplitPath(nullptr, "a\\b/c", directory, name);
  EXPECT_EQ(directory, "a\\b");
  EXPECT_EQ(name, "c");
  ZQFileUtil::SplitPath(nullptr, "c.txt", directory, name);
  EXPECT_TRUE(directory.IsEmpty());
  EXPECT_EQ(name, "c.txt");
  ZQFileUtil::SplitPath(nullptr, "a/", directory, name);
  EXPECT_EQ(directory, "a");
  EXPECT_TRUE(name.IsEmpty());

  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "", "b/"), "b/");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a", "b"), "a/b");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a/", "b"), "a/b");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a\\", "b"), "a\\b");
  EXPECT_EQ(ZQFileUtil::JoinPath(nullptr, "a", ""), "a/");

  EXPECT_EQ(ZQFileUtil::GetExtension(nullptr, "a.b/c"), ".b/c");
  EXPECT_EQ(ZQFileUtil::GetExtension(nullptr, "dir/x.tar.gz"), ".gz");
  EXPECT_TRUE(ZQFileUtil::GetExtension(nullptr, "dir/name").IsEmpty());
  EXPECT_EQ(ZQFileUtil::GetFilenameWithoutExtension(nullptr, "dir.x/name"), "name");
  EXPECT_EQ(ZQFileUtil::GetFilenameWithoutExtension(nullptr, "d/x.tar.gz"), "x.tar");
  EXPECT_EQ(ZQFileUtil::GetFilenameWithoutExtension(nullptr, "d\\.hidden"), "");
}

TEST(FileUtilPaths, AbsoluteNormalizedAndStrippedText) {
  EXPECT_TRUE(ZQFileUtil::IsAbsolutePath(nullptr, "/x"));
  EXPECT_TRUE(ZQFileUtil::IsAbsolutePath(nullptr, "\\\\server\\share"));
  EXPECT_FALSE(ZQFileUtil::IsAbsolutePath(nullptr, "C:\\x"));
  EXPECT_FALSE(ZQFileUtil::IsAbsolutePath(nullptr, "\\x"));
  EXPECT_FALSE(ZQFileUtil::IsAbsolutePath(nullptr, ""));

  EXPECT_EQ(ZQFileUtil::NormalizePath(nullptr, "a\\/b"), "a\\b");
  EXPECT_EQ(ZQFileUtil::NormalizePath(nullptr, "a\\//b"), "a\\b");
  EXPECT_EQ(ZQFileUtil::NormalizePath(nullptr, "a//b/./c"), "a//b/./c");

  for (auto const &[before, after] : std::vector<std::pair<char const *, char const *>>{
           {"a;;", "a"}, {";;", ";;"}, {"", ""}, {"a;b;", "a;b"}, {";a", ";a"}}) {
    ZQString text(before);
    EXPECT_TRUE(ZQFileUtil::StripPathSeparator(nullptr, text));
    EXPECT_EQ(text, after) << before;
  }
}

TEST(FileUtilPaths, OnlyTheLastCharacterDecidesAValidFilename) {
  for (auto const &[name, valid] : std::vector<std::pair<char const *, bool>>{{"ab", true},
                                                                              {"a?", false},
                                                                              {"?a", true},
                                                                              {"", false},
                                                                              {"a/b", true},
                                                                              {"name\\", false},
                                                                              {"x|", false},
                                                                              {"x<", false},
                                                                              {"x>", false},
                                                                              {"x\"", false},
                                                                              {"x*", false},
                                                                              {"x:", false},
                                                                              {"x/", false}}) {
    EXPECT_EQ(ZQFileUtil::IsValidFilename(nullptr, name), valid) << name;
    EXPECT_EQ(ZQFileUtil::IsValidFilename(nullptr, Wide(name).c_str()), valid) << name;
  }
  EXPECT_FALSE(ZQFileUtil::IsValidFilename(nullptr, static_cast<char const *>(nullptr)));
  EXPECT_FALSE(ZQFileUtil::IsValidFilename(nullptr, static_cast<wchar_t const *>(nullptr)));
  // Wide characters are compared whole: one whose low byte is a forbidden one passes.
  EXPECT_TRUE(ZQFileUtil::IsValidFilename(nullptr, L"a\u013f"));
}

TEST_F(FileUtilFiles, ExistenceAndSizeByEitherName) {
  EXPECT_TRUE(ZQFileUtil::IsExistent(&context, file.c_str()));
  EXPECT_TRUE(ZQFileUtil::IsExistent(&context, Wide(file).c_str()));
  EXPECT_TRUE(ZQFileUtil::IsExistent(&context, dir.Path().c_str()));
  EXPECT_FALSE(ZQFileUtil::IsExistent(&context, (dir / "missing").c_str()));
  EXPECT_FALSE(ZQFileUtil::IsExistent(&context, static_cast<char const *>(nullptr)));
  EXPECT_FALSE(ZQFileUtil::IsExistent(&context, static_cast<wchar_t const *>(nullptr)));

  long long size = -1;
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, file.c_str(), size, true));
  EXPECT_EQ(size, 1500);
  size = -1;
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, Wide(file).c_str(), size, true));
  EXPECT_EQ(size, 1500);

  // A wide name reaches the system as UTF-8.
  std::string const accented = dir / "\xC3\xA9t\xC3\xA9.txt";
  zqtest::WriteFile(accented, {1, 2, 3});
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, Wide(accented).c_str(), size, true));
  EXPECT_EQ(size, 3);
  EXPECT_TRUE(Drain(context).empty());
}

TEST_F(FileUtilFiles, SizeFailuresReportOnlyWhenAskedAndWithAContext) {
  std::string const missing = dir / "missing";
  long long size = -1;
  EXPECT_FALSE(ZQFileUtil::GetSize(nullptr, missing.c_str(), size, true));
  EXPECT_EQ(size, 0);
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, missing.c_str(), size, false));
  EXPECT_TRUE(Drain(context).empty());

  EXPECT_FALSE(ZQFileUtil::GetSize(&context, missing.c_str(), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, Wide(missing).c_str(), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, static_cast<char const *>(nullptr), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, static_cast<wchar_t const *>(nullptr), size, true));
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, static_cast<std::FILE *>(nullptr), size, true));
  EXPECT_EQ(Drain(context), (Messages{std::strerror(ENOENT), std::strerror(ENOENT),
                                      "empty filename given, file size can not be determined.",
                                      "empty filename given, file size can not be determined.",
                                      "uninitialized file pointer given, file size can not be determined."}));
}

TEST_F(FileUtilFiles, StreamSizeLeavesTheStreamAtItsEnd) {
  std::FILE *stream = std::fopen(file.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  long long size = 0;
  EXPECT_TRUE(ZQFileUtil::GetSize(&context, stream, size, true));
  EXPECT_EQ(size, 1500);
  EXPECT_EQ(std::ftell(stream), 1500);
  std::fclose(stream);

  // A pipe cannot seek: the failure is the pipe's ESPIPE.
  std::FILE *pipe = popen("true", "r");
  ASSERT_NE(pipe, nullptr);
  EXPECT_FALSE(ZQFileUtil::GetSize(&context, pipe, size, true));
  EXPECT_EQ(size, 0);
  pclose(pipe);
  EXPECT_EQ(Drain(context), Messages{std::strerror(ESPIPE)});
}

TEST_F(FileUtilFiles, OpenFileAlwaysReportsToAContext) {
  std::FILE *stream = ZQFileUtil::OpenFile(&context, file.c_str(), "rb", 0);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  stream = ZQFileUtil::OpenFile(&context, Wide(dir / "new.txt").c_str(), L"w", 32);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  EXPECT_TRUE(ZQFileUtil::IsExistent(nullptr, (dir / "new.txt").c_str()));
  EXPECT_TRUE(Drain(context).empty());

  EXPECT_EQ(ZQFileUtil::OpenFile(&context, static_cast<char const *>(nullptr), "rb", 0), nullptr);
  EXPECT_EQ(Drain(context), (Messages{"empty filename given, file can't be opened.", std::strerror(EINVAL)}));
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, static_cast<wchar_t const *>(nullptr), L"rb", 0), nullptr);
  EXPECT_EQ(Drain(context), (Messages{"empty filename given, file can't be opened.", std::strerror(EINVAL)}));
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, (dir / "no/such/file").c_str(), "rb", 0), nullptr);
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, Wide(dir.Path().string()).c_str(), L"wb", 0), nullptr);
  EXPECT_EQ(ZQFileUtil::OpenFile(&context, file.c_str(), nullptr, 0), nullptr);
  EXPECT_EQ(Drain(context), (Messages{std::strerror(ENOENT), std::strerror(EISDIR), std::strerror(EINVAL)}));
  EXPECT_EQ(ZQFileUtil::OpenFile(nullptr, static_cast<char const *>(nullptr), "rb", 0), nullptr);
}

TEST_F(FileUtilFiles, ReadTakesAtMostTheFileAndTellsHowMuch) {
  std::vector<unsigned char> buffer(4000, 0xEE);
  long long size = 4000;
  EXPECT_TRUE(ZQFileUtil::Read(&context, file.c_str(), size, buffer.data(), true));
  EXPECT_EQ(size, 1500);
  EXPECT_TRUE(std::equal(content.begin(), content.end(), buffer.begin()));
  EXPECT_EQ(buffer[1500], 0xEE);

  size = 100;
  EXPECT_TRUE(ZQFileUtil::Read(&context, Wide(file).c_str(), size, buffer.data(), true));
  EXPECT_EQ(size, 100);
  size = 0;
  EXPECT_TRUE(ZQFileUtil::Read(&context, file.c_str(), size, nullptr, true));
  EXPECT_EQ(size, 0);

  // From the descriptor's offset, not from the stream's buffered position.
  std::FILE *stream = std::fopen(file.c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  ASSERT_EQ(lseek(fileno(stream), 1000, SEEK_SET), 1000);
  size = 4000;
  EXPECT_TRUE(ZQFileUtil::Read(&context, stream, size, buffer.data(), true));
  EXPECT_EQ(size, 500);
  EXPECT_TRUE(std::equal(content.begin() + 1000, content.end(), buffer.begin()));
  std::fclose(stream);
  EXPECT_TRUE(Drain(context).empty());
}

TEST_F(FileUtilFiles, ReadFailuresKeepTheSizeAndReportTheCause) {
  std::vector<unsigned char> buffer(16);
  long long size = 16;
  // A directory opens for reading but cannot be read.
  EXPECT_FALSE(ZQFileUtil::Read(&context, dir.Path().c_str(), size, buffer.data(), true));
  EXPECT_EQ(size, 16);
  EXPECT_FALSE(ZQFileUtil::Read(&context, Wide(dir / "missing").c_str(), size, buffer.data(), true));
  EXPECT_FALSE(ZQFileUtil::Read(&context, static_cast<char const *>(nullptr), size, buffer.data(), true));
  EXPECT_FALSE(ZQFileUtil::Read(&context, static_cast<wchar_t const *>(nullptr), size, buffer.data(), true));
  EXPECT_FALSE(ZQFileUtil::Read(&context, static_cast<std::FILE *>(nullptr), size, buffer.data(), true));
  EXPECT_EQ(Drain(context), (Messages{std::strerror(EISDIR), std::strerror(ENOENT),
                                      "empty filename given, file content can not be read.",
                                      "empty filename given, file content can not be read.",
                                      "uninitialized file pointer given, file content can not be read."}));

  std::FILE *writeOnly = std::fopen(file.c_str(), "ab");
  ASSERT_NE(writeOnly, nullptr);
  EXPECT_FALSE(ZQFileUtil::Read(&context, writeOnly, size, buffer.data(), false));
  EXPECT_FALSE(ZQFileUtil::Read(nullptr, writeOnly, size, buffer.data(), true));
  EXPECT_TRUE(Drain(context).empty());
  EXPECT_FALSE(ZQFileUtil::Read(&context, writeOnly, size, buffer.data(), true));
  EXPECT_EQ(Drain(context), Messages{std::strerror(EBADF)});
  std::fclose(writeOnly);
}

TEST_F(FileUtilFiles, RemoveTreatsNullAndReportingDifferentlyByNameForm) {
  EXPECT_TRUE(ZQFileUtil::Remove(&context, static_cast<wchar_t const *>(nullptr), true));
  EXPECT_TRUE(Drain(context).empty());
  EXPECT_FALSE(ZQFileUtil::Remove(&context, static_cast<char const *>(nullptr), false));
  EXPECT_TRUE(Drain(context).empty());
  EXPECT_FALSE(ZQFileUtil::Remove(&context, static_cast<char const *>(nullptr), true));
  EXPECT_EQ(Drain(context), Messages{"empty filename given, file can not be removed."});

  std::string const missing = dir / "missing";
  EXPECT_FALSE(ZQFileUtil::Remove(&context, Wide(missing).c_str(), false));
  EXPECT_TRUE(Drain(context).empty());
  // A narrow name's failed removal is reported even when not asked for.
  EXPECT_FALSE(ZQFileUtil::Remove(&context, missing.c_str(), false));
  EXPECT_EQ(Drain(context), Messages{std::strerror(ENOENT)});
  fs::create_directory(dir / "full");
  zqtest::WriteFile(dir / "full/inside", {1});
  EXPECT_FALSE(ZQFileUtil::Remove(&context, Wide(dir / "full").c_str(), true));
  EXPECT_EQ(Drain(context), Messages{std::strerror(ENOTEMPTY)});

  EXPECT_TRUE(ZQFileUtil::Remove(&context, file.c_str(), false));
  EXPECT_FALSE(fs::exists(file));
  EXPECT_TRUE(ZQFileUtil::Remove(&context, Wide(dir / "full/inside").c_str(), true));
  EXPECT_FALSE(fs::exists(dir / "full/inside"));
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
  std::string const trailing = dir / "x/y/";
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, trailing.c_str(), true).GetStatusCode(), CreateDirectoryError);
  EXPECT_TRUE(fs::is_directory(dir / "x/y"));

  // A file in the way of a parent fails the parent's step and the last one.
  EXPECT_EQ(ZQFileUtil::MakeDir(&context, (file + "/sub/dir").c_str(), true).GetStatusCode(), CreateDirectoryError);
  EXPECT_TRUE(Drain(context).empty());
}

TEST(FileUtilConvert, RelativeNamesGetTheWorkingDirectoryAndAbsoluteOnesStay) {
  std::string const cwd = fs::current_path().string();
  ZQString result("stale");
  EXPECT_TRUE(ZQFileUtil::ConvertToFullPath(nullptr, "no/such/file.txt", result));
  EXPECT_EQ(result, (cwd + "/no/such/file.txt").c_str());
  EXPECT_TRUE(ZQFileUtil::ConvertToLongPath(nullptr, "x", result));
  EXPECT_EQ(result, (cwd + "/x").c_str());
  EXPECT_TRUE(ZQFileUtil::ConvertToShortPath(nullptr, "x", result));
  EXPECT_EQ(result, (cwd + "/x").c_str());
  for (auto convert :
       {&ZQFileUtil::ConvertToFullPath, &ZQFileUtil::ConvertToLongPath, &ZQFileUtil::ConvertToShortPath}) {
    EXPECT_TRUE(convert(nullptr, "/usr/lib/x", result));
    EXPECT_EQ(result, "/usr/lib/x");
    EXPECT_FALSE(convert(nullptr, "", result));
    EXPECT_TRUE(result.IsEmpty());
  }
}

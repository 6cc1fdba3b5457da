// Log handlers: lines, text cleaning, prefixes, rank selection without a job, files.
#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/parallel/ZQMPT.h>

#include "LogTestSupport.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

std::string Emitted(char const *text, char const *prefix = "P ") {
  std::ostringstream out;
  ZQLogStreamHandler handler(&out);
  handler.SetPrefix(prefix);
  handler.Emit(text, -1);
  return out.str();
}

// Switches LC_CTYPE for one test and puts back what was there.
class CtypeLocale {
public:
  explicit CtypeLocale(char const *name) : saved(std::setlocale(LC_CTYPE, nullptr)) { std::setlocale(LC_CTYPE, name); }
  ~CtypeLocale() { std::setlocale(LC_CTYPE, saved.c_str()); }

private:
  std::string saved;
};

} // namespace

TEST(StreamHandlerLines, EveryPhysicalLineBearsThePrefix) {
  EXPECT_EQ(Emitted("a\nb"), "P a\nP b\n");
  EXPECT_EQ(Emitted("a\n"), "P a\nP \n");
  EXPECT_EQ(Emitted("\n\n", ""), "\n\n\n");
  EXPECT_EQ(Emitted(nullptr), "P \n");
  EXPECT_EQ(Emitted(""), "P \n");
  EXPECT_EQ(Emitted("x", ""), "x\n");
}

TEST(StreamHandlerCleaning, UnprintableTextBecomesQuestionMarksByTheCurrentLocale) {
  CtypeLocale utf8("C.UTF-8");
  EXPECT_EQ(Emitted("a\xFF"
                    "b",
                    ""),
            "a?b\n");
  EXPECT_EQ(Emitted("bell\x07\tend\r", ""), "bell?\tend\r\n");
  EXPECT_EQ(Emitted("caf\xC3\xA9 \xE2\x82\xAC", ""), "caf\xC3\xA9 \xE2\x82\xAC\n");
  // An incomplete sequence gives one mark per byte; an unprintable character one in all.
  EXPECT_EQ(Emitted("x\xE2\x82", ""), "x??\n");
  EXPECT_EQ(Emitted("x\xC2\x80y", ""), "x?y\n");
  {
    // The locale is read at each message, not once.
    CtypeLocale plain("C");
    EXPECT_EQ(Emitted("caf\xC3\xA9", ""), "caf??\n");
  }
  EXPECT_EQ(Emitted("caf\xC3\xA9", ""), "caf\xC3\xA9\n");
}

TEST(StreamHandlerForms, WideAndStringFormsReachTheNarrowSlot) {
  struct Recorder : ZQLogStreamHandler {
    using ZQLogStreamHandler::Emit;
    void Emit(char const *text, int rank) override { seen.push_back(std::string(text) + "@" + std::to_string(rank)); }
    std::vector<std::string> seen;
  } recorder;
  recorder.Emit(ZQString("s"), 3);
  recorder.Emit(L"w\u00e4", -1);
  recorder.Emit(static_cast<wchar_t const *>(nullptr), 1);
  EXPECT_EQ(recorder.seen, (std::vector<std::string>{"s@3", "w\xC3\xA4@-1", "@1"}));
}

TEST(StreamHandlerTarget, NullStreamMeansStandardOutputNoJobMeansEveryRankAndPrefixesFollowTheLink) {
  ZQLogStreamHandler handler;
  EXPECT_EQ(handler.GetStream(), nullptr);
  EXPECT_TRUE(handler.IsActive(1000) && handler.IsActive(-1));
  EXPECT_TRUE(handler.GetDefaultPrefix(nullptr).IsEmpty());
  zqtest::CapturedStream out(std::cout);
  handler.Emit("to stdout", -1);
  std::ostringstream other;
  handler.SetStream(&other);
  handler.Emit(L"to other", -1);
  EXPECT_EQ(out.Text(), "to stdout\n");
  EXPECT_EQ(other.str(), "to other\n");

  // The prefix is set by any form; a job link replaces it only when asked to.
  handler.SetPrefix(L"w> ");
  EXPECT_EQ(handler.GetPrefix(), "w> ");
  handler.SetPrefix(ZQString("s> "));
  ZQMPT job;
  handler.SetMPT(&job, false);
  EXPECT_EQ(handler.GetPrefix(), "s> ");
  handler.SetMPT(nullptr, true);
  EXPECT_TRUE(handler.GetPrefix().IsEmpty());
  EXPECT_TRUE(ZQLogStreamHandler(&job).GetPrefix().IsEmpty());
}

TEST(FileHandler, AppendsByDefaultAndTruncatesOnRequest) {
  std::string const path = zqtest::TempPath("append.log");
  std::remove(path.c_str());
  {
    ZQLogFileHandler handler(path.c_str());
    ASSERT_TRUE(handler.IsOpen());
    handler.Emit("one", -1);
  }
  std::unique_ptr<ZQLogFileHandler> handler(ZQLogFileHandler::Create(ZQString(path.c_str())));
  handler->SetPrefix("> ");
  handler->Emit("two", -1);
  EXPECT_EQ(zqtest::ReadFile(path), "one\n> two\n");
  // Unlinked, a second Open opens the same name again.
  ASSERT_TRUE(handler->Open(false));
  handler->Emit("three", -1);
  EXPECT_EQ(zqtest::ReadFile(path), "> three\n");
  EXPECT_EQ(handler->GetFileName(), path.c_str());
  std::remove(path.c_str());
}

TEST(FileHandler, ExpandsEnvironmentVariablesInItsName) {
  std::string const directory = testing::TempDir();
  setenv("ZQT_LOG_DIR", directory.c_str(), 1);
  std::string const name = "zq_log_" + std::to_string(getpid()) + "_env.log";
  ZQLogFileHandler handler((L"${ZQT_LOG_DIR}/" + std::wstring(name.begin(), name.end())).c_str());
  ASSERT_TRUE(handler.IsOpen());
  handler.Emit("expanded", -1);
  EXPECT_EQ(zqtest::ReadFile(directory + "/" + name), "expanded\n");
  std::remove((directory + "/" + name).c_str());
}

TEST(FileHandler, AFileThatCannotOpenIsReportedAndSwallowsText) {
  zqtest::CapturedStream err(std::cerr);
  zqtest::CapturedStream out(std::cout);
  ZQLogFileHandler handler("/nonexistent-zq-dir/x.log");
  EXPECT_FALSE(handler.IsOpen());
  EXPECT_NE(handler.GetStream(), nullptr);
  handler.Emit("lost", -1);
  EXPECT_EQ(err.Text(), "\nERROR: opening of log-file '/nonexistent-zq-dir/x.log' FAILED!\n\n");
  EXPECT_EQ(out.Text(), "");
  // Once closed, the handler falls back on standard output.
  handler.Close();
  EXPECT_EQ(handler.GetStream(), nullptr);
  EXPECT_FALSE(handler.IsOpen());
  handler.Emit("shown", -1);
  EXPECT_EQ(out.Text(), "shown\n");
}

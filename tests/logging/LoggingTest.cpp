// The logging registry, and the context services built on it: automatic logging, progress.
#include <zqcore/core/ZQAPI.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/logging/ZQLogFileHandler.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>

#include "LogTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

ZQLogger *CreateNothing(ZQMPT *) { return nullptr; }

ZQLogger *CreateAtLevel7(ZQMPT *) { return new ZQLogger(7); }

std::vector<ZQString> LoggerNames(ZQLogging const &logging) {
  ZQSetObjectType<ZQString> names;
  logging.GetLoggerNames(names);
  return std::vector<ZQString>(names.begin(), names.end());
}

} // namespace

TEST(LoggingRegistry, AFreshRegistryPrintsInfoAndAboveOnStandardOutput) {
  ZQLogging logging;
  EXPECT_EQ(LoggerNames(logging), std::vector<ZQString>{ZQString()});
  ZQLogger *root = logging.GetLogger(static_cast<char const *>(nullptr), nullptr);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->GetLevel(), 20);
  EXPECT_TRUE(logging.IsOn());
  zqtest::CapturedStream out(std::cout);
  logging.Debug("hidden");
  logging.Info(L"shown");
  logging(30, ZQString("called"));
  EXPECT_EQ(out.Text(), "shown\ncalled\n");
}

TEST(LoggingRegistry, LoggersAreMadeOnceByTheirKindAndCreatorsChangeNewOnesOnly) {
  ZQLogging logging;
  ZQLogger *a = logging.GetLogger("a", "Logger");
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(logging.GetLogger(L"a", L""), a);
  ZQSetObjectType<ZQString> handlerNames;
  a->GetHandlerNames(handlerNames);
  EXPECT_TRUE(handlerNames.empty());
  EXPECT_EQ(a->GetLevel(), 0);
  // An unknown kind gives a root logger, with its console handler.
  ZQLogger *b = logging.GetLogger(ZQString("b"), ZQString("NoSuchKind"));
  ASSERT_NE(b, nullptr);
  EXPECT_NE(b->GetHandler(""), nullptr);
  EXPECT_EQ(b->GetLevel(), 0);

  // Registering a creator changes new loggers only.
  EXPECT_TRUE(logging.Register(L"Logger", &CreateAtLevel7));
  EXPECT_EQ(logging.GetLogger("after", "Logger")->GetLevel(), 7);
  EXPECT_EQ(logging.GetLogger("a", "Logger"), a);
  EXPECT_EQ(a->GetLevel(), 0);
  // A creator that gives null leaves a null entry for good, left out of the names.
  EXPECT_TRUE(logging.Register("Nothing", &CreateNothing));
  EXPECT_EQ(logging.GetLogger("void", "Nothing"), nullptr);
  EXPECT_EQ(logging.GetLogger("void", "Logger"), nullptr);
  EXPECT_EQ(LoggerNames(logging), (std::vector<ZQString>{ZQString(), ZQString("a"), ZQString("after"), ZQString("b")}));
  logging.Info("null entries are passed over");
}

TEST(LoggingRegistry, FanOutGoesToEveryLoggerInNameOrderAndObeysEachThreshold) {
  ZQLogging logging;
  std::ostringstream out;
  for (char const *name : {"b", "a"}) {
    ZQLogger *logger = logging.GetLogger(name, "Logger");
    ZQLogHandler *handler = new ZQLogStreamHandler(&out);
    logger->AddHandler("h", handler);
  }
  logging.GetLogger("b", "")->SetLevel(40);
  logging.Off();
  logging.GetLogger("", "")->Off();
  EXPECT_FALSE(logging.IsOn());
  EXPECT_TRUE(logging.IsOff());
  logging.Critical("off");
  logging.On();
  logging.SetPrefix("p:");
  logging.Warning("w");
  logging.Error(L"e");
  EXPECT_EQ(out.str(), "p:w\np:e\np:e\n");
}

TEST(LoggingFiles, AFileLoggerWritesItsLevelAndAbove) {
  std::string const path = zqtest::TempPath("file.log");
  std::remove(path.c_str());
  ZQLogging logging;
  EXPECT_FALSE(logging.AddFileLogger(static_cast<char const *>(nullptr), 20, ""));
  EXPECT_FALSE(logging.AddFileLogger(static_cast<wchar_t const *>(nullptr), 20, L""));
  ASSERT_TRUE(logging.AddFileLogger(path.c_str(), 30, "P "));
  ZQLogger *logger = logging.GetLogger(path.c_str(), "");
  ASSERT_NE(logger, nullptr);
  EXPECT_NE(dynamic_cast<ZQLogFileHandler *>(logger->GetHandler("LogFileHandler")), nullptr);
  logger->GetHandler("LogFileHandler")->Emit("direct", -1);
  // A second call reuses the open file and changes only level and prefix.
  EXPECT_TRUE(logging.AddFileLogger(ZQString(path.c_str()), 40, ZQString("Q ")));
  zqtest::CapturedStream out(std::cout);
  logging.Warning("warning");
  logging.Error("error");
  logging.Flush();
  EXPECT_EQ(zqtest::ReadFile(path), "P direct\nQ error\n");
  std::remove(path.c_str());
}

TEST(LoggingFiles, AFileThatFailsLeavesTheLoggerUntouched) {
  zqtest::CapturedStream err(std::cerr);
  ZQLogging logging;
  EXPECT_FALSE(logging.AddFileLogger(L"/nonexistent-zq-dir/f.log", 30, L"P "));
  EXPECT_FALSE(logging.AddFileLogger("/nonexistent-zq-dir/f.log", 30, "P "));
  ZQLogger *logger = logging.GetLogger("/nonexistent-zq-dir/f.log", "Logger");
  ASSERT_NE(logger, nullptr);
  EXPECT_EQ(logger->GetLevel(), 0);
  EXPECT_TRUE(logger->GetHandler("LogFileHandler")->GetPrefix().IsEmpty());
  EXPECT_NE(err.Text().find("ERROR: opening of log-file '/nonexistent-zq-dir/f.log' FAILED!"), std::string::npos);
}

TEST(ContextLogging, PushedMessagesAreLoggedAsErrorsWhenAsked) {
  ZQContext context;
  std::ostringstream out;
  ZQLogHandler *handler = new ZQLogStreamHandler(&out);
  context.GetLogging().GetLogger("", "")->AddHandler("", handler);
  ZQErrorStack &stack = context.GetErrorStack();
  stack("quiet");
  stack.SetAutoLogMsg(true);
  context.GetLogging().GetLogger("", "")->SetLevel(40);
  stack(L"logged");
  context.GetLogging().GetLogger("", "")->SetLevel(41);
  stack.Push("below the threshold");
  EXPECT_EQ(out.str(), "logged\n");
  EXPECT_EQ(stack.GetNMsg(), 3);
  stack.Reset();
  stack.SetAutoLogMsg(true);
  context.GetLogging().GetLogger("", "")->SetLevel(0);
  stack("detached");
  EXPECT_EQ(out.str(), "logged\n");
}

TEST(ContextLogging, ProgressNeedsAGlobalContextThatIsVerboseAndOn) {
  ASSERT_EQ(ZQAPI::GetContext(), nullptr);
  EXPECT_FALSE(ZQAPI::ProgressCallback(50));
  ASSERT_TRUE(ZQAPI::Initialize(nullptr, nullptr) && ZQAPI::Unlock(nullptr));
  ZQContext *context = ZQAPI::GetContext();
  std::string text;
  {
    zqtest::CapturedStream out(std::cout);
    EXPECT_FALSE(ZQAPI::ProgressCallback(10));
    context->SetVerbosityLevel(1);
    EXPECT_FALSE(ZQAPI::ProgressCallback(50));
    EXPECT_FALSE(ZQAPI::ProgressCallback(-7));
    context->GetErrorStack().SetAutoLogMsg(true);
    context->GetErrorStack()("pushed");
    context->GetLogging().Off();
    EXPECT_FALSE(ZQAPI::ProgressCallback(60));
    text = out.Text();
  }
  ZQAPI::Finalize();
  EXPECT_EQ(text, "    [ZQ] progress: 50%\n    [ZQ] progress: -7%\n    pushed\n");
}

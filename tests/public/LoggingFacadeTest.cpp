// Public logging classes: the registry's handle shape and its neutral answers, handlers
// and loggers that own their inner objects, and the context's logging wrapper.
#include <zqcore/core/ZQContext.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/LogFileHandler.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/RootLogger.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <unistd.h>

namespace {

namespace zq = Velmora::Tessara::ZQ::Core;
using zq::Context;
using zq::Logging;
using zq::String;
using zq::detail::FacadeAccess;

// Standard output into a buffer while it lives.
class CapturedOutput {
public:
  CapturedOutput() : saved(std::cout.rdbuf(buffer.rdbuf())) {}
  ~CapturedOutput() { std::cout.rdbuf(saved); }
  std::string Text() const { return buffer.str(); }

private:
  std::ostringstream buffer;
  std::streambuf *saved;
};

std::string TempPath(char const *name) {
  return std::string(testing::TempDir()) + "zq_public_log_" + std::to_string(getpid()) + "_" + name;
}

std::string ReadFile(std::string const &path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(PublicLogging, WrapperOfNothingIsNeitherOnNorOff) {
  Logging logging = FacadeAccess::Borrow<Logging, zq::ZQLogging>(nullptr);
  logging.On();
  logging.Info("lost");
  logging(40, String("lost"));
  logging.SetMPT(nullptr, true);
  EXPECT_FALSE(logging.IsOn());
  EXPECT_FALSE(logging.IsOff());
  EXPECT_FALSE(logging.AddFileLogger("x.log", 20, ""));
  Context context = FacadeAccess::Borrow<Context, zq::ZQContext>(nullptr);
  EXPECT_FALSE(context.GetLogging().IsOn());
}

TEST(PublicLogging, AnOwnedRegistryLogsAndWritesFiles) {
  std::string const path = TempPath("owned.log");
  std::remove(path.c_str());
  Logging logging;
  EXPECT_TRUE(logging.IsOn());
  ASSERT_TRUE(logging.AddFileLogger(String(path.c_str()), 30, String("F ")));
  CapturedOutput out;
  logging.Info(L"info");
  logging.Error(String("error"));
  logging.Off();
  EXPECT_TRUE(logging.IsOff());
  logging.Critical("off");
  logging.Flush();
  EXPECT_EQ(out.Text(), "info\nerror\n");
  EXPECT_EQ(ReadFile(path), "F error\n");
  std::remove(path.c_str());
}

TEST(PublicLogging, TheContextsWrapperAndErrorStackShareTheInnerRegistry) {
  Context context;
  context.GetLogging().SetPrefix("ctx ");
  CapturedOutput out;
  context.GetErrorStack().SetAutoLogMsg(true);
  context.GetErrorStack().Push("pushed");
  Logging other;
  other.SetPrefix("other ");
  context.GetErrorStack().SetLogging(&other);
  context.GetErrorStack().Push("redirected");
  context.GetErrorStack().SetLogging(nullptr);
  context.GetErrorStack().Push("unlogged");
  EXPECT_EQ(out.Text(), "ctx pushed\nother redirected\n");
  EXPECT_EQ(context.GetContext()->GetErrorStack().GetNMsg(), 3);
}

TEST(PublicLoggers, AddingAHandlerDestroysThePublicObject) {
  std::string const path = TempPath("handler.log");
  std::remove(path.c_str());
  std::unique_ptr<zq::Logger> logger(zq::RootLogger::Create());
  zq::LogFileHandler *file = zq::LogFileHandler::Create(path.c_str());
  EXPECT_TRUE(file->IsOpen());
  file->SetPrefix(L"f ");
  EXPECT_EQ(file->GetPrefix(), "f ");
  logger->AddHandler("file", file);
  logger->SetLevel(20);
  CapturedOutput out;
  logger->Info(String("both"));
  logger->Debug("neither");
  logger->RemoveHandler(L"file");
  logger->Warning("console only");
  EXPECT_EQ(out.Text(), "both\nconsole only\n");
  EXPECT_EQ(ReadFile(path), "f both\n");
  std::remove(path.c_str());
}

TEST(PublicLoggers, FileHandlersForwardToTheirFile) {
  std::string const path = TempPath("reopen.log");
  zq::LogFileHandler handler(L"", nullptr);
  EXPECT_FALSE(handler.IsOpen());
  zq::LogFileHandler named(String(path.c_str()));
  named.Emit("first", -1);
  ASSERT_TRUE(named.Open(false));
  named.Emit(L"second", -1);
  named.Close();
  EXPECT_EQ(named.GetStream(), nullptr);
  EXPECT_TRUE(named.IsActive(5));
  EXPECT_TRUE(named.GetDefaultPrefix(nullptr).IsEmpty());
  EXPECT_EQ(ReadFile(path), "second\n");
  std::remove(path.c_str());
}

} // namespace

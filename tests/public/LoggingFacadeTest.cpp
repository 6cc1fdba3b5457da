// Public logging classes: the registry's handle shape and its neutral answers, handlers
// and loggers that own their inner objects, and the context's logging wrapper.
#include <zqcore/core/ZQContext.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/LogFileHandler.h>
#include <zqcore/public/Logging.h>
#include <zqcore/public/RootLogger.h>
#include <zqcore/public/String.h>

#include "LogTestSupport.h"
#include "public/detail/FacadeAccess.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>
#include <memory>

namespace {

namespace zq = Velmora::Tessara::ZQ::Core;
using zq::Context;
using zq::Logging;
using zq::String;
using zq::detail::FacadeAccess;

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

TEST(PublicLogging, TheContextsWrapperAndErrorStackShareTheInnerRegistry) {
  Context context;
  context.GetLogging().SetPrefix("ctx ");
  zqtest::CapturedStream out(std::cout);
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
  std::string const path = zqtest::TempPath("handler.log");
  std::remove(path.c_str());
  std::unique_ptr<zq::Logger> logger(zq::RootLogger::Create());
  zq::LogFileHandler *file = zq::LogFileHandler::Create(path.c_str());
  EXPECT_TRUE(file->IsOpen());
  file->SetPrefix(L"f ");
  EXPECT_EQ(file->GetPrefix(), "f ");
  logger->AddHandler("file", file);
  logger->SetLevel(20);
  zqtest::CapturedStream out(std::cout);
  logger->Info(String("both"));
  logger->Debug("neither");
  logger->RemoveHandler(L"file");
  logger->Warning("console only");
  EXPECT_EQ(out.Text(), "both\nconsole only\n");
  EXPECT_EQ(zqtest::ReadFile(path), "f both\n");
  std::remove(path.c_str());
}

} // namespace

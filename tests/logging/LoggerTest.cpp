// Loggers: thresholds and the switch, ownership of handlers and their name order.
#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/logging/ZQLogger.h>

#include "LogTestSupport.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

// A logger with one handler writing into `out`.
std::unique_ptr<ZQLogger> LoggerInto(std::ostream &out, int level) {
  auto logger = std::make_unique<ZQLogger>(level);
  ZQLogHandler *handler = new ZQLogStreamHandler(&out);
  logger->AddHandler("h", handler);
  return logger;
}

} // namespace

TEST(LoggerLevels, ThresholdIsInclusiveEachNamedLevelMapsToItsValueAndTheSwitchIsApart) {
  std::ostringstream out;
  auto logger = LoggerInto(out, 30);
  logger->Debug("debug");
  logger->Info(L"info");
  logger->Warning(ZQString("warning"));
  logger->Error("error");
  logger->Critical(L"critical");
  logger->Log(35, "35");
  logger->Log(29, "29");
  EXPECT_EQ(out.str(), "warning\nerror\ncritical\n35\n");
  EXPECT_TRUE(logger->IsEnabledFor(30));
  EXPECT_FALSE(logger->IsEnabledFor(29));

  // The switch is independent of the threshold.
  logger->Off();
  EXPECT_TRUE(logger->IsOff());
  EXPECT_FALSE(logger->IsEnabledFor(50));
  logger->Critical("silent");
  EXPECT_EQ(logger->GetLevel(), 30);
  logger->On();
  EXPECT_TRUE(logger->IsOn());
  logger->Info("below");
  logger->Warning("back");
  EXPECT_EQ(out.str(), "warning\nerror\ncritical\n35\nback\n");

  ZQLogger zero;
  EXPECT_TRUE(zero.IsEnabledFor(0));
  EXPECT_FALSE(zero.IsEnabledFor(-1));
}

TEST(LoggerHandlers, AddingTakesOwnershipAndReplacesByName) {
  int destroyed = 0;
  std::ostringstream first;
  std::ostringstream second;
  {
    ZQLogger logger;
    ZQLogHandler *p = new zqtest::CountingHandler(&first, &destroyed);
    logger.AddHandler("x", p);
    EXPECT_EQ(p, nullptr);
    ZQLogHandler *q = new zqtest::CountingHandler(&second, &destroyed);
    ZQLogHandler *const kept = q;
    logger.AddHandler(L"x", q);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(logger.GetHandler(ZQString("x")), kept);
    logger.Info("to q");
    logger.RemoveHandler("missing");
    EXPECT_EQ(destroyed, 1);
    logger.RemoveHandler(L"x");
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(logger.GetHandler("x"), nullptr);
    ZQLogHandler *r = new zqtest::CountingHandler(&second, &destroyed);
    logger.AddHandler("r", r);
  }
  EXPECT_EQ(first.str(), "");
  EXPECT_EQ(second.str(), "to q\n");
  EXPECT_EQ(destroyed, 3);
}

TEST(LoggerHandlers, NamesFollowByteOrderAndFanOutFollowsThem) {
  std::ostringstream out;
  ZQLogger logger;
  for (char const *name : {"b", "a", "Z"}) {
    ZQLogHandler *handler = new ZQLogStreamHandler(&out);
    handler->SetPrefix(name);
    logger.AddHandler(name, handler);
  }
  ZQLogHandler *none = nullptr;
  logger.AddHandler("none", none);
  ZQSetObjectType<ZQString> names;
  names.insert(ZQString("stale"));
  EXPECT_TRUE(logger.GetHandlerNames(names));
  EXPECT_EQ(std::vector<ZQString>(names.begin(), names.end()),
            (std::vector<ZQString>{ZQString("Z"), ZQString("a"), ZQString("b")}));
  ZQSetNativeType<ZQLogHandler *> handlers;
  EXPECT_TRUE(logger.GetHandlers(handlers));
  EXPECT_EQ(handlers.size(), 3u);
  EXPECT_EQ(handlers.count(logger.GetHandler("a")), 1u);
  logger.Info(":");
  EXPECT_EQ(out.str(), "Z:\na:\nb:\n");
}

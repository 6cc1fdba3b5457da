#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/logging/ZQRootLogger.h>

namespace Velmora::Tessara::ZQ::Core {

ZQRootLogger::ZQRootLogger(int initialLevel, ZQMPT *job) : ZQLogger(initialLevel, job) {
  ZQLogHandler *console = new ZQLogStreamHandler(nullptr, job);
  AddHandler("", console);
}

ZQRootLogger::~ZQRootLogger() { Reset(); }

ZQLogger *ZQRootLogger::Create() { return new ZQRootLogger(0, nullptr); }

ZQLogger *ZQRootLogger::Create(ZQMPT *job) { return new ZQRootLogger(0, job); }

} // namespace Velmora::Tessara::ZQ::Core

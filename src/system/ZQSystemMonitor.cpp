// Memory and time samples written through the logging registry, one line per sample.
#include <zqcore/system/ZQSystemMonitor.h>

#include <zqcore/core/BuildInfo.h>
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/system/ZQOSUtil.h>

#include <cstdio>
#include <fstream>

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr int InfoLevel = 20;
constexpr char const *ElapsedTimeName = "ElapsedTime";
constexpr char const *SelectedNames[] = {"VmPeak",         "VmSize",       "VmHWM", "VmRSS", "PeakWorkingSetSize",
                                         "WorkingSetSize", ElapsedTimeName};

ZQResult Status(Types::StatusCode_t code) { return ZQResult(static_cast<long long>(code)); }

void Push(ZQContext *context, bool report, ZQString const &message) {
  if (context != nullptr && report) {
    context->GetErrorStack()(message);
  }
}

// One line of the status file: the text before the first colon is the key, the rest the
// value, and every colon is dropped. False at the end of the stream with nothing read.
bool ReadStatusLine(std::istream &in, ZQString &key, ZQString &value) {
  key.Clear();
  value.Clear();
  bool inValue = false;
  bool readAny = false;
  char c = 0;
  while (in.get(c)) {
    if (c == '\n') {
      return true;
    }
    readAny = true;
    if (c == ':') {
      inValue = true;
    } else {
      (inValue ? value : key) += c;
    }
  }
  return readAny;
}

} // namespace

ZQSystemMonitor::ZQSystemMonitor() : ZQSystemMonitor(nullptr) {}

ZQSystemMonitor::ZQSystemMonitor(ZQContext *newContext) : context(newContext), logLevel(0) {}

ZQSystemMonitor::ZQSystemMonitor(ZQSystemMonitor const &other) : context(nullptr), logLevel(0) { Copy(other); }

ZQSystemMonitor &ZQSystemMonitor::operator=(ZQSystemMonitor const &other) {
  Copy(other);
  return *this;
}

ZQSystemMonitor::~ZQSystemMonitor() = default;

void ZQSystemMonitor::Copy(ZQSystemMonitor const &other) {
  if (this != &other) {
    context = other.context;
    loggerName = other.loggerName;
    logLevel = other.logLevel;
    timer = other.timer;
    names = other.names;
    data = other.data;
  }
}

ZQResult ZQSystemMonitor::SetContext(ZQContext *newContext) {
  context = newContext;
  return Status(Types::StatusCode_t::Success);
}

void ZQSystemMonitor::SetLoggerName(ZQString const &name) { loggerName = name; }

ZQString const &ZQSystemMonitor::GetLoggerName() const { return loggerName; }

void ZQSystemMonitor::SetLogLevel(int level) { logLevel = level; }

int ZQSystemMonitor::GetLogLevel() const { return logLevel; }

ZQResult ZQSystemMonitor::Initialize() {
  if (logLevel == 0) {
    logLevel = InfoLevel;
  }
  // The monitor's own logger is forced on; its other settings are the owner's.
  if (context != nullptr && !loggerName.IsEmpty()) {
    ZQLogger *logger = context->GetLogging().GetLogger(loggerName, ZQString());
    if (logger != nullptr) {
      if (logger->GetLevel() == 0) {
        logger->SetLevel(logLevel);
      }
      if (logger->IsOff()) {
        logger->On();
      }
    }
  }
  timer.Reset();
  names.Clear();
  data.Clear();
  names.insert(std::begin(SelectedNames), std::end(SelectedNames));

  ZQString buildLine("ZQ build date: ");
  buildLine += BuildInfo::GetBuildDate();
  buildLine += ' ';
  buildLine += BuildInfo::GetBuildTime();
  return Log(buildLine);
}

bool ZQSystemMonitor::IsInitialized() const { return !names.empty(); }

ZQResult ZQSystemMonitor::Log(ZQString const &label) {
  ZQResult const result = CollectMonitorData();
  if (!result.OK() || context == nullptr) {
    return result;
  }
  ZQLogging &logging = context->GetLogging();
  ZQLogger *logger = loggerName.IsEmpty() ? nullptr : logging.GetLogger(loggerName, ZQString());
  bool const isOn = loggerName.IsEmpty() ? logging.IsOn() : logger != nullptr && logger->IsOn();
  if (!isOn) {
    return result;
  }

  ZQString line;
  line.Reserve(1024);
  if (!label.IsEmpty()) {
    line += '[';
    line += label;
    line += "] ";
  }
  for (auto entry = data.begin(); entry != data.end(); ++entry) {
    if (entry != data.begin()) {
      line += ", ";
    }
    line += entry->first;
    line += " = ";
    line += entry->second;
  }
  if (logger != nullptr) {
    logger->Log(logLevel, line, -1);
  } else {
    logging(logLevel, line, -1);
  }
  return result;
}

void ZQSystemMonitor::Reset() {
  loggerName.Clear();
  logLevel = 0;
  timer.Reset();
  names.Clear();
  data.Clear();
}

ZQString ZQSystemMonitor::ToString(ZQString const &prefix, ZQString const &title) const {
  ZQString text;
  if (!title.IsEmpty()) {
    text += prefix;
    text += title;
    text += ZQString::GetNewline();
  }
  if (!IsInitialized()) {
    text += prefix;
    text += ZQString::GetIndent();
    text += "<not initialized>";
    text += ZQString::GetNewline();
    return text;
  }
  text += prefix;
  text += "LoggerName = '";
  text += loggerName;
  text += "'";
  text += ZQString::GetNewline();
  if (logLevel != 0) {
    text += prefix;
    text += "LogLevel = ";
    text.Add(logLevel, nullptr);
    text += ZQString::GetNewline();
  }
  return text;
}

ZQResult ZQSystemMonitor::CollectMonitorData() {
  data.Clear();
  ZQResult const result = ReadProcStatusFile(true);
  if (names.count(ElapsedTimeName) != 0) {
    ZQString elapsed;
    elapsed.Add(timer.GetElapsedTimeInSeconds(true), nullptr);
    elapsed += " sec";
    data[ElapsedTimeName] = elapsed;
  }
  return result;
}

ZQResult ZQSystemMonitor::ReadProcStatusFile(bool report) {
  char name[256];
  int const length = std::snprintf(name, sizeof name, "/proc/%lld/status", static_cast<long long>(ZQOSUtil::GetPID()));
  if (length < 0 || length >= static_cast<int>(sizeof name)) {
    Push(context, report, "constructing process status filename failed.");
    return Status(Types::StatusCode_t::SystemMonitorReadProcStatusError);
  }
  std::ifstream in(name);
  if (!in) {
    ZQString message("opening of process status file '");
    message += name;
    message += "' failed!";
    Push(context, report, message);
    return Status(Types::StatusCode_t::SystemMonitorReadProcStatusError);
  }
  ZQString key;
  ZQString value;
  while (ReadStatusLine(in, key, value)) {
    key.Strip();
    if (!key.IsEmpty() && IsSelected(key)) {
      data[key] = value.Strip();
    }
  }
  return Status(Types::StatusCode_t::Success);
}

// Nothing selected yet lets every line through.
bool ZQSystemMonitor::IsSelected(ZQString const &name) const { return names.empty() || names.count(name) != 0; }

} // namespace Velmora::Tessara::ZQ::Core

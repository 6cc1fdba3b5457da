// The system monitor on every rank: its lines, their figures, levels, a missing status file.
#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/logging/ZQLogStreamHandler.h>
#include <zqcore/logging/ZQLogger.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/SystemMonitor.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQSystemMonitor.h>

#include "MpiTestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Velmora::Tessara::ZQ::Core;

namespace {

constexpr long long ReadProcStatusError = static_cast<long long>(Types::StatusCode_t::SystemMonitorReadProcStatusError);

// The figure in kB of a "Vm" line of this process's status file.
double StatusFigure(std::string const &key) {
  std::ifstream in("/proc/self/status");
  std::string line;
  while (std::getline(in, line)) {
    if (line.rfind(key + ":", 0) == 0) {
      return std::stod(line.substr(key.size() + 1));
    }
  }
  ADD_FAILURE() << key << " is not in /proc/self/status";
  return -1;
}

// The entries of a monitor line "[label] name = value, name = value".
std::map<std::string, std::string> Entries(std::string line) {
  std::map<std::string, std::string> entries;
  if (!line.empty() && line[0] == '[') {
    line = line.substr(line.find("] ") + 2);
  }
  std::regex const entry("([^=,]+) = ([^,]*)(, |$)");
  for (std::sregex_iterator it(line.begin(), line.end(), entry), end; it != end; ++it) {
    entries[(*it)[1]] = (*it)[2];
  }
  return entries;
}

// The number in a value such as "1234 kB" or "0.5 sec", checked for its unit.
double Figure(std::string const &value, std::string const &unit) {
  std::smatch match;
  EXPECT_TRUE(std::regex_match(value, match, std::regex("([-0-9.e+]+) " + unit))) << value;
  return match.empty() ? -1.0 : std::stod(match[1]);
}

// A context whose registry has a logger "monitor" that writes into a string.
class MonitorLines : public ::testing::Test {
protected:
  void SetUp() override { AddStream("monitor", out, logger); }

  void AddStream(char const *name, std::ostringstream &stream, ZQLogger *&into) {
    into = context.GetLogging().GetLogger(name, "Logger");
    ZQLogHandler *handler = new ZQLogStreamHandler(&stream);
    into->AddHandler("stream", handler);
  }

  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    std::istringstream in(out.str());
    for (std::string line; std::getline(in, line);) {
      lines.push_back(line);
    }
    out.str("");
    return lines;
  }

  // The streams outlive the context, whose handlers may flush them when they go.
  std::ostringstream out;
  std::ostringstream secondOut;
  ZQContext context;
  ZQLogger *logger = nullptr;
};

} // namespace

TEST_F(MonitorLines, InitializeLogsTheBuildDateThenEachLogOneLineOfFiguresSinceTheLastSample) {
  ZQSystemMonitor monitor(&context);
  monitor.SetLoggerName("monitor");
  ASSERT_EQ(monitor.Initialize().GetStatusCode(), 0);
  EXPECT_TRUE(monitor.IsInitialized());
  EXPECT_EQ(logger->GetLevel(), 20);

  std::vector<std::string> lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].rfind("[ZQ build date: ", 0), 0u) << lines[0];

  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  ASSERT_EQ(monitor.Log("step one").GetStatusCode(), 0);
  ASSERT_EQ(monitor.Log("").GetStatusCode(), 0);
  lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  // The chosen names in the order of their texts.
  EXPECT_TRUE(std::regex_match(lines[0], std::regex("\\[step one\\] ElapsedTime = [^ ]+ sec, VmHWM = [0-9]+ kB, "
                                                    "VmPeak = [0-9]+ kB, VmRSS = [0-9]+ kB, VmSize = [0-9]+ kB")))
      << lines[0];
  std::map<std::string, std::string> const entries = Entries(lines[0]);

  // Peaks only grow: the line's peak figures lie at or below those read afterwards.
  double const peak = Figure(entries.at("VmPeak"), "kB");
  double const hwm = Figure(entries.at("VmHWM"), "kB");
  EXPECT_GT(Figure(entries.at("VmRSS"), "kB"), 0);
  EXPECT_LE(Figure(entries.at("VmRSS"), "kB"), hwm);
  EXPECT_LE(Figure(entries.at("VmSize"), "kB"), peak);
  EXPECT_LE(peak, StatusFigure("VmPeak"));
  EXPECT_LE(hwm, StatusFigure("VmHWM"));

  // The elapsed time runs from the last sample; an empty label has no brackets.
  EXPECT_GE(Figure(entries.at("ElapsedTime"), "sec"), 0.2);
  EXPECT_EQ(lines[1].rfind("ElapsedTime = ", 0), 0u) << lines[1];
  EXPECT_LT(Figure(Entries(lines[1]).at("ElapsedTime"), "sec"), 0.2);
  // Each rank writes its own line.
  EXPECT_TRUE(zqtest::AllRanks(!entries.empty()));
}

TEST_F(MonitorLines, WithoutALoggerNameTheLineGoesToEveryLogger) {
  ZQLogger *second = nullptr;
  AddStream("second", secondOut, second);
  second->SetLevel(10);
  logger->SetLevel(10);
  ZQSystemMonitor monitor(&context);
  ASSERT_EQ(monitor.Initialize().GetStatusCode(), 0);
  ASSERT_EQ(monitor.Log("all").GetStatusCode(), 0);
  EXPECT_EQ(Lines().size(), 2u);
  EXPECT_NE(secondOut.str().find("[all] ElapsedTime = "), std::string::npos);
}

TEST_F(MonitorLines, LevelsAndTheSwitchOfTheNamedLogger) {
  ZQSystemMonitor monitor(&context);
  monitor.SetLoggerName("monitor");
  monitor.SetLogLevel(30);
  logger->Off();
  ASSERT_EQ(monitor.Initialize().GetStatusCode(), 0);
  EXPECT_EQ(monitor.GetLogLevel(), 30);
  EXPECT_TRUE(logger->IsOn());
  EXPECT_EQ(logger->GetLevel(), 30);
  EXPECT_EQ(Lines().size(), 1u);

  logger->Off();
  EXPECT_EQ(monitor.Log("silent").GetStatusCode(), 0);
  EXPECT_TRUE(Lines().empty());

  // An existing logger keeps its level, so lines below it do not pass.
  logger->On();
  logger->SetLevel(40);
  monitor.SetLogLevel(0);
  ASSERT_EQ(monitor.Initialize().GetStatusCode(), 0);
  EXPECT_EQ(monitor.GetLogLevel(), 20);
  EXPECT_EQ(logger->GetLevel(), 40);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(MonitorLines, WithoutNamesEveryStatusLineIsReportedWithItsColonsDropped) {
  char oldName[17] = {};
  prctl(PR_GET_NAME, oldName);
  prctl(PR_SET_NAME, "foo:bar");
  ZQSystemMonitor monitor(&context);
  monitor.SetLoggerName("monitor");
  logger->SetLevel(20);
  monitor.SetLogLevel(20);
  ASSERT_EQ(monitor.Log("raw").GetStatusCode(), 0);
  prctl(PR_SET_NAME, oldName);
  std::vector<std::string> const lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  std::map<std::string, std::string> const entries = Entries(lines[0]);
  EXPECT_EQ(entries.count("ElapsedTime"), 0u) << "the time needs its name chosen";
  EXPECT_EQ(entries.at("Name"), "foobar");
  EXPECT_EQ(entries.at("Pid"), std::to_string(getpid()));
  EXPECT_GT(Figure(entries.at("VmHWM"), "kB"), 0);
  EXPECT_GT(entries.size(), 20u);
}

TEST(SystemMonitor, NullContextTextFormResetCopiesAndThePublicFace) {
  ZQSystemMonitor alone;
  EXPECT_EQ(alone.Initialize().GetStatusCode(), 0);
  EXPECT_EQ(alone.Log("x").GetStatusCode(), 0);
  EXPECT_EQ(alone.GetLogLevel(), 20);

  ZQContext context;
  ZQSystemMonitor monitor(&context);
  EXPECT_EQ(monitor.ToString("  ", "Monitor"), "  Monitor\n      <not initialized>\n");
  monitor.SetLoggerName("none");
  context.GetLogging().GetLogger("none", "Logger");
  ASSERT_EQ(monitor.Initialize().GetStatusCode(), 0);
  EXPECT_EQ(monitor.ToString("> ", ""), "> LoggerName = 'none'\n> LogLevel = 20\n");
  ZQSystemMonitor copy(monitor);
  monitor.Reset();
  EXPECT_EQ(monitor.ToString("", ""), "    <not initialized>\n");
  EXPECT_EQ(monitor.GetLogLevel(), 0);
  EXPECT_TRUE(copy.IsInitialized());
  EXPECT_EQ(copy.GetLoggerName(), "none");

  Context outer;
  SystemMonitor outerMonitor(&outer);
  outerMonitor.SetLoggerName("none");
  EXPECT_TRUE(outerMonitor.Initialize().OK());
  EXPECT_STREQ(outerMonitor.ToString("", "").c_str(), "LoggerName = 'none'\nLogLevel = 20\n");
  SystemMonitor outerCopy(outerMonitor);
  outerMonitor.Reset();
  EXPECT_TRUE(outerCopy.IsInitialized());
  EXPECT_FALSE(outerMonitor.IsInitialized());
}

// A child process in its own mount namespace with an empty /proc: sampling fails with
// SystemMonitorReadProcStatusError, nothing is logged, and only a reporting read pushes
// its message.
TEST(SystemMonitor, WithoutAStatusFileEverySampleFails) {
  ZQContext context;
  pid_t const child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", "/proc", "tmpfs", 0, nullptr) != 0) {
      _exit(77);
    }
    struct Probe : ZQSystemMonitor {
      using ZQSystemMonitor::ReadProcStatusFile;
      using ZQSystemMonitor::ZQSystemMonitor;
    } monitor(&context);
    std::ostringstream lines;
    ZQLogHandler *handler = new ZQLogStreamHandler(&lines);
    context.GetLogging().GetLogger("probe", "Logger")->AddHandler("stream", handler);
    monitor.SetLoggerName("probe");
    ZQErrorStack &stack = context.GetErrorStack();
    stack.Clear();
    bool ok = monitor.ReadProcStatusFile(false).GetStatusCode() == ReadProcStatusError && stack.IsEmpty();
    ok = ok && monitor.Initialize().GetStatusCode() == ReadProcStatusError;
    std::string const expected =
        "opening of process status file '/proc/" + std::to_string(getpid()) + "/status' failed!";
    ok = ok && stack.GetNMsg() == 1 && stack.GetLastMsg() == expected.c_str();
    ok = ok && monitor.Log("x").GetStatusCode() == ReadProcStatusError && lines.str().empty();
    _exit(ok ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == 77) {
    GTEST_SKIP() << "no mount namespace for an empty /proc here";
  }
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

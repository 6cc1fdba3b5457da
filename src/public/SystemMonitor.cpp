#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Context.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/public/SystemMonitor.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQSystemMonitor.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

namespace {

ZQContext *Inner(Context *context) { return context != nullptr ? context->GetContext() : nullptr; }

} // namespace

SystemMonitor::SystemMonitor(Context *context) : monitor(new ZQSystemMonitor(Inner(context))) {}

SystemMonitor::SystemMonitor(SystemMonitor const &other) : monitor(new ZQSystemMonitor()) { Copy(other); }

SystemMonitor &SystemMonitor::operator=(SystemMonitor const &other) {
  Copy(other);
  return *this;
}

SystemMonitor::~SystemMonitor() {
  delete monitor;
  monitor = nullptr;
}

void SystemMonitor::Copy(SystemMonitor const &other) {
  if (monitor != other.monitor) {
    *monitor = *other.monitor;
  }
}

Result SystemMonitor::SetContext(Context *context) { return Result(monitor->SetContext(Inner(context))); }
void SystemMonitor::SetLoggerName(String const &name) { monitor->SetLoggerName(*name.GetString()); }
String SystemMonitor::GetLoggerName() const { return detail::ToPublic(ZQString(monitor->GetLoggerName())); }
void SystemMonitor::SetLogLevel(int level) { monitor->SetLogLevel(level); }
int SystemMonitor::GetLogLevel() const { return monitor->GetLogLevel(); }
Result SystemMonitor::Initialize() { return Result(monitor->Initialize()); }
bool SystemMonitor::IsInitialized() const { return monitor->IsInitialized(); }
Result SystemMonitor::Log(String const &label) { return Result(monitor->Log(*label.GetString())); }
void SystemMonitor::Reset() { monitor->Reset(); }

String SystemMonitor::ToString(String const &prefix, String const &title) const {
  return detail::ToPublic(monitor->ToString(*prefix.GetString(), *title.GetString()));
}

} // namespace Velmora::Tessara::ZQ::Core

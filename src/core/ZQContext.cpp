#include <zqcore/core/ZQContext.h>

namespace Velmora::Tessara::ZQ::Core {

ZQContext::ZQContext() : verbosityLevel(-1), debugLevel(-1) { errorStack.SetLogging(&logging); }

ZQContext::~ZQContext() = default;

void ZQContext::SetVerbosityLevel(int level) { verbosityLevel = level; }

int ZQContext::GetVerbosityLevel() const { return verbosityLevel; }

void ZQContext::SetDebugLevel(int level) { debugLevel = level; }

int ZQContext::GetDebugLevel() const { return debugLevel; }

ZQLogging &ZQContext::GetLogging() { return logging; }

ZQErrorStack &ZQContext::GetErrorStack() { return errorStack; }

ZQMPT &ZQContext::GetMPT() { return mpt; }

int ZQContext::GetNProcs(ZQContext const *context) { return context != nullptr ? context->mpt.GetNProcs() : 1; }

int ZQContext::GetProcRank(ZQContext const *context) { return context != nullptr ? context->mpt.GetProcRank() : 0; }

} // namespace Velmora::Tessara::ZQ::Core

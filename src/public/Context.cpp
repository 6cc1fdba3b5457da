#include <zqcore/core/ZQContext.h>
#include <zqcore/public/Context.h>

namespace Velmora::Tessara::ZQ::Core {

namespace {

ZQLogging *LoggingOf(ZQContext *context) { return context != nullptr ? &context->GetLogging() : nullptr; }

ZQErrorStack *ErrorStackOf(ZQContext *context) { return context != nullptr ? &context->GetErrorStack() : nullptr; }

ZQMPT *MPTOf(ZQContext *context) { return context != nullptr ? &context->GetMPT() : nullptr; }

} // namespace

Context::Context() : Context(new ZQContext(), true) {}

Context::Context(ZQContext *borrowed) : Context(borrowed, false) {}

Context::Context(ZQContext *inner, bool isOwned)
    : context(inner), owned(isOwned), logging(LoggingOf(inner)), errorStack(ErrorStackOf(inner)), mpt(MPTOf(inner)) {}

// The member wrappers go after the inner context; they only borrow, so they do not
// touch what it held.
Context::~Context() {
  if (owned) {
    delete context;
  }
  context = nullptr;
}

int Context::GetVerbosityLevel() const { return context != nullptr ? context->GetVerbosityLevel() : 0; }
void Context::SetVerbosityLevel(int level) {
  if (context != nullptr) {
    context->SetVerbosityLevel(level);
  }
}
int Context::GetDebugLevel() const { return context != nullptr ? context->GetDebugLevel() : 0; }
void Context::SetDebugLevel(int level) {
  if (context != nullptr) {
    context->SetDebugLevel(level);
  }
}
Logging &Context::GetLogging() { return logging; }
ErrorStack &Context::GetErrorStack() { return errorStack; }
MPT &Context::GetMPT() { return mpt; }
ZQContext *Context::GetContext() { return context; }

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/public/ErrorStack.h>
#include <zqcore/public/String.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

using detail::InnerOf;
using detail::ToPublic;

ErrorStack::ErrorStack() : errorStack(new ZQErrorStack()), owned(true) {}

ErrorStack::ErrorStack(ZQErrorStack *borrowed) : errorStack(borrowed), owned(false) {}

ErrorStack::ErrorStack(ErrorStack const &other) : ErrorStack() { Copy(other); }

ErrorStack &ErrorStack::operator=(ErrorStack const &other) {
  Copy(other);
  return *this;
}

ErrorStack::~ErrorStack() {
  if (owned) {
    delete errorStack;
  }
  errorStack = nullptr;
}

void ErrorStack::Copy(ErrorStack const &other) {
  if (errorStack != nullptr && other.errorStack != nullptr && errorStack != other.errorStack) {
    *errorStack = *other.errorStack;
  }
}

void ErrorStack::operator()(String const &message) {
  if (errorStack != nullptr) {
    (*errorStack)(*message.GetString());
  }
}
void ErrorStack::operator()(char const *message) {
  if (errorStack != nullptr) {
    (*errorStack)(message);
  }
}
void ErrorStack::operator()(wchar_t const *message) {
  if (errorStack != nullptr) {
    (*errorStack)(message);
  }
}
void ErrorStack::Push(char const *message) {
  if (errorStack != nullptr) {
    errorStack->Push(message);
  }
}
void ErrorStack::Push(wchar_t const *message) {
  if (errorStack != nullptr) {
    errorStack->Push(message);
  }
}

String ErrorStack::GetLastMsg() const { return errorStack != nullptr ? ToPublic(errorStack->GetLastMsg()) : String(); }
String ErrorStack::Pop() { return errorStack != nullptr ? ToPublic(errorStack->Pop()) : String(); }
void ErrorStack::SetMsgFromErrno() {
  if (errorStack != nullptr) {
    errorStack->SetMsgFromErrno();
  }
}
void ErrorStack::SetMsgFromLastError() {
  if (errorStack != nullptr) {
    errorStack->SetMsgFromLastError();
  }
}

bool ErrorStack::GetAutoLogMsg() const { return errorStack != nullptr && errorStack->GetAutoLogMsg(); }
void ErrorStack::SetAutoLogMsg(bool on) {
  if (errorStack != nullptr) {
    errorStack->SetAutoLogMsg(on);
  }
}
long long ErrorStack::GetMaxNMsg() const { return errorStack != nullptr ? errorStack->GetMaxNMsg() : 0; }
void ErrorStack::SetMaxNMsg(long long maxNMsg) {
  if (errorStack != nullptr) {
    errorStack->SetMaxNMsg(maxNMsg);
  }
}
long long ErrorStack::GetNMsg() const { return errorStack != nullptr ? errorStack->GetNMsg() : 0; }
bool ErrorStack::IsEmpty() const { return errorStack == nullptr || errorStack->IsEmpty(); }
bool ErrorStack::IsInitialized() const { return errorStack != nullptr && errorStack->IsInitialized(); }
bool ErrorStack::IsLastMsgSet() const { return errorStack != nullptr && errorStack->IsLastMsgSet(); }
bool ErrorStack::IsMsgSet() const { return errorStack != nullptr && errorStack->IsMsgSet(); }
void ErrorStack::SetLogging(Logging *target) {
  if (errorStack != nullptr) {
    errorStack->SetLogging(InnerOf(target));
  }
}
void ErrorStack::Clear() {
  if (errorStack != nullptr) {
    errorStack->Clear();
  }
}
void ErrorStack::Reset() {
  if (errorStack != nullptr) {
    errorStack->Reset();
  }
}

} // namespace Velmora::Tessara::ZQ::Core

#include <zqcore/public/SHA1.h>
#include <zqcore/public/String.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQSHA1.h>

#include "public/detail/FacadeAccess.h"

namespace Velmora::Tessara::ZQ::Core {

SHA1::SHA1() : sha1(new ZQSHA1()) {}
SHA1::SHA1(unsigned char const *data, long long size) : sha1(new ZQSHA1(data, size)) {}
SHA1::SHA1(String const &name) : sha1(new ZQSHA1(nullptr, name.c_str())) {}
SHA1::SHA1(char const *name) : sha1(new ZQSHA1(nullptr, name)) {}
SHA1::SHA1(wchar_t const *name) : sha1(new ZQSHA1(nullptr, name)) {}
SHA1::SHA1(std::FILE *file) : sha1(new ZQSHA1(file)) {}
SHA1::SHA1(SHA1 const &other) : sha1(new ZQSHA1()) { Copy(other); }

SHA1 &SHA1::operator=(SHA1 const &other) {
  Copy(other);
  return *this;
}

SHA1::~SHA1() {
  delete sha1;
  sha1 = nullptr;
}

void SHA1::Copy(SHA1 const &other) {
  if (sha1 != other.sha1) {
    *sha1 = *other.sha1;
  }
}

void SHA1::Initialize() { sha1->Initialize(); }
void SHA1::Reset() { sha1->Reset(); }
void SHA1::Update(unsigned char const *data, long long size) { sha1->Update(data, size); }
void SHA1::Update(std::FILE *file) { sha1->Update(file); }
void SHA1::Finalize() { sha1->Finalize(); }
String SHA1::ToString(char const *unused) const { return detail::ToPublic(sha1->ToString(unused)); }
void SHA1::AsString(char *const out) const { sha1->AsString(out); }
bool SHA1::IsInitialized() const { return sha1->IsInitialized(); }

} // namespace Velmora::Tessara::ZQ::Core

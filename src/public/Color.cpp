#include <zqcore/core/ZQResult.h>
#include <zqcore/public/Color.h>
#include <zqcore/public/Result.h>
#include <zqcore/public/String.h>
#include <zqcore/values/ZQColor.h>

#include "public/detail/FacadeAccess.h"
#include "public/detail/InnerOf.h"

namespace Velmora::Tessara::ZQ::Core {

Color::Color() : color(new ZQColor()) {}

Color::Color(ZQColor const &other) : color(new ZQColor(other)) {}

Color::Color(Color const &other) : color(new ZQColor()) { Copy(other); }

Color &Color::operator=(Color const &other) {
  Copy(other);
  return *this;
}

Color::~Color() {
  delete color;
  color = nullptr;
}

void Color::Copy(Color const &other) {
  if (color != other.color) {
    *color = *other.color;
  }
}

void Color::Reset() { color->Reset(); }
bool Color::IsInitialized() const { return color->IsInitialized(); }
int Color::Compare(Color const &other) const { return color->Compare(*other.color); }

Result Color::InitializeRGBA(float r, float g, float b, float a) { return color->InitializeRGBA(r, g, b, a); }
Result Color::InitializeRGBA8(int r, int g, int b, int a) { return color->InitializeRGBA8(r, g, b, a); }
Result Color::InitializeRGBA16(int r, int g, int b, int a) { return color->InitializeRGBA16(r, g, b, a); }
Result Color::InitializeRGBA8(unsigned int packed) { return color->InitializeRGBA8(packed); }
Result Color::InitializeRGBA8(String const &text, Context *context) {
  return color->InitializeRGBA8(detail::InnerOf(text), detail::InnerOf(context));
}

void Color::SetRGBA8(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
  color->SetRGBA8(r, g, b, a);
}
void Color::SetRGBA8(unsigned int packed) { color->SetRGBA8(packed); }
void Color::SetRGBA16(int r, int g, int b, int a) { color->SetRGBA16(r, g, b, a); }
void Color::GetRGBA8(unsigned char &r, unsigned char &g, unsigned char &b, unsigned char &a) const {
  color->GetRGBA8(r, g, b, a);
}
void Color::GetRGBA8(unsigned int &packed) const { color->GetRGBA8(packed); }
void Color::GetRGBA16(int &r, int &g, int &b, int &a) const { color->GetRGBA16(r, g, b, a); }

String Color::ToString(char const *format) const { return detail::ToPublic(color->ToString(format)); }

ZQColor *Color::GetColor() { return color; }
ZQColor const *Color::GetColor() const { return color; }

} // namespace Velmora::Tessara::ZQ::Core

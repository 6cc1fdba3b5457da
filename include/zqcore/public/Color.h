// Color: the public face of ZQColor.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// A color with alpha that owns its inner ZQColor; see ZQColor for the channel forms.
/// Copies are independent.
class ZQCORE_EXPORT Color {
public:
  Color();
  /// A copy of `color`.
  Color(ZQColor const &color);
  Color(Color const &other);
  Color &operator=(Color const &other);
  virtual ~Color();

  void Reset();
  bool IsInitialized() const;
  int Compare(Color const &other) const;

  Result InitializeRGBA(float r, float g, float b, float a);
  Result InitializeRGBA8(int r, int g, int b, int a);
  Result InitializeRGBA16(int r, int g, int b, int a);
  Result InitializeRGBA8(unsigned int packed);
  Result InitializeRGBA8(String const &text, Context *context);

  void SetRGBA8(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
  void SetRGBA8(unsigned int packed);
  void SetRGBA16(int r, int g, int b, int a);
  void GetRGBA8(unsigned char &r, unsigned char &g, unsigned char &b, unsigned char &a) const;
  void GetRGBA8(unsigned int &packed) const;
  void GetRGBA16(int &r, int &g, int &b, int &a) const;

  String ToString(char const *format) const;

  /// The inner object, owned by this one.
  ZQColor *GetColor();
  ZQColor const *GetColor() const;

private:
  void Copy(Color const &other);

  ZQColor *color;
};

} // namespace Velmora::Tessara::ZQ::Core

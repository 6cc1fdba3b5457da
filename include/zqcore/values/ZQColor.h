// ZQColor: a color with alpha, four 16-bit channels in one word.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// One 64-bit word: blue in bits 0-15, green 16-31, red 32-47, alpha 48-63. The word 0
/// means "not initialized", so a transparent black set on purpose counts as such.
/// The 8-bit forms are the high byte of a channel: 255 is stored as 65280, and reading
/// 8 bits drops the low byte without rounding. The packed 32-bit form is 0xAARRGGBB.
class ZQCORE_EXPORT ZQColor {
public:
  ZQColor();
  ZQColor(ZQColor const &other);
  ZQColor &operator=(ZQColor const &other);
  virtual ~ZQColor();

  /// Back to not initialized.
  void Reset();
  bool IsInitialized() const;
  /// Compares the words as unsigned numbers (alpha first, then red, green, blue): -1, 0, 1.
  int Compare(ZQColor const &other) const;

  /// The checked initializers test r, g, b, a in turn; the first channel out of range gives
  /// ColorChannelValueOutOfRange with no message. On any failure the word stays unchanged.
  /// Channels in [0, 1], stored times 65535 rounded half away from zero.
  ZQResult InitializeRGBA(float r, float g, float b, float a);
  /// Channels in [0, 255].
  ZQResult InitializeRGBA8(int r, int g, int b, int a);
  /// Channels in [0, 65535].
  ZQResult InitializeRGBA16(int r, int g, int b, int a);
  /// Always succeeds.
  ZQResult InitializeRGBA8(unsigned int packed);
  /// "r, g, b" or "r, g, b, a" in 8-bit channels, optionally in parentheses; commas may be
  /// left out. Three values give an opaque color. Parse failures push a message on the
  /// context's error stack and give ColorInitializationError.
  ZQResult InitializeRGBA8(ZQString const &text, ZQContext *context);

  /// Store without checks.
  void SetRGBA8(unsigned char r, unsigned char g, unsigned char b, unsigned char a);
  void SetRGBA8(unsigned int packed);
  /// Keeps the low 16 bits of each channel.
  void SetRGBA16(int r, int g, int b, int a);

  void GetRGBA8(unsigned char &r, unsigned char &g, unsigned char &b, unsigned char &a) const;
  void GetRGBA8(unsigned int &packed) const;
  void GetRGBA16(int &r, int &g, int &b, int &a) const;

  /// "(r, g, b, a)" in 8-bit channels; `format` is accepted (null too) and not used.
  ZQString ToString(char const *format) const;

private:
  void Copy(ZQColor const &other);
  void SetChannels(unsigned long long r, unsigned long long g, unsigned long long b, unsigned long long a);
  unsigned long long Channel(int shift) const;

  unsigned long long word;
};

} // namespace Velmora::Tessara::ZQ::Core

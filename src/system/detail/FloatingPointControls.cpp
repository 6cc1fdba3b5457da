#include "system/detail/FloatingPointControls.h"

#include <zqcore/strings/ZQString.h>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

namespace Velmora::Tessara::ZQ::Core::detail {

namespace {

// Bits of the control word, as the flag names below know them.
constexpr unsigned kFlushDenormals = 0x1000000;
constexpr unsigned kMaskInvalid = 0x10;
constexpr unsigned kMaskDenormal = 0x80000;
constexpr unsigned kMaskZeroDivide = 0x8;
constexpr unsigned kMaskOverflow = 0x4;
constexpr unsigned kMaskUnderflow = 0x2;
constexpr unsigned kMaskInexact = 0x1;
constexpr unsigned kRoundDown = 0x100;
constexpr unsigned kRoundUp = 0x200;
constexpr unsigned kRoundTowardZero = 0x300;

struct Flag {
  unsigned bits;
  bool anyBit;
  char const *name;
};

// In the order of the text. A rounding other than to nearest lists the rounding mask and
// "_RC_CHOP" as well, whatever the direction; that is how the text has always read.
constexpr Flag kFlags[] = {
    {kFlushDenormals, false, "_DN_FLUSH"},
    {kMaskInvalid, false, "_EM_INVALID"},
    {kMaskDenormal, false, "_EM_DENORMAL"},
    {kMaskZeroDivide, false, "_EM_ZERODIVIDE"},
    {kMaskOverflow, false, "_EM_OVERFLOW"},
    {kMaskUnderflow, false, "_EM_UNDERFLOW"},
    {kMaskInexact, false, "_EM_INEXACT"},
    {0x40000, false, "_MCW_IC"},
    {kRoundTowardZero, true, "_MCW_RC"},
    {kRoundTowardZero, true, "_RC_CHOP"},
    {kRoundUp, false, "_RC_UP"},
    {kRoundDown, false, "_RC_DOWN"},
    {0x30000, true, "_MCW_PC"},
    {0x20000, false, "_PC_24"},
    {0x10000, false, "_PC_53"},
};

unsigned CurrentControlWord() {
#if defined(__x86_64__) || defined(__i386__)
  return ControlWordFromMXCSR(_mm_getcsr());
#else
  // Without MXCSR only the rounding is known; exceptions are taken as masked, as they are
  // unless a program enables traps.
  unsigned word = kMaskInvalid | kMaskDenormal | kMaskZeroDivide | kMaskOverflow | kMaskUnderflow | kMaskInexact;
  switch (std::fegetround()) {
  case FE_DOWNWARD:
    return word | kRoundDown;
  case FE_UPWARD:
    return word | kRoundUp;
  case FE_TOWARDZERO:
    return word | kRoundTowardZero;
  default:
    return word;
  }
#endif
}

} // namespace

unsigned ControlWordFromMXCSR(unsigned mxcsr) {
  struct Mapping {
    unsigned mxcsrBits;
    unsigned wordBits;
  };
  static constexpr Mapping kMappings[] = {
      {0x8000 | 0x40, kFlushDenormals}, {0x80, kMaskInvalid},    {0x100, kMaskDenormal}, {0x200, kMaskZeroDivide},
      {0x400, kMaskOverflow},           {0x800, kMaskUnderflow}, {0x1000, kMaskInexact},
  };
  static constexpr unsigned kRounding[] = {0, kRoundDown, kRoundUp, kRoundTowardZero};
  unsigned word = kRounding[(mxcsr >> 13) & 3u];
  for (Mapping const &mapping : kMappings) {
    if ((mxcsr & mapping.mxcsrBits) != 0) {
      word |= mapping.wordBits;
    }
  }
  return word;
}

void FloatingPointControlsText(ZQString &text) {
  text.Clear();
  text.Reserve(1024);
  unsigned const word = CurrentControlWord();
  for (Flag const &flag : kFlags) {
    bool const set = flag.anyBit ? (word & flag.bits) != 0 : (word & flag.bits) == flag.bits;
    if (set) {
      if (!text.IsEmpty()) {
        text += '|';
      }
      text += flag.name;
    }
  }
}

} // namespace Velmora::Tessara::ZQ::Core::detail

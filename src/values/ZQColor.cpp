#include <zqcore/core/Types.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/core/ZQErrorStack.h>
#include <zqcore/core/ZQResult.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/values/ZQColor.h>

#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr int kRedShift = 32;
constexpr int kGreenShift = 16;
constexpr int kBlueShift = 0;
constexpr int kAlphaShift = 48;

char const *const kNoConversion = "no conversion from string to 32-bit integer value was performed, array of 32-bit "
                                  "integer values can not be parsed.";
char const *const kOverflow = "overflow occurred during conversion from string to 32-bit integer value, array of "
                              "32-bit integer values can not be parsed.";
char const *const kUnderflow = "underflow occurred during conversion from string to 32-bit integer value, array of "
                               "32-bit integer values can not be parsed.";

ZQResult StatusOf(Types::StatusCode_t code) { return ZQResult(static_cast<long long>(code)); }

void Report(ZQContext *context, char const *message) {
  if (context != nullptr) {
    context->GetErrorStack().Push(message);
  }
}

template <typename T> bool AllWithin(T low, T high, T r, T g, T b, T a) {
  for (T value : {r, g, b, a}) {
    // Written so that a NaN channel fails as well.
    if (!(value >= low && value <= high)) {
      return false;
    }
  }
  return true;
}

/// value times 65535, the nearer of ceiling and floor of its magnitude (the ceiling on a
/// tie), with the value's sign.
unsigned long long FloatChannel(float value) {
  double const scaled = std::fabs(static_cast<double>(value) * 65535.0);
  double const up = std::ceil(scaled);
  double const down = std::floor(scaled);
  return static_cast<unsigned long long>(up - scaled <= scaled - down ? up : down);
}

/// Whitespace and brackets of every kind separate numbers in a list.
bool IsFiller(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0 || (c != '\0' && std::strchr("()[]{}", c) != nullptr);
}

char const *SkipFiller(char const *p) {
  while (IsFiller(*p)) {
    ++p;
  }
  return p;
}

/// Reads up to `maxCount` 32-bit integers separated by `separator`, which may be missing;
/// text behind the last one wanted is ignored. A value outside the int range fails as an
/// overflow or underflow. Pushes the reason on the context's stack when it fails.
bool ParseInt32List(ZQContext *context, char const *text, std::vector<int> &values, std::size_t maxCount,
                    char separator) {
  values.reserve(maxCount);
  char const *p = text;
  while (true) {
    p = SkipFiller(p);
    if (*p == '\0') {
      if (maxCount < 1 || !values.empty()) {
        return true;
      }
      Report(context, kNoConversion);
      return false;
    }
    errno = 0;
    char *end = nullptr;
    long const value = std::strtol(p, &end, 10);
    if (errno == ERANGE || value > INT_MAX || value < INT_MIN) {
      Report(context, value < 0 ? kUnderflow : kOverflow);
      return false;
    }
    if (end == p) {
      Report(context, kNoConversion);
      return false;
    }
    values.push_back(static_cast<int>(value));
    p = end;
    if (*p == '\0' || values.size() == maxCount) {
      return true;
    }
    if (separator != '\0' && !IsFiller(separator)) {
      p = SkipFiller(p);
      if (*p == separator) {
        ++p;
      }
    }
  }
}

} // namespace

ZQColor::ZQColor() : word(0) {}

ZQColor::ZQColor(ZQColor const &other) : word(0) { Copy(other); }

ZQColor &ZQColor::operator=(ZQColor const &other) {
  Copy(other);
  return *this;
}

ZQColor::~ZQColor() = default;

void ZQColor::Copy(ZQColor const &other) { word = other.word; }

void ZQColor::Reset() { word = 0; }

bool ZQColor::IsInitialized() const { return word != 0; }

int ZQColor::Compare(ZQColor const &other) const { return word < other.word ? -1 : (word > other.word ? 1 : 0); }

void ZQColor::SetChannels(unsigned long long r, unsigned long long g, unsigned long long b, unsigned long long a) {
  word = ((a & 0xFFFFu) << kAlphaShift) | ((r & 0xFFFFu) << kRedShift) | ((g & 0xFFFFu) << kGreenShift) |
         ((b & 0xFFFFu) << kBlueShift);
}

unsigned long long ZQColor::Channel(int shift) const { return (word >> shift) & 0xFFFFu; }

ZQResult ZQColor::InitializeRGBA(float r, float g, float b, float a) {
  if (!AllWithin(0.0f, 1.0f, r, g, b, a)) {
    return StatusOf(Types::StatusCode_t::ColorChannelValueOutOfRange);
  }
  SetChannels(FloatChannel(r), FloatChannel(g), FloatChannel(b), FloatChannel(a));
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQColor::InitializeRGBA8(int r, int g, int b, int a) {
  if (!AllWithin(0, 255, r, g, b, a)) {
    return StatusOf(Types::StatusCode_t::ColorChannelValueOutOfRange);
  }
  SetRGBA8(static_cast<unsigned char>(r), static_cast<unsigned char>(g), static_cast<unsigned char>(b),
           static_cast<unsigned char>(a));
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQColor::InitializeRGBA16(int r, int g, int b, int a) {
  if (!AllWithin(0, 65535, r, g, b, a)) {
    return StatusOf(Types::StatusCode_t::ColorChannelValueOutOfRange);
  }
  SetRGBA16(r, g, b, a);
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQColor::InitializeRGBA8(unsigned int packed) {
  SetRGBA8(packed);
  return StatusOf(Types::StatusCode_t::Success);
}

ZQResult ZQColor::InitializeRGBA8(ZQString const &text, ZQContext *context) {
  char const *p = text.c_str();
  while (std::isspace(static_cast<unsigned char>(*p)) != 0) {
    ++p;
  }
  if (*p == '(') {
    ++p;
  }
  std::vector<int> values;
  if (!ParseInt32List(context, p, values, 4, ',')) {
    return StatusOf(Types::StatusCode_t::ColorInitializationError);
  }
  if (values.size() == 3) {
    return InitializeRGBA8(values[0], values[1], values[2], 255);
  }
  if (values.size() == 4) {
    return InitializeRGBA8(values[0], values[1], values[2], values[3]);
  }
  if (context != nullptr) {
    ZQString message("wrong number of values (=");
    message.Add(static_cast<long long>(values.size()), nullptr);
    message += ") parsed, color can not be parsed.";
    context->GetErrorStack().Push(message.c_str());
  }
  return StatusOf(Types::StatusCode_t::ColorInitializationError);
}

void ZQColor::SetRGBA8(unsigned char r, unsigned char g, unsigned char b, unsigned char a) {
  SetChannels(static_cast<unsigned long long>(r) << 8, static_cast<unsigned long long>(g) << 8,
              static_cast<unsigned long long>(b) << 8, static_cast<unsigned long long>(a) << 8);
}

void ZQColor::SetRGBA8(unsigned int packed) {
  SetRGBA8(static_cast<unsigned char>(packed >> 16), static_cast<unsigned char>(packed >> 8),
           static_cast<unsigned char>(packed), static_cast<unsigned char>(packed >> 24));
}

void ZQColor::SetRGBA16(int r, int g, int b, int a) {
  SetChannels(static_cast<unsigned int>(r), static_cast<unsigned int>(g), static_cast<unsigned int>(b),
              static_cast<unsigned int>(a));
}

void ZQColor::GetRGBA8(unsigned char &r, unsigned char &g, unsigned char &b, unsigned char &a) const {
  r = static_cast<unsigned char>(Channel(kRedShift) >> 8);
  g = static_cast<unsigned char>(Channel(kGreenShift) >> 8);
  b = static_cast<unsigned char>(Channel(kBlueShift) >> 8);
  a = static_cast<unsigned char>(Channel(kAlphaShift) >> 8);
}

void ZQColor::GetRGBA8(unsigned int &packed) const {
  unsigned char r, g, b, a;
  GetRGBA8(r, g, b, a);
  packed = (static_cast<unsigned int>(a) << 24) | (static_cast<unsigned int>(r) << 16) |
           (static_cast<unsigned int>(g) << 8) | static_cast<unsigned int>(b);
}

void ZQColor::GetRGBA16(int &r, int &g, int &b, int &a) const {
  r = static_cast<int>(Channel(kRedShift));
  g = static_cast<int>(Channel(kGreenShift));
  b = static_cast<int>(Channel(kBlueShift));
  a = static_cast<int>(Channel(kAlphaShift));
}

ZQString ZQColor::ToString(char const * /*format*/) const {
  unsigned char channels[4];
  GetRGBA8(channels[0], channels[1], channels[2], channels[3]);
  ZQString text;
  text.Reserve(128);
  text += '(';
  for (int i = 0; i < 4; ++i) {
    if (i > 0) {
      text += ", ";
    }
    text.Add(static_cast<int>(channels[i]), nullptr);
  }
  text += ')';
  return text;
}

} // namespace Velmora::Tessara::ZQ::Core

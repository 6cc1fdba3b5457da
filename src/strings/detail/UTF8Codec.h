// The kernels of UTF-8 <-> UTF-32 conversion: a sizing pass and a converting pass each way.
#pragma once

#include <cstddef>

namespace Velmora::Tessara::ZQ::Core::detail {

/// What the sizing pass learns of UTF-8: the number of UTF-32 units it decodes to, each
/// maximal ill-formed subsequence counting as one U+FFFD, and whether it is well-formed.
struct UTF8Census {
  std::size_t units;
  bool wellFormed;
};

/// Sizes the `size` bytes before the terminator at source[size].
UTF8Census CensusUTF8(unsigned char const *source, std::size_t size);

/// Decodes the same bytes into exactly `census.units` units at `out`.
void DecodeUTF8(unsigned char const *source, std::size_t size, UTF8Census const &census, wchar_t *out);

/// Bytes of UTF-8 for `units` units; a unit that is no scalar value takes those of U+FFFD.
std::size_t EncodedUTF8Size(wchar_t const *source, std::size_t units);

/// Encodes into exactly `bytes` bytes at `out`, as sized by EncodedUTF8Size.
void EncodeUTF8(wchar_t const *source, std::size_t units, char *out, std::size_t bytes);

} // namespace Velmora::Tessara::ZQ::Core::detail

// UTF-8 <-> UTF-32 kernels. Well-formed text takes vector and branch-free paths (AVX2 for
// UTF-8, chosen at run time; SSE2 for UTF-32); text with ill-formed bytes is decoded byte by
// byte, each maximal ill-formed subsequence giving U+FFFD.
#include "strings/detail/UTF8Codec.h"

#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#define ZQ_UTF8_X86_64 1
#endif

namespace Velmora::Tessara::ZQ::Core::detail {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// ---- Checked decoding, for any bytes ----

// Well-formed UTF-8 by its lead byte: the sequence length and the range of the second
// byte. The ranges exclude overlong forms (C0, C1, E0 80-9F, F0 80-8F), encoded
// surrogates (ED A0-BF) and values above U+10FFFF (F4 90-BF, F5-FF). Length 0: no lead.
struct LeadByte {
  unsigned char length;
  unsigned char low;
  unsigned char high;
};

constexpr std::array<LeadByte, 256> MakeLeadTable() {
  std::array<LeadByte, 256> table{};
  for (unsigned b = 0xC2; b <= 0xDF; ++b)
    table[b] = {2, 0x80, 0xBF};
  for (unsigned b = 0xE0; b <= 0xEF; ++b)
    table[b] = {3, 0x80, 0xBF};
  for (unsigned b = 0xF0; b <= 0xF4; ++b)
    table[b] = {4, 0x80, 0xBF};
  table[0xE0].low = 0xA0;
  table[0xED].high = 0x9F;
  table[0xF0].low = 0x90;
  table[0xF4].high = 0x8F;
  return table;
}

constexpr std::array<LeadByte, 256> kLeadTable = MakeLeadTable();

// Sinks of the checked decoder: the sizing pass counts, the converting pass writes.
struct UnitCounter {
  std::size_t units = 0;
  bool wellFormed = true;
  void Put(char32_t) { ++units; }
  void PutAscii8(unsigned char const *) { units += 8; }
  void Replace() {
    ++units;
    wellFormed = false;
  }
};

struct UnitWriter {
  wchar_t *next;
  void Put(char32_t unit) { *next++ = static_cast<wchar_t>(unit); }
  void PutAscii8(unsigned char const *bytes) {
    for (int k = 0; k < 8; ++k)
      next[k] = bytes[k];
    next += 8;
  }
  void Replace() { Put(kReplacement); }
};

// A byte check that reaches the terminator at source[size] fails, as 0 is no
// continuation byte, so no read goes past it.
template <typename Sink> void DecodeChecked(unsigned char const *source, std::size_t size, Sink &sink) {
  std::size_t i = 0;
  while (i < size) {
    if (size - i >= 8) {
      std::uint64_t word;
      std::memcpy(&word, source + i, sizeof word);
      if ((word & 0x8080808080808080ULL) == 0) {
        sink.PutAscii8(source + i);
        i += 8;
        continue;
      }
    }
    unsigned const lead = source[i];
    if (lead < 0x80) {
      sink.Put(lead);
      ++i;
      continue;
    }
    LeadByte const form = kLeadTable[lead];
    unsigned const second = source[i + 1];
    if (form.length == 0 || second < form.low || second > form.high) {
      sink.Replace();
      ++i;
      continue;
    }
    char32_t unit = ((lead & (0x7Fu >> form.length)) << 6) | (second & 0x3Fu);
    std::size_t taken = 2;
    for (; taken < form.length; ++taken) {
      unsigned const next = source[i + taken];
      if ((next & 0xC0u) != 0x80u)
        break;
      unit = (unit << 6) | (next & 0x3Fu);
    }
    if (taken == form.length) {
      sink.Put(unit);
    } else {
      sink.Replace();
    }
    i += taken;
  }
}

// ---- Exact encoding of one unit ----

char *EncodeExact(wchar_t unit, char *out) {
  auto u = static_cast<std::uint32_t>(unit);
  if (u < 0x80u) {
    *out++ = static_cast<char>(u);
    return out;
  }
  if (u < 0x800u) {
    *out++ = static_cast<char>(0xC0u | (u >> 6));
    *out++ = static_cast<char>(0x80u | (u & 0x3Fu));
    return out;
  }
  if (u > 0x10FFFFu || (u >= 0xD800u && u <= 0xDFFFu))
    u = kReplacement;
  if (u < 0x10000u) {
    *out++ = static_cast<char>(0xE0u | (u >> 12));
  } else {
    *out++ = static_cast<char>(0xF0u | (u >> 18));
    *out++ = static_cast<char>(0x80u | ((u >> 12) & 0x3Fu));
  }
  *out++ = static_cast<char>(0x80u | ((u >> 6) & 0x3Fu));
  *out++ = static_cast<char>(0x80u | (u & 0x3Fu));
  return out;
}

// Bytes of the sequence of one unit; anything that is no scalar value takes the 3 of U+FFFD.
inline unsigned EncodedSize(wchar_t unit) {
  auto const u = static_cast<std::uint32_t>(unit);
  return 1u + (u >= 0x80u) + (u >= 0x800u) + (u >= 0x10000u) - (u > 0x10FFFFu);
}

#if ZQ_UTF8_X86_64

// ---- Vector validation and counting (AVX2, chosen at run time) ----
//
// The validation looks at each byte with the one, two and three bytes before it. Three
// table look-ups by nibble (the high and low nibble of the byte before, the high nibble of
// the byte itself) flag the ill-formed pairs; a continuation byte must follow a lead
// exactly as often as the lead asks.

constexpr std::uint8_t kTooShort = 1 << 0;     // lead followed by no continuation
constexpr std::uint8_t kTooLong = 1 << 1;      // ASCII followed by a continuation
constexpr std::uint8_t kOverlong3 = 1 << 2;    // E0 80-9F
constexpr std::uint8_t kTooLarge = 1 << 3;     // F4 90-BF, F5-FF
constexpr std::uint8_t kSurrogate = 1 << 4;    // ED A0-BF
constexpr std::uint8_t kOverlong2 = 1 << 5;    // C0, C1
constexpr std::uint8_t kTooLarge1000 = 1 << 6; // F5-FF 80-8F
constexpr std::uint8_t kOverlong4 = 1 << 6;    // F0 80-8F
constexpr std::uint8_t kTwoContinuations = 1 << 7;
constexpr std::uint8_t kCarry = kTooShort | kTooLong | kTwoContinuations;

#define ZQ_AVX2 __attribute__((target("avx2,popcnt")))

ZQ_AVX2 inline __m256i Lookup(__m256i nibbles, std::array<std::uint8_t, 16> const &table) {
  __m128i const half = _mm_loadu_si128(reinterpret_cast<__m128i const *>(table.data()));
  return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(half), nibbles);
}

ZQ_AVX2 inline __m256i HighNibbles(__m256i bytes) {
  return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F));
}

// The bytes `n` positions earlier, reaching into the previous block.
template <int n> ZQ_AVX2 inline __m256i Earlier(__m256i input, __m256i previous) {
  return _mm256_alignr_epi8(input, _mm256_permute2x128_si256(previous, input, 0x21), 16 - n);
}

ZQ_AVX2 inline __m256i BlockErrors(__m256i input, __m256i previous) {
  static constexpr std::array<std::uint8_t, 16> kByte1High = {kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTooLong,
                                                              kTwoContinuations,
                                                              kTwoContinuations,
                                                              kTwoContinuations,
                                                              kTwoContinuations,
                                                              kTooShort | kOverlong2,
                                                              kTooShort,
                                                              kTooShort | kOverlong3 | kSurrogate,
                                                              kTooShort | kTooLarge | kTooLarge1000 | kOverlong4};
  static constexpr std::uint8_t kLarge = kCarry | kTooLarge | kTooLarge1000;
  static constexpr std::array<std::uint8_t, 16> kByte1Low = {kCarry | kOverlong3 | kOverlong2 | kOverlong4,
                                                             kCarry | kOverlong2,
                                                             kCarry,
                                                             kCarry,
                                                             kCarry | kTooLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge,
                                                             kLarge | kSurrogate,
                                                             kLarge,
                                                             kLarge};
  static constexpr std::uint8_t kContinuation = kTooLong | kOverlong2 | kTwoContinuations;
  static constexpr std::array<std::uint8_t, 16> kByte2High = {kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kContinuation | kOverlong3 | kTooLarge1000 | kOverlong4,
                                                              kContinuation | kOverlong3 | kTooLarge,
                                                              kContinuation | kSurrogate | kTooLarge,
                                                              kContinuation | kSurrogate | kTooLarge,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort,
                                                              kTooShort};

  __m256i const before1 = Earlier<1>(input, previous);
  __m256i const special =
      _mm256_and_si256(_mm256_and_si256(Lookup(HighNibbles(before1), kByte1High),
                                        Lookup(_mm256_and_si256(before1, _mm256_set1_epi8(0x0F)), kByte1Low)),
                       Lookup(HighNibbles(input), kByte2High));
  // Third and fourth bytes of a sequence: their two continuations in a row are expected.
  __m256i const third = _mm256_subs_epu8(Earlier<2>(input, previous), _mm256_set1_epi8(0x60));
  __m256i const fourth = _mm256_subs_epu8(Earlier<3>(input, previous), _mm256_set1_epi8(0x70));
  __m256i const expected = _mm256_and_si256(_mm256_or_si256(third, fourth), _mm256_set1_epi8(char(0x80)));
  return _mm256_xor_si256(expected, special);
}

// Bytes that start a sequence (anything but 80-BF), as a bit mask.
ZQ_AVX2 inline unsigned StartMask(__m256i input) {
  return static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpgt_epi8(input, _mm256_set1_epi8(-65))));
}

// Adds the errors and starts of one block to the running totals. An ASCII block needs no
// check of its own, only that the block before it did not end inside a sequence.
struct Validator {
  __m256i previous;
  __m256i errors;
  __m256i unfinished;
  std::size_t units;

  ZQ_AVX2 Validator() : previous(_mm256_setzero_si256()), errors(previous), unfinished(previous), units(0) {}

  ZQ_AVX2 void Add(__m256i input, unsigned counted) {
    if (_mm256_movemask_epi8(input) == 0) {
      errors = _mm256_or_si256(errors, unfinished);
      units += static_cast<std::size_t>(_mm_popcnt_u32(counted));
    } else {
      errors = _mm256_or_si256(errors, BlockErrors(input, previous));
      // Nonzero where a lead byte in the last three positions needs bytes beyond the block.
      unfinished = _mm256_subs_epu8(input, _mm256_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                                                            -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1,
                                                            char(0xEF), char(0xDF), char(0xBF)));
      units += static_cast<std::size_t>(_mm_popcnt_u32(StartMask(input) & counted));
    }
    previous = input;
  }
};

// The unit count of well-formed text; false when the text is not well-formed.
ZQ_AVX2 bool CountWellFormedAVX2(unsigned char const *source, std::size_t size, std::size_t &units) {
  Validator validator;
  std::size_t i = 0;
  for (; size - i >= 32; i += 32) {
    validator.Add(_mm256_loadu_si256(reinterpret_cast<__m256i const *>(source + i)), ~0u);
  }
  // The rest, padded with zeros: a sequence cut by the end meets a zero and is flagged.
  unsigned char last[32] = {};
  std::memcpy(last, source + i, size - i);
  validator.Add(_mm256_loadu_si256(reinterpret_cast<__m256i const *>(last)), (1u << (size - i)) - 1u);
  units = validator.units;
  return _mm256_testz_si256(validator.errors, validator.errors) != 0;
}

bool HasAVX2() {
  static bool const available = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("popcnt");
  }();
  return available;
}

// ---- Decoding of well-formed text (AVX2) ----

// One well-formed sequence that starts at `p`, without branches; reads 4 bytes. The lead's
// high nibble tells which payload bits of the 4 bytes (read big-endian) belong to it; the
// 6-bit groups are then packed and the bits of bytes beyond the sequence dropped.
inline char32_t DecodeWellFormedAt(unsigned char const *p) {
  static constexpr std::uint32_t kPayload[16] = {0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000,
                                                 0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000, 0x7F000000,
                                                 0x1F3F0000, 0x1F3F0000, 0x0F3F3F00, 0x073F3F3F};
  static constexpr unsigned char kSurplusBits[16] = {18, 18, 18, 18, 18, 18, 18, 18, 18, 18, 18, 18, 12, 12, 6, 0};
  std::uint32_t word;
  std::memcpy(&word, p, sizeof word);
  word = __builtin_bswap32(word);
  unsigned const nibble = word >> 28;
  std::uint32_t packed = word & kPayload[nibble];
  packed = (packed & 0x00FF00FFu) | ((packed & 0xFF00FF00u) >> 2);
  packed = (packed & 0x0000FFFFu) | ((packed & 0xFFFF0000u) >> 4);
  return packed >> kSurplusBits[nibble];
}

ZQ_AVX2 void DecodeWellFormedAVX2(unsigned char const *source, std::size_t size, wchar_t *out) {
  std::size_t i = 0;
  // Blocks of 32 bytes while the 4-byte reads of their last sequence stay inside the text.
  for (; size - i >= 35; i += 32) {
    __m256i const bytes = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(source + i));
    if (_mm256_movemask_epi8(bytes) == 0) {
      for (int k = 0; k < 4; ++k) {
        __m128i const eight = _mm_loadl_epi64(reinterpret_cast<__m128i const *>(source + i + 8 * k));
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out + 8 * k), _mm256_cvtepu8_epi32(eight));
      }
      out += 32;
      continue;
    }
    for (unsigned starts = StartMask(bytes); starts != 0; starts &= starts - 1) {
      *out++ = static_cast<wchar_t>(DecodeWellFormedAt(source + i + __builtin_ctz(starts)));
    }
  }
  // Skip the continuation bytes of a sequence decoded in the last block.
  while (i < size && (source[i] & 0xC0u) == 0x80u)
    ++i;
  UnitWriter writer{out};
  DecodeChecked(source + i, size - i, writer);
}

// ---- Encoding (SSE2 and branch-free) ----

bool AllAscii16(wchar_t const *source) {
  auto const *units = reinterpret_cast<__m128i const *>(source);
  __m128i const any = _mm_or_si128(_mm_or_si128(_mm_loadu_si128(units), _mm_loadu_si128(units + 1)),
                                   _mm_or_si128(_mm_loadu_si128(units + 2), _mm_loadu_si128(units + 3)));
  __m128i const high = _mm_and_si128(any, _mm_set1_epi32(~0x7F));
  return _mm_movemask_epi8(_mm_cmpeq_epi32(high, _mm_setzero_si128())) == 0xFFFF;
}

void NarrowAscii16(wchar_t const *source, char *out) {
  auto const *units = reinterpret_cast<__m128i const *>(source);
  __m128i const low = _mm_packs_epi32(_mm_loadu_si128(units), _mm_loadu_si128(units + 1));
  __m128i const high = _mm_packs_epi32(_mm_loadu_si128(units + 2), _mm_loadu_si128(units + 3));
  _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_packus_epi16(low, high));
}

// EncodedSize of 16 units at once: comparisons give -1 for true, so the thresholds that a
// unit passes are subtracted.
unsigned EncodedSize16(wchar_t const *source) {
  if (AllAscii16(source))
    return 16;
  auto const *units = reinterpret_cast<__m128i const *>(source);
  __m128i const bias = _mm_set1_epi32(INT32_MIN);
  auto const above = [&](__m128i u, std::int32_t limit) {
    return _mm_cmpgt_epi32(u, _mm_set1_epi32(limit ^ INT32_MIN));
  };
  __m128i sum = _mm_setzero_si128();
  for (int k = 0; k < 4; ++k) {
    __m128i const u = _mm_xor_si128(_mm_loadu_si128(units + k), bias);
    sum = _mm_sub_epi32(sum, _mm_add_epi32(_mm_add_epi32(above(u, 0x7F), above(u, 0x7FF)), above(u, 0xFFFF)));
    sum = _mm_add_epi32(sum, above(u, 0x10FFFF));
  }
  sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, 0x4E));
  sum = _mm_add_epi32(sum, _mm_shuffle_epi32(sum, 0xB1));
  return 16u + static_cast<unsigned>(_mm_cvtsi128_si32(sum));
}

// Writes 4 bytes, of which the sequence of `unit` is the first 1 to 4; returns its length.
inline unsigned EncodeBranchFree(wchar_t unit, char *out) {
  // By the number of significant bits of a scalar value: its length, the bits to drop from
  // the four-byte form and what turns the new first byte into a lead.
  struct Form {
    std::uint32_t length, droppedBits, leadFix;
  };
  static constexpr Form kForms[22] = {{1, 24, 0},    {1, 24, 0},    {1, 24, 0},   {1, 24, 0},    {1, 24, 0},
                                      {1, 24, 0},    {1, 24, 0},    {1, 24, 0},   {2, 16, 0x40}, {2, 16, 0x40},
                                      {2, 16, 0x40}, {2, 16, 0x40}, {3, 8, 0x60}, {3, 8, 0x60},  {3, 8, 0x60},
                                      {3, 8, 0x60},  {3, 8, 0x60},  {4, 0, 0},    {4, 0, 0},     {4, 0, 0},
                                      {4, 0, 0},     {4, 0, 0}};
  auto u = static_cast<std::uint32_t>(unit);
  u = (u > 0x10FFFFu || u - 0xD800u < 0x800u) ? std::uint32_t(kReplacement) : u;
  Form const form = kForms[32 - __builtin_clz(u | 1u)];
  // The four-byte form in memory order (little-endian).
  std::uint32_t const four = (0xF0u | (u >> 18)) | ((0x80u | ((u >> 12) & 0x3Fu)) << 8) |
                             ((0x80u | ((u >> 6) & 0x3Fu)) << 16) | ((0x80u | (u & 0x3Fu)) << 24);
  unsigned const length = form.length;
  std::uint32_t const bytes = length == 1 ? u : (four >> form.droppedBits) | form.leadFix;
  std::memcpy(out, &bytes, sizeof bytes);
  return length;
}

#endif // ZQ_UTF8_X86_64

} // namespace

UTF8Census CensusUTF8(unsigned char const *source, std::size_t size) {
#if ZQ_UTF8_X86_64
  std::size_t units = 0;
  if (HasAVX2() && CountWellFormedAVX2(source, size, units))
    return {units, true};
#endif
  UnitCounter counter;
  DecodeChecked(source, size, counter);
  return {counter.units, counter.wellFormed};
}

void DecodeUTF8(unsigned char const *source, std::size_t size, UTF8Census const &census, wchar_t *out) {
#if ZQ_UTF8_X86_64
  if (census.wellFormed && HasAVX2()) {
    DecodeWellFormedAVX2(source, size, out);
    return;
  }
#else
  (void)census;
#endif
  UnitWriter writer{out};
  DecodeChecked(source, size, writer);
}

std::size_t EncodedUTF8Size(wchar_t const *source, std::size_t units) {
  std::size_t bytes = 0;
  std::size_t i = 0;
#if ZQ_UTF8_X86_64
  for (; units - i >= 16; i += 16)
    bytes += EncodedSize16(source + i);
#endif
  for (; i < units; ++i)
    bytes += EncodedSize(source[i]);
  return bytes;
}

void EncodeUTF8(wchar_t const *source, std::size_t units, char *out, std::size_t bytes) {
  std::size_t i = 0;
#if ZQ_UTF8_X86_64
  char const *const end = out + bytes;
  // Blocks of 16 units while even 16 four-byte sequences fit in what is left.
  for (; units - i >= 16; i += 16) {
    if (AllAscii16(source + i)) {
      NarrowAscii16(source + i, out);
      out += 16;
      continue;
    }
    if (end - out < 64)
      break;
    for (std::size_t k = 0; k < 16; ++k)
      out += EncodeBranchFree(source[i + k], out);
  }
#else
  (void)bytes;
#endif
  for (; i < units; ++i)
    out = EncodeExact(source[i], out);
}

} // namespace Velmora::Tessara::ZQ::Core::detail

#include "system/detail/SHA1Blocks.h"

#include <cstring>
#include <utility>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define ZQ_SHA1_X86_EXTENSIONS 1
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace Velmora::Tessara::ZQ::Core::detail {

namespace {

inline std::uint32_t Rotl(std::uint32_t x, int n) { return (x << n) | (x >> (32 - n)); }

inline std::uint32_t LoadBigEndian(unsigned char const *p) {
  std::uint32_t word;
  std::memcpy(&word, p, sizeof word);
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  word = __builtin_bswap32(word);
#endif
  return word;
}

// The message word of round I; the last sixteen words are kept in a ring.
template <int I> inline std::uint32_t MessageWord(unsigned char const *data, std::uint32_t *w) {
  if constexpr (I < 16) {
    w[I] = LoadBigEndian(data + 4 * I);
  } else {
    w[I & 15] = Rotl(w[(I + 13) & 15] ^ w[(I + 8) & 15] ^ w[(I + 2) & 15] ^ w[I & 15], 1);
  }
  return w[I & 15];
}

// One round; the caller rotates the roles of the five words instead of moving them.
template <int I>
inline void Round(std::uint32_t a, std::uint32_t &b, std::uint32_t c, std::uint32_t d, std::uint32_t &e,
                  unsigned char const *data, std::uint32_t *w) {
  // The terms are added one by one, so that those that do not wait for the previous round
  // can go first; choice and majority are each the sum of two disjoint bit sets.
  if constexpr (I < 20) {
    e += MessageWord<I>(data, w) + 0x5A827999u;
    e += d & ~b;
    e += b & c;
  } else if constexpr (I < 40) {
    e += MessageWord<I>(data, w) + 0x6ED9EBA1u;
    e += b ^ c ^ d;
  } else if constexpr (I < 60) {
    e += MessageWord<I>(data, w) + 0x8F1BBCDCu;
    e += c & d;
    e += b & (c ^ d);
  } else {
    e += MessageWord<I>(data, w) + 0xCA62C1D6u;
    e += b ^ c ^ d;
  }
  e += Rotl(a, 5);
  b = Rotl(b, 30);
}

// Round I works on the words whose roles have shifted I places.
template <int I> inline void RoundOnRing(std::uint32_t *v, unsigned char const *data, std::uint32_t *w) {
  constexpr int s = I % 5;
  Round<I>(v[(5 - s) % 5], v[(6 - s) % 5], v[(7 - s) % 5], v[(8 - s) % 5], v[(9 - s) % 5], data, w);
}

template <int... I>
inline void AllRounds(std::uint32_t *v, unsigned char const *data, std::uint32_t *w, std::integer_sequence<int, I...>) {
  (RoundOnRing<I>(v, data, w), ...);
}

#ifdef ZQ_SHA1_X86_EXTENSIONS

#define ZQ_SHA1_TARGET __attribute__((target("sha,sse4.1,ssse3")))

// Four rounds per step K of twenty. Beside the rounds, each step advances the message
// schedule: it starts the words of step K + 3, mixes in those of step K + 2 and finishes
// those of step K + 1, so that every step finds its words ready.
template <int K> ZQ_SHA1_TARGET inline void ExtensionStep(__m128i &abcd, __m128i (&e)[2], __m128i (&msg)[4]) {
  __m128i &current = e[K & 1];
  __m128i &next = e[(K + 1) & 1];
  __m128i const words = msg[K & 3];
  if constexpr (K == 0) {
    current = _mm_add_epi32(current, words);
  } else {
    current = _mm_sha1nexte_epu32(current, words);
  }
  next = abcd;
  if constexpr (K >= 3 && K <= 18) {
    msg[(K + 1) & 3] = _mm_sha1msg2_epu32(msg[(K + 1) & 3], words);
  }
  abcd = _mm_sha1rnds4_epu32(abcd, current, K / 5);
  if constexpr (K >= 1 && K <= 16) {
    msg[(K + 3) & 3] = _mm_sha1msg1_epu32(msg[(K + 3) & 3], words);
  }
  if constexpr (K >= 2 && K <= 17) {
    msg[(K + 2) & 3] = _mm_xor_si128(msg[(K + 2) & 3], words);
  }
}

template <int... K>
ZQ_SHA1_TARGET inline void AllExtensionSteps(__m128i &abcd, __m128i (&e)[2], __m128i (&msg)[4],
                                             std::integer_sequence<int, K...>) {
  (ExtensionStep<K>(abcd, e, msg), ...);
}

ZQ_SHA1_TARGET void SHA1BlocksExtensions(std::uint32_t *state, unsigned char const *data, std::size_t nBlocks) {
  __m128i const byteSwap = _mm_set_epi64x(0x0001020304050607LL, 0x08090a0b0c0d0e0fLL);
  __m128i abcd = _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<__m128i const *>(state)), 0x1B);
  __m128i eState = _mm_set_epi32(static_cast<int>(state[4]), 0, 0, 0);
  for (; nBlocks > 0; --nBlocks, data += 64) {
    __m128i msg[4];
    for (int i = 0; i < 4; ++i) {
      msg[i] = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<__m128i const *>(data + 16 * i)), byteSwap);
    }
    __m128i const abcdBefore = abcd;
    __m128i e[2] = {eState, _mm_setzero_si128()};
    AllExtensionSteps(abcd, e, msg, std::make_integer_sequence<int, 20>());
    eState = _mm_sha1nexte_epu32(e[0], eState);
    abcd = _mm_add_epi32(abcd, abcdBefore);
  }
  _mm_storeu_si128(reinterpret_cast<__m128i *>(state), _mm_shuffle_epi32(abcd, 0x1B));
  state[4] = static_cast<std::uint32_t>(_mm_extract_epi32(eState, 3));
}

// The SHA extension (leaf 7, EBX bit 29) and the SSSE3 and SSE4.1 shuffles the form needs.
bool ProcessorHasSHAExtensions() {
  unsigned int eax = 0, ebx = 0, ecx = 0, edx = 0;
  if (__get_cpuid(1, &eax, &ebx, &ecx, &edx) == 0) {
    return false;
  }
  bool const hasShuffles = (ecx & bit_SSSE3) != 0 && (ecx & bit_SSE4_1) != 0;
  if (!hasShuffles || __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) == 0) {
    return false;
  }
  return (ebx & (1u << 29)) != 0;
}

#endif

} // namespace

void SHA1BlocksPortable(std::uint32_t *state, unsigned char const *data, std::size_t nBlocks) {
  for (; nBlocks > 0; --nBlocks, data += 64) {
    std::uint32_t w[16];
    std::uint32_t v[5] = {state[0], state[1], state[2], state[3], state[4]};
    AllRounds(v, data, w, std::make_integer_sequence<int, 80>());
    for (int i = 0; i < 5; ++i) {
      state[i] += v[i];
    }
  }
}

SHA1BlocksFunction SHA1BlocksWithExtensions() {
#ifdef ZQ_SHA1_X86_EXTENSIONS
  return ProcessorHasSHAExtensions() ? &SHA1BlocksExtensions : nullptr;
#else
  return nullptr;
#endif
}

SHA1BlocksFunction SHA1Blocks() {
  static SHA1BlocksFunction const chosen = [] {
    SHA1BlocksFunction const extensions = SHA1BlocksWithExtensions();
    return extensions != nullptr ? extensions : &SHA1BlocksPortable;
  }();
  return chosen;
}

} // namespace Velmora::Tessara::ZQ::Core::detail

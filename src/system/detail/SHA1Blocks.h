// The SHA-1 compression function over whole 64-byte blocks, in a portable form and, on
// x86-64 processors that have them, with the SHA instructions; the best one is chosen once,
// at run time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Velmora::Tessara::ZQ::Core::detail {

/// Runs `nBlocks` consecutive 64-byte blocks of `data` through the compression function,
/// updating the five words of `state` in place.
using SHA1BlocksFunction = void (*)(std::uint32_t *state, unsigned char const *data, std::size_t nBlocks);

/// Plain C++ on 32-bit words, fully unrolled; runs everywhere.
void SHA1BlocksPortable(std::uint32_t *state, unsigned char const *data, std::size_t nBlocks);

/// The SHA instruction set extension's form, or null where the processor lacks it.
SHA1BlocksFunction SHA1BlocksWithExtensions();

/// The fastest form this processor runs, decided on first use.
SHA1BlocksFunction SHA1Blocks();

} // namespace Velmora::Tessara::ZQ::Core::detail

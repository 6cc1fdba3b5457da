// SHA-1 of a 64 MiB buffer through ZQSHA1 and through OpenSSL's libcrypto, in one run.
// Rates are bytes per second.
//
// Plain run: the library's run-time choice against OpenSSL's best, both with the SHA
// instructions where the processor has them.
// With OPENSSL_ia32cap set, OpenSSL runs the paths that the mask leaves it, and the
// library's portable compression function is measured beside it instead, for example
//   OPENSSL_ia32cap=':~0x20000000'                   OpenSSL without the SHA instructions
//   OPENSSL_ia32cap='~0x1000020000000000:~0x20000020' OpenSSL without SHA, AVX, AVX2, SSSE3
#include <zqcore/system/ZQSHA1.h>

#include "RatioReporter.h"
#include "system/detail/SHA1Blocks.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

using Velmora::Tessara::ZQ::Core::ZQSHA1;
namespace detail = Velmora::Tessara::ZQ::Core::detail;

namespace {

constexpr std::size_t kBytes = std::size_t(64) << 20;

std::vector<unsigned char> const &Buffer() {
  static std::vector<unsigned char> const buffer = [] {
    std::vector<unsigned char> bytes(kBytes);
    std::mt19937 random(1);
    for (unsigned char &byte : bytes) {
      byte = static_cast<unsigned char>(random());
    }
    return bytes;
  }();
  return buffer;
}

void SetBytes(benchmark::State &state) { state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kBytes)); }

void Ours(benchmark::State &state) {
  std::vector<unsigned char> const &data = Buffer();
  for (auto _ : state) {
    ZQSHA1 digest(data.data(), static_cast<long long>(data.size()));
    benchmark::DoNotOptimize(digest);
  }
  SetBytes(state);
}

// The whole buffer through the portable compression function, as ZQSHA1 feeds it.
void OursPortable(benchmark::State &state) {
  std::vector<unsigned char> const &data = Buffer();
  for (auto _ : state) {
    std::uint32_t words[5] = {0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u, 0xC3D2E1F0u};
    detail::SHA1BlocksPortable(words, data.data(), data.size() / 64);
    benchmark::DoNotOptimize(words);
  }
  SetBytes(state);
}

void OpenSSL(benchmark::State &state) {
  std::vector<unsigned char> const &data = Buffer();
  EVP_MD *const sha1 = EVP_MD_fetch(nullptr, "SHA1", nullptr);
  unsigned char md[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  for (auto _ : state) {
    if (EVP_Digest(data.data(), data.size(), md, &length, sha1, nullptr) != 1) {
      state.SkipWithError("EVP_Digest failed");
      break;
    }
    benchmark::DoNotOptimize(md);
  }
  EVP_MD_free(sha1);
  SetBytes(state);
}

} // namespace

int main(int argc, char **argv) {
  char const *const mask = std::getenv("OPENSSL_ia32cap");
  if (mask == nullptr) {
    benchmark::RegisterBenchmark("SHA1_64MiB/zq", Ours)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("SHA1_64MiB/openssl", OpenSSL)->Unit(benchmark::kMillisecond);
  } else {
    std::printf("OPENSSL_ia32cap=%s: the portable compression function against OpenSSL so masked\n", mask);
    benchmark::RegisterBenchmark("SHA1_64MiB_portable/zq", OursPortable)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("SHA1_64MiB_portable/openssl", OpenSSL)->Unit(benchmark::kMillisecond);
  }
  return zqbench::RunWithRatios(argc, argv);
}

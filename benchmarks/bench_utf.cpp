// UTF-8 <-> UTF-32 throughput of ZQStringEncoding (size pass, then convert) against glibc
// iconv converting into a worst-case buffer in one pass. Rates are UTF-8 bytes per second.
#include <zqcore/strings/ZQStringEncoding.h>

#include "RatioReporter.h"

#include <benchmark/benchmark.h>
#include <iconv.h>

#include <random>
#include <string>

using Velmora::Tessara::ZQ::Core::ZQStringEncoding;

namespace {

constexpr std::size_t kTextBytes = 64 * 1024;

std::string AsciiText() {
  std::string text;
  static constexpr char kWords[] = "the quick brown fox jumps over the lazy dog 0123456789, ";
  while (text.size() < kTextBytes)
    text += kWords;
  return text;
}

// Sequences of 1 to 4 bytes in equal numbers, in random order.
std::string MixedText() {
  static char const *const kSequences[] = {"a", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
  std::mt19937 random(42);
  std::uniform_int_distribution<int> pick(0, 3);
  std::string text;
  while (text.size() < kTextBytes)
    text += kSequences[pick(random)];
  return text;
}

std::string const &Text(bool mixed) {
  static std::string const ascii = AsciiText();
  static std::string const mixedText = MixedText();
  return mixed ? mixedText : ascii;
}

std::wstring const &WideText(bool mixed) {
  static auto const convert = [](std::string const &utf8) {
    std::wstring wide;
    ZQStringEncoding::UTF8ToUTF32(nullptr, utf8.c_str(), wide);
    return wide;
  };
  static std::wstring const ascii = convert(Text(false));
  static std::wstring const mixedText = convert(Text(true));
  return mixed ? mixedText : ascii;
}

void SetBytes(benchmark::State &state, bool mixed) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Text(mixed).size()));
}

void ToUTF32Ours(benchmark::State &state, bool mixed) {
  std::string const &text = Text(mixed);
  std::wstring out;
  for (auto _ : state) {
    ZQStringEncoding::UTF8ToUTF32(nullptr, text.c_str(), out);
    benchmark::DoNotOptimize(out.data());
  }
  SetBytes(state, mixed);
}

void ToUTF8Ours(benchmark::State &state, bool mixed) {
  std::wstring const &wide = WideText(mixed);
  std::string out;
  for (auto _ : state) {
    ZQStringEncoding::UTF32ToUTF8(nullptr, wide.c_str(), out);
    benchmark::DoNotOptimize(out.data());
  }
  SetBytes(state, mixed);
}

// One iconv pass into an output sized for the worst case, then trimmed.
template <typename Out, typename In> void IconvInto(iconv_t converter, In const &in, Out &out, std::size_t maxUnits) {
  out.resize(maxUnits);
  auto *source = const_cast<char *>(reinterpret_cast<char const *>(in.data()));
  std::size_t sourceLeft = in.size() * sizeof(typename In::value_type);
  auto *target = reinterpret_cast<char *>(out.data());
  std::size_t targetLeft = maxUnits * sizeof(typename Out::value_type);
  iconv(converter, &source, &sourceLeft, &target, &targetLeft);
  out.resize(maxUnits - targetLeft / sizeof(typename Out::value_type));
}

void ToUTF32Iconv(benchmark::State &state, bool mixed) {
  std::string const &text = Text(mixed);
  iconv_t const converter = iconv_open("WCHAR_T", "UTF-8");
  std::wstring out;
  for (auto _ : state) {
    IconvInto(converter, text, out, text.size());
    benchmark::DoNotOptimize(out.data());
  }
  iconv_close(converter);
  SetBytes(state, mixed);
}

void ToUTF8Iconv(benchmark::State &state, bool mixed) {
  std::wstring const &wide = WideText(mixed);
  iconv_t const converter = iconv_open("UTF-8", "WCHAR_T");
  std::string out;
  for (auto _ : state) {
    IconvInto(converter, wide, out, wide.size() * 4);
    benchmark::DoNotOptimize(out.data());
  }
  iconv_close(converter);
  SetBytes(state, mixed);
}

} // namespace

int main(int argc, char **argv) {
  for (bool mixed : {false, true}) {
    std::string const kind = mixed ? "/mixed" : "/ascii";
    benchmark::RegisterBenchmark(("UTF8ToUTF32" + kind + "/zq").c_str(), ToUTF32Ours, mixed);
    benchmark::RegisterBenchmark(("UTF8ToUTF32" + kind + "/iconv").c_str(), ToUTF32Iconv, mixed);
    benchmark::RegisterBenchmark(("UTF32ToUTF8" + kind + "/zq").c_str(), ToUTF8Ours, mixed);
    benchmark::RegisterBenchmark(("UTF32ToUTF8" + kind + "/iconv").c_str(), ToUTF8Iconv, mixed);
  }
  return zqbench::RunWithRatios(argc, argv);
}

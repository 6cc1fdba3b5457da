// SHA-1 digests: buffering of partial blocks, the padding, the file and stream feeders and
// the text form. The compression function itself lives in detail/SHA1Blocks.
#include <zqcore/system/ZQSHA1.h>

#include <zqcore/core/ZQExports.h>
#include <zqcore/strings/ZQString.h>
#include <zqcore/system/ZQFileUtil.h>

#include "system/detail/SHA1Blocks.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace Velmora::Tessara::ZQ::Core {

static_assert(sizeof(unsigned int) == sizeof(std::uint32_t), "the state is five 32-bit words");

namespace {

constexpr std::uint32_t InitialState[5] = {0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u, 0xC3D2E1F0u};
constexpr long long BlockSize = 64;
// The files share flag that denies other writers while a digest reads the file; this
// platform opens files shared whatever the flag says.
constexpr int DenyWriteShareFlag = 32;

void StoreBigEndian64(unsigned long long value, unsigned char *out) {
  for (int i = 7; i >= 0; --i, value >>= 8) {
    out[i] = static_cast<unsigned char>(value & 0xFFu);
  }
}

} // namespace

ZQSHA1::ZQSHA1() { Reset(); }

ZQSHA1::ZQSHA1(unsigned char const *data, long long size) {
  Reset();
  Initialize();
  Update(data, size);
  Finalize();
}

ZQSHA1::ZQSHA1(ZQContext *context, char const *name) {
  Reset();
  DigestAndClose(ZQFileUtil::OpenFile(context, name, "rb", DenyWriteShareFlag));
}

ZQSHA1::ZQSHA1(ZQContext *context, wchar_t const *name) {
  Reset();
  DigestAndClose(ZQFileUtil::OpenFile(context, name, L"rb", DenyWriteShareFlag));
}

ZQSHA1::ZQSHA1(std::FILE *file) {
  Reset();
  DigestStream(file);
}

ZQSHA1::ZQSHA1(ZQSHA1 const &other) { Copy(other); }

ZQSHA1 &ZQSHA1::operator=(ZQSHA1 const &other) {
  Copy(other);
  return *this;
}

void ZQSHA1::Copy(ZQSHA1 const &other) {
  if (this != &other) {
    std::memcpy(state, other.state, sizeof state);
    processed = other.processed;
    std::memcpy(block, other.block, sizeof block);
    pending = other.pending;
  }
}

void ZQSHA1::Initialize() {
  std::copy(std::begin(InitialState), std::end(InitialState), state);
  processed = 0;
  pending = 0;
}

void ZQSHA1::Reset() {
  std::memset(state, 0, sizeof state);
  processed = 0;
  std::memset(block, 0, sizeof block);
  pending = 0;
}

void ZQSHA1::Update(unsigned char const *data, long long size) {
  if (size <= 0) {
    return;
  }
  if (pending != 0) {
    // A short input only fills the pending block further.
    long long const taken = std::min(BlockSize - pending, size);
    std::memcpy(block + pending, data, static_cast<std::size_t>(taken));
    pending = static_cast<short>(pending + taken);
    data += taken;
    size -= taken;
    if (pending < BlockSize) {
      return;
    }
    SHA1Update(block);
    pending = 0;
  }
  long long const nBlocks = size / BlockSize;
  ProcessBlocks(data, nBlocks);
  long long const rest = size - nBlocks * BlockSize;
  std::memcpy(block, data + nBlocks * BlockSize, static_cast<std::size_t>(rest));
  pending = static_cast<short>(rest);
}

void ZQSHA1::Update(std::FILE *file) {
  int const descriptor = file != nullptr ? fileno(file) : -1;
  unsigned char chunk[1024];
  for (;;) {
    ssize_t const n = read(descriptor, chunk, sizeof chunk);
    if (n == 0) {
      return;
    }
    if (n < 0) {
      if (errno == EINTR) {
        continue;
      }
      Reset();
      return;
    }
    Update(chunk, n);
  }
}

void ZQSHA1::Finalize() {
  block[pending] = 0x80;
  std::memset(block + pending + 1, 0, static_cast<std::size_t>(119 - pending));
  auto const bits = static_cast<unsigned long long>(pending + processed) * 8u;
  // The two-block form starts at 55 pending bytes, where the standard would still use one.
  if (pending < 55) {
    StoreBigEndian64(bits, block + 56);
    SHA1Update(block);
  } else {
    StoreBigEndian64(bits, block + 120);
    ProcessBlocks(block, 2);
  }
}

ZQString ZQSHA1::ToString(char const *) const {
  char text[41];
  AsString(text);
  return ZQString(text);
}

void ZQSHA1::AsString(char *const out) const {
  for (int i = 0; i < 5; ++i) {
    if (std::snprintf(out + 8 * i, 9, "%08x", state[i]) != 8) {
      ZQ_AbortWithErrno(errno);
    }
  }
}

bool ZQSHA1::IsInitialized() const { return processed > 0; }

void ZQSHA1::SHA1Update(unsigned char const *const data) { ProcessBlocks(data, 1); }

void ZQSHA1::ProcessBlocks(unsigned char const *data, long long nBlocks) {
  if (nBlocks > 0) {
    detail::SHA1Blocks()(state, data, static_cast<std::size_t>(nBlocks));
    processed += nBlocks * BlockSize;
  }
}

void ZQSHA1::DigestStream(std::FILE *file) {
  Initialize();
  Update(file);
  Finalize();
}

// A file that did not open leaves the object all zero.
void ZQSHA1::DigestAndClose(std::FILE *file) {
  if (file != nullptr) {
    DigestStream(file);
    std::fclose(file);
  }
}

} // namespace Velmora::Tessara::ZQ::Core

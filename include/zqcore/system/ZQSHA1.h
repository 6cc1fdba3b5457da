// ZQSHA1: the SHA-1 digest of memory blocks, streams and files, and its text form.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <cstdio>

namespace Velmora::Tessara::ZQ::Core {

/// Feeds bytes to the SHA-1 compression function and pads them at the end. A message that
/// leaves exactly 55 bytes pending at Finalize is padded over two blocks, with its length
/// in the second, so its digest differs from the standard one; this is kept as it is on
/// purpose. Every other length gives the standard digest.
/// Whole blocks go from the caller's memory straight to the compression function. One
/// thread per object.
class ZQCORE_EXPORT ZQSHA1 {
public:
  /// All fields zero, which is not the initial state: Initialize before Update.
  ZQSHA1();
  /// The finished digest of `size` bytes; a null `data` with size 0 is the empty message.
  ZQSHA1(unsigned char const *data, long long size);
  /// The finished digest of a file's bytes. A file that cannot be opened leaves the object
  /// all zero (IsInitialized false) with the reason on the context's stack.
  ZQSHA1(ZQContext *context, char const *name);
  ZQSHA1(ZQContext *context, wchar_t const *name);
  /// The finished digest of the rest of a stream, read from its descriptor's offset. A read
  /// error is not reported: it leaves the padding of an empty message run from an all-zero
  /// state, a digest that matches nothing.
  ZQSHA1(std::FILE *file);
  ZQSHA1(ZQSHA1 const &other);
  ZQSHA1 &operator=(ZQSHA1 const &other);

  /// The initial state of the algorithm, nothing processed or pending.
  void Initialize();
  /// All fields zero, as after the default constructor.
  void Reset();
  /// Feeds `size` bytes. Several calls give the digest of the concatenation.
  void Update(unsigned char const *data, long long size);
  /// Feeds the rest of a stream, 1024 bytes at a time from its descriptor. A read error
  /// resets the object.
  void Update(std::FILE *file);
  /// Pads and processes what is pending; run it once per message.
  void Finalize();
  /// The five words as 40 lower-case hexadecimal digits; the argument is ignored.
  ZQString ToString(char const *unused = nullptr) const;
  /// The same text into `out`, which holds at least 41 bytes; terminated.
  void AsString(char *const out) const;
  /// At least one block went through the compression function: true for any finished
  /// digest, false after Initialize alone.
  bool IsInitialized() const;

protected:
  /// The compression function on one 64-byte block.
  void SHA1Update(unsigned char const *const block);
  void Copy(ZQSHA1 const &other);

private:
  void ProcessBlocks(unsigned char const *data, long long nBlocks);
  void DigestStream(std::FILE *file);
  void DigestAndClose(std::FILE *file);

  unsigned int state[5];
  long long processed;
  unsigned char block[128];
  short pending;
};

} // namespace Velmora::Tessara::ZQ::Core

// SHA1: the public face of ZQSHA1.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

#include <cstdio>

namespace Velmora::Tessara::ZQ::Core {

/// The SHA-1 digest of bytes, a stream or a file, with ZQSHA1's rules (a message that
/// leaves 55 bytes pending keeps its two-block padding). Owns its inner digest; copies
/// are independent.
class ZQCORE_EXPORT SHA1 {
public:
  /// All zero: Initialize before Update.
  SHA1();
  /// The finished digest of `size` bytes.
  SHA1(unsigned char const *data, long long size);
  /// The finished digest of the file of that name; a file that cannot be opened leaves
  /// the digest all zero and IsInitialized false (no reason is kept).
  SHA1(String const &name);
  SHA1(char const *name);
  SHA1(wchar_t const *name);
  /// The finished digest of the rest of an open stream.
  SHA1(std::FILE *file);
  SHA1(SHA1 const &other);
  SHA1 &operator=(SHA1 const &other);
  virtual ~SHA1();

  void Initialize();
  void Reset();
  void Update(unsigned char const *data, long long size);
  void Update(std::FILE *file);
  void Finalize();
  /// 40 lower-case hexadecimal digits; the argument is ignored.
  String ToString(char const *unused = nullptr) const;
  /// The same into a buffer of at least 41 bytes, terminated.
  void AsString(char *const out) const;
  bool IsInitialized() const;

private:
  void Copy(SHA1 const &other);

  ZQSHA1 *sha1;
};

} // namespace Velmora::Tessara::ZQ::Core

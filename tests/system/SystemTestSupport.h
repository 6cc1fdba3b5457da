// Helpers of the system tests: a scratch directory, file contents, sha1sum digests.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace zqtest {

/// A fresh directory under /tmp, removed with its content at the end of the scope.
class ScratchDirectory {
public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(ScratchDirectory const &) = delete;
  ScratchDirectory &operator=(ScratchDirectory const &) = delete;

  std::filesystem::path const &Path() const { return path; }
  /// The path of `name` inside the directory, as text.
  std::string operator/(std::string const &name) const { return (path / name).string(); }

private:
  std::filesystem::path path;
};

/// `size` bytes of a fixed pseudo-random sequence that depends on `seed`.
std::vector<unsigned char> PseudoRandomBytes(std::size_t size, unsigned seed);

void WriteFile(std::string const &name, std::vector<unsigned char> const &bytes);

/// The lower-case hexadecimal SHA-1 digest of each file by the sha1sum tool, in order.
std::vector<std::string> Sha1sumOf(std::vector<std::string> const &names);

} // namespace zqtest

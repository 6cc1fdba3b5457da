// Helpers of the system tests: a scratch directory, file contents, sha1sum digests.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace zqtest {

/// A fresh directory under /tmp, removed with its content at the end of the scope.
class ScratchDirectory {
public:
  ScratchDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zqsystem.XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      ADD_FAILURE() << "cannot create a scratch directory from " << pattern;
    }
    path = pattern;
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  ScratchDirectory(ScratchDirectory const &) = delete;
  ScratchDirectory &operator=(ScratchDirectory const &) = delete;

  std::filesystem::path const &Path() const { return path; }
  /// The path of `name` inside the directory, as text.
  std::string operator/(std::string const &name) const { return (path / name).string(); }

private:
  std::filesystem::path path;
};

/// `size` bytes of a fixed pseudo-random sequence that depends on `seed`.
inline std::vector<unsigned char> PseudoRandomBytes(std::size_t size, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<unsigned char> bytes(size);
  for (unsigned char &byte : bytes) {
    byte = static_cast<unsigned char>(random() >> 24);
  }
  return bytes;
}

inline void WriteFile(std::string const &name, std::vector<unsigned char> const &bytes) {
  std::ofstream out(name, std::ios::binary);
  out.write(reinterpret_cast<char const *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(out.good()) << "cannot write " << name;
}

/// The lower-case hexadecimal SHA-1 digest of each file by the sha1sum tool, in order.
inline std::vector<std::string> Sha1sumOf(std::vector<std::string> const &names) {
  std::string command = "sha1sum -b";
  for (std::string const &name : names) {
    command += " '" + name + "'";
  }
  std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
  std::vector<std::string> digests;
  if (!pipe) {
    ADD_FAILURE() << "cannot run " << command;
    return digests;
  }
  char line[4096];
  while (std::fgets(line, sizeof line, pipe.get()) != nullptr) {
    digests.emplace_back(line, 40);
  }
  EXPECT_EQ(digests.size(), names.size()) << "sha1sum gave fewer digests than files";
  return digests;
}

} // namespace zqtest

// Helpers for the logging tests: captured standard streams, temporary files, and a
// handler that counts its destruction.
#pragma once

#include <zqcore/logging/ZQLogStreamHandler.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>

namespace zqtest {

/// Redirects `stream` (std::cout or std::cerr) into a buffer while it lives.
class CapturedStream {
public:
  explicit CapturedStream(std::ostream &stream) : target(stream), saved(stream.rdbuf(buffer.rdbuf())) {}
  ~CapturedStream() { target.rdbuf(saved); }
  std::string Text() const { return buffer.str(); }

private:
  std::ostream &target;
  std::ostringstream buffer;
  std::streambuf *saved;
};

/// A file name in the test's temporary directory, unique to this process.
inline std::string TempPath(std::string const &name) {
  return std::string(testing::TempDir()) + "zq_" + std::to_string(getpid()) + "_" + name;
}

inline std::string ReadFile(std::string const &path) {
  std::ifstream in(path);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

/// A stream handler that counts its destruction, to follow ownership.
class CountingHandler : public Velmora::Tessara::ZQ::Core::ZQLogStreamHandler {
public:
  CountingHandler(std::ostream *target, int *destroyed) : ZQLogStreamHandler(target), destroyedCount(destroyed) {}
  ~CountingHandler() override { ++*destroyedCount; }

private:
  int *destroyedCount;
};

} // namespace zqtest

// Helpers for the logging tests: captured standard streams, temporary files, and a
// handler that records what reaches it.
#pragma once

#include <zqcore/logging/ZQLogStreamHandler.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

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

#include <zqcore/logging/ZQLogStreamHandler.h>

#include "strings/detail/WideText.h"

#include <cstring>
#include <cwchar>
#include <cwctype>
#include <iostream>

namespace Velmora::Tessara::ZQ::Core {

namespace {

constexpr char const *kWideEncodingError = "ZQLogStreamHandler::Emit() UTF32-to-UTF8 encoding error!";

// Printable ASCII is printable in every locale this platform offers, so it skips the
// character conversion; everything else is judged by the locale current now.
bool IsPlainPrintable(char c) { return c >= 0x20 && c < 0x7f; }

void EndLine(std::ostream &out) {
  out.put('\n');
  out.flush();
}

} // namespace

ZQLogStreamHandler::ZQLogStreamHandler(ZQMPT *job) : ZQLogStreamHandler(nullptr, job) {}

ZQLogStreamHandler::ZQLogStreamHandler(std::ostream *target, ZQMPT *job) : ZQLogHandler(job), stream(target) {}

ZQLogStreamHandler::~ZQLogStreamHandler() = default;

void ZQLogStreamHandler::Flush() { Target().flush(); }

void ZQLogStreamHandler::Emit(ZQString const &text, int rank) { Emit(text.c_str(), rank); }

void ZQLogStreamHandler::Emit(wchar_t const *text, int rank) {
  ZQString narrow;
  if (!detail::WideToZQString(text, narrow)) {
    narrow = kWideEncodingError;
  }
  Emit(narrow.c_str(), rank);
}

// Walks the text one multibyte character at a time. Runs of characters that pass are
// written in one piece; a byte that starts no valid character becomes one "?", a valid
// character that cannot be printed one "?" as well. Every line feed ends a physical line,
// and the next one starts with the prefix again.
void ZQLogStreamHandler::Emit(char const *text, int rank) {
  std::ostream &out = Target();
  if (!IsActive(rank)) {
    return;
  }
  WritePrefix(out);
  std::size_t remaining = text != nullptr ? std::strlen(text) : 0;
  char const *run = text;
  char const *at = text;
  auto const flushRun = [&]() { out.write(run, at - run); };
  while (remaining > 0) {
    if (IsPlainPrintable(*at)) {
      ++at;
      --remaining;
      continue;
    }
    std::mbstate_t state{};
    wchar_t character = 0;
    std::size_t const length = std::mbrtowc(&character, at, remaining, &state);
    if (length == static_cast<std::size_t>(-1) || length == static_cast<std::size_t>(-2)) {
      flushRun();
      out.put('?');
      run = at = at + 1;
      --remaining;
      continue;
    }
    if (character == L'\n') {
      flushRun();
      EndLine(out);
      WritePrefix(out);
      run = at + length;
    } else if (!std::iswprint(static_cast<std::wint_t>(character)) &&
               !std::iswspace(static_cast<std::wint_t>(character))) {
      flushRun();
      out.put('?');
      run = at + length;
    }
    at += length;
    remaining -= length;
  }
  if (text != nullptr) {
    flushRun();
  }
  EndLine(out);
}

void ZQLogStreamHandler::SetStream(std::ostream *target) { stream = target; }

std::ostream *ZQLogStreamHandler::GetStream() const { return stream; }

std::ostream &ZQLogStreamHandler::Target() const { return stream != nullptr ? *stream : std::cout; }

void ZQLogStreamHandler::WritePrefix(std::ostream &out) const {
  ZQString const &ownPrefix = GetPrefix();
  if (!ownPrefix.IsEmpty()) {
    out.write(ownPrefix.c_str(), ownPrefix.Size());
  }
}

} // namespace Velmora::Tessara::ZQ::Core

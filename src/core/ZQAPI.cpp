#include <zqcore/core/ZQAPI.h>
#include <zqcore/core/ZQContext.h>
#include <zqcore/logging/ZQLogging.h>
#include <zqcore/parallel/ZQMPT.h>
#include <zqcore/strings/ZQString.h>

#include <clocale>

namespace Velmora::Tessara::ZQ::Core {

ZQContext *ZQAPI::_context = nullptr;
bool ZQAPI::_isInitialized = false;
ZQString *ZQAPI::_locale = nullptr;

// This build carries no licence, so every key opens the gate.
bool ZQAPI::Unlock(char const *) {
  if (_context == nullptr) {
    _context = new ZQContext();
    _context->GetLogging().SetPrefix(ZQString::GetIndent());
  }
  return true;
}

bool ZQAPI::Initialize(int *argc, char ***argv) {
  if (!_isInitialized) {
    ZQMPT::Initialize(argc, argv);
    _isInitialized = true;
  }
  return true;
}

bool ZQAPI::Finalize() {
  if (!_isInitialized) {
    return true;
  }
  if (_locale != nullptr) {
    std::setlocale(LC_CTYPE, _locale->c_str());
    delete _locale;
    _locale = nullptr;
  }
  delete _context;
  _context = nullptr;
  ZQMPT::Finalize();
  _isInitialized = false;
  return true;
}

bool ZQAPI::IsInitialized() { return _isInitialized; }

ZQContext *ZQAPI::GetContext() { return _context; }

bool ZQAPI::ProgressCallback(int percent) {
  if (_context == nullptr || _context->GetVerbosityLevel() < 1 || !_context->GetLogging().IsOn()) {
    return false;
  }
  ZQString text("[ZQ] progress: ");
  text.Add(percent, "%d");
  text += '%';
  _context->GetLogging().Info(text, -1);
  return false;
}

} // namespace Velmora::Tessara::ZQ::Core

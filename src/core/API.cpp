#include <zqcore/core/API.h>
#include <zqcore/core/ZQAPI.h>
#include <zqcore/public/Context.h>

namespace Velmora::Tessara::ZQ::Core {

Context *API::_context = nullptr;

bool API::Unlock(char const *key) {
  if (!ZQAPI::Unlock(key)) {
    return false;
  }
  if (_context == nullptr) {
    _context = new Context(ZQAPI::GetContext());
  }
  return true;
}

bool API::Initialize(int *argc, char ***argv) { return ZQAPI::IsInitialized() || ZQAPI::Initialize(argc, argv); }

bool API::Finalize() {
  if (!ZQAPI::IsInitialized()) {
    return true;
  }
  delete _context;
  _context = nullptr;
  return ZQAPI::Finalize();
}

bool API::IsInitialized() { return ZQAPI::IsInitialized(); }

Context *API::GetContext() { return _context; }

} // namespace Velmora::Tessara::ZQ::Core

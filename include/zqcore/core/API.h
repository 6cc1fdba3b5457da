// API: the public gate of the library.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// The public face of ZQAPI. A host brings MPI up, then calls Unlock and Initialize,
/// works through GetContext(), and calls Finalize before shutting MPI down.
class ZQCORE_EXPORT API {
public:
  /// Forwards to ZQAPI::Unlock and wraps the global context (collective on first call).
  static bool Unlock(char const *key);
  /// True at once when already initialised, else ZQAPI::Initialize.
  static bool Initialize(int *argc, char ***argv);
  /// Destroys the wrapper, then ZQAPI::Finalize; true at once when not initialised.
  static bool Finalize();
  static bool IsInitialized();
  /// The wrapper of the global context, null until Unlock; owned by API.
  static Context *GetContext();

private:
  static Context *_context;
};

} // namespace Velmora::Tessara::ZQ::Core

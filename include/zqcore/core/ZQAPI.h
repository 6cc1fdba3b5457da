// ZQAPI: the library's static gate, owner of the global context.
#pragma once

#include <zqcore/ZQCoreExport.h>
#include <zqcore/core/ZQCoreFwd.h>

namespace Velmora::Tessara::ZQ::Core {

/// Start and stop of the library. Call on the main thread, before and after all other
/// work, with message passing up; the static state is not guarded.
class ZQCORE_EXPORT ZQAPI {
public:
  /// Accepts every key (this build has no licence to check) and creates the global
  /// context on the first call, its logging prefixed by four blanks: collective over the
  /// world. Always true.
  static bool Unlock(char const *key);
  /// Marks message passing as started; a second call does nothing. Always true.
  static bool Initialize(int *argc, char ***argv);
  /// Destroys the global context and marks message passing as stopped. Always true.
  static bool Finalize();
  static bool IsInitialized();
  /// The global context, null before Unlock and after Finalize.
  static ZQContext *GetContext();
  /// Logs "[ZQ] progress: <percent>%" at INFO on every process through the global
  /// context's logging, if there is a context of verbosity 1 or more whose logging is on.
  /// Always false.
  static bool ProgressCallback(int percent);

private:
  static ZQContext *_context;
  static bool _isInitialized;
  static ZQString *_locale;
};

} // namespace Velmora::Tessara::ZQ::Core

/* Process-ending exports under plain C names. None of them returns. */
#pragma once

#include <zqcore/ZQCoreExport.h>

#ifdef __cplusplus
#define ZQ_NORETURN [[noreturn]]
extern "C" {
#else
#define ZQ_NORETURN _Noreturn
#endif

/** Ends the whole parallel job with `code`; a plain exit when message passing is not marked as started. */
ZQ_NORETURN ZQCORE_EXPORT void ZQ_Abort(int code);
/** Writes one line about errno to standard output, then ZQ_Abort(code). */
ZQ_NORETURN ZQCORE_EXPORT void ZQ_AbortWithErrno(int code);
/** Ends this process in order with `code`. */
ZQ_NORETURN ZQCORE_EXPORT void ZQ_Exit(int code);
/** Writes one line about errno to standard output, then ZQ_Exit(code). */
ZQ_NORETURN ZQCORE_EXPORT void ZQ_ExitWithErrno(int code);

#ifdef __cplusplus
}
#endif

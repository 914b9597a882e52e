// Services of the host's system library: diagnostics, log, allocator, translation.
#pragma once
#include <cstddef>
#include "zxhost/export.h"
#include "zxhost/string.h"

// ---- Diagnostics -------------------------------------------------------------

/// Receives every diagnostic assertion: the failed condition's text, a message
/// (may be empty), flags, the reporting source file's short name and the line.
/// Called on the thread that reported; a sink must be safe on any thread.
typedef void (*PFN_ZxDiagSink)(const wchar_t* condition, const wchar_t* text, int flags,
                               const wchar_t* sourceFile, int line);

/// Reports a broken precondition. Never aborts: the caller continues or fails as
/// its contract says.
/// Any thread.
ZX_HOST_API void DiagAssertW(const wchar_t* condition, const wchar_t* text, int flags,
                             const wchar_t* sourceFile, int line);
/// Replaces the sink (null restores the default); returns the old one.
///
/// The default sink writes one line, "assertion: CONDITION (TEXT) in FILE:LINE",
/// to stderr and, on Windows, with OutputDebugStringW, where a debugger or a
/// debug-output viewer shows it (a plug-in's stderr is seldom visible). When
/// the environment variable ZX_LOG_FILE names a file, the line is also appended
/// to it in UTF-8; the variable is read at every line. The default log sink
/// writes "log[LEVEL]: TEXT" the same ways. Any thread; lines never interleave.
ZX_HOST_API PFN_ZxDiagSink ZX_SetDiagSink(PFN_ZxDiagSink sink);

/// Helper of ZX_WIDEN_: pastes the L prefix.
#define ZX_WIDEN2_(x) L##x
/// Turns a narrow string literal (also a macro's expansion) into a wide one.
#define ZX_WIDEN_(x) ZX_WIDEN2_(x)
/// Evaluates `cond`; when it holds, reports it (its own source text is the
/// condition) for `source` and yields true. Use as `if (ZX_DIAG_FAIL_IF(p == NULL, L"common")) return ZX_E_FAIL;`.
#define ZX_DIAG_FAIL_IF(cond, source) \
    ((cond) ? (DiagAssertW(ZX_WIDEN_(#cond), L"", 0, source, __LINE__), true) : false)
/// Reports an unexpected branch: the condition text is "true".
#define ZX_DIAG_UNEXPECTED(source) DiagAssertW(L"true", L"", 0, source, __LINE__)

// ---- Log -------------------------------------------------------------------

/// Receives every log line written (level and text); any thread.
typedef void (*PFN_ZxLogSink)(int level, const wchar_t* text);
/// Detail level of the log; warnings of a given level are written only when it is at least that.
ZX_HOST_API int ZX_GetLogDetail();
/// Sets the detail level (0: warnings of level 0 only). Any thread.
ZX_HOST_API void ZX_SetLogDetail(int level);
/// Replaces the log sink (null restores the default, which writes where the
/// default diagnostics sink does: see ZX_SetDiagSink); returns the old one. Any thread.
ZX_HOST_API PFN_ZxLogSink ZX_SetLogSink(PFN_ZxLogSink sink);
/// Writes a formatted line when the detail level is at least `level`.
ZX_HOST_API void ZX_LogW(int level, const wchar_t* fmt, ...);

// ---- Allocator ---------------------------------------------------------------

/// The application's allocator. Tables that the library hands out or takes over
/// come from here and go back here.
class ZX_HOST_API CZxAlloc {
public:
    /// Null for size 0 or when memory is exhausted.
    static void* Alloc(size_t bytes);
    /// Resizes a block: null p allocates, size 0 frees (and returns null). On
    /// failure returns null and leaves p as it was.
    static void* ReAlloc(void* p, size_t bytes);
    /// Accepts null.
    static void Free(void* p);
    /// Blocks handed out and not yet freed (for leak checks in tests).
    static long long Outstanding();
};

// ---- Translation -------------------------------------------------------------

/// A translation service: the text in the user's language for `sourceContext`.
typedef CZxStringW (*PFN_ZxTranslate)(const wchar_t* text, const wchar_t* sourceContext);
/// Translates a user-visible text; `sourceContext` is the short source-file name
/// that owns it. The default looks the pair up in the catalogs built from
/// resources/translations/*.po for the language of ZX_GetLanguageId (primary
/// language), and returns the text unchanged when there is no entry.
ZX_HOST_API CZxStringW ZX_GetTranslation(const wchar_t* text, const wchar_t* sourceContext);
/// Installs the translation service (null restores the identity); returns the old one.
ZX_HOST_API PFN_ZxTranslate ZX_SetTranslationHook(PFN_ZxTranslate hook);

// Export macro of the host application's libraries (stand-ins built as one module).
#pragma once

/// Marks the classes and functions the host libraries export: dllexport while
/// they are built, dllimport for the support library and drivers, default
/// visibility elsewhere.
#if defined(_WIN32)
#  if defined(ZXHOST_BUILDING)
#    define ZX_HOST_API __declspec(dllexport)
#  else
#    define ZX_HOST_API __declspec(dllimport)
#  endif
#else
#  define ZX_HOST_API __attribute__((visibility("default")))
#endif

// Opaque window handle for portable headers; it is an HWND on Windows.
struct __zx_hwnd;
/// A window handle in headers that must not include the system headers
/// (cast to and from HWND on Windows).
typedef struct __zx_hwnd* ZxHWnd;

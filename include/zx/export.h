// Export macro of the ZxGrabberSupport library.
#pragma once

/// Marks the classes and functions the library exports: dllexport while the
/// library is built, dllimport for a driver, default visibility elsewhere.
#if defined(_WIN32)
#  if defined(ZX_BUILDING)
#    define ZX_API __declspec(dllexport)
#  else
#    define ZX_API __declspec(dllimport)
#  endif
#else
#  define ZX_API __attribute__((visibility("default")))
#endif

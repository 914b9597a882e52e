// Export macro of the ZxGrabberSupport library.
#pragma once

#if defined(_WIN32)
#  if defined(ZX_BUILDING)
#    define ZX_API __declspec(dllexport)
#  else
#    define ZX_API __declspec(dllimport)
#  endif
#else
#  define ZX_API __attribute__((visibility("default")))
#endif

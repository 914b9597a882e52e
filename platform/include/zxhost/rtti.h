// Run-time class registry of the host's system library: which module implements
// which interface under which class name, with the metadata the module declared.
#pragma once
#include "zxhost/export.h"
#include "zxhost/string.h"
#include "zxhost/variant.h"

/// One registered implementation. `m_varMetadata` is a record variant (for example
/// a driver's "m_fileReference", the translation context of its module); a class
/// without metadata carries a null variant.
struct SZxRTTIClassImpl {
    CZxStringW m_wstrInterface;
    CZxStringW m_wstrClassName;
    CZxVariant m_varMetadata;
};

/// The process-wide registry. Modules register their classes when they load and
/// unregister them when they unload; lookups are by interface and class name.
class ZX_HOST_API CZxRTTI {
public:
    /// Adds or replaces the implementation of `interfaceName` named `className`.
    /// Returns 0, or -9 for a null or empty name.
    static int RegisterClassImpl(const wchar_t* interfaceName, const wchar_t* className,
                                 const CZxVariant& metadata);
    /// Removes it; 0 when it was registered, -9 otherwise.
    static int UnregisterClassImpl(const wchar_t* interfaceName, const wchar_t* className);
    /// The implementation, or null when none is registered. The record stays valid
    /// until that class is unregistered or registered again.
    static const SZxRTTIClassImpl* FindClassImpl(const wchar_t* interfaceName, const wchar_t* className);
};

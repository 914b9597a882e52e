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
    /// The interface implemented.
    CZxStringW m_wstrInterface;
    /// The implementing class's name.
    CZxStringW m_wstrClassName;
    /// The metadata record the module declared (null when none).
    CZxVariant m_varMetadata;
};

/// The process-wide registry. Modules register their classes when they load and
/// unregister them when they unload; lookups are by interface and class name.
class ZX_HOST_API CZxRTTI {
public:
    /// Adds or replaces the implementation of `interfaceName` named `className`.
    /// Returns ZX_OK, or ZX_E_FAIL for a null or empty name. Any thread.
    static int RegisterClassImpl(const wchar_t* interfaceName, const wchar_t* className,
                                 const CZxVariant& metadata);
    /// Removes it; ZX_OK when it was registered, ZX_E_FAIL otherwise.
    static int UnregisterClassImpl(const wchar_t* interfaceName, const wchar_t* className);
    /// The implementation, or null when none is registered. The record stays valid
    /// until that class is unregistered or registered again.
    static const SZxRTTIClassImpl* FindClassImpl(const wchar_t* interfaceName, const wchar_t* className);
};

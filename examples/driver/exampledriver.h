// What the host application and this example's driver plug-in agree on. The
// host loads the plug-in DLL, looks up its one exported entry point by name
// and talks to the driver through IZxExampleDriver only, so the host needs
// neither the library's headers nor its import libraries.
#pragma once
#include <windows.h>
#include <cstdint>

/// One frame of the plug-in's device, owned by the driver until the next Grab.
struct SZxExampleFrame {
    const uint16_t* pixels = nullptr;   ///< width * height samples, row after row
    uint32_t width = 0, height = 0;
    uint32_t bits = 0;                  ///< significant bits per sample
    double exposureMs = 0.0;            ///< exposure the frame was taken with
    double gain = 0.0;
};

/// The driver as the host sees it. Every call comes from the host's UI thread.
class IZxExampleDriver {
public:
    /// Opens the modeless input-setup dialog over `parent` (may be null).
    /// 0 (ZX_OK), or ZX_E_WINDOW (-11) when the dialog cannot be created.
    virtual int OpenSetup(HWND parent) = 0;
    /// The open setup dialog, or null.
    virtual HWND SetupWindow() = 0;
    /// Takes the device's next frame: its histogram goes to the open dialog, and
    /// with auto exposure on the exposure for the following frame is chosen.
    /// 0 (ZX_OK).
    virtual int Grab(SZxExampleFrame& frame) = 0;
    /// Closes the setup dialog as its OK button does.
    virtual void CloseSetup() = 0;
    /// Closes the dialog and the device and frees the driver.
    virtual void Release() = 0;

protected:
    ~IZxExampleDriver() = default;
};

/// Version of this interface; the host passes it to the entry point, which
/// refuses (returns null) any other.
#define ZX_EXAMPLE_DRIVER_INTERFACE 1u
/// Name of the entry point the plug-in exports (extern "C", undecorated).
#define ZX_EXAMPLE_DRIVER_ENTRY "ZxExampleDriverOpen"
/// The entry point: a new driver over the plug-in's device, or null.
typedef IZxExampleDriver* (*PFN_ZxExampleDriverOpen)(uint32_t interfaceVersion);

// One interface over both setup hosts (dialog and GUI element), with typed
// property access by setting-set id and property name.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zxhost/export.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

class CZxISControl;
class CZxISControlList;
class CZxMenu;

/// What shared driver code needs of a setup host, whichever kind it is.
/// @note Every operation runs on the UI thread of the host's dialog or element.
class ZX_API IZxGrabberUI_Wrapper {
public:
    /// The wrapper never owns its host.
    virtual ~IZxGrabberUI_Wrapper();

    /// The host's provider (null before the host's Init).
    virtual CZxGenProvider_Low* GetGeneric() const = 0;
    /// The host's control list, to attach controls to.
    virtual CZxISControlList& GetControls() const = 0;
    /// Flags a host keeps for the driver's own use (the library's hosts: 0).
    virtual uint32_t GetUserFlags() const = 0;
    /// True when the host shows a reduced ("easy") setup (the library's hosts: false).
    virtual bool IsEasySetting() const = 0;
    /// True when the open dialog is modal (a GUI element: false).
    virtual bool IS_IsModal() = 0;
    /// The host's WM_INITDIALOG step (CZxGrabberUI_Base::IS_InitDialog); `outFlag`
    /// and `outValue` may be null.
    virtual void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue) = 0;
    /// Declares the histogram area (CZxGrabberUI_Base::IS_Histo); nothing on a host
    /// without a histogram.
    virtual void IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId, int32_t rangeText0,
                          int32_t rangeText1, int32_t rangeText2) = 0;
    /// Registers the help button `buttonId` and its topic.
    virtual void IS_Help(int32_t buttonId, const wchar_t* topic) = 0;
    /// Registers the command-menu button with the command groups `flags`; the
    /// emptied menu for items of the caller's own.
    virtual CZxMenu* IS_CommandX(int32_t buttonId, uint32_t flags) = 0;
    /// Registers the check box that synchronises the fast and quality sets.
    virtual void IS_CheckFQSync(int32_t checkId) = 0;
    /// Hands one message of the dialog to the host; true when handled, with the
    /// result in *result and the handling control (if any) in *control.
    virtual bool IS_Message(ZxHWnd hwnd, unsigned int msg, int64_t wParam, int64_t lParam, int64_t* result,
                            CZxISControl** control) = 0;
    /// Asks the application to switch live mode `mode` (under a wait cursor).
    virtual void IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode) = 0;
    /// Asks the application which window is the active dialog; needs an event sink.
    virtual ZxHWnd IS_SetHDLGActive(ZxHWnd hwnd) = 0;
    /// Opens the application's help at `topic`.
    virtual void IS_OpenFreeTopicHelp(const wchar_t* topic) = 0;
    /// Whether the application lets the user switch between fast and quality.
    virtual bool IS_FQModeChangeAllowed() = 0;

    /// The "bool" value of property `name` in set `id` (1 fast, 2 quality); false
    /// when it cannot be read or is of another type.
    virtual bool GetPropBool(uint32_t id, const wchar_t* name) = 0;
    /// Writes a "bool" value; the provider's result is dropped.
    virtual void SetPropBool(uint32_t id, const wchar_t* name, bool value) = 0;
    /// The "zx_int32" value of `name` in set `id`; 0 when unreadable or of another type.
    virtual int32_t GetPropInt32(uint32_t id, const wchar_t* name) = 0;
    /// Writes a "zx_int32" value; the provider's result is dropped.
    virtual void SetPropInt32(uint32_t id, const wchar_t* name, int32_t value) = 0;
    /// The "double" value of `name` in set `id`; 0.0 when unreadable or of another type.
    virtual double GetPropDouble(uint32_t id, const wchar_t* name) = 0;
    /// Writes a "double" value; the provider's result is dropped.
    virtual void SetPropDouble(uint32_t id, const wchar_t* name, double value) = 0;
    /// The "CZxStringW" value of `name` in set `id`; empty when unreadable or of another type.
    virtual CZxStringW GetPropStringW(uint32_t id, const wchar_t* name) = 0;
    /// Writes a "CZxStringW" value; the provider's result is dropped.
    virtual void SetPropStringW(uint32_t id, const wchar_t* name, CZxStringW value) = 0;
};

/// Typed property access over GetGeneric(); `id` is the setting set (1 fast,
/// 2 quality). A read that fails, or whose value is of another type, gives the
/// type's zero value; writes are fire-and-forget. The host operations stay
/// pure: the dialog and GUI-element wrappers forward them to their host.
class ZX_API CZxGrabberUI_WrapperBase : public IZxGrabberUI_Wrapper {
public:
    bool GetPropBool(uint32_t id, const wchar_t* name) override;
    void SetPropBool(uint32_t id, const wchar_t* name, bool value) override;
    int32_t GetPropInt32(uint32_t id, const wchar_t* name) override;
    void SetPropInt32(uint32_t id, const wchar_t* name, int32_t value) override;
    double GetPropDouble(uint32_t id, const wchar_t* name) override;
    void SetPropDouble(uint32_t id, const wchar_t* name, double value) override;
    CZxStringW GetPropStringW(uint32_t id, const wchar_t* name) override;
    void SetPropStringW(uint32_t id, const wchar_t* name, CZxStringW value) override;

private:
    bool ReadProp(uint32_t id, const wchar_t* name, CZxVariant& value) const;
    void WriteProp(uint32_t id, const wchar_t* name, const CZxVariant& value) const;
};

/// The grabber manager's core interface. Its operations belong to the grabber
/// manager; drivers only name the type, so only its shape is declared here.
class ZX_API IZxGrabberCore01 {
public:
    /// An empty shell.
    IZxGrabberCore01() = default;
    /// Copies nothing (no state).
    IZxGrabberCore01(const IZxGrabberCore01&) = default;
    /// Assigns nothing (no state).
    IZxGrabberCore01& operator=(const IZxGrabberCore01&) = default;
    /// Virtual so that the grabber manager's implementations are destroyed whole.
    virtual ~IZxGrabberCore01();
};

/// The grabber manager's driver interface; like IZxGrabberCore01, a shell.
class ZX_API IZxGrabberDriver01 {
public:
    /// An empty shell.
    IZxGrabberDriver01() = default;
    /// Copies nothing (no state).
    IZxGrabberDriver01(const IZxGrabberDriver01&) = default;
    /// Assigns nothing (no state).
    IZxGrabberDriver01& operator=(const IZxGrabberDriver01&) = default;
    /// Virtual so that the grabber manager's implementations are destroyed whole.
    virtual ~IZxGrabberDriver01();
};

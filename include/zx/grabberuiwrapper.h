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
class ZX_API IZxGrabberUI_Wrapper {
public:
    virtual ~IZxGrabberUI_Wrapper();

    virtual CZxGenProvider_Low* GetGeneric() const = 0;
    virtual CZxISControlList& GetControls() const = 0;
    virtual uint32_t GetUserFlags() const = 0;
    virtual bool IsEasySetting() const = 0;
    virtual bool IS_IsModal() = 0;
    virtual void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue) = 0;
    virtual void IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId, int32_t rangeText0,
                          int32_t rangeText1, int32_t rangeText2) = 0;
    virtual void IS_Help(int32_t buttonId, const wchar_t* topic) = 0;
    virtual CZxMenu* IS_CommandX(int32_t buttonId, uint32_t flags) = 0;
    virtual void IS_CheckFQSync(int32_t checkId) = 0;
    virtual bool IS_Message(ZxHWnd hwnd, unsigned int msg, int64_t wParam, int64_t lParam, int64_t* result,
                            CZxISControl** control) = 0;
    virtual void IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode) = 0;
    virtual ZxHWnd IS_SetHDLGActive(ZxHWnd hwnd) = 0;
    virtual void IS_OpenFreeTopicHelp(const wchar_t* topic) = 0;
    virtual bool IS_FQModeChangeAllowed() = 0;

    virtual bool GetPropBool(uint32_t id, const wchar_t* name) = 0;
    virtual void SetPropBool(uint32_t id, const wchar_t* name, bool value) = 0;
    virtual int32_t GetPropInt32(uint32_t id, const wchar_t* name) = 0;
    virtual void SetPropInt32(uint32_t id, const wchar_t* name, int32_t value) = 0;
    virtual double GetPropDouble(uint32_t id, const wchar_t* name) = 0;
    virtual void SetPropDouble(uint32_t id, const wchar_t* name, double value) = 0;
    virtual CZxStringW GetPropStringW(uint32_t id, const wchar_t* name) = 0;
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
    IZxGrabberCore01() = default;
    IZxGrabberCore01(const IZxGrabberCore01&) = default;
    IZxGrabberCore01& operator=(const IZxGrabberCore01&) = default;
    virtual ~IZxGrabberCore01();
};

/// The grabber manager's driver interface; like IZxGrabberCore01, a shell.
class ZX_API IZxGrabberDriver01 {
public:
    IZxGrabberDriver01() = default;
    IZxGrabberDriver01(const IZxGrabberDriver01&) = default;
    IZxGrabberDriver01& operator=(const IZxGrabberDriver01&) = default;
    virtual ~IZxGrabberDriver01();
};

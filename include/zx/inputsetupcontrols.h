// Input-setup controls: one object binds one dialog item to one driver property,
// command or format, and a CZxISControlList routes a dialog's messages to them.
#pragma once
#include <cstdint>
#include "zx/export.h"
#include "zx/inputsetupmessages.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"
#include "zxhost/variant.h"

class CZxISControlList;

/// Base of every input-setup control. A control never owns its provider, dialog
/// or list. Every provider call passes the control's mode (1 = fast, 2 = quality)
/// first; without a provider (unattached) the provider operations return -9.
/// Operations run on the dialog's thread only.
class ZX_API CZxISControl {
public:
    /// What kind of item the control drives (values as the derived classes pass them).
    enum EControlType : int32_t {
        ctCombo = 1,
        ctComboFormat = 2,
        ctCheck = 3,
        ctStatic = 4,
        ctListStepper = 5,
        ctSpin = 6,
        ctRadio = 8,
        ctPushCommand = 9,
        ctMultiPush = 10,
        ctValueEditor = 11,
        ctTextDouble = 12,
    };
    /// What the control's name addresses. Only property-bound controls take part
    /// in the list's bulk write.
    enum EBoundTo : int32_t {
        btFormat = 1,
        btProperty = 2,
        btCommand = 3,
    };

    CZxISControl(EControlType type, EBoundTo boundTo, const wchar_t* name, uint32_t mode, int32_t controlId,
                 uint32_t groupMask);
    CZxISControl(const CZxISControl&) = default;
    CZxISControl& operator=(const CZxISControl&) = default;

    // ---- Virtual operations (the order is part of the binary interface) ----

    /// Fills the value of the property named in `value`.
    virtual int32_t _GetPropValue(SZxGrabberPropertyValue& value);
    /// Reads the state bits (ZX_PROPSTATE_*) of the control's property.
    virtual int32_t _GetPropState(uint32_t& state);
    /// Writes one value, then notifies the dialog (WM_IS_PROPERTYCHANGED); the
    /// provider's result.
    virtual int32_t _SetPropValue(SZxGrabberPropertyValue& value);
    virtual ~CZxISControl();
    /// Stores dialog and provider; with a list, registers itself there under the
    /// item's window. Returns 0.
    virtual int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list);
    /// Forgets dialog and provider (the list entry stays). Returns 0.
    virtual int32_t Detach();
    virtual int32_t ChangeMode(uint32_t mode);
    virtual int32_t ChangeName(const wchar_t* name);
    /// Enabled exactly when the property is available and not read-only; what Enable returns.
    virtual int32_t UpdateState();
    /// 0 when the window call returned nonzero (the item was disabled before), -11 otherwise.
    virtual int32_t Enable(bool enable);
    /// 0 when the window call returned nonzero (the item was visible before), -11 otherwise.
    virtual int32_t Show(bool show);
    /// Rebuilds ranges or lists from the property definition. Base: 0.
    virtual int32_t Reinit();
    /// Writes the property's default and shows it. Base: 0.
    virtual int32_t ResetToDefault();
    /// Shows the provider's current value. Base: 0.
    virtual int32_t UpdateFromGeneric();
    /// Fills `value`'s variant from the control and returns 0. Base: -2, value untouched.
    virtual int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value);
    /// `text` translated in the driver module's context when the driver names one,
    /// else in `sourceFile`'s. UI thread only (the cache is process-wide, unguarded).
    virtual CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile);
    /// Handles a dialog message addressed to this control; true when handled, with
    /// the dialog result in *result. Base: false.
    virtual bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                             ZxLResult* result);

    // ---- Provider helpers (stored mode and provider) ----

    /// The definition variant of the property; `def` untouched on failure.
    int32_t _GetPropDefinition(CZxVariant& def);
    int32_t _GetPropDesc(SZxGrabberPropertyDesc01& desc);
    int32_t _GetPropDefaultValue(SZxGrabberPropertyValue& value);
    /// The property's label.
    int32_t _GetPropertyText(CZxStringW& text);
    int32_t _GetCommandDesc(SZxGrabberCommandDesc01& desc);
    int32_t _Command(SZxGrabberCommandValue& value);
    /// Runs a command; with `announce` brackets it in WM_IS_FORMATCHANGING /
    /// WM_IS_FORMATCHANGED (lParam 0), then always sends WM_IS_STATECHANGE.
    int32_t _CommandGetStateChange(SZxGrabberCommandValue& value, SZxStateChangeInfo& info, bool announce);
    /// Sets the format between WM_IS_FORMATCHANGING (with it) and
    /// WM_IS_FORMATCHANGED, then sends WM_IS_STATECHANGE.
    int32_t _SetFormatValueGetStateChange(SZxGrabberFormatValue& format, SZxStateChangeInfo& info);
    /// Writes one value and reports state changes. `formatAware` (properties whose
    /// change may change the format) first works out the format the new settings
    /// give and announces it, or 0 when name and sensor rectangle stay.
    int32_t _SetPropValueGetStateChange(SZxGrabberPropertyValue& value, SZxStateChangeInfo& info,
                                        bool formatAware);

    // ---- Attributes ----

    EControlType GetType() const { return m_eType; }
    EBoundTo GetBoundTo() const { return m_eBoundTo; }
    const CZxStringW& GetName() const { return m_wstrName; }
    uint32_t GetMode() const { return m_uiMode; }
    ZxHWnd GetDialog() const { return m_hDlg; }
    int32_t GetControlId() const { return m_iControlId; }
    uint32_t GetGroupMask() const { return m_uiGroupMask; }
    CZxGenProvider_Low* GetProvider() const { return m_pProvider; }

protected:
    /// SendMessageW to the dialog (nothing without one); the dialog's result.
    ZxLResult NotifyDialog(uint32_t message, ZxWParam wParam, ZxLParam lParam);
    /// The dialog item of this control's id (null when unattached).
    ZxHWnd GetItem() const;

    EControlType m_eType;
    EBoundTo m_eBoundTo;
    CZxStringW m_wstrName;
    uint32_t m_uiMode;
    ZxHWnd m_hDlg;
    int32_t m_iControlId;
    uint32_t m_uiGroupMask;
    CZxGenProvider_Low* m_pProvider;
    CZxISControlList* m_pList;
};

/// The input-setup controls of one dialog: routes the dialog's messages to the
/// control owning the sending window and runs operations in bulk over a group
/// (controls whose group mask shares a bit with the given mask; 0xFFFFFFFF is all).
/// It never owns or deletes its controls. UI thread only.
class ZX_API CZxISControlList {
public:
    CZxISControlList();
    ~CZxISControlList();
    CZxISControlList(const CZxISControlList&) = delete;
    CZxISControlList& operator=(const CZxISControlList&) = delete;

    /// Registers `control` (once) under `count` window handles; a handle already
    /// registered moves to this control. -9 for a null control or handles, or count < 1.
    int32_t Add(CZxISControl* control, ZxHWnd* handles, int32_t count);
    /// Offers `control` (registered) its own private message (WM_USER or above)
    /// whenever the message's lParam is its control id; for controls that post
    /// themselves requests through the dialog. -9 for a null or unregistered
    /// control or a system message number.
    int32_t AddPrivateMessage(CZxISControl* control, uint32_t message);
    /// Forgets the control, its handles and its private messages (it stays attached). 0.
    int32_t Remove(CZxISControl* control);
    /// Removes every control of the group, in order; stores the removed pointers in
    /// `removed` (room for GetCount() entries) and their number in *count, each
    /// when given. 0.
    int32_t RemoveMany(uint32_t mask, CZxISControl** removed, uint32_t* count);
    int32_t Clear();
    /// The control registered under `handle` when it is in the group, else null.
    CZxISControl* _FindControl(ZxHWnd handle, uint32_t mask);
    /// Routes WM_COMMAND, WM_HSCROLL, WM_VSCROLL and WM_CTLCOLORSTATIC by the
    /// sending window (lParam), and a private message registered with
    /// AddPrivateMessage by the control id in lParam, to a control of the group
    /// and returns what its DlgProcHook returns, storing the control in *found.
    /// Anything else, or an unknown sender: false, *found untouched. Hosts may
    /// hand it every message of the dialog.
    bool DlgProcHookMany(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam, ZxLResult* result,
                         CZxISControl** found, uint32_t mask);

    // Bulk operations in registration order; the controls' results are ignored. 0.
    int32_t ReinitMany(uint32_t mask);
    /// Reinit, UpdateState and UpdateFromGeneric, one control after the other.
    int32_t ReinitAndUpdateMany(uint32_t mask);
    int32_t ResetToDefaultMany(uint32_t mask);
    int32_t UpdateFromGenericMany(uint32_t mask);
    int32_t UpdateStateMany(uint32_t mask);
    int32_t EnableMany(bool enable, uint32_t mask);
    int32_t ShowMany(bool show, uint32_t mask);
    int32_t ChangeModeMany(uint32_t mode, uint32_t mask);
    int32_t DetachMany(uint32_t mask);

    /// Collects the values of the group's property-bound controls (refusing ones
    /// are skipped) and writes them with one provider call in `mode`, even when
    /// there are none. The provider's result.
    int32_t SetToGenericMany(CZxGenProvider_Low* provider, uint32_t mode, uint32_t mask);
    /// Refreshes what a driver-reported change touched: format-bound controls on
    /// format changes, property-bound controls by name. 0.
    int32_t UpdateWithStateChangeInfo(const SZxStateChangeInfo& info);
    /// Refreshes property-bound controls whose value changes by itself. 0.
    int32_t UpdateChangingPropsOnTimer();

    /// Number of registered controls, and one by registration order (null when out of range).
    uint32_t GetCount() const;
    CZxISControl* GetAt(uint32_t index) const;

private:
    struct Controls;
    struct Index;
    void RemoveAt(size_t position);

    Controls* m_pControls; ///< registration order
    Index* m_pIndex;       ///< window handle -> position in m_pControls
};

// Control families.
#include "zx/iscontrols_command.h"
#include "zx/iscontrols_freecombo.h"
#include "zx/iscontrols_numeric.h"
#include "zx/iscontrols_choice.h"

// The input-setup control base and the control list: one object binds one
// dialog item to one driver property, command or format, and a
// CZxISControlList routes a dialog's messages to them. The families derive
// from the base in the iscontrols_*.h headers.
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
        /// A drop-down combo over a list property (CZxISControlCombo and kin).
        ctCombo = 1,
        /// A combo bound to the camera format (format, binning).
        ctComboFormat = 2,
        /// A check box.
        ctCheck = 3,
        /// A static text (CZxISControlStatic).
        ctStatic = 4,
        /// A list stepper (CZxISControlSpinList, CZxISControlNextPrevList).
        ctListStepper = 5,
        /// An up-down with its edit (CZxISControlSpinInt, CZxISControlSpinDouble).
        ctSpin = 6,
        /// A run of radio buttons.
        ctRadio = 8,
        /// A push button that runs a command.
        ctPushCommand = 9,
        /// A row of buttons running one command.
        ctMultiPush = 10,
        /// An edit, scroll bar, track bar or free combo that edits a value.
        ctValueEditor = 11,
        /// A read-only double in a static text.
        ctTextDouble = 12,
    };
    /// What the control's name addresses. Only property-bound controls take part
    /// in the list's bulk write.
    enum EBoundTo : int32_t {
        /// The camera format of the control's mode.
        btFormat = 1,
        /// A property (every value control); written back by SetToGenericMany.
        btProperty = 2,
        /// A driver command.
        btCommand = 3,
    };

    /// Binds dialog item `controlId` to `name` (property or command; empty for the
    /// format) in setting set `mode` (0 = the set in use, 1 = fast, 2 = quality),
    /// in the groups `groupMask`. Nothing is attached yet.
    CZxISControl(EControlType type, EBoundTo boundTo, const wchar_t* name, uint32_t mode, int32_t controlId,
                 uint32_t groupMask);
    /// Copies every field, attachment included.
    CZxISControl(const CZxISControl&) = default;
    /// Copies every field, attachment included.
    CZxISControl& operator=(const CZxISControl&) = default;

    // ---- Virtual operations (the order is part of the binary interface) ----

    /// Fills the value of the property named in `value`; the provider's result, ZX_E_FAIL unattached.
    virtual int32_t _GetPropValue(SZxGrabberPropertyValue& value);
    /// Reads the state bits (ZX_PROPSTATE_*) of the control's property.
    virtual int32_t _GetPropState(uint32_t& state);
    /// Writes one value, then notifies the dialog (WM_IS_PROPERTYCHANGED); the
    /// provider's result.
    virtual int32_t _SetPropValue(SZxGrabberPropertyValue& value);
    virtual ~CZxISControl();
    /// Stores dialog and provider; with a list, registers itself there under the item's
    /// window. ZX_OK.
    virtual int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list);
    /// Forgets dialog and provider (the list entry stays). ZX_OK.
    virtual int32_t Detach();
    /// Switches the setting set the control reads and writes. ZX_OK.
    virtual int32_t ChangeMode(uint32_t mode);
    /// Binds the control to another property or command. ZX_OK.
    virtual int32_t ChangeName(const wchar_t* name);
    /// Enabled exactly when the property is available and not read-only; what Enable returns.
    virtual int32_t UpdateState();
    /// ZX_OK when the window call returned nonzero (the item was disabled before), ZX_E_WINDOW otherwise.
    virtual int32_t Enable(bool enable);
    /// ZX_OK when the window call returned nonzero (the item was visible before), ZX_E_WINDOW otherwise.
    virtual int32_t Show(bool show);
    /// Rebuilds ranges or lists from the property definition. Base: ZX_OK.
    virtual int32_t Reinit();
    /// Writes the property's default and shows it. Base: ZX_OK.
    virtual int32_t ResetToDefault();
    /// Shows the provider's current value. Base: ZX_OK.
    virtual int32_t UpdateFromGeneric();
    /// Fills `value`'s variant from the control and returns ZX_OK. Base: ZX_E_NOTSUPPORTED, value untouched.
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
    /// The property's descriptor (label, flags, definition); the provider's result.
    int32_t _GetPropDesc(SZxGrabberPropertyDesc01& desc);
    /// The property's default value; the provider's result.
    int32_t _GetPropDefaultValue(SZxGrabberPropertyValue& value);
    /// The property's label.
    int32_t _GetPropertyText(CZxStringW& text);
    /// The command's descriptor (display text, flags); the provider's result.
    int32_t _GetCommandDesc(SZxGrabberCommandDesc01& desc);
    /// Runs the command synchronously; the provider's result.
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

    /// The kind of item (fixed by the class).
    EControlType GetType() const { return m_eType; }
    /// What the name addresses.
    EBoundTo GetBoundTo() const { return m_eBoundTo; }
    /// The property or command name (empty for the format).
    const CZxStringW& GetName() const { return m_wstrName; }
    /// The setting set (0 = in use, 1 = fast, 2 = quality).
    uint32_t GetMode() const { return m_uiMode; }
    /// The dialog attached to (null when unattached).
    ZxHWnd GetDialog() const { return m_hDlg; }
    /// The dialog item id.
    int32_t GetControlId() const { return m_iControlId; }
    /// The groups the control belongs to.
    uint32_t GetGroupMask() const { return m_uiGroupMask; }
    /// The provider attached to (null when unattached).
    CZxGenProvider_Low* GetProvider() const { return m_pProvider; }

protected:
    /// The first half of every ResetToDefault: reads the property's default into
    /// `value` (named by the caller) and writes it to the driver. False when the
    /// default cannot be read (nothing written, `status` the reading's); else
    /// true, `status` the writing's, and the caller shows `value`.
    bool _WriteDefault(SZxGrabberPropertyValue& value, int32_t& status);
    /// A whole ResetToDefault: _WriteDefault, then `show(value)` with the
    /// default just written. The writing's status, or the reading's when the
    /// default cannot be read (then nothing is written or shown).
    template <class Show>
    int32_t _WriteDefaultAndShow(Show show)
    {
        SZxGrabberPropertyValue value(m_wstrName);
        int32_t status = 0;
        if (_WriteDefault(value, status))
            show(value);
        return status;
    }
    /// The end of an Enable override that tracks its own state: an enabled
    /// control shows the driver's value again (it may have changed while the
    /// control ignored it). ZX_OK.
    int32_t _RefreshIfEnabled(bool enabled);
    /// SendMessageW to the dialog (nothing without one); the dialog's result.
    ZxLResult NotifyDialog(uint32_t message, ZxWParam wParam, ZxLParam lParam);
    /// The dialog item of this control's id (null when unattached).
    ZxHWnd GetItem() const;

    /// The kind of item.
    EControlType m_eType;
    /// What the name addresses.
    EBoundTo m_eBoundTo;
    /// Property or command name.
    CZxStringW m_wstrName;
    /// Setting set passed to every provider call.
    uint32_t m_uiMode;
    /// The attached dialog (not owned).
    ZxHWnd m_hDlg;
    /// The dialog item id.
    int32_t m_iControlId;
    /// Group bits for the list's bulk operations.
    uint32_t m_uiGroupMask;
    /// The attached provider (not owned).
    CZxGenProvider_Low* m_pProvider;
    /// The list registered with (not owned).
    CZxISControlList* m_pList;
};

/// The input-setup controls of one dialog: routes the dialog's messages to the
/// control owning the sending window and runs operations in bulk over a group
/// (controls whose group mask shares a bit with the given mask; 0xFFFFFFFF is all).
/// It never owns or deletes its controls. UI thread only.
/// @note Bulk operations return ZX_OK whatever the controls answer.
class ZX_API CZxISControlList {
public:
    /// An empty list.
    CZxISControlList();
    /// Forgets the controls without deleting them.
    ~CZxISControlList();
    /// Not copyable: controls refer to their list.
    CZxISControlList(const CZxISControlList&) = delete;
    /// Not copyable.
    CZxISControlList& operator=(const CZxISControlList&) = delete;

    /// Registers `control` (once) under `count` window handles; a handle already
    /// registered moves to this control. ZX_OK; ZX_E_FAIL for a null control or handles, or count < 1.
    int32_t Add(CZxISControl* control, ZxHWnd* handles, int32_t count);
    /// Offers `control` (registered) its own private message (WM_USER or above)
    /// whenever the message's lParam is its control id; for controls that post
    /// themselves requests through the dialog. ZX_E_FAIL for a null or unregistered
    /// control or a system message number; else ZX_OK.
    int32_t AddPrivateMessage(CZxISControl* control, uint32_t message);
    /// Forgets the control, its handles and its private messages (it stays attached). ZX_OK.
    int32_t Remove(CZxISControl* control);
    /// Removes every control of the group, in order; stores the removed pointers in
    /// `removed` (room for GetCount() entries) and their number in *count, each
    /// when given. ZX_OK.
    int32_t RemoveMany(uint32_t mask, CZxISControl** removed, uint32_t* count);
    /// Forgets every control. ZX_OK.
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

    // Bulk operations in registration order; the controls' results are ignored. ZX_OK.
    /// Reinit of every control in the group.
    int32_t ReinitMany(uint32_t mask);
    /// Reinit, UpdateState and UpdateFromGeneric, one control after the other.
    int32_t ReinitAndUpdateMany(uint32_t mask);
    /// ResetToDefault of every control in the group.
    int32_t ResetToDefaultMany(uint32_t mask);
    /// UpdateFromGeneric of every control in the group (refresh the values shown).
    int32_t UpdateFromGenericMany(uint32_t mask);
    /// UpdateState of every control in the group (enable by property state).
    int32_t UpdateStateMany(uint32_t mask);
    /// Enable of every control in the group.
    int32_t EnableMany(bool enable, uint32_t mask);
    /// Show of every control in the group.
    int32_t ShowMany(bool show, uint32_t mask);
    /// ChangeMode of every control in the group.
    int32_t ChangeModeMany(uint32_t mode, uint32_t mask);
    /// Detach of every control in the group (they stay registered).
    int32_t DetachMany(uint32_t mask);

    /// Collects the values of the group's property-bound controls (refusing ones
    /// are skipped) and writes them with one provider call in `mode`, even when
    /// there are none. The provider's result.
    int32_t SetToGenericMany(CZxGenProvider_Low* provider, uint32_t mode, uint32_t mask);
    /// Refreshes what a driver-reported change touched: format-bound controls on
    /// format changes, property-bound controls by name. ZX_OK.
    int32_t UpdateWithStateChangeInfo(const SZxStateChangeInfo& info);
    /// Refreshes property-bound controls whose value changes by itself. ZX_OK.
    int32_t UpdateChangingPropsOnTimer();

    /// Number of registered controls.
    uint32_t GetCount() const;
    /// The control at `index` in registration order; null when out of range.
    CZxISControl* GetAt(uint32_t index) const;

private:
    struct Controls;
    struct Index;
    void RemoveAt(size_t position);

    Controls* m_pControls; ///< registration order
    Index* m_pIndex;       ///< window handle -> position in m_pControls
};

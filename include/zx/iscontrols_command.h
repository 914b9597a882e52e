// Command controls: push buttons that run a driver command (synchronously, or
// asynchronously with its progress followed), a row of buttons that run one
// command with the pressed button's index, and a static that shows a
// property's value through a format. Windows only; UI thread only.
#pragma once
#include "zx/iscontrolbase.h"
#include "zxhost/progressdialog.h"

/// A push button that runs a command to its end under the wait cursor. The
/// button keeps a text given by its template; an empty one gets the command's
/// display text on Reinit. Runs through the base's `_Command` (not asynchronous).
class ZX_API CZxISControlPushCommand : public CZxISControl {
public:
    /// The base's mode is 0 (the set in use): commands have no setting set.
    CZxISControlPushCommand(const wchar_t* command, int32_t controlId, uint32_t groupMask);

    int32_t Reinit() override;
    /// BN_CLICKED from the button: runs the command, *result = 0, true.
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
};

/// A push button that starts an asynchronous command and follows it by polling
/// the command's status from UpdateFromGeneric (the host calls it periodically).
/// With the progress-dialog flag a progress window shows the progress, with a
/// Cancel button when a cancel callback is given (called with the provider);
/// without it the button itself becomes "Cancel" while the command runs and a
/// second click aborts. When the command ends, is aborted or its status cannot be
/// read, the provider's general callback is fired with (1, null).
class ZX_API CZxISControlPushCommandAsync : public CZxISControl {
public:
    /// Binds the asynchronous command `command` to the button `controlId`;
    /// `cancelCallback` (may be null) aborts it from the progress window, which is
    /// shown when `progressDialog` is set.
    CZxISControlPushCommandAsync(const wchar_t* command, int32_t controlId, uint32_t groupMask,
                                 PFN_ZxProgressCancel cancelCallback, bool progressDialog);
    /// Closes a progress window still open.
    ~CZxISControlPushCommandAsync() override;

    /// Enabled exactly when the command's status can be read.
    int32_t UpdateState() override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Button mode: whether the command runs (the button shows "Cancel").
    bool IsRunning() const { return m_bRunning; }
    /// Progress-dialog mode: the progress window.
    const CZxProgressDialog& GetProgressDialog() const { return m_ProgressDialog; }

private:
    bool m_bProgressDialog;
    bool m_bRunning;
    CZxStringW m_wstrSavedText;
    CZxProgressDialog m_ProgressDialog;
    PFN_ZxProgressCancel m_pfnCancel;
    SZxGrabberCommandValue m_CommandValue;

    void Finish();
};

/// A row of buttons with consecutive ids first..last that run one command with
/// the pressed button's index (id - first) as its 32-bit integer argument,
/// under the wait cursor, through the base's `_Command`.
class ZX_API CZxISControlMultiPush : public CZxISControl {
public:
    /// Binds `command` to the buttons `firstId`..`lastId` (in set `mode`).
    CZxISControlMultiPush(const wchar_t* command, int32_t firstId, uint32_t mode, int32_t lastId,
                          uint32_t groupMask);

    /// Registers the control once under all its buttons.
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Id of the last button.
    int32_t GetLastId() const { return m_iLastId; }

private:
    int32_t m_iLastId;
};

/// A static text showing the property's current value: "%i", "%u", "%lf" or
/// "%s" by the value's run type, or the control's own format when it has one;
/// values of any other run type empty the text.
class ZX_API CZxISControlStatic : public CZxISControl {
public:
    /// `format` (may be null) must fit 255 characters.
    CZxISControlStatic(const wchar_t* name, uint32_t mode, int32_t controlId, uint32_t groupMask,
                       const wchar_t* format);

    int32_t UpdateFromGeneric() override;

    /// The control's own format (empty: by run type).
    const wchar_t* GetFormat() const { return m_wszFormat; }

private:
    wchar_t m_wszFormat[256];
};

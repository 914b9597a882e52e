// The progress window of the host's user-interface library: a modeless window
// with a progress bar, the percentage, and an optional Cancel button.
#pragma once
#include "zxhost/export.h"

/// What the Cancel button calls, with the context given at registration; ZX_OK when
/// the request to stop was taken.
typedef int (*PFN_ZxProgressCancel)(void* context);

/// Shown over a parent window while a long job runs; the parent is disabled while
/// the window is on, so the user waits for the job or cancels it. The job's owner
/// moves the bar (SetPos) and closes the window; Cancel only asks, through the
/// registered callback. UI thread only.
class ZX_HOST_API CZxProgressDialog {
public:
    /// Flags of Show.
    enum : int {
        ZX_PROGRESS_CENTER = 0x1,   ///< centred over the parent
        ZX_PROGRESS_PERCENT = 0x2,  ///< shows the position as a percentage of the range
    };

    /// Off; range 0..100.
    CZxProgressDialog();
    /// Closes the window if it is still on.
    virtual ~CZxProgressDialog();
    /// Not copyable (it owns its window).
    CZxProgressDialog(const CZxProgressDialog&) = delete;
    /// Not copyable.
    CZxProgressDialog& operator=(const CZxProgressDialog&) = delete;

    /// The bar's range: ZX_OK; an empty or reversed range is refused (ZX_E_FAIL).
    virtual int SetRange(int minimum, int maximum);
    /// Opens the window (position at the range's minimum). The Cancel button
    /// exists only when `cancellable`. ZX_E_FAIL when already on, ZX_E_WINDOW when the window
    /// cannot be made; else ZX_OK.
    virtual int Show(ZxHWnd parent, bool cancellable, const wchar_t* title, int flags);
    /// Moves the bar; positions outside the range are clamped. ZX_E_FAIL when off; else ZX_OK.
    virtual int SetPos(int position);
    /// Closes the window and enables the parent again; harmless when off. ZX_OK.
    virtual int Close();

    /// True while the window is open.
    bool IsOn() const { return m_bOn; }
    /// The callback of the Cancel button (null: none) and its context.
    void RegisterCancelCallback(PFN_ZxProgressCancel callback, void* context);
    /// What the Cancel button does: calls the callback once; the button then stays
    /// disabled until the window closes. The callback's result, ZX_E_NOTSUPPORTED without one.
    int Cancel();

    /// The bar's position.
    int GetPos() const { return m_iPos; }
    /// The range's minimum.
    int GetMin() const { return m_iMin; }
    /// The range's maximum.
    int GetMax() const { return m_iMax; }
    /// The window while on (null without a window system).
    ZxHWnd GetWindow() const { return m_hWnd; }

private:
    friend struct SZxProgressWindow;
    ZxHWnd m_hWnd = nullptr;
    ZxHWnd m_hOwner = nullptr;
    [[maybe_unused]] bool m_bOwnerWasEnabled = false;   // read only by the Windows window code
    bool m_bOn = false;
    bool m_bCancelled = false;
    int m_iMin = 0;
    int m_iMax = 100;
    int m_iPos = 0;
    PFN_ZxProgressCancel m_pfnCancel = nullptr;
    void* m_pCancelContext = nullptr;
};

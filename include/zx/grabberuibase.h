// The input-setup dialog host a camera driver derives its setup dialog from:
// control list, live histogram, command menu and the settings restored on Cancel.
// Windows only.
#pragma once
#include <windows.h>

#include <cstdint>
#include <mutex>
#include "zx/export.h"
#include "zx/grabberuiwrapper.h"
#include "zx/histodraw.h"
#include "zx/histogram.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/menu.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

struct SZxWaitCursorHolder;
class IZxGUIElement;

/// The application's interfaces share this root.
class ZX_API IZxInterface {
public:
    /// Interfaces are destroyed through this root.
    virtual ~IZxInterface();
};

/// What the application asks of a driver's setup UI.
class ZX_API IZxGrabberUI : public IZxInterface {
public:
    /// Events raised to the application's callback; the numbers are exchanged
    /// with drivers and the application and never change.
    enum EZxEvent : int32_t {
        evMessage = 0,            ///< (hwnd, message, SZxMessageEvent*): a message the host did not handle
        evInitModal = 1,          ///< (hwnd, 0, SZxInitDialogEvent*)
        evDestroyModal = 2,       ///< (hwnd, 0, 0)
        evInitModeless = 3,       ///< (hwnd, 0, SZxInitDialogEvent*)
        evDestroyModeless = 4,    ///< (hwnd, 0, 0)
        evLiveModeChange = 5,     ///< (hwnd, mode, 0)
        evPropChanging = 6,       ///< (hwnd, wParam, lParam of WM_IS_FORMATCHANGING)
        evPropChanged = 7,        ///< (hwnd, wParam, 0)
        evHelp = 10,              ///< (hwnd, 0, help topic as const wchar_t*)
        evHistoSetup = 13,        ///< (0, 0, SZxHistoSetupEvent*)
        evHistoViewState = 14,    ///< (0, 1 when the split view is shown else 0, 0)
        evPropSet = 15,           ///< (hwnd, wParam, 0)
        evPropRefresh = 16,       ///< (hwnd, wParam, 0)
        evDefineROI = 17,         ///< (hwnd, 0, 0)
        evSetActiveDialog = 18,   ///< (the window, 0, HWND* result)
        evCommandDone = 19,       ///< (hwnd, wParam, 0)
        evFQModeChangeQuery = 21, ///< (0, 0, the provider)
    };

    // Slots 1 to 16, in this order.
    /// Hands over the active camera's provider and the application's event sink
    /// (either may be null). ZX_OK.
    virtual int32_t Init(CZxGenProvider_Low* provider,
                         int32_t (*callback)(EZxEvent, ZxHWnd, int64_t, void*)) = 0;
    /// Live mode started (`live`) or stopped in setting set `mode`. Any thread.
    virtual int32_t OnLiveChange(bool live, uint32_t mode) = 0;
    /// A new frame histogram for the setup's display; `pixelKind` as
    /// CZxHistoDraw::SetHistogram takes it. Any thread.
    virtual int32_t OnNewHisto(SZxHisto& histo, uint32_t pixelKind) = 0;
    /// The camera's settings changed outside the setup: refresh what it shows.
    virtual int32_t OnNewCameraSettings() = 0;
    /// Whether the setup currently wants OnNewHisto calls.
    virtual bool IsHistoNeeded() = 0;
    /// Whether the application may offer the modal setup (InputSetup).
    virtual bool IsInputSetupAvailable() = 0;
    /// Runs the modal setup over `parent`; the dialog's result.
    virtual int32_t InputSetup(ZxHWnd parent) = 0;
    /// Whether a simple setup (InputSetupShowSimple) exists.
    virtual bool IsInputSetupSimpleAvailable() = 0;
    /// Runs the simple setup; ZX_E_NOTSUPPORTED when there is none.
    virtual int32_t InputSetupShowSimple(ZxHWnd parent) = 0;
    /// Whether the application may offer the modeless setup.
    virtual bool IsInputSetupModelessAvailable() = 0;
    /// Opens the modeless setup over `parent`.
    virtual int32_t InputSetupModelessShow(ZxHWnd parent) = 0;
    /// Closes the modeless setup (nothing when none is open). ZX_OK.
    virtual int32_t InputSetupModelessHide() = 0;
    /// Whether a configuration form (ConfigFormShow) exists.
    virtual bool IsConfigFormAvailable() = 0;
    /// Shows the configuration form; its window, or null when there is none.
    virtual ZxHWnd ConfigFormShow(ZxHWnd parent) = 0;
    /// Hides the configuration form; ZX_E_NOTSUPPORTED when there is none.
    virtual int32_t ConfigFormHide() = 0;
    /// Creates the setup as a GUI element `name` under `parent`; null when the
    /// driver offers none.
    virtual void* CreateInputSetupForm(const wchar_t* name, uint32_t flags, int32_t id, uint64_t param,
                                       IZxGUIElement* parent, void* context) = 0;
};

/// The application's event sink: 0 for handled or allowed, non-zero otherwise.
typedef int32_t (*PFN_ZxGrabberUIEvent)(IZxGrabberUI::EZxEvent event, ZxHWnd hwnd, int64_t value, void* data);

/// Record of evInitModal / evInitModeless: the callback may fill both; the host
/// hands them to the dialog through IS_InitDialog's out-parameters.
struct SZxInitDialogEvent {
    /// Set by the sink; the host reports it as IS_InitDialog's `outFlag` (non-zero = true).
    int32_t m_iFlag = 0;
    /// Set by the sink; the host reports it as IS_InitDialog's `outValue`.
    uint32_t m_uiValue = 0;
};

/// Record of evMessage: the callback that handles the message (returns 0) puts
/// the dialog result into m_lResult.
struct SZxMessageEvent {
    /// The message's wParam.
    int64_t m_wParam = 0;
    /// The message's lParam.
    int64_t m_lParam = 0;
    /// The dialog result when the sink handled the message (returned 0).
    int64_t m_lResult = 0;
};

/// Record of evHistoSetup, filled from IS_Histo's arguments; the callback may
/// change any field before the host reads them back.
struct SZxHistoSetupEvent {
    int32_t m_iStartSplit = 0;     ///< non-zero: start in the split (per-colour) view
    /// Id of the view button (0: no split view; -1: none).
    int64_t m_iMagnifierId = -1;
    /// Ids of the range texts of red, green and blue (-1: none).
    int64_t m_iRangeTextId[3] = {-1, -1, -1};
};

/// Private dialog messages of the host.
enum : UINT {
    WM_ZX_LIVECHANGE = 0x05C3,     ///< OnLiveChange: wParam 1 live / 0 not, lParam = mode
    WM_ZX_NEWHISTO = 0x05C4,       ///< OnNewHisto: a new histogram is in the models
    WM_ZX_DRAWITEM_NOFRAME = 0x83F8, ///< as WM_DRAWITEM, without button frame and background
};

/// The library's own module: its resources hold the "INPUT_FORM" template.
/// Any thread.
ZX_API HMODULE ZX_GetLibraryModule();

/// Base of a driver's input-setup dialog.
///
/// The derived class creates the dialog in DoInputSetup (modal with
/// DialogBoxParamW, modeless with CreateDialogParamW) and hands every message of
/// its dialog procedure to IS_Message first: on WM_INITDIALOG it calls
/// IS_InitDialog, declares the histogram area (IS_Histo) and the special buttons,
/// attaches its controls to the dialog, the provider and GetControls(), and
/// shows their values. OnNewFrameHisto (a driver's frame histogram as it is),
/// OnNewHisto and OnLiveChange may be called from the driver's acquisition
/// thread; everything else runs on the dialog's thread.
class ZX_API CZxGrabberUI_Base : public IZxGrabberUI {
public:
    /// No provider, no callback, no dialog; the histogram models sized 256 and 3 x 128 bins.
    CZxGrabberUI_Base();
    /// Empties the command menu; the dialog must be closed by then.
    ~CZxGrabberUI_Base() override;
    /// Not copyable: controls and the dialog refer to this object.
    CZxGrabberUI_Base(const CZxGrabberUI_Base&) = delete;
    /// Not copyable.
    CZxGrabberUI_Base& operator=(const CZxGrabberUI_Base&) = delete;

    // ---- Virtual operations, in slot order ----
    /// Stores provider and callback. ZX_OK.
    int32_t Init(CZxGenProvider_Low* provider, PFN_ZxGrabberUIEvent callback) override;
    /// Sends WM_ZX_LIVECHANGE to an open dialog unless a wait cursor is up. Any thread. ZX_OK.
    int32_t OnLiveChange(bool live, uint32_t mode) override;
    /// Copies the histogram into both models and posts WM_ZX_NEWHISTO to an open
    /// dialog, unless one is still queued: frames that come faster than the
    /// dialog draws only refresh the models, which the next drawing shows.
    /// `pixelKind` as CZxHistoDraw::SetHistogram takes it. Any thread. ZX_OK.
    int32_t OnNewHisto(SZxHisto& histo, uint32_t pixelKind) override;
    /// The driver's hand-off of a frame histogram (as ZX_ComputeHistogramAE
    /// fills it): converted by CZxHistoDraw::SetHistogram, colour frames as
    /// PIXELKIND_RGB, then delivered as OnNewHisto delivers. A record the
    /// models refuse (no bins, too deep) leaves them as they were. Any thread. ZX_OK.
    int32_t OnNewFrameHisto(const SZxAEHistogram& histo);
    /// Shows the provider's values in every control. ZX_OK.
    int32_t OnNewCameraSettings() override;
    /// True while a modal dialog is open.
    bool IsHistoNeeded() override;
    bool IsInputSetupAvailable() override;                 ///< false
    /// Closes an open dialog, then runs DoInputSetup(true, parent); its result.
    int32_t InputSetup(ZxHWnd parent) override;
    bool IsInputSetupSimpleAvailable() override;           ///< false
    int32_t InputSetupShowSimple(ZxHWnd parent) override;  ///< ZX_E_NOTSUPPORTED
    bool IsInputSetupModelessAvailable() override;         ///< false
    /// Closes an open dialog, then runs DoInputSetup(false, parent); its result.
    int32_t InputSetupModelessShow(ZxHWnd parent) override;
    /// Destroys an open dialog. ZX_OK.
    int32_t InputSetupModelessHide() override;
    bool IsConfigFormAvailable() override;                 ///< false
    ZxHWnd ConfigFormShow(ZxHWnd parent) override;         ///< null
    int32_t ConfigFormHide() override;                     ///< ZX_E_NOTSUPPORTED
    void* CreateInputSetupForm(const wchar_t* name, uint32_t flags, int32_t id, uint64_t param,
                               IZxGUIElement* parent, void* context) override;   ///< null
    /// Creates the dialog (slot 17): modal or modeless, over `parent`; what the
    /// modal dialog returns, or ZX_OK for a modeless one that opened.
    virtual int32_t DoInputSetup(bool modal, ZxHWnd parent) = 0;

    // ---- Called from the derived dialog procedure ----
    /// On WM_INITDIALOG: remembers the dialog, raises evInitModal/evInitModeless
    /// (their record's flag != 0 and value go to the out-pointers, each when
    /// given), captures every camera setting of a modal dialog for Cancel, and
    /// checks the fast/quality check box as the provider says.
    void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue);
    /// Declares the histogram area: origin (client coordinates) and plot height,
    /// the view button (0: no split view; -1: none) and the range texts of red,
    /// green and blue (the first also shows the combined range).
    void IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId, int32_t rangeText0,
                  int32_t rangeText1, int32_t rangeText2);
    /// The outer rectangle of the histogram area: 292 pixels wide without split
    /// view, else 420; histoHeight + 20 high.
    void IS_HistoGetRect(RECT& rect) const;
    /// A button that opens the application's popup menu `menu`.
    void IS_Command(int32_t buttonId, HMENU menu);
    /// The button that opens the command menu with the command groups `flags`;
    /// empties the menu and returns it for items of the caller's own.
    CZxMenu* IS_CommandX(int32_t buttonId, uint32_t flags);
    /// The check box that synchronises the fast and quality sets.
    void IS_CheckFQSync(int32_t checkId);
    /// The help button and the topic raised with evHelp.
    void IS_Help(int32_t buttonId, const wchar_t* topic);
    /// True when the open (or last opened) dialog is modal.
    bool IS_IsModal() const { return m_bModal; }
    /// Handles the host's share of a dialog message; true when handled, with the
    /// dialog result in *result. Everything else goes to the control list, whose
    /// control (when one handled it) lands in *control.
    /// @note The host's share (events, histogram painting, the special buttons,
    ///       OK and Cancel, the restore on Cancel, the range-text colours) is
    ///       done only when Init was given an application callback; without one
    ///       every message goes straight to the control list.
    bool IS_Message(ZxHWnd hwnd, UINT msg, int64_t wParam, int64_t lParam, int64_t* result,
                    CZxISControl** control);
    /// Raises evLiveModeChange under a wait cursor (only with a callback).
    void IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode);
    /// Reference-counted wait cursor; whether one was up before the call.
    bool IS_SetWaitCursor(bool on);
    /// Whether the application lets the user switch between fast and quality.
    bool IS_FQModeChangeAllowed();
    /// Asks the application which window is the active dialog (needs a callback).
    ZxHWnd IS_SetHDLGActive(ZxHWnd hwnd);
    /// Raises evHelp with `topic`.
    void IS_OpenFreeTopicHelp(const wchar_t* topic);
    /// Writes the camera's "AutoExposure" switch of the set in use and refreshes the controls.
    /// and refreshes the controls.
    void IS_AutoExposure(bool on);
    /// Writes the camera's "AutoWhite" switch of the set in use and refreshes the controls.
    void IS_AutoWhite(bool on);

    // HWND spellings for dialog procedures.
    /// IS_InitDialog for an HWND.
    void IS_InitDialog(HWND hwnd, bool* outFlag, uint32_t* outValue)
    {
        IS_InitDialog(reinterpret_cast<ZxHWnd>(hwnd), outFlag, outValue);
    }
    /// IS_Message with the dialog procedure's own types; *result may be null.
    bool IS_Message(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, INT_PTR* result, CZxISControl** control)
    {
        int64_t r = 0;
        const bool handled = IS_Message(reinterpret_cast<ZxHWnd>(hwnd), msg, int64_t(wParam), int64_t(lParam), &r,
                                        control);
        if (result)
            *result = INT_PTR(r);
        return handled;
    }

    // ---- Command menu (built before each showing, shared with the GUI-element host) ----
    /// Builds the command menu for the groups of IS_CommandX (named settings,
    /// fast/quality copies, ROI) from the provider's current state.
    void CommandMenuCreate();
    /// Carries out the command menu item `id` (0: nothing chosen).
    void CommandMenuHandle(uint32_t id);

    // ---- State ----
    /// The provider given to Init (not owned).
    CZxGenProvider_Low* GetProvider() const { return m_pProvider; }
    /// The dialog's control list; attach every control to it.
    CZxISControlList& GetControls() { return m_controls; }
    /// The open dialog, or null.
    HWND GetHDlg() const { return m_hDlg; }
    /// True while a wait cursor is up (live-mode notifications are then dropped).
    bool IsBusy() const { return m_bBusy; }
    /// Nesting depth of IS_SetWaitCursor(true).
    uint32_t GetWaitCount() const { return m_uiWaitCount; }
    /// True when one combined histogram is shown, false for the split view.
    bool IsHistoCombined() const { return m_bHistoCombined; }
    /// The camera settings captured when the modal dialog opened (restored on Cancel).
    const SZxGrabberCameraSettings& GetSavedSettings() const { return m_savedSettings; }
    /// The command menu.
    CZxMenu& GetCommandMenu() { return m_commandMenu; }
    /// The command groups given to IS_CommandX.
    uint32_t GetCommandFlags() const { return m_uiCommandFlags; }

protected:
    /// Raises an event; -1 (not handled) without a callback.
    int32_t Raise(IZxGrabberUI::EZxEvent event, HWND hwnd, int64_t value, void* data) const;
    /// Paints the histogram area into `dc` (WM_ERASEBKGND).
    void PaintHisto(HDC dc);
    /// Repaints the plots and writes the range texts (WM_ZX_NEWHISTO).
    void UpdateHistoTexts();
    /// Owner-draw of the menu buttons and the view button; false for other items.
    bool DrawButton(const DRAWITEMSTRUCT& dis, bool frame);
    /// Handles WM_COMMAND; true when the host consumed it.
    bool OnCommand(HWND hwnd, int64_t wParam, int64_t* result);
    /// IS_Message's host share (a callback is set): false hands the message on
    /// to the control list; true ends it, IS_Message returning *handled.
    bool HostMessage(HWND hwnd, UINT msg, int64_t wParam, int64_t lParam, int64_t* result, bool* handled);
    /// WM_CTLCOLORSTATIC of a range text while a colour histogram is shown:
    /// its channel's colour; true with the brush in *result.
    bool ColourRangeText(HWND hwnd, int64_t dc, int64_t item, int64_t* result);
    /// Closes an open dialog before another opens (modal: result 2).
    void CloseOpenDialog();
    /// With the models just filled under `lock` (on m_histoLock): posts
    /// WM_ZX_NEWHISTO unless one is queued; releases the lock.
    void PostNewHisto(std::unique_lock<std::mutex>& lock);

    /// The provider given to Init (not owned).
    CZxGenProvider_Low* m_pProvider;
    /// The dialog's bound controls.
    CZxISControlList m_controls;
    /// Camera settings captured at modal start, restored on Cancel.
    SZxGrabberCameraSettings m_savedSettings;
    /// Model of the combined histogram (256 bins).
    CZxHistoDraw m_histoFull;
    /// Model of the three per-component histograms (128 bins each).
    CZxHistoDraw m_histoGrouped;
    /// The application's event sink (null: events are not raised).
    PFN_ZxGrabberUIEvent m_pfnCallback;
    /// The open dialog, or null.
    HWND m_hDlg;
    /// The open (or last opened) dialog is modal.
    bool m_bModal;
    /// A wait cursor is up.
    bool m_bBusy;
    /// Nesting depth of the wait cursor.
    uint32_t m_uiWaitCount;
    /// Shows the wait cursor while it exists (m_uiWaitCount > 0).
    SZxWaitCursorHolder* m_pWaitCursor;
    /// IS_Histo was called for the current dialog.
    bool m_bHistoEnabled;
    /// Combined (true) or split view (false).
    bool m_bHistoCombined;
    /// The split view is unavailable (view button id 0).
    bool m_bHistoNoSplit;
    /// Left edge of the histogram area (dialog client coordinates).
    int32_t m_iHistoLeft;
    /// Top edge of the histogram area.
    int32_t m_iHistoTop;
    /// Plot height in pixels.
    int32_t m_iHistoHeight;
    /// Id of the view button (-1: none).
    int32_t m_iMagnifierId;
    /// Id of the fast/quality synchronisation check box (-1: none).
    int32_t m_iFQSyncCheckId;
    /// Ids of the range texts of red, green and blue (-1: none).
    int32_t m_iRangeTextId[3];
    /// Id of the button that opens m_hPopupMenu (-1: none).
    int32_t m_iPopupButtonId;
    /// The application's popup menu of IS_Command.
    HMENU m_hPopupMenu;
    /// Id of the command-menu button (-1: none).
    int32_t m_iCommandButtonId;
    /// The command menu.
    CZxMenu m_commandMenu;
    /// The command groups the menu shows.
    uint32_t m_uiCommandFlags;
    /// Id of the help button (-1: none).
    int32_t m_iHelpButtonId;
    /// Topic raised with evHelp.
    CZxStringW m_wstrHelpTopic;
    /// Set by derived classes: the view button then does not toggle the view.
    bool m_bSplitToggleLocked;

    /// Guards both histogram models: OnNewHisto writes them on the acquisition
    /// thread while the dialog paints them on its own.
    mutable std::mutex m_histoLock;
    /// A WM_ZX_NEWHISTO is queued and IS_Message has not taken it yet (guarded by m_histoLock).
    bool m_bHistoPosted = false;
};

/// IZxGrabberUI_Wrapper over a dialog host (not owned): shared driver code
/// reaches the host's operations through it.
class ZX_API CZxGrabberUI_Wrapper : public CZxGrabberUI_WrapperBase {
public:
    /// Wraps `host` (not owned; it must outlive the wrapper).
    explicit CZxGrabberUI_Wrapper(CZxGrabberUI_Base* host) : m_pHost(host) {}

    CZxGenProvider_Low* GetGeneric() const override;
    CZxISControlList& GetControls() const override;
    uint32_t GetUserFlags() const override;   ///< 0: the dialog host keeps no user flags
    bool IsEasySetting() const override;      ///< false: the full setup
    bool IS_IsModal() override;
    void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue) override;
    void IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId, int32_t rangeText0,
                  int32_t rangeText1, int32_t rangeText2) override;
    void IS_Help(int32_t buttonId, const wchar_t* topic) override;
    CZxMenu* IS_CommandX(int32_t buttonId, uint32_t flags) override;
    void IS_CheckFQSync(int32_t checkId) override;
    bool IS_Message(ZxHWnd hwnd, unsigned int msg, int64_t wParam, int64_t lParam, int64_t* result,
                    CZxISControl** control) override;
    void IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode) override;
    ZxHWnd IS_SetHDLGActive(ZxHWnd hwnd) override;
    void IS_OpenFreeTopicHelp(const wchar_t* topic) override;
    bool IS_FQModeChangeAllowed() override;

    /// The wrapped host.
    CZxGrabberUI_Base* GetHost() const { return m_pHost; }

private:
    CZxGrabberUI_Base* m_pHost;
};

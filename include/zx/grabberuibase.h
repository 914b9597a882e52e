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
#include "zx/inputsetupcontrols.h"
#include "zxhost/menu.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

struct SZxWaitCursorHolder;
class IZxGUIElement;

/// The application's interfaces share this root.
class ZX_API IZxInterface {
public:
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
    virtual int32_t Init(CZxGenProvider_Low* provider,
                         int32_t (*callback)(EZxEvent, ZxHWnd, int64_t, void*)) = 0;
    virtual int32_t OnLiveChange(bool live, uint32_t mode) = 0;
    virtual int32_t OnNewHisto(SZxHisto& histo, uint32_t pixelKind) = 0;
    virtual int32_t OnNewCameraSettings() = 0;
    virtual bool IsHistoNeeded() = 0;
    virtual bool IsInputSetupAvailable() = 0;
    virtual int32_t InputSetup(ZxHWnd parent) = 0;
    virtual bool IsInputSetupSimpleAvailable() = 0;
    virtual int32_t InputSetupShowSimple(ZxHWnd parent) = 0;
    virtual bool IsInputSetupModelessAvailable() = 0;
    virtual int32_t InputSetupModelessShow(ZxHWnd parent) = 0;
    virtual int32_t InputSetupModelessHide() = 0;
    virtual bool IsConfigFormAvailable() = 0;
    virtual ZxHWnd ConfigFormShow(ZxHWnd parent) = 0;
    virtual int32_t ConfigFormHide() = 0;
    virtual void* CreateInputSetupForm(const wchar_t* name, uint32_t flags, int32_t id, uint64_t param,
                                       IZxGUIElement* parent, void* context) = 0;
};

/// The application's event sink: 0 for handled or allowed, non-zero otherwise.
typedef int32_t (*PFN_ZxGrabberUIEvent)(IZxGrabberUI::EZxEvent event, ZxHWnd hwnd, int64_t value, void* data);

/// Record of evInitModal / evInitModeless: the callback may fill both; the host
/// hands them to the dialog through IS_InitDialog's out-parameters.
struct SZxInitDialogEvent {
    int32_t m_iFlag = 0;
    uint32_t m_uiValue = 0;
};

/// Record of evMessage: the callback that handles the message (returns 0) puts
/// the dialog result into m_lResult.
struct SZxMessageEvent {
    int64_t m_wParam = 0;
    int64_t m_lParam = 0;
    int64_t m_lResult = 0;
};

/// Record of evHistoSetup, filled from IS_Histo's arguments; the callback may
/// change any field before the host reads them back.
struct SZxHistoSetupEvent {
    int32_t m_iStartSplit = 0;     ///< non-zero: start in the split (per-colour) view
    int64_t m_iMagnifierId = -1;
    int64_t m_iRangeTextId[3] = {-1, -1, -1};
};

/// Private dialog messages of the host.
enum : UINT {
    WM_ZX_LIVECHANGE = 0x05C3,     ///< OnLiveChange: wParam 1 live / 0 not, lParam = mode
    WM_ZX_NEWHISTO = 0x05C4,       ///< OnNewHisto: a new histogram is in the models
    WM_ZX_DRAWITEM_NOFRAME = 0x83F8, ///< as WM_DRAWITEM, without button frame and background
};

/// The library's own module: its resources hold the "INPUT_FORM" template.
ZX_API HMODULE ZX_GetLibraryModule();

/// Base of a driver's input-setup dialog.
///
/// The derived class creates the dialog in DoInputSetup (modal with
/// DialogBoxParamW, modeless with CreateDialogParamW) and hands every message of
/// its dialog procedure to IS_Message first: on WM_INITDIALOG it calls
/// IS_InitDialog, declares the histogram area (IS_Histo) and the special buttons,
/// attaches its controls to the dialog, the provider and GetControls(), and
/// shows their values. OnNewHisto and OnLiveChange may be called from the
/// driver's acquisition thread; everything else runs on the dialog's thread.
class ZX_API CZxGrabberUI_Base : public IZxGrabberUI {
public:
    CZxGrabberUI_Base();
    ~CZxGrabberUI_Base() override;
    CZxGrabberUI_Base(const CZxGrabberUI_Base&) = delete;
    CZxGrabberUI_Base& operator=(const CZxGrabberUI_Base&) = delete;

    // ---- Virtual operations, in slot order ----
    /// Stores provider and callback. 0.
    int32_t Init(CZxGenProvider_Low* provider, PFN_ZxGrabberUIEvent callback) override;
    /// Sends WM_ZX_LIVECHANGE to an open dialog unless a wait cursor is up. 0.
    int32_t OnLiveChange(bool live, uint32_t mode) override;
    /// Copies the histogram into both models and posts WM_ZX_NEWHISTO to an open
    /// dialog, unless one is still queued: frames that come faster than the
    /// dialog draws only refresh the models, which the next drawing shows.
    /// `pixelKind` as CZxHistoDraw::SetHistogram takes it. Any thread. 0.
    int32_t OnNewHisto(SZxHisto& histo, uint32_t pixelKind) override;
    /// Shows the provider's values in every control. 0.
    int32_t OnNewCameraSettings() override;
    /// True while a modal dialog is open.
    bool IsHistoNeeded() override;
    bool IsInputSetupAvailable() override;                 ///< false
    /// Closes an open dialog, then runs DoInputSetup(true, parent); its result.
    int32_t InputSetup(ZxHWnd parent) override;
    bool IsInputSetupSimpleAvailable() override;           ///< false
    int32_t InputSetupShowSimple(ZxHWnd parent) override;  ///< -2
    bool IsInputSetupModelessAvailable() override;         ///< false
    /// Closes an open dialog, then runs DoInputSetup(false, parent); its result.
    int32_t InputSetupModelessShow(ZxHWnd parent) override;
    /// Destroys an open dialog. 0.
    int32_t InputSetupModelessHide() override;
    bool IsConfigFormAvailable() override;                 ///< false
    ZxHWnd ConfigFormShow(ZxHWnd parent) override;         ///< null
    int32_t ConfigFormHide() override;                     ///< -2
    void* CreateInputSetupForm(const wchar_t* name, uint32_t flags, int32_t id, uint64_t param,
                               IZxGUIElement* parent, void* context) override;   ///< null
    /// Creates the dialog (slot 17): modal or modeless, over `parent`.
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
    bool IS_IsModal() const { return m_bModal; }
    /// Handles the host's share of a dialog message; true when handled, with the
    /// dialog result in *result. Everything else goes to the control list, whose
    /// control (when one handled it) lands in *control.
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
    /// Writes the camera's "AutoExposure" / "AutoWhite" switch of the set in use
    /// and refreshes the controls.
    void IS_AutoExposure(bool on);
    void IS_AutoWhite(bool on);

    // HWND spellings for dialog procedures.
    void IS_InitDialog(HWND hwnd, bool* outFlag, uint32_t* outValue)
    {
        IS_InitDialog(reinterpret_cast<ZxHWnd>(hwnd), outFlag, outValue);
    }
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
    void CommandMenuCreate();
    void CommandMenuHandle(uint32_t id);

    // ---- State ----
    CZxGenProvider_Low* GetProvider() const { return m_pProvider; }
    CZxISControlList& GetControls() { return m_controls; }
    HWND GetHDlg() const { return m_hDlg; }
    bool IsBusy() const { return m_bBusy; }
    uint32_t GetWaitCount() const { return m_uiWaitCount; }
    bool IsHistoCombined() const { return m_bHistoCombined; }
    const SZxGrabberCameraSettings& GetSavedSettings() const { return m_savedSettings; }
    CZxMenu& GetCommandMenu() { return m_commandMenu; }
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
    /// Closes an open dialog before another opens (modal: result 2).
    void CloseOpenDialog();

    CZxGenProvider_Low* m_pProvider;
    CZxISControlList m_controls;
    SZxGrabberCameraSettings m_savedSettings;
    CZxHistoDraw m_histoFull;
    CZxHistoDraw m_histoGrouped;
    PFN_ZxGrabberUIEvent m_pfnCallback;
    HWND m_hDlg;
    bool m_bModal;
    bool m_bBusy;
    uint32_t m_uiWaitCount;
    SZxWaitCursorHolder* m_pWaitCursor;
    bool m_bHistoEnabled;
    bool m_bHistoCombined;
    bool m_bHistoNoSplit;
    int32_t m_iHistoLeft;
    int32_t m_iHistoTop;
    int32_t m_iHistoHeight;
    int32_t m_iMagnifierId;
    int32_t m_iFQSyncCheckId;
    int32_t m_iRangeTextId[3];
    int32_t m_iPopupButtonId;
    HMENU m_hPopupMenu;
    int32_t m_iCommandButtonId;
    CZxMenu m_commandMenu;
    uint32_t m_uiCommandFlags;
    int32_t m_iHelpButtonId;
    CZxStringW m_wstrHelpTopic;
    /// Set by derived classes: the view button then does not toggle the view.
    bool m_bSplitToggleLocked;

    /// Guards both histogram models: OnNewHisto writes them on the acquisition
    /// thread while the dialog paints them on its own.
    mutable std::mutex m_histoLock;
    /// A WM_ZX_NEWHISTO is queued and its IS_Message has not ended (guarded by m_histoLock).
    bool m_bHistoPosted = false;
};

/// IZxGrabberUI_Wrapper over a dialog host (not owned): shared driver code
/// reaches the host's operations through it.
class ZX_API CZxGrabberUI_Wrapper : public CZxGrabberUI_WrapperBase {
public:
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

    CZxGrabberUI_Base* GetHost() const { return m_pHost; }

private:
    CZxGrabberUI_Base* m_pHost;
};

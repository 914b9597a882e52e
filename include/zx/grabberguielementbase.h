// The GUI-element host: a driver's setup presented as a dockable element of the
// application instead of a dialog. Same control list, command button, command
// menu and fast/quality check as the dialog host, no histogram; events go to the
// element's handler. Windows only.
#pragma once
#include <windows.h>

#include <cstdint>
#include "zx/export.h"
#include "zx/grabberuiwrapper.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/guielement.h"
#include "zxhost/menu.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

struct SZxWaitCursorHolder;

/// Event codes the GUI-element host raises to its handler.
enum : int32_t {
    ZX_GUIEVENT_FORMATCHANGING = 10003, ///< wParam = mode, payload (m_lParam) = the new format or 0
    ZX_GUIEVENT_FORMATCHANGED = 10004,  ///< wParam = mode
    ZX_GUIEVENT_REFRESH = 10005,        ///< wParam as sent
    ZX_GUIEVENT_DEFINEROI = 10006,      ///< command menu "Define..."
    ZX_GUIEVENT_COMMANDDONE = 10008,    ///< wParam as sent
    ZX_GUIEVENT_SAVEROI = 10010,        ///< "Save ROI..."
    ZX_GUIEVENT_LOADROI = 10011,        ///< "Load ROI..."
    ZX_GUIEVENT_PREDEFINEDROI = 10013,  ///< 10013..10022: predefined ROI 1..10
    /// IS_ChangeLiveMode: wParam = the mode; raised under the wait cursor.
    ZX_GUIEVENT_LIVEMODECHANGE = 10030,
    /// IS_OpenFreeTopicHelp: payload = the topic (const wchar_t*, never null).
    ZX_GUIEVENT_HELP = 10031,
    /// IS_SetHDLGActive: payload = an HWND* result slot (null on entry) the
    /// handler fills with the window that is to be the active dialog.
    ZX_GUIEVENT_SETACTIVEDIALOG = 10032,
    /// IS_FQModeChangeAllowed: payload = the provider; the handler answers 0 to allow.
    ZX_GUIEVENT_FQMODECHANGEQUERY = 10033,
};

/// Base of a driver's setup element.
///
/// The derived class creates the element's window (a child dialog) in
/// CreateElementWindow and hands every message of its dialog procedure to
/// IS_ProcessMessage. Every event reaches the handler with the grabber's active
/// secondary grabber switched to this provider's camera.
/// @note Everything runs on the UI thread that owns the element's window.
class ZX_API CZxGrabberGUIElement_Base : public CZxGUIControlElement {
public:
    /// No provider, window or handler yet.
    CZxGrabberGUIElement_Base();
    /// Empties the command menu and drops a wait cursor still up.
    ~CZxGrabberGUIElement_Base() override;
    /// Not copyable: controls and the window refer to this object.
    CZxGrabberGUIElement_Base(const CZxGrabberGUIElement_Base&) = delete;
    /// Not copyable.
    CZxGrabberGUIElement_Base& operator=(const CZxGrabberGUIElement_Base&) = delete;

    /// Creates the window through CreateElementWindow as a child of `parent`.
    ZxHWnd CreateUI(const wchar_t* name, int32_t style, ZxHWnd parent, IZxGUIElement* owner,
                    void* reserved) override;

    // ---- Slots after the inherited ones, in this order ----
    /// The element's command operation: GUI commands (the ROI commands of the
    /// command menu) arrive here with `data` pointing at their 56-byte record.
    /// This class hands the record to the handler under the secondary-grabber
    /// switch and returns the handler's answer (0 without a handler).
    virtual int32_t CustomCommand(int32_t code, int64_t value, void* data);
    /// The application's GUI zoom changed: the element relays out (moves its
    /// window to the new minimum size). Drivers with their own layout override.
    virtual void OnGuiZoomChanged();
    /// Whether the user may switch between fast and quality: as the dialog host
    /// asks its callback, the element asks its handler
    /// (ZX_GUIEVENT_FQMODECHANGEQUERY, allowed when it answers 0); true without
    /// a handler. Drivers may override.
    virtual bool IS_FQModeChangeAllowed();

    /// The provider whose properties the controls edit (not owned).
    void Init(CZxGenProvider_Low* provider) { m_pProvider = provider; }

    // ---- Called from the derived dialog procedure ----
    /// On WM_INITDIALOG: remembers the window and checks the fast/quality box.
    void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue);
    /// The command-menu button and its groups (4 = ROI here too); empties the
    /// menu and returns it for items of the caller's own.
    CZxMenu* IS_InitCommandX(int32_t buttonId, uint32_t flags);
    /// The check box that synchronises the fast and quality sets.
    void IS_CheckFQSync(int32_t checkId);
    /// The help button and its topic.
    void IS_Help(int32_t buttonId, const wchar_t* topic);
    /// Handles the host's share of a message; true when handled (*result the
    /// dialog result). Everything else goes to the control list with *result 0.
    /// @note The host's share (events, the wait cursor, the command button, the
    ///       fast/quality box) is done only once a handler is set; without one
    ///       every message goes straight to the control list.
    bool IS_ProcessMessage(ZxHWnd hwnd, UINT msg, int64_t wParam, int64_t lParam, int64_t* result,
                           CZxISControl** control);
    /// Reference-counted wait cursor, as in the dialog host; whether one was up.
    bool IS_SetWaitCursor(bool on);
    /// The element is never modal.
    bool IS_IsModal() const { return false; }
    /// As the dialog host: with a handler, wait cursor on, ZX_GUIEVENT_LIVEMODECHANGE
    /// (wParam = mode), wait cursor off; nothing without one.
    void IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode);
    /// As the dialog host: asks the handler (ZX_GUIEVENT_SETACTIVEDIALOG) which
    /// window is to be the active dialog and returns it (null when it wrote
    /// none). Needs a handler: without one the diagnostic assertion reports it
    /// and the result is null.
    ZxHWnd IS_SetHDLGActive(ZxHWnd hwnd);
    /// As the dialog host's help: raises ZX_GUIEVENT_HELP with the topic (null
    /// becomes ""); nothing without a handler.
    void IS_OpenFreeTopicHelp(const wchar_t* topic);

    /// Builds the command menu for the groups of IS_InitCommandX.
    void CommandMenuCreate();
    /// Carries out the command menu item `id`; the ROI items become events
    /// (ZX_GUIEVENT_DEFINEROI and the others).
    void CommandMenuHandle(uint32_t id);

    /// Raises `code` to the handler (record: wParam, payload) under the
    /// secondary-grabber switch; the handler's answer, 0 without a handler.
    int32_t RaiseEvent(int32_t code, uintptr_t wParam, intptr_t payload);

    /// The provider given to Init (not owned).
    CZxGenProvider_Low* GetProvider() const { return m_pProvider; }
    /// The element's control list; attach every control to it.
    CZxISControlList& GetControls() { return m_controls; }
    /// The command menu.
    CZxMenu& GetCommandMenu() { return m_commandMenu; }
    /// The command groups given to IS_InitCommandX.
    uint32_t GetCommandFlags() const { return m_uiCommandFlags; }
    /// Nesting depth of IS_SetWaitCursor(true).
    uint32_t GetWaitCount() const { return m_uiWaitCount; }
    /// True once a non-null handler was set.
    bool HasHandler() const { return m_bHasHandler; }
    /// Stores the application's event handler and its context (null: events are dropped).
    void SetHandler(PFN_ZxGUIElementHandler handler, void* context) override;

protected:
    /// Creates the element's window (a modeless child dialog of `parent`).
    virtual HWND CreateElementWindow(HWND parent) = 0;
    /// Helper for CreateElementWindow: the dialog template `name` of `module`
    /// created modeless and made a borderless child of `parent`.
    static HWND CreateChildDialog(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc, LPARAM param);

    /// The provider (not owned).
    CZxGenProvider_Low* m_pProvider;
    /// The element's bound controls.
    CZxISControlList m_controls;
    /// Nesting depth of the wait cursor.
    uint32_t m_uiWaitCount;
    /// Shows the wait cursor while it exists.
    SZxWaitCursorHolder* m_pWaitCursor;
    /// Id of the fast/quality synchronisation check box (-1: none).
    int32_t m_iFQSyncCheckId;
    /// Id of the command-menu button (-1: none).
    int32_t m_iCommandButtonId;
    /// The command menu.
    CZxMenu m_commandMenu;
    /// The command groups the menu shows.
    uint32_t m_uiCommandFlags;
    /// The help topic of IS_Help.
    CZxStringW m_wstrHelpTopic;

private:
    bool DrawCommandButton(HWND hwnd, const DRAWITEMSTRUCT& dis);
    bool m_bHasHandler;
};

/// IZxGrabberUI_Wrapper over a GUI-element host (not owned).
class ZX_API CZxGrabberGUIElement_Wrapper : public CZxGrabberUI_WrapperBase {
public:
    /// Wraps `host` (not owned; it must outlive the wrapper).
    explicit CZxGrabberGUIElement_Wrapper(CZxGrabberGUIElement_Base* host) : m_pHost(host) {}

    CZxGenProvider_Low* GetGeneric() const override;
    CZxISControlList& GetControls() const override;
    uint32_t GetUserFlags() const override;   ///< 0
    bool IsEasySetting() const override;      ///< false
    bool IS_IsModal() override;
    void IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue) override;
    /// The element has no histogram: nothing happens.
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
    CZxGrabberGUIElement_Base* GetHost() const { return m_pHost; }

private:
    CZxGrabberGUIElement_Base* m_pHost;
};

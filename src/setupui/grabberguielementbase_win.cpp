#include "zx/grabberguielementbase.h"

#include "common/langdialog_win.h"
#include "setupui/commandmenu_win.h"
#include "setupui/hostcore_win.h"
#include "zxhost/grabber.h"
#include "zxhost/guicolors.h"
#include "zxhost/guidraw.h"
#include "zxhost/system.h"
#include "zxhost/waitcursor.h"

namespace {
const wchar_t kSource[] = L"grabberguielementbase";

/// Makes the provider's camera the grabber's active one for its lifetime, so
/// that what the application does on an event acts on this element's camera.
class SecGrabberSwitch {
public:
    explicit SecGrabberSwitch(CZxGenProvider_Low* provider)
        : m_grabber(provider ? provider->GetGrabber() : nullptr)
    {
        if (m_grabber) {
            m_previous = m_grabber->SecGrabber_GetActive();
            m_grabber->SecGrabber_SetActive(provider->GetSecGrabberInstance());
        }
    }
    ~SecGrabberSwitch()
    {
        if (m_grabber)
            m_grabber->SecGrabber_SetActive(m_previous);
    }
    SecGrabberSwitch(const SecGrabberSwitch&) = delete;
    SecGrabberSwitch& operator=(const SecGrabberSwitch&) = delete;

private:
    CZxGenericProviderGrabber* m_grabber;
    int m_previous = 0;
};
} // namespace

CZxGrabberGUIElement_Base::CZxGrabberGUIElement_Base()
    : m_pProvider(nullptr), m_uiWaitCount(0), m_pWaitCursor(nullptr), m_iFQSyncCheckId(-1), m_iCommandButtonId(-1),
      m_uiCommandFlags(0), m_bHasHandler(false)
{
}

CZxGrabberGUIElement_Base::~CZxGrabberGUIElement_Base()
{
    m_commandMenu.RemoveAll();
    delete m_pWaitCursor;
}

ZxHWnd CZxGrabberGUIElement_Base::CreateUI(const wchar_t* name, int32_t, ZxHWnd parent, IZxGUIElement*, void*)
{
    DestroyUI();
    m_wstrName = name ? name : L"";
    HWND w = CreateElementWindow(reinterpret_cast<HWND>(parent));
    m_hWnd = reinterpret_cast<ZxHWnd>(w);
    if (w) {
        RECT r{};
        GetWindowRect(w, &r);
        SetMinSize(r.right - r.left, r.bottom - r.top);
    }
    return m_hWnd;
}

HWND CZxGrabberGUIElement_Base::CreateChildDialog(HMODULE module, const wchar_t* name, HWND parent, DLGPROC proc,
                                                 LPARAM param)
{
    // Setup templates are written as pop-up dialogs; docked, the caption and
    // frame belong to the pane around the element.
    const DLGTEMPLATE* t = zx::FindDialogTemplate(module, name);
    HWND w = t ? CreateDialogIndirectParamW(module, t, parent, proc, param) : nullptr;
    if (!w)
        return nullptr;
    LONG_PTR style = GetWindowLongPtrW(w, GWL_STYLE);
    style &= ~LONG_PTR(WS_POPUP | WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | DS_MODALFRAME);
    SetWindowLongPtrW(w, GWL_STYLE, style | WS_CHILD);
    SetWindowLongPtrW(w, GWL_EXSTYLE, GetWindowLongPtrW(w, GWL_EXSTYLE) & ~LONG_PTR(WS_EX_DLGMODALFRAME));
    if (parent)
        SetParent(w, parent);
    SetWindowPos(w, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    return w;
}

void CZxGrabberGUIElement_Base::SetHandler(PFN_ZxGUIElementHandler handler, void* context)
{
    CZxGUIControlElement::SetHandler(handler, context);
    m_bHasHandler = handler != nullptr;
}

int32_t CZxGrabberGUIElement_Base::RaiseEvent(int32_t code, uintptr_t wParam, intptr_t payload)
{
    if (!m_bHasHandler)
        return 0;
    SecGrabberSwitch active(m_pProvider);
    return FireEvent(code, 0, wParam, payload);
}

int32_t CZxGrabberGUIElement_Base::CustomCommand(int32_t code, int64_t value, void* data)
{
    const auto* record = static_cast<const SZxGUIElementEvent*>(data);
    if (record && record->m_uiSize >= sizeof(SZxGUIElementEvent))
        return RaiseEvent(record->m_iCode, record->m_wParam, record->m_lParam);
    return RaiseEvent(code, uintptr_t(value), 0);
}

void CZxGrabberGUIElement_Base::OnGuiZoomChanged()
{
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    if (w && GetMinWidth() > 0)
        SetWindowPos(w, nullptr, 0, 0, int(GetMinWidth() * ZX_GetGUIZoom()), int(GetMinHeight() * ZX_GetGUIZoom()),
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool CZxGrabberGUIElement_Base::IS_FQModeChangeAllowed()
{
    return !m_bHasHandler || RaiseEvent(ZX_GUIEVENT_FQMODECHANGEQUERY, 0, reinterpret_cast<intptr_t>(m_pProvider)) == 0;
}

void CZxGrabberGUIElement_Base::IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue)
{
    m_hWnd = hwnd;
    if (outFlag)
        *outFlag = false;
    if (outValue)
        *outValue = 0;
    zxsetupui::ShowFQSync(reinterpret_cast<HWND>(hwnd), m_iFQSyncCheckId, m_pProvider);
}

CZxMenu* CZxGrabberGUIElement_Base::IS_InitCommandX(int32_t buttonId, uint32_t flags)
{
    m_iCommandButtonId = buttonId;
    m_uiCommandFlags = flags;
    m_commandMenu.RemoveAll();
    return &m_commandMenu;
}

void CZxGrabberGUIElement_Base::IS_CheckFQSync(int32_t checkId) { m_iFQSyncCheckId = checkId; }

void CZxGrabberGUIElement_Base::IS_Help(int32_t, const wchar_t* topic) { m_wstrHelpTopic = topic ? topic : L""; }

bool CZxGrabberGUIElement_Base::IS_SetWaitCursor(bool on)
{
    return zxsetupui::CountWaitCursor(m_uiWaitCount, m_pWaitCursor, on);
}

void CZxGrabberGUIElement_Base::CommandMenuCreate()
{
    zxsetupui::SCommandMenuHost host{m_pProvider, &m_commandMenu, reinterpret_cast<HWND>(m_hWnd), &m_controls,
                                     m_uiCommandFlags, true, kSource, nullptr};
    zxsetupui::CommandMenuCreate(host);
}

void CZxGrabberGUIElement_Base::CommandMenuHandle(uint32_t id)
{
    HWND w = reinterpret_cast<HWND>(m_hWnd);
    zxsetupui::SCommandMenuHost host{m_pProvider, &m_commandMenu, w, &m_controls, m_uiCommandFlags, true, kSource,
                                     nullptr};
    // The ROI commands are GUI commands: a record handed to the element's own
    // command operation, which the application's ROI dialog answers.
    host.hostCommand = [this, w](uint32_t menuId) {
        int32_t code = 0;
        if (menuId == zxsetupui::kMenuDefineROI)
            code = ZX_GUIEVENT_DEFINEROI;
        else if (menuId == zxsetupui::kMenuSaveROI)
            code = ZX_GUIEVENT_SAVEROI;
        else if (menuId == zxsetupui::kMenuLoadROI)
            code = ZX_GUIEVENT_LOADROI;
        else
            code = int32_t(menuId) + 3006;
        SZxGUIElementEvent record{};
        record.m_uiSize = sizeof(SZxGUIElementEvent);
        record.m_iCode = code;
        record.m_hWnd = reinterpret_cast<ZxHWnd>(w);
        CustomCommand(code, 0, &record);
    };
    zxsetupui::CommandMenuHandle(host, id);
}

bool CZxGrabberGUIElement_Base::IS_ProcessMessage(ZxHWnd zhwnd, UINT msg, int64_t wParam, int64_t lParam,
                                                  int64_t* result, CZxISControl** control)
{
    HWND hwnd = reinterpret_cast<HWND>(zhwnd);
    int64_t scratch = 0;
    if (!result)
        result = &scratch;
    if (m_bHasHandler) {
        // The handler's answer is the dialog result; non-zero takes the message.
        const auto raise = [this](int32_t code, int64_t w, int64_t l, int64_t* answer) {
            const int32_t r = RaiseEvent(code, uintptr_t(w), intptr_t(l));
            *answer = r;
            return r != 0;
        };
        switch (zxsetupui::RaisePropertyEvent(zxsetupui::kElementHost, msg, wParam, lParam, result, raise,
                                              [this](bool on) { return IS_SetWaitCursor(on); })) {
        case zxsetupui::EPropertyAnswer::Taken:
            return true;
        case zxsetupui::EPropertyAnswer::Declined:
        case zxsetupui::EPropertyAnswer::None:
            break;
        }
        if (msg == WM_DRAWITEM && lParam && DrawCommandButton(hwnd, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)))
            return false;
        if (msg == WM_COMMAND && zxsetupui::IsItem(m_iCommandButtonId, LOWORD(wParam)) && HIWORD(wParam) == 0) {
            *result = 0;
            // Right-aligned under the button: the element usually docks at a window's right edge.
            zxsetupui::RunCommandButton(
                m_commandMenu, m_pProvider, hwnd, LOWORD(wParam), true, [this] { CommandMenuCreate(); },
                [this](uint32_t selected) { CommandMenuHandle(selected); });
            return true;
        }
        if (msg == WM_COMMAND)
            zxsetupui::OnFQSyncClick(hwnd, m_iFQSyncCheckId, WPARAM(wParam), m_pProvider);
    }
    *result = 0;
    return m_controls.DlgProcHookMany(zhwnd, msg, ZxWParam(wParam), ZxLParam(lParam),
                                      reinterpret_cast<ZxLResult*>(result), control, 0xFFFFFFFFu);
}

bool CZxGrabberGUIElement_Base::DrawCommandButton(HWND hwnd, const DRAWITEMSTRUCT& dis)
{
    if (!zxsetupui::IsItem(m_iCommandButtonId, int(dis.CtlID)))
        return false;
    RECT r = dis.rcItem;
    ZX_DrawFrameControl(dis.hDC, r, DFC_BUTTON,
                        DFCS_BUTTONPUSH | DFCS_ADJUSTRECT | ((dis.itemState & ODS_SELECTED) ? DFCS_PUSHED : 0) |
                            ((dis.itemState & ODS_DISABLED) ? DFCS_INACTIVE : 0));
    FillRect(dis.hDC, &r, GetSysColorBrush(COLOR_BTNFACE));
    zxsetupui::DrawMenuButtonFace(dis, hwnd, r);
    return true;
}

// ---- Wrapper ----

CZxGenProvider_Low* CZxGrabberGUIElement_Wrapper::GetGeneric() const { return m_pHost->GetProvider(); }
CZxISControlList& CZxGrabberGUIElement_Wrapper::GetControls() const { return m_pHost->GetControls(); }
uint32_t CZxGrabberGUIElement_Wrapper::GetUserFlags() const { return 0; }
bool CZxGrabberGUIElement_Wrapper::IsEasySetting() const { return false; }
bool CZxGrabberGUIElement_Wrapper::IS_IsModal() { return m_pHost->IS_IsModal(); }

void CZxGrabberGUIElement_Wrapper::IS_InitDialog(ZxHWnd hwnd, bool* outFlag, uint32_t* outValue)
{
    m_pHost->IS_InitDialog(hwnd, outFlag, outValue);
}

void CZxGrabberGUIElement_Wrapper::IS_Histo(int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t) {}
void CZxGrabberGUIElement_Wrapper::IS_Help(int32_t buttonId, const wchar_t* topic) { m_pHost->IS_Help(buttonId, topic); }

CZxMenu* CZxGrabberGUIElement_Wrapper::IS_CommandX(int32_t buttonId, uint32_t flags)
{
    return m_pHost->IS_InitCommandX(buttonId, flags);
}

void CZxGrabberGUIElement_Wrapper::IS_CheckFQSync(int32_t checkId) { m_pHost->IS_CheckFQSync(checkId); }

bool CZxGrabberGUIElement_Wrapper::IS_Message(ZxHWnd hwnd, unsigned int msg, int64_t wParam, int64_t lParam,
                                              int64_t* result, CZxISControl** control)
{
    return m_pHost->IS_ProcessMessage(hwnd, msg, wParam, lParam, result, control);
}

void CZxGrabberGUIElement_Wrapper::IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode)
{
    m_pHost->IS_ChangeLiveMode(hwnd, mode);
}

ZxHWnd CZxGrabberGUIElement_Wrapper::IS_SetHDLGActive(ZxHWnd hwnd) { return m_pHost->IS_SetHDLGActive(hwnd); }
void CZxGrabberGUIElement_Wrapper::IS_OpenFreeTopicHelp(const wchar_t* topic) { m_pHost->IS_OpenFreeTopicHelp(topic); }
bool CZxGrabberGUIElement_Wrapper::IS_FQModeChangeAllowed() { return m_pHost->IS_FQModeChangeAllowed(); }

// ---- The dialog host's application requests, asked of the element's handler ----

void CZxGrabberGUIElement_Base::IS_ChangeLiveMode(ZxHWnd, uint32_t mode)
{
    if (!m_bHasHandler)
        return;
    IS_SetWaitCursor(true);
    RaiseEvent(ZX_GUIEVENT_LIVEMODECHANGE, uintptr_t(mode), 0);
    IS_SetWaitCursor(false);
}

ZxHWnd CZxGrabberGUIElement_Base::IS_SetHDLGActive(ZxHWnd)
{
    HWND active = nullptr;
    if (ZX_DIAG_FAIL_IF(!m_bHasHandler, kSource))
        return nullptr;
    RaiseEvent(ZX_GUIEVENT_SETACTIVEDIALOG, 0, reinterpret_cast<intptr_t>(&active));
    return reinterpret_cast<ZxHWnd>(active);
}

void CZxGrabberGUIElement_Base::IS_OpenFreeTopicHelp(const wchar_t* topic)
{
    RaiseEvent(ZX_GUIEVENT_HELP, 0, reinterpret_cast<intptr_t>(topic ? topic : L""));
}

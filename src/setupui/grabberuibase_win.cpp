#include "zx/grabberuibase.h"

#include "setupui/commandmenu_win.h"
#include "setupui/hostcore_win.h"
#include "zxhost/alignwnd.h"
#include "zxhost/bitmappool.h"
#include "zxhost/system.h"
#include "zxhost/waitcursor.h"
#include "zxhost/xpbutton.h"

namespace {
const wchar_t kSource[] = L"grabberuibase";
}

IZxInterface::~IZxInterface() = default;

HMODULE ZX_GetLibraryModule()
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ZX_GetLibraryModule), &self);
    return self;
}

CZxGrabberUI_Base::CZxGrabberUI_Base()
    : m_pProvider(nullptr), m_histoFull(256, 3), m_histoGrouped(128, 2), m_pfnCallback(nullptr), m_hDlg(nullptr),
      m_bModal(false), m_bBusy(false), m_uiWaitCount(0), m_pWaitCursor(nullptr), m_bHistoEnabled(false),
      m_bHistoCombined(true), m_bHistoNoSplit(false), m_iHistoLeft(0), m_iHistoTop(0), m_iHistoHeight(100),
      m_iMagnifierId(-1), m_iFQSyncCheckId(-1), m_iRangeTextId{-1, -1, -1}, m_iPopupButtonId(-1),
      m_hPopupMenu(nullptr), m_iCommandButtonId(-1), m_uiCommandFlags(0), m_iHelpButtonId(-1),
      m_bSplitToggleLocked(false)
{
}

CZxGrabberUI_Base::~CZxGrabberUI_Base()
{
    m_commandMenu.RemoveAll();
    delete m_pWaitCursor;
}

// ---- Virtual operations -----------------------------------------------------------

int32_t CZxGrabberUI_Base::Init(CZxGenProvider_Low* provider, PFN_ZxGrabberUIEvent callback)
{
    m_pProvider = provider;
    m_pfnCallback = callback;
    return 0;
}

int32_t CZxGrabberUI_Base::OnLiveChange(bool live, uint32_t mode)
{
    HWND dlg;
    bool busy;
    {
        const std::lock_guard<std::mutex> lock(m_histoLock);
        dlg = m_hDlg;
        busy = m_bBusy;
    }
    // Never hold the lock across SendMessage: the dialog's thread takes it to paint.
    if (dlg && !busy)
        SendMessageW(dlg, WM_ZX_LIVECHANGE, live ? 1 : 0, LPARAM(mode));
    return 0;
}

int32_t CZxGrabberUI_Base::OnNewHisto(SZxHisto& histo, uint32_t pixelKind)
{
    std::unique_lock<std::mutex> lock(m_histoLock);
    m_histoFull.SetHistogram(histo, pixelKind, nullptr);
    m_histoGrouped.SetHistogram(histo, pixelKind, nullptr);
    PostNewHisto(lock);
    return 0;
}

int32_t CZxGrabberUI_Base::OnNewFrameHisto(const SZxAEHistogram& histo)
{
    const uint32_t kind = histo.bMono ? 0u : uint32_t(CZxHistoDraw::PIXELKIND_RGB);
    std::unique_lock<std::mutex> lock(m_histoLock);
    m_histoFull.SetHistogram(histo, kind, nullptr);
    m_histoGrouped.SetHistogram(histo, kind, nullptr);
    PostNewHisto(lock);
    return 0;
}

void CZxGrabberUI_Base::PostNewHisto(std::unique_lock<std::mutex>& lock)
{
    // One message at a time: frames faster than the dialog paints only
    // refresh the models, and the dialog's queue never fills with them.
    HWND dlg = m_hDlg && !m_bHistoPosted ? m_hDlg : nullptr;
    if (dlg)
        m_bHistoPosted = true;
    lock.unlock();
    if (dlg && !PostMessageW(dlg, WM_ZX_NEWHISTO, 0, 0)) {
        lock.lock();
        m_bHistoPosted = false;
        lock.unlock();
    }
}

int32_t CZxGrabberUI_Base::OnNewCameraSettings()
{
    m_controls.UpdateFromGenericMany(0xFFFFFFFFu);
    return 0;
}

bool CZxGrabberUI_Base::IsHistoNeeded() { return m_hDlg && m_bModal; }
bool CZxGrabberUI_Base::IsInputSetupAvailable() { return false; }

int32_t CZxGrabberUI_Base::InputSetup(ZxHWnd parent)
{
    CloseOpenDialog();
    m_bModal = true;
    return DoInputSetup(true, parent);
}

bool CZxGrabberUI_Base::IsInputSetupSimpleAvailable() { return false; }
int32_t CZxGrabberUI_Base::InputSetupShowSimple(ZxHWnd) { return -2; }
bool CZxGrabberUI_Base::IsInputSetupModelessAvailable() { return false; }

int32_t CZxGrabberUI_Base::InputSetupModelessShow(ZxHWnd parent)
{
    CloseOpenDialog();
    m_bModal = false;
    return DoInputSetup(false, parent);
}

int32_t CZxGrabberUI_Base::InputSetupModelessHide()
{
    HWND dlg = m_hDlg;
    if (dlg) {
        DestroyWindow(dlg);
        const std::lock_guard<std::mutex> lock(m_histoLock);
        m_hDlg = nullptr;
    }
    return 0;
}

bool CZxGrabberUI_Base::IsConfigFormAvailable() { return false; }
ZxHWnd CZxGrabberUI_Base::ConfigFormShow(ZxHWnd) { return nullptr; }
int32_t CZxGrabberUI_Base::ConfigFormHide() { return -2; }

void* CZxGrabberUI_Base::CreateInputSetupForm(const wchar_t*, uint32_t, int32_t, uint64_t, IZxGUIElement*, void*)
{
    return nullptr;
}

void CZxGrabberUI_Base::CloseOpenDialog()
{
    if (!m_hDlg)
        return;
    if (m_bModal)
        EndDialog(m_hDlg, 2);
    else if (m_pProvider)
        m_pProvider->InputSetupModelessHide();   // the driver destroys its dialog from there
}

// ---- Operations of the dialog procedure ---------------------------------------------

int32_t CZxGrabberUI_Base::Raise(EZxEvent event, HWND hwnd, int64_t value, void* data) const
{
    return m_pfnCallback ? m_pfnCallback(event, reinterpret_cast<ZxHWnd>(hwnd), value, data) : -1;
}

void CZxGrabberUI_Base::IS_InitDialog(ZxHWnd zhwnd, bool* outFlag, uint32_t* outValue)
{
    HWND hwnd = reinterpret_cast<HWND>(zhwnd);
    {
        const std::lock_guard<std::mutex> lock(m_histoLock);
        m_hDlg = hwnd;
        m_bHistoPosted = false;
    }
    m_bHistoEnabled = false;
    if (m_pfnCallback) {
        SZxInitDialogEvent record;
        Raise(m_bModal ? evInitModal : evInitModeless, hwnd, 0, &record);
        if (outFlag)
            *outFlag = record.m_iFlag != 0;
        if (outValue)
            *outValue = record.m_uiValue;
    }
    if (m_bModal && m_pProvider)
        m_pProvider->CameraSettingsGet_UNI_WRP(m_savedSettings, ZX_SETTINGS_ALL, true);
    zxsetupui::ShowFQSync(hwnd, m_iFQSyncCheckId, m_pProvider);
}

namespace {
// The view button's images, loaded once per process.
int g_magSplitShown = -1;      // "QEN_MAG1": one bar, back to the combined view
int g_magCombinedShown = -1;   // "QEN_MAG2": three bars, to the split view
} // namespace

void CZxGrabberUI_Base::IS_Histo(int32_t left, int32_t top, int32_t height, int32_t magnifierId,
                                 int32_t rangeText0, int32_t rangeText1, int32_t rangeText2)
{
    if (g_magSplitShown == -1)
        g_magSplitShown = CZxBitmapPool::Add(L"QEN_MAG1");
    if (g_magCombinedShown == -1)
        g_magCombinedShown = CZxBitmapPool::Add(L"QEN_MAG2");

    SZxHistoSetupEvent layout;
    layout.m_iMagnifierId = magnifierId;
    layout.m_iRangeTextId[0] = rangeText0;
    layout.m_iRangeTextId[1] = rangeText1;
    layout.m_iRangeTextId[2] = rangeText2;
    if (m_pfnCallback)
        Raise(evHistoSetup, nullptr, 0, &layout);

    m_iHistoLeft = left;
    m_iHistoTop = top;
    m_iHistoHeight = height;
    m_iMagnifierId = int32_t(layout.m_iMagnifierId);
    for (int i = 0; i < 3; ++i)
        m_iRangeTextId[i] = int32_t(layout.m_iRangeTextId[i]);
    m_bHistoNoSplit = m_iMagnifierId == 0;
    m_bHistoEnabled = true;
    m_bHistoCombined = layout.m_iStartSplit == 0;

    ZX_CreateXPOwnerDrawButton(m_hDlg, m_iMagnifierId);
    if (HWND button = m_iMagnifierId != -1 && m_hDlg ? GetDlgItem(m_hDlg, m_iMagnifierId) : nullptr) {
        InvalidateRect(button, nullptr, TRUE);
        UpdateWindow(button);
    }
}

void CZxGrabberUI_Base::IS_HistoGetRect(RECT& rect) const
{
    rect.left = m_iHistoLeft;
    rect.top = m_iHistoTop;
    rect.right = m_iHistoLeft + (m_bHistoNoSplit ? 292 : 420);
    rect.bottom = m_iHistoTop + m_iHistoHeight + 20;
}

void CZxGrabberUI_Base::IS_Command(int32_t buttonId, HMENU menu)
{
    m_iPopupButtonId = buttonId;
    m_hPopupMenu = menu;
    // The button shows the picker arrow, so it is drawn by the host.
    if (m_hDlg)
        ZX_CreateXPOwnerDrawButton(m_hDlg, buttonId);
}

CZxMenu* CZxGrabberUI_Base::IS_CommandX(int32_t buttonId, uint32_t flags)
{
    m_iCommandButtonId = buttonId;
    m_uiCommandFlags = flags;
    m_commandMenu.RemoveAll();
    if (m_hDlg)
        ZX_CreateXPOwnerDrawButton(m_hDlg, buttonId);
    return &m_commandMenu;
}

void CZxGrabberUI_Base::IS_CheckFQSync(int32_t checkId) { m_iFQSyncCheckId = checkId; }

void CZxGrabberUI_Base::IS_Help(int32_t buttonId, const wchar_t* topic)
{
    m_iHelpButtonId = buttonId;
    m_wstrHelpTopic = CZxStringW(topic);
}

void CZxGrabberUI_Base::IS_ChangeLiveMode(ZxHWnd hwnd, uint32_t mode)
{
    if (!m_pfnCallback)
        return;
    IS_SetWaitCursor(true);
    Raise(evLiveModeChange, reinterpret_cast<HWND>(hwnd), mode, nullptr);
    IS_SetWaitCursor(false);
}

bool CZxGrabberUI_Base::IS_SetWaitCursor(bool on)
{
    {
        // Busy is read by OnLiveChange on the acquisition thread.
        const std::lock_guard<std::mutex> lock(m_histoLock);
        // Kept as the application knows it: any single "off" clears busy, even
        // while outer holders keep the wait cursor up.
        m_bBusy = on;
    }
    return zxsetupui::CountWaitCursor(m_uiWaitCount, m_pWaitCursor, on);
}

bool CZxGrabberUI_Base::IS_FQModeChangeAllowed()
{
    return !m_pfnCallback || Raise(evFQModeChangeQuery, nullptr, 0, m_pProvider) == 0;
}

ZxHWnd CZxGrabberUI_Base::IS_SetHDLGActive(ZxHWnd hwnd)
{
    HWND active = nullptr;
    if (ZX_DIAG_FAIL_IF(m_pfnCallback == nullptr, kSource))
        return nullptr;
    Raise(evSetActiveDialog, reinterpret_cast<HWND>(hwnd), 0, &active);
    return reinterpret_cast<ZxHWnd>(active);
}

void CZxGrabberUI_Base::IS_OpenFreeTopicHelp(const wchar_t* topic)
{
    Raise(evHelp, m_hDlg, 0, const_cast<wchar_t*>(topic ? topic : L""));
}

namespace {
void WriteSwitch(CZxGenProvider_Low* provider, const wchar_t* name, bool on)
{
    if (!provider)
        return;
    CZxVariant wrapped;
    wrapped[L"Value"] = CZxVariant(on);
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, wrapped));
    provider->PropSet_WRP(provider->GetModeFQ(), values, nullptr, false);
}
} // namespace

void CZxGrabberUI_Base::IS_AutoExposure(bool on)
{
    WriteSwitch(m_pProvider, L"AutoExposure", on);
    m_controls.UpdateFromGenericMany(0xFFFFFFFFu);
    m_controls.UpdateStateMany(0xFFFFFFFFu);
}

void CZxGrabberUI_Base::IS_AutoWhite(bool on)
{
    WriteSwitch(m_pProvider, L"AutoWhite", on);
    m_controls.UpdateFromGenericMany(0xFFFFFFFFu);
    m_controls.UpdateStateMany(0xFFFFFFFFu);
}

// ---- Messages -----------------------------------------------------------------------

using zxsetupui::IsItem;

bool CZxGrabberUI_Base::OnCommand(HWND hwnd, int64_t wParam, int64_t* result)
{
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);

    if (IsItem(m_iHelpButtonId, id) && code == 0) {
        Raise(evHelp, hwnd, 0, const_cast<wchar_t*>(m_wstrHelpTopic.GetString()));
        *result = 0;
        return true;
    }
    if (id == IDOK && !m_bModal) {
        if (m_pProvider)
            m_pProvider->InputSetupModelessHide();
        *result = 0;
        return true;
    }
    if (id == IDCANCEL && m_bModal) {
        // One change for the controls and the application: the restore is
        // bracketed as a format change of the set in use.
        const uint32_t mode = m_pProvider ? m_pProvider->GetModeFQ() : ZX_MODE_FAST;
        SendMessageW(m_hDlg, WM_IS_FORMATCHANGING, mode, 0);
        if (m_pProvider)
            m_pProvider->CameraSettingsSet_UNI_WRP(m_savedSettings, ZX_SETTINGS_ALL);
        SendMessageW(m_hDlg, WM_IS_FORMATCHANGED, mode, 0);
        return false;
    }
    if (IsItem(m_iPopupButtonId, id) && code == 0 && m_hPopupMenu) {
        RECT r{};
        GetWindowRect(GetDlgItem(hwnd, id), &r);
        TrackPopupMenu(m_hPopupMenu, 0, r.left, r.bottom, 0, m_hDlg, nullptr);
        return false;
    }
    if (IsItem(m_iCommandButtonId, id) && code == 0) {
        *result = 0;
        zxsetupui::RunCommandButton(
            m_commandMenu, m_pProvider, hwnd, id, false, [this] { CommandMenuCreate(); },
            [this](uint32_t selected) { CommandMenuHandle(selected); });
        return true;
    }
    if (IsItem(m_iMagnifierId, id) && !m_bSplitToggleLocked) {
        m_bHistoCombined = !m_bHistoCombined;
        if (HWND button = GetDlgItem(hwnd, id)) {
            InvalidateRect(button, nullptr, TRUE);
            UpdateWindow(button);
        }
        RECT r;
        IS_HistoGetRect(r);
        InvalidateRect(hwnd, &r, TRUE);
        *result = 0;
        return true;
    }
    zxsetupui::OnFQSyncClick(hwnd, m_iFQSyncCheckId, WPARAM(wParam), m_pProvider);
    return false;
}

bool CZxGrabberUI_Base::IS_Message(ZxHWnd zhwnd, UINT msg, int64_t wParam, int64_t lParam, int64_t* result,
                                   CZxISControl** control)
{
    int64_t scratch = 0;
    if (!result)
        result = &scratch;
    // Taken off the queue: a frame that arrives from here on posts again, so one
    // written while its texts are being drawn is never left unshown.
    if (msg == WM_ZX_NEWHISTO) {
        const std::lock_guard<std::mutex> lock(m_histoLock);
        m_bHistoPosted = false;
    }
    bool handled = false;
    // The host's work answers to the application: without a callback every
    // message is the controls'.
    if (m_pfnCallback && HostMessage(reinterpret_cast<HWND>(zhwnd), msg, wParam, lParam, result, &handled))
        return handled;
    if (control)
        *control = nullptr;
    return m_controls.DlgProcHookMany(zhwnd, msg, ZxWParam(wParam), ZxLParam(lParam), result, control,
                                      0xFFFFFFFFu);
}

bool CZxGrabberUI_Base::HostMessage(HWND hwnd, UINT msg, int64_t wParam, int64_t lParam, int64_t* result,
                                    bool* handled)
{
    const auto raise = [&](int32_t event, int64_t w, int64_t l, int64_t*) {
        return Raise(EZxEvent(event), hwnd, w, reinterpret_cast<void*>(l)) == 0;
    };
    switch (zxsetupui::RaisePropertyEvent(zxsetupui::kDialogHost, msg, wParam, lParam, result, raise,
                                          [this](bool on) { return IS_SetWaitCursor(on); })) {
    case zxsetupui::EPropertyAnswer::Taken:
        return *handled = true;
    case zxsetupui::EPropertyAnswer::Declined:
        return false;
    case zxsetupui::EPropertyAnswer::None:
        break;
    }
    switch (msg) {
    case WM_DESTROY:
        Raise(evHistoViewState, nullptr, !m_bHistoCombined && !m_bHistoNoSplit ? 1 : 0, nullptr);
        Raise(m_bModal ? evDestroyModal : evDestroyModeless, hwnd, 0, nullptr);
        {
            const std::lock_guard<std::mutex> lock(m_histoLock);
            m_hDlg = nullptr;
        }
        return false;
    case WM_CLOSE:
        if (!m_bModal && m_pProvider)
            m_pProvider->InputSetupModelessHide();
        return false;
    case WM_ERASEBKGND:
        if (!m_bHistoEnabled)
            return false;
        PaintHisto(reinterpret_cast<HDC>(wParam));
        *result = 1;
        return *handled = true;
    case WM_DRAWITEM:
    case WM_ZX_DRAWITEM_NOFRAME:
        // A button the host drew is not the controls' either.
        return lParam && DrawButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), msg == WM_DRAWITEM);
    case WM_NCLBUTTONDBLCLK:
        ZX_AlignWnd(hwnd, nullptr, 6, ZX_ALIGN_KEEP_ON_SCREEN);
        *result = 0;
        return *handled = true;
    case WM_COMMAND:
        return *handled = OnCommand(hwnd, wParam, result);
    case WM_CTLCOLORSTATIC:
        return *handled = ColourRangeText(hwnd, wParam, lParam, result);
    case WM_ZX_NEWHISTO:
        if (m_bHistoEnabled)
            UpdateHistoTexts();
        return false;
    default: {
        SZxMessageEvent record;
        record.m_wParam = wParam;
        record.m_lParam = lParam;
        if (Raise(evMessage, hwnd, msg, &record) != 0)
            return false;
        *result = record.m_lResult;
        return *handled = true;
    }
    }
}

bool CZxGrabberUI_Base::ColourRangeText(HWND hwnd, int64_t dc, int64_t item, int64_t* result)
{
    uint32_t components;
    {
        const std::lock_guard<std::mutex> lock(m_histoLock);
        components = m_histoFull.GetComponents();
    }
    if (!m_bHistoEnabled || components == 0)
        return false;
    static const COLORREF kColours[3] = {0x000080, 0x008000, 0x800000};   // red, green, blue
    for (int i = 0; i < 3; ++i)
        if (m_iRangeTextId[i] > 0 && HWND(item) == GetDlgItem(hwnd, m_iRangeTextId[i])) {
            SetTextColor(reinterpret_cast<HDC>(dc), kColours[i]);
            SetBkMode(reinterpret_cast<HDC>(dc), TRANSPARENT);
            *result = reinterpret_cast<int64_t>(GetSysColorBrush(COLOR_BTNFACE));
            return true;
        }
    return false;
}

// ---- Command menu ---------------------------------------------------------------------

namespace {
zxsetupui::SCommandMenuHost MenuHost(CZxGrabberUI_Base& ui, CZxGenProvider_Low* provider, CZxMenu* menu, HWND dlg,
                                     uint32_t flags)
{
    zxsetupui::SCommandMenuHost host{provider, menu, dlg, &ui.GetControls(), flags, false, kSource, {}};
    return host;
}
} // namespace

void CZxGrabberUI_Base::CommandMenuCreate()
{
    zxsetupui::CommandMenuCreate(MenuHost(*this, m_pProvider, &m_commandMenu, m_hDlg, m_uiCommandFlags));
}

void CZxGrabberUI_Base::CommandMenuHandle(uint32_t id)
{
    zxsetupui::SCommandMenuHost host = MenuHost(*this, m_pProvider, &m_commandMenu, m_hDlg, m_uiCommandFlags);
    host.hostCommand = [this](uint32_t command) {
        if (command == zxsetupui::kMenuDefineROI)
            Raise(evDefineROI, m_hDlg, 0, nullptr);
    };
    zxsetupui::CommandMenuHandle(host, id);
}

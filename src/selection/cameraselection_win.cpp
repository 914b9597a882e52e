// The generic camera chooser.
#include <windows.h>

#include <commctrl.h>

#include <cmath>
#include <cwchar>

#include "selection/selection_internal.h"
#include "zx/grabbersupport.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "zxhost/alignwnd.h"
#include "common/langdialog_win.h"

using zx::sel::Tr;

namespace {

const wchar_t kSource[] = L"czxcameraselectionui";

// Module-wide state: one camera chooser is open at a time.
CZxCameraSelectionUI* g_element = nullptr;
SZxGrabberCameraDesc* g_cameras[CZxCameraSelectionUI::MAX_CAMERAS] = {};
int g_cameraCount = 0;

// The multi-head drivers show the long model-and-serial names.
bool IsMultiHead(CZxGenericProviderGrabber* g)
{
    const CZxStringW cls = g->GrabberDriverGetClassNameLogical();
    return cls.Compare(L"CZxGrabberDriverHeadU3") == 0 || cls.Compare(L"CZxGrabberDriverHeadL3") == 0;
}

const wchar_t* DisplayName(const SZxGrabberCameraDesc& d, bool multiHead)
{
    return multiHead ? d.m_wszDisplayNameFull : d.m_wszDisplayName;
}

void FreeCameras()
{
    for (int i = 0; i < g_cameraCount; ++i) {
        delete g_cameras[i];
        g_cameras[i] = nullptr;
    }
    g_cameraCount = 0;
}

int Round(double v) { return int(v < 0 ? v - 0.5 : v + 0.5); }

void Grow(HWND w, int dx, int dy)
{
    RECT r{};
    GetWindowRect(w, &r);
    SetWindowPos(w, nullptr, 0, 0, r.right - r.left + dx, r.bottom - r.top + dy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Widens the dialog to the longest camera name of every unit (multi-head drivers only).
void WidenToNames(HWND dlg, CZxGenericProviderGrabber* g)
{
    HWND list = GetDlgItem(dlg, IDC_SEL_LIST);
    HDC dc = GetDC(list);
    HGDIOBJ oldFont = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
    int widest = 0, rows = 0;
    SZxGrabberHWUnit* unit = new SZxGrabberHWUnit();
    while (rows < 32 && g->HWUnitNext_UNI_WRP(*unit) == ZX_OK) {
        ++rows;
        SZxGrabberCameraDesc cam;
        for (int n = 0; n < CZxCameraSelectionUI::MAX_CAMERAS && rows < 32 &&
                        g->DriverCameraNext_UNI_WRP(*unit, cam) == ZX_OK;
             ++n, ++rows) {
            RECT r{0, 0, 2000, 20};
            DrawTextW(dc, cam.m_wszDisplayNameFull, -1, &r, DT_CALCRECT | DT_SINGLELINE);
            widest = r.right > widest ? int(r.right) : widest;
        }
    }
    delete unit;
    SelectObject(dc, oldFont);
    ReleaseDC(list, dc);
    RECT client{};
    GetClientRect(list, &client);
    const int w = widest < 140 ? 140 : widest;
    const int delta = (w + 10 > 100 ? w + 10 : 100) - client.right + 150;
    Grow(dlg, delta, 0);
    Grow(list, delta + 4, 0);
    for (int id : {IDC_SEL_FRAME, IDC_SEL_LABEL2})
        if (HWND item = GetDlgItem(dlg, id))
            Grow(item, delta, 0);
}

void Fill(HWND dlg, CZxCameraSelectionUI* el, const SZxGrabberHWUnit* given)
{
    HWND list = GetDlgItem(dlg, IDC_SEL_LIST);
    ListView_DeleteAllItems(list);
    FreeCameras();
    SZxGrabberHWUnit* current = nullptr;
    if (!given) {
        current = new SZxGrabberHWUnit();
        el->m_pGrabber->HWUnitGet_UNI_WRP(*current);
        given = current;
    }
    const bool multiHead = IsMultiHead(el->m_pGrabber);
    const CZxStringW mono = Tr(L"Mono (camera type <- !don't_translate!)", kSource);
    const CZxStringW colour = Tr(L"Color (camera type <- !don't_translate!)", kSource);
    const CZxStringW connected = Tr(L"Connected", kSource), unknown = Tr(L"Unknown", kSource);
    const SZxGrabberCameraDesc* remembered = nullptr;
    SZxGrabberCameraDesc cam;
    while (g_cameraCount < CZxCameraSelectionUI::MAX_CAMERAS &&
           el->m_pGrabber->DriverCameraNext_UNI_WRP(*given, cam) == ZX_OK) {
        auto* rec = new SZxGrabberCameraDesc(cam);
        g_cameras[g_cameraCount] = rec;
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = g_cameraCount++;
        item.pszText = const_cast<wchar_t*>(DisplayName(*rec, multiHead));
        item.lParam = reinterpret_cast<LPARAM>(rec);
        const int row = int(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
        LVITEMW sub{};
        sub.iSubItem = 1;
        sub.pszText = const_cast<wchar_t*>((rec->m_bMono ? mono : colour).GetString());
        SendMessageW(list, LVM_SETITEMTEXTW, WPARAM(row), reinterpret_cast<LPARAM>(&sub));
        sub.iSubItem = 2;
        sub.pszText = const_cast<wchar_t*>((rec->m_bConnected ? connected : unknown).GetString());
        SendMessageW(list, LVM_SETITEMTEXTW, WPARAM(row), reinterpret_cast<LPARAM>(&sub));
        // The last camera of the caller's name: names are identities, so a
        // driver listing one twice gets the later row, as the loop meets it last.
        if (el->m_rCamera.Compare(rec->m_wszName) == 0)
            remembered = rec;
    }
    delete current;
    if (g_cameraCount == 0) {
        EndDialog(dlg, 2);
        return;
    }
    // A chooser that was ended for a unit without cameras comes back with the next unit that has some.
    if (!IsWindowVisible(dlg) && IsWindowVisible(GetParent(dlg)))
        ShowWindow(dlg, SW_SHOWNA);
    if (remembered) {
        LVFINDINFOW find{};
        find.flags = LVFI_PARAM;
        find.lParam = reinterpret_cast<LPARAM>(remembered);
        const int row = int(SendMessageW(list, LVM_FINDITEMW, WPARAM(-1), reinterpret_cast<LPARAM>(&find)));
        if (row >= 0) {
            ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
            ListView_EnsureVisible(list, row, FALSE);
        }
    }
}

void TakeOver(HWND dlg, CZxCameraSelectionUI* el)
{
    HWND list = GetDlgItem(dlg, IDC_SEL_LIST);
    const int rows = ListView_GetItemCount(list);
    // Row 0 is the deliberate default: with nothing selected the first camera is taken.
    for (int row = 0; row < rows; ++row) {
        LVITEMW item{};
        item.mask = LVIF_PARAM | LVIF_STATE;
        item.stateMask = LVIS_SELECTED;
        item.iItem = row;
        if (!ListView_GetItem(list, &item) || !item.lParam)
            continue;
        const auto* rec = reinterpret_cast<const SZxGrabberCameraDesc*>(item.lParam);
        if (row == 0) {
            el->m_rCamera = rec->m_wszName;
        } else if (item.state & LVIS_SELECTED) {
            el->m_rCamera = rec->m_wszName;
            break;
        }
    }
    SendMessageW(GetParent(dlg), WM_ZX_SEL_NOTIFY, WPARAM(dlg), 5);
}

} // namespace

CZxCameraSelectionUI::CZxCameraSelectionUI(CZxGenericProviderGrabber* grabber, CZxStringW& camera)
    : m_pGrabber(grabber), m_rCamera(camera), m_hDlg(nullptr)
{
}

CZxCameraSelectionUI::~CZxCameraSelectionUI() { CZxCameraSelectionUI::DestroyUI(); }

ZxHWnd CZxCameraSelectionUI::CreateUI(const wchar_t* name, int32_t, ZxHWnd parent, IZxGUIElement*, void*)
{
    m_wstrName = name;
    SetCaption(Tr(L"Camera Selection", kSource));
    m_hDlg = zx::CreateDialogInLanguage(L"SHOW_CAMERAS", reinterpret_cast<HWND>(parent), &dlgProc,
                                        reinterpret_cast<LPARAM>(this));
    m_hWnd = reinterpret_cast<ZxHWnd>(m_hDlg);
    if (m_hDlg) {
        RECT r{};
        GetWindowRect(m_hDlg, &r);
        SetMinSize(r.right - r.left, r.bottom - r.top);
    }
    return m_hWnd;
}

void CZxCameraSelectionUI::DestroyUI()
{
    if (m_hDlg && IsWindow(m_hDlg))
        DestroyWindow(m_hDlg);
    m_hDlg = nullptr;
    m_hWnd = nullptr;
}

INT_PTR CALLBACK CZxCameraSelectionUI::dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG: {
        auto* el = reinterpret_cast<CZxCameraSelectionUI*>(lParam);
        if (!el || !el->m_pGrabber) {
            EndDialog(GetParent(hDlg), -2);
            return TRUE;
        }
        FreeCameras();
        g_element = el;
        el->m_hDlg = hDlg;
        HWND list = GetDlgItem(hDlg, IDC_SEL_LIST);
        SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
        if (IsMultiHead(el->m_pGrabber))
            WidenToNames(hDlg, el->m_pGrabber);
        RECT client{};
        GetClientRect(list, &client);
        const double z = ZX_GetGUIZoom();
        const wchar_t* titles[] = {L"Name", L"Type", L"Status"};
        const int widths[] = {client.right - Round(150 * z), Round(80 * z), Round(70 * z)};
        for (int i = 0; i < 3; ++i) {
            const CZxStringW t = Tr(titles[i], kSource);
            LVCOLUMNW col{};
            col.mask = LVCF_TEXT | LVCF_WIDTH;
            col.pszText = const_cast<wchar_t*>(t.GetString());
            col.cx = widths[i];
            SendMessageW(list, LVM_INSERTCOLUMNW, WPARAM(i), reinterpret_cast<LPARAM>(&col));
        }
        SendMessageW(hDlg, WM_ZX_SEL_NOTIFY, 0, 0);
        SetWindowTextW(hDlg, Tr(L"Camera Selection", kSource));
        SetDlgItemTextW(hDlg, IDC_SEL_LABEL, Tr(L"Available cameras for driver:", kSource));
        SetDlgItemTextW(hDlg, IDC_SEL_LABEL2, el->m_pGrabber->GrabberDriverNameLocalisedGet());
        SetFocus(list);
        ZX_AlignWnd(hDlg, GetParent(hDlg), 3, 0);
        return FALSE;
    }
    case WM_SIZE:
        zx::sel::FitList(hDlg, IDC_SEL_LIST);
        return FALSE;
    case WM_ZX_SEL_NOTIFY:
        if (g_element && g_element->m_hDlg == hDlg)
            Fill(hDlg, g_element, reinterpret_cast<const SZxGrabberHWUnit*>(wParam));
        return TRUE;
    case WM_ZX_SEL_TAKEOVER:
        if (g_element && g_element->m_hDlg == hDlg)
            TakeOver(hDlg, g_element);
        SetWindowLongPtrW(hDlg, DWLP_MSGRESULT, TRUE);
        return TRUE;
    case WM_NOTIFY: {
        const auto* nm = reinterpret_cast<const NMHDR*>(lParam);
        if (nm->idFrom == IDC_SEL_LIST && nm->code == NM_DBLCLK && g_element && g_element->m_hDlg == hDlg) {
            TakeOver(hDlg, g_element);
            return TRUE;
        }
        return FALSE;
    }
    case WM_DESTROY:
        FreeCameras();
        if (g_element && g_element->m_hDlg == hDlg)
            g_element = nullptr;
        return FALSE;
    }
    return FALSE;
}

// The generic hardware-unit chooser and its variant without connection strings.
#include <windows.h>

#include <commctrl.h>

#include <cwchar>

#include "selection/selection_internal.h"
#include "zx/grabbersupport.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "zxhost/alignwnd.h"
#include "common/langdialog_win.h"

using zx::sel::Tr;

namespace {

const wchar_t kSource[] = L"czxhwunitselectionui";

// Class-wide state of the dialog procedure: one unit chooser is open at a time.
SZxGrabberHWUnit* g_units[CZxHWUnitSelectionUI::MAX_UNITS] = {};
int g_unitCount = 0;
CZxHWUnitSelectionUI* g_element = nullptr;

void FreeUnits()
{
    for (int i = 0; i < g_unitCount; ++i) {
        delete g_units[i];
        g_units[i] = nullptr;
    }
    g_unitCount = 0;
}

LPARAM ItemData(HWND list, int row)
{
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    return ListView_GetItem(list, &item) ? item.lParam : 0;
}

int InsertRow(HWND list, int row, const wchar_t* text, int image, LPARAM data)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.iItem = row;
    item.pszText = const_cast<wchar_t*>(text);
    item.iImage = image;
    item.lParam = data;
    return int(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void SetColumnText(HWND list, int row, int column, const wchar_t* text)
{
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text);
    SendMessageW(list, LVM_SETITEMTEXTW, WPARAM(row), reinterpret_cast<LPARAM>(&item));
}

void Notify(HWND dlg, LPARAM code) { SendMessageW(GetParent(dlg), WM_ZX_SEL_NOTIFY, WPARAM(dlg), code); }

void Init(HWND dlg, CZxHWUnitSelectionUI* el, bool connectionColumn)
{
    HWND list = GetDlgItem(dlg, IDC_SEL_LIST);
    SetWindowTextW(dlg, Tr(L"HW Selection", kSource));
    SetDlgItemTextW(dlg, IDC_SEL_LABEL, Tr(L"Available HW:", kSource));
    ListView_SetExtendedListViewStyle(list, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
    ListView_SetImageList(list, zx::sel::CreateUnitImages(), LVSIL_SMALL);
    RECT client{};
    GetClientRect(list, &client);
    const CZxStringW nameTitle = Tr(L"HW Unit Name", kSource);
    LVCOLUMNW col{};
    col.mask = LVCF_TEXT | LVCF_WIDTH;
    col.pszText = const_cast<wchar_t*>(nameTitle.GetString());
    col.cx = connectionColumn ? client.right - 130 : client.right;
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&col));
    const CZxStringW connTitle = Tr(L"Connection String", kSource);
    if (connectionColumn) {
        col.pszText = const_cast<wchar_t*>(connTitle.GetString());
        col.cx = 130;
        SendMessageW(list, LVM_INSERTCOLUMNW, 1, reinterpret_cast<LPARAM>(&col));
    }

    int row = 0;
    int widest = int(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(nameTitle.GetString())));
    if (el->m_pGrabber->IsConnectionUiAvailable_WRP()) {
        const CZxStringW userRow = Tr(L"User Defined Connection...", kSource);
        InsertRow(list, row++, userRow, 0, 0);
        if (connectionColumn)
            SetColumnText(list, 0, 1, L"");
    }
    const SZxGrabberHWUnit* current = el->m_pUnit;
    LPARAM remembered = 0;
    SZxGrabberHWUnit* next = new SZxGrabberHWUnit();
    while (g_unitCount < CZxHWUnitSelectionUI::MAX_UNITS && el->m_pGrabber->HWUnitNext_UNI_WRP(*next) == ZX_OK) {
        SZxGrabberHWUnit* copy = new SZxGrabberHWUnit(*next);
        g_units[g_unitCount++] = copy;
        const bool isCurrent = current && std::wcscmp(copy->m_wszName, current->m_wszName) == 0 &&
                               std::wcscmp(copy->m_wszConnectionString, current->m_wszConnectionString) == 0;
        const int at = InsertRow(list, row++, copy->m_wszName, isCurrent ? 1 : 2, reinterpret_cast<LPARAM>(copy));
        if (connectionColumn)
            SetColumnText(list, at, 1, copy->m_wszConnectionString);
        if (isCurrent)
            remembered = reinterpret_cast<LPARAM>(copy);
        const int w = int(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(copy->m_wszName)));
        widest = w > widest ? w : widest;
    }
    delete next;
    if (connectionColumn) {
        // The widest of the title and the unit names, plus 15; the user row is no unit.
        ListView_SetColumnWidth(list, 0, widest + 15);
        ListView_SetColumnWidth(list, 1, LVSCW_AUTOSIZE_USEHEADER);
    }
    int select = 0;
    if (remembered) {
        LVFINDINFOW find{};
        find.flags = LVFI_PARAM;
        find.lParam = remembered;
        const int found = int(SendMessageW(list, LVM_FINDITEMW, WPARAM(-1), reinterpret_cast<LPARAM>(&find)));
        select = found >= 0 ? found : 0;
    }
    if (row > 0) {
        ListView_SetItemState(list, select, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        ListView_EnsureVisible(list, select, FALSE);
    }
    const CZxStringW title = Tr(L"Select HW Unit", kSource);
    SetWindowTextW(dlg, title);
    ZX_CopyBoundedW(el->m_wszTitle, CZxHWUnitSelectionUI::TITLE_CCH, title);
    if (GetDlgItem(dlg, IDC_SEL_LABEL2))
        SetDlgItemTextW(dlg, IDC_SEL_LABEL2, Tr(L"Available HW Units:", kSource));
    SetFocus(list);
    ZX_AlignWnd(dlg, GetParent(dlg), 6, 0);
    if (auto* simple = dynamic_cast<CZxSimpleHWUnitSelectionUI*>(el))
        simple->m_iListedUnits = g_unitCount;

    if (el->m_bFlag)
        return;
    // Nothing to choose between: decide without asking.
    if (row == 0) {
        Notify(dlg, -2);
    } else if (row == 1) {
        if (const auto* only = reinterpret_cast<const SZxGrabberHWUnit*>(ItemData(list, 0))) {
            *el->m_pUnit = *only;
            Notify(dlg, 1);
        } else {
            Notify(dlg, 2);
        }
    }
}

void Accept(HWND dlg, CZxHWUnitSelectionUI* el)
{
    HWND list = GetDlgItem(dlg, IDC_SEL_LIST);
    const int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    if (row < 0) {
        Notify(dlg, -2);
        return;
    }
    if (auto* simple = dynamic_cast<CZxSimpleHWUnitSelectionUI*>(el))
        simple->m_iTakenRow = row;
    if (const auto* unit = reinterpret_cast<const SZxGrabberHWUnit*>(ItemData(list, row))) {
        *el->m_pUnit = *unit;
        Notify(dlg, 3);
    } else {
        Notify(dlg, 4);
    }
}

} // namespace

CZxHWUnitSelectionUI::CZxHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag)
    : m_wszTitle{}, m_hDlg(nullptr), m_pGrabber(grabber), m_pUnit(&unit), m_bFlag(flag)
{
    ZX_CopyBoundedW(m_wszTitle, TITLE_CCH, Tr(L"Camera Selection", kSource));
    SetCaption(m_wszTitle);
}

CZxHWUnitSelectionUI::~CZxHWUnitSelectionUI() { CZxHWUnitSelectionUI::DestroyUI(); }

ZxHWnd CZxHWUnitSelectionUI::CreateFrom(DLGPROC proc, const wchar_t* name, ZxHWnd parent)
{
    m_wstrName = name;
    m_hDlg = zx::CreateDialogInLanguage(L"SHOW_HWUNITS", reinterpret_cast<HWND>(parent), proc,
                                        reinterpret_cast<LPARAM>(this));
    // The start-up decision may have ended the host already; the window still exists.
    m_hWnd = reinterpret_cast<ZxHWnd>(m_hDlg);
    if (m_hDlg) {
        RECT r{};
        GetWindowRect(m_hDlg, &r);
        m_rect = CZxRect(r.left, r.top, r.right, r.bottom);
        SetMinSize(r.right - r.left, r.bottom - r.top);
    }
    return m_hWnd;
}

ZxHWnd CZxHWUnitSelectionUI::CreateUI(const wchar_t* name, int32_t, ZxHWnd parent, IZxGUIElement*, void*)
{
    return CreateFrom(&CZxHWUnitSelectionUI::dlgProc, name, parent);
}

void CZxHWUnitSelectionUI::DestroyUI()
{
    if (m_hDlg) {
        SetWindowLongPtrW(m_hDlg, GWLP_USERDATA, 0);
        if (IsWindow(m_hDlg))
            DestroyWindow(m_hDlg);
    }
    m_hDlg = nullptr;
    m_hWnd = nullptr;
}

INT_PTR CALLBACK CZxHWUnitSelectionUI::dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return Proc(hDlg, msg, wParam, lParam);
}

INT_PTR CZxHWUnitSelectionUI::Proc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    switch (msg) {
    case WM_INITDIALOG: {
        auto* el = reinterpret_cast<CZxHWUnitSelectionUI*>(lParam);
        if (!el || !el->m_pGrabber) {
            EndDialog(GetParent(hDlg), -2);
            return TRUE;
        }
        FreeUnits();
        g_element = el;
        SetWindowLongPtrW(hDlg, GWLP_USERDATA, lParam);
        el->m_hDlg = hDlg;
        Init(hDlg, el, el->HasConnectionColumn());
        return FALSE;   // the list has the focus
    }
    case WM_SIZE:
        zx::sel::FitList(hDlg, IDC_SEL_LIST);
        return FALSE;
    case WM_ZX_SEL_TAKEOVER: {
        auto* el = reinterpret_cast<CZxHWUnitSelectionUI*>(GetWindowLongPtrW(hDlg, GWLP_USERDATA));
        if (el)
            Accept(hDlg, el);
        return TRUE;
    }
    case WM_NOTIFY: {
        const auto* nm = reinterpret_cast<const NMHDR*>(lParam);
        auto* el = reinterpret_cast<CZxHWUnitSelectionUI*>(GetWindowLongPtrW(hDlg, GWLP_USERDATA));
        if (!el || nm->idFrom != IDC_SEL_LIST)
            return FALSE;
        if (nm->code == NM_DBLCLK) {
            Accept(hDlg, el);
            return TRUE;
        }
        if (nm->code == LVN_ITEMCHANGED) {
            const auto* lv = reinterpret_cast<const NMLISTVIEW*>(lParam);
            if (!(lv->uChanged & LVIF_STATE) || !(lv->uNewState & LVIS_SELECTED))
                return FALSE;
            HWND list = GetDlgItem(hDlg, IDC_SEL_LIST);
            const int row = ListView_GetNextItem(list, -1, LVNI_SELECTED);
            if (const LPARAM unit = row >= 0 ? ItemData(list, row) : 0)
                SendMessageW(GetParent(hDlg), WM_ZX_SEL_TAKEOVER, WPARAM(unit), 0);
            return TRUE;
        }
        return FALSE;
    }
    case WM_DESTROY: {
        HIMAGELIST images = ListView_SetImageList(GetDlgItem(hDlg, IDC_SEL_LIST), nullptr, LVSIL_SMALL);
        if (images)
            ImageList_Destroy(images);
        FreeUnits();
        if (g_element && g_element->m_hDlg == hDlg)
            g_element = nullptr;
        return FALSE;
    }
    }
    return FALSE;
}

CZxSimpleHWUnitSelectionUI::CZxSimpleHWUnitSelectionUI(CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit)
    : CZxHWUnitSelectionUI(grabber, unit, false), m_iListedUnits(0), m_iTakenRow(0)
{
}

ZxHWnd CZxSimpleHWUnitSelectionUI::CreateUI(const wchar_t* name, int32_t, ZxHWnd parent, IZxGUIElement*, void*)
{
    return CreateFrom(&CZxSimpleHWUnitSelectionUI::dlgProc, name, parent);
}

INT_PTR CALLBACK CZxSimpleHWUnitSelectionUI::dlgProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return Proc(hDlg, msg, wParam, lParam);
}

HIMAGELIST zx::sel::CreateUnitImages()
{
    HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 3, 0);
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    for (int kind = 0; kind < 3; ++kind) {
        HBITMAP bmp = CreateCompatibleBitmap(screen, 16, 16);
        HGDIOBJ old = SelectObject(dc, bmp);
        const RECT all{0, 0, 16, 16};
        HBRUSH back = CreateSolidBrush(RGB(255, 0, 255));
        FillRect(dc, &all, back);
        DeleteObject(back);
        HPEN pen = CreatePen(PS_SOLID, 2, kind == 0 ? RGB(0, 90, 170) : kind == 1 ? RGB(0, 130, 0) : RGB(120, 120, 120));
        HGDIOBJ oldPen = SelectObject(dc, pen);
        if (kind == 0) {
            MoveToEx(dc, 8, 3, nullptr);
            LineTo(dc, 8, 13);
            MoveToEx(dc, 3, 8, nullptr);
            LineTo(dc, 13, 8);
        } else {
            HBRUSH fill = kind == 1 ? CreateSolidBrush(RGB(0, 170, 0)) : nullptr;
            HGDIOBJ oldBrush = SelectObject(dc, fill ? static_cast<HGDIOBJ>(fill) : GetStockObject(NULL_BRUSH));
            Ellipse(dc, 3, 3, 13, 13);
            SelectObject(dc, oldBrush);
            if (fill)
                DeleteObject(fill);
        }
        SelectObject(dc, oldPen);
        DeleteObject(pen);
        SelectObject(dc, old);
        ImageList_AddMasked(images, bmp, RGB(255, 0, 255));
        DeleteObject(bmp);
    }
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return images;
}

// The selection entry points and their host dialogs.
#include <windows.h>

#include <commctrl.h>

#include <iterator>
#include <string>

#include "selection/selection_internal.h"
#include "zx/grabbersupport.h"
#include "zx/grabberuibase.h"
#include "zxhost/grabber.h"
#include "common/buttonimages_win.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "zxhost/alignwnd.h"
#include "common/langdialog_win.h"

using zx::sel::Tr;

namespace {

const wchar_t kSource[] = L"czxgrabbersupport";

// Parameter blocks of the host dialogs.
struct SUnitDlg {
    IZxGUIElement* element;
    CZxGenericProviderGrabber* grabber;
    SZxGrabberHWUnit* unit;
    CZxGrabberSupport::SZxElementForward forward;
    bool takingOver;
    LPARAM answer;
};

struct SBothDlg {
    IZxGUIElement* unitElement;
    IZxGUIElement* cameraElement;
    CZxGenericProviderGrabber* grabber;
    SZxGrabberHWUnit* unit;
    bool flag;
    bool takingOver;
};

template <class T>
T* Param(HWND dlg)
{
    return reinterpret_cast<T*>(GetWindowLongPtrW(dlg, GWLP_USERDATA));
}

HWND ElementWindow(IZxGUIElement* e) { return e ? reinterpret_cast<HWND>(e->GetHWnd()) : nullptr; }

// Creates the element in the dialog over the area of item `areaId`, as hosts do:
// create, position, show, keep docked.
bool PlaceElement(HWND dlg, IZxGUIElement* element, const wchar_t* className, int32_t style, int areaId)
{
    if (!element || !element->CreateUI(className, style, reinterpret_cast<ZxHWnd>(dlg), nullptr, nullptr))
        return false;
    const RECT r = zx::sel::ItemRect(dlg, areaId);
    element->SetPosition(r.left, r.top, r.right - r.left, r.bottom - r.top);
    element->Show(1);
    element->SetFloating(0);
    return true;
}

// The selection dialogs' own icon in the caption and the task switcher.
void ShowSelectionIcon(HWND dlg)
{
    for (WPARAM which : {WPARAM(ICON_SMALL), WPARAM(ICON_BIG)}) {
        const int size = GetSystemMetrics(which == ICON_SMALL ? SM_CXSMICON : SM_CXICON);
        if (HANDLE icon = LoadImageW(ZX_GetLibraryModule(), L"ZX_ICON_SELECT", IMAGE_ICON, size, size, LR_SHARED))
            SendMessageW(dlg, WM_SETICON, which, reinterpret_cast<LPARAM>(icon));
    }
}

void SetUnitTitle(HWND dlg, CZxGenericProviderGrabber* g)
{
    CZxStringW title;
    if (g && g->SecGrabber_GetCount() >= 2) {
        const CZxStringW which = Tr(g->SecGrabber_GetActive() ? L"Secondary Grabber" : L"Primary Grabber", kSource);
        title.Format(Tr(L"Select %s HW Unit (%s)", kSource), which.GetString(),
                     g->GrabberDriverNameLocalisedGet().GetString());
    } else {
        title = Tr(L"Select HW Unit", kSource);
    }
    SetWindowTextW(dlg, title);
}

void Finish(HWND dlg)
{
    ShowSelectionIcon(dlg);
    SetDlgItemTextW(dlg, IDCANCEL, Tr(L"Cancel", kSource));
    ZX_AlignWnd(dlg, GetWindow(dlg, GW_OWNER), 6, ZX_ALIGN_KEEP_ON_SCREEN);
}

// The user-defined connection: the grabber's connection dialog, then the new unit
// is added and chosen. False when the user cancelled it.
bool DefineConnection(HWND dlg, CZxGenericProviderGrabber* g, SZxGrabberHWUnit& unit)
{
    SZxGrabberHWUnit* defined = new SZxGrabberHWUnit();
    const bool ok = g->ShowConnectionUi_WRP(*defined, reinterpret_cast<ZxHWnd>(dlg)) == ZX_OK &&
                    g->HWUnitAdd_UNI_WRP(*defined) == ZX_OK;
    if (ok)
        unit = *defined;
    delete defined;
    return ok;
}

// What the unit element's answer means for the unit dialog: 1 to 4 end it
// accepted, -2 cancelled. The user-defined row (2: the only row, 4: chosen) first
// offers the grabber's connection dialog; declined, the caller's unit stays as it
// was and the dialog still ends accepted, as every answer 1 to 4 does.
void UnitAnswer(HWND dlg, SUnitDlg* p, LPARAM code)
{
    switch (code) {
    case 2:
    case 4:
        DefineConnection(dlg, p->grabber, *p->unit);
        EndDialog(dlg, IDOK);
        break;
    case 1:
    case 3:
        EndDialog(dlg, IDOK);
        break;
    case -2:
        EndDialog(dlg, IDCANCEL);
        break;
    }
}

// The start of both unit dialogs: keeps their data, forwards the element's
// events to the dialog, places the element of class `className` and sets the
// title. Null (the dialog ended) without data or when the element cannot be placed.
SUnitDlg* StartUnitDialog(HWND dlg, LPARAM lParam, const wchar_t* className, int32_t style)
{
    auto* p = reinterpret_cast<SUnitDlg*>(lParam);
    if (!p) {
        EndDialog(dlg, IDCANCEL);
        return nullptr;
    }
    SetWindowLongPtrW(dlg, GWLP_USERDATA, lParam);
    p->forward = {dlg, nullptr, nullptr};
    p->element->SetHandler(&CZxGrabberSupport::ElementEventForwarder, &p->forward);
    if (!PlaceElement(dlg, p->element, className, style, IDC_SEL_AREA)) {
        EndDialog(dlg, IDCANCEL);
        return nullptr;
    }
    SetUnitTitle(dlg, p->grabber);
    return p;
}

// "HWUNIT_SELECT_PREVIEW": a unit element over 1401.
INT_PTR CALLBACK UnitDlgProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SUnitDlg* p = Param<SUnitDlg>(dlg);
    switch (msg) {
    case WM_INITDIALOG:
        p = StartUnitDialog(dlg, lParam, L"HWUnitPreviewPad", 0);
        if (!p)
            return TRUE;
        Finish(dlg);
        return TRUE;
    case WM_COMMAND:
        if (!p)
            return FALSE;
        if (LOWORD(wParam) == IDOK) {
            // OK ends the dialog accepted whatever the element answers the take-over:
            // the user row offers its connection dialog first; with nothing selected
            // (-2) the caller's unit stays as it was.
            p->takingOver = true;
            p->answer = 0;
            SendMessageW(ElementWindow(p->element), WM_ZX_SEL_TAKEOVER, 0, 0);
            p->takingOver = false;
            if (p->answer == 2 || p->answer == 4)
                DefineConnection(dlg, p->grabber, *p->unit);
            EndDialog(dlg, IDOK);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_ZX_SEL_NOTIFY:
        if (p && p->takingOver)
            p->answer = lParam;
        else if (p)
            UnitAnswer(dlg, p, lParam);
        return TRUE;
    }
    return FALSE;
}

// "HWUNIT_SELECT_PREVIEW_ADD": the preview pad with "Add...".
INT_PTR CALLBACK UnitAddDlgProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SUnitDlg* p = Param<SUnitDlg>(dlg);
    switch (msg) {
    case WM_INITDIALOG:
        p = StartUnitDialog(dlg, lParam, L"CZxGenericProviderSupport", 8192);
        if (!p)
            return TRUE;
        SetDlgItemTextW(dlg, IDC_SEL_ADD, Tr(L"Add...", kSource));
        Finish(dlg);
        if (static_cast<CZxHWUnitPreviewPad*>(p->element)->GetItemCount() == 0)
            PostMessageW(dlg, WM_COMMAND, IDC_SEL_ADD, 0);
        return TRUE;
    case WM_COMMAND: {
        if (!p)
            return FALSE;
        auto* pad = static_cast<CZxHWUnitPreviewPad*>(p->element);
        switch (LOWORD(wParam)) {
        case IDC_SEL_ADD: {
            SZxGrabberHWUnit* unit = new SZxGrabberHWUnit();
            if (DefineConnection(dlg, p->grabber, *unit))
                pad->AddItem(*unit);
            delete unit;
            return TRUE;
        }
        case IDOK: {
            // The units are enumerated again up to the selected item.
            const int index = pad->GetSelectedIndex();
            SZxGrabberHWUnit* unit = new SZxGrabberHWUnit();
            bool found = index >= 0;
            for (int i = 0; found && i <= index; ++i)
                found = p->grabber->HWUnitNext_UNI_WRP(*unit) == ZX_OK;
            if (found)
                *p->unit = *unit;
            delete unit;
            EndDialog(dlg, found ? IDOK : -2);
            return TRUE;
        }
        case IDCANCEL:
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    }
    }
    return FALSE;
}

// "CAMERA_SELECT_PREVIEW": the camera element over 1401.
INT_PTR CALLBACK CameraDlgProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto* element = Param<IZxGUIElement>(dlg);
    switch (msg) {
    case WM_INITDIALOG:
        element = reinterpret_cast<IZxGUIElement*>(lParam);
        if (!element) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        SetWindowLongPtrW(dlg, GWLP_USERDATA, lParam);
        if (!PlaceElement(dlg, element, L"CameraPreviewPad", 0, IDC_SEL_AREA)) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        SetWindowTextW(dlg, Tr(L"Select Camera", kSource));
        SetDlgItemTextW(dlg, IDOK, Tr(L"OK", kSource));
        Finish(dlg);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK && element) {
            SendMessageW(ElementWindow(element), WM_ZX_SEL_TAKEOVER, 0, 0);
            EndDialog(dlg, IDOK);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_ZX_SEL_NOTIFY:
        if (lParam == 5)
            EndDialog(dlg, IDOK);
        return TRUE;
    }
    return FALSE;
}

// ---- Orientation of the chosen camera (buttons 2201..2206) ----

const UINT kOrientationRefresh = WM_APP + 77;
const UINT_PTR kCameraListWatch = 0x5A58'4F52;

struct SOrientationButton {
    int id;
    int32_t orientation;
    const wchar_t* image;
};
const SOrientationButton kOrientationButtons[] = {
    {IDC_SEL_ROTATE_LEFT, ZX_ORIENT_ROTATE_LEFT, L"ROTATE_LEFT"},
    {IDC_SEL_ROTATE_RIGHT, ZX_ORIENT_ROTATE_RIGHT, L"ROTATE_RIGHT"},
    {IDC_SEL_ROTATE_180, ZX_ORIENT_ROTATE_180, L"ROTATE_180"},
    {IDC_SEL_FLIP_H, ZX_ORIENT_FLIP_H, L"FLIP_H"},
    {IDC_SEL_FLIP_V, ZX_ORIENT_FLIP_V, L"FLIP_V"},
    {IDC_SEL_FLIP_NONE, ZX_ORIENT_NONE, L"FLIP_NONE"},
};

// The camera chosen in the camera element's list; empty when none is (or the
// element is a driver's own, whose list the library cannot read).
std::wstring ChosenCamera(IZxGUIElement* cameraElement)
{
    HWND list = GetDlgItem(ElementWindow(cameraElement), IDC_SEL_LIST);
    const int row = list ? ListView_GetNextItem(list, -1, LVNI_SELECTED) : -1;
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    if (row < 0 || !ListView_GetItem(list, &item) || !item.lParam)
        return L"";
    return reinterpret_cast<const SZxGrabberCameraDesc*>(item.lParam)->m_wszName;
}

// The buttons show the chosen camera's orientation, pressed; all are off when
// no camera is chosen or the driver cannot orient its frames.
void ShowOrientation(HWND dlg, CZxGenericProviderGrabber* g, IZxGUIElement* cameraElement)
{
    const std::wstring camera = ChosenCamera(cameraElement);
    int32_t orientation = -1;
    const bool known = g && !camera.empty() && g->CameraOrientationGet_WRP(camera.c_str(), orientation) == ZX_OK;
    for (const SOrientationButton& b : kOrientationButtons) {
        EnableWindow(GetDlgItem(dlg, b.id), known);
        CheckDlgButton(dlg, b.id, known && b.orientation == orientation ? BST_CHECKED : BST_UNCHECKED);
    }
}

// A click sets the chosen camera's orientation through the grabber; the
// buttons then show what the grabber kept.
bool OnOrientationButton(HWND dlg, CZxGenericProviderGrabber* g, IZxGUIElement* cameraElement, int id)
{
    for (const SOrientationButton& b : kOrientationButtons)
        if (b.id == id) {
            const std::wstring camera = ChosenCamera(cameraElement);
            if (g && !camera.empty())
                g->CameraOrientationSet_WRP(camera.c_str(), b.orientation);
            ShowOrientation(dlg, g, cameraElement);
            return true;
        }
    return false;
}

// Another camera chosen in the list: the buttons follow it.
LRESULT CALLBACK CameraListWatch(HWND w, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR dlg)
{
    if (msg == WM_NOTIFY && lParam && reinterpret_cast<const NMHDR*>(lParam)->code == LVN_ITEMCHANGED)
        PostMessageW(HWND(dlg), kOrientationRefresh, 0, 0);
    if (msg == WM_NCDESTROY)
        RemoveWindowSubclass(w, &CameraListWatch, kCameraListWatch);
    return DefSubclassProc(w, msg, wParam, lParam);
}

// Image buttons with their tooltips, following the camera list.
void InitOrientationButtons(HWND dlg, CZxGenericProviderGrabber* g, IZxGUIElement* cameraElement)
{
    HDC screen = GetDC(dlg);
    for (const SOrientationButton& b : kOrientationButtons) {
        HWND button = GetDlgItem(dlg, b.id);
        RECT r{};
        GetClientRect(button, &r);
        SetWindowLongPtrW(button, GWL_STYLE, GetWindowLongPtrW(button, GWL_STYLE) | BS_BITMAP);
        SendMessageW(button, BM_SETIMAGE, IMAGE_BITMAP,
                     reinterpret_cast<LPARAM>(zxcommon::LoadButtonImage(b.image, screen, r.bottom - r.top - 4)));
    }
    ReleaseDC(dlg, screen);
    HWND tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0, dlg,
                               nullptr, GetModuleHandleW(nullptr), nullptr);
    const CZxStringW texts[] = {Tr(L"Rotate Left", kSource),       Tr(L"Rotate Right", kSource),
                                Tr(L"Rotate 180\u00b0", kSource),  Tr(L"Flip Horizontally", kSource),
                                Tr(L"Flip Vertically", kSource),   Tr(L"No Rotation or Flip", kSource)};
    for (size_t i = 0; tip && i < std::size(kOrientationButtons); ++i) {
        TOOLINFOW ti{};
        ti.cbSize = TTTOOLINFOW_V2_SIZE;   // version-5 common controls refuse the full size
        ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        ti.hwnd = dlg;
        ti.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(dlg, kOrientationButtons[i].id));
        ti.lpszText = const_cast<wchar_t*>(texts[i].GetString());
        SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
    }
    if (HWND element = ElementWindow(cameraElement))
        SetWindowSubclass(element, &CameraListWatch, kCameraListWatch, DWORD_PTR(dlg));
    ShowOrientation(dlg, g, cameraElement);
}

void DoneOrientationButtons(HWND dlg)
{
    for (const SOrientationButton& b : kOrientationButtons)
        if (HGDIOBJ image = reinterpret_cast<HGDIOBJ>(SendDlgItemMessageW(dlg, b.id, BM_SETIMAGE, IMAGE_BITMAP, 0)))
            DeleteObject(image);
}

// "HWUNIT_AND_CAMERA_SELECT_PREVIEW": the unit element over 1401, the camera element over 1402.
INT_PTR CALLBACK BothDlgProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    SBothDlg* p = Param<SBothDlg>(dlg);
    switch (msg) {
    case WM_INITDIALOG:
        p = reinterpret_cast<SBothDlg*>(lParam);
        if (!p) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        SetWindowLongPtrW(dlg, GWLP_USERDATA, lParam);
        // The camera element first, so the unit element's start-up choice can fill it.
        if (!PlaceElement(dlg, p->cameraElement, L"CameraPreviewPad", 0, IDC_SEL_AREA2) ||
            !PlaceElement(dlg, p->unitElement, L"HWUnitPreviewPad", 0, IDC_SEL_AREA)) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        SetUnitTitle(dlg, p->grabber);
        InitOrientationButtons(dlg, p->grabber, p->cameraElement);
        Finish(dlg);
        return TRUE;
    case kOrientationRefresh:
        if (p)
            ShowOrientation(dlg, p->grabber, p->cameraElement);
        return TRUE;
    case WM_DESTROY:
        DoneOrientationButtons(dlg);
        return FALSE;
    case WM_COMMAND:
        if (!p)
            return FALSE;
        if (HIWORD(wParam) == BN_CLICKED && OnOrientationButton(dlg, p->grabber, p->cameraElement, LOWORD(wParam)))
            return TRUE;
        if (LOWORD(wParam) == IDOK) {
            p->takingOver = true;
            SendMessageW(ElementWindow(p->unitElement), WM_ZX_SEL_TAKEOVER, 0, 0);
            SendMessageW(ElementWindow(p->cameraElement), WM_ZX_SEL_TAKEOVER, 0, 0);
            p->takingOver = false;
            EndDialog(dlg, IDOK);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_ZX_SEL_TAKEOVER:   // the unit element's selection changed: list that unit's cameras
        if (p && wParam)
            SendMessageW(ElementWindow(p->cameraElement), WM_ZX_SEL_NOTIFY, wParam, 0);
        return TRUE;
    case WM_ZX_SEL_NOTIFY: {
        if (!p || p->takingOver)
            return TRUE;
        const bool fromUnit = HWND(wParam) == ElementWindow(p->unitElement) || !ElementWindow(p->unitElement);
        if (!fromUnit) {
            if (lParam == 5)   // a camera was accepted (double click): take the unit too
                SendMessageW(dlg, WM_COMMAND, IDOK, 0);
            return TRUE;
        }
        // The unit element settled a unit: the camera list follows it; the dialog stays for the camera.
        if (lParam == 1 || lParam == 3)
            SendMessageW(ElementWindow(p->cameraElement), WM_ZX_SEL_NOTIFY, WPARAM(p->unit), 0);
        else if (lParam == 2 || lParam == 4) {
            if (DefineConnection(dlg, p->grabber, *p->unit))
                SendMessageW(ElementWindow(p->cameraElement), WM_ZX_SEL_NOTIFY, WPARAM(p->unit), 0);
        } else if (lParam == -2)
            EndDialog(dlg, IDCANCEL);
        return TRUE;
    }
    }
    return FALSE;
}

IZxGUIElement* MakeUnitElement(HWND parent, CZxGenericProviderGrabber* g, SZxGrabberHWUnit& unit, bool flag)
{
    if (!g)
        return nullptr;
    if (g->HWUnitIsPreviewAvailable_UNI_WRP())
        return new CZxHWUnitPreviewPad(g, g->GetProvider_Low(), unit);
    if (IZxGUIElement* own = g->CreateHWUnitSelectionUI_UNI_WRP(reinterpret_cast<ZxHWnd>(parent), unit))
        return own;
    return new CZxHWUnitSelectionUI(g, unit, flag);
}

IZxGUIElement* MakeCameraElement(HWND parent, CZxGenericProviderGrabber* g, CZxStringW& camera)
{
    if (!g)
        return nullptr;
    SZxGrabberCameraDesc current;
    g->CameraGet_WRP(current);
    camera = current.m_wszName;
    if (IZxGUIElement* own = g->CreateCameraSelectionUI_UNI_WRP(reinterpret_cast<ZxHWnd>(parent), camera))
        return own;
    return new CZxCameraSelectionUI(g, camera);
}

void Dispose(IZxGUIElement* e)
{
    if (e) {
        e->DestroyUI();
        delete e;
    }
}

} // namespace

int CZxGrabberSupport::HWUnitSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit, bool flag)
{
    if (!grabber)
        return ZX_E_FAIL;
    IZxGUIElement* element = MakeUnitElement(parent, grabber, unit, flag);
    if (!element)
        return ZX_E_FAIL;
    SUnitDlg p{element, grabber, &unit, {}, false, 0};
    const bool preview = grabber->HWUnitIsPreviewAvailable_UNI_WRP();
    const INT_PTR r = zx::ModalDialogInLanguage(preview ? L"HWUNIT_SELECT_PREVIEW_ADD" : L"HWUNIT_SELECT_PREVIEW",
                                                parent, preview ? &UnitAddDlgProc : &UnitDlgProc,
                                                reinterpret_cast<LPARAM>(&p));
    Dispose(element);
    return r == IDOK ? ZX_OK : r == IDCANCEL ? ZX_E_CANCELLED : ZX_E_FAIL;
}

int CZxGrabberSupport::CameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, CZxStringW& camera)
{
    IZxGUIElement* element = MakeCameraElement(parent, grabber, camera);
    if (!element)
        return ZX_E_FAIL;
    const INT_PTR r = zx::ModalDialogInLanguage(L"CAMERA_SELECT_PREVIEW", parent, &CameraDlgProc,
                                                reinterpret_cast<LPARAM>(element));
    Dispose(element);
    return r == IDOK ? ZX_OK : ZX_E_FAIL;
}

int CZxGrabberSupport::HWUnitAndCameraSelect(HWND parent, CZxGenericProviderGrabber* grabber, SZxGrabberHWUnit& unit,
                                             CZxStringW& camera, bool flag)
{
    if (!grabber)
        return ZX_E_FAIL;
    IZxGUIElement* unitElement = MakeUnitElement(parent, grabber, unit, false);
    IZxGUIElement* cameraElement = MakeCameraElement(parent, grabber, camera);
    INT_PTR r = -1;
    if (unitElement && cameraElement) {
        SBothDlg p{unitElement, cameraElement, grabber, &unit, flag, false};
        r = zx::ModalDialogInLanguage(L"HWUNIT_AND_CAMERA_SELECT_PREVIEW", parent, &BothDlgProc,
                                      reinterpret_cast<LPARAM>(&p));
    }
    Dispose(unitElement);
    Dispose(cameraElement);
    return r == IDOK ? ZX_OK : ZX_E_FAIL;
}

IZxGUIElement* CZxGrabberSupport::HWUnitPreviewTab(HWND, CZxGenericProviderGrabber* grabber)
{
    if (!grabber || !grabber->HWUnitIsPreviewAvailable_UNI_WRP())
        return nullptr;
    SZxGrabberHWUnit* first = new SZxGrabberHWUnit();
    grabber->HWUnitNext_UNI_WRP(*first);
    IZxGUIElement* pad = CZxHWUnitPreviewPad::CreateOwning(grabber, grabber->GetProvider_Low(), *first);
    delete first;
    return pad;
}

int CZxGrabberSupport::ElementEventForwarder(void* context, SZxGUIElementEvent* event)
{
    auto* pParam = static_cast<SZxElementForward*>(context);
    if (ZX_DIAG_FAIL_IF(pParam == NULL, L"czxgrabbersupport") || !event)
        return 0;
    if (pParam->pfnHandler)
        pParam->pfnHandler(pParam->pHandlerContext, event);
    if (event->m_iCode == ZX_GUIEVENT_ACCEPT)
        SendMessageW(pParam->hDlg, WM_COMMAND, 0x10001, 0);
    return 1;
}

// Scene "choice": the choice controls over the simulated camera, in English:
// the trigger combo open, the readout, format and binning combos, a check box,
// owner-drawn checks in their four states, radios and steppers.
#include <windows.h>

#include <commctrl.h>

#include "../../tests/inputsetup/choice_test_resource.h"
#include "zx/inputsetupcontrols.h"
#include "zxhost/system.h"
#include "zxshow.h"
#include "zxsim/camera.h"

namespace {
CZxISControlList* g_list = nullptr;
CZxISControlCheckOwnerDraw* g_owner[4] = {};

INT_PTR CALLBACK SceneProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == WM_INITDIALOG)
        return TRUE;
    if (msg == WM_DRAWITEM) {
        for (auto* c : g_owner)
            if (c && c->DrawItem(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)))
                return TRUE;
        return FALSE;
    }
    LRESULT result = 0;
    return g_list && g_list->DlgProcHookMany(reinterpret_cast<ZxHWnd>(dlg), msg, wParam, lParam, &result, nullptr, ~0u);
}

void Set(CZxSimCamera& cam, const wchar_t* name, const CZxVariant& value)
{
    CZxVector_SZxGrabberPropertyValue v;
    v.Add(SZxGrabberPropertyValue(name, value));
    cam.PropSet_WRP(ZX_MODE_FAST, v, nullptr, false);
}

void ShowChoice(HINSTANCE instance)
{
    static CZxSimCamera camera;
    static CZxISControlList list;
    g_list = &list;
    camera.SetProperty(L"LockedOption", L"Locked option", CZxVariant(false), false);
    // The template's second check is bound to "Cooling" in the tests; here it
    // shows a property of its own, so that no label appears twice.
    camera.SetProperty(L"Fan", L"Fan", CZxVariant(false), false);
    Set(camera, L"AutoExposure", true);
    Set(camera, L"Cooling", false);
    Set(camera, L"Fan", true);
    Set(camera, L"FilterWheel", 2);
    Set(camera, L"LightSource", L"halogen");

    HWND dlg = CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_CH_TEST), nullptr, SceneProc, 0);
    if (!dlg)
        return;
    const ZxHWnd zdlg = reinterpret_cast<ZxHWnd>(dlg);
    static CZxISControlCombo trigger(L"TriggerMode", ZX_MODE_FAST, IDC_CH_COMBO, 1, false);
    static CZxISControlComboTextInt32 readout(L"ReadoutMode", ZX_MODE_FAST, IDC_CH_COMBO2, 1, false);
    static CZxISControlComboFormat format(ZX_MODE_FAST, IDC_CH_FORMAT, 1, true);
    static CZxISControlComboBinning binning(L"", ZX_MODE_FAST, IDC_CH_BINNING, 1);
    static CZxISControlCheck cooling(L"Cooling", ZX_MODE_FAST, IDC_CH_CHECK, 1, false, true);
    static CZxISControlCheckOwnerDraw owner1(L"AutoExposure", ZX_MODE_FAST, IDC_CH_OWNER1, 1);
    static CZxISControlCheckOwnerDraw owner2(L"Fan", ZX_MODE_FAST, IDC_CH_OWNER2, 1);
    SetDlgItemTextW(dlg, IDC_CH_OWNER2, L"Fan");
    static CZxISControlCheckOwnerDraw owner3(L"QuantilRelative", ZX_MODE_FAST, IDC_CH_OWNER3, 2);
    static CZxISControlCheckOwnerDraw owner4(L"LockedOption", ZX_MODE_FAST, IDC_CH_OWNER4, 2);
    static CZxISControlRadio area(L"SensorMode", ZX_MODE_FAST, IDC_CH_RADIO1, IDC_CH_RADIO3, 1);
    static CZxISControlSpinList light(L"LightSource", ZX_MODE_FAST, IDC_CH_SPIN_EDIT, IDC_CH_SPIN, 1);
    static CZxISControlNextPrevList filter(L"FilterWheel", ZX_MODE_FAST, IDC_CH_NP_TEXT, IDC_CH_NEXT, IDC_CH_PREV, 1);
    g_owner[0] = &owner1;
    g_owner[1] = &owner2;
    g_owner[2] = &owner3;
    g_owner[3] = &owner4;
    CZxISControl* all[] = {&trigger, &readout, &format, &binning, &cooling, &owner1, &owner2,
                           &owner3,  &owner4,  &area,   &light,   &filter};
    for (CZxISControl* c : all)
        c->Attach(zdlg, &camera, &list);
    list.ReinitAndUpdateMany(~0u);
    // The second row of owner-drawn checks shows the disabled bitmaps.
    list.EnableMany(false, 2);
    ShowWindow(dlg, SW_SHOW);
    UpdateWindow(dlg);
    SendDlgItemMessageW(dlg, IDC_CH_COMBO, CB_SHOWDROPDOWN, TRUE, 0);
}
ZXSHOW_SCENE(L"choice", ShowChoice);
} // namespace

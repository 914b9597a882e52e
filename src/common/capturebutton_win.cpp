// The capture-button setup dialog.
#include <windows.h>

#include <cstdlib>
#include <cwchar>

#include "common/langdialog_win.h"
#include "zx/capturebutton.h"
#include "zxhost/alignwnd.h"
#include "zx/selectionids.h"
#include "zx/status.h"
#include "zxhost/grabber.h"
#include "zxhost/messagebox.h"
#include "zxhost/system.h"

namespace {

const wchar_t kSource[] = L"common";

CZxStringW Tr(const wchar_t* text) { return ZX_GetTranslation(text, kSource); }

bool Checked(HWND dlg, int id) { return IsDlgButtonChecked(dlg, id) == BST_CHECKED; }
void Check(HWND dlg, int id, bool on) { CheckDlgButton(dlg, id, on ? BST_CHECKED : BST_UNCHECKED); }
bool Enabled(HWND dlg, int id) { return IsWindowEnabled(GetDlgItem(dlg, id)) != FALSE; }
void Enable(HWND dlg, int id, bool on) { EnableWindow(GetDlgItem(dlg, id), on); }
LRESULT Send(HWND dlg, int id, UINT msg, WPARAM w = 0, LPARAM l = 0) { return SendDlgItemMessageW(dlg, id, msg, w, l); }

void FillCameras(HWND dlg, const SZxCaptureButtonDlgParams& p)
{
    CZxGenericProviderGrabber* g = p.m_pGrabber;
    const int count = g ? g->SecGrabber_GetCount() : 0;
    if (count <= 1) {
        Enable(dlg, IDC_CB_CAMERA, false);
        Enable(dlg, IDC_CB_USE_CAMERA, false);
        return;
    }
    const wchar_t* selectText = nullptr;
    SZxGrabberCameraDesc selected;
    for (int i = 0; i < count; ++i) {
        SZxGrabberCameraDesc d;
        if (g->CameraGet_WRP(i, d) != ZX_OK)
            continue;
        const wchar_t* text = d.m_wszDisplayName[0] ? d.m_wszDisplayName : d.m_wszName;
        const LRESULT item = Send(dlg, IDC_CB_CAMERA, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        if (item < 0)
            continue;
        auto* name = static_cast<wchar_t*>(std::calloc(SZxCaptureButtonSetup_Param::CAMERA_CCH, sizeof(wchar_t)));
        if (name)
            ZX_CopyBoundedW(name, SZxCaptureButtonSetup_Param::CAMERA_CCH, d.m_wszName);
        Send(dlg, IDC_CB_CAMERA, CB_SETITEMDATA, WPARAM(item), reinterpret_cast<LPARAM>(name));
        if (!selectText && std::wcsncmp(d.m_wszName, p.m_rParam.m_wszSpecifiedCamera,
                                        SZxCaptureButtonSetup_Param::CAMERA_CCH) == 0) {
            selected = d;
            selectText = selected.m_wszDisplayName[0] ? selected.m_wszDisplayName : selected.m_wszName;
        }
    }
    if (selectText)
        Send(dlg, IDC_CB_CAMERA, CB_SELECTSTRING, WPARAM(-1), reinterpret_cast<LPARAM>(selectText));
    Check(dlg, IDC_CB_USE_CAMERA, p.m_rParam.m_bUseSpecifiedCamera);
}

void FillConfigurations(HWND dlg, int combo, int label, const CZxVector<CZxStringW>& names, const wchar_t* stored)
{
    if (names.IsEmpty()) {
        Enable(dlg, combo, false);
        Enable(dlg, label, false);
        return;
    }
    for (const CZxStringW& n : names)
        Send(dlg, combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(n.GetString()));
    const CZxStringW empty = CZxStringW::Formatted(L"(%s)", Tr(L"empty").GetString());
    Send(dlg, combo, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(empty.GetString()));
    // An empty stored name would select the first entry by prefix; it means "(empty)".
    if (!stored[0] || Send(dlg, combo, CB_SELECTSTRING, WPARAM(-1), reinterpret_cast<LPARAM>(stored)) == CB_ERR)
        Send(dlg, combo, CB_SETCURSEL, 0);
}

void Init(HWND dlg, const SZxCaptureButtonDlgParams& p)
{
    const SZxCaptureButtonSetup_Param& r = p.m_rParam;
    Check(dlg, IDC_CB_PERFORM, r.m_iPerformCapture >= 1);
    const bool automatic = std::abs(r.m_iPerformCapture) == 2;
    Check(dlg, IDC_CB_AUTOCAPTURE, automatic);
    Check(dlg, IDC_CB_CAPTURE, !automatic);

    FillCameras(dlg, p);
    FillConfigurations(dlg, IDC_CB_OC1, IDC_CB_OC1_LABEL, p.m_vecOC[0], r.m_wszSpecifiedOC_Camera1);
    FillConfigurations(dlg, IDC_CB_OC2, IDC_CB_OC2_LABEL, p.m_vecOC[1], r.m_wszSpecifiedOC_Camera2);
    if (!p.m_vecOC[0].IsEmpty() || !p.m_vecOC[1].IsEmpty())
        Check(dlg, IDC_CB_USE_OC, r.m_bUseSpecifiedOC);
    else
        Enable(dlg, IDC_CB_USE_OC, false);
    Check(dlg, IDC_CB_RESTORE, r.m_bRestoreDeviceAfterCapture);
    Check(dlg, IDC_CB_SOUND, r.m_bConfirmationSound);

    wchar_t note[512] = {};
    GetDlgItemTextW(dlg, IDC_CB_NOTE, note, 512);
    CZxStringW text(note);
    if (!text.IsEmpty())
        text += L"\r\n";
    text += CZxStringW::Formatted(L"%s: %s.", Tr(L"Device Capture Button event can be invoked by hotkey").GetString(),
                                  L"Ctrl + Shift + (-)");
    SetDlgItemTextW(dlg, IDC_CB_NOTE, text);
}

// Text of the selected entry of a combo above the "(empty)" entry, else empty.
void SelectedConfiguration(HWND dlg, int combo, wchar_t* field)
{
    field[0] = L'\0';
    const LRESULT sel = Send(dlg, combo, CB_GETCURSEL);
    if (sel <= 0)
        return;
    const LRESULT len = Send(dlg, combo, CB_GETLBTEXTLEN, WPARAM(sel));
    if (len < 0)
        return;
    std::wstring text(size_t(len) + 1, L'\0');
    Send(dlg, combo, CB_GETLBTEXT, WPARAM(sel), reinterpret_cast<LPARAM>(&text[0]));
    ZX_CopyBoundedW(field, SZxCaptureButtonSetup_Param::OC_CCH, text.c_str());
}

bool Accept(HWND dlg, SZxCaptureButtonDlgParams& p)
{
    CZxStringW messages;
    auto add = [&messages](const wchar_t* text) {
        if (!messages.IsEmpty())
            messages += L"\r\n";
        messages += Tr(text);
    };
    if (Checked(dlg, IDC_CB_USE_CAMERA) && Send(dlg, IDC_CB_CAMERA, CB_GETCURSEL) == CB_ERR)
        add(L"\"Always use specified camera\" is checked, but no camera is specified.");
    if (Checked(dlg, IDC_CB_USE_OC) && Send(dlg, IDC_CB_OC1, CB_GETCURSEL) <= 0 &&
        Send(dlg, IDC_CB_OC2, CB_GETCURSEL) <= 0)
        add(L"\"Use Optical Configuration\" is checked, but no OC is selected.");
    if (!messages.IsEmpty()) {
        ZX_MessageBox(reinterpret_cast<ZxHWnd>(dlg), messages, Tr(L"Error"), MB_OK | MB_ICONWARNING);
        return false;
    }

    SZxCaptureButtonSetup_Param& r = p.m_rParam;
    r.m_iPerformCapture = Checked(dlg, IDC_CB_AUTOCAPTURE) ? 2 : 1;
    if (!Checked(dlg, IDC_CB_PERFORM))
        r.m_iPerformCapture = -r.m_iPerformCapture;
    if (Enabled(dlg, IDC_CB_USE_CAMERA)) {
        r.m_bUseSpecifiedCamera = Checked(dlg, IDC_CB_USE_CAMERA);
        const LRESULT sel = Send(dlg, IDC_CB_CAMERA, CB_GETCURSEL);
        const LRESULT data = sel == CB_ERR ? 0 : Send(dlg, IDC_CB_CAMERA, CB_GETITEMDATA, WPARAM(sel));
        const wchar_t* name = data == CB_ERR ? nullptr : reinterpret_cast<const wchar_t*>(data);
        ZX_CopyBoundedW(r.m_wszSpecifiedCamera, SZxCaptureButtonSetup_Param::CAMERA_CCH, name);
    }
    if (Enabled(dlg, IDC_CB_USE_OC)) {
        r.m_bUseSpecifiedOC = Checked(dlg, IDC_CB_USE_OC);
        SelectedConfiguration(dlg, IDC_CB_OC1, r.m_wszSpecifiedOC_Camera1);
        SelectedConfiguration(dlg, IDC_CB_OC2, r.m_wszSpecifiedOC_Camera2);
    }
    r.m_bRestoreDeviceAfterCapture = Checked(dlg, IDC_CB_RESTORE);
    r.m_bConfirmationSound = Checked(dlg, IDC_CB_SOUND);
    return true;
}

void FreeCameraNames(HWND dlg)
{
    const LRESULT n = Send(dlg, IDC_CB_CAMERA, CB_GETCOUNT);
    for (LRESULT i = 0; i < n; ++i) {
        const LRESULT data = Send(dlg, IDC_CB_CAMERA, CB_GETITEMDATA, WPARAM(i));
        if (data != CB_ERR)
            std::free(reinterpret_cast<void*>(data));
        Send(dlg, IDC_CB_CAMERA, CB_SETITEMDATA, WPARAM(i), 0);
    }
}

INT_PTR CALLBACK CaptureButtonProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam)
{
    auto* p = reinterpret_cast<SZxCaptureButtonDlgParams*>(GetWindowLongPtrW(dlg, GWLP_USERDATA));
    switch (msg) {
    case WM_INITDIALOG:
        if (!lParam) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        SetWindowLongPtrW(dlg, GWLP_USERDATA, lParam);
        Init(dlg, *reinterpret_cast<SZxCaptureButtonDlgParams*>(lParam));
        // Over the owner, not in the middle of its monitor (where the template's DS_CENTER puts it).
        ZX_AlignWnd(dlg, GetWindow(dlg, GW_OWNER), 6, ZX_ALIGN_KEEP_ON_SCREEN);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDOK && p) {
            if (Accept(dlg, *p))
                EndDialog(dlg, IDOK);
            return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
            EndDialog(dlg, IDCANCEL);
            return TRUE;
        }
        return FALSE;
    case WM_DESTROY:
        FreeCameraNames(dlg);
        return FALSE;
    }
    return FALSE;
}

} // namespace

int ZX_CaptureButtonSetup(ZxHWnd parent, SZxCaptureButtonDlgParams& params)
{
    const INT_PTR r = zx::ModalDialogInLanguage(L"CAPTURE_BUTTON_SETUP", reinterpret_cast<HWND>(parent),
                                                &CaptureButtonProc, reinterpret_cast<LPARAM>(&params));
    return r == IDOK ? ZX_OK : ZX_E_FAIL;
}

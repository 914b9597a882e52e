#include "zx_modal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "zxhost/messagebox.h"

namespace zxtest {
namespace {

const std::function<void(HWND)>* g_script = nullptr;
bool g_ran = false;
UINT_PTR g_timer = 0;

HWND ActiveDialog()
{
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND w, LPARAM out) -> BOOL {
            wchar_t cls[16] = {};
            GetClassNameW(w, cls, 16);
            if (IsWindowVisible(w) && IsWindowEnabled(w) && std::wstring(cls) == L"#32770") {
                *reinterpret_cast<HWND*>(out) = w;
                return FALSE;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR id, DWORD)
{
    HWND dlg = ActiveDialog();
    if (!dlg || !g_script)
        return;   // not up yet: the timer fires again
    KillTimer(nullptr, id);
    g_timer = 0;
    g_ran = true;
    (*g_script)(dlg);
    if (IsWindow(dlg) && IsWindowVisible(dlg)) {
        ADD_FAILURE() << "the script left the dialog open";
        PostMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
    }
}

struct Box {
    int count = 0;
    std::wstring text, title;
    unsigned flags = 0;
} g_box;

int RecordBox(ZxHWnd, const wchar_t* text, const wchar_t* title, unsigned flags)
{
    ++g_box.count;
    g_box.text = text;
    g_box.title = title;
    g_box.flags = flags;
    return IDOK;
}

} // namespace

int DriveModal(const std::function<int()>& open, const std::function<void(HWND)>& script, bool* scriptRan)
{
    g_script = &script;
    g_ran = false;
    g_timer = SetTimer(nullptr, 0, 20, &OnTimer);
    const int result = open();
    if (g_timer)
        KillTimer(nullptr, g_timer);
    g_timer = 0;
    g_script = nullptr;
    if (scriptRan)
        *scriptRan = g_ran;
    else if (!g_ran)
        ADD_FAILURE() << "the dialog never came up";
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
    }
    return result;
}

void ClickButton(HWND dlg, int id) { SendMessageW(GetDlgItem(dlg, id), BM_CLICK, 0, 0); }

void SelectCombo(HWND dlg, int id, int index)
{
    HWND combo = GetDlgItem(dlg, id);
    SendMessageW(combo, CB_SETCURSEL, WPARAM(index), 0);
    SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

std::wstring ItemText(HWND dlg, int id)
{
    HWND w = id ? GetDlgItem(dlg, id) : dlg;
    std::wstring s(size_t(GetWindowTextLengthW(w)) + 1, L'\0');
    s.resize(size_t(GetWindowTextW(w, &s[0], int(s.size()))));
    return s;
}

OwnerWindow::OwnerWindow(int place)
{
    RECT wa{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &wa, 0);
    const int w = 500, h = 400;
    const int x = place == 0 ? wa.left + 10 : wa.right - w / 3;
    const int y = place == 0 ? wa.top + 20 : wa.bottom - h / 3;
    m_hwnd = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, x, y, w, h, nullptr, nullptr,
                             nullptr, nullptr);
}

OwnerWindow::~OwnerWindow() { DestroyWindow(m_hwnd); }

::testing::AssertionResult CentredOnOwner(HWND dlg, HWND owner)
{
    RECT d{}, o{};
    GetWindowRect(dlg, &d);
    GetWindowRect(owner, &o);
    MONITORINFO mi{};
    mi.cbSize = sizeof(mi);
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &mi);
    const RECT& wa = mi.rcWork;
    auto text = [](const RECT& r) {
        return "(" + std::to_string(r.left) + ", " + std::to_string(r.top) + ", " + std::to_string(r.right) + ", " +
               std::to_string(r.bottom) + ")";
    };
    auto where = [&] { return " dialog " + text(d) + ", owner " + text(o) + ", work area " + text(wa); };
    if (d.left < wa.left || d.top < wa.top || d.right > wa.right || d.bottom > wa.bottom)
        return ::testing::AssertionFailure() << "not wholly on the owner's monitor:" << where();
    const LONG dlo[2] = {d.left, d.top}, dhi[2] = {d.right, d.bottom}, olo[2] = {o.left, o.top},
               ohi[2] = {o.right, o.bottom}, wlo[2] = {wa.left, wa.top}, whi[2] = {wa.right, wa.bottom};
    for (int axis = 0; axis < 2; ++axis) {
        const LONG size = dhi[axis] - dlo[axis], centre = (olo[axis] + ohi[axis]) / 2;
        if (std::abs((dlo[axis] + dhi[axis]) / 2 - centre) <= 1)
            continue;
        const LONG idealLo = centre - size / 2;
        const bool pushed = (idealLo < wlo[axis] && dlo[axis] == wlo[axis]) ||
                            (idealLo + size > whi[axis] && dhi[axis] == whi[axis]);
        if (!pushed)
            return ::testing::AssertionFailure()
                   << "not centred over its owner " << (axis ? "vertically" : "horizontally") << ":" << where();
    }
    return ::testing::AssertionSuccess();
}

MessageBoxCapture::MessageBoxCapture()
{
    g_box = Box();
    ZX_SetMessageBoxHook(&RecordBox);
}
MessageBoxCapture::~MessageBoxCapture() { ZX_SetMessageBoxHook(nullptr); }
int MessageBoxCapture::Count() const { return g_box.count; }
std::wstring MessageBoxCapture::LastText() const { return g_box.text; }
std::wstring MessageBoxCapture::LastTitle() const { return g_box.title; }
unsigned MessageBoxCapture::LastFlags() const { return g_box.flags; }

} // namespace zxtest

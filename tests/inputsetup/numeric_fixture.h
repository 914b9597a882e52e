// Shared by the numeric-control and free-combo tests: a simulated camera that
// also describes properties of shapes the camera itself does not have (odd or
// broken definitions) or other members of its own, and typing through the keyboard.
#pragma once
#include <windows.h>

#include <commctrl.h>
#include <cmath>
#include <map>
#include <string>
#include <vector>
#include "numeric_test_resource.h"
#include "zx_dialog.h"
#include "zxsim/camera.h"

namespace numtest {

class OddCamera : public CZxSimCamera {
public:
    int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) override
    {
        auto it = name ? defs.find(name) : defs.end();
        if (it == defs.end()) {
            const int rc = CZxSimCamera::PropGetDesc_WRP(mode, name, desc);
            if (rc == 0 && name)
                for (const auto& m : members[name])
                    desc.varValDefinition[m.first.c_str()] = m.second;
            return rc;
        }
        desc.m_wstrName = name;
        desc.varValDefinition = it->second;
        return 0;
    }
    std::map<std::wstring, CZxVariant> defs;   ///< whole definitions of properties the camera lacks
    /// Members replaced in the camera's own definitions, as a driver with other ranges would describe them.
    std::map<std::wstring, std::map<std::wstring, CZxVariant>> members;
};

/// A definition record of `type` with the given members, as a driver would send it.
inline CZxVariant Record(const wchar_t* type,
                         std::initializer_list<std::pair<const wchar_t*, CZxVariant>> members)
{
    CZxVariant d = CZxVariant::MakeRecord(type);
    for (const auto& m : members)
        d[m.first] = m.second;
    return d;
}

inline CZxVariant Doubles(double min, double max, double step)
{
    return Record(L"RZxRangeDouble", {{L"m_dMin", min}, {L"m_dMax", max}, {L"m_dStep", step}});
}

/// Selects the whole text of edit `id` and types `text` key by key.
inline void Type(zxtest::TestDialog& dlg, int id, const wchar_t* text)
{
    SendMessageW(dlg.Item(id), EM_SETSEL, 0, -1);
    for (const wchar_t* c = text; *c; ++c)
        dlg.Key(id, LOBYTE(VkKeyScanW(*c)));
}

/// Real mouse input: moves to each point in screen coordinates and sends its
/// button flags there; a `held` key is down around it all.
inline void Mouse(std::initializer_list<std::pair<POINT, DWORD>> steps, UINT held = 0)
{
    std::vector<INPUT> in;
    INPUT key{};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = static_cast<WORD>(held);
    if (held)
        in.push_back(key);
    for (const auto& s : steps) {
        INPUT m{};
        m.type = INPUT_MOUSE;
        m.mi.dx = MulDiv(s.first.x, 65535, GetSystemMetrics(SM_CXSCREEN) - 1);
        m.mi.dy = MulDiv(s.first.y, 65535, GetSystemMetrics(SM_CYSCREEN) - 1);
        m.mi.dwFlags = s.second | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        in.push_back(m);
    }
    key.ki.dwFlags = KEYEVENTF_KEYUP;
    if (held)
        in.push_back(key);
    SendInput(static_cast<UINT>(in.size()), in.data(), sizeof(INPUT));
    zxtest::TestDialog::Pump();
}

/// Clicks the upper (up) or lower (down) arrow of up-down `id`.
inline void ClickArrow(zxtest::TestDialog& dlg, int id, bool up, UINT held = 0)
{
    RECT rc;
    GetWindowRect(dlg.Item(id), &rc);
    const POINT p{(rc.left + rc.right) / 2, up ? rc.top + 3 : rc.bottom - 4};
    SetForegroundWindow(dlg.Hwnd());
    Mouse({{p, MOUSEEVENTF_LEFTDOWN}, {p, MOUSEEVENTF_LEFTUP}}, held);
}

using zxtest::ItemText;
using zxtest::Read;
using zxtest::Set;
using zxtest::Value;

/// The Gain scroll bar (1 .. 16 in steps of 0.1) on the numeric test dialog,
/// showing the driver's value, or `value` written first when one is given.
struct GainScroll {
    explicit GainScroll(double value = -1.0)
    {
        dlg.Attach(gain);
        if (value >= 0)
            Set(dlg.Camera(), L"Gain", value);
        dlg.List().ReinitAndUpdateMany(~0u);
    }
    zxtest::TestDialog dlg{IDD_NUM_TEST};
    CZxISControlScrollDouble gain{L"Gain", 1, IDC_NUM_SCROLL, IDC_NUM_SCROLL_TEXT, 1};
};

} // namespace numtest

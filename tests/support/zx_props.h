// One property read or written on a provider in one call (mode 1, the fast set,
// unless told); the simulated camera's logged calls of one operation and the
// progress of its running command.
#pragma once
#include <chrono>
#include <string>
#include <thread>
#include <vector>
#include "zxhost/provider.h"
#include "zxsim/camera.h"

namespace zxtest {

inline CZxVariant Read(CZxGenProvider_Low& p, const wchar_t* name, uint32_t mode = 1)
{
    SZxGrabberPropertyValue v(name);
    p.PropGetSingle_WRP(mode, v);
    return v.m_varValue;
}
inline double Value(CZxGenProvider_Low& p, const wchar_t* name, uint32_t mode = 1)
{
    return Read(p, name, mode).GetDouble();
}
inline int Set(CZxGenProvider_Low& p, const wchar_t* name, const CZxVariant& value, uint32_t mode = 1)
{
    CZxVector_SZxGrabberPropertyValue values(128);
    values.Add(SZxGrabberPropertyValue(name, value));
    return p.PropSet_WRP(mode, values, nullptr, false);
}

/// The lines the camera logged for `operation`, in order; the last of them or "".
inline std::vector<std::wstring> Calls(const CZxSimCamera& cam, const wchar_t* operation)
{
    std::vector<std::wstring> lines;
    for (const auto& l : cam.CallLog())
        if (l.rfind(operation, 0) == 0)
            lines.push_back(l);
    return lines;
}
inline std::wstring LastCall(const CZxSimCamera& cam, const wchar_t* operation)
{
    const std::vector<std::wstring> lines = Calls(cam, operation);
    return lines.empty() ? std::wstring() : lines.back();
}

/// Polls command `name` until its progress is `until` (negative: it has ended),
/// leaving its status text in `*text`; false when the status cannot be read or
/// after a generous wait, so a stuck command fails, never hangs.
inline bool WaitForProgress(CZxSimCamera& cam, const wchar_t* name, double until, CZxStringW* text = nullptr)
{
    for (int i = 0; i < 1000; ++i) {
        double progress = 0;
        CZxStringW status;
        if (cam.Command_Status_WRP(name, progress, status) != 0)
            return false;
        if (text)
            *text = status;
        if (until < 0 ? progress < 0 : progress == until)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace zxtest

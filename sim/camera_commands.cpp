// The simulated camera's commands, their status and abort, and the general callback.
#include <algorithm>
#include <chrono>
#include <iterator>

#include "camera_internal.h"
#include "zx/status.h"

namespace {

// The presets of the "ApplyExposurePreset" command, in milliseconds.
const double kPresets[] = {0.1, 1.0, 10.0, 100.0, 1000.0};

} // namespace

void CZxSimCamera::BuildCommands()
{
    using Run = std::function<void(const CZxVariant&, bool, CZxGrabberSample01**)>;
    auto add = [this](const wchar_t* name, const wchar_t* text, bool async, Run run,
                      std::function<bool(const CZxVariant&)> accepts = nullptr) {
        m_commands.push_back(SCommand{name, text, async, std::move(accepts), std::move(run)});
    };
    m_commands.clear();
    using namespace zxsim;
    add(kCmdSnap, L"Snap", false, [this](const CZxVariant&, bool, CZxGrabberSample01** ppSample) {
        if (ppSample)
            *ppSample = Snap();
    });
    add(kCmdCalibrate, L"Dark Calibration", true, [this](const CZxVariant&, bool bAsync, CZxGrabberSample01**) {
        StopCommand();   // the thread of an earlier, finished run
        {
            const std::lock_guard<std::mutex> g(m_commandLock);
            m_running = kCmdCalibrate;
            m_dProgress = 0.0;
            m_bAbort = false;
            m_status = L"Calibrating";
        }
        // Asynchronous: start and return; otherwise the command runs to its end here.
        if (bAsync)
            m_worker = std::thread(&CZxSimCamera::RunCommand, this);
        else
            RunCommand();
    });
    const auto isPreset = [](const CZxVariant& i) {
        return i.GetZx_int32() >= 0 && i.GetZx_int32() < int(std::size(kPresets));
    };
    add(kCmdApplyExposurePreset, L"Exposure Preset", false, [this](const CZxVariant& i, bool, CZxGrabberSample01**) {
        const SProperty* p = FindProperty(kPropExposure);
        for (int s = 0; s < kSets; ++s)
            if (s == SetIndex(0) || m_bSynchronized)
                Store(*p, s, kPresets[i.GetZx_int32()]);
    }, isPreset);
    add(kCmdRestoreFactory, L"Factory Settings", false,
        [this](const CZxVariant&, bool, CZxGrabberSample01**) { ResetToDefaults(); });
}

const CZxSimCamera::SCommand* CZxSimCamera::FindCommand(const wchar_t* name) const
{
    for (const auto& c : m_commands)
        if (name && c.name == name)
            return &c;
    return nullptr;
}

// ---- Provider operations ----------------------------------------------------------

int CZxSimCamera::CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc)
{
    COperation op(*this, L"CommandGetDesc_WRP", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    const SCommand* c = FindCommand(name);
    if (!c)
        return ZX_E_FAIL;
    desc = SZxGrabberCommandDesc01(c->name.c_str(), c->text.c_str(), true, true, c->bAsync ? ZX_COMMAND_ASYNC : 0u);
    return ZX_OK;
}

int CZxSimCamera::Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info,
                              bool bCheckOnly, CZxGrabberSample01** ppSample)
{
    COperation op(*this, L"Command_WRP",
                  value.m_wstrName.Std() + L", " + VariantText(value.m_varValue) + (bAsync ? L", async" : L"") +
                      (bCheckOnly ? L", check only" : L""));
    if (ppSample)
        *ppSample = nullptr;
    if (const auto failure = op.Planned())
        return *failure;
    const SCommand* cmd = FindCommand(value.m_wstrName);
    if (!cmd || (cmd->accepts && !cmd->accepts(value.m_varValue)))
        return ZX_E_FAIL;
    if (cmd->bAsync) {
        const std::lock_guard<std::mutex> g(m_commandLock);
        if (!m_running.empty())
            return ZX_E_BUSY;
    }
    if (bCheckOnly)
        return ZX_OK;

    const SSnapshot before = Snapshot();
    cmd->run(value.m_varValue, bAsync, ppSample);
    if (info)
        Diff(before, *info);
    return ZX_OK;
}

int CZxSimCamera::Command_Status_WRP(const wchar_t* name, double& progress, CZxStringW& text)
{
    COperation op(*this, L"Command_Status_WRP", Arg(name));
    if (const auto failure = op.Planned())
        return *failure;
    if (!FindCommand(name))
        return ZX_E_FAIL;
    const std::lock_guard<std::mutex> g(m_commandLock);
    if (m_running == name) {
        progress = m_dProgress;
        text = CZxStringW::Formatted(L"%s %d%%", m_status.c_str(), int(m_dProgress * 100 + 0.5));
        return ZX_OK;
    }
    progress = -1.0;
    text = m_status.c_str();
    return ZX_OK;
}

int CZxSimCamera::Command_Abort_WRP()
{
    COperation op(*this, L"Command_Abort_WRP");
    if (const auto failure = op.Planned())
        return *failure;
    StopCommand();
    return ZX_OK;
}

void CZxSimCamera::SetCommandDuration(int milliseconds)
{
    const std::lock_guard<std::mutex> g(m_commandLock);
    m_iCommandMs = milliseconds > 0 ? milliseconds : 1;
}

void CZxSimCamera::HoldCommandAt(double progress)
{
    const std::lock_guard<std::mutex> g(m_commandLock);
    m_dHoldAt = progress;
    m_commandWake.notify_all();
}

void CZxSimCamera::RunCommand()
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    std::unique_lock<std::mutex> g(m_commandLock);
    while (!m_bAbort) {
        const double elapsed = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        double p = std::min(elapsed / m_iCommandMs, 1.0);
        if (m_dHoldAt >= 0.0 && p > m_dHoldAt)
            p = m_dHoldAt;
        m_dProgress = p;
        if (p >= 1.0) {
            m_running.clear();
            m_status = L"Done";
            return;
        }
        // A step of the work; an abort or a released hold wakes it early.
        m_commandWake.wait_for(g, std::chrono::milliseconds(10));
    }
}

void CZxSimCamera::StopCommand()
{
    {
        const std::lock_guard<std::mutex> g(m_commandLock);
        if (!m_running.empty()) {
            m_bAbort = true;
            m_running.clear();
            m_status = L"Aborted";
        }
        m_commandWake.notify_all();
    }
    if (m_worker.joinable())
        m_worker.join();
}

void CZxSimCamera::SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context)
{
    const std::lock_guard<std::recursive_mutex> lock(m_lock);
    m_pfnCallback = callback;
    m_pCallbackContext = context;
}

int CZxSimCamera::FireGeneralCallback(int code, void* data)
{
    const COperation op(*this, L"FireGeneralCallback", Num(code));
    return m_pfnCallback ? m_pfnCallback(m_pCallbackContext, code, data) : 0;
}

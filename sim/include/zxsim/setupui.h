// The reference driver's setup dialog: the simulated camera's own input-setup
// host, built on the library's public headers only, as a camera driver writes
// it. Windows only.
#pragma once
#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "zx/autoexposure.h"
#include "zx/grabberuibase.h"
#include "zxsim/camera.h"

class CZxSimSetupUI;

/// The simulated camera as its driver presents it to the application: asking
/// the provider to hide the modeless dialog closes the driver's own dialog.
class CZxSimDriverCamera : public CZxSimCamera {
public:
    /// A colour camera (so the setup shows red, green and blue histograms).
    CZxSimDriverCamera();
    int InputSetupModelessHide() override;

    CZxSimSetupUI* m_pUI = nullptr;
};

/// The driver's setup UI: the library's "INPUT_FORM" bound to the camera's
/// properties, and an acquisition thread that feeds the live histogram and,
/// with "AutoExposure" on, adjusts the exposure from each frame.
class CZxSimSetupUI : public CZxGrabberUI_Base {
public:
    explicit CZxSimSetupUI(CZxSimDriverCamera& camera);
    ~CZxSimSetupUI() override;

    bool IsInputSetupAvailable() override { return true; }
    bool IsInputSetupModelessAvailable() override { return true; }
    int32_t DoInputSetup(bool modal, ZxHWnd parent) override;

    /// Starts and stops the acquisition thread (frames every `periodMs`).
    void StartAcquisition(int periodMs = 50);
    void StopAcquisition();
    /// One frame of the acquisition: histogram to the dialog, auto exposure.
    /// Tests call it directly instead of starting the thread.
    void AcquireFrame();
    /// Frames the acquisition thread has handed to the dialog.
    int FramesDelivered() const { return m_frames; }

private:
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    void OnInitDialog(HWND hwnd);
    void OnDestroy();
    void Acquire(int periodMs);
    void AutoExpose(const SZxAEHistogram& hist);

    CZxSimDriverCamera& m_camera;
    std::vector<std::unique_ptr<CZxISControl>> m_items;   ///< the dialog's controls while it is open
    CZxAutoExposure m_ae;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_frames{0};
    std::unique_ptr<SZxAEHistogram> m_hist;
    std::vector<uint32_t> m_combined;
};

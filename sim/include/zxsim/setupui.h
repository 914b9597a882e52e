// The reference driver's setup dialog: the simulated camera's own input-setup
// host, built on the library's public headers only, as a camera driver writes
// it. Windows only.
#pragma once
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "zx/autoexposure.h"
#include "zx/grabberguielementbase.h"
#include "zx/grabberuibase.h"
#include "zxsim/camera.h"
#include "zxsim/livestep.h"

class CZxSimSetupUI;

/// What the driver's one dialog procedure works on, whichever host runs it.
struct SZxSimSetupPage {
    IZxGrabberUI_Wrapper* wrapper = nullptr;
    bool element = false;                                 ///< docked: no OK and Cancel
    std::vector<std::unique_ptr<CZxISControl>> items;    ///< the page's controls while it is open
    std::function<void(int)> close;                       ///< OK or Cancel reached the page (dialog host)
};

/// The setup page's dialog procedure, written against IZxGrabberUI_Wrapper so
/// the dialog host and the GUI element both run it; lParam of WM_INITDIALOG
/// is the SZxSimSetupPage.
INT_PTR CALLBACK ZxSimSetupPageProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);

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
    void AutoExpose(const SZxAEHistogram& hist);

    CZxSimDriverCamera& m_camera;
    CZxGrabberUI_Wrapper m_wrapper;
    SZxSimSetupPage m_page;
    CZxAutoExposure m_ae;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_frames{0};
    CZxSimLiveStep m_live;
};

/// The same setup docked as a GUI element of the application: the page without
/// histogram, OK and Cancel, with the ROI commands in its menu.
class CZxSimSetupElement : public CZxGrabberGUIElement_Base {
public:
    explicit CZxSimSetupElement(CZxSimDriverCamera& camera);
    ~CZxSimSetupElement() override;

protected:
    HWND CreateElementWindow(HWND parent) override;

private:
    CZxGrabberGUIElement_Wrapper m_wrapper;
    SZxSimSetupPage m_page;
};

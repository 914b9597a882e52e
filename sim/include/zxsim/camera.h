// The simulated camera: a complete camera driver's property provider over a
// simulated sensor. It keeps a fast (live) and a quality (capture) setting set,
// formats with binning, named settings, commands, a region of interest and
// user parameters, exactly as the setup UI expects of a real driver.
#pragma once
#include <cstdint>
#include <map>
#include <memory>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "zxhost/picbuf.h"
#include "zxhost/provider.h"
#include "zxsim/names.h"
#include "zxsim/sensor.h"

/// Driver class name the simulated camera reports.
#define ZXSIM_DRIVER_CLASS L"CZxGrabberDriverSim"

/// Every operation takes the camera's lock, so the acquisition thread (Snap)
/// and the UI thread (the provider operations) may call it at the same time.
class CZxSimCamera : public CZxGenProvider_Low {
public:
    /// The camera this driver runs by default: a 2048 x 1536 monochrome sensor.
    static SZxGrabberCameraDesc DefaultCamera();

    /// `instance` is the secondary-grabber instance; `grabber` (not owned, may
    /// be null) is the grabber that holds this camera.
    explicit CZxSimCamera(const SZxGrabberCameraDesc& camera = DefaultCamera(), int instance = 0,
                          CZxGenericProviderGrabber* grabber = nullptr);
    ~CZxSimCamera() override;
    CZxSimCamera(const CZxSimCamera&) = delete;
    CZxSimCamera& operator=(const CZxSimCamera&) = delete;

    // ---- Properties
    int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) override;
    int PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state) override;
    int PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values, SZxStateChangeInfo* info,
                    bool bCheckOnly) override;

    // ---- Commands
    int CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc) override;
    int Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info, bool bCheckOnly,
                    CZxGrabberSample01** ppSample) override;
    int Command_Status_WRP(const wchar_t* name, double& progress, CZxStringW& text) override;
    int Command_Abort_WRP() override;
    void SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context) override;
    int FireGeneralCallback(int code, void* data) override;

    // ---- Formats
    int FormatNext_WRP(SZxGrabberFormatValue& format) override;
    int FormatGet_WRP(uint32_t mode, SZxGrabberFormatValue& format) override;
    int FormatSet_WRP(uint32_t mode, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                      bool bCheckOnly) override;
    int FormatGetFromSettings_WRP(uint32_t mode, const SZxGrabberCameraSettings& settings,
                                  SZxGrabberFormatValue& format) override;

    // ---- Fast/quality sets
    uint32_t GetModeFQ() override;
    int SetModeFQ(uint32_t mode) override;
    bool IsModeFQSynchronized() override;
    int ModeFQSynchronize(bool synchronize) override;

    // ---- Camera settings
    int CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool bCurrent) override;
    int CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask) override;
    int CameraSettingsSetDefaults_UNI_WRP() override;
    SZxGrabberCameraSettings* NamedSettingsNext(CZxStringW& name) override;
    int NamedSettingsAdd(const wchar_t* name, const SZxGrabberCameraSettings& settings) override;
    int NamedSettingsRemove(const wchar_t* name) override;

    // ---- Region of interest
    bool ROIIsSupported_UNI_WRP() override;
    int ROIGet(CZxRect& rect) override;
    int ROISet(const CZxRect& rect) override;
    bool ROIEnabled() override;
    int ROIEnable(bool enable) override;
    bool MultiViewEnabled() override;

    // ---- Camera, user parameters, capabilities
    int CameraGet_WRP(SZxGrabberCameraDesc& camera) override;
    bool CameraCapabilityIsSupported(uint32_t capability) override;
    int UserParamGet(const wchar_t* name, CZxVariant& value) override;
    int UserParamSet(const wchar_t* name, const CZxVariant& value) override;
    int UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord) override;

    // ---- Identity and host integration
    CZxStringW GrabberDriverGetClassName() override;
    CZxStringW GrabberDriverGetClassNameLogical() override;
    CZxStringW GrabberDriverNameLocalisedGet() override;
    int InputSetupModelessHide() override;
    int GetSecGrabberInstance() override;
    CZxGenericProviderGrabber* GetGrabber() override;

    // ---- Driver side: what the grabber and the acquisition loop use
    /// Changes the camera this driver runs (its colour type sets the formats' components).
    void SetCamera(const SZxGrabberCameraDesc& camera);
    /// Acquires one frame of the set in use: its format (binning, bits, colour,
    /// the sensor area) cut to the ROI when that is on, exposed with its
    /// exposure, gain and offset. The caller deletes it.
    CZxGrabberSample01* Snap();
    /// Turns or mirrors every frame Snap delivers (ZX_ORIENT_*); the grabber sets it.
    void SetOrientation(int32_t orientation);
    int32_t GetOrientation() const;
    /// The sensor behind the camera, for the scene, noise and seed.
    CZxSimSensor& Sensor() { return m_sensor; }
    /// Live view shows several cameras at once (the ROI commands are then off).
    void SetMultiView(bool on) { m_bMultiView = on; }
    void SetROISupported(bool on) { m_bROISupported = on; }
    /// How long an asynchronous command runs, in milliseconds (2000 at start).
    void SetCommandDuration(int milliseconds);
    /// Keeps an asynchronous command's progress from passing `progress` until
    /// released with a negative value: a command caught at a known point.
    void HoldCommandAt(double progress);
    /// Appends `count` generated formats (all modes, group 100) to the camera's
    /// own; 0 removes them again. For hosts' limits on long format lists.
    void SetExtraFormats(int count);
    /// Adds a property, or replaces the label, definition and flags of one; its
    /// value in both sets (and its default) becomes `value`. A driver does this when
    /// its definitions change; tests use it for lists a camera would not offer.
    void SetProperty(const wchar_t* name, const wchar_t* label, const CZxVariant& definition,
                     const CZxVariant& value, uint32_t flags = 0);
    /// The camera's translation table (German labels of its lists and of the texts
    /// the controls add); any other text comes back unchanged. Install it with
    /// ZX_SetTranslationHook to see translated dialogs.
    static CZxStringW Translate(const wchar_t* text, const wchar_t* context);

    // ---- Call log: one readable line per provider call, e.g.
    // "PropSet_WRP(1, Gain=2.000000)" or "FormatSet_WRP(2, 1024 x 768 (Binning 2x2))".
    const std::vector<std::wstring>& CallLog() const { return m_log; }
    void ClearCallLog() { m_log.clear(); }
    /// How many logged calls were made to `operation` (e.g. L"PropSet_WRP").
    int CallCount(const wchar_t* operation) const;
    /// Makes the next call of `operation` fail with `status` and change nothing.
    void FailNext(const wchar_t* operation, int status);

private:
    struct SProperty;
    struct SCommand;
    struct SNamedSetting;
    struct SSnapshot;
    class COperation;
    enum { kSets = 2 };

    void BuildProperties();
    void BuildFormats();
    void BuildCommands();
    /// The asynchronous command's work: progress by elapsed time, until its end or an abort.
    void RunCommand();
    /// Asks a running command to stop and waits for its thread.
    void StopCommand();
    void Log(const std::wstring& line);
    int SetIndex(uint32_t mode) const;

    const SProperty* FindProperty(const wchar_t* name) const;
    const SCommand* FindCommand(const wchar_t* name) const;
    /// Gives a row its definition, with the behaviour the definition's kind brings.
    void Describe(SProperty& p, const CZxVariant& definition);
    CZxVariant Definition(const SProperty& p, int set) const;
    uint32_t State(const SProperty& p, int set) const;
    CZxVariant Value(const SProperty& p, int set) const;
    bool Coerce(const SProperty& p, int set, const CZxVariant& in, CZxVariant& out) const;
    void Store(const SProperty& p, int set, const CZxVariant& v);
    double NumberOf(const wchar_t* name, int set) const;
    /// The exposure frames of `set` get: the live (fast) set runs "LiveSpeedUp"
    /// times shorter, or at most "SpeedUpTime" ms when that is on (above 0).
    double FrameExposure(int set) const;
    /// The fastest frame rate of `set`: the pixel clock's, doubled on half the sensor.
    double MaxFrameRate(int set) const;

    SZxGrabberFormatValue Effective(const SZxGrabberFormatValue& base, int32_t sensorMode) const;
    const SZxGrabberFormatValue* FindFormat(const wchar_t* name) const;
    const SZxGrabberFormatValue& DefaultFormat(int set) const;
    SZxGrabberFormatValue CurrentFormat(int set) const;

    SSnapshot Snapshot() const;
    void Diff(const SSnapshot& before, SZxStateChangeInfo& info);
    void ResetToDefaults();
    void FillSettings(SZxGrabberCameraSettings& s, uint32_t mask, bool bCurrent);

    SZxGrabberCameraDesc m_camera;
    int m_instance;
    CZxGenericProviderGrabber* m_pGrabber;

    std::vector<SProperty> m_props;
    std::map<std::wstring, CZxVariant> m_values[kSets];
    std::vector<SZxGrabberFormatValue> m_formats;
    std::wstring m_format[kSets];
    std::vector<SCommand> m_commands;
    std::vector<std::unique_ptr<SNamedSetting>> m_named;

    uint32_t m_mode = ZX_MODE_FAST;
    bool m_bSynchronized = false;
    CZxRect m_rcROI;
    bool m_bROIEnabled = false;
    bool m_bROISupported = true;
    bool m_bMultiView = false;
    int32_t m_iOrientation = 0;   // ZX_ORIENT_*
    int m_iExtraFormats = 0;
    double m_dSensorTemperature = 25.0;
    CZxVariant m_varPredefinedROIs;

    // The one asynchronous command that may run at a time, on a worker thread of
    // its own; its state is guarded by m_commandLock (never held while taking m_lock).
    std::mutex m_commandLock;
    std::condition_variable m_commandWake;
    std::thread m_worker;
    std::wstring m_running;
    double m_dProgress = -1.0;
    std::wstring m_status = L"Idle";   // status text of the last asynchronous command
    bool m_bAbort = false;
    int m_iCommandMs = 2000;
    double m_dHoldAt = -1.0;

    PFN_ZxGeneralCallback m_pfnCallback = nullptr;
    void* m_pCallbackContext = nullptr;
    CZxSimSensor m_sensor;

    mutable std::recursive_mutex m_lock;
    std::vector<std::wstring> m_log;
    std::map<std::wstring, int> m_failNext;
};

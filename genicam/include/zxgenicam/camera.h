// A camera driver's property provider over a GenICam device (GigE Vision, USB3
// Vision or the in-process fake camera), through Aravis. Features become
// typed properties, PixelFormat x binning becomes the format list, the
// OffsetX/OffsetY/Width/Height registers the region of interest.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zxhost/picbuf.h"
#include "zxhost/provider.h"

/// Driver class name the GenICam provider reports.
#define ZXGENICAM_DRIVER_CLASS L"CZxGrabberDriverGenICam"

/// Driver status codes beyond the library's (zx/status.h); provider results
/// pass through the library unchanged, so hosts see these as they are.
enum : int {
    ZXGENICAM_E_LOST = -101,      ///< the device was closed or lost; nothing more can be read from it
    ZXGENICAM_E_TIMEOUT = -102,   ///< no frame arrived within the timeout
};

/// What a GenICam feature node is, as the provider maps it.
enum class EZxGenICamKind {
    Integer,       ///< IInteger: "RZxRangeInt32" (or "RZxRangeDouble" beyond 32 bits)
    Float,         ///< IFloat: "RZxRangeDouble"
    Exposure,      ///< the exposure time (IFloat in µs): "RZxRangeDoubleExposure" in ms
    Enumeration,   ///< IEnumeration: "RZxList" of symbolic names with display names
    Boolean,       ///< IBoolean: "bool"
    Command,       ///< ICommand: a provider command, not a property
    String,        ///< IString: "CZxStringW"
};

/// One feature as the provider lists it (FeatureList).
struct SZxGenICamFeature {
    std::wstring m_name;        ///< the feature's name, also the property's (or command's) name
    std::wstring m_category;    ///< the category it was found in; empty for features outside the tree
    EZxGenICamKind m_kind = EZxGenICamKind::Integer;   ///< how it is mapped
    std::wstring m_unit;        ///< unit as the property shows it ("ms" for the exposure); may be empty
};

/// The control family of the input-setup controls that would show a property
/// of definition `desc` ("numeric", "exposure", "choice", "check", "text",
/// "command"); "none" for a definition no control reads.
const wchar_t* ZX_GenICamControlFamily(const SZxGrabberPropertyDesc01& desc);

/// The provider. Open it on a device id, then use it as any camera driver's
/// provider: properties, formats, ROI, commands, settings; and, driver side,
/// live frames (StartLive / NextFrame / StopLive) or single frames (Snap).
///
/// Threads: every operation takes the provider's lock, except that NextFrame
/// waits for a frame without it, so Close may be called from any thread while
/// another one waits: the waiting call then returns ZXGENICAM_E_LOST.
/// A GenICam device has one setting set: the fast and quality modes both
/// address it and stay synchronised.
class CZxGenICamCamera : public CZxGenProvider_Low {
public:
    /// A provider with no device; Open one.
    CZxGenICamCamera();
    /// Closes the device (as Close).
    ~CZxGenICamCamera() override;
    /// Not copyable: it owns the device connection.
    CZxGenICamCamera(const CZxGenICamCamera&) = delete;
    /// Not copyable.
    CZxGenICamCamera& operator=(const CZxGenICamCamera&) = delete;

    /// Restricts discovery and Open to one interface ("Fake", "USB3Vision",
    /// "GigEVision") for the whole process. "Fake" is the in-process fake camera
    /// ("Fake_1") and sends nothing over the network, unlike GigE discovery.
    /// ZX_OK; ZX_E_FAIL for an interface Aravis does not know (nothing changes).
    static int UseOnlyInterface(const char* id);
    /// Ids of the devices found now on the interfaces in use (by default the
    /// USB3 and GigE interfaces: GigE discovery broadcasts on every network).
    static std::vector<std::string> ListDevices();

    /// Opens device `id` (null: the first found) and reads its feature tree.
    /// ZX_OK; ZX_E_FAIL when it cannot be opened (text in LastError).
    int Open(const char* id);
    /// Stops live acquisition and releases the device. Any thread, any time;
    /// later operations return ZXGENICAM_E_LOST.
    void Close();
    /// True between a successful Open and Close (or a lost connection).
    bool IsOpen() const;
    /// The message of the last Aravis error, for the user.
    std::string LastError() const;
    /// Every mapped feature: those under the root category in tree order, then
    /// the remaining visible Integer/Float/Enumeration/Boolean/Command/String nodes.
    std::vector<SZxGenICamFeature> FeatureList() const;
    /// Name of the exposure property ("ExposureTime" or "ExposureTimeAbs"), empty when none.
    std::wstring ExposureName() const;
    /// Name of the gain property ("Gain" or "GainRaw"), empty when none.
    std::wstring GainName() const;

    // ---- Properties
    int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) override;
    int PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) override;
    int PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state) override;
    /// Values outside the definition, list entries the device does not offer,
    /// writes to read-only or unavailable features and values the device refuses
    /// give ZX_E_FAIL; everything is checked before the first value is written.
    int PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values, SZxStateChangeInfo* info,
                    bool bCheckOnly) override;

    // ---- Commands (every ICommand feature; they run synchronously)
    int CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc) override;
    int Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info, bool bCheckOnly,
                    CZxGrabberSample01** ppSample) override;
    int Command_Status_WRP(const wchar_t* name, double& progress, CZxStringW& text) override;
    int Command_Abort_WRP() override;
    void SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context) override;
    int FireGeneralCallback(int code, void* data) override;

    // ---- Formats: every PixelFormat entry x software binning 1, 2, 4 (Bayer: 1, 2)
    int FormatNext_WRP(SZxGrabberFormatValue& format) override;
    int FormatGet_WRP(uint32_t mode, SZxGrabberFormatValue& format) override;
    int FormatSet_WRP(uint32_t mode, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                      bool bCheckOnly) override;
    int FormatGetFromSettings_WRP(uint32_t mode, const SZxGrabberCameraSettings& settings,
                                  SZxGrabberFormatValue& format) override;

    // ---- Fast/quality: one set on the device
    uint32_t GetModeFQ() override;
    int SetModeFQ(uint32_t mode) override;
    bool IsModeFQSynchronized() override;
    /// ZX_OK for true; ZX_E_NOTSUPPORTED for false (the device has one set).
    int ModeFQSynchronize(bool synchronize) override;

    // ---- Camera settings
    int CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool bCurrent) override;
    int CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask) override;
    int CameraSettingsSetDefaults_UNI_WRP() override;
    SZxGrabberCameraSettings* NamedSettingsNext(CZxStringW& name) override;
    int NamedSettingsAdd(const wchar_t* name, const SZxGrabberCameraSettings& settings) override;
    int NamedSettingsRemove(const wchar_t* name) override;

    // ---- Region of interest, in sensor pixels, onto OffsetX/OffsetY/Width/Height
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

    // ---- Driver side: frames
    /// Starts continuous acquisition with a pool of `buffers` (at least 2).
    /// ZX_OK; ZX_E_BUSY when already live; ZX_E_FAIL when the device refuses;
    /// ZXGENICAM_E_LOST when closed.
    int StartLive(int buffers = 4);
    /// Stops continuous acquisition (ZX_OK also when it was not live).
    int StopLive();
    /// True while live acquisition runs.
    bool IsLive() const;
    /// Waits up to `timeoutMs` for the next live frame taken after the last
    /// property write and hands it over in `*frame` (the caller deletes it):
    /// formats converted (colour as blue, green, red; Bayer demosaiced) and
    /// binned as the current format asks. ZX_OK; ZXGENICAM_E_TIMEOUT;
    /// ZXGENICAM_E_LOST when the device was closed or lost; ZX_E_FAIL for a
    /// broken frame or one of a pixel format the library cannot hold;
    /// ZX_E_NOTSUPPORTED when not live.
    int NextFrame(uint32_t timeoutMs, CZxGrabberSample01** frame);
    /// One frame by single-frame acquisition (while live: the next live frame).
    /// Status codes as NextFrame.
    int Snap(uint32_t timeoutMs, CZxGrabberSample01** frame);

private:
    struct SImpl;
    std::unique_ptr<SImpl> m;
};

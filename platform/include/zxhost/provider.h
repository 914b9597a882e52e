// The grabber manager's low-level property provider: the interface a camera
// driver implements and the records it exchanges with the setup UI.
#pragma once
#include <cstdint>
#include <cwchar>
#include "zxhost/export.h"
#include "zxhost/rect.h"
#include "zxhost/string.h"
#include "zxhost/variant.h"
#include "zxhost/vector.h"

class CZxGrabberSample01;
class CZxGenericProviderGrabber;

/// Copies at most cchDest-1 characters of `src` (null is empty) and terminates.
inline void ZX_CopyBoundedW(wchar_t* dest, size_t cchDest, const wchar_t* src)
{
    if (!dest || cchDest == 0)
        return;
    size_t i = 0;
    if (src)
        for (; i + 1 < cchDest && src[i]; ++i)
            dest[i] = src[i];
    dest[i] = L'\0';
}

// ---- Constants ------------------------------------------------------------------

/// The camera's two setting sets: fast for live view, quality for capture.
/// A mode of 0 passed by a control means the set in use (GetModeFQ).
enum : uint32_t { ZX_MODE_FAST = 1 /**< the fast (live) set */, ZX_MODE_QUALITY = 2 /**< the quality (capture) set */ };

/// Property state bits (PropState_WRP).
enum : uint32_t {
    /// The property exists for the camera now.
    ZX_PROPSTATE_AVAILABLE = 0x1,
    /// The property can be read but not written now.
    ZX_PROPSTATE_READONLY = 0x2,
    ZX_PROPSTATE_CHANGING = 0x8,   ///< the value changes by itself (automatic control)
};

/// Property descriptor flags.
/// ZX_PROPFLAG_CHANGES_FORMAT: writing the property may change the camera
/// format, so controls announce the write (WM_IS_FORMATCHANGING).
enum : uint32_t { ZX_PROPFLAG_CHANGES_FORMAT = 0x4 /**< a write may change the format */ };

/// Format flags: the modes a format serves, and the mode whose default it is.
enum : uint32_t {
    /// The format may be used for live view.
    ZX_FORMAT_FAST = 0x1,
    /// The format may be used for capture.
    ZX_FORMAT_QUALITY = 0x2,
    /// The default format of the fast set.
    ZX_FORMAT_DEFAULT_FAST = 0x4,
    /// The default format of the quality set.
    ZX_FORMAT_DEFAULT_QUALITY = 0x8,
};

/// Groups of a camera-settings record, selected by mask.
enum : uint32_t {
    ZX_SETTINGS_PROPERTIES = 0x1,   ///< property values of both sets
    ZX_SETTINGS_FORMATS = 0x2,      ///< the format of each set
    ZX_SETTINGS_ROI = 0x4,          ///< region of interest and whether it is on
    ZX_SETTINGS_FQSYNC = 0x8,       ///< fast/quality synchronisation
    /// Every group.
    ZX_SETTINGS_ALL = 0xF,
};

/// Command descriptor flags.
/// ZX_COMMAND_ASYNC: the command runs in the background; start it with
/// Command_WRP(..., bAsync = true) and follow it with Command_Status_WRP.
enum : uint32_t { ZX_COMMAND_ASYNC = 0x1 /**< runs in the background */ };

/// Camera capabilities (CameraCapabilityIsSupported).
/// ZX_CAMCAP_PREDEFINED_ROIS: the camera keeps predefined ROIs
/// ("PredefinedROIArray"), offered by the command menu.
enum : uint32_t { ZX_CAMCAP_PREDEFINED_ROIS = 21 /**< keeps predefined ROIs */ };

// ---- Properties -----------------------------------------------------------------

/// Describes one property: name, label, and the definition variant whose run
/// type says what kind of range or list it is ("RZxRangeDouble", "RZxList", ...).
struct SZxGrabberPropertyDesc01 {
    /// The property's name, the key of every property operation.
    CZxStringW m_wstrName;
    CZxStringW m_wstrText;          ///< label shown for the property
    /// The definition: a range ("m_dMin", "m_dMax", "m_dStep", ...) or a list ("m_list").
    CZxVariant varValDefinition;
    uint32_t m_uiFlags = 0;         ///< ZX_PROPFLAG_*

    /// An empty descriptor.
    SZxGrabberPropertyDesc01() = default;
    /// A descriptor to be filled for property `name`.
    explicit SZxGrabberPropertyDesc01(const wchar_t* name) : m_wstrName(name) {}
};

/// One property value: the property's name and a value variant.
struct SZxGrabberPropertyValue {
    /// The property's name.
    CZxStringW m_wstrName;
    /// The value (its run type says its type: "bool", "zx_int32", "double", ...).
    CZxVariant m_varValue;

    /// No name, a null value.
    SZxGrabberPropertyValue() = default;
    /// A value to be filled for property `name`.
    explicit SZxGrabberPropertyValue(const wchar_t* name) : m_wstrName(name) {}
    /// Property `name` with `value`.
    SZxGrabberPropertyValue(const wchar_t* name, const CZxVariant& value)
        : m_wstrName(name), m_varValue(value) {}
    /// Same name and equal value.
    bool operator==(const SZxGrabberPropertyValue& o) const
    {
        return m_wstrName == o.m_wstrName && m_varValue == o.m_varValue;
    }
    /// Name or value differ.
    bool operator!=(const SZxGrabberPropertyValue& o) const { return !(*this == o); }
};

/// The values of one write, in order.
class CZxVector_SZxGrabberPropertyValue : public CZxVector<SZxGrabberPropertyValue> {
public:
    /// An empty set.
    CZxVector_SZxGrabberPropertyValue() = default;
    /// An empty set with room for `reserve` values.
    explicit CZxVector_SZxGrabberPropertyValue(int reserve) : CZxVector(reserve) {}

    /// The first entry of that name, or null.
    SZxGrabberPropertyValue* Find(const wchar_t* name)
    {
        for (auto& v : *this)
            if (name && v.m_wstrName.Compare(name) == 0)
                return &v;
        return nullptr;
    }
    /// The first entry of that name, or null.
    const SZxGrabberPropertyValue* Find(const wchar_t* name) const
    {
        return const_cast<CZxVector_SZxGrabberPropertyValue*>(this)->Find(name);
    }
};

// ---- Commands -------------------------------------------------------------------

/// Describes one driver command.
struct SZxGrabberCommandDesc01 {
    /// The command's name, the key of every command operation.
    CZxStringW m_wstrName;
    CZxStringW m_wstrText;          ///< label of the command's button
    bool m_bAvailable = true;       ///< may run now
    bool m_bVisible = true;         ///< offered to the user
    uint32_t m_uiFlags = 0;         ///< ZX_COMMAND_*

    /// An empty descriptor.
    SZxGrabberCommandDesc01() = default;
    /// A filled descriptor.
    SZxGrabberCommandDesc01(const wchar_t* name, const wchar_t* text, bool available, bool visible,
                            uint32_t flags)
        : m_wstrName(name), m_wstrText(text), m_bAvailable(available), m_bVisible(visible),
          m_uiFlags(flags) {}
};

/// A command to run: its name and an argument variant (null for none).
struct SZxGrabberCommandValue {
    /// The command's name.
    CZxStringW m_wstrName;
    /// The argument (null for none; "zx_int32" for the multi-push index).
    CZxVariant m_varValue;

    /// No name, no argument.
    SZxGrabberCommandValue() = default;
    /// Command `name` without an argument.
    explicit SZxGrabberCommandValue(const wchar_t* name) : m_wstrName(name) {}
    /// Command `name` with argument `value`.
    SZxGrabberCommandValue(const wchar_t* name, const CZxVariant& value)
        : m_wstrName(name), m_varValue(value) {}
};

// ---- Formats --------------------------------------------------------------------

/// A picture format. Formats that differ only by binning share a group.
struct SZxGrabberFormatValue {
    /// The format's name, shown in the format combo.
    CZxStringW m_wstrName;
    uint32_t m_uiFlags = 0;         ///< ZX_FORMAT_*
    double m_dBinning = 1.0;        ///< binning factor in each direction
    /// Formats of one group differ only by binning (offered by the binning combo).
    int32_t m_iGroup = 0;
    CZxRect m_rcRect;               ///< picture rectangle in binned pixels
    uint32_t m_uiBits = 8;          ///< significant bits per sample
    uint32_t m_uiComp = 1;          ///< 1 = monochrome, 3 = colour

    /// Every field equal.
    bool operator==(const SZxGrabberFormatValue& o) const
    {
        return m_wstrName == o.m_wstrName && m_uiFlags == o.m_uiFlags && m_dBinning == o.m_dBinning &&
               m_iGroup == o.m_iGroup && m_rcRect == o.m_rcRect && m_uiBits == o.m_uiBits &&
               m_uiComp == o.m_uiComp;
    }
    /// Some field differs.
    bool operator!=(const SZxGrabberFormatValue& o) const { return !(*this == o); }
};

/// Helpers of the grabber manager's library.
class ZX_HOST_API CZxGrabberLib {
public:
    /// The sensor area a format reads: its rectangle scaled by its binning
    /// (a binning below 1 counts as 1).
    static CZxRect GetSensorRect(const SZxGrabberFormatValue& format);
};

// ---- Camera settings ------------------------------------------------------------

/// Everything that makes up a camera's setup, by group (ZX_SETTINGS_*).
/// m_uiMask tells which groups the record holds.
struct SZxGrabberCameraSettings {
    /// The groups the record holds (ZX_SETTINGS_*).
    uint32_t m_uiMask = 0;
    /// Property values of the fast set.
    CZxVector_SZxGrabberPropertyValue m_vecPropFast{128};
    /// Property values of the quality set.
    CZxVector_SZxGrabberPropertyValue m_vecPropQuality{128};
    /// Format of the fast set.
    SZxGrabberFormatValue m_fmtFast;
    /// Format of the quality set.
    SZxGrabberFormatValue m_fmtQuality;
    /// The region of interest is switched on.
    bool m_bROIEnabled = false;
    /// The region of interest in sensor pixels.
    CZxRect m_rcROI;
    /// Fast and quality sets are kept equal.
    bool m_bFQSynchronized = false;

    /// The property set of a mode: quality for 2, fast for any other.
    CZxVector_SZxGrabberPropertyValue& Props(uint32_t mode)
    {
        return mode == ZX_MODE_QUALITY ? m_vecPropQuality : m_vecPropFast;
    }
    /// The property set of a mode: quality for 2, fast for any other.
    const CZxVector_SZxGrabberPropertyValue& Props(uint32_t mode) const
    {
        return mode == ZX_MODE_QUALITY ? m_vecPropQuality : m_vecPropFast;
    }
    /// The format of a mode: quality for 2, fast for any other.
    SZxGrabberFormatValue& Format(uint32_t mode) { return mode == ZX_MODE_QUALITY ? m_fmtQuality : m_fmtFast; }
    /// The format of a mode: quality for 2, fast for any other.
    const SZxGrabberFormatValue& Format(uint32_t mode) const
    {
        return mode == ZX_MODE_QUALITY ? m_fmtQuality : m_fmtFast;
    }
};

// ---- State changes --------------------------------------------------------------

/// What a write changed of one property.
struct SZxPropertyStateChangeInfo {
    /// The property's name.
    wchar_t m_wszName[64] = {};
    /// Its state (available, read-only) changed.
    bool m_bStateChanged = false;
    /// Its definition (range or list) changed.
    bool m_bDefinitionChanged = false;
    /// Its value changed.
    bool m_bValueChanged = false;
};

/// What a write changed beyond the written values, filled by the provider.
struct SZxStateChangeInfo {
    /// The camera format changed.
    bool m_bFormatChanged = false;
    /// The format's values (size, bits) changed.
    bool m_bFormatValuesChanged = false;
    /// The other properties the write touched.
    CZxVector<SZxPropertyStateChangeInfo> m_vecProps;

    /// Forgets every change.
    void Clear()
    {
        m_bFormatChanged = m_bFormatValuesChanged = false;
        m_vecProps.RemoveAll();
    }
    /// The record of that property, or null.
    const SZxPropertyStateChangeInfo* Find(const wchar_t* name) const
    {
        for (const auto& p : m_vecProps)
            if (name && std::wcscmp(p.m_wszName, name) == 0)
                return &p;
        return nullptr;
    }
    /// Adds the flags to the property's record, creating it when missing.
    void Add(const wchar_t* name, bool state, bool definition, bool value)
    {
        SZxPropertyStateChangeInfo* rec = const_cast<SZxPropertyStateChangeInfo*>(Find(name));
        if (!rec) {
            SZxPropertyStateChangeInfo r;
            ZX_CopyBoundedW(r.m_wszName, 64, name);
            rec = &m_vecProps[m_vecProps.Add(r)];
        }
        rec->m_bStateChanged |= state;
        rec->m_bDefinitionChanged |= definition;
        rec->m_bValueChanged |= value;
    }
};

// ---- Cameras and user parameters ------------------------------------------------

/// Describes one camera a driver can open.
struct SZxGrabberCameraDesc {
    wchar_t m_wszName[64] = {};             ///< identity: what a selection stores and compares
    wchar_t m_wszDisplayName[64] = {};      ///< short name shown by most drivers
    wchar_t m_wszDisplayNameFull[128] = {}; ///< model and serial, shown by multi-head drivers
    wchar_t m_wszFamily[64] = {};           ///< sensor family
    /// The camera delivers one component.
    bool m_bMono = false;
    /// The camera is connected now.
    bool m_bConnected = false;
};

/// Record of the "DefineRoiQuery" user parameter: may the ROI of that mode be
/// defined now? The provider writes m_bAnswer.
struct SZxUserParam_DefineRoiQuery {
    /// Size of the record in bytes, checked by the provider.
    uint32_t m_uiSize = sizeof(SZxUserParam_DefineRoiQuery);
    /// The setting set asked about.
    uint32_t m_uiModeFQ = ZX_MODE_FAST;
    /// The region the user wants to define.
    CZxRect m_rcROI;
    /// The provider's answer: the ROI may be defined.
    bool m_bAnswer = false;
};

/// The provider's general callback: a host-side sink for driver events
/// (code 1 = something finished, refresh).
typedef int (*PFN_ZxGeneralCallback)(void* context, int code, void* data);

// ---- The provider ---------------------------------------------------------------

/// What a camera driver offers the setup UI. Operations return ZX_OK on success and
/// a negative status otherwise (ZX_E_NOTSUPPORTED not supported, ZX_E_FAIL bad arguments or unknown
/// name); a mode argument selects the setting set (ZX_MODE_FAST / ZX_MODE_QUALITY).
/// The library calls it on the UI thread of the setup dialogs; a driver whose
/// acquisition thread touches the same state guards it itself. See the page
/// @ref driver "What your driver implements".
class ZX_HOST_API CZxGenProvider_Low {
public:
    /// The library never deletes a provider; the driver owns it.
    virtual ~CZxGenProvider_Low();

    // Properties
    /// Fills `desc` (label, flags, definition) of property `name` in set `mode`;
    /// ZX_E_FAIL for an unknown name.
    virtual int PropGetDesc_WRP(uint32_t mode, const wchar_t* name, SZxGrabberPropertyDesc01& desc) = 0;
    /// Fills the value of the property named in `value`.
    virtual int PropGetSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) = 0;
    /// Fills the default value of the property named in `value`.
    virtual int PropGetDefaultSingle_WRP(uint32_t mode, SZxGrabberPropertyValue& value) = 0;
    /// State bits (ZX_PROPSTATE_*) of the property named in `desc`.
    virtual int PropState_WRP(uint32_t mode, const SZxGrabberPropertyDesc01& desc, uint32_t& state) = 0;
    /// Writes all values at once. `info` (may be null) receives what else changed;
    /// with `bCheckOnly` the values are validated and nothing changes.
    virtual int PropSet_WRP(uint32_t mode, const CZxVector_SZxGrabberPropertyValue& values,
                            SZxStateChangeInfo* info, bool bCheckOnly) = 0;

    // Commands
    /// Fills `desc` of command `name`; ZX_E_FAIL for an unknown name.
    virtual int CommandGetDesc_WRP(const wchar_t* name, SZxGrabberCommandDesc01& desc) = 0;
    /// Runs a command. With `bAsync` an asynchronous command is started and the
    /// call returns at once (follow it with Command_Status_WRP); without it the
    /// command runs to its end. `ppSample` (may be null) receives a frame when
    /// the command produces one; the caller deletes it.
    virtual int Command_WRP(SZxGrabberCommandValue& value, bool bAsync, SZxStateChangeInfo* info,
                            bool bCheckOnly, CZxGrabberSample01** ppSample) = 0;
    /// ZX_OK when the status was read: `progress` is 0..1 while the command runs and
    /// negative once it has ended; `text` is a status text.
    virtual int Command_Status_WRP(const wchar_t* name, double& progress, CZxStringW& text) = 0;
    /// Aborts the running asynchronous command (ZX_OK also when none runs).
    virtual int Command_Abort_WRP() = 0;
    /// Stores the host-side sink FireGeneralCallback calls (null: none).
    virtual void SetGeneralCallback(PFN_ZxGeneralCallback callback, void* context) = 0;
    /// Calls the general callback (0 when none is set).
    virtual int FireGeneralCallback(int code, void* data) = 0;

    // Formats
    /// Enumerates all formats: a format with an empty name starts, each call
    /// fills the next; non-zero after the last.
    virtual int FormatNext_WRP(SZxGrabberFormatValue& format) = 0;
    /// The current format of set `mode`.
    virtual int FormatGet_WRP(uint32_t mode, SZxGrabberFormatValue& format) = 0;
    /// Sets the format of set `mode`; `info` (may be null) receives what else
    /// changed; with `bCheckOnly` nothing changes.
    virtual int FormatSet_WRP(uint32_t mode, const SZxGrabberFormatValue& format, SZxStateChangeInfo* info,
                              bool bCheckOnly) = 0;
    /// The format the given settings would give in that mode.
    virtual int FormatGetFromSettings_WRP(uint32_t mode, const SZxGrabberCameraSettings& settings,
                                          SZxGrabberFormatValue& format) = 0;

    // Fast/quality sets
    /// The set in use: ZX_MODE_FAST or ZX_MODE_QUALITY.
    virtual uint32_t GetModeFQ() = 0;
    /// Switches the set in use; ZX_E_FAIL for another mode.
    virtual int SetModeFQ(uint32_t mode) = 0;
    /// True while fast and quality are kept equal.
    virtual bool IsModeFQSynchronized() = 0;
    /// While synchronised, a write to either set goes to both.
    virtual int ModeFQSynchronize(bool synchronize) = 0;

    // Camera settings
    /// Reads the groups in `mask`: the values in force with `bCurrent`, the
    /// defaults without.
    virtual int CameraSettingsGet_UNI_WRP(SZxGrabberCameraSettings& settings, uint32_t mask, bool bCurrent) = 0;
    /// Writes the groups in `mask` that the record holds.
    virtual int CameraSettingsSet_UNI_WRP(const SZxGrabberCameraSettings& settings, uint32_t mask) = 0;
    /// Resets every group of both sets to the defaults.
    virtual int CameraSettingsSetDefaults_UNI_WRP() = 0;
    /// Enumerates the named settings: an empty `name` starts; each call writes
    /// the next name and returns that entry's record (owned by the provider,
    /// writable), or null after the last.
    virtual SZxGrabberCameraSettings* NamedSettingsNext(CZxStringW& name) = 0;
    /// Adds an entry, or replaces the entry of that name.
    virtual int NamedSettingsAdd(const wchar_t* name, const SZxGrabberCameraSettings& settings) = 0;
    /// Removes the named entry; ZX_E_FAIL when there is none.
    virtual int NamedSettingsRemove(const wchar_t* name) = 0;

    // Region of interest
    /// Whether the camera has a region of interest at all.
    virtual bool ROIIsSupported_UNI_WRP() = 0;
    /// The region of interest (empty rectangle: none defined).
    virtual int ROIGet(CZxRect& rect) = 0;
    /// Defines the region of interest.
    virtual int ROISet(const CZxRect& rect) = 0;
    /// True while the region of interest is switched on.
    virtual bool ROIEnabled() = 0;
    /// Switches the region of interest on or off.
    virtual int ROIEnable(bool enable) = 0;
    /// True while several views share the camera (the ROI commands are then off).
    virtual bool MultiViewEnabled() = 0;

    // Camera, user parameters, capabilities
    /// Describes the camera the provider serves.
    virtual int CameraGet_WRP(SZxGrabberCameraDesc& camera) = 0;
    /// Whether the camera has capability `capability` (ZX_CAMCAP_*).
    virtual bool CameraCapabilityIsSupported(uint32_t capability) = 0;
    /// A driver-kept value by name ("PredefinedROIArray", "IsQualityLivePossible", ...).
    virtual int UserParamGet(const wchar_t* name, CZxVariant& value) = 0;
    /// Stores a driver-kept value by name.
    virtual int UserParamSet(const wchar_t* name, const CZxVariant& value) = 0;
    /// A query by record ("DefineRoiQuery" with SZxUserParam_DefineRoiQuery);
    /// ZX_E_FAIL when the record is null or smaller than the query's record.
    virtual int UserParamQuery(const wchar_t* name, void* record, uint32_t cbRecord) = 0;

    // Driver identity and host integration
    /// The driver's class name.
    virtual CZxStringW GrabberDriverGetClassName() = 0;
    /// The class name that says which family of driver this is.
    virtual CZxStringW GrabberDriverGetClassNameLogical() = 0;
    /// The driver's name in the user's language (shown in the selection dialogs).
    virtual CZxStringW GrabberDriverNameLocalisedGet() = 0;
    /// Closes the driver's modeless setup dialog, if one is open.
    virtual int InputSetupModelessHide() = 0;
    /// The secondary-grabber instance this provider belongs to (0 = primary).
    virtual int GetSecGrabberInstance() = 0;
    /// The grabber that owns this provider (may be null).
    virtual CZxGenericProviderGrabber* GetGrabber() = 0;
};

// The GenICam provider's state, shared by its source files. Aravis and GLib
// stay out of the public header.
#pragma once
#include <arv.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "zx/status.h"
#include "zxgenicam/camera.h"

namespace zxgenicam {

/// Wide text of an ASCII or UTF-8 string (null is empty); feature names are ASCII.
std::wstring Wide(const char* s);
/// Narrow text of a wide string; characters beyond 0x7f become '?'.
std::string Narrow(const std::wstring& s);

/// One mapped feature and its node.
struct SFeature {
    SZxGenICamFeature info;
    std::string name;          ///< narrow name, the node's key
    ArvGcNode* node = nullptr; ///< owned by the device's document
};

/// Sample layout of a pixel format the library can hold.
struct SLayout {
    uint32_t bits = 0;      ///< significant bits (8 or less: byte samples, else 16-bit)
    uint32_t comp = 0;      ///< 1 mono, 3 colour
    int bayer = 0;          ///< EZxBayerType of a raw Bayer format, else 0
    bool rgb = false;       ///< samples in red, green, blue order (swapped into blue first)
};

/// The layout of `format`; false for packed, planar or YUV formats.
bool LayoutOf(ArvPixelFormat format, SLayout& layout);

/// Which formats offer software binning factors: mono 1, 2, 4; Bayer 1, 2; RGB 1.
std::vector<int> BinningsOf(const SLayout& layout);

/// Features that change the frame's size or layout: the controls announce
/// their writes, and the device cannot take them while its buffers stream.
bool ShapesFrames(const std::string& name);

} // namespace zxgenicam

struct CZxGenICamCamera::SImpl {
    mutable std::recursive_mutex lock;
    ArvCamera* camera = nullptr;
    ArvDevice* device = nullptr;     // borrowed from camera
    ArvGc* gc = nullptr;             // borrowed from device
    ArvStream* stream = nullptr;
    gulong lostHandler = 0;
    std::atomic<bool> open{false};
    std::atomic<bool> lost{false};
    std::string error;
    std::string id;

    std::vector<zxgenicam::SFeature> features;
    std::wstring exposureName, gainName;
    int binning = 1;                 // software binning of the current format
    CZxRect roi;
    bool roiEnabled = false;
    SZxGrabberCameraSettings defaults;
    struct SNamed {
        CZxStringW name;
        SZxGrabberCameraSettings settings;
    };
    std::vector<std::unique_ptr<SNamed>> named;
    std::map<std::wstring, CZxVariant> userParams;
    PFN_ZxGeneralCallback callback = nullptr;
    void* callbackContext = nullptr;
    std::wstring lastCommand;

    bool live = false;
    gint64 settleAfterNs = 0;        // live frames stamped before this (host ns) predate the last write

    const zxgenicam::SFeature* Find(const wchar_t* name) const;
    /// Status of an Aravis failure: ZXGENICAM_E_LOST once the device is gone, else ZX_E_FAIL.
    int Failed(GError* err);
    /// ZX_OK while the device is usable, else ZXGENICAM_E_LOST.
    int Usable() const { return open && !lost ? int(ZX_OK) : int(ZXGENICAM_E_LOST); }

    SZxGrabberPropertyDesc01 Describe(const zxgenicam::SFeature& f);
    uint32_t State(const zxgenicam::SFeature& f);
    CZxVariant Value(const zxgenicam::SFeature& f);
    /// The value `in` as the feature takes it (checked against the definition and state);
    /// ZX_E_FAIL when it does not.
    int Check(const zxgenicam::SFeature& f, const CZxVariant& in, CZxVariant& out);
    int Write(const zxgenicam::SFeature& f, const CZxVariant& checked);
    /// Writes a checked set of values, reports changes into `info` (may be null).
    int WriteAll(const std::vector<std::pair<const zxgenicam::SFeature*, CZxVariant>>& taken, SZxStateChangeInfo* info);
    int64_t Int(const char* name, int64_t fallback);
    std::wstring PixelFormat();
    SZxGrabberFormatValue CurrentFormat();
    std::vector<SZxGrabberFormatValue> Formats();
    void FillSettings(SZxGrabberCameraSettings& s, uint32_t mask);
    int ApplySettings(const SZxGrabberCameraSettings& s, uint32_t mask);
    int ApplyROI();
    void MarkWritten();
    /// Back to no binning when the current pixel format does not offer the one in force.
    void FixBinning();
};

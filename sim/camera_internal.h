// Records and helpers shared by the simulated camera's source files.
#pragma once
#include <algorithm>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "zxsim/camera.h"

/// The simulated sensor's size; formats and ROIs are laid out on it.
constexpr int32_t kSimSensorWidth = 2048;
constexpr int32_t kSimSensorHeight = 1536;

/// The common area of two rectangles; the empty rectangle when they do not meet.
inline CZxRect IntersectRect(const CZxRect& a, const CZxRect& b)
{
    CZxRect r(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
              std::min(a.bottom, b.bottom));
    return r.IsEmpty() ? CZxRect() : r;
}

namespace simcam {
/// A value as the call log shows it: numbers, "texts", [count], {member=value}.
std::wstring VariantText(const CZxVariant& v);
/// A number as the call log shows it.
std::wstring Num(long long n);
/// A name as the call log shows it; "null" for none.
inline std::wstring Arg(const wchar_t* name) { return name ? name : L"null"; }
} // namespace simcam
using simcam::Arg;
using simcam::Num;
using simcam::VariantText;

/// What every provider operation opens with: the camera's lock for the whole
/// operation and its line in the call log, "Name(arguments)". An operation that
/// returns a status then asks Planned whether FailNext planned its failure.
class CZxSimCamera::COperation {
public:
    COperation(CZxSimCamera& camera, const wchar_t* name, const std::wstring& arguments = std::wstring());
    /// The status FailNext planned for this operation, taken once: the operation
    /// returns it and changes nothing. Empty when none is planned.
    std::optional<int> Planned();

private:
    CZxSimCamera& m_camera;
    const wchar_t* m_name;
    std::lock_guard<std::recursive_mutex> m_lock;
};

/// One row of the property table: its description, its defaults, and what sets
/// it apart from a plain setting. A row without a behaviour of its own keeps the
/// plain one: its value is the one stored for the set, it is available (and
/// read-only when measured), and its definition is the one described.
struct CZxSimCamera::SProperty {
    SZxGrabberPropertyDesc01 desc;    ///< name, label, definition, flags
    CZxVariant defFast;               ///< default of the fast set
    CZxVariant defQuality;            ///< default of the quality set
    bool bSetting = true;             ///< part of the setting sets (false: measured, read-only)
    bool bIndexed = false;            ///< the value is the index of a list element, not the element
    std::function<CZxVariant(int set)> value;              ///< a value the device works out or measures
    std::function<uint32_t(int set)> state;                ///< ZX_PROPSTATE_* following other values
    std::function<void(int set, CZxVariant& def)> definition;   ///< fills in what follows other values
    std::function<void(int set)> read;                     ///< what a reading does to the device
};

/// One row of the command table: its description and what running it does.
struct CZxSimCamera::SCommand {
    std::wstring name;
    std::wstring text;
    bool bAsync = false;
    /// Whether the argument is one the command takes (null: any).
    std::function<bool(const CZxVariant& argument)> accepts;
    /// Runs the command; `bAsync` is the caller's wish, `ppSample` may be null.
    std::function<void(const CZxVariant& argument, bool bAsync, CZxGrabberSample01** ppSample)> run;
};

struct CZxSimCamera::SNamedSetting {
    CZxStringW name;
    SZxGrabberCameraSettings settings;
};

/// What Diff compares before and after a write, to report state changes.
struct CZxSimCamera::SSnapshot {
    struct SEntry {
        uint32_t state = 0;
        CZxVariant definition;
        CZxVariant value;
    };
    std::map<std::wstring, SEntry> props[kSets];
    SZxGrabberFormatValue format[kSets];
};

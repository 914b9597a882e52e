// The grabber manager's grabber object: hardware units, cameras and the
// secondary grabbers of one driver.
#pragma once
#include <cstdint>
#include "zxhost/export.h"
#include "zxhost/provider.h"
#include "zxhost/string.h"

class IZxGUIElement;

/// A hardware unit (frame grabber or camera interface). Copies are bounded by
/// the field sizes; a unit with an empty name starts an enumeration.
struct SZxGrabberHWUnit {
    /// Field sizes in wide characters, terminator included.
    enum {
        NAME_CCH = 256 /**< characters of the name */,
        CONNECTION_CCH = 16384 /**< characters of the connection string */
    };
    /// The unit's name (its identity).
    wchar_t m_wszName[NAME_CCH];
    /// How the driver reaches the unit (address, port, serial number...).
    wchar_t m_wszConnectionString[CONNECTION_CCH];

    /// An empty unit (starts an enumeration).
    SZxGrabberHWUnit() { Clear(); }
    /// A unit of that name and connection (null texts are empty; long ones are cut).
    SZxGrabberHWUnit(const wchar_t* name, const wchar_t* connection) { Set(name, connection); }
    /// Copies both fields.
    SZxGrabberHWUnit(const SZxGrabberHWUnit& o) { Set(o.m_wszName, o.m_wszConnectionString); }
    /// Copies both fields.
    SZxGrabberHWUnit& operator=(const SZxGrabberHWUnit& o)
    {
        if (this != &o)
            Set(o.m_wszName, o.m_wszConnectionString);
        return *this;
    }

    /// Replaces both fields (bounded copies; null texts are empty).
    void Set(const wchar_t* name, const wchar_t* connection)
    {
        ZX_CopyBoundedW(m_wszName, NAME_CCH, name);
        ZX_CopyBoundedW(m_wszConnectionString, CONNECTION_CCH, connection);
    }
    /// Empties both fields.
    void Clear() { m_wszName[0] = m_wszConnectionString[0] = L'\0'; }
    /// True for an empty name.
    bool IsEmpty() const { return m_wszName[0] == L'\0'; }
};

/// Orientation of a camera's frames: turned a quarter to the left (counter-
/// clockwise) or right, half a turn, mirrored left-right or top-bottom.
enum : int32_t {
    ZX_ORIENT_NONE = 0,          ///< frames as the sensor gives them
    ZX_ORIENT_ROTATE_LEFT = 1,   ///< a quarter turn counter-clockwise (width and height swap)
    ZX_ORIENT_ROTATE_RIGHT = 2,  ///< a quarter turn clockwise (width and height swap)
    ZX_ORIENT_ROTATE_180 = 3,    ///< half a turn
    ZX_ORIENT_FLIP_H = 4,        ///< mirrored left-right
    ZX_ORIENT_FLIP_V = 5,        ///< mirrored top-bottom
};

/// The grabber object of one driver: it lists hardware units and their
/// cameras and holds one low-level provider per secondary grabber (camera in
/// use). Operations return ZX_OK on success, non-zero otherwise. The library
/// calls them on the UI thread (selection dialogs).
class ZX_HOST_API CZxGenericProviderGrabber {
public:
    /// The library never deletes a grabber; the driver owns it.
    virtual ~CZxGenericProviderGrabber();

    // Hardware units
    /// Whether the grabber can produce preview images of its units.
    virtual bool HWUnitIsPreviewAvailable_UNI_WRP() = 0;
    /// Enumerates units: a record with an empty name starts; each call fills the
    /// next unit and returns ZX_OK, non-zero after the last.
    virtual int HWUnitNext_UNI_WRP(SZxGrabberHWUnit& unit) = 0;
    /// The unit in use.
    virtual int HWUnitGet_UNI_WRP(SZxGrabberHWUnit& unit) = 0;
    /// Selects the unit in use (by name); ZX_E_FAIL when no such unit exists.
    virtual int HWUnitSet_UNI_WRP(const SZxGrabberHWUnit& unit) = 0;
    /// Adds a user-defined unit.
    virtual int HWUnitAdd_UNI_WRP(const SZxGrabberHWUnit& unit) = 0;
    /// Whether the driver has a dialog to define a connection.
    virtual bool IsConnectionUiAvailable_WRP() = 0;
    /// Lets the user define a connection (name and connection string); ZX_OK when accepted.
    virtual int ShowConnectionUi_WRP(SZxGrabberHWUnit& unit, ZxHWnd parent) = 0;
    /// The driver's own unit selection element, or null when it has none.
    virtual IZxGUIElement* CreateHWUnitSelectionUI_UNI_WRP(ZxHWnd parent, SZxGrabberHWUnit& unit) = 0;
    /// The driver's own camera selection element, or null when it has none.
    virtual IZxGUIElement* CreateCameraSelectionUI_UNI_WRP(ZxHWnd parent, CZxStringW& camera) = 0;

    // Cameras
    /// Enumerates the cameras of a unit: a description with an empty name starts;
    /// each call fills the next camera and returns ZX_OK, non-zero after the last.
    virtual int DriverCameraNext_UNI_WRP(const SZxGrabberHWUnit& unit, SZxGrabberCameraDesc& camera) = 0;
    /// The camera of the active secondary grabber.
    virtual int CameraGet_WRP(SZxGrabberCameraDesc& camera) = 0;
    /// The camera of secondary grabber `index`; non-zero when there is none.
    virtual int CameraGet_WRP(int index, SZxGrabberCameraDesc& camera) = 0;
    /// Opens the camera of that name on the active secondary grabber.
    virtual int CameraSet_WRP(const wchar_t* name) = 0;
    /// How the driver turns or mirrors the frames of camera `name` (null or
    /// empty: the active secondary grabber's camera), one of ZX_ORIENT_*. The
    /// grabber keeps it per camera. Both return 0, -9 for an unknown camera or
    /// value, and -2 (this default) when the driver cannot orient its frames.
    virtual int CameraOrientationGet_WRP(const wchar_t* name, int32_t& orientation);
    /// Sets it; the camera's next frames show it.
    virtual int CameraOrientationSet_WRP(const wchar_t* name, int32_t orientation);

    // Secondary grabbers
    /// Number of secondary grabbers (cameras in use at once).
    virtual int SecGrabber_GetCount() = 0;
    /// The active secondary grabber (0 = the primary).
    virtual int SecGrabber_GetActive() = 0;
    /// Makes `instance` the active secondary grabber; non-zero when there is none.
    virtual int SecGrabber_SetActive(int instance) = 0;
    /// The provider of the active secondary grabber.
    virtual CZxGenProvider_Low* GetProvider_Low() = 0;

    // Driver identity
    /// The class name that says which family of driver this is.
    virtual CZxStringW GrabberDriverGetClassNameLogical() = 0;
    /// The driver's name in the user's language.
    virtual CZxStringW GrabberDriverNameLocalisedGet() = 0;
};

// The simulated grabber: hardware units with cameras, and one simulated
// camera driver per secondary grabber.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zxhost/system.h"
#include "zxhost/grabber.h"
#include "zxsim/camera.h"

class CZxSimGrabber : public CZxGenericProviderGrabber {
public:
    /// Two units: "SimLink 0" with a monochrome and a colour camera, both
    /// connected, and "SimLink 1" with one monochrome camera that is not.
    /// `secondaryGrabbers` (at least 1) cameras are open at once, all on unit 0.
    explicit CZxSimGrabber(int secondaryGrabbers = 1);
    ~CZxSimGrabber() override;

    bool HWUnitIsPreviewAvailable_UNI_WRP() override { return m_bPreview; }
    int HWUnitNext_UNI_WRP(SZxGrabberHWUnit& unit) override;
    int HWUnitGet_UNI_WRP(SZxGrabberHWUnit& unit) override;
    int HWUnitSet_UNI_WRP(const SZxGrabberHWUnit& unit) override;
    int HWUnitAdd_UNI_WRP(const SZxGrabberHWUnit& unit) override;
    bool IsConnectionUiAvailable_WRP() override { return m_bConnectionUi; }
    int ShowConnectionUi_WRP(SZxGrabberHWUnit& unit, ZxHWnd parent) override;
    IZxGUIElement* CreateHWUnitSelectionUI_UNI_WRP(ZxHWnd, SZxGrabberHWUnit&) override { return nullptr; }
    IZxGUIElement* CreateCameraSelectionUI_UNI_WRP(ZxHWnd, CZxStringW&) override { return nullptr; }

    int DriverCameraNext_UNI_WRP(const SZxGrabberHWUnit& unit, SZxGrabberCameraDesc& camera) override;
    int CameraGet_WRP(SZxGrabberCameraDesc& camera) override;
    int CameraGet_WRP(int index, SZxGrabberCameraDesc& camera) override;
    int CameraSet_WRP(const wchar_t* name) override;
    /// Kept per camera name; an open camera of that name turns its next frames.
    int CameraOrientationGet_WRP(const wchar_t* name, int32_t& orientation) override;
    int CameraOrientationSet_WRP(const wchar_t* name, int32_t orientation) override;

    int SecGrabber_GetCount() override { return static_cast<int>(m_cameras.size()); }
    int SecGrabber_GetActive() override { return m_active; }
    int SecGrabber_SetActive(int instance) override;
    CZxGenProvider_Low* GetProvider_Low() override { return m_cameras[static_cast<size_t>(m_active)].get(); }

    CZxStringW GrabberDriverGetClassNameLogical() override { return m_className; }
    CZxStringW GrabberDriverNameLocalisedGet() override
    {
        return ZX_GetTranslation(L"Simulated Camera", L"inputsetupcontrols");
    }

    // ---- Driver side
    /// The camera driver of secondary grabber `instance` (null when out of range).
    CZxSimCamera* Camera(int instance);
    /// Adds a camera to a unit's list (by unit name); false when there is no such unit.
    bool AddCamera(const wchar_t* unitName, const SZxGrabberCameraDesc& camera);
    /// Appends a unit without cameras (names must be unique); false when the name is taken or empty.
    bool AddUnit(const wchar_t* name, const wchar_t* connection);
    /// Removes every unit (the secondary grabbers keep their open cameras).
    void RemoveAllUnits();
    /// Appends `count` cameras named "<prefix> NN", mono and colour alternating,
    /// every third one not connected; false when there is no such unit.
    bool AddCameras(const wchar_t* unitName, const wchar_t* prefix, int count);
    /// The logical driver class reported (ZXSIM_DRIVER_CLASS by default), so a
    /// test can act as a driver whose class the library treats specially.
    void SetDriverClassName(const wchar_t* name) { m_className = name; }
    void SetPreviewAvailable(bool on) { m_bPreview = on; }
    void SetConnectionUiAvailable(bool on) { m_bConnectionUi = on; }
    /// The answer of the next connection dialog: the unit the user defines.
    /// Without one queued, the dialog counts as cancelled.
    void QueueConnection(const SZxGrabberHWUnit& unit);

private:
    struct SUnit {
        SZxGrabberHWUnit unit;
        std::vector<SZxGrabberCameraDesc> cameras;
    };
    SUnit* FindUnit(const wchar_t* name);

    std::vector<std::unique_ptr<SUnit>> m_units;
    size_t m_current = 0;
    std::vector<std::unique_ptr<CZxSimCamera>> m_cameras;
    int m_active = 0;
    bool m_bPreview = false;
    bool m_bConnectionUi = true;
    std::vector<SZxGrabberHWUnit> m_connections;
    std::map<std::wstring, int32_t> m_orientation;   // by camera name; absent = upright
    CZxStringW m_className = ZXSIM_DRIVER_CLASS;
};

// The simulated grabber's units, cameras and secondary grabbers.
#include "zxsim/grabber.h"

#include <cwchar>

#include "zx/status.h"

namespace {

SZxGrabberCameraDesc MakeCamera(const wchar_t* name, const wchar_t* shortName, const wchar_t* fullName, bool mono,
                            bool connected)
{
    SZxGrabberCameraDesc c;
    ZX_CopyBoundedW(c.m_wszName, 64, name);
    ZX_CopyBoundedW(c.m_wszDisplayName, 64, shortName);
    ZX_CopyBoundedW(c.m_wszDisplayNameFull, 128, fullName);
    ZX_CopyBoundedW(c.m_wszFamily, 64, L"FamilySim");
    c.m_bMono = mono;
    c.m_bConnected = connected;
    return c;
}

} // namespace

CZxSimGrabber::CZxSimGrabber(int secondaryGrabbers)
{
    auto unit0 = std::make_unique<SUnit>();
    unit0->unit.Set(L"SimLink 0", L"sim://link0?speed=full");
    unit0->cameras.push_back(CZxSimCamera::DefaultCamera());
    unit0->cameras.push_back(MakeCamera(L"SIM-C2048-0002", L"Sim C2048", L"Sim C2048 (SN 0002)", false, true));
    auto unit1 = std::make_unique<SUnit>();
    unit1->unit.Set(L"SimLink 1", L"sim://link1?speed=full");
    unit1->cameras.push_back(MakeCamera(L"SIM-M1024-0003", L"Sim M1024", L"Sim M1024 (SN 0003)", true, false));
    m_units.push_back(std::move(unit0));
    m_units.push_back(std::move(unit1));

    const auto& cams = m_units[0]->cameras;
    for (int i = 0; i < (secondaryGrabbers > 0 ? secondaryGrabbers : 1); ++i)
        m_cameras.push_back(std::make_unique<CZxSimCamera>(cams[static_cast<size_t>(i) % cams.size()], i, this));
}

CZxSimGrabber::~CZxSimGrabber() = default;

CZxSimGrabber::SUnit* CZxSimGrabber::FindUnit(const wchar_t* name)
{
    for (auto& u : m_units)
        if (name && std::wcscmp(u->unit.m_wszName, name) == 0)
            return u.get();
    return nullptr;
}

int CZxSimGrabber::HWUnitNext_UNI_WRP(SZxGrabberHWUnit& unit)
{
    size_t next = 0;
    if (!unit.IsEmpty()) {
        next = m_units.size();
        for (size_t i = 0; i < m_units.size(); ++i)
            if (std::wcscmp(m_units[i]->unit.m_wszName, unit.m_wszName) == 0)
                next = i + 1;
    }
    if (next >= m_units.size())
        return 1;
    unit = m_units[next]->unit;
    return ZX_OK;
}

int CZxSimGrabber::HWUnitGet_UNI_WRP(SZxGrabberHWUnit& unit)
{
    if (m_current >= m_units.size())
        return ZX_E_FAIL;
    unit = m_units[m_current]->unit;
    return ZX_OK;
}

int CZxSimGrabber::HWUnitSet_UNI_WRP(const SZxGrabberHWUnit& unit)
{
    for (size_t i = 0; i < m_units.size(); ++i)
        if (std::wcscmp(m_units[i]->unit.m_wszName, unit.m_wszName) == 0) {
            m_current = i;
            return ZX_OK;
        }
    return ZX_E_FAIL;
}

int CZxSimGrabber::HWUnitAdd_UNI_WRP(const SZxGrabberHWUnit& unit)
{
    if (unit.IsEmpty())
        return ZX_E_FAIL;
    if (SUnit* u = FindUnit(unit.m_wszName)) {
        u->unit = unit;   // a redefined connection replaces the old one
        return ZX_OK;
    }
    auto u = std::make_unique<SUnit>();
    u->unit = unit;
    m_units.push_back(std::move(u));
    return ZX_OK;
}

int CZxSimGrabber::ShowConnectionUi_WRP(SZxGrabberHWUnit& unit, ZxHWnd)
{
    if (!m_bConnectionUi)
        return ZX_E_NOTSUPPORTED;
    if (m_connections.empty())
        return ZX_E_CANCELLED;
    unit = m_connections.front();
    m_connections.erase(m_connections.begin());
    return ZX_OK;
}

void CZxSimGrabber::QueueConnection(const SZxGrabberHWUnit& unit) { m_connections.push_back(unit); }

int CZxSimGrabber::DriverCameraNext_UNI_WRP(const SZxGrabberHWUnit& unit, SZxGrabberCameraDesc& camera)
{
    SUnit* u = FindUnit(unit.m_wszName);
    if (!u)
        return ZX_E_FAIL;
    // The next after the given camera, found by its name and display name, so
    // cameras that share a name (a driver may list one twice) are all listed.
    size_t next = 0;
    if (camera.m_wszName[0]) {
        next = u->cameras.size();
        for (size_t i = 0; i < u->cameras.size(); ++i)
            if (std::wcscmp(u->cameras[i].m_wszName, camera.m_wszName) == 0 &&
                std::wcscmp(u->cameras[i].m_wszDisplayName, camera.m_wszDisplayName) == 0) {
                next = i + 1;
                break;
            }
    }
    if (next >= u->cameras.size())
        return 1;
    camera = u->cameras[next];
    return ZX_OK;
}

int CZxSimGrabber::CameraGet_WRP(SZxGrabberCameraDesc& camera) { return CameraGet_WRP(m_active, camera); }

int CZxSimGrabber::CameraGet_WRP(int index, SZxGrabberCameraDesc& camera)
{
    CZxSimCamera* c = Camera(index);
    return c ? c->CameraGet_WRP(camera) : ZX_E_FAIL;
}

int CZxSimGrabber::CameraSet_WRP(const wchar_t* name)
{
    if (m_current >= m_units.size())
        return ZX_E_FAIL;
    for (const auto& c : m_units[m_current]->cameras)
        if (name && std::wcscmp(c.m_wszName, name) == 0) {
            m_cameras[static_cast<size_t>(m_active)]->SetCamera(c);
            const auto o = m_orientation.find(c.m_wszName);
            m_cameras[static_cast<size_t>(m_active)]->SetOrientation(o == m_orientation.end() ? 0 : o->second);
            return ZX_OK;
        }
    return ZX_E_FAIL;
}

int CZxSimGrabber::CameraOrientationGet_WRP(const wchar_t* name, int32_t& orientation)
{
    SZxGrabberCameraDesc active;
    const std::wstring camera = name && *name ? name : (CameraGet_WRP(active) == ZX_OK ? active.m_wszName : L"");
    bool known = false;
    for (const auto& unit : m_units)
        for (const auto& c : unit->cameras)
            known |= camera == c.m_wszName;
    if (!known)
        return ZX_E_FAIL;
    const auto o = m_orientation.find(camera);
    orientation = o == m_orientation.end() ? ZX_ORIENT_NONE : o->second;
    return ZX_OK;
}

int CZxSimGrabber::CameraOrientationSet_WRP(const wchar_t* name, int32_t orientation)
{
    int32_t old = 0;
    if (orientation < ZX_ORIENT_NONE || orientation > ZX_ORIENT_FLIP_V ||
        CameraOrientationGet_WRP(name, old) != ZX_OK)
        return ZX_E_FAIL;
    SZxGrabberCameraDesc active;
    const std::wstring camera = name && *name ? name : (CameraGet_WRP(active) == ZX_OK ? active.m_wszName : L"");
    m_orientation[camera] = orientation;
    for (size_t i = 0; i < m_cameras.size(); ++i) {
        SZxGrabberCameraDesc open;
        if (CameraGet_WRP(int(i), open) == ZX_OK && camera == open.m_wszName)
            m_cameras[i]->SetOrientation(orientation);
    }
    return ZX_OK;
}

int CZxSimGrabber::SecGrabber_SetActive(int instance)
{
    if (!Camera(instance))
        return ZX_E_FAIL;
    m_active = instance;
    return ZX_OK;
}

CZxSimCamera* CZxSimGrabber::Camera(int instance)
{
    return instance >= 0 && instance < static_cast<int>(m_cameras.size()) ? m_cameras[static_cast<size_t>(instance)].get()
                                                                          : nullptr;
}

bool CZxSimGrabber::AddCamera(const wchar_t* unitName, const SZxGrabberCameraDesc& camera)
{
    SUnit* u = FindUnit(unitName);
    if (!u)
        return false;
    u->cameras.push_back(camera);
    return true;
}

bool CZxSimGrabber::AddUnit(const wchar_t* name, const wchar_t* connection)
{
    if (!name || !*name || FindUnit(name))
        return false;
    auto u = std::make_unique<SUnit>();
    u->unit.Set(name, connection);
    m_units.push_back(std::move(u));
    return true;
}

void CZxSimGrabber::RemoveAllUnits()
{
    m_units.clear();
    m_current = 0;
}

bool CZxSimGrabber::AddCameras(const wchar_t* unitName, const wchar_t* prefix, int count)
{
    SUnit* u = FindUnit(unitName);
    if (!u)
        return false;
    for (int i = 0; i < count; ++i) {
        const CZxStringW name = CZxStringW::Formatted(L"%s %02d", prefix, i + 1);
        const CZxStringW full = CZxStringW::Formatted(L"%s %02d (SN %04d)", prefix, i + 1, 100 + i);
        u->cameras.push_back(MakeCamera(name, name, full, i % 2 == 0, i % 3 != 2));
    }
    return true;
}

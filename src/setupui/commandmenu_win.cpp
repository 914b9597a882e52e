#include "setupui/commandmenu_win.h"

#include <cwchar>
#include <initializer_list>

#include "zx/dialoghelpers.h"
#include "zxhost/moduleevents.h"
#include "zxhost/system.h"

namespace zxsetupui {
namespace {

CZxStringW Tr(const SCommandMenuHost& host, const wchar_t* text)
{
    return ZX_GetTranslation(text, host.source ? host.source : L"grabberuibase");
}

/// Named setting `n` (1-based, in the provider's order) and its name; null when gone.
SZxGrabberCameraSettings* NamedSetting(CZxGenProvider_Low* provider, uint32_t n, CZxStringW& name)
{
    name = L"";
    if (!provider || n == 0)
        return nullptr;
    for (uint32_t i = 1;; ++i) {
        SZxGrabberCameraSettings* entry = provider->NamedSettingsNext(name);
        if (!entry || i == n)
            return entry;
    }
}

void Refresh(const SCommandMenuHost& host, bool states)
{
    if (!host.controls)
        return;
    host.controls->UpdateFromGenericMany(0xFFFFFFFFu);
    if (states)
        host.controls->UpdateStateMany(0xFFFFFFFFu);
}

// Drivers whose ROI may be defined only when the camera says so, and whose
// setting loads are always announced as format changes.
bool IsDriver(CZxGenProvider_Low* provider, std::initializer_list<const wchar_t*> names)
{
    const CZxStringW logical = provider->GrabberDriverGetClassNameLogical();
    for (const wchar_t* n : names)
        if (logical.Compare(n) == 0)
            return true;
    return false;
}

void AppendROIGroup(const SCommandMenuHost& host)
{
    CZxGenProvider_Low* p = host.provider;
    CZxMenu* roi = host.menu->AppendPopup(kMenuROI, Tr(host, L"ROI"));
    if (!roi)
        return;
    roi->Append(kMenuUseROI, Tr(host, L"Use Current ROI"));
    CZxVariant predefined;
    if (p->CameraCapabilityIsSupported(ZX_CAMCAP_PREDEFINED_ROIS) && p->UserParamGet(L"PredefinedROIArray", predefined) == 0 &&
        predefined.IsArray() && predefined.GetCount() > 0) {
        roi->AppendSeparator(kMenuPredefinedFirst);
        for (int k = 0; k < predefined.GetCount() && kMenuPredefinedROI + UINT(k) <= kMenuPredefinedLast - 1; ++k) {
            const CZxVariant& e = predefined[k];
            const CZxVariant* caption = e.Search(L"m_wsCaption");
            const CZxVariant* width = e.Search(L"m_iWidth");
            const CZxVariant* height = e.Search(L"m_iHeight");
            const CZxStringW text =
                caption ? caption->GetCZxStringW()
                        : CZxStringW::Formatted(L"%d x %d", width ? int(width->GetZx_int32()) : 0,
                                                height ? int(height->GetZx_int32()) : 0);
            roi->Append(kMenuPredefinedROI + UINT(k), text);
        }
        roi->AppendSeparator(kMenuPredefinedLast);
    }
    roi->Append(kMenuDefineROI, Tr(host, L"Define..."));
    roi->Append(kMenuSaveROI, Tr(host, L"Save ROI..."));
    roi->Append(kMenuLoadROI, Tr(host, L"Load ROI..."));
    host.menu->AppendSeparator(kMenuROISeparator);
    if (IsDriver(p, {L"CZxColorCamR1", L"CZxGrabberDriverHeadU3", L"CZxGrabberDriverHeadL3", L"CZxGrabberDriverHeadU2"})) {
        SZxUserParam_DefineRoiQuery query;
        query.m_uiModeFQ = p->GetModeFQ();
        p->UserParamQuery(L"DefineRoiQuery", &query, sizeof(query));
        host.menu->Enable(kMenuROI, query.m_bAnswer);
    }
}

void LoadNamedSetting(const SCommandMenuHost& host, uint32_t n)
{
    CZxGenProvider_Low* p = host.provider;
    CZxStringW name;
    SZxGrabberCameraSettings* entry = NamedSetting(p, n, name);
    if (!entry)
        return;
    const uint32_t mode = p->GetModeFQ();
    SZxGrabberFormatValue current;
    p->FormatGet_WRP(mode, current);
    SZxGrabberFormatValue stored = entry->Format(mode);
    const bool formatChanged = stored.m_rcRect != current.m_rcRect || stored.m_wstrName != current.m_wstrName;
    bool familyQa = false;
    if (host.guiElement && IsDriver(p, {L"CZxGrabberDriverHeadU3", L"CZxGrabberDriverHeadL3"})) {
        SZxGrabberCameraDesc camera;
        familyQa = p->CameraGet_WRP(camera) == 0 && std::wcscmp(camera.m_wszFamily, L"FamilyQa") == 0;
    }
    const bool colorCam = IsDriver(p, {L"CZxColorCamR1"});
    const bool bracket = formatChanged || colorCam || familyQa;
    if (bracket) {
        const bool withFormat = host.guiElement ? formatChanged : true;
        SendMessageW(host.dialog, WM_IS_FORMATCHANGING, mode, withFormat ? LPARAM(&stored) : 0);
    }
    p->CameraSettingsSet_UNI_WRP(*entry, ZX_SETTINGS_ALL);
    if (bracket) {
        bool qualityLive = true;
        if (host.guiElement && colorCam && mode == ZX_MODE_QUALITY) {
            CZxVariant possible;
            if (p->UserParamGet(L"IsQualityLivePossible", possible) == 0)
                qualityLive = possible.GetBool();
        }
        SendMessageW(host.dialog, qualityLive ? WM_IS_FORMATCHANGED : WM_IS_COMMANDDONE, mode, 0);
    }
    if (host.guiElement)
        SendMessageW(host.dialog, 0x05C8, 0, 0);
    Refresh(host, true);
}

} // namespace

void CommandMenuCreate(const SCommandMenuHost& host)
{
    CZxMenu* menu = host.menu;
    if (!menu)
        return;
    menu->GetHandle();
    CZxGenProvider_Low* p = host.provider;
    const uint32_t f = host.flags;
    const bool roiGroup = host.guiElement && (f & kGroupROI);
    if (f & kGroupDefaults)
        for (UINT id : {kMenuDefaults, kMenuDefaultsSeparator})
            menu->Delete(id);
    if (f & kGroupFastQuality)
        for (UINT id : {kMenuFastToQuality, kMenuQualityToFast, kMenuCopySeparator})
            menu->Delete(id);
    if (roiGroup)
        for (UINT id : {kMenuUseROI, kMenuDefineROI, kMenuROI, kMenuROISeparator})
            menu->Delete(id);
    if (f & kGroupNamedSettings)
        for (UINT id : {kMenuSave, kMenuRemove, kMenuLoad})
            menu->Delete(id);

    CZxStringW name;
    const bool anyNamed = p && p->NamedSettingsNext(name) != nullptr;

    if (f & kGroupDefaults) {
        menu->Append(kMenuDefaults, Tr(host, L"Set Defaults"));
        menu->AppendSeparator(kMenuDefaultsSeparator);
    }
    if (f & kGroupFastQuality) {
        menu->Append(kMenuFastToQuality, Tr(host, L"&Fast -> Quality"));
        menu->Append(kMenuQualityToFast, Tr(host, L"Fast <- &Quality"));
        menu->AppendSeparator(kMenuCopySeparator);
    }
    if (roiGroup && p && p->ROIIsSupported_UNI_WRP())
        AppendROIGroup(host);
    if (f & kGroupNamedSettings) {
        CZxMenu* save = menu->AppendPopup(kMenuSave, Tr(host, L"Save Settings"));
        CZxMenu* remove = menu->AppendPopup(kMenuRemove, Tr(host, L"Remove Settings"));
        CZxMenu* load = menu->AppendPopup(kMenuLoad, Tr(host, L"Load Settings"));
        if (save && remove && load) {
            save->Append(kMenuNewSetting, Tr(host, L"New Setting..."));
            if (anyNamed)
                save->AppendSeparator(kMenuSaveSeparator);
            name = L"";
            for (UINT i = 0; p && p->NamedSettingsNext(name) && kMenuSave + 1 + i < kMenuRemove; ++i) {
                save->Append(kMenuSave + 1 + i, name);
                remove->Append(kMenuRemove + 1 + i, name);
                load->Append(kMenuLoad + 1 + i, name);
            }
            menu->Enable(kMenuRemove, anyNamed);
            menu->Enable(kMenuLoad, anyNamed);
        }
    }
    // Set whether or not the group is shown (the ids then do not exist).
    const bool synchronised = p && p->IsModeFQSynchronized();
    menu->Enable(kMenuFastToQuality, !synchronised);
    menu->Enable(kMenuQualityToFast, !synchronised);

    ZX_RaiseModuleEvent(ZX_MODULEEVENT_GUI_MENUINITPOPUP, menu);
}

void CommandMenuApplyROIRules(CZxMenu& menu, CZxGenProvider_Low* provider)
{
    if (!provider)
        return;
    if (provider->MultiViewEnabled()) {
        menu.Enable(kMenuUseROI, false);
        menu.Enable(kMenuDefineROI, false);
    } else {
        CZxRect roi;
        provider->ROIGet(roi);
        menu.Enable(kMenuUseROI, !roi.IsNull());
    }
    menu.Check(kMenuUseROI, provider->ROIEnabled());
}

void CommandMenuHandle(const SCommandMenuHost& host, uint32_t id)
{
    CZxGenProvider_Low* p = host.provider;
    if (id == 0)
        return;
    if (id == kMenuDefineROI || (host.guiElement && (id == kMenuSaveROI || id == kMenuLoadROI ||
                                                     (id >= kMenuPredefinedROI && id < kMenuPredefinedLast)))) {
        if (host.hostCommand)
            host.hostCommand(id);
        return;
    }
    if (!p)
        return;
    if (id == kMenuDefaults) {
        const uint32_t mode = p->GetModeFQ();
        SendMessageW(host.dialog, WM_IS_FORMATCHANGING, mode, 0);
        p->CameraSettingsSetDefaults_UNI_WRP();
        SendMessageW(host.dialog, WM_IS_FORMATCHANGED, mode, 0);
        Refresh(host, true);
    } else if (id == kMenuFastToQuality || id == kMenuQualityToFast) {
        SZxGrabberCameraSettings s;
        p->CameraSettingsGet_UNI_WRP(s, ZX_SETTINGS_PROPERTIES, true);
        if (id == kMenuFastToQuality)
            s.m_vecPropQuality = s.m_vecPropFast;
        else
            s.m_vecPropFast = s.m_vecPropQuality;
        p->CameraSettingsSet_UNI_WRP(s, ZX_SETTINGS_PROPERTIES);
        Refresh(host, true);
    } else if (id > kMenuSave && id < kMenuRemove) {
        CZxStringW name;
        if (SZxGrabberCameraSettings* entry = NamedSetting(p, id - kMenuSave, name))
            p->CameraSettingsGet_UNI_WRP(*entry, ZX_SETTINGS_ALL, true);
    } else if (id > kMenuRemove && id < kMenuLoad) {
        CZxStringW name;
        if (NamedSetting(p, id - kMenuRemove, name))
            p->NamedSettingsRemove(name);
    } else if (id > kMenuLoad && id < kMenuFastToQuality) {
        LoadNamedSetting(host, id - kMenuLoad);
    } else if (id == kMenuUseROI) {
        const uint32_t mode = p->GetModeFQ();
        SendMessageW(host.dialog, WM_IS_FORMATCHANGING, mode, 0);
        p->ROIEnable(!p->ROIEnabled());
        SendMessageW(host.dialog, WM_IS_FORMATCHANGED, mode, 0);
        Refresh(host, false);
    } else if (id == kMenuNewSetting) {
        CZxStringW name;
        if (NewSettingDlg(name, host.dialog, Tr(host, L"New Setting")) == 1) {
            SZxGrabberCameraSettings s;
            p->CameraSettingsGet_UNI_WRP(s, ZX_SETTINGS_ALL, true);
            p->NamedSettingsAdd(name, s);
        }
    }
}

} // namespace zxsetupui

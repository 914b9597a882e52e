// The setting command menu over the simulated camera's named settings: what it
// offers, and what each command does to the camera and tells the dialog.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "setupui/commandmenu_win.h"
#include "zxhost/moduleevents.h"
#include "zx_props.h"

namespace {

using namespace zxsetupui;

// A window that records the private notifications the commands send it.
std::vector<std::pair<UINT, LPARAM>> g_notes;
LRESULT CALLBACK Recorder(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg >= WM_IS_FORMATCHANGING && msg <= WM_IS_COMMANDDONE)
        g_notes.emplace_back(msg, lParam);
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

int g_announced = 0;
void OnMenuEvent(const char*, void* menu, void* expected)
{
    g_announced += menu == expected;
}

CZxVariant Roi(int width, int height, const wchar_t* caption)
{
    CZxVariant r = CZxVariant::MakeRecord(L"SZxPredefinedROI");
    r[L"m_iLeft"] = 0;
    r[L"m_iTop"] = 0;
    r[L"m_iWidth"] = width;
    r[L"m_iHeight"] = height;
    if (caption)
        r[L"m_wsCaption"] = caption;
    return r;
}

double Gain(CZxSimCamera& camera, uint32_t mode) { return zxtest::Value(camera, L"Gain", mode); }

class CommandMenu : public ::testing::Test {
protected:
    void SetUp() override
    {
        WNDCLASSW wc{};
        wc.lpfnWndProc = &Recorder;
        wc.lpszClassName = L"ZxMenuRecorder";
        RegisterClassW(&wc);
        dialog = CreateWindowW(L"ZxMenuRecorder", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
        g_notes.clear();
        g_announced = 0;
        ZX_SubscribeModuleEvent(ZX_MODULEEVENT_GUI_MENUINITPOPUP, &OnMenuEvent, &menu);
    }
    void TearDown() override
    {
        ZX_UnsubscribeModuleEvent(ZX_MODULEEVENT_GUI_MENUINITPOPUP, &OnMenuEvent, &menu);
        DestroyWindow(dialog);
    }
    SCommandMenuHost Host(uint32_t flags, bool guiElement = false)
    {
        return SCommandMenuHost{&camera, &menu, dialog, &controls, flags, guiElement, L"grabberuibase", {}};
    }
    void AddNamed(const wchar_t* name)
    {
        SZxGrabberCameraSettings s;
        camera.CameraSettingsGet_UNI_WRP(s, ZX_SETTINGS_ALL, true);
        camera.NamedSettingsAdd(name, s);
    }

    CZxSimCamera camera;
    CZxMenu menu;
    CZxISControlList controls;
    HWND dialog = nullptr;
};

TEST_F(CommandMenu, GroupsAreRebuiltAroundTheDriversOwnItems)
{
    menu.Append(9000, L"Driver item");
    CommandMenuCreate(Host(kGroupDefaults | kGroupFastQuality | kGroupNamedSettings));
    EXPECT_TRUE(menu.HasItem(9000));
    const UINT order[] = {9000, kMenuDefaults, kMenuDefaultsSeparator, kMenuFastToQuality, kMenuQualityToFast,
                          kMenuCopySeparator, kMenuSave, kMenuRemove, kMenuLoad};
    ASSERT_EQ(menu.GetItemCount(), int(std::size(order)));
    for (int i = 0; i < menu.GetItemCount(); ++i)
        EXPECT_EQ(menu.GetItemId(i), order[i]) << i;
    EXPECT_EQ(menu.GetItemText(kMenuFastToQuality), CZxStringW(L"&Fast -> Quality"));
    // No named settings: "Save Settings" holds only "New Setting...".
    ASSERT_TRUE(menu.FindPopup(kMenuSave));
    EXPECT_EQ(menu.FindPopup(kMenuSave)->GetItemCount(), 1);
    EXPECT_FALSE(menu.IsEnabled(kMenuRemove));
    EXPECT_FALSE(menu.IsEnabled(kMenuLoad));
    EXPECT_TRUE(menu.IsEnabled(kMenuFastToQuality));
    EXPECT_EQ(g_announced, 1);

    AddNamed(L"Bright");
    AddNamed(L"Dark");
    camera.ModeFQSynchronize(true);
    CommandMenuCreate(Host(kGroupDefaults | kGroupFastQuality | kGroupNamedSettings));
    EXPECT_EQ(menu.GetItemCount(), int(std::size(order))) << "rebuilt, not added twice";
    EXPECT_TRUE(menu.HasItem(kMenuSaveSeparator));
    EXPECT_EQ(menu.GetItemText(kMenuSave + 2), CZxStringW(L"Dark"));
    EXPECT_EQ(menu.GetItemText(kMenuRemove + 1), CZxStringW(L"Bright"));
    EXPECT_EQ(menu.GetItemText(kMenuLoad + 2), CZxStringW(L"Dark"));
    EXPECT_TRUE(menu.IsEnabled(kMenuLoad));
    EXPECT_FALSE(menu.IsEnabled(kMenuFastToQuality)) << "synchronised sets have nothing to copy";
}

TEST_F(CommandMenu, PredefinedROIsAreCappedAtTenWithSizesForUncaptioned)
{
    CZxVariant rois = CZxVariant::MakeArray();
    rois.Add(Roi(640, 480, nullptr));
    for (int i = 1; i < 12; ++i)
        rois.Add(Roi(100 + i, 100, L"Named"));
    ASSERT_EQ(camera.UserParamSet(L"PredefinedROIArray", rois), 0);
    CommandMenuCreate(Host(kGroupROI, true));
    CZxMenu* roi = menu.FindPopup(kMenuROI);
    ASSERT_TRUE(roi);
    EXPECT_EQ(roi->GetItemText(kMenuPredefinedROI), CZxStringW(L"640 x 480"));
    EXPECT_EQ(roi->GetItemText(kMenuPredefinedROI + 9), CZxStringW(L"Named"));
    EXPECT_TRUE(roi->HasItem(kMenuPredefinedLast));
    // Use, separator, ten ROIs, separator, define, save, load.
    EXPECT_EQ(roi->GetItemCount(), 16);
    // The dialog host has no ROI group.
    menu.RemoveAll();
    CommandMenuCreate(Host(kGroupROI, false));
    EXPECT_FALSE(menu.HasItem(kMenuROI));
}

TEST_F(CommandMenu, CopiesBetweenSetsTouchOnlyTheTarget)
{
    zxtest::Set(camera, L"Gain", 4.0, ZX_MODE_FAST);
    zxtest::Set(camera, L"Gain", 2.0, ZX_MODE_QUALITY);
    CommandMenuHandle(Host(kGroupFastQuality), kMenuFastToQuality);
    EXPECT_EQ(Gain(camera, ZX_MODE_FAST), 4.0);
    EXPECT_EQ(Gain(camera, ZX_MODE_QUALITY), 4.0);
    zxtest::Set(camera, L"Gain", 2.0, ZX_MODE_QUALITY);
    CommandMenuHandle(Host(kGroupFastQuality), kMenuQualityToFast);
    EXPECT_EQ(Gain(camera, ZX_MODE_FAST), 2.0);
    EXPECT_EQ(Gain(camera, ZX_MODE_QUALITY), 2.0);
}

TEST_F(CommandMenu, LoadingBracketsOnlyAFormatChangeWithTheStoredFormat)
{
    AddNamed(L"Same");
    SZxGrabberFormatValue other;
    other.m_wstrName = L"512 x 384 (Binning 4x4)";
    ASSERT_EQ(camera.FormatSet_WRP(camera.GetModeFQ(), other, nullptr, false), 0);
    AddNamed(L"Other");
    camera.CameraSettingsSetDefaults_UNI_WRP();

    CommandMenuHandle(Host(kGroupNamedSettings), kMenuLoad + 1);
    EXPECT_TRUE(g_notes.empty()) << "same format: no bracket";
    camera.ClearCallLog();
    CommandMenuHandle(Host(kGroupNamedSettings), kMenuLoad + 2);
    ASSERT_EQ(g_notes.size(), 2u);
    EXPECT_EQ(g_notes[0].first, UINT(WM_IS_FORMATCHANGING));
    EXPECT_NE(g_notes[0].second, 0);
    EXPECT_EQ(g_notes[1].first, UINT(WM_IS_FORMATCHANGED));
    EXPECT_EQ(camera.CallCount(L"CameraSettingsSet_UNI_WRP"), 1);
    SZxGrabberFormatValue now;
    camera.FormatGet_WRP(camera.GetModeFQ(), now);
    EXPECT_EQ(now.m_wstrName, other.m_wstrName);
}

TEST_F(CommandMenu, CommandsOnAVanishedSettingDoNothing)
{
    AddNamed(L"Only");
    camera.ClearCallLog();
    for (UINT id : {kMenuSave + 2, kMenuRemove + 2, kMenuLoad + 2})
        CommandMenuHandle(Host(kGroupNamedSettings), id);
    EXPECT_EQ(camera.CallCount(L"CameraSettingsGet_UNI_WRP"), 0);
    EXPECT_EQ(camera.CallCount(L"NamedSettingsRemove"), 0);
    EXPECT_EQ(camera.CallCount(L"CameraSettingsSet_UNI_WRP"), 0);
    CommandMenuHandle(Host(kGroupNamedSettings), kMenuRemove + 1);
    CZxStringW name;
    EXPECT_EQ(camera.NamedSettingsNext(name), nullptr);
}

TEST_F(CommandMenu, DefaultsAndROIToggleAreBracketed)
{
    camera.ROISet(CZxRect(0, 0, 64, 64));
    CommandMenuHandle(Host(0), kMenuUseROI);
    EXPECT_TRUE(camera.ROIEnabled());
    CommandMenuHandle(Host(kGroupDefaults), kMenuDefaults);
    ASSERT_EQ(g_notes.size(), 4u);
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(g_notes[i].first, UINT(i % 2 ? WM_IS_FORMATCHANGED : WM_IS_FORMATCHANGING)) << i;
    EXPECT_EQ(camera.CallCount(L"CameraSettingsSetDefaults_UNI_WRP"), 1);
}

} // namespace

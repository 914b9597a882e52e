// The control base on a real dialog over the simulated camera: registration by
// item window, the window calls behind Enable/Show/UpdateState and the
// notifications around writes.
#include <windows.h>

#include "inputsetup_test_resource.h"
#include "zx_dialog.h"
#include "zx_test.h"
#include "zxsim/camera.h"

using zxtest::Notification;
using zxtest::TestDialog;
typedef CZxISControl C;
typedef std::vector<Notification> Notes;

namespace {
Notification N(UINT msg, WPARAM wParam, const void* lParam)
{
    return Notification{msg, wParam, reinterpret_cast<LPARAM>(lParam)};
}
} // namespace

TEST(ControlBase, AttachRegistersTheItemWindowOnlyWhenGivenAList)
{
    TestDialog dlg(IDD_IS_TEST);
    C c(C::ctCheck, C::btProperty, L"Cooling", 1, IDC_IS_CHECK, 1);
    EXPECT_EQ(c.Attach(dlg.ZxHwnd(), &dlg.Camera(), nullptr), 0);
    EXPECT_EQ(dlg.List().GetCount(), 0u);
    EXPECT_EQ(dlg.Attach(c), 0);
    EXPECT_EQ(dlg.List()._FindControl(reinterpret_cast<ZxHWnd>(dlg.Item(IDC_IS_CHECK)), ~0u), &c);
    EXPECT_EQ(c.Detach(), 0);
    EXPECT_EQ(c.Detach(), 0);
    EXPECT_EQ(c.GetProvider(), nullptr);
    EXPECT_EQ(dlg.List().GetCount(), 1u) << "the host removes, not Detach";
    EnableWindow(dlg.Item(IDC_IS_CHECK), FALSE); // enabling it would answer 0
    EXPECT_EQ(c.Enable(true), -11) << "detached, no item is reached";
}

TEST(ControlBase, EnableShowAndUpdateStateMapThePreviousStateOfTheItem)
{
    TestDialog dlg(IDD_IS_TEST);
    ASSERT_EQ(zxtest::Set(dlg.Camera(), L"Cooling", false), 0);
    HWND item = dlg.Item(IDC_IS_EDIT);
    // UpdateState enables exactly the available, writable properties, through Enable:
    // EnableWindow answers nonzero when the item was disabled, ShowWindow when it was visible.
    const struct {
        const wchar_t* name;
        bool enabled;
    } cases[] = {{L"Gain", true}, {L"SensorTemperature", false} /* read-only */,
                 {L"Temperature", false} /* unavailable while the cooler is off */,
                 {L"NoSuchProperty", false} /* an unreadable state disables */};
    C c(C::ctValueEditor, C::btProperty, L"Gain", 1, IDC_IS_EDIT, 1);
    c.Attach(dlg.ZxHwnd(), &dlg.Camera(), nullptr);
    for (const auto& k : cases) {
        c.ChangeName(k.name);
        EnableWindow(item, !k.enabled); // start from the other state
        EXPECT_EQ(c.UpdateState(), k.enabled ? 0 : -11) << k.name;
        EXPECT_EQ(IsWindowEnabled(item) != FALSE, k.enabled) << k.name;
    }
    EXPECT_EQ(c.Show(false), 0);
    EXPECT_FALSE(GetWindowLongPtrW(item, GWL_STYLE) & WS_VISIBLE);
    EXPECT_EQ(c.Show(true), -11);
    EXPECT_TRUE(GetWindowLongPtrW(item, GWL_STYLE) & WS_VISIBLE);
}

TEST(ControlBase, WritesNotifyTheDialogInOrderWithTheirParameters)
{
    TestDialog dlg(IDD_IS_TEST);
    C c(C::ctValueEditor, C::btProperty, L"Gain", 2, IDC_IS_SCROLL, 1);
    dlg.Attach(c);
    SZxGrabberPropertyValue gain(L"Gain", CZxVariant(3.0));
    EXPECT_EQ(c._SetPropValue(gain), 0);
    SZxGrabberPropertyValue back(L"Gain");
    EXPECT_EQ(c._GetPropValue(back), 0);
    EXPECT_EQ(back.m_varValue.GetDouble(), 3.0);

    SZxStateChangeInfo info, quiet, announced;
    SZxGrabberFormatValue format;
    format.m_wstrName = L"2048 x 1536 (Extended Dynamic)";
    EXPECT_EQ(c._SetFormatValueGetStateChange(format, info), 0);
    SZxGrabberCommandValue snap(L"Snap");
    EXPECT_EQ(c._CommandGetStateChange(snap, quiet, false), 0);
    EXPECT_EQ(c._CommandGetStateChange(snap, announced, true), 0);
    EXPECT_EQ(dlg.Notifications(),
              (Notes{N(WM_IS_PROPERTYCHANGED, 0, nullptr), N(WM_IS_FORMATCHANGING, 2, &format),
                     N(WM_IS_FORMATCHANGED, 2, nullptr), N(WM_IS_STATECHANGE, 0, &info), N(WM_IS_STATECHANGE, 0, &quiet),
                     N(WM_IS_FORMATCHANGING, 2, nullptr), N(WM_IS_FORMATCHANGED, 2, nullptr),
                     N(WM_IS_STATECHANGE, 0, &announced)}));
}

TEST(ControlBase, FormatAwareWriteAnnouncesTheNewFormatOnlyWhenTheSensorAreaChanges)
{
    TestDialog dlg(IDD_IS_TEST);
    CZxSimCamera& cam = dlg.Camera();
    C radio(C::ctRadio, C::btProperty, L"SensorMode", 1, IDC_IS_RADIO1, 1);
    dlg.Attach(radio);
    SZxGrabberFormatValue before, after;
    cam.FormatGet_WRP(1, before);

    SZxGrabberPropertyValue full(L"SensorMode", CZxVariant(0)), half(L"SensorMode", CZxVariant(1));
    SZxStateChangeInfo same, other, plain;
    EXPECT_EQ(radio._SetPropValueGetStateChange(full, same, true), 0); // name and sensor area stay
    EXPECT_EQ(radio._SetPropValueGetStateChange(half, other, true), 0); // same name, half the sensor
    EXPECT_EQ(radio._SetPropValueGetStateChange(half, plain, false), 0);
    cam.FormatGet_WRP(1, after);
    ASSERT_EQ(after.m_wstrName, before.m_wstrName);
    ASSERT_NE(after.m_rcRect, before.m_rcRect);
    const Notes& notes = dlg.Notifications();
    ASSERT_EQ(notes.size(), 10u);
    // The announced format's address is gone after the call: its copy is compared below.
    const void* announced = reinterpret_cast<const void*>(notes[4].lParam);
    EXPECT_EQ(notes, (Notes{N(WM_IS_FORMATCHANGING, 1, nullptr), N(WM_IS_FORMATCHANGED, 1, nullptr),
                            N(WM_IS_PROPERTYCHANGED, 0, nullptr), N(WM_IS_STATECHANGE, 0, &same),
                            N(WM_IS_FORMATCHANGING, 1, announced), N(WM_IS_FORMATCHANGED, 1, nullptr),
                            N(WM_IS_PROPERTYCHANGED, 0, nullptr), N(WM_IS_STATECHANGE, 0, &other),
                            N(WM_IS_PROPERTYCHANGED, 0, nullptr), N(WM_IS_STATECHANGE, 0, &plain)}));
    EXPECT_EQ(notes[4].format, after);
}

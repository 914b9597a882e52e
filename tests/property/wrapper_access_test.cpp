// Typed property access of the UI wrapper base over the simulated camera.
#include <gtest/gtest.h>

#include "zx/grabberuiwrapper.h"
#include "zx/inputsetupcontrols.h"
#include "zx_test.h"
#include "zxsim/camera.h"

namespace {

// The host side of a wrapper is not under test: only GetGeneric matters.
class CTestWrapper : public CZxGrabberUI_WrapperBase {
public:
    explicit CTestWrapper(CZxGenProvider_Low* p) : m_provider(p) {}
    CZxGenProvider_Low* GetGeneric() const override { return m_provider; }
    CZxISControlList& GetControls() const override { return m_list; }
    uint32_t GetUserFlags() const override { return 0; }
    bool IsEasySetting() const override { return false; }
    bool IS_IsModal() override { return false; }
    void IS_InitDialog(ZxHWnd, bool*, uint32_t*) override {}
    void IS_Histo(int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t) override {}
    void IS_Help(int32_t, const wchar_t*) override {}
    CZxMenu* IS_CommandX(int32_t, uint32_t) override { return nullptr; }
    void IS_CheckFQSync(int32_t) override {}
    bool IS_Message(ZxHWnd, unsigned int, int64_t, int64_t, int64_t*, CZxISControl**) override { return false; }
    void IS_ChangeLiveMode(ZxHWnd, uint32_t) override {}
    ZxHWnd IS_SetHDLGActive(ZxHWnd h) override { return h; }
    void IS_OpenFreeTopicHelp(const wchar_t*) override {}
    bool IS_FQModeChangeAllowed() override { return true; }

private:
    CZxGenProvider_Low* m_provider;
    mutable CZxISControlList m_list;
};

} // namespace

TEST(WrapperPropertyAccess, ReadsAndWritesEachTypeBySetAndFailuresGiveZeroValues)
{
    CZxSimCamera cam;
    CTestWrapper w(&cam);
    w.SetPropBool(2, L"AutoExposure", true);
    w.SetPropInt32(2, L"Offset", 12);
    w.SetPropDouble(1, L"Gain", 2.5);
    w.SetPropStringW(1, L"CameraLabel", L"Left");
    EXPECT_TRUE(w.GetPropBool(2, L"AutoExposure"));
    EXPECT_FALSE(w.GetPropBool(1, L"AutoExposure"));
    EXPECT_EQ(w.GetPropInt32(2, L"Offset"), 12);
    EXPECT_EQ(w.GetPropDouble(1, L"Gain"), 2.5);
    EXPECT_STREQ(w.GetPropStringW(1, L"CameraLabel"), L"Left");
    // Writes travel as a record of the single member "Value".
    EXPECT_EQ(cam.CallLog()[0], L"PropSet_WRP(2, AutoExposure={Value=true})");

    EXPECT_EQ(w.GetPropInt32(1, L"Missing"), 0);
    EXPECT_STREQ(w.GetPropStringW(1, L"Missing"), L"");
    {
        zxtest::DiagCapture diag;   // a value of another type is a refused conversion
        EXPECT_EQ(w.GetPropInt32(1, L"Gain"), 0);
        EXPECT_EQ(w.GetPropDouble(1, L"Offset"), 0.0);
        EXPECT_EQ(diag.Count(L"true"), 2);
    }
    CTestWrapper none(nullptr);
    EXPECT_FALSE(none.GetPropBool(1, L"AutoExposure"));
    none.SetPropDouble(1, L"Gain", 3.0);   // ignored, no crash
}

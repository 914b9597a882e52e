// The control base's provider side: translation context and plain defaults.
#include "zx/inputsetupcontrols.h"
#include "zx_test.h"
#include "zxhost/rtti.h"
#include "zxhost/system.h"
#include "zxsim/camera.h"

namespace {
std::wstring g_context;
CZxStringW RecordContext(const wchar_t* text, const wchar_t* context)
{
    g_context = context;
    return CZxStringW::Formatted(L"<%s>", text);
}

// A second driver, so the translation cache sees the driver class change.
class OtherDriver : public CZxSimCamera {
public:
    CZxStringW GrabberDriverGetClassName() override { return L"CZxGrabberDriverOther"; }
};
} // namespace

TEST(ControlBase, TranslationUsesTheModuleContextTheDriverClassNames)
{
    CZxVariant meta = CZxVariant::MakeRecord(L"SZxDriverMetadata");
    meta[L"m_fileReference"] = L"zxsimdriver";
    ASSERT_EQ(CZxRTTI::RegisterClassImpl(L"IZxGrabberDriver01", ZXSIM_DRIVER_CLASS, meta), 0);
    PFN_ZxTranslate old = ZX_SetTranslationHook(&RecordContext);
    CZxSimCamera sim;
    OtherDriver other;
    CZxISControl c(CZxISControl::ctCombo, CZxISControl::btProperty, L"TriggerMode", 1, 0, 1);

    c.Attach(nullptr, &other, nullptr);
    EXPECT_EQ(c.GetTranslation(L"Software", "inputsetupcontrols"), CZxStringW(L"<Software>"));
    EXPECT_EQ(g_context, L"inputsetupcontrols");
    c.Attach(nullptr, &sim, nullptr);
    c.GetTranslation(L"Software", "inputsetupcontrols");
    EXPECT_EQ(g_context, L"zxsimdriver");
    // Without a provider the context last seen stays.
    c.Detach();
    c.GetTranslation(L"Software", "inputsetupcontrols");
    EXPECT_EQ(g_context, L"zxsimdriver");
    // A driver without a module context does not inherit the previous one.
    c.Attach(nullptr, &other, nullptr);
    c.GetTranslation(L"Software", "inputsetupcontrols");
    EXPECT_EQ(g_context, L"inputsetupcontrols");

    ZX_SetTranslationHook(old);
    CZxRTTI::UnregisterClassImpl(L"IZxGrabberDriver01", ZXSIM_DRIVER_CLASS);
}

TEST(ControlBase, PlainControlGivesNoValueAndDefinitionsStayOnFailure)
{
    CZxSimCamera cam;
    CZxISControl c(CZxISControl::ctStatic, CZxISControl::btProperty, L"Gain", 1, 0, 1);
    SZxGrabberPropertyValue v(L"Gain", CZxVariant(7));
    EXPECT_EQ(c._SetPropValue(v), -9) << "unattached";
    c.Attach(nullptr, &cam, nullptr);
    EXPECT_EQ(c.GetPropValForGeneric(v), -2);
    EXPECT_EQ(v.m_varValue, CZxVariant(7));
    CZxVariant def;
    EXPECT_EQ(c._GetPropDefinition(def), 0);
    EXPECT_EQ(def[L"m_dMax"].GetDouble(), 16.0);
    c.ChangeName(L"NoSuchProperty");
    EXPECT_NE(c._GetPropDefinition(def), 0);
    EXPECT_EQ(def.GetRunType(), CZxVariantRunType(L"RZxRangeDouble")) << "untouched on failure";
}

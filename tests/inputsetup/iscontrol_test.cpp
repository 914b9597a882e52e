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

    const struct {
        CZxGenProvider_Low* provider;
        const wchar_t* context;
    } steps[] = {{&other, L"inputsetupcontrols"}, {&sim, L"zxsimdriver"},
                 {nullptr, L"zxsimdriver"} /* without a provider the context last seen stays */,
                 {&other, L"inputsetupcontrols"} /* a driver without one does not inherit the last */};
    for (const auto& step : steps) {
        c.Attach(nullptr, step.provider, nullptr);
        EXPECT_EQ(c.GetTranslation(L"Software", "inputsetupcontrols"), CZxStringW(L"<Software>"));
        EXPECT_EQ(g_context, step.context);
    }

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

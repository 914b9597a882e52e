#include "zx_test.h"
#include "zxhost/string.h"
#include "zxhost/system.h"
#include "zxhost/variant.h"

TEST(StringW, FormatTakesWideStringsInWindowsConventionOnEveryToolchain)
{
    CZxStringW s;
    s.Format(L"%s=%d (%5.2f) %c%%", L"gain", 42, 3.14159, L'x');
    EXPECT_STREQ(s.GetString(), L"gain=42 ( 3.14) x%");
    s.Format(L"[%-6s|%ls|%hs]", L"ab", L"cd", "ef");
    EXPECT_STREQ(s.GetString(), L"[ab    |cd|ef]");
    // Longer than the first buffer.
    std::wstring big(1000, L'q');
    s.Format(L"<%s>", big.c_str());
    EXPECT_EQ(s.GetLength(), 1002);
}

TEST(StringW, CompareAndBoundedCopy)
{
    CZxStringW a(L"true");
    EXPECT_EQ(a.Compare(L"true"), 0);
    EXPECT_NE(a.Compare(L"TRUE"), 0);
    EXPECT_NE(a.Compare(nullptr), 0);
    wchar_t buf[4] = {L'#', L'#', L'#', L'#'};
    a.CopyTo(buf, 3);
    EXPECT_STREQ(buf, L"tr");
    EXPECT_EQ(buf[3], L'#');
    a.CopyTo(nullptr, 10);
    a.CopyTo(buf, 0);
    CZxStringW n(static_cast<const wchar_t*>(nullptr));
    EXPECT_TRUE(n.IsEmpty());
}

TEST(Variant, ExpressesRangeAndListDefinitions)
{
    CZxVariant range = CZxVariant::MakeRecord(L"RZxRangeDoubleExposure");
    range[L"m_dMax"] = 1000.0;
    CZxVariant& presets = range[L"m_List"];
    presets.Add(1.0);
    presets.Add(10.0);
    EXPECT_TRUE(range.GetRunType() == CZxVariantRunType(n20("RZxRangeDoubleExposure")));
    EXPECT_EQ(range[L"m_List"].GetCount(), 2);
    EXPECT_EQ(range.Search(L"m_dStep"), nullptr);
    const CZxVariant& constRange = range;
    EXPECT_TRUE(constRange[L"missing"].IsNull());
    EXPECT_EQ(constRange.GetMemberCount(), 2); // const lookup created nothing

    CZxVariant item = CZxVariant::MakeRecord(L"");
    item[L"m_wstrText"] = L"three";
    CZxVariant list = CZxVariant::MakeRecord(L"RZxList");
    list[L"m_list"].Add(item);
    const CZxVariant& items = static_cast<const CZxVariant&>(list)[L"m_list"];
    EXPECT_STREQ(items[0][L"m_wstrText"].GetCZxStringW().GetString(), L"three");
    EXPECT_TRUE(items[5].IsNull());
    EXPECT_TRUE(items[-1].IsNull());
}

TEST(Variant, ScalarRunTypesConversionsAndEquality)
{
    EXPECT_TRUE(CZxVariant(true).GetRunType() == CZxVariantRunType(L"bool"));
    EXPECT_TRUE(CZxVariant(7).GetRunType() == CZxVariantRunType(L"zx_int32"));
    EXPECT_TRUE(CZxVariant(7.5).GetRunType() == CZxVariantRunType(L"double"));
    EXPECT_TRUE(CZxVariant(L"x").GetRunType() == CZxVariantRunType(L"CZxStringW"));
    EXPECT_TRUE(CZxVariant().IsNull());
    EXPECT_EQ(CZxVariant(7.9).GetZx_int32(), 7);
    EXPECT_EQ(CZxVariant(5e30).GetZx_int32(), INT32_MAX);
    EXPECT_EQ(CZxVariant(L"12").GetZx_int32(), 0);
    EXPECT_TRUE(CZxVariant(L"12").GetCZxStringW() == CZxStringW(L"12"));
    EXPECT_TRUE(CZxVariant(3).GetCZxStringW().IsEmpty());

    CZxVariant a = CZxVariant::MakeRecord(L"R");
    a[L"x"] = 1;
    CZxVariant b = a;
    b.SetTypeChangeAllowed(true); // not part of equality
    EXPECT_TRUE(a == b);
    b[L"x"] = 2;
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(b.RemoveMember(L"x"));
    EXPECT_EQ(b.GetMemberCount(), 0);
}

TEST(HostServices, TranslationWithoutHookOrCatalogEntryIsTheTextItself)
{
    EXPECT_STREQ(ZX_GetTranslation(L"Gain", L"common").GetString(), L"Gain");
}

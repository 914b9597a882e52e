// Typed property values: each Set rule, its refusals and its deliberate asymmetries.
#include <gtest/gtest.h>

#include "zx/property.h"
#include "zx_test.h"

namespace {

const wchar_t kRangeDoubleCond[] =
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDouble\")) && "
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDoubleList\")) && "
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDoubleExposure\"))";

SZxGrabberPropertyDesc01 RangeDouble(const wchar_t* runType, double min, double max)
{
    SZxGrabberPropertyDesc01 d(L"Gain");
    d.varValDefinition = CZxVariant::MakeRecord(runType);
    d.varValDefinition[L"m_dMin"] = min;
    d.varValDefinition[L"m_dMax"] = max;
    return d;
}

SZxGrabberPropertyDesc01 RangeInt(int min, int max)
{
    SZxGrabberPropertyDesc01 d(L"Offset");
    d.varValDefinition = CZxVariant::MakeRecord(L"RZxRangeInt32");
    d.varValDefinition[L"m_iMin"] = min;
    d.varValDefinition[L"m_iMax"] = max;
    return d;
}

SZxGrabberPropertyDesc01 IntList(std::initializer_list<int> items)
{
    SZxGrabberPropertyDesc01 d(L"Clock");
    d.varValDefinition = CZxVariant::MakeRecord(L"RZxList");
    CZxVariant list = CZxVariant::MakeArray();
    for (int i : items)
        list.Add(CZxVariant(i));
    d.varValDefinition[L"m_list"] = list;
    return d;
}

// Labels "Slow" = 0, "Fast" = 5; `drop` removes that member from the second entry.
SZxGrabberPropertyDesc01 TextList(const wchar_t* drop = nullptr)
{
    SZxGrabberPropertyDesc01 d(L"Readout");
    d.varValDefinition = CZxVariant::MakeRecord(L"RZxList");
    CZxVariant list = CZxVariant::MakeArray();
    const std::pair<int, const wchar_t*> items[] = {{0, L"Slow"}, {5, L"Fast"}};
    for (const auto& it : items) {
        CZxVariant e;
        e[L"m_iValue"] = it.first;
        e[L"m_wstrText"] = it.second;
        if (drop && it.first == 5)
            e.RemoveMember(drop);
        list.Add(e);
    }
    d.varValDefinition[L"m_list"] = list;
    return d;
}

} // namespace

TEST(PlainPropertyValues, BoolAcceptsExactSpellingsOnly)
{
    CZxBoolPropertyValue b;
    EXPECT_TRUE(b.Set(CZxVariant(7)));
    EXPECT_TRUE(b.m_bValue);
    EXPECT_STREQ(b.m_wstrText, L"true");
    EXPECT_TRUE(b.Set(CZxVariant(L"0")));
    EXPECT_FALSE(b.m_bValue);

    zxtest::DiagCapture diag;
    EXPECT_FALSE(b.Set(CZxVariant(L"TRUE")));
    EXPECT_FALSE(b.m_bValue);               // value unchanged
    EXPECT_STREQ(b.m_wstrText, L"TRUE");    // text keeps the string
    EXPECT_FALSE(b.Set(CZxVariant(1.0)));
    EXPECT_EQ(diag.Count(L"true"), 2);
    EXPECT_TRUE(diag.Has(L"true", L"property"));
}

TEST(PlainPropertyValues, NumbersFromTextAreUnchecked)
{
    CZxDoublePropertyValue d;
    EXPECT_TRUE(d.Set(CZxVariant(L"abc")));
    EXPECT_EQ(d.m_dValue, 0.0);
    EXPECT_TRUE(d.Set(CZxVariant(2.5)));
    EXPECT_STREQ(d.m_wstrText, L"2.500000");

    CZxInt32PropertyValue i;
    EXPECT_TRUE(i.Set(CZxVariant(L"-12px")));
    EXPECT_EQ(i.m_iValue, -12);
    EXPECT_STREQ(i.m_wstrText, L"-12px");
    EXPECT_TRUE(i.Set(CZxVariant(L"99999999999")));
    EXPECT_EQ(i.m_iValue, INT32_MAX);

    zxtest::DiagCapture diag;
    EXPECT_FALSE(i.Set(CZxVariant(2.5)));
    EXPECT_FALSE(d.Set(CZxVariant(3)));
    CZxStringWPropertyValue s;
    EXPECT_FALSE(s.Set(CZxVariant(true)));
    EXPECT_EQ(diag.Count(L"true"), 3);
}

TEST(RangeDoublePropertyValue, TextKeepsItsSpellingWhenClamped)
{
    const auto desc = RangeDouble(L"RZxRangeDouble", 1.0, 10.0);
    CZxRangeDoublePropertyValue v;
    EXPECT_TRUE(v.Set(desc, CZxVariant(L"5e9")));
    EXPECT_EQ(v.m_dValue, 10.0);
    EXPECT_STREQ(v.m_wstrText, L"5e9");
    EXPECT_TRUE(v.Set(desc, CZxVariant(5e9)));
    EXPECT_EQ(v.m_dValue, 10.0);
    EXPECT_STREQ(v.m_wstrText, L"10.000000");
    EXPECT_TRUE(v.Set(desc, CZxVariant(-3.0)));
    EXPECT_EQ(v.m_dValue, 1.0);

    EXPECT_TRUE(v.Set(RangeDouble(L"RZxRangeDoubleList", 0, 2), CZxVariant(1.5)));
    EXPECT_TRUE(v.Set(RangeDouble(L"RZxRangeDoubleExposure", 0, 2), CZxVariant(1.5)));
}

TEST(RangeDoublePropertyValue, RefusesWrongDefinitionAndUnreadableText)
{
    zxtest::DiagCapture diag;
    CZxRangeDoublePropertyValue v;
    EXPECT_FALSE(v.Set(RangeDouble(L"RZxRangeInt32", 0, 1), CZxVariant(0.5)));
    EXPECT_EQ(diag.Count(kRangeDoubleCond), 1);
    EXPECT_TRUE(diag.Has(kRangeDoubleCond, L"property"));

    const auto desc = RangeDouble(L"RZxRangeDouble", 0, 1);
    EXPECT_FALSE(v.Set(desc, CZxVariant(L"fast")));
    EXPECT_FALSE(v.Set(desc, CZxVariant(L"nan")));
    EXPECT_FALSE(v.Set(desc, CZxVariant(1)));
    EXPECT_EQ(diag.Count(L"true"), 3);
}

TEST(RangeInt32PropertyValue, ClampsAndReformatsText)
{
    const auto desc = RangeInt(0, 255);
    CZxRangeInt32PropertyValue v;
    EXPECT_TRUE(v.Set(desc, CZxVariant(L" 300")));
    EXPECT_EQ(v.m_iValue, 255);
    EXPECT_STREQ(v.m_wstrText, L"255");
    EXPECT_TRUE(v.Set(desc, CZxVariant(-4)));
    EXPECT_EQ(v.m_iValue, 0);
    EXPECT_STREQ(v.m_wstrText, L"0");

    zxtest::DiagCapture diag;
    EXPECT_FALSE(v.Set(desc, CZxVariant(L"x1")));
    EXPECT_FALSE(v.Set(RangeDouble(L"RZxRangeDouble", 0, 1), CZxVariant(1)));
    EXPECT_EQ(diag.Count(L"true"), 1);
    EXPECT_EQ(diag.Count(L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeInt32\"))"), 1);
}

TEST(ListInt32PropertyValue, MissKeepsValueAndText)
{
    const auto desc = IntList({1, 2, 3});
    CZxListInt32PropertyValue v;
    EXPECT_FALSE(v.Set(desc, CZxVariant(7)));
    EXPECT_EQ(v.m_iValue, 7);
    EXPECT_STREQ(v.m_wstrText, L"7");
    EXPECT_TRUE(v.Set(desc, CZxVariant(L"03")));
    EXPECT_EQ(v.m_iValue, 3);
    EXPECT_STREQ(v.m_wstrText, L"03");      // not re-formatted
    EXPECT_FALSE(v.Set(IntList({}), CZxVariant(L"1")));

    zxtest::DiagCapture diag;
    SZxGrabberPropertyDesc01 noList(L"Clock");
    noList.varValDefinition = CZxVariant::MakeRecord(L"RZxList");
    EXPECT_FALSE(v.Set(noList, CZxVariant(1)));
    EXPECT_EQ(diag.Count(L"varList->IsNull()"), 1);
    EXPECT_FALSE(v.Set(RangeInt(0, 1), CZxVariant(1)));
    EXPECT_EQ(diag.Count(L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxList\"))"), 1);
}

TEST(ListTextInt32PropertyValue, LabelAndNumberPaths)
{
    const auto desc = TextList();
    CZxListTextInt32PropertyValue v;
    EXPECT_TRUE(v.Set(desc, CZxVariant(5)));
    EXPECT_STREQ(v.m_wstrText, L"Fast");
    EXPECT_TRUE(v.Set(desc, CZxVariant(L"Slow")));
    EXPECT_EQ(v.m_iValue, 0);
    EXPECT_FALSE(v.Set(desc, CZxVariant(9)));
    EXPECT_STREQ(v.m_wstrText, L"9");
    EXPECT_FALSE(v.Set(desc, CZxVariant(L"12")));   // a number, but no label
    EXPECT_EQ(v.m_iValue, 12);
    EXPECT_STREQ(v.m_wstrText, L"12");

    zxtest::DiagCapture diag;
    EXPECT_FALSE(v.Set(desc, CZxVariant(L"fast")));
    EXPECT_EQ(diag.Count(L"true"), 1);
}

TEST(ListTextInt32PropertyValue, ReportsMissingEntryMembers)
{
    zxtest::DiagCapture diag;
    CZxListTextInt32PropertyValue v;
    EXPECT_FALSE(v.Set(TextList(L"m_iValue"), CZxVariant(5)));
    EXPECT_EQ(diag.Count(L"varValue==NULL"), 1);
    EXPECT_FALSE(v.Set(TextList(L"m_wstrText"), CZxVariant(5)));
    EXPECT_FALSE(v.Set(TextList(L"m_wstrText"), CZxVariant(L"Nope")));
    EXPECT_EQ(diag.Count(L"varText==NULL"), 2);
    // The first entry matches before the broken one is reached.
    EXPECT_TRUE(v.Set(TextList(L"m_iValue"), CZxVariant(0)));
}

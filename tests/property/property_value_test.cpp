// Typed property values: each Set rule, its refusals and its deliberate asymmetries.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

#include "zx/property.h"
#include "zx_test.h"

namespace {

const wchar_t kRangeDoubleCond[] =
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDouble\")) && "
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDoubleList\")) && "
    L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeDoubleExposure\"))";

bool ValueOf(const CZxBoolPropertyValue& v) { return v.m_bValue; }
double ValueOf(const CZxDoublePropertyValue& v) { return v.m_dValue; }
double ValueOf(const CZxRangeDoublePropertyValue& v) { return v.m_dValue; }
template <class V> int32_t ValueOf(const V& v) { return v.m_iValue; }

// "ok|no value text" after one Set, so a line checks the result and both fields.
template <class V, class... Args>
std::wstring Set(V& v, const Args&... args)
{
    const bool ok = v.Set(args...);
    std::wostringstream s;
    s << (ok ? L"ok " : L"no ") << ValueOf(v) << L' ' << v.m_wstrText.Std();
    return s.str();
}

SZxGrabberPropertyDesc01 Def(const wchar_t* runType, std::initializer_list<std::pair<const wchar_t*, CZxVariant>> m)
{
    SZxGrabberPropertyDesc01 d(L"P");
    d.varValDefinition = CZxVariant::MakeRecord(runType);
    for (const auto& member : m)
        d.varValDefinition[member.first] = member.second;
    return d;
}

SZxGrabberPropertyDesc01 List(std::initializer_list<CZxVariant> items)
{
    CZxVariant list = CZxVariant::MakeArray();
    for (const auto& i : items)
        list.Add(i);
    return Def(L"RZxList", {{L"m_list", list}});
}

// Labels "Slow" = 0, "Fast" = 5; `drop` removes that member from the second entry.
SZxGrabberPropertyDesc01 TextList(const wchar_t* drop = nullptr)
{
    CZxVariant slow, fast;
    slow[L"m_iValue"] = 0;
    slow[L"m_wstrText"] = L"Slow";
    fast[L"m_iValue"] = 5;
    fast[L"m_wstrText"] = L"Fast";
    if (drop)
        fast.RemoveMember(drop);
    return List({slow, fast});
}

} // namespace

TEST(PlainPropertyValues, BoolTakesExactSpellingsAndNumbersFromTextAreUnchecked)
{
    CZxBoolPropertyValue b;
    EXPECT_EQ(Set(b, 7), L"ok 1 true");
    EXPECT_EQ(Set(b, L"0").substr(0, 4), L"ok 0");
    CZxDoublePropertyValue d;
    EXPECT_EQ(Set(d, L"abc").substr(0, 4), L"ok 0");
    EXPECT_EQ(Set(d, 2.5), L"ok 2.5 2.500000");
    CZxInt32PropertyValue i;
    EXPECT_EQ(Set(i, L"-12px"), L"ok -12 -12px");
    EXPECT_EQ(Set(i, L"99999999999").substr(0, 13), L"ok 2147483647");

    zxtest::DiagCapture diag;
    EXPECT_EQ(Set(b, L"TRUE"), L"no 0 TRUE");   // value unchanged, text keeps the string
    EXPECT_FALSE(b.Set(1.0));
    EXPECT_FALSE(i.Set(2.5));
    EXPECT_FALSE(d.Set(3));
    CZxStringWPropertyValue s;
    EXPECT_FALSE(s.Set(true));
    EXPECT_EQ(diag.Count(L"true"), 5);
    EXPECT_TRUE(diag.Has(L"true", L"property"));
}

TEST(RangePropertyValues, ClampDoubleTextKeepsItsSpellingIntegerTextIsReformatted)
{
    CZxRangeDoublePropertyValue v;
    for (const wchar_t* type : {L"RZxRangeDoubleList", L"RZxRangeDoubleExposure", L"RZxRangeDouble"})
        EXPECT_TRUE(v.Set(Def(type, {{L"m_dMin", 0.0}, {L"m_dMax", 2.0}}), 1.5)) << type;
    const auto desc = Def(L"RZxRangeDouble", {{L"m_dMin", 1.0}, {L"m_dMax", 10.0}});
    EXPECT_EQ(Set(v, desc, L"5e9"), L"ok 10 5e9");
    EXPECT_EQ(Set(v, desc, 5e9), L"ok 10 10.000000");
    EXPECT_EQ(Set(v, desc, -3.0).substr(0, 4), L"ok 1");

    const auto ints = Def(L"RZxRangeInt32", {{L"m_iMin", 0}, {L"m_iMax", 255}});
    CZxRangeInt32PropertyValue n;
    EXPECT_EQ(Set(n, ints, L" 300"), L"ok 255 255");
    EXPECT_EQ(Set(n, ints, -4), L"ok 0 0");

    zxtest::DiagCapture diag;
    EXPECT_FALSE(v.Set(ints, 0.5));
    EXPECT_EQ(diag.Count(kRangeDoubleCond), 1);
    EXPECT_TRUE(diag.Has(kRangeDoubleCond, L"property"));
    for (const CZxVariant& bad : {CZxVariant(L"fast"), CZxVariant(L"nan"), CZxVariant(std::nan("")), CZxVariant(1)})
        EXPECT_FALSE(v.Set(desc, bad));
    EXPECT_FALSE(n.Set(ints, L"x1"));
    EXPECT_FALSE(n.Set(desc, 1));
    EXPECT_EQ(diag.Count(L"true"), 5);
    EXPECT_EQ(diag.Count(L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxRangeInt32\"))"), 1);
}

TEST(ListPropertyValues, AMissKeepsValueAndTextAndLabelsWorkBothWays)
{
    const auto desc = List({1, 2, 3});
    CZxListInt32PropertyValue v;
    EXPECT_EQ(Set(v, desc, 7), L"no 7 7");
    EXPECT_EQ(Set(v, desc, L"03"), L"ok 3 03");   // not re-formatted
    EXPECT_FALSE(v.Set(List({}), L"1"));

    CZxListTextInt32PropertyValue t;
    EXPECT_EQ(Set(t, TextList(), 5), L"ok 5 Fast");
    EXPECT_EQ(Set(t, TextList(), L"Slow"), L"ok 0 Slow");
    EXPECT_EQ(Set(t, TextList(), 9), L"no 9 9");
    EXPECT_EQ(Set(t, TextList(), L"12"), L"no 12 12");   // a number, but no label
    EXPECT_TRUE(t.Set(TextList(L"m_iValue"), 0));   // the first entry matches before the broken one

    zxtest::DiagCapture diag;
    EXPECT_FALSE(t.Set(TextList(), L"fast"));
    EXPECT_EQ(diag.Count(L"true"), 1);
    EXPECT_FALSE(v.Set(Def(L"RZxList", {}), 1));
    EXPECT_EQ(diag.Count(L"varList->IsNull()"), 1);
    EXPECT_FALSE(v.Set(Def(L"RZxRangeInt32", {{L"m_iMin", 0}, {L"m_iMax", 1}}), 1));
    EXPECT_EQ(diag.Count(L"desc.varValDefinition.GetRunType()!=CZxVariantRunType(n20(\"RZxList\"))"), 1);
    EXPECT_FALSE(t.Set(TextList(L"m_iValue"), 5));
    EXPECT_EQ(diag.Count(L"varValue==NULL"), 1);
    EXPECT_FALSE(t.Set(TextList(L"m_wstrText"), 5));
    EXPECT_FALSE(t.Set(TextList(L"m_wstrText"), L"Nope"));
    EXPECT_EQ(diag.Count(L"varText==NULL"), 2);
}

TEST(RangePropertyValues, BrokenDefinitionsAreRefusedOddLimitsKeepTheValueBetweenThem)
{
    using M = std::initializer_list<std::pair<const wchar_t*, CZxVariant>>;
    const wchar_t kMissing[] = L"varMin==NULL || varMax==NULL";
    const wchar_t kNaN[] = L"std::isnan(varMin->GetDouble()) || std::isnan(varMax->GetDouble())";
    // {definition members, value, "ok|no value text" after a good Set of 7, the report or null}
    const struct { M members; CZxVariant value; const wchar_t* want; const wchar_t* report; } doubles[] = {
        {M{{L"m_dMax", 9.0}}, 5.0, L"no 7 7.000000", kMissing},
        {M{{L"m_dMin", 0.0}}, 5.0, L"no 7 7.000000", kMissing},
        {M{{L"m_dMin", std::nan("")}, {L"m_dMax", 9.0}}, 5.0, L"no 7 7.000000", kNaN},
        {M{{L"m_dMin", 10.0}, {L"m_dMax", 1.0}}, 5.0, L"ok 10 10.000000", nullptr},   // min > max: below min is min,
        {M{{L"m_dMin", 10.0}, {L"m_dMax", 1.0}}, 20.0, L"ok 1 1.000000", nullptr},    // anything else max
        {M{{L"m_dMin", 0.0}, {L"m_dMax", 9.0}}, INFINITY, L"ok 9 9.000000", nullptr},
        {M{{L"m_dMin", 0.0}, {L"m_dMax", 9.0}}, -INFINITY, L"ok 0 0.000000", nullptr},
    };
    for (const auto& c : doubles) {
        CZxRangeDoublePropertyValue v;
        ASSERT_TRUE(v.Set(Def(L"RZxRangeDouble", {{L"m_dMin", 0.0}, {L"m_dMax", 9.0}}), 7.0));
        zxtest::DiagCapture diag;
        EXPECT_EQ(Set(v, Def(L"RZxRangeDouble", c.members), c.value), c.want);
        EXPECT_EQ(diag.Size(), c.report ? 1u : 0u) << c.want;
        EXPECT_TRUE(!c.report || diag.Has(c.report, L"property")) << c.want;
    }
    const struct { M members; int32_t value; const wchar_t* want; } ints[] = {
        {M{{L"m_iMin", 0}}, 5, L"no 7 7"},
        {M{{L"m_iMin", 10}, {L"m_iMax", 1}}, 5, L"ok 10 10"},
        {M{{L"m_iMin", 10}, {L"m_iMax", 1}}, 20, L"ok 1 1"},
    };
    for (const auto& c : ints) {
        CZxRangeInt32PropertyValue v;
        ASSERT_TRUE(v.Set(Def(L"RZxRangeInt32", {{L"m_iMin", 0}, {L"m_iMax", 9}}), 7));
        zxtest::DiagCapture diag;
        EXPECT_EQ(Set(v, Def(L"RZxRangeInt32", c.members), c.value), c.want);
        EXPECT_EQ(diag.Count(kMissing), c.want[0] == L'n' ? 1 : 0) << c.want;
    }
}

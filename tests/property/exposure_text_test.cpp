// Exposure texts: what is written reads back, in every unit.
#include <gtest/gtest.h>

#include "zxhost/exposure.h"

TEST(ExposureText, RoundTripsOverUnits)
{
    const struct { double ms; const wchar_t* text; } cases[] = {
        {0.0125, L"12.5 \u00b5s"}, {0.25, L"250 \u00b5s"}, {0.9999996, L"1 ms"}, {1.5, L"1.5 ms"},
        {12.125, L"12.125 ms"}, {999.9996, L"1 s"}, {1500.0, L"1.5 s"}, {61234.0, L"61.234 s"},
    };
    for (const auto& c : cases) {
        const CZxStringW text = ZX_ExposureToText(c.ms, -1.0);
        EXPECT_STREQ(text, c.text) << c.ms;
        bool ok = false;
        const double back = ZX_TextToExposure(text, -1.0, 0.0, 1e9, &ok);
        EXPECT_TRUE(ok);
        EXPECT_STREQ(ZX_ExposureToText(back, -1.0), text);
    }
    EXPECT_STREQ(ZX_ExposureToText(33.3, 33.3), L"1 frame");   // without a frame time, the rows above
}

TEST(ExposureText, ParsesUnitsAndFramesClampsAndGivesTheMinimumForNoTime)
{
    const struct { const wchar_t* text; double frame, max, ms; bool ok; } cases[] = {
        {L"250us", -1, 100, 0.25, true}, {L"1,5 MS", -1, 100, 1.5, true}, {L" 2 s ", -1, 1e4, 2000, true},
        {L"7", -1, 100, 7, true},        {L"1 frame", 33.3, 100, 33.3, true}, {L"5 s", -1, 100, 100, true},
        {L"1 us", -1, 100, 0.1, true},   {L"", -1, 100, 0.1, false},          {L"fast", -1, 100, 0.1, false},
        {L"5 minutes", -1, 100, 0.1, false}, {L"inf", -1, 100, 0.1, false},  {L"1 frame", -1, 100, 0.1, false},
    };
    for (const auto& c : cases) {
        bool ok = !c.ok;
        EXPECT_DOUBLE_EQ(ZX_TextToExposure(c.text, c.frame, 0.1, c.max, &ok), c.ms) << c.text;
        EXPECT_EQ(ok, c.ok) << c.text;
    }
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(nullptr, -1.0, 0.1, 100, nullptr), 0.1);
}

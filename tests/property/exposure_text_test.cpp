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
}

TEST(ExposureText, ParsesUnitsAndOneFrame)
{
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"250us", -1.0, 0, 100), 0.25);
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"1,5 MS", -1.0, 0, 100), 1.5);
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L" 2 s ", -1.0, 0, 1e4), 2000.0);
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"7", -1.0, 0, 100), 7.0);
    EXPECT_STREQ(ZX_ExposureToText(33.3, 33.3), L"1 frame");
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"1 frame", 33.3, 0, 100), 33.3);
    EXPECT_STREQ(ZX_ExposureToText(33.3, -1.0), L"33.3 ms");
}

TEST(ExposureText, ClampsAndFlagsFailures)
{
    bool ok = false;
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"5 s", -1.0, 0.1, 100, &ok), 100.0);
    EXPECT_TRUE(ok);
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(L"1 us", -1.0, 0.1, 100, &ok), 0.1);
    EXPECT_TRUE(ok);
    for (const wchar_t* bad : {L"", L"fast", L"5 minutes", L"inf", L"1 frame"}) {
        EXPECT_DOUBLE_EQ(ZX_TextToExposure(bad, -1.0, 0.1, 100, &ok), 0.1) << bad;
        EXPECT_FALSE(ok) << bad;
    }
    EXPECT_DOUBLE_EQ(ZX_TextToExposure(nullptr, -1.0, 0.1, 100, nullptr), 0.1);
}

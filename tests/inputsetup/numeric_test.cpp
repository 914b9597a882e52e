// The numeric controls' shared rules that need no window: decimals from a step
// and the exposure text of the log scroll.
#include <cmath>

#include "zx/iscontrols_numeric.h"
#include "zx_test.h"

TEST(NumericText, DecimalsFollowTheStepsThousandths)
{
    const struct {
        double step;
        int decimals;
    } cases[] = {{0.25, 2}, {0.5, 1}, {1, 0}, {0.001, 3}, {0.0005, 3}, {-0.05, 2}, {2.5, 1}, {1000, 0},
                 {1e12, 0} /* beyond 32 bits */, {NAN, 0}, {INFINITY, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(ZX_DecimalsFromStep(c.step), c.decimals) << c.step;
}

TEST(NumericText, ExposureTextChangesUnitAtOneTenAndThousandMilliseconds)
{
    const struct {
        double ms;
        const wchar_t* text;
    } cases[] = {{0.05, L"50 \u00b5s"}, {0.9996, L"1000 \u00b5s"}, {1, L"1.0 ms"}, {9.94, L"9.9 ms"},
                 {10, L"10 ms"}, {999.4, L"999 ms"}, {1000, L"1.00 s"}, {12345, L"12.35 s"}};
    for (const auto& c : cases)
        EXPECT_EQ(ZX_ExposureMsToText(c.ms).Std(), std::wstring(c.text)) << c.ms;
}
